// The parts' files: opened on demand, appended to, and at most fifty at once.
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <queue>
#include <string>
#include <vector>

#include "kessel/part.h"
#include "support/scratch_folder.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

/// Parts whose files are called "0", "1", ... in a scratch folder.
class PartOutput : public testing::Test {
 protected:
  ~PartOutput() override { Part::free_statics(); }

  Part& part(std::size_t index) {
    while (parts_.size() <= index) {
      parts_.push_back(std::make_unique<Part>("PRODUCT_DEFINITION"));
      parts_.back()->path = std::to_string(parts_.size() - 1);
    }
    return *parts_[index];
  }

  /// Opens the files of parts 0 to `count` - 1, in this order.
  void open_first(std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) part(i).output("first of " + std::to_string(i) + "\n");
  }

  /// The indices of the parts whose stream is open.
  std::vector<std::size_t> open_streams() const {
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i < parts_.size(); ++i) {
      if (parts_[i]->stream.is_open()) open.push_back(i);
    }
    return open;
  }

  static std::vector<std::size_t> indices(std::size_t first, std::size_t last) {
    std::vector<std::size_t> all;
    for (std::size_t i = first; i <= last; ++i) all.push_back(i);
    return all;
  }

  /// The names of the queued parts' files, the front first; "null" for null.
  static std::vector<std::string> queue() {
    std::vector<std::string> names;
    for (std::queue<Part*> left = Part::_opened_files; !left.empty(); left.pop()) {
      names.push_back(left.front() == nullptr ? "null" : left.front()->path.string());
    }
    return names;
  }

  /// What the file `name` holds once the part's stream has passed everything on.
  static std::string text_of(Part& part) {
    part.stream.flush();
    return read_file(part.path);
  }

  ScratchFolder folder_;
  std::vector<std::unique_ptr<Part>> parts_;
};

TEST_F(PartOutput, FirstWriteOpensTheFileAndQueuesThePart) {
  EXPECT_FALSE(part(0).stream.is_open());
  std::ostream& out = part(0).output("text\n");
  EXPECT_EQ(&out, &part(0).stream);
  out << 12 << ';' << '\n';
  EXPECT_EQ(text_of(part(0)), "text\n12;\n");
  EXPECT_EQ(queue(), std::vector<std::string>{"0"});
}

TEST_F(PartOutput, SecondWriteNeitherReopensTheFileNorChangesTheQueue) {
  open_first(3);
  std::filesystem::rename("0", "renamed");
  part(0).output("second\n").flush();
  EXPECT_EQ(read_file("renamed"), "first of 0\nsecond\n");
  EXPECT_FALSE(std::filesystem::exists("0"));
  EXPECT_EQ(queue(), (std::vector<std::string>{"0", "1", "2"}));
}

TEST_F(PartOutput, FiftyFilesAreOpenAtOnceAndTheOldestMakesRoom) {
  open_first(50);
  EXPECT_EQ(open_streams(), indices(0, 49));

  part(50).output("first of 50\n");
  EXPECT_EQ(open_streams(), indices(1, 50));
  EXPECT_EQ(queue().front(), "1");
  EXPECT_EQ(queue().back(), "50");
  EXPECT_EQ(queue().size(), 50u);
  EXPECT_EQ(read_file("0"), "first of 0\n");

  part(0).output("second of 0\n");
  std::vector<std::size_t> open = indices(2, 50);
  open.insert(open.begin(), 0);
  EXPECT_EQ(open_streams(), open);
  EXPECT_EQ(queue().front(), "2");
  EXPECT_EQ(queue().back(), "0");
  EXPECT_EQ(text_of(part(0)), "first of 0\nsecond of 0\n");
  EXPECT_EQ(read_file("1"), "first of 1\n");
}

TEST_F(PartOutput, OrderOfEvictionIsThatOfOpeningNotOfLastUse) {
  open_first(50);
  part(0).output("used again\n");
  part(50).output("");
  EXPECT_FALSE(part(0).stream.is_open());
  EXPECT_TRUE(part(1).stream.is_open());
}

TEST_F(PartOutput, FileThatExistsIsAppendedTo) {
  folder_.write("0", "of an earlier run\n");
  part(0).output("new\n");
  EXPECT_EQ(text_of(part(0)), "of an earlier run\nnew\n");
}

TEST_F(PartOutput, BytesAreWrittenAsTheyAre) {
  const std::string bytes("a\r\nb\n\0\xff", 7);
  part(0).output(bytes);
  EXPECT_EQ(text_of(part(0)), bytes);
}

TEST_F(PartOutput, UnwritablePathIsReportedAtEveryAttempt) {
  part(0).path = "missing/\u00e4.stp";
  std::ostream* out = nullptr;
  const std::string line = "Could not open missing/\u00e4.stp\n";
  EXPECT_EQ(printed_by([&] { out = &part(0).output("a"); }), line);
  EXPECT_EQ(out, &part(0).stream);
  EXPECT_TRUE(out->fail());
  *out << "nothing of this goes anywhere";
  EXPECT_EQ(queue(), std::vector<std::string>{});
  EXPECT_EQ(printed_by([&] { part(0).output("b"); }), line);

  std::filesystem::create_directory("missing");
  EXPECT_EQ(printed_by([&] { part(0).output("c") << "d"; }), "");
  EXPECT_EQ(text_of(part(0)), "cd");
  EXPECT_EQ(queue(), std::vector<std::string>{"missing/\u00e4.stp"});
}

TEST_F(PartOutput, FailedAttemptMakesRoomFirst) {
  open_first(50);
  part(50).path = "missing/50";
  EXPECT_EQ(printed_by([&] { part(50).output("a"); }), "Could not open missing/50\n");
  EXPECT_EQ(open_streams(), indices(1, 49));
  EXPECT_EQ(queue().size(), 49u);
  EXPECT_EQ(printed_by([&] { part(50).output("a"); }), "Could not open missing/50\n");
  EXPECT_EQ(open_streams(), indices(1, 49));
}

TEST_F(PartOutput, OneFileIsClosedPerOpeningHoweverLongTheQueueIs) {
  open_first(50);
  for (std::size_t i = 50; i < 60; ++i) Part::_opened_files.push(&part(i));
  part(60).output("");
  EXPECT_EQ(queue().size(), 60u);
  EXPECT_EQ(queue().front(), "1");
  EXPECT_EQ(queue().back(), "60");
}

TEST_F(PartOutput, NullInTheQueueIsRemovedLikeAnyOther) {
  Part::_opened_files.push(nullptr);
  open_first(50);
  EXPECT_EQ(open_streams(), indices(0, 49));
  EXPECT_EQ(queue().front(), "0");
  EXPECT_EQ(queue().size(), 50u);
}

TEST_F(PartOutput, CloseLeavesTheQueueAlone) {
  open_first(2);
  part(0).close();
  EXPECT_FALSE(part(0).stream.is_open());
  EXPECT_FALSE(part(0).stream.fail());
  EXPECT_EQ(queue(), (std::vector<std::string>{"0", "1"}));
}

TEST_F(PartOutput, FailureToCloseIsNotReported) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no device that is always full";
  part(0).path = "/dev/full";
  EXPECT_EQ(printed_by([&] {
              part(0).output("does not fit");
              part(0).close();
            }),
            "");
  EXPECT_TRUE(part(0).stream.fail());
  EXPECT_FALSE(part(0).stream.is_open());
}

TEST_F(PartOutput, FreeStaticsClosesEverythingAndForgetsTheNames) {
  open_first(3);
  Part::_opened_files.push(nullptr);
  Part::_filenames["#7_part"] = 2;
  Part::free_statics();
  EXPECT_EQ(open_streams(), std::vector<std::size_t>{});
  EXPECT_EQ(queue(), std::vector<std::string>{});
  EXPECT_TRUE(Part::_filenames.empty());
  EXPECT_EQ(read_file("2"), "first of 2\n");

  part(0).output("second\n");  // The next run may begin.
  EXPECT_EQ(text_of(part(0)), "first of 0\nsecond\n");
  EXPECT_EQ(queue(), std::vector<std::string>{"0"});
}

TEST_F(PartOutput, FreeStaticsWithNothingToFreeIsFine) {
  Part::free_statics();
  EXPECT_TRUE(Part::_opened_files.empty());
  EXPECT_TRUE(Part::_filenames.empty());
}

TEST_F(PartOutput, FreedPartLeavesTheQueueInItsOrder) {
  open_first(4);
  parts_[1].reset();
  parts_[3].reset();
  EXPECT_EQ(queue(), (std::vector<std::string>{"0", "2"}));
  EXPECT_EQ(read_file("1"), "first of 1\n");
  parts_.clear();
  EXPECT_EQ(queue(), std::vector<std::string>{});
}

TEST_F(PartOutput, FreedPartLeavesTheQueueAlsoWhenItWasClosedBefore) {
  open_first(2);
  part(0).close();
  const Part* freed = parts_[0].get();
  parts_[0].reset();
  std::vector<const Part*> left;
  for (std::queue<Part*> rest = Part::_opened_files; !rest.empty(); rest.pop()) {
    left.push_back(rest.front());
  }
  Part::_opened_files = {};
  ASSERT_EQ(left.size(), 1u);
  EXPECT_NE(left.front(), freed);
}

}  // namespace
}  // namespace Kessel::test

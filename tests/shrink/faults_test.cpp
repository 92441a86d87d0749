// What cannot be shrunk, and what then happens: nothing, and a sentence that says why.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "kessel/errors.h"
#include "kessel/shrink.h"
#include "sameness/plain_file.h"
#include "support/folder_tree.h"
#include "support/scratch_folder.h"
#include "support/small_disk.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

class ShrinkFaults : public testing::Test {
 protected:
  ShrinkFaults() { folder_.write("in.stp", file_of("#1=A();\n#2=B(#1);\n")); }

  /// Why "in.stp" does not become "out.stp".
  std::string refusal(const fs::path& in = "in.stp", const fs::path& out = "out.stp") const {
    try {
      shrink(in, out, options_);
    } catch (const InputError& error) {
      return error.finding().sentence;
    } catch (const OutputError& error) {
      return error.path().string() + ": " + error.reason().message();
    }
    return "shrunk";
  }
  std::set<std::string> names() const { return names_in(folder_.path()); }

  ScratchFolder folder_;
  ShrinkOptions options_;
};

TEST_F(ShrinkFaults, InputThatIsNotThereOrNoFile) {
  EXPECT_EQ(refusal("missing.stp"), "The file cannot be opened: No such file or directory.");
  fs::create_directory("folder");
  EXPECT_EQ(refusal("folder"), "The file is a folder.");
  EXPECT_EQ(names(), (std::set<std::string>{"folder", "in.stp"}));
}

TEST_F(ShrinkFaults, InputThatIsCutShort) {
  const std::string text = read_file("in.stp");
  for (std::size_t end = 0; end < text.find("END-ISO"); ++end) {
    folder_.write("cut.stp", text.substr(0, end));
    const std::string why = refusal("cut.stp");
    if (why == "shrunk") {
      fs::remove("out.stp");  // What was lost is no part of a record.
    }
    ASSERT_EQ(names(), (std::set<std::string>{"cut.stp", "in.stp"})) << end;
  }
  folder_.write("cut.stp", text.substr(0, text.find("B(")));
  EXPECT_NE(refusal("cut.stp"), "shrunk");
}

TEST_F(ShrinkFaults, NumberForTwoRecords) {
  folder_.write("in.stp", file_of("#1=A();\n#1=B();\n"));
  EXPECT_NE(refusal(), "shrunk");
  EXPECT_EQ(names(), std::set<std::string>{"in.stp"});
}

TEST_F(ShrinkFaults, OutputThatIsThere) {
  folder_.write("out.stp", "precious");
  EXPECT_EQ(refusal(), "out.stp: File exists");
  EXPECT_EQ(read_file("out.stp"), "precious");
  options_.replace = true;
  EXPECT_EQ(refusal(), "shrunk");
  EXPECT_TRUE(read_file("out.stp").starts_with("ISO-10303-21;"));
  EXPECT_EQ(names(), (std::set<std::string>{"in.stp", "out.stp"}));
}

TEST_F(ShrinkFaults, OutputThatIsTheInput) {
  options_.replace = true;
  const std::string text = read_file("in.stp");
  fs::create_hard_link("in.stp", "link.stp");
  EXPECT_EQ(refusal("in.stp", "in.stp"), "in.stp: File exists");
  EXPECT_EQ(refusal("in.stp", "link.stp"), "link.stp: File exists");
  EXPECT_EQ(read_file("in.stp"), text);
}

TEST_F(ShrinkFaults, OutputThatCannotBe) {
  fs::create_directory("folder");
  options_.replace = true;
  EXPECT_EQ(refusal("in.stp", "folder"), "folder: Is a directory");
  EXPECT_EQ(refusal("in.stp", "nowhere/out.stp"), "nowhere/out.stp: No such file or directory");
  EXPECT_EQ(names(), (std::set<std::string>{"folder", "in.stp"}));
}

/// Records that fill a small disk.
std::string many_records() {
  std::string records;
  for (int i = 100; i < 3000; ++i) {
    records += "#" + std::to_string(i) + "=PRODUCT('a long name for a product','','',());\n";
  }
  return records;
}

TEST_F(ShrinkFaults, FullDisk) {
  folder_.write("in.stp", file_of(many_records()));
  const SmallDisk disk(folder_ / "disk", "size=64k");
  if (!disk.is_there()) GTEST_SKIP() << "only root may have a small disk";
  EXPECT_EQ(refusal("in.stp", "disk/out.stp"), "disk/out.stp: No space left on device");
  EXPECT_EQ(names_in("disk"), std::set<std::string>());
}

TEST_F(ShrinkFaults, MemoryLimit) {
  folder_.write("in.stp", file_of(many_records()));
  options_.memory_limit = 20'000;
  EXPECT_TRUE(refusal().starts_with("The first ")) << refusal();
  options_.memory_limit = 1 << 20;
  EXPECT_EQ(refusal(), "shrunk");
}

TEST_F(ShrinkFaults, ProgressTellsBothReadingsAndMayEndIt) {
  std::vector<Progress> told;
  options_.progress = [&](const Progress& progress) { told.push_back(progress); };
  EXPECT_EQ(refusal(), "shrunk");
  ASSERT_FALSE(told.empty());
  EXPECT_EQ(told.front().stage, Stage::reading);
  EXPECT_EQ(told.back().stage, Stage::writing);
  EXPECT_EQ(told.back().done, fs::file_size("in.stp"));
  EXPECT_EQ(told.back().total, fs::file_size("in.stp"));
  for (std::size_t i = 1; i < told.size(); ++i) {
    EXPECT_LE(told[i].done, told[i].total);
    EXPECT_LE(told[i - 1].stage, told[i].stage);
  }
  fs::remove("out.stp");
  options_.progress = [&](const Progress& progress) {
    if (progress.stage == Stage::writing) throw 1;
  };
  EXPECT_THROW(shrink("in.stp", "out.stp", options_), int);
  EXPECT_EQ(names(), std::set<std::string>{"in.stp"});
}

TEST_F(ShrinkFaults, FileThatIsChangedMeanwhile) {
  options_.progress = [&](const Progress& progress) {
    if (progress.stage == Stage::writing) folder_.write("in.stp", file_of("#1=A();\n"));
  };
  EXPECT_NE(refusal(), "shrunk");
  EXPECT_EQ(names(), std::set<std::string>{"in.stp"});
}

}  // namespace
}  // namespace Kessel::test

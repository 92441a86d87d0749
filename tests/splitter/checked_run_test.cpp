// The checked form of a run: inputs that it refuses, and files that are not written whole.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include "findings/write_failure.h"
#include "kessel/check.h"
#include "kessel/errors.h"
#include "kessel/part.h"
#include "kessel/splitter.h"
#include "splitter/small_inputs.h"
#include "support/scratch_folder.h"
#include "support/small_disk.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string HEADER = "ISO-10303-21;\nHEADER;\nENDSEC;\n";
const std::string END = "ENDSEC;\nEND-ISO-10303-21;\n";

/// What an exception says of a finding on `in`.
std::string line_about(const fs::path& in, const Finding& finding) {
  std::string place = in.string();
  if (finding.line != 0) {
    place += ":" + std::to_string(finding.line) + ":" + std::to_string(finding.column);
  }
  return place + ": " + finding.sentence;
}

class CheckedRunTest : public testing::Test {
 protected:
  ~CheckedRunTest() override { Part::free_statics(); }

  /// The finding with which a run refuses `in`. Expects that it leaves and prints nothing.
  Finding refused(const fs::path& in, const Options& options = {}) {
    std::optional<Finding> finding;
    EXPECT_EQ(printed_by([&] {
                try {
                  split_paths(in, "out", options);
                } catch (const InputError& error) {
                  finding = error.finding();
                  EXPECT_EQ(error.path(), in);
                  EXPECT_EQ(error.what(), line_about(in, *finding));
                }
              }),
              "");
    EXPECT_FALSE(fs::exists("out"));
    EXPECT_FALSE(fs::exists("roots.txt"));
    EXPECT_TRUE(finding.has_value());
    return finding.value_or(Finding());
  }

  /// Path and reason with which a run says that it could not write. Expects that it prints nothing
  /// and leaves nothing behind that a later run would trip over.
  std::pair<fs::path, std::error_code> failure(const fs::path& in, const fs::path& outdir) {
    std::pair<fs::path, std::error_code> failed;
    EXPECT_EQ(printed_by([&] {
                try {
                  split_paths(in, outdir, Options::classic());
                  ADD_FAILURE() << "no exception";
                } catch (const OutputError& error) {
                  failed = {error.path(), error.reason()};
                  EXPECT_EQ(error.what(), error.path().string() +
                                              ": cannot be written: " + error.reason().message());
                }
              }),
              "");
    EXPECT_TRUE(Part::_opened_files.empty());
    EXPECT_TRUE(Part::_filenames.empty());
    return failed;
  }

  fs::path write_box() { return folder_.write("in.stp", exchange_file(BOX_WITH_LID)); }

  ScratchFolder folder_;
};

/// The classic files of an input that is read in that way.
Options classic_read(Reading reading, std::uint64_t memory_limit = Options::NO_LIMIT) {
  Options options = Options::classic();
  options.reading = reading;
  options.memory_limit = memory_limit;
  return options;
}

/// Two products, one with a shape of so many records that its file has about a megabyte.
std::string large_file() {
  std::string records(BOX_WITH_LID);
  std::string items;
  for (int i = 100; i < 30'000; ++i) {
    const std::string name = "#" + std::to_string(i);
    records += name + "=CARTESIAN_POINT('',(0.,0.,0.));\n";
    items += "," + name;
  }
  records.insert(records.find("#11),#12)") + 3, items);
  return exchange_file(records);
}

/// Limits a resource of this process while it lives.
class Limited {
 public:
  Limited(__rlimit_resource resource, rlim_t limit) : resource_(resource) {
    EXPECT_EQ(::getrlimit(resource, &before_), 0);
    rlimit lower = before_;
    lower.rlim_cur = limit;
    EXPECT_EQ(::setrlimit(resource, &lower), 0);
  }
  Limited(const Limited&) = delete;
  Limited& operator=(const Limited&) = delete;
  ~Limited() { ::setrlimit(resource_, &before_); }

 private:
  __rlimit_resource resource_;
  rlimit before_ = {};
};

TEST_F(CheckedRunTest, WritesWhatTheTwoArgumentFormWrites) {
  const fs::path in = write_box();
  EXPECT_THAT(split_paths(in, "out", Options::classic()),
              ElementsAre("out/#1_part.stp", "out/#4_part.stp"));
  EXPECT_EQ(without_time_stamps(read_file("out/#1_part.stp")),
            output_file("out/#1_part.stp", BOX_RECORDS));
  EXPECT_EQ(without_time_stamps(read_file("out/#4_part.stp")),
            output_file("out/#4_part.stp", LID_RECORDS));
  EXPECT_EQ(read_file("roots.txt"), "#1_part.stp\n");
}

TEST_F(CheckedRunTest, InputsThatHaveNothingToSplitStayWhatTheyAre) {
  folder_.write("in.stp", exchange_file(LID_ALONE));
  EXPECT_EQ(
      printed_by([] { EXPECT_THAT(split_paths("in.stp", "out", Options::classic()), IsEmpty()); }),
      ONLY_ONE_PART);
  folder_.write("in.stp", exchange_file("#1=PRODUCT('lid','lid','',());\n"));
  EXPECT_EQ(
      printed_by([] { EXPECT_THAT(split_paths("in.stp", "out", Options::classic()), IsEmpty()); }),
      NO_ROOT);
}

void expect_at(const Finding& finding, FindingKind kind, std::uint64_t line, std::uint64_t offset) {
  EXPECT_EQ(finding.kind, kind);
  EXPECT_EQ(finding.line, line);
  EXPECT_EQ(finding.offset, offset);
  EXPECT_EQ(finding.severity, Severity::error);
}

TEST_F(CheckedRunTest, InputsThatWouldBeReadForEverAreRefused) {
  using enum FindingKind;
  const struct {
    std::string text;
    FindingKind kind;
    std::uint64_t line;
    std::uint64_t offset;
  } CASES[] = {
      {"", empty_file, 0, 0},
      {"\x1F\x8B\x08 and more", compressed, 0, 0},
      {std::string("\xFF\xFEI\0S\0O\0", 8), other_encoding, 0, 0},
      {"\x01\x02\x03", binary, 0, 0},
      {"hello\n", not_an_exchange_file, 0, 0},
      {"ISO-10303-21;\nHEADER;\nENDSEC;DATA;\n", header_without_end, 3, 22},
      {"ISO-10303-21;\nHEADER;\nENDSEC;", nothing_after_header, 3, 29},
      {HEADER + "DATA;\n#1=A();\n stray", unclosed_text, 6, 45},
      {HEADER + "DATA;\n#1=A(\n", unclosed_record, 5, 36},
      {HEADER + "DATA;\n#1=A();\n#2=B(;\n" + END, unclosed_record, 6, 44},
      {"ISO-10303-21;\nHEADER;\n#x;\nENDSEC;\nDATA;\n" + END, header_is_read_as_data, 4, 26},
  };
  for (const auto& row : CASES) {
    SCOPED_TRACE(row.text);
    const fs::path in = folder_.write("in.stp", row.text);
    expect_at(refused(in, Options::classic()), row.kind, row.line, row.offset);
  }
}

TEST_F(CheckedRunTest, InputsInWhichItIsDoubtfulWhereRecordsEndAreRefused) {
  using enum FindingKind;
  const struct {
    std::string text;
    FindingKind kind;
    std::uint64_t line;
    std::uint64_t offset;
  } CASES[] = {
      {"", empty_file, 0, 0},
      {"\x1F\x8B\x08 and more", compressed, 0, 0},
      {std::string("\xFF\xFEI\0S\0O\0", 8), other_encoding, 0, 0},
      {"\x01\x02\x03", binary, 0, 0},
      {"hello\n", not_an_exchange_file, 0, 0},
      {"ISO-10303-21;\nHEADER;\nENDSEC", unclosed_text, 3, 22},
      {HEADER + "DATA;\n#1=A();\n stray", unclosed_text, 6, 45},
      {HEADER + "DATA;\n#1=A(\n", unclosed_record, 5, 36},
      {HEADER + "DATA;\n#1=A();\n#2=B(;\n" + END, unclosed_list, 6, 44},
      {"ISO-10303-21;\nHEADER;\n#x;\nENDSEC;\nDATA;\n" + END, unclosed_section, 3, 22},
  };
  for (const auto& row : CASES) {
    SCOPED_TRACE(row.text);
    const fs::path in = folder_.write("in.stp", row.text);
    expect_at(refused(in), row.kind, row.line, row.offset);
  }
}

TEST_F(CheckedRunTest, RefusalIsAFindingOfTheCheck) {
  const fs::path in = folder_.write("in.stp", HEADER + "DATA;\n#1=A(9);\n#2=B(;\n" + END);
  const Finding finding = refused(in);
  const std::vector<Finding> found = check(in);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].sentence, finding.sentence);
  EXPECT_EQ(found[0].instance, finding.instance);
  EXPECT_EQ(finding.instance, 2u);
  EXPECT_EQ(found[0].offset, finding.offset);
  EXPECT_EQ(finding.offset, 45u);
  EXPECT_EQ(found[0].line, finding.line);
  EXPECT_EQ(finding.line, 6u);
}

TEST_F(CheckedRunTest, ClassicReadingLooksNoFurtherThanAnEmptyPiece) {
  const Options classic = Options::classic();
  const fs::path in = folder_.write("in.stp", HEADER + "#0=A();\n#1=A();;#2=B(");
  printed_by([&] { EXPECT_THAT(split_paths(in, "out", classic), IsEmpty()); });
  fs::remove_all("out");
  folder_.write("in.stp", HEADER + "#0=A();\n#1=A();\n#2=B(");
  const Finding finding = refused(in, classic);
  expect_at(finding, FindingKind::unclosed_record, 6, 46);
  EXPECT_EQ(finding.instance, 2u);
}

TEST_F(CheckedRunTest, HeaderEndsWhereTheStandardHasIt) {
  std::string text = exchange_file(BOX_WITH_LID);
  text.replace(text.find("ENDSEC;"), 7, "ENDSEC /* of the header */ ;");
  const fs::path in = folder_.write("in.stp", text);
  split_paths(in, "out", classic_read(Reading::standard));
  const std::string written = read_file("out/#1_part.stp");
  const std::string head = written.substr(0, written.find("DATA;"));
  EXPECT_TRUE(head.starts_with("ISO-10303-21;\nHEADER;\n")) << written;
  EXPECT_TRUE(head.ends_with(";\nENDSEC;\n\n")) << written;
  EXPECT_EQ(head.find('#'), head.find("#1_part.stp")) << "a record in the header: " << written;
}

TEST_F(CheckedRunTest, ClassicReadingIsForTheClassicStyleOnly) {
  const fs::path in = write_box();
  for (const AssemblyStyle style : {AssemblyStyle::lean, AssemblyStyle::nested}) {
    try {
      split_paths(in, "out", {.reading = Reading::classic, .assemblies = style});
      ADD_FAILURE() << "no exception";
    } catch (const std::invalid_argument& error) {
      EXPECT_STREQ(error.what(),
                   "The classic reading is for the classic style of assemblies; the others need "
                   "the standard one.");
    }
    EXPECT_FALSE(fs::exists("out"));
    EXPECT_FALSE(fs::exists("roots.txt"));
  }
  EXPECT_THAT(split_paths(in, "out", Options::classic()),
              ElementsAre("out/#1_part.stp", "out/#4_part.stp"));
}

TEST_F(CheckedRunTest, WhatIsNoRegularFileIsRefusedUnopened) {
  ASSERT_EQ(::mkfifo("pipe", 0600), 0);
  EXPECT_EQ(refused("pipe").sentence,
            "The file is not a regular file, and the input is read twice.");
  EXPECT_EQ(refused("/dev/zero").kind, FindingKind::unreadable);
  EXPECT_EQ(refused(".").sentence, "The file is a folder.");
}

TEST_F(CheckedRunTest, InputThatIsNotThereIsRefusedWithTheReason) {
  for (const Options& options : {Options(), Options::classic()}) {
    const Finding finding = refused("missing.stp", options);
    EXPECT_EQ(finding.kind, FindingKind::unreadable);
    EXPECT_EQ(finding.sentence, "The file cannot be opened: No such file or directory.");
  }
}

TEST_F(CheckedRunTest, MemoryLimitBoundsTheStore) {
  std::string records(BOX_WITH_LID);
  for (unsigned i = 1; i <= 1000; ++i) records += "#" + std::to_string(i << 22U) + "=A();\n";
  const fs::path in = folder_.write("in.stp", exchange_file(records));
  for (const Reading reading : {Reading::standard, Reading::classic}) {
    SCOPED_TRACE(static_cast<int>(reading));
    const Finding finding = refused(in, classic_read(reading, 20'000'000));
    EXPECT_EQ(finding.kind, FindingKind::memory_limit);
    // A page of 32 KiB and 8 KiB of the table of pages for each such number. What a standard
    // reading notes of the records' places takes the room of the last.
    const unsigned number = reading == Reading::standard ? 481 : 482;
    EXPECT_EQ(finding.instance, number << 22U);
    EXPECT_EQ(finding.line, 19u + number);

    EXPECT_THAT(split_paths(in, "out", classic_read(reading, 50'000'000)),
                ElementsAre("out/#1_part.stp", "out/#4_part.stp"));
    fs::remove_all("out");
    fs::remove("roots.txt");
  }
}

TEST_F(CheckedRunTest, MemoryLimitBoundsRecordsAndTextsToo) {
  std::string records(BOX_WITH_LID);
  for (unsigned i = 100; i < 30'000; ++i) records += "#" + std::to_string(i) + "=A();\n";
  const fs::path in = folder_.write("in.stp", exchange_file(records));
  EXPECT_EQ(refused(in, {.memory_limit = 300'000}).kind, FindingKind::memory_limit);
  EXPECT_EQ(refused(in, classic_read(Reading::standard, 1'000'000)).kind,
            FindingKind::memory_limit);

  folder_.write("in.stp", exchange_file("#1=A('" + std::string(2'000'000, 'x') + "');\n"));
  EXPECT_EQ(refused(in, {.memory_limit = 1'000'000}).kind, FindingKind::memory_limit);
  folder_.write("in.stp", "ISO-10303-21;\n" + std::string(2'000'000, '\n'));
  EXPECT_EQ(refused(in, {.memory_limit = 1'000'000}).kind, FindingKind::memory_limit);
}

TEST_F(CheckedRunTest, InputThatOthersChangeBetweenItsReadingsIsRefused) {
  const std::string text = exchange_file(BOX_WITH_LID);
  std::string other = text;
  other.replace(other.find("'lid'"), 5, "'hat'");
  const std::vector<std::string> changed = {
      "",    text.substr(0, text.size() / 2), text.substr(0, text.size() - 1), text + "#99=LATE();",
      other,
  };
  for (const std::string& now : changed) {
    SCOPED_TRACE(now);
    const fs::path in = folder_.write("in.stp", text);
    fs::last_write_time(in, fs::last_write_time(in) - std::chrono::hours(1));
    Options options;
    options.progress = [&](const Progress& progress) {
      if (progress.stage == Stage::sorting && progress.done == 0) folder_.write("in.stp", now);
    };
    try {
      split_paths(in, "out", options);
      ADD_FAILURE() << "no exception";
    } catch (const InputError& error) {
      EXPECT_EQ(error.finding().kind, FindingKind::changed_while_read);
    }
    fs::remove_all("out");
  }
}

TEST_F(CheckedRunTest, MemoryLimitBoundsNamesWhereFilesAreCalledAfterThem) {
  std::string records(BOX_WITH_LID);
  for (unsigned i = 101; i <= 110; ++i) {
    records +=
        "#" + std::to_string(i) + "=XREPRESENTATIONX('" + std::string(300'000, 'x') + "');\n";
  }
  const fs::path in = folder_.write("in.stp", exchange_file(records));
  const Finding finding =
      refused(in, {.assemblies = AssemblyStyle::classic, .memory_limit = 2'000'000});
  EXPECT_EQ(finding.kind, FindingKind::memory_limit);
  EXPECT_EQ(finding.instance, 107u);
  EXPECT_EQ(split_paths(in, "out", classic_read(Reading::standard, 2'000'000)).size(), 2u);
}

TEST_F(CheckedRunTest, FilesOfAnEarlierRunStayAsTheyAre) {
  const fs::path in = write_box();
  split_paths(in, "out", Options::classic());
  const std::string root = read_file("out/#1_part.stp");
  const std::string lid = read_file("out/#4_part.stp");
  EXPECT_EQ(failure(in, "out"),
            std::pair(fs::path("out/#1_part.stp"), make_error_code(std::errc::file_exists)));
  EXPECT_EQ(read_file("out/#1_part.stp"), root);
  EXPECT_EQ(read_file("out/#4_part.stp"), lid);
}

TEST_F(CheckedRunTest, FileInTheWayOfTheLastPartLeavesTheOthersUnwritten) {
  fs::create_directory("out");
  folder_.write("out/#4_part.stp", "mine");
  folder_.write("roots.txt", "mine too");
  EXPECT_EQ(failure(write_box(), "out"),
            std::pair(fs::path("out/#4_part.stp"), make_error_code(std::errc::file_exists)));
  EXPECT_EQ(read_file("out/#4_part.stp"), "mine");
  EXPECT_EQ(read_file("roots.txt"), "mine too");
  EXPECT_FALSE(fs::exists("out/#1_part.stp"));
}

TEST_F(CheckedRunTest, FilesAreLookedForUnderTheNamesOfTheirStyle) {
  fs::create_directory("out");
  folder_.write("out/lid.stp", "mine");
  const fs::path in = write_box();
  EXPECT_THROW(split_paths(in, "out", {.names = NameStyle::product}), OutputError);
  EXPECT_EQ(read_file("out/lid.stp"), "mine");
  EXPECT_EQ(split_paths(in, "out", {.names = NameStyle::record}).size(), 2u);
}

TEST_F(CheckedRunTest, InputUnderTheNameOfAFileStaysAsItIs) {
  fs::create_directory("out");
  const std::string text = exchange_file(BOX_WITH_LID);
  const fs::path in = folder_.write("out/#4_part.stp", text);
  EXPECT_EQ(failure(in, "out"),
            std::pair(fs::path("out/#4_part.stp"), make_error_code(std::errc::file_exists)));
  EXPECT_EQ(read_file(in), text);
  EXPECT_FALSE(fs::exists("roots.txt"));
}

TEST_F(CheckedRunTest, InputUnderTheNameOfTheListOfRootsStaysAsItIs) {
  const std::string text = exchange_file(BOX_WITH_LID);
  folder_.write("roots.txt", text);
  fs::create_symlink("roots.txt", "in.stp");
  for (const char* in : {"roots.txt", "in.stp"}) {
    EXPECT_EQ(failure(in, "out"),
              std::pair(fs::path("roots.txt"), make_error_code(std::errc::file_exists)));
    EXPECT_EQ(read_file("roots.txt"), text);
  }
  EXPECT_FALSE(fs::exists("out"));
}

TEST_F(CheckedRunTest, LinksAreNotFollowed) {
  const fs::path in = write_box();
  folder_.write("mine", "mine");
  for (const char* target : {"../mine", "../nothing"}) {
    fs::create_directory("out");
    fs::create_symlink(target, "out/#1_part.stp");
    EXPECT_EQ(failure(in, "out"),
              std::pair(fs::path("out/#1_part.stp"), make_error_code(std::errc::file_exists)));
    fs::remove_all("out");
  }
  for (const char* target : {"mine", "nothing"}) {
    fs::create_symlink(target, "roots.txt");
    EXPECT_EQ(failure(in, "out"),
              std::pair(fs::path("roots.txt"), make_error_code(std::errc::file_exists)));
    fs::remove("roots.txt");
  }
  EXPECT_EQ(read_file("mine"), "mine");
  EXPECT_FALSE(fs::exists("nothing"));
  EXPECT_FALSE(fs::exists("out"));
}

TEST_F(CheckedRunTest, PipesAreNotOpened) {
  const fs::path in = write_box();
  fs::create_directory("out");
  ASSERT_EQ(::mkfifo("out/#4_part.stp", 0600), 0);
  EXPECT_EQ(failure(in, "out"),
            std::pair(fs::path("out/#4_part.stp"), make_error_code(std::errc::file_exists)));
  fs::remove_all("out");
  ASSERT_EQ(::mkfifo("roots.txt", 0600), 0);
  EXPECT_EQ(failure(in, "out"),
            std::pair(fs::path("roots.txt"), make_error_code(std::errc::file_exists)));
  EXPECT_FALSE(fs::exists("out"));
}

TEST_F(CheckedRunTest, FolderInPlaceOfAFile) {
  fs::create_directories("out/#4_part.stp");
  EXPECT_EQ(failure(write_box(), "out"),
            std::pair(fs::path("out/#4_part.stp"), make_error_code(std::errc::is_a_directory)));
  EXPECT_FALSE(fs::exists("out/#1_part.stp"));
}

TEST_F(CheckedRunTest, FolderInPlaceOfTheListOfRoots) {
  fs::create_directories("roots.txt");
  EXPECT_EQ(failure(write_box(), "out"),
            std::pair(fs::path("roots.txt"), make_error_code(std::errc::is_a_directory)));
  EXPECT_FALSE(fs::exists("out"));
}

TEST_F(CheckedRunTest, EarlierListOfRootsIsReplaced) {
  folder_.write("roots.txt", "of an earlier run, and longer\n");
  split_paths(write_box(), "out", Options::classic());
  EXPECT_EQ(read_file("roots.txt"), "#1_part.stp\n");
}

TEST_F(CheckedRunTest, ListOfRootsThatWillNotBeWrittenIsInNobodysWay) {
  fs::create_directory("roots.txt");
  const fs::path in = folder_.write("in.stp", exchange_file(LID_ALONE));
  EXPECT_EQ(printed_by([&] { EXPECT_THAT(split_paths(in, "out", Options::classic()), IsEmpty()); }),
            ONLY_ONE_PART);
}

TEST_F(CheckedRunTest, LaterRunIsNotTroubledByAnEarlierFailure) {
  fs::create_directories("out/#4_part.stp");
  const fs::path in = write_box();
  failure(in, "out");
  EXPECT_THAT(split_paths(in, "next", Options::classic()),
              ElementsAre("next/#1_part.stp", "next/#4_part.stp"));
  // Nor by one of the two-argument form, which an exception ended.
  std::string records(BOX_WITH_LID);
  records.replace(records.find("(#8,#10)"), 8, "(#8)");
  folder_.write("broken.stp", exchange_file(records));
  printed_by([] { EXPECT_THROW(Kessel::Run("broken.stp", "out"), std::out_of_range); });
  ASSERT_TRUE(first_write_failure().has_value());
  EXPECT_THAT(split_paths(in, "last", Options::classic()),
              ElementsAre("last/#1_part_(2)_.stp", "last/#4_part_(2)_.stp"));
}

TEST_F(CheckedRunTest, PathThatIsTooLong) {
  const fs::path in = write_box();
  // The folder could be made step by step; a file in it has a path beyond what the system takes.
  fs::path outdir;
  while (outdir.string().size() < 4000) outdir /= std::string(200, 'a');
  outdir /= std::string(4095 - outdir.string().size() - 2, 'b');
  const auto [path, reason] = failure(in, outdir);
  EXPECT_EQ(path, outdir / "#1_part.stp");
  EXPECT_EQ(reason, std::errc::filename_too_long);
  EXPECT_FALSE(fs::exists(*outdir.begin()));
  EXPECT_FALSE(fs::exists("roots.txt"));
}

TEST_F(CheckedRunTest, LimitOfTheSizeOfFiles) {
  const fs::path in = folder_.write("in.stp", large_file());
  const auto before = std::signal(SIGXFSZ, SIG_IGN);
  {
    const Limited limited(RLIMIT_FSIZE, 500'000);
    EXPECT_EQ(failure(in, "out"),
              std::pair(fs::path("out/#4_part.stp"), make_error_code(std::errc::file_too_large)));
  }
  std::signal(SIGXFSZ, before);
  EXPECT_EQ(fs::file_size("out/#4_part.stp"), 500'000u);
}

TEST_F(CheckedRunTest, LimitThatTheLastFlushMeets) {
  // The whole file stays in the stream's buffer until it is closed.
  const fs::path in = write_box();
  const auto before = std::signal(SIGXFSZ, SIG_IGN);
  {
    const Limited limited(RLIMIT_FSIZE, 100);
    EXPECT_EQ(failure(in, "out"),
              std::pair(fs::path("out/#1_part.stp"), make_error_code(std::errc::file_too_large)));
  }
  std::signal(SIGXFSZ, before);
  EXPECT_EQ(fs::file_size("out/#1_part.stp"), 100u);
}

/// The lowest descriptor that is free.
int free_descriptor() {
  const int descriptor = ::dup(STDIN_FILENO);
  ::close(descriptor);
  return descriptor;
}

/// A file of that many parts, each with one record to be written in turn.
std::string file_of_parts(unsigned count) {
  std::string records;
  for (unsigned i = 1; i <= count; ++i) {
    const auto name = [i](unsigned k) { return "#" + std::to_string(10 * i + k); };
    records += name(0) + "=PRODUCT('','','',());\n" + name(1) +
               "=PRODUCT_DEFINITION_FORMATION('',''," + name(0) + ");\n" + name(2) +
               "=PRODUCT_DEFINITION('',''," + name(1) + ",$);\n";
  }
  return exchange_file(records);
}

TEST_F(CheckedRunTest, SixtyFourOpenFilesAreEnough) {
#if defined(__SANITIZE_ADDRESS__)
  GTEST_SKIP() << "the sanitizer looks at memory through descriptors of its own";
#endif
  const fs::path in = folder_.write("in.stp", file_of_parts(200));
  const Limited limited(RLIMIT_NOFILE, static_cast<rlim_t>(free_descriptor()) + 60);
  EXPECT_EQ(split_paths(in, "out", Options::classic()).size(), 201u);
}

TEST_F(CheckedRunTest, LimitOfOpenFiles) {
#if defined(__SANITIZE_ADDRESS__)
  GTEST_SKIP() << "the sanitizer looks at memory through descriptors of its own";
#endif
  const fs::path in = folder_.write("in.stp", file_of_parts(30));
  const auto limit = static_cast<rlim_t>(free_descriptor()) + 20;
  const Limited limited(RLIMIT_NOFILE, limit);
  const auto [path, reason] = failure(in, "out");
  EXPECT_EQ(reason, std::errc::too_many_files_open);
  EXPECT_FALSE(fs::exists(path));
  EXPECT_TRUE(fs::exists("out/#10_part.stp"));
}

TEST_F(CheckedRunTest, FullDisk) {
  const SmallDisk disk("disk", "size=256k");
  if (!disk.is_there()) GTEST_SKIP() << "no right to mount a small disk";
  const fs::path in = folder_.write("in.stp", large_file());
  const auto failed = failure(in, "disk/out");
  EXPECT_EQ(failed, std::pair(fs::path("disk/out/#4_part.stp"),
                              make_error_code(std::errc::no_space_on_device)));
}

TEST_F(CheckedRunTest, ReadOnlyDisk) {
  const SmallDisk disk("disk", "size=256k");
  if (!disk.is_there()) GTEST_SKIP() << "no right to mount a small disk";
  fs::create_directory("disk/out");
  EXPECT_EQ(::mount("none", "disk", "tmpfs", MS_REMOUNT | MS_RDONLY, nullptr), 0);
  const auto failed = failure(write_box(), "disk/out");
  EXPECT_EQ(failed, std::pair(fs::path("disk/out/#1_part.stp"),
                              make_error_code(std::errc::read_only_file_system)));
}

/// While it lives, this process has the rights of a user to whom nothing belongs, where it is root
/// and may give up that.
class WithoutPrivileges {
 public:
  WithoutPrivileges() : was_root_(::geteuid() == 0) {
    if (was_root_ && ::seteuid(NOBODY) != 0) works_ = false;
  }
  WithoutPrivileges(const WithoutPrivileges&) = delete;
  WithoutPrivileges& operator=(const WithoutPrivileges&) = delete;
  ~WithoutPrivileges() {
    if (was_root_ && works_ && ::seteuid(0) != 0) ADD_FAILURE() << "root has lost its rights";
  }

  /// Whether permissions hold the process back.
  bool works() const { return works_; }

 private:
  static constexpr uid_t NOBODY = 65534;
  bool was_root_;
  bool works_ = true;
};

TEST_F(CheckedRunTest, FolderWithoutPermission) {
  write_box();
  fs::permissions(".", fs::perms::all);
  fs::create_directory("out");
  const fs::perms read_only = fs::perms::owner_read | fs::perms::owner_exec |
                              fs::perms::others_read | fs::perms::others_exec;
  const fs::perms closed = fs::perms::none;
  for (const fs::perms permissions : {read_only, closed}) {
    fs::permissions("out", permissions);
    const WithoutPrivileges nobody;
    if (!nobody.works()) GTEST_SKIP() << "permissions do not hold root back";
    EXPECT_EQ(failure("in.stp", "out"), std::pair(fs::path("out/#1_part.stp"),
                                                  make_error_code(std::errc::permission_denied)));
  }
  fs::permissions("out", fs::perms::owner_all);
  EXPECT_TRUE(fs::is_empty("out"));
}

}  // namespace
}  // namespace Kessel::test

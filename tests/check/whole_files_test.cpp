// Whole files: those that cannot be read, hostile ones, and real ones.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "check/check_text.h"
#include "splitter/small_inputs.h"
#include "support/effort.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

Lines checked_file(const fs::path& path) {
  Lines lines;
  for (const Finding& finding : check(path)) lines.push_back(describe(finding));
  return lines;
}

TEST(WholeFiles, FilesThatCannotBeReadAreFindings) {
  const ScratchFolder folder;
  ASSERT_EQ(::mkfifo("pipe", 0600), 0);
  fs::create_symlink("loop", "loop");
  EXPECT_EQ(checked_file("missing"),
            (Lines{"error unreadable: The file cannot be opened: No such file or directory."}));
  EXPECT_EQ(checked_file("loop"),
            (Lines{"error unreadable: The file cannot be opened: Too many levels of symbolic "
                   "links."}));
  EXPECT_EQ(checked_file(std::string(300, 'a')),
            (Lines{"error unreadable: The file cannot be opened: File name too long."}));
  EXPECT_EQ(checked_file("."), (Lines{"error unreadable: The file is a folder."}));
  const Lines NOT_REGULAR = {
      "error unreadable: The file is not a regular file, and the input is read twice."};
  EXPECT_EQ(checked_file("pipe"), NOT_REGULAR);
  EXPECT_EQ(checked_file("/dev/null"), NOT_REGULAR);
}

TEST(WholeFiles, NothingIsWrittenAndNothingPrinted) {
  const ScratchFolder folder;
  folder.write("cycle.stp", exchange_file(CYCLE));
  folder.write("box.stp", exchange_file(std::string(BOX_WITH_LID) +
                                        "#20=NEXT_ASSEMBLY_USAGE_OCCURRENCE(#3);\n"));
  EXPECT_EQ(printed_by([] {
              EXPECT_EQ(check("cycle.stp").size(), 1u);
              EXPECT_EQ(check("box.stp").size(), 1u);
            }),
            "");
  std::size_t files = 0;
  for (const auto& entry : fs::directory_iterator(".")) files += entry.exists() ? 1 : 0;
  EXPECT_EQ(files, 2u);
  EXPECT_EQ(read_file("cycle.stp"), exchange_file(CYCLE));
}

TEST(WholeFiles, LongChainOfRecords) {
  const auto length = static_cast<unsigned>(length_to_try(1'000'000));
  const std::string last = "#" + std::to_string(length) + "=A(";
  std::string records(BOX_WITH_LID);
  for (unsigned i = 100; i < length; ++i) {
    records += "#" + std::to_string(i) + "=A(#" + std::to_string(i + 1) + ");\n";
  }
  EXPECT_EQ(checked(exchange_file(records + last + ");\n")), Lines());
  const Lines circle = checked(exchange_file(records + last + "#100);\n"));
  ASSERT_EQ(circle.size(), 1u);
  const std::string others = length == 1'000'000 ? "999,900" : "99,900";
  EXPECT_TRUE(circle[0].ends_with("#100: #100 and " + others +
                                  " other records refer to each other in a circle."));
}

TEST(WholeFiles, AMillionFindings) {
  std::string records(BOX_WITH_LID);
  for (unsigned i = 0; i < 1'000'000; ++i) records += "A();\n";
  const auto findings = findings_in(exchange_file(records));
  ASSERT_EQ(findings.size(), 21u);
  EXPECT_EQ(findings.back().kind, FindingKind::skipped_text);
  EXPECT_EQ(findings.back().line, 40u);
  EXPECT_EQ(findings.back().count, 999'980u);
}

// One record of five MiB, in many pieces, and one that ends just where a block does.
TEST(WholeFiles, LinesAreCountedAcrossBlocks) {
  std::string records(BOX_WITH_LID);
  records += "#20=A('";
  for (int i = 0; i < 500'000; ++i) records += "abc;efgh\n\n";
  records += "\xE9');\n\n#21=A(#99);\n";
  const std::string text = exchange_file(records);
  EXPECT_EQ(checked(text),
            (Lines{"20:1@" + std::to_string(text.find("#20")) +
                       " warning not_utf8 #20: Bytes here are neither ASCII nor UTF-8.",
                   "1000022:1@" + std::to_string(text.find("#21")) +
                       " warning missing_instance #21: #21 refers to #99, which is not there."}));
}

TEST(WholeFiles, SamplesHaveNothingButOnePartAtMost) {
  const fs::path samples = samples_folder();
  if (samples.empty()) GTEST_SKIP() << why_no_sample();
  for (const auto& entry : fs::directory_iterator(samples)) {
    SCOPED_TRACE(entry.path());
    for (const Finding& finding : check(entry.path())) ADD_FAILURE() << describe(finding);
  }
}

}  // namespace
}  // namespace Kessel::test

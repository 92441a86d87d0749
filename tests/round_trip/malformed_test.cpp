// What real files have and the standard does not: nothing is refused over it, and nothing made of
// it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "kessel/check.h"
#include "kessel/extract.h"
#include "kessel/splitter.h"
#include "round_trip/round_trip.h"
#include "splitter/small_inputs.h"
#include "support/product_records.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

/// The example, with numbers from 1001 on and what real files have wrong.
std::string malformed_file() {
  const std::string plain = read_file(fs::path(PROJECT_FOLDER) / "examples/bench-vice.step");
  std::string text = std::regex_replace(plain, std::regex("#([0-9]{1,3})\\b"), "#1000$1");
  const std::string odd =
      "#18446744073709551615=DESCRIPTIVE_REPRESENTATION_ITEM('C:\\dir \xE4','\\');;\n"
      "stray text;\n"
      "#1800=SHAPE_REPRESENTATION('odd',(#8,#18446744073709551614,#0,#99999999,#9,#10,"
      "#99999999999,#1999),#10001);\n"
      "#1800=SHAPE_REPRESENTATION('odd',(#8,#18446744073709551614,#0,#99999999,#9,#10,"
      "#99999999999,#1999),#10001);\n";
  text.insert(text.find("DATA;\n") + 6, odd);
  return text + "more text";
}

/// The numbers in the list of the record with the name 'odd', where the file has it.
std::vector<std::string> dangling_numbers(const std::string& text) {
  std::vector<std::string> numbers;
  std::smatch list;
  if (!std::regex_search(text, list, std::regex("'odd',\\(([^)]*)\\)"))) return numbers;
  const std::string items = list[1];
  const std::regex name("#([0-9]+)");
  for (std::sregex_iterator at(items.begin(), items.end(), name), end; at != end; ++at) {
    numbers.push_back((*at)[1]);
  }
  return numbers;
}

std::set<std::string> numbers_of_records(const std::string& text) {
  std::set<std::string> numbers;
  const std::regex record("\n(?:/\\*[^*]*\\*/)?#([0-9]+) *=");
  for (std::sregex_iterator at(text.begin(), text.end(), record), end; at != end; ++at) {
    numbers.insert((*at)[1]);
  }
  return numbers;
}

/// An assembly of one component, with a list of both that holds more than references.
std::string with_items(const std::string& items) {
  return exchange_file(SHARED_RECORDS + product_records(10, "whole", "#3") +
                       product_records(20, "own", "#3,#50") + solid_records(50) +
                       usage_record(60, 10, 20) + "#70=SECURITY_CLASSIFICATION('','',$);\n" +
                       "#71=CC_DESIGN_SECURITY_CLASSIFICATION(#70,(" + items + "));\n");
}

TEST(ListOfMoreThanReferences, LeadsNowhereWrongInAnyFile) {
  const ScratchFolder folder;
  for (const char* const items : {"#10,#20", "A(#10),#20", "((#10,#20),#20)", "A#10,#20", "#10#20",
                                  "/*#10*/#10,#20", "A(#10)", "(#10),A(#20)"}) {
    folder.write("in.stp", with_items(items));
    for (const AssemblyStyle style : {AssemblyStyle::lean, AssemblyStyle::nested}) {
      EXPECT_THAT(round_trip_faults("in.stp", style, false), testing::IsEmpty()) << items;
    }
    extract("in.stp", "own", "own.stp", {.replace = true});
    for (const Finding& finding : check("own.stp")) {
      EXPECT_NE(finding.kind, FindingKind::missing_instance) << items << finding.sentence;
    }
  }
}

class MalformedFile : public testing::TestWithParam<AssemblyStyle> {};

TEST_P(MalformedFile, IsSplitWithWarningsAndNoDanglingReferenceGetsARecord) {
  const ScratchFolder folder;
  std::string text = malformed_file();
  const bool is_classic = GetParam() == AssemblyStyle::classic;
  // That style has no room for the largest numbers of records.
  if (is_classic) text.replace(text.find("#18446744073709551615="), 22, "#1801=");
  std::set<FindingKind> warned;
  Options options;
  options.assemblies = GetParam();
  options.warning = [&](const Finding& finding) {
    EXPECT_NE(finding.line, 0u) << finding.sentence;
    EXPECT_NE(finding.column, 0u) << finding.sentence;
    warned.insert(finding.kind);
  };
  const std::vector<WrittenFile> files = split(folder.write("in.stp", text), "out", options);
  std::set<FindingKind> expected{FindingKind::lone_backslash, FindingKind::not_utf8,
                                 FindingKind::empty_statement, FindingKind::skipped_text,
                                 FindingKind::text_after_end};
  if (!is_classic) {
    expected.insert({FindingKind::same_text_twice, FindingKind::missing_instance});
  }
  EXPECT_EQ(warned, expected);
  std::size_t found = 0;
  for (const WrittenFile& file : files) {
    const std::string written = read_file(file.path);
    const std::set<std::string> records = numbers_of_records(written);
    EXPECT_EQ(records.size(), file.records);
    for (const std::string& number : dangling_numbers(written)) {
      EXPECT_FALSE(records.contains(number)) << file.path << " #" << number;
      ++found;
    }
  }
  EXPECT_GE(found, 3u);
}

INSTANTIATE_TEST_SUITE_P(Styles, MalformedFile,
                         testing::Values(AssemblyStyle::classic, AssemblyStyle::lean,
                                         AssemblyStyle::nested));

}  // namespace
}  // namespace Kessel::test

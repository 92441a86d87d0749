// Files that are checked with the input that refers to them.
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "check/check_text.h"
#include "support/referring_input.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

/// A file with one part that is said to be in each of the files `names`.
std::string file_referring_to(const std::vector<std::string>& names) {
  std::string text = SHARED_RECORDS + product_records(10, "part", "#3");
  int number = 100;
  for (const std::string& name : names) text += reference(number += 10, name, 10);
  return exchange_file(text);
}

/// What is found when all are checked, each with its file in front.
Lines checked_with_all(const fs::path& in, Options options = {}) {
  options.follow_references = true;
  Lines lines;
  for (const Finding& finding : check(in, options)) {
    lines.push_back((finding.file.empty() ? "" : finding.file + " ") + describe(finding));
  }
  return lines;
}

/// `record`, where it stands in a file of file_referring_to().
std::string place_in(const std::string& file, const std::string& record) {
  return place_of(record, read_file(file));
}

class ReferredFilesCheck : public testing::Test {
 protected:
  ScratchFolder folder_;
};

TEST_F(ReferredFilesCheck, EachFindingHasItsFile) {
  fs::create_directories("in/sub");
  folder_.write("in/a.stp", file_referring_to({"sub/b.stp", "sub/b.stp", "c.stp"}));
  folder_.write("in/sub/b.stp", file_referring_to({"none.stp", "../c.stp"}));
  folder_.write("in/c.stp", exchange_file("#1=A(#2);\n"));
  EXPECT_EQ(checked_with_all("in/a.stp"),
            (Lines{"sub/b.stp " + place_in("in/sub/b.stp", "#110=DOC") +
                       "warning missing_target #110: The file \"none.stp\" that is referred to is "
                       "not there.",
                   "c.stp " + place_in("in/c.stp", "#1=A") +
                       "warning missing_instance #1: #1 refers to #2, which is not there."}));
  EXPECT_TRUE(check("in/a.stp").empty()) << "nothing is followed unasked";
}

TEST_F(ReferredFilesCheck, AFileThatCannotBeReadToItsEndHidesNoOther) {
  folder_.write("a.stp", file_referring_to({"b.stp", "c.stp"}));
  folder_.write("b.stp", "");
  folder_.write("c.stp", exchange_file("#1=A('"));
  EXPECT_EQ(checked_with_all("a.stp"),
            (Lines{"b.stp error empty_file: The file is empty.",
                   "c.stp " + place_in("c.stp", "#1=A(") +
                       "error unclosed_string: A string in this statement is not closed up to the "
                       "end of the file."}));
}

TEST_F(ReferredFilesCheck, FilesOutsideOfTheFolderAreFollowedWhereAsked) {
  fs::create_directories("in");
  folder_.write("in/a.stp", file_referring_to({"../b.stp", "../b.stp"}));
  folder_.write("b.stp", exchange_file("#1=A(#2);\n"));
  EXPECT_EQ(checked_with_all("in/a.stp"),
            (Lines{place_in("in/a.stp", "#110=DOC") +
                   "warning target_outside #110: The file \"../b.stp\" lies outside of the input's "
                   "folder, and is not followed."}));
  EXPECT_EQ(checked_with_all("in/a.stp", {.follow_outside = true}),
            (Lines{"../b.stp " + place_in("b.stp", "#1=A") +
                   "warning missing_instance #1: #1 refers to #2, which is not there."}));
}

TEST_F(ReferredFilesCheck, CirclesAndOtherSchemasAreToldOfTheirFiles) {
  folder_.write("a.stp", file_referring_to({"b.stp", "d.stp"}));
  folder_.write("b.stp", file_referring_to({"c.stp"}));
  folder_.write("c.stp", file_referring_to({"b.stp"}));
  std::string other = file_referring_to({"d.stp"});
  const std::string schema = "AUTOMOTIVE_DESIGN";
  other.replace(other.find(schema), schema.size(), "OTHER");
  folder_.write("d.stp", other);
  EXPECT_EQ(checked_with_all("a.stp"),
            (Lines{"b.stp warning file_cycle: The file is one of 2 that refer to each other in a "
                   "circle.",
                   "d.stp warning file_cycle: The file refers to itself.",
                   "d.stp warning mixed_schemas: The file obeys the schema \"OTHER\", the root "
                   "\"AUTOMOTIVE_DESIGN\"."}));
}

TEST_F(ReferredFilesCheck, NamesAreSeenFromTheFolderOfTheInput) {
  fs::create_directories("in");
  fs::create_directories("copy");
  folder_.write("copy/a.stp", file_referring_to({"b.stp"}));
  folder_.write("in/b.stp", exchange_file("#1=A(#2);\n"));
  std::vector<std::pair<std::uint64_t, std::uint64_t>> told;
  std::vector<fs::path> asked;
  Options options;
  options.input_folder = "in";
  options.progress = [&](const Progress& progress) {
    told.emplace_back(progress.done, progress.total);
  };
  options.readable = [&](const fs::path& file) {
    asked.push_back(file);
    return file;
  };
  EXPECT_EQ(checked_with_all("copy/a.stp", options).size(), 1u);
  EXPECT_EQ(asked, (std::vector<fs::path>{"in/b.stp"}));
  const std::uint64_t all = fs::file_size("copy/a.stp") + fs::file_size("in/b.stp");
  ASSERT_FALSE(told.empty());
  EXPECT_EQ(told.back(), std::make_pair(all, all));
}

}  // namespace
}  // namespace Kessel::test

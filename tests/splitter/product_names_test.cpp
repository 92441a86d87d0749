// Whole runs whose files are called after products: names, references, headers and "roots.txt".
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kessel/part.h"
#include "kessel/splitter.h"
#include "splitter/small_inputs.h"
#include "support/scratch_folder.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

std::string replace_all(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
    text.replace(at, from.size(), to);
  }
  return text;
}

/// The box with a lid called `name`, an exchange-string body.
std::string box_with_lid_called(const std::string& name) {
  return exchange_file(
      replace_all(std::string(BOX_WITH_LID), "PRODUCT('lid',", "PRODUCT('" + name + "',"));
}

class ProductNames : public testing::Test {
 protected:
  std::vector<fs::path> run(const std::string& text, NameStyle names) {
    return split_paths(folder_.write("in.stp", text), "out",
                       {.assemblies = AssemblyStyle::classic, .names = names});
  }

  ScratchFolder folder_;
};

TEST_F(ProductNames, AsciiNamesStandInTheResultTheReferencesTheHeadersAndTheRootsFile) {
  const auto files = run(box_with_lid_called("D\\X\\F6se"), NameStyle::product);
  EXPECT_EQ(files, (std::vector<fs::path>{"out/box.stp", "out/Dose.stp"}));
  const std::string records = replace_all(std::string(BOX_RECORDS), "#4_part.stp", "Dose.stp");
  EXPECT_EQ(
      without_time_stamps(read_file("out/box.stp")),
      output_file("out/box.stp", replace_all(records, "PRODUCT('lid',", "PRODUCT('D\\X\\F6se',")));
  EXPECT_TRUE(
      without_time_stamps(read_file("out/Dose.stp")).starts_with(output_begin("out/Dose.stp")));
  EXPECT_EQ(read_file("roots.txt"), "box.stp\n");
}

TEST_F(ProductNames, UnicodeNamesAreWrittenAsConformingStrings) {
  const auto files =
      run(box_with_lid_called("\\X2\\76D6\\X0\\ \\X\\F6"), NameStyle::product_unicode);
  EXPECT_EQ(files, (std::vector<fs::path>{"out/box.stp", "out/盖 ö.stp"}));
  const std::string root = read_file("out/box.stp");
  EXPECT_NE(root.find("=DOCUMENT_FILE('\\X2\\76D6\\X0\\ \\X\\F6.stp','','',#12,'',$);"),
            std::string::npos);
  EXPECT_NE(root.find("EXTERNAL_IDENTIFICATION_ASSIGNMENT('\\X2\\76D6\\X0\\ \\X\\F6.stp',#16"),
            std::string::npos);
  EXPECT_TRUE(without_time_stamps(read_file("out/盖 ö.stp"))
                  .starts_with(output_begin("out/\\X2\\76D6\\X0\\ \\X\\F6.stp")));
}

TEST_F(ProductNames, RootsFileHasTheRootsNameAsUtf8) {
  run(replace_all(exchange_file(BOX_WITH_LID), "PRODUCT('box',", "PRODUCT('\\X2\\76D2\\X0\\',"),
      NameStyle::product_unicode);
  EXPECT_EQ(read_file("roots.txt"), "盒.stp\n");
}

// In classic headers, characters below U+1000 have three digits and a zero byte.
TEST_F(ProductNames, FolderInHeadersIsConformingToo) {
  split_paths(folder_.write("in.stp", exchange_file(BOX_WITH_LID)), "Ω",
              {.assemblies = AssemblyStyle::classic, .names = NameStyle::product});
  EXPECT_TRUE(without_time_stamps(read_file("Ω/box.stp"))
                  .starts_with(output_begin("\\X2\\03A9\\X0\\/box.stp")));
  split_paths("in.stp", "Ω", Options::classic());
  EXPECT_TRUE(without_time_stamps(read_file("Ω/#1_part.stp"))
                  .starts_with(output_begin(std::string("\\X2\\3A9\0\\X0\\/#1_part.stp", 24))));
}

TEST_F(ProductNames, NamesOfEarlierRunsDoNotCount) {
  run(exchange_file(BOX_WITH_LID), NameStyle::product);
  fs::remove_all("out");
  EXPECT_EQ(run(exchange_file(BOX_WITH_LID), NameStyle::product),
            (std::vector<fs::path>{"out/box.stp", "out/lid.stp"}));
}

TEST_F(ProductNames, NoNameLeadsOutOfTheFolder) {
  const auto files = run(box_with_lid_called("../../lid"), NameStyle::product);
  EXPECT_EQ(files, (std::vector<fs::path>{"out/box.stp", "out/_._.._lid.stp"}));
}

}  // namespace
}  // namespace Kessel::test

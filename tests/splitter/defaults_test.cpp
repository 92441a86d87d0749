// What a split does without being told how, and what hosts of `Run` ask for.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "kessel/part.h"
#include "kessel/splitter.h"
#include "splitter/small_inputs.h"
#include "support/folder_tree.h"
#include "support/scratch_folder.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class Defaults : public testing::Test {
 protected:
  ~Defaults() override { Part::free_statics(); }

  /// What a split has left, which goes.
  static FolderTree taken() {
    FolderTree tree = tree_of(".");
    fs::remove_all("out");
    fs::remove("roots.txt");
    return tree;
  }

  ScratchFolder folder_;
};

TEST_F(Defaults, AreNestedNamesOfProductsAndTheStandardReading) {
  const Options options;
  EXPECT_EQ(options.assemblies, AssemblyStyle::nested);
  EXPECT_EQ(options.names, NameStyle::product);
  EXPECT_EQ(options.reading, Reading::standard);
  EXPECT_EQ(options.folder_in_headers, std::nullopt);
  EXPECT_EQ(options.memory_limit, Options::NO_LIMIT);

  const fs::path in = folder_.write("in.stp", exchange_file(BOX_WITH_LID));
  EXPECT_THAT(split_paths(in, "out"), ElementsAre("out/box.stp", "out/lid.stp"));
  const FolderTree unasked = taken();
  split_paths(in, "out",
              {.reading = Reading::standard,
               .assemblies = AssemblyStyle::nested,
               .names = NameStyle::product,
               .folder_in_headers = ""});
  EXPECT_EQ(taken(), unasked);
  EXPECT_TRUE(unasked.at("out/box.stp")
                  .starts_with("ISO-10303-21;\nHEADER;\n"
                               "FILE_DESCRIPTION(('small'),'2;1');\n"
                               "FILE_NAME('box.stp','<time>',"));
}

TEST_F(Defaults, FolderInHeadersIsTheOneThatWasAskedFor) {
  const fs::path in = folder_.write("in.stp", exchange_file(BOX_WITH_LID));
  for (const AssemblyStyle style : {AssemblyStyle::classic, AssemblyStyle::nested}) {
    split_paths(in, "out", {.assemblies = style, .folder_in_headers = "some/where"});
    const std::string text = taken().at("out/lid.stp");
    EXPECT_NE(text.find("FILE_NAME('some/where/lid.stp','<time>',"), std::string::npos) << text;
  }
}

TEST_F(Defaults, ClassicOptionsGiveTheBytesOfRun) {
  // Among them a comment and a string at which only the classic reading cuts.
  std::string records(BOX_WITH_LID);
  records += "#20=DESCRIPTION('a;b');\n/* #21=A(); */\n#22=DESCRIPTION('c');\n";
  for (const std::string& text : {exchange_file(BOX_WITH_LID), exchange_file(records),
                                  exchange_file(LID_ALONE), exchange_file(CYCLE)}) {
    SCOPED_TRACE(text);
    folder_.write("in.stp", text);
    std::vector<fs::path> paths;
    const std::string said = printed_by([&] { paths = Kessel::Run("in.stp", "./out"); });
    Part::free_statics();
    const FolderTree expected = taken();
    EXPECT_EQ(
        printed_by([&] { EXPECT_EQ(split_paths("in.stp", "./out", Options::classic()), paths); }),
        said);
    EXPECT_EQ(taken(), expected);
  }
}

}  // namespace
}  // namespace Kessel::test

// velkstep split --json, --quiet and --progress.
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>

#include "cli/run_process.h"
#include "splitter/small_inputs.h"
#include "support/folder_tree.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

class SplitOutput : public testing::Test {
 protected:
  SplitOutput() { folder_.write("in.stp", exchange_file(BOX_WITH_LID)); }

  ScratchFolder folder_;
};

TEST_F(SplitOutput, JsonHoldsTheFilesAndHowTheyHangTogether) {
  const ProcessRun run = run_velkstep({"split", "--json", "in.stp", "out"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.out.find('\n'), run.out.size() - 1) << "one line";
  EXPECT_EQ(Json::parse(run.out), Json({{"format", 1},
                                        {"input", "in.stp"},
                                        {"output", "out"},
                                        {"assemblies", "nested"},
                                        {"names", "product"},
                                        {"root", "box.stp"},
                                        {"files",
                                         {{{"file", "box.stp"},
                                           {"record", 3},
                                           {"id", "box"},
                                           {"name", "box"},
                                           {"kind", "assembly"},
                                           {"parents", Json::array()},
                                           {"children", {1}},
                                           {"records", 31},
                                           {"bytes", fs::file_size("out/box.stp")}},
                                          {{"file", "lid.stp"},
                                           {"record", 6},
                                           {"id", "lid"},
                                           {"name", "lid"},
                                           {"kind", "part"},
                                           {"parents", {0}},
                                           {"children", Json::array()},
                                           {"records", 8},
                                           {"bytes", fs::file_size("out/lid.stp")}}}}}));
}

TEST_F(SplitOutput, JsonOfAGeneratedRootAndOfNoRoot) {
  folder_.write("in.stp", exchange_file("#1=PRODUCT('box','box','',());\n"
                                        "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
                                        "#3=PRODUCT_DEFINITION('d','',#2,$);\n"
                                        "#4=PRODUCT('lid','lid','',());\n"
                                        "#5=PRODUCT_DEFINITION_FORMATION('','',#4);\n"
                                        "#6=PRODUCT_DEFINITION('d','',#5,$);\n"
                                        "#7=PRODUCT_DEFINITION_SHAPE('','',#3);\n"
                                        "#8=PRODUCT_DEFINITION_SHAPE('','',#6);\n"
                                        "#9=SHAPE_DEFINITION_REPRESENTATION(#7,#11);\n"
                                        "#10=SHAPE_DEFINITION_REPRESENTATION(#8,#12);\n"
                                        "#11=SHAPE_REPRESENTATION('',(),$);\n"
                                        "#12=SHAPE_REPRESENTATION('',(),$);\n"));
  const Json json = Json::parse(run_velkstep({"split", "--json", "in.stp", "out"}).out);
  EXPECT_EQ(json["root"], "Root.stp");
  EXPECT_EQ(json["files"][0]["record"], Json());
  EXPECT_EQ(json["files"][0]["children"], Json({1, 2}));

  folder_.write("in.stp", exchange_file(CYCLE));
  const Json cycle =
      Json::parse(run_velkstep({"split", "--json", "--classic", "in.stp", "cycle"}).out);
  EXPECT_EQ(cycle["root"], Json());
  EXPECT_EQ(cycle["files"][0]["parents"], Json({1}));
  EXPECT_EQ(cycle["files"][1]["parents"], Json({0}));
}

TEST_F(SplitOutput, QuietPrintsNothing) {
  const ProcessRun run = run_velkstep({"split", "--quiet", "--progress=always", "in.stp", "out"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.errors, "");
  EXPECT_TRUE(fs::exists("out/box.stp"));
}

TEST_F(SplitOutput, ProgressIsShownOnRequestAndWiped) {
  const ProcessRun run = run_velkstep({"split", "--progress=always", "in.stp", "out"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_TRUE(run.errors.starts_with("\r[" + std::string(30, ' ') + "]   0% reading\x1b[K"))
      << run.errors;
  EXPECT_TRUE(run.errors.ends_with("\r\x1b[K")) << run.errors;
  EXPECT_EQ(run.out, "out/box.stp\nout/lid.stp\n");
}

TEST_F(SplitOutput, ProgressIsNotShownWithoutATerminal) {
  EXPECT_EQ(run_velkstep({"split", "in.stp", "a"}).errors, "");
  EXPECT_EQ(run_velkstep({"split", "--progress=auto", "in.stp", "b"}).errors, "");
  EXPECT_EQ(run_velkstep({"split", "--progress=never", "in.stp", "c"}).errors, "");
}

TEST_F(SplitOutput, StandardInputIsSplitLikeAFile) {
  const ProcessRun run =
      run_velkstep({"split", "--json", "-", "out"}, {.standard_input = "in.stp"});
  EXPECT_EQ(run.exit_code, 0) << run.errors;
  const Json json = Json::parse(run.out);
  EXPECT_EQ(json["input"], "-");
  EXPECT_EQ(json["files"].size(), 2u);
  EXPECT_EQ(run_velkstep({"split", "in.stp", "file"}).exit_code, 0);
  FolderTree file = tree_of("file");
  std::string& list = file.at("velkstep-split.json");
  list.replace(list.find("\"in.stp\""), 8, "\"-\"");
  EXPECT_EQ(tree_of("out"), file);
}

}  // namespace
}  // namespace Kessel::test

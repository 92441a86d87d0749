// Inputs with one part, or none: their split is a copy.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <system_error>
#include <vector>

#include "kessel/assembly.h"
#include "kessel/diff.h"
#include "kessel/errors.h"
#include "kessel/join.h"
#include "kessel/split_list.h"
#include "kessel/splitter.h"
#include "kessel/verify.h"
#include "splitter/small_inputs.h"
#include "support/folder_tree.h"
#include "support/scratch_folder.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

/// The lid with a shape, odd blanks and comments, and a record that nobody refers to.
const std::string LID = exchange_file(std::string(LID_ALONE) +
                                      "#7 = PRODUCT_DEFINITION_SHAPE('','',#6); /* hm; */\r\n"
                                      "#8=SHAPE_DEFINITION_REPRESENTATION(#7,#9);\n"
                                      "#9=SHAPE_REPRESENTATION('',(),$);\n"
                                      "#1000=A('x;y');\n") +
                        "\n \n";

class WholeCopy : public testing::Test {
 protected:
  /// Splits `text`, expects one file, and returns the name under which its copy stands.
  std::string copied(const std::string& text, Options options = {}) {
    const fs::path in = folder_.write("in.step", text);
    fs::remove_all("out");
    warnings_.clear();
    options.warning = [&](const Finding& finding) { warnings_.push_back(finding.kind); };
    std::vector<WrittenFile> files;
    EXPECT_EQ(printed_by([&] { files = split(in, "out", options); }), "");
    EXPECT_EQ(files.size(), 1u);
    if (files.size() != 1) return "";
    file_ = files.front();
    EXPECT_TRUE(read_file(file_.path) == text) << read_file(file_.path);
    EXPECT_EQ(file_.bytes, text.size());
    const std::string name = file_.path.filename();
    EXPECT_EQ(read_file("roots.txt"), name + "\n");
    EXPECT_EQ(names_in("out"), (std::set<std::string>{name, SPLIT_LIST}));
    EXPECT_TRUE(diff(in, file_.path).is_same);
    EXPECT_TRUE(verify(in, "out").findings.empty());
    fs::remove("one.step");
    join("out", "one.step");
    EXPECT_TRUE(diff(in, "one.step").is_same);
    return name;
  }

  ScratchFolder folder_;
  WrittenFile file_;
  std::vector<FindingKind> warnings_;
};

TEST_F(WholeCopy, HasTheNameOfTheProduct) {
  for (const AssemblyStyle style : {AssemblyStyle::lean, AssemblyStyle::nested}) {
    EXPECT_EQ(copied(LID, {.assemblies = style}), "lid.stp");
    EXPECT_EQ(file_.part, 6u);
    EXPECT_EQ(file_.records, 7u);
    EXPECT_EQ(warnings_, std::vector<FindingKind>{FindingKind::one_part});
  }
  EXPECT_EQ(copied(LID, {.names = NameStyle::record}), "#4_part.stp");
}

TEST_F(WholeCopy, IsListed) {
  copied(LID);
  const auto list = read_split_list("out");
  ASSERT_TRUE(list.has_value());
  EXPECT_EQ(list->root, "lid.stp");
  ASSERT_EQ(list->files.size(), 1u);
  EXPECT_EQ(list->files[0].product, "lid");
  EXPECT_EQ(state_of(list->files[0], "out"), ListedState::unchanged);
}

TEST_F(WholeCopy, OfAPartAndWhatItShowsByMappedItems) {
  std::string text = LID;
  text.replace(text.find("'',(),$"), 7, "'',(#20),$");
  text.insert(text.find("#1000"),
              "#20=MAPPED_ITEM('',#21,$);\n#21=REPRESENTATION_MAP($,#22);\n"
              "#22=SHAPE_REPRESENTATION('',(#23),$);\n#23=MANIFOLD_SOLID_BREP('',$);\n"
              "#30=PRODUCT('bolt','bolt','',());\n#31=PRODUCT_DEFINITION_FORMATION('','',#30);\n"
              "#32=PRODUCT_DEFINITION('','',#31,$);\n#33=PRODUCT_DEFINITION_SHAPE('','',#32);\n"
              "#34=SHAPE_DEFINITION_REPRESENTATION(#33,#22);\n");
  EXPECT_EQ(copied(text), "lid.stp");
  EXPECT_EQ(warnings_, std::vector<FindingKind>{FindingKind::one_part});
}

TEST_F(WholeCopy, WithoutAProductHasTheNameOfTheInput) {
  const std::string text = exchange_file("#1=CARTESIAN_POINT('',(0.,0.,0.));\n");
  EXPECT_EQ(copied(text), "in.stp");
  EXPECT_EQ(file_.part, 0u);
  EXPECT_EQ(file_.records, 1u);
  EXPECT_EQ(warnings_, std::vector<FindingKind>{FindingKind::no_part});
  EXPECT_EQ(read_split_list("out")->files[0].record, 0u);
  EXPECT_EQ(copied(exchange_file("")), "in.stp");
  EXPECT_EQ(copied(text, {.input_name = "-x\u00fc.b.step"}), "_xu.b.stp");
  EXPECT_EQ(copied(text, {.names = NameStyle::product_unicode, .input_name = "\u652f"}),
            "\u652f.stp");
  EXPECT_EQ(copied(text, {.input_name = "-"}), "Root.stp");
  EXPECT_EQ(copied(text, {.input_name = ".step"}), "_step.stp");
}

TEST_F(WholeCopy, ReplacesNothing) {
  const fs::path in = folder_.write("in.step", LID);
  fs::create_directory("out");
  folder_.write("out/lid.stp", "mine");
  EXPECT_THROW(split(in, "out"), OutputError);
  EXPECT_EQ(read_file("out/lid.stp"), "mine");
  EXPECT_EQ(names_in("out"), std::set<std::string>{"lid.stp"});
  EXPECT_FALSE(fs::exists("roots.txt"));
}

TEST_F(WholeCopy, TellsHowFarItHasCome) {
  std::string records(LID_ALONE);
  for (int i = 100; i < 3100; ++i) {
    records += "#" + std::to_string(i) + "=A('" + std::string(1000, 'x') + "');\n";
  }
  Options options;
  std::vector<Progress> writing;
  options.progress = [&](const Progress& progress) {
    if (progress.stage == Stage::writing) writing.push_back(progress);
  };
  const std::string text = exchange_file(records);
  copied(text, options);
  ASSERT_GE(writing.size(), 4u);
  EXPECT_EQ(writing.front().done, 0u);
  EXPECT_EQ(writing.back().done, text.size());
  EXPECT_EQ(writing.back().total, text.size());
}

TEST_F(WholeCopy, IsNoneInTheClassicStyle) {
  const fs::path in = folder_.write("in.step", LID);
  for (Options options : {Options::classic(), Options{.assemblies = AssemblyStyle::classic}}) {
    EXPECT_EQ(printed_by([&] { EXPECT_TRUE(split(in, "out", options).empty()); }), ONLY_ONE_PART);
    EXPECT_EQ(names_in("."), (std::set<std::string>{"in.step", "out"}));
    EXPECT_TRUE(fs::is_empty("out"));
  }
}

TEST_F(WholeCopy, IsWhatTheTreeSays) {
  const fs::path in = folder_.write("in.step", LID);
  const Assembly assembly = read_assembly(in);
  ASSERT_EQ(assembly.parts.size(), 1u);
  EXPECT_EQ(assembly.parts[0].file, "lid.stp");
  EXPECT_EQ(read_assembly(in, Options::classic()).parts[0].file, "");
}

}  // namespace
}  // namespace Kessel::test

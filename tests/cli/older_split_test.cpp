// velkstep split --force over an older split: what of it goes, and what stays.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "cli/run_process.h"
#include "kessel/split_list.h"
#include "splitter/small_inputs.h"
#include "support/folder_tree.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;
using Names = std::set<std::string>;

/// The box, its lid called `lid`.
std::string box_with(const std::string& lid) {
  std::string records(BOX_WITH_LID);
  records.replace(records.find("'lid','lid'"), 11, "'" + lid + "','" + lid + "'");
  return exchange_file(records);
}

/// "old.stp" with a hat and "new.stp" with a lid; the old one is split into "out".
class OlderSplitTest : public testing::Test {
 protected:
  OlderSplitTest() {
    folder_.write("old.stp", box_with("hat"));
    folder_.write("new.stp", box_with("lid"));
    EXPECT_EQ(run_velkstep({"split", "old.stp", "-o", "out"}).exit_code, 0);
    EXPECT_EQ(run_velkstep({"split", "new.stp", "-o", "new"}).exit_code, 0);
    new_ = tree_of("new");
    fs::remove_all("new");
  }

  /// Splits the new one over the old one; expects these lines on standard error, and "out" to hold
  /// the new one and `more`.
  void expect_replaced(const std::string& errors, const FolderTree& more = {}) {
    const ProcessRun run = run_velkstep({"split", "--force", "new.stp", "-o", "out"});
    EXPECT_EQ(run.exit_code, 0);
    EXPECT_EQ(run.out, "out/box.stp\nout/lid.stp\n");
    EXPECT_EQ(run.errors, errors);
    FolderTree expected = new_;
    expected.insert(more.begin(), more.end());
    EXPECT_EQ(tree_of("out"), expected);
    EXPECT_EQ(names_in("."), (Names{"old.stp", "new.stp", "out"}));
  }

  ScratchFolder folder_;
  FolderTree new_;
};

// What a dry run says of it, and that it goes then.
TEST_F(OlderSplitTest, DryRunTellsWhatWouldGo) {
  folder_.write("out/notes.txt", "mine");
  const FolderTree before = tree_of("out");
  const ProcessRun dry = run_velkstep({"split", "-nf", "new.stp", "-o", "out"});
  EXPECT_EQ(dry.exit_code, 0);
  EXPECT_EQ(dry.errors, "");
  EXPECT_TRUE(dry.out.ends_with("  bytes in 4 files\nremoved  out/hat.stp\n")) << dry.out;
  EXPECT_EQ(tree_of("out"), before);
  expect_replaced("", {{"notes.txt", "mine"}});
}

// As with the split itself, what was changed stays.
TEST_F(OlderSplitTest, DryRunTellsWhatWouldStay) {
  folder_.write("out/hat.stp", "changed");
  const ProcessRun dry = run_velkstep({"split", "-nf", "new.stp", "-o", "out"});
  EXPECT_EQ(dry.exit_code, 0);
  EXPECT_TRUE(dry.out.ends_with("  bytes in 4 files\n")) << dry.out;
  EXPECT_EQ(dry.errors,
            "velkstep: out: 1 file of an earlier split changed since, and stays; "
            "remove it where not needed: hat.stp\n");
}

TEST_F(OlderSplitTest, GoesWhereItIsAsItWasWritten) {
  ASSERT_EQ(names_in("out"), (Names{"box.stp", "hat.stp", "roots.txt", SPLIT_LIST}));
  folder_.write("out/notes.txt", "mine");
  expect_replaced("", {{"notes.txt", "mine"}});
}

TEST_F(OlderSplitTest, StaysWhereItHasChanged) {
  std::string hat = read_file("out/hat.stp");
  hat[hat.size() - 3] = ' ';
  folder_.write("out/hat.stp", hat);
  expect_replaced(
      "velkstep: out: 1 file of an earlier split changed since, and stays; "
      "remove it where not needed: hat.stp\n",
      {{"hat.stp", without_time_stamps(hat)}});
  // The new list does not know it.
  expect_replaced("", {{"hat.stp", without_time_stamps(hat)}});
}

TEST_F(OlderSplitTest, ThatIsMissingIsMissed) {
  fs::remove("out/hat.stp");
  expect_replaced("");
}

TEST_F(OlderSplitTest, LinksInItsPlaceStay) {
  fs::rename("out/hat.stp", "out/elsewhere.stp");
  fs::create_symlink("elsewhere.stp", "out/hat.stp");
  const std::string hat = without_time_stamps(read_file("out/elsewhere.stp"));
  expect_replaced(
      "velkstep: out: 1 file of an earlier split changed since, and stays; "
      "remove it where not needed: hat.stp\n",
      {{"elsewhere.stp", hat}, {"hat.stp", "->elsewhere.stp"}});
}

TEST_F(OlderSplitTest, StaysWithoutForce) {
  const FolderTree before = tree_of("out");
  EXPECT_EQ(run_velkstep({"split", "new.stp", "-o", "out"}).exit_code, 1);
  EXPECT_EQ(tree_of("out"), before);
}

TEST_F(OlderSplitTest, StaysWhereItsListCannotBeRead) {
  const std::string hat = without_time_stamps(read_file("out/hat.stp"));
  folder_.write("out/velkstep-split.json", "{");
  expect_replaced(
      "velkstep: out: The list of the split is no JSON. What an earlier split left "
      "stays; remove by hand what is not needed.\n",
      {{"hat.stp", hat}});
}

TEST_F(OlderSplitTest, NeverLeadsOutOfTheFolder) {
  std::string list = read_file("out/velkstep-split.json");
  list.replace(list.find("\"hat.stp\""), 9, "\"../old.stp\"");
  folder_.write("out/velkstep-split.json", list);
  const std::string hat = without_time_stamps(read_file("out/hat.stp"));
  expect_replaced(
      "velkstep: out: The list of the split names something that is no file in its "
      "folder. What an earlier split left stays; remove by hand what is not needed.\n",
      {{"hat.stp", hat}});
}

TEST_F(OlderSplitTest, GoesBeforeAClassicOneToo) {
  const ProcessRun run = run_velkstep({"split", "--classic", "--force", "new.stp", "-o", "out"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.errors, "");
  EXPECT_EQ(names_in("out"), (Names{"#1_part.stp", "#4_part.stp", "roots.txt"}));
}

TEST_F(OlderSplitTest, RootsFileGoesWhereTheNewSplitHasNone) {
  folder_.write("new.stp", exchange_file(CYCLE));
  EXPECT_EQ(run_velkstep({"split", "--classic", "--force", "new.stp", "-o", "out"}).exit_code, 0);
  EXPECT_EQ(names_in("out"), (Names{"#1_part.stp", "#4_part.stp"}));
}

TEST_F(OlderSplitTest, PageOfAReportGoes) {
  EXPECT_EQ(run_velkstep({"report", "--force", "old.stp", "-o", "out"}).exit_code, 0);
  EXPECT_TRUE(fs::exists("out/report.html"));
  expect_replaced("");
}

TEST_F(OlderSplitTest, InputAmongItsFilesStays) {
  folder_.write("out/lid.stp", "x");
  fs::remove_all("out");
  EXPECT_EQ(run_velkstep({"split", "new.stp", "-o", "out"}).exit_code, 0);
  const std::string lid = read_file("out/lid.stp");
  // The lid alone, under another name than it has.
  fs::rename("out/lid.stp", "out/hat.stp");
  std::string list = read_file("out/velkstep-split.json");
  list.replace(list.find("\"file\": \"lid.stp\""), 17, "\"file\": \"hat.stp\"");
  folder_.write("out/velkstep-split.json", list);
  const ProcessRun run = run_velkstep({"split", "--force", "out/hat.stp", "-o", "out"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.out, "out/lid.stp\n");
  EXPECT_EQ(run.errors,
            "velkstep: out/hat.stp: holds one part only; out/lid.stp is a copy of it\n");
  EXPECT_EQ(names_in("out"), (Names{"hat.stp", "lid.stp", "roots.txt", SPLIT_LIST}));
  EXPECT_EQ(read_file("out/hat.stp"), lid);
}

TEST_F(OlderSplitTest, ComesBackWhereTheNewOneFails) {
  if (!fs::exists("/dev/full")) GTEST_SKIP() << "no device that is always full";
  const FolderTree before = tree_of(folder_.path());
  const ProcessRun run =
      run_velkstep({"split", "--force", "new.stp", "-o", "out"}, {.standard_output = "/dev/full"});
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_EQ(tree_of(folder_.path()), before);
}

TEST_F(OlderSplitTest, ManyChangedFilesAreOneLine) {
  std::string records =
      "#1=PRODUCT('box','box','',());\n"
      "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
      "#3=PRODUCT_DEFINITION('d','',#2,$);\n";
  for (int i = 1; i <= 7; ++i) {
    const auto at = [i](int k) { return "#" + std::to_string(10 * i + k); };
    const std::string name = "p" + std::to_string(i);
    records += at(0) + "=PRODUCT('" + name + "','" + name + "','',());\n" + at(1) +
               "=PRODUCT_DEFINITION_FORMATION('',''," + at(0) + ");\n" + at(2) +
               "=PRODUCT_DEFINITION('',''," + at(1) + ",$);\n" + at(3) +
               "=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#3," + at(2) + ",$);\n";
  }
  folder_.write("old.stp", exchange_file(records));
  EXPECT_EQ(run_velkstep({"split", "--force", "old.stp", "-o", "out"}).exit_code, 0);
  FolderTree changed;
  for (int i = 1; i <= 7; ++i) {
    const std::string name = "p" + std::to_string(i) + ".stp";
    folder_.write("out/" + name, "mine");
    changed[name] = "mine";
  }
  expect_replaced(
      "velkstep: out: 7 files of an earlier split changed since, and stay; remove them where not "
      "needed: p1.stp, "
      "p2.stp, p3.stp, p4.stp, p5.stp, ...\n",
      changed);
}

}  // namespace
}  // namespace Kessel::test

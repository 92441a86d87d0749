// The order of the passes, and hosts that drive a File themselves.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "kessel/encoding.h"
#include "kessel/file.h"
#include "reader/parse_file.h"
#include "splitter/small_inputs.h"
#include "structure/process_parts.h"
#include "support/scratch_folder.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Pipeline : public testing::Test {
 protected:
  ~Pipeline() override { Part::free_statics(); }

  std::unique_ptr<File> from(std::string_view records) {
    folder_.write("in.stp", exchange_file(records));
    return std::unique_ptr<File>(File::from("in.stp", decode_step_to_utf8));
  }

  static std::vector<std::string> names(const std::vector<Part*>& parts) {
    std::vector<std::string> all;
    for (const Part* part : parts) all.push_back(part->path.string());
    return all;
  }

  ScratchFolder folder_;
};

TEST_F(Pipeline, FromFindsLinksClassifiesAndNamesTheParts) {
  const auto file = from(BOX_WITH_LID);
  ASSERT_THAT(names(file->parts()), ElementsAre("#1_part.stp", "#4_part.stp"));
  Part* box = file->parts()[0];
  Part* lid = file->parts()[1];
  EXPECT_EQ(file->root_part(), box);
  EXPECT_THAT(box->childs_parts(), ElementsAre(lid));
  EXPECT_THAT(lid->parents_parts(), ElementsAre(box));
  EXPECT_EQ(box->part_kind, ASSEMBLY_PART);
  EXPECT_EQ(lid->part_kind, LEAF_PART);
  EXPECT_TRUE(file->at(10)->part_numbers.empty()) << "nothing is associated yet";
}

TEST_F(Pipeline, ProcessPartsIsTheSecondHalfOfFrom) {
  folder_.write("in.stp", exchange_file(BOX_WITH_LID));
  const auto file = parse_file("in.stp");
  EXPECT_THAT(file->parts, IsEmpty());
  process_parts(*file, decode_step_to_utf8);
  EXPECT_THAT(names(file->parts), ElementsAre("#1_part.stp", "#4_part.stp"));
  EXPECT_EQ(file->root, file->parts[0]);
}

TEST_F(Pipeline, OnePartStopsTheStructurePasses) {
  std::unique_ptr<File> file;
  // The usage would be reported as malformed by the pass that links parts.
  const std::string records =
      std::string(LID_ALONE) + "#7=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#6,$,$);\n";
  EXPECT_EQ(printed_by([&] { file = from(records); }), ONLY_ONE_PART);
  EXPECT_THAT(names(file->parts()), ElementsAre(""));
  EXPECT_EQ(file->parts()[0]->part_kind, UNCLASSIFIED_PART);
  EXPECT_EQ(file->root_part(), nullptr);
  EXPECT_FALSE(std::filesystem::exists("roots.txt"));
}

TEST_F(Pipeline, NoPartsDoNotStopTheStructurePasses) {
  std::unique_ptr<File> file;
  EXPECT_EQ(printed_by([&] { file = from("#7=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1',#8);\n"); }),
            "Got a malformed NEXT_ASSEMBLY_USAGE_OCCURRENCE\nIt does not have two childs.\n" +
                std::string(NO_ROOT));
  EXPECT_THAT(file->parts(), IsEmpty());
  EXPECT_EQ(file->root_part(), nullptr);
}

TEST_F(Pipeline, LinksAreReadBeforeTheRootIsLookedFor) {
  const std::string records = std::string(CYCLE) + "#9=ASSEMBLY_COMPONENT_USAGE('1');\n";
  EXPECT_EQ(printed_by([&] { from(records); }),
            "Got a malformed ASSEMBLY_COMPONENT_USAGE\nIt does not have two childs.\n" +
                std::string(NO_ROOT));
}

TEST_F(Pipeline, ExtractPartsAssociatesAndWritesAndLeavesTheStatics) {
  const auto file = from(BOX_WITH_LID);
  file->extract_parts("out");
  EXPECT_EQ(Part::_opened_files.size(), 2u);
  EXPECT_THAT(Part::_filenames, ElementsAre(std::pair("#1_part", 1), std::pair("#4_part", 1)));
  Part::free_statics();
  EXPECT_EQ(without_time_stamps(read_file("out/#1_part.stp")),
            output_file("out/#1_part.stp", BOX_RECORDS));
  EXPECT_EQ(without_time_stamps(read_file("out/#4_part.stp")),
            output_file("out/#4_part.stp", LID_RECORDS));
}

TEST_F(Pipeline, NamesGoOnCountingWhileNobodyFreesTheStatics) {
  const auto first = from(BOX_WITH_LID);
  const auto second = from(BOX_WITH_LID);
  EXPECT_THAT(names(second->parts()), ElementsAre("#1_part_(2)_.stp", "#4_part_(2)_.stp"));
  Part::free_statics();
  EXPECT_THAT(names(from(BOX_WITH_LID)->parts()), ElementsAre("#1_part.stp", "#4_part.stp"));
}

TEST_F(Pipeline, FileThatIsDeletedBeforeTheStaticsAreFreedLeavesTheQueue) {
  auto file = from(BOX_WITH_LID);
  file->extract_parts("out");
  file.reset();
  EXPECT_TRUE(Part::_opened_files.empty());
  EXPECT_EQ(without_time_stamps(read_file("out/#4_part.stp")),
            output_file("out/#4_part.stp", LID_RECORDS));
}

}  // namespace
}  // namespace Kessel::test

// That the check finds what is wrong: placements that were right, and are then spoiled.
#include "placement/check_placement.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/loaded_text.h"
#include "support/product_records.h"

namespace Kessel::test {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;

/// A car with a wheel, whose solid is #40, in two files.
class CheckPlacement : public testing::Test {
 protected:
  CheckPlacement()
      : file_(SHARED_RECORDS + product_records(10, "car", "#3") +
              product_records(20, "wheel", "#3,#40") + solid_records(40) +
              placed_usage_records(60, 10, 20) +
              "#80=PRESENTATION_LAYER_ASSIGNMENT('1','',(#40,#41));\n"
              "#90=PROPERTY_DEFINITION('','',#60);\n"),
        products_(find_products(file_.instances)),
        placement_(place_records(file_.instances, products_, AssemblyStyle::nested)) {
    EXPECT_THAT(problems(), IsEmpty());
    EXPECT_THAT(problems_of_remarks(), IsEmpty());
  }

  std::vector<std::string> problems() const {
    return check_placement(file_.instances, products_, placement_);
  }
  std::vector<std::string> problems_of_remarks() const {
    return check_remarks(file_.instances, products_, placement_);
  }
  Index at(std::uint64_t number) const { return file_.at(number); }
  /// Lets #80, the layer, and #90, a property of the usage, stand where they should not.
  void spoil(FileId file_of_80, FileId file_of_90) {
    FileSets stands(file_.instances.size());
    for (Index record = 0; record < file_.instances.size(); ++record) {
      for (const Stand stand : placement_.stands.of(record)) {
        const FileId file = record == at(80)   ? file_of_80
                            : record == at(90) ? file_of_90
                                               : stand.file();
        stands.add(record, file, stand.role());
      }
    }
    placement_.stands = std::move(stands);
  }

  LoadedText file_;
  Products products_;
  Placement placement_;
};

TEST_F(CheckPlacement, RecordsThatStandNowhere) {
  placement_.stands = FileSets(file_.instances.size());
  EXPECT_THAT(problems(), Contains("#40 stands whole in no file"));
}

TEST_F(CheckPlacement, RecordsThatOnlyStandIn) {
  placement_.stands.set_role(at(41), 1, Role::stand_in);
  EXPECT_THAT(problems(), Contains("#41 stands whole in no file"));
}

TEST_F(CheckPlacement, ReferencesThatAreNotThere) {
  placement_.stands.add(at(40), 0, Role::guest);
  EXPECT_THAT(problems(), Contains("#40 in file 0 lacks #41"));
}

TEST_F(CheckPlacement, BodiesOfOthers) {
  placement_.stands.add(at(40), 0, Role::guest);
  placement_.stands.add(at(41), 0, Role::guest);
  EXPECT_THAT(problems(), testing::ElementsAre("#40 in file 0 is another product's body"));
}

TEST_F(CheckPlacement, EmptyLists) {
  placement_.stands.add(at(80), 0, Role::own);
  EXPECT_THAT(problems(), testing::ElementsAre("#80 in file 0 has an empty list"));
}

TEST_F(CheckPlacement, ItemsThatNoListHas) {
  FileSets stands(file_.instances.size());
  for (Index record = 0; record < file_.instances.size(); ++record) {
    stands.add(record, record == at(80) ? 0 : 1, Role::own);
  }
  placement_.stands = std::move(stands);
  EXPECT_THAT(problems(), Contains("#80 has #40 in its list in no file"));
}

TEST_F(CheckPlacement, RemarksThatAreElsewhere) {
  spoil(0, 1);
  EXPECT_THAT(problems_of_remarks(),
              testing::ElementsAre("#80 is missing in file 1, of which it speaks",
                                   "#80 is missing in file 1, of which it speaks",
                                   "#90 is missing in file 0, of which it speaks"));
}

TEST_F(CheckPlacement, RemarksThatOnlyStandIn) {
  placement_.stands.set_role(at(80), 1, Role::stand_in);
  EXPECT_THAT(problems_of_remarks(), Contains("#80 is missing in file 1, of which it speaks"));
}

TEST_F(CheckPlacement, LinksThatAreMissing) {
  placement_.files[0].links.clear();
  EXPECT_THAT(problems(),
              testing::ElementsAre("#60 in file 0 has no link to its component's file"));
}

TEST_F(CheckPlacement, LinksWithoutAComponent) {
  placement_.files[1].links.push_back(0);
  EXPECT_THAT(problems(),
              Contains(HasSubstr("#10 in file 1 is missing, though its file is referred to")));
}

TEST_F(CheckPlacement, FilesOfNobody) {
  placement_.files.emplace_back();
  EXPECT_THAT(problems(), testing::ElementsAre("File 2 is empty.", "File 2 is no product's."));
}

}  // namespace
}  // namespace Kessel::test

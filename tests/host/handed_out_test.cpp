// What was handed out stays, and what stands for nothing is something.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "kessel/encoding.h"
#include "kessel/file.h"
#include "kessel/splitter.h"
#include "splitter/small_inputs.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class HandedOut : public testing::Test {
 protected:
  ~HandedOut() override { Part::free_statics(); }
};

TEST_F(HandedOut, PartLivesOnWhenItsSlotIsTaken) {
  const ScratchFolder folder;
  folder.write("in.stp", exchange_file(BOX_WITH_LID));
  const std::unique_ptr<File> file(File::from("in.stp", decode_step_to_utf8));
  Part* const box = file->parts()[0];
  Part* const lid = file->parts()[1];
  const std::vector<unsigned>& references = lid->get_references();

  Entity* const taken = file->create_entity(6);
  EXPECT_EQ(file->at(6), taken);
  EXPECT_THAT(file->parts(), ElementsAre(box, lid));
  EXPECT_THAT(box->children, ElementsAre(lid));
  EXPECT_THAT(box->childs_parts().front()->parents_parts(), ElementsAre(box));
  EXPECT_EQ(lid->type(), "PRODUCT_DEFINITION");
  EXPECT_EQ(lid->get_utf8_filename(), "#4_part.stp");
  EXPECT_THAT(references, ElementsAre(5));
  EXPECT_THAT(file->get("PRODUCT_DEFINITION"), ElementsAre(box, taken));
}

TEST_F(HandedOut, RecordsOfEveryKindLiveOnWhenTheirSlotIsTaken) {
  File file("missing.stp");
  Entity* const plain = file.create_entity(1);
  plain->add_reference(2);
  Entity* const typed = file.create_entity(1, "PRODUCT");
  Entity* const named = file.create_entity(1, "PRODUCT", "a name that is too long to be in place");
  Entity* const last = file.create_entity(1);
  EXPECT_THAT(plain->get_references(), ElementsAre(2));
  EXPECT_EQ(typed->type(), "PRODUCT");
  EXPECT_EQ(named->attribute(), "a name that is too long to be in place");
  EXPECT_EQ(file.at(1), last);
}

TEST_F(HandedOut, EmptyTextsAreViewsOfOneStaticString) {
  const Entity plain;
  const EntityWithType typed("PRODUCT");
  const Part part("PRODUCT_DEFINITION");
  ASSERT_NE(plain.type().data(), nullptr);
  EXPECT_EQ(std::string(plain.type().data()), "");
  EXPECT_EQ(plain.attribute().data(), plain.type().data());
  EXPECT_EQ(typed.attribute().data(), plain.type().data());
  EXPECT_EQ(part.attribute().data(), plain.type().data());
}

TEST_F(HandedOut, VectorOfReferencesFollowsItsRecord) {
  Entity record;
  const std::vector<unsigned>& references = record.get_references();
  EXPECT_THAT(references, IsEmpty());
  record.add_reference(4);
  record.add_reference(4);
  EXPECT_THAT(references, ElementsAre(4, 4));
  const Entity other(std::move(record));
  EXPECT_THAT(references, IsEmpty());
  record.shrink_to_fit();  // NOLINT(bugprone-use-after-move): it is empty, and of use.
  EXPECT_EQ(references.capacity(), 0u);
  record.add_reference(5);
  EXPECT_THAT(references, ElementsAre(5));
  EXPECT_THAT(other.get_references(), ElementsAre(4, 4));
}

TEST_F(HandedOut, VectorOfAReadRecordFollowsItToo) {
  const ScratchFolder folder;
  folder.write("in.stp", exchange_file(BOX_WITH_LID));
  const std::unique_ptr<File> file(File::from("in.stp", decode_step_to_utf8));
  const std::vector<unsigned>& none = file->at(1)->get_references();
  const std::vector<unsigned>& one = file->at(2)->get_references();
  file->at(1)->add_reference(12);
  file->at(2)->add_reference(12);
  EXPECT_THAT(none, ElementsAre(12));
  EXPECT_THAT(one, ElementsAre(1, 12));
}

}  // namespace
}  // namespace Kessel::test

// Parts as objects: how they come into being, and their lists of links.
#include "kessel/part.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace Kessel::test {
namespace {

void expect_fresh(const Part& part) {
  EXPECT_EQ(part.path, "");
  EXPECT_EQ(part.part_kind, 0u);
  EXPECT_EQ(part.last_instance_number, 0u);
  EXPECT_FALSE(part.stream.is_open());
  EXPECT_TRUE(part.parents.empty());
  EXPECT_TRUE(part.children.empty());
}

TEST(Part, TakesOverTheRecordThatItIsMadeFrom) {
  Part holder("PRODUCT_DEFINITION");
  EntityWithAttr record("MAPPED_ITEM", "name");
  record.add_reference(8);
  record.add_reference(3);
  record.add_reference(8);
  record.part_numbers.emplace(&holder, 5);

  const Part part(std::move(record));
  EXPECT_EQ(part.type(), "MAPPED_ITEM");
  EXPECT_EQ(part.attribute(), "");
  EXPECT_EQ(part.get_references(), (std::vector<unsigned>{8, 3, 8}));
  EXPECT_EQ(part.part_numbers.size(), 1u);
  EXPECT_EQ(part.part_numbers.at(&holder), 5u);
  expect_fresh(part);
  EXPECT_FALSE(record.refer_any());
  EXPECT_TRUE(record.part_numbers.empty());
}

TEST(Part, MadeFromARecordWithoutATypeHasNone) {
  Entity record;
  EXPECT_EQ(Part(std::move(record)).type(), "");
}

TEST(Part, MadeFromATypeNameStandsForNoRecord) {
  const char type[] = "PRODUCT_DEFINITION";
  const Part part{std::string_view(type)};
  EXPECT_EQ(part.type(), "PRODUCT_DEFINITION");
  EXPECT_EQ(part.type().data(), type);  // A view, not a copy.
  EXPECT_EQ(part.attribute(), "");
  EXPECT_FALSE(part.refer_any());
  EXPECT_TRUE(part.part_numbers.empty());
  expect_fresh(part);
}

TEST(Part, DeletedThroughTheBaseClassFreesItsMembers) {
  auto part = std::make_unique<Part>("PRODUCT_DEFINITION");
  part->add_child_part(nullptr);
  part->path = "a path that is too long to be stored inside of the object itself";
  const std::unique_ptr<Entity> record = std::move(part);  // Leaks are the sanitizer's to report.
  EXPECT_EQ(record->type(), "PRODUCT_DEFINITION");
}

TEST(Part, ListsOfLinksKeepEverythingThatIsAddedInOrder) {
  Part part("PRODUCT_DEFINITION");
  Part other("PRODUCT_DEFINITION");
  for (Part* child : {&other, &part, static_cast<Part*>(nullptr), &other})
    part.add_child_part(child);
  for (Part* parent : {&part, static_cast<Part*>(nullptr), &other}) part.add_parent_part(parent);
  EXPECT_EQ(part.childs_parts(), (std::vector<Part*>{&other, &part, nullptr, &other}));
  EXPECT_EQ(part.parents_parts(), (std::vector<Part*>{&part, nullptr, &other}));
  EXPECT_TRUE(other.children.empty());
  EXPECT_TRUE(other.parents.empty());
}

TEST(Part, ListsOfLinksAreGivenAsCopies) {
  Part part("PRODUCT_DEFINITION");
  part.add_child_part(&part);
  part.add_parent_part(&part);
  part.childs_parts().clear();
  part.parents_parts().clear();
  EXPECT_EQ(part.children.size(), 1u);
  EXPECT_EQ(part.parents.size(), 1u);
}

TEST(Part, AtMostFiftyStreamsMayBeOpen) {
  EXPECT_EQ(Part::MAX_OPENED_FILE, 50u);
}

}  // namespace
}  // namespace Kessel::test

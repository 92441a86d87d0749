// The record classes: references, type names, attributes, and promotion by move.
#include "kessel/entity.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "kessel/part.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

static_assert(!std::is_copy_constructible_v<Entity> && !std::is_copy_assignable_v<Entity>);
static_assert(!std::is_copy_constructible_v<Part> && !std::is_copy_assignable_v<Part>);

using References = std::vector<unsigned>;
using Numbers = std::vector<std::pair<Part*, std::uint32_t>>;

void refer_to(Entity& entity, const References& references) {
  for (const unsigned reference : references) entity.add_reference(reference);
}

Numbers numbers_of(const Entity& entity) {
  return {entity.part_numbers.begin(), entity.part_numbers.end()};
}

TEST(Entity, NewRecordHasNothing) {
  const Entity entity;
  EXPECT_EQ(entity.get_references(), References());
  EXPECT_FALSE(entity.refer_any());
  EXPECT_TRUE(entity.part_numbers.empty());
  EXPECT_EQ(entity.type(), "");
  EXPECT_EQ(entity.attribute(), "");
}

TEST(Entity, ReferencesStayInOrderWithDuplicatesAndZero) {
  Entity entity;
  refer_to(entity, {10, 11, 10, 0, 4'294'967'295});
  EXPECT_EQ(entity.get_references(), (References{10, 11, 10, 0, 4'294'967'295}));
  EXPECT_TRUE(entity.refer_any());
}

TEST(Entity, ReferencesAreFoundByTheirIndexWithoutAWord) {
  Entity entity;
  refer_to(entity, {10, 11, 12});
  EXPECT_EQ(printed_by([&] {
              EXPECT_EQ(entity.get_reference(0), 10u);
              EXPECT_EQ(entity.get_reference(1), 11u);
              EXPECT_EQ(entity.get_reference(2), 12u);
            }),
            "");
}

TEST(Entity, ReferenceOutOfRangeIsReportedAndGivesZero) {
  Entity three;
  refer_to(three, {10, 11, 12});
  const Entity none;
  struct Row {
    const Entity& entity;
    int index;
    std::string message;
  };
  const std::vector<Row> rows = {
      {three, -1, "Got an out of range in 'get_child' while fetching child nb -1\n"},
      {three, 3, "Got an out of range in 'get_child' while fetching child nb 3\n"},
      {three, 4, "Got an out of range in 'get_child' while fetching child nb 4\n"},
      {three, INT_MIN, "Got an out of range in 'get_child' while fetching child nb -2147483648\n"},
      {three, INT_MAX, "Got an out of range in 'get_child' while fetching child nb 2147483647\n"},
      {none, 0, "Got an out of range in 'get_child' while fetching child nb 0\n"},
  };
  for (const auto& [entity, index, message] : rows) {
    unsigned reference = 1;
    EXPECT_EQ(printed_by([&, at = index, &one = entity] { reference = one.get_reference(at); }),
              message);
    EXPECT_EQ(reference, 0u);
  }
}

TEST(Entity, ShrinkingWithoutReferencesLeavesNoBuffer) {
  Entity entity;
  entity.shrink_to_fit();
  EXPECT_EQ(entity.get_references().capacity(), 0u);
}

TEST(Entity, ShrinkingReleasesSpareCapacityAndKeepsTheReferences) {
  Entity entity;
  for (unsigned id = 1; id <= 1'000; ++id) entity.add_reference(id);
  entity.shrink_to_fit();
  EXPECT_EQ(entity.get_references().capacity(), 1'000u);
  EXPECT_EQ(entity.get_reference(999), 1'000u);
}

TEST(Entity, TypeIsAViewOfTheCallersText) {
  const std::string type = "PRODUCT_DEFINITION";
  EXPECT_EQ(EntityWithType(type).type().data(), type.data());
  EXPECT_EQ(EntityWithAttr(type, "x").type().data(), type.data());
  EXPECT_EQ(EntityWithType(type).type(), "PRODUCT_DEFINITION");
}

TEST(Entity, AttributeIsACopy) {
  std::string text = "an attribute that is too long for a short string";
  const EntityWithAttr entity("PRODUCT", text);
  text.assign(text.size(), '-');
  EXPECT_EQ(entity.attribute(), "an attribute that is too long for a short string");
}

TEST(Entity, OnlyRecordsWithAttributeHaveOne) {
  EntityWithAttr product("PRODUCT", "a name");
  EXPECT_EQ(product.attribute(), "a name");
  EXPECT_EQ(EntityWithType("PRODUCT").attribute(), "");
  EXPECT_EQ(Part("PRODUCT_DEFINITION").attribute(), "");
  EXPECT_EQ(Part(std::move(product)).attribute(), "");
}

TEST(Entity, MoveTakesReferencesAndNumbersAndLeavesNone) {
  Part part("");
  Entity source;
  refer_to(source, {5, 6});
  source.part_numbers.emplace(&part, 17);

  Entity moved(std::move(source));

  EXPECT_EQ(moved.get_references(), (References{5, 6}));
  EXPECT_EQ(numbers_of(moved), (Numbers{{&part, 17}}));
  EXPECT_EQ(source.get_references(), References());
  EXPECT_FALSE(source.refer_any());
  EXPECT_EQ(numbers_of(source), Numbers());
}

TEST(Entity, MovedFromRecordStaysUsable) {
  Part part("");
  Entity source;
  refer_to(source, {5, 6});
  source.part_numbers.emplace(&part, 17);
  const Entity moved(std::move(source));

  refer_to(source, {7});
  source.part_numbers.emplace(&part, 18);

  EXPECT_EQ(source.get_references(), (References{7}));
  EXPECT_EQ(numbers_of(source), (Numbers{{&part, 18}}));
  EXPECT_EQ(moved.get_references(), (References{5, 6}));
  EXPECT_EQ(numbers_of(moved), (Numbers{{&part, 17}}));
}

TEST(Entity, MoveIntoATypedRecordTakesTheTypeOfAnySource) {
  Entity plain;
  EntityWithType typed("STYLED_ITEM");
  EntityWithAttr named("PRODUCT", "a name");
  refer_to(named, {5});

  const EntityWithType from_plain{static_cast<Entity&&>(plain)};
  const EntityWithType from_typed{static_cast<Entity&&>(typed)};
  const EntityWithType from_named{static_cast<Entity&&>(named)};

  EXPECT_EQ(from_plain.type(), "");
  EXPECT_EQ(from_typed.type(), "STYLED_ITEM");
  EXPECT_EQ(from_named.type(), "PRODUCT");
  EXPECT_EQ(from_named.attribute(), "");
  EXPECT_EQ(from_named.get_references(), (References{5}));
  EXPECT_EQ(typed.type(), "STYLED_ITEM");
}

TEST(Entity, MoveIntoARecordWithAttributeTakesTypeAttributeReferencesAndNumbers) {
  Part part("");
  EntityWithAttr source("PRODUCT", "a name");
  refer_to(source, {5, 6});
  source.part_numbers.emplace(&part, 17);

  const EntityWithAttr moved{static_cast<Entity&&>(source)};

  EXPECT_EQ(moved.type(), "PRODUCT");
  EXPECT_EQ(moved.attribute(), "a name");
  EXPECT_EQ(moved.get_references(), (References{5, 6}));
  EXPECT_EQ(numbers_of(moved), (Numbers{{&part, 17}}));
  EXPECT_EQ(source.get_references(), References());
  EXPECT_EQ(numbers_of(source), Numbers());
  EXPECT_EQ(source.attribute(), "a name");
}

TEST(Entity, MoveIntoARecordWithAttributeFromOneWithoutGivesAnEmptyAttribute) {
  EntityWithType typed("STYLED_ITEM");
  const EntityWithAttr moved{static_cast<Entity&&>(typed)};
  EXPECT_EQ(moved.type(), "STYLED_ITEM");
  EXPECT_EQ(moved.attribute(), "");
}

TEST(Entity, MoveIntoAPartTakesTypeReferencesAndNumbers) {
  Part other("");
  EntityWithAttr source("PRODUCT_DEFINITION", "a name");
  refer_to(source, {5, 6});
  source.part_numbers.emplace(&other, 17);

  const Part part(std::move(source));

  EXPECT_EQ(part.type(), "PRODUCT_DEFINITION");
  EXPECT_EQ(part.get_references(), (References{5, 6}));
  EXPECT_EQ(numbers_of(part), (Numbers{{&other, 17}}));
  EXPECT_EQ(source.get_references(), References());
}

TEST(Entity, PartNumbersFollowTheOrderOfTheListOfParts) {
  std::vector<std::unique_ptr<Part>> parts;
  for (std::uint32_t i = 0; i < 3; ++i) parts.push_back(std::make_unique<Part>(""));
  parts[0]->list_position = 2;
  parts[1]->list_position = 0;
  parts[2]->list_position = 1;
  Entity entity;
  for (const auto& part : parts) entity.part_numbers.emplace(part.get(), 10 + part->list_position);
  EXPECT_EQ(numbers_of(entity),
            (Numbers{{parts[1].get(), 10}, {parts[2].get(), 11}, {parts[0].get(), 12}}));
}

TEST(Entity, DeletingThroughTheBaseFreesTheWholeObject) {
  struct Probe : EntityWithAttr {
    explicit Probe(bool& gone_) : EntityWithAttr("", ""), gone(gone_) {}
    ~Probe() override { gone = true; }
    bool& gone;
  };
  bool gone = false;
  std::unique_ptr<Entity>(std::make_unique<Probe>(gone)).reset();
  EXPECT_TRUE(gone);
}

}  // namespace
}  // namespace Kessel::test

// The store: slots by instance number, numbers by type name.
#include "model/store.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <iterator>
#include <set>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <vector>

#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

using Entities = std::vector<Entity*>;
using Ids = std::set<unsigned>;
using Names = std::set<std::string>;

/// A store without an input.
Store new_store() {
  return Store("there is no such file");
}

void expect_beyond_store(const Store& file, unsigned id) {
  try {
    file.at(id);
    FAIL() << "slot " << id << " exists";
  } catch (const std::out_of_range& error) {
    EXPECT_STREQ(error.what(), "invalid vector subscript");
  }
}

TEST(Store, NewStoreIsEmpty) {
  Store file = new_store();
  EXPECT_EQ(file.types, Names());
  EXPECT_TRUE(file.parts.empty());
  EXPECT_EQ(file.root, nullptr);
  EXPECT_EQ(file.first_line, "");
  EXPECT_EQ(file.header, "");
  EXPECT_FALSE(file.root_generated);
}

TEST(Store, NewStoreHas1048576EmptySlots) {
  const Store file = new_store();
  EXPECT_EQ(file.entities.size(), 1'048'576u);
  EXPECT_EQ(file.at(0), nullptr);
  EXPECT_EQ(file.at(1'048'575), nullptr);
  expect_beyond_store(file, 1'048'576);
  expect_beyond_store(file, 4'294'967'295);
}

TEST(Store, InputThatCannotBeOpenedIsNoErrorOfTheStore) {
  Store file = new_store();
  EXPECT_FALSE(file.input.is_open());
}

TEST(Store, InputIsOpenedAsBytes) {
  const ScratchFolder folder;
  Store file(folder.write("in.stp", "a\r\nb\x1A\n"));
  std::ifstream& input = file.input;
  ASSERT_TRUE(input.is_open());
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(input), {}), "a\r\nb\x1A\n");
}

TEST(Store, NumberWithinTheStoreLeavesItsSizeAlone) {
  Store file = new_store();
  file.create_entity(1);
  file.create_entity(1'048'575);
  EXPECT_EQ(file.entities.size(), 1'048'576u);
}

TEST(Store, NumberBeyondTheStoreGrowsItByTheFewestWholeBlocks) {
  struct Row {
    unsigned id;
    std::uint64_t slots;
  };
  const std::vector<Row> rows = {{1'048'576, 2'097'152},         {2'097'151, 2'097'152},
                                 {2'097'152, 3'145'728},         {5'000'000, 5'242'880},
                                 {5'242'879, 5'242'880},         {5'242'880, 6'291'456},
                                 {4'293'918'719, 4'293'918'720}, {4'293'918'720, 4'294'967'296},
                                 {4'294'967'295, 4'294'967'296}};
  for (const auto& [id, slots] : rows) {
    SCOPED_TRACE(id);
    Store file = new_store();
    Entity* entity = file.create_entity(id);
    EXPECT_EQ(file.entities.size(), slots);
    EXPECT_EQ(file.at(id), entity);
    EXPECT_EQ(file.at(id - 1), nullptr);
    EXPECT_EQ(file.at(static_cast<unsigned>(slots - 1)), id == slots - 1 ? entity : nullptr);
    if (slots < 4'294'967'296) expect_beyond_store(file, static_cast<unsigned>(slots));
  }
}

TEST(Store, StoreGrowsAgainFromTheSizeThatItHas) {
  Store file = new_store();
  Entity* first = file.create_entity(1'048'576, "A");
  Entity* second = file.create_entity(2'097'152, "A", "x");
  EXPECT_EQ(file.entities.size(), 3'145'728u);
  Entity* third = file.create_entity(3);
  EXPECT_EQ(file.entities.size(), 3'145'728u);
  EXPECT_EQ(file.at(1'048'576), first);
  EXPECT_EQ(file.at(2'097'152), second);
  EXPECT_EQ(file.at(3), third);
}

TEST(Store, RecordsHaveTheClassOfWhatTheyKeep) {
  Store file = new_store();
  const Entity& plain = *file.create_entity(1);
  const Entity& typed = *file.create_entity(2, "STYLED_ITEM");
  const Entity& named = *file.create_entity(3, "PRODUCT", "a name");

  EXPECT_EQ(typeid(plain), typeid(Entity));
  EXPECT_EQ(plain.type(), "");
  EXPECT_EQ(typeid(typed), typeid(EntityWithType));
  EXPECT_EQ(typed.type(), "STYLED_ITEM");
  EXPECT_EQ(typed.attribute(), "");
  EXPECT_EQ(typeid(named), typeid(EntityWithAttr));
  EXPECT_EQ(named.type(), "PRODUCT");
  EXPECT_EQ(named.attribute(), "a name");
  for (unsigned id = 1; id <= 3; ++id) {
    EXPECT_FALSE(file.at(id)->refer_any());
    EXPECT_TRUE(file.at(id)->part_numbers.empty());
  }
}

TEST(Store, PlainRecordIsListedUnderNoType) {
  Store file = new_store();
  file.create_entity(1);
  EXPECT_EQ(file.types, Names());
  EXPECT_EQ(file.get(""), Entities());
  EXPECT_EQ(file.get_ids(""), Ids());
}

TEST(Store, RecordsOfATypeComeInTheOrderInWhichTheyWereAdded) {
  Store file = new_store();
  Entity* seven = file.create_entity(7, "PRODUCT", "seven");
  file.create_entity(5, "STYLED_ITEM");
  Entity* three = file.create_entity(3, "PRODUCT", "three");
  EXPECT_EQ(file.get("PRODUCT"), (Entities{seven, three}));
  EXPECT_EQ(file.get_ids("PRODUCT"), (Ids{3, 7}));
  EXPECT_EQ(file.get_ids("STYLED_ITEM"), (Ids{5}));
}

TEST(Store, UnknownTypeHasNoRecords) {
  Store file = new_store();
  file.create_entity(1, "PRODUCT", "x");
  for (const std::string_view type : {"PRODUC", "PRODUCTS", "", "STYLED_ITEM"}) {
    SCOPED_TRACE(type);
    EXPECT_EQ(file.get(type), Entities());
    EXPECT_EQ(file.get_ids(type), Ids());
  }
}

TEST(Store, TypeNamesAreComparedByteByByte) {
  Store file = new_store();
  Entity* upper = file.create_entity(1, "PRODUCT");
  Entity* mixed = file.create_entity(2, "Product");
  Entity* spaced = file.create_entity(3, "PRODUCT ");
  EXPECT_EQ(file.get("PRODUCT"), (Entities{upper}));
  EXPECT_EQ(file.get("Product"), (Entities{mixed}));
  EXPECT_EQ(file.get("PRODUCT "), (Entities{spaced}));
  EXPECT_EQ(file.types, (Names{"PRODUCT", "PRODUCT ", "Product"}));
}

TEST(Store, TypeNameIsStoredOnceAndOutlivesTheCallersBuffer) {
  Store file = new_store();
  std::string buffer = "SHAPE_DEFINITION_REPRESENTATION";
  file.create_entity(1, buffer);
  file.create_entity(2, buffer, "x");
  buffer.assign(buffer.size(), '-');
  EXPECT_EQ(file.at(1)->type(), "SHAPE_DEFINITION_REPRESENTATION");
  EXPECT_EQ(file.at(2)->type(), "SHAPE_DEFINITION_REPRESENTATION");
  ASSERT_EQ(file.types, (Names{"SHAPE_DEFINITION_REPRESENTATION"}));
  EXPECT_EQ(file.at(1)->type().data(), file.types.begin()->data());
  EXPECT_EQ(file.at(2)->type().data(), file.types.begin()->data());
}

TEST(Store, TypeNamesStayValidWhileOthersAreAdded) {
  Store file = new_store();
  const Entity* first = file.create_entity(1, "FIRST");
  for (unsigned id = 2; id < 2'000; ++id) file.create_entity(id, "TYPE_" + std::to_string(id));
  EXPECT_EQ(first->type(), "FIRST");
  EXPECT_EQ(file.types.size(), 1'999u);
  EXPECT_EQ(file.get_ids("TYPE_1500"), (Ids{1'500}));
}

TEST(Store, AttributeOutlivesTheCallersBuffer) {
  Store file = new_store();
  std::string buffer = "an attribute that is too long for a short string";
  file.create_entity(1, "PRODUCT", buffer);
  buffer.assign(buffer.size(), '-');
  EXPECT_EQ(file.at(1)->attribute(), "an attribute that is too long for a short string");
}

TEST(Store, RepeatedNumberHoldsTheNewerRecordAndStaysListedUnderBothTypes) {
  Store file = new_store();
  file.create_entity(5, "PRODUCT", "older");
  Entity* newer = file.create_entity(5, "STYLED_ITEM");
  EXPECT_EQ(file.at(5), newer);
  EXPECT_EQ(newer->type(), "STYLED_ITEM");
  EXPECT_EQ(file.get("PRODUCT"), (Entities{newer}));
  EXPECT_EQ(file.get("STYLED_ITEM"), (Entities{newer}));
  EXPECT_EQ(file.get_ids("PRODUCT"), (Ids{5}));
  EXPECT_EQ(file.get_ids("STYLED_ITEM"), (Ids{5}));
  EXPECT_EQ(file.types, (Names{"PRODUCT", "STYLED_ITEM"}));
}

TEST(Store, RepeatedNumberOfOneTypeIsListedTwice) {
  Store file = new_store();
  file.create_entity(5, "PRODUCT", "older");
  Entity* newer = file.create_entity(5, "PRODUCT", "newer");
  EXPECT_EQ(file.get("PRODUCT"), (Entities{newer, newer}));
  EXPECT_EQ(file.get_ids("PRODUCT"), (Ids{5}));
  EXPECT_EQ(newer->attribute(), "newer");
}

TEST(Store, PlainRecordReplacesATypedOneInItsList) {
  Store file = new_store();
  file.create_entity(5, "PRODUCT", "older");
  Entity* newer = file.create_entity(5);
  EXPECT_EQ(file.get("PRODUCT"), (Entities{newer}));
  EXPECT_EQ(newer->type(), "");
}

TEST(Store, AddedTypeListsItsNumberAndIsHandedBackAsStored) {
  Store file = new_store();
  const std::string buffer = "PRODUCT";
  const std::string_view first = file.add_type(9, buffer);
  const std::string_view second = file.add_type(4, buffer);
  EXPECT_EQ(first.data(), file.types.begin()->data());
  EXPECT_EQ(second.data(), first.data());
  EXPECT_EQ(first, "PRODUCT");
  EXPECT_EQ(file.get_ids("PRODUCT"), (Ids{4, 9}));
  EXPECT_EQ(file.get("PRODUCT"), (Entities{nullptr, nullptr}));
}

TEST(Store, PackedReferencesAreThoseOfTheRecord) {
  Store file = new_store();
  Entity* first = file.create_entity(1);
  Entity* second = file.create_entity(2);
  Entity* third = file.create_entity(3);
  const auto put = [&](Entity& record, std::size_t most, const std::vector<unsigned>& numbers) {
    file.put_references(record, most, [&](std::uint32_t* out) {
      return std::copy(numbers.begin(), numbers.end(), out);
    });
  };
  put(*first, 5, {4, 5, 4});
  put(*second, 0, {});
  put(*third, 1, {6});
  EXPECT_EQ(first->get_references(), (std::vector<unsigned>{4, 5, 4}));
  EXPECT_FALSE(second->refer_any());
  EXPECT_EQ(third->get_references(), (std::vector<unsigned>{6}));
  first->add_reference(7);
  EXPECT_EQ(first->get_references(), (std::vector<unsigned>{4, 5, 4, 7}));
  EXPECT_EQ(third->get_references(), (std::vector<unsigned>{6}));
}

TEST(Store, PartsAreListedInTheOrderInWhichTheyWereAddedAndKnowTheirPlace) {
  Store file = new_store();
  Part first("");
  Part second("");
  file.add_part(&first);
  file.add_part(&second);
  EXPECT_EQ(file.parts, (std::vector<Part*>{&first, &second}));
  EXPECT_EQ(first.list_position, 0u);
  EXPECT_EQ(second.list_position, 1u);
}

}  // namespace
}  // namespace Kessel::test

#include "instances/type_table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace Kessel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The type of a record with that body.
TypeId type(TypeTable& table, const std::string& body, const std::string& keyword) {
  Exchange::Record record;
  record.body = body;
  record.keyword = keyword;
  return table.type_of(record);
}

TEST(TypeTable, HasItsOwnTypesFirst) {
  const TypeTable table;
  EXPECT_EQ(table.size(), 3u);
  EXPECT_EQ(table.name(TypeTable::ANCHOR_ENTRY), "<anchor>");
  EXPECT_EQ(table.name(TypeTable::REFERENCE_ENTRY), "<reference>");
  EXPECT_EQ(table.name(TypeTable::REPEATED), "<repeated>");
}

TEST(TypeTable, KnowsTypesByTheNumbersOfKeywords) {
  TypeTable table;
  Exchange::Record record;
  for (int times = 0; times < 2; ++times) {
    for (const std::uint32_t id : {7u, 0u, 3u}) {
      const std::string keyword = "K" + std::to_string(id);
      record.keyword = keyword;
      record.keyword_id = id;
      EXPECT_EQ(table.name(table.type_of(record)), keyword);
    }
  }
  EXPECT_EQ(table.size(), 6u);
}

TEST(TypeTable, NumbersTypesAsTheyAreMet) {
  TypeTable table;
  EXPECT_EQ(type(table, "B()", "B"), 3u);
  EXPECT_EQ(type(table, "A()", "A"), 4u);
  EXPECT_EQ(type(table, "B(1)", "B"), 3u);
  EXPECT_EQ(type(table, "!A()", "!A"), 5u);
  EXPECT_EQ(table.size(), 6u);
  EXPECT_EQ(table.name(4), "A");
  EXPECT_THAT(table.keywords(4), ElementsAre("A"));
  EXPECT_FALSE(table.is_complex(4));
}

TEST(TypeTable, KnowsComplexTypesByTheSequenceOfTheirKeywords) {
  TypeTable table;
  const TypeId ab = type(table, "(A('B(')/*C()*/B(#1))", "");
  EXPECT_EQ(table.name(ab), "A B");
  EXPECT_THAT(table.keywords(ab), ElementsAre("A", "B"));
  EXPECT_TRUE(table.is_complex(ab));
  EXPECT_TRUE(table.has(ab, "B"));
  EXPECT_FALSE(table.has(ab, "C"));
  EXPECT_EQ(type(table, "( A ( 2 ) B ( ) )", ""), ab);
  EXPECT_NE(type(table, "(B()A())", ""), ab);
  EXPECT_NE(type(table, "(A())", ""), type(table, "A()", "A"));
}

TEST(TypeTable, TakesRecordsWithoutTypes) {
  TypeTable table;
  const TypeId none = type(table, "", "");
  EXPECT_EQ(table.name(none), "");
  EXPECT_THAT(table.keywords(none), IsEmpty());
  EXPECT_EQ(type(table, "()", ""), none);
}

TEST(TypeTable, TellsCollectors) {
  TypeTable table;
  EXPECT_TRUE(table.collects(type(table, "x", "PRESENTATION_LAYER_ASSIGNMENT")));
  EXPECT_FALSE(table.collects(type(table, "x", "PRODUCT")));
  EXPECT_TRUE(table.collects(type(table, "(A()SHAPE_REPRESENTATION('',(#1),#2))", "")));
  EXPECT_FALSE(table.collects(type(table, "(A()B())", "")));
}

TEST(TypeTable, HoldsManyTypes) {
  TypeTable table;
  std::uint64_t bytes = table.bytes();
  for (int round = 0; round < 2; ++round) {
    for (int i = 0; i < 5000; ++i) {
      const std::string name = "T_" + std::to_string(i * 37 % 5000);
      const TypeId id = type(table, name + "()", name);
      ASSERT_EQ(table.name(id), name);
      ASSERT_EQ(id, static_cast<TypeId>(3 + i));
    }
    if (round == 0) {
      EXPECT_GT(table.bytes(), bytes + 5000 * 100);
      bytes = table.bytes();
    }
  }
  EXPECT_EQ(table.bytes(), bytes);
}

}  // namespace
}  // namespace Kessel

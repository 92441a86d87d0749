// Records counted by type.
#include "inspection/type_counts.h"

#include <gtest/gtest.h>

#include <utility>

namespace Kessel::test {
namespace {

/// The list as text, such as "A 2, B 1".
std::string text_of(const TypeCounts& counts) {
  std::string text;
  for (const TypeCount& type : counts.sorted()) {
    if (!text.empty()) text += ", ";
    text += type.type + " " + std::to_string(type.records);
  }
  return text;
}

TEST(TypeCounts, SortsByNumberThenName) {
  TypeCounts counts;
  for (const char* type : {"C", "B", "A", "B", "D", "D", "D"}) ++counts.of(type).records;
  EXPECT_EQ(text_of(counts), "D 3, B 2, A 1, C 1");
}

TEST(TypeCounts, ComplexInstancesCountUnderTheirKeywords) {
  TypeCounts counts;
  ++counts.of("LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.)").records;
  ++counts.of("LENGTH_UNIT() NAMED_UNIT(#5)\n SI_UNIT($,.METRE.)").records;
  ++counts.of("A((1,(2)),'B()')").records;
  EXPECT_EQ(text_of(counts), "LENGTH_UNIT NAMED_UNIT SI_UNIT 2, A 1");
}

TEST(TypeCounts, TypeStaysWhereItIs) {
  TypeCounts counts;
  TypeCounts::Type& first = counts.of("FIRST");
  for (int i = 0; i < 10'000; ++i) counts.of("T" + std::to_string(i));
  EXPECT_EQ(&counts.of("FIRST"), &first);
  EXPECT_EQ(first.name, "FIRST");
}

TEST(TypeCounts, KnowsWhoseTextIsNeeded) {
  TypeCounts counts;
  const std::pair<const char*, TextKept> CASES[] = {
      {"PRODUCT", TextKept::whole},
      {"PRODUCT_DEFINITION", TextKept::none},
      {"MAPPED_ITEM", TextKept::first_string},
      {"SHAPE_REPRESENTATION", TextKept::first_string},
      {"ADVANCED_BREP_SHAPE_REPRESENTATION", TextKept::first_string},
      {"CONTEXT_DEPENDENT_SHAPE_REPRESENTATION", TextKept::first_string},
      {"SHAPE_REPRESENTATION_RELATIONSHIP", TextKept::none},
      {"LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.)", TextKept::whole},
      {"CONVERSION_BASED_UNIT('INCH',#2)LENGTH_UNIT()NAMED_UNIT(#3)", TextKept::whole},
      {"LENGTH_MEASURE_WITH_UNIT", TextKept::whole},
      {"GLOBAL_UNIT_ASSIGNED_CONTEXT((#1))REPRESENTATION_CONTEXT('','')", TextKept::whole},
      {"CARTESIAN_POINT", TextKept::none},
  };
  for (const auto& [type, text] : CASES) EXPECT_EQ(counts.of(type).text, text) << type;
}

}  // namespace
}  // namespace Kessel::test

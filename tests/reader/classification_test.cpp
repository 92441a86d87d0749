// How much is kept of a record, by its type name.
#include "reader/classification.h"
#include "naive/kept_types.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace Kessel::test {
namespace {

constexpr std::string_view TYPES_WITH_ATTRIBUTE[] = {
    "PRODUCT",
    "PRODUCT_DEFINITION",
    "PRODUCT_RELATED_PRODUCT_CATEGORY",
    "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS",
    "MAPPED_ITEM",
};

constexpr std::string_view NAMES_KEPT_ANYWHERE[] = {
    "CONVERSION_BASED_UNIT",
    "GEOMETRIC_REPRESENTATION_CONTEXT",
    "REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION",
    "SHAPE_REPRESENTATION",
};

bool has_a_name_kept_anywhere(std::string_view type) {
  return std::any_of(std::begin(NAMES_KEPT_ANYWHERE), std::end(NAMES_KEPT_ANYWHERE),
                     [&](std::string_view name) { return type.find(name) != type.npos; });
}

/// Expects that `name` is nothing with a character more or less or in lower case,
/// unless a name that is kept anywhere is left in it.
void expect_only_exact(const std::string& name) {
  std::string lower = name;
  lower.front() = static_cast<char>(lower.front() - 'A' + 'a');
  for (const std::string& other : {name + "S", "A" + name, name.substr(1), " " + name, name + " ",
                                   name.substr(0, name.size() - 1), lower}) {
    SCOPED_TRACE(other);
    EXPECT_EQ(classify(other), has_a_name_kept_anywhere(other) ? Keep::type : Keep::nothing);
  }
}

TEST(Classification, FiveTypesKeepTypeAndAttribute) {
  EXPECT_EQ(std::size(TYPES_WITH_ATTRIBUTE), 5u);
  for (const std::string_view name : TYPES_WITH_ATTRIBUTE) {
    SCOPED_TRACE(name);
    EXPECT_EQ(classify(name), Keep::type_and_attribute);
    expect_only_exact(std::string(name));
  }
}

TEST(Classification, FourNamesKeepTheTypeWhereverTheyAreInIt) {
  EXPECT_EQ(std::size(NAMES_KEPT_ANYWHERE), 4u);
  for (const std::string_view name_view : NAMES_KEPT_ANYWHERE) {
    const std::string name(name_view);
    SCOPED_TRACE(name);
    EXPECT_EQ(classify(name), Keep::type);
    EXPECT_EQ(classify("MY_" + name), Keep::type);
    EXPECT_EQ(classify(name + "_OF_MINE"), Keep::type);
    EXPECT_EQ(classify("A('x') " + name + "(#1) PRODUCT('y')"), Keep::type);
    EXPECT_EQ(classify(name.substr(1)), Keep::nothing);
    EXPECT_EQ(classify(name.substr(0, name.size() - 1)), Keep::nothing);
  }
}

TEST(Classification, SixtySevenTypesKeepTheType) {
  EXPECT_EQ(std::size(naive::KEPT_TYPES), 67u);
  for (const std::string_view name : naive::KEPT_TYPES) {
    SCOPED_TRACE(name);
    EXPECT_EQ(classify(name), Keep::type);
    expect_only_exact(std::string(name));
  }
}

TEST(Classification, ProductDefinitionShapeKeepsItsTypeOnlyAndProductDefinitionItsAttributeToo) {
  EXPECT_EQ(classify("PRODUCT_DEFINITION_SHAPE"), Keep::type);
  EXPECT_EQ(classify("PRODUCT_DEFINITION"), Keep::type_and_attribute);
}

TEST(Classification, ComplexInstanceWithAShapeRepresentationKeepsItsType) {
  EXPECT_EQ(classify("REPRESENTATION('',(#1),#2) SHAPE_REPRESENTATION()"), Keep::type);
  EXPECT_EQ(classify("REPRESENTATION('',(#1),#2) REPRESENTATION_MAP()"), Keep::nothing);
}

TEST(Classification, LongerNameOfAShapeRepresentationKeepsItsType) {
  EXPECT_EQ(classify("ADVANCED_BREP_SHAPE_REPRESENTATION"), Keep::type);
}

TEST(Classification, OtherTypesKeepNothing) {
  for (const std::string_view name :
       {"CARTESIAN_POINT", "DIRECTION", "ADVANCED_FACE", "MANIFOLD_SOLID_BREP", "product", "",
        "PRODUCT_DEFINITION_FORMATION", "PRODUCT_CONTEXT", "REPRESENTATION_MAP", "A", "SI_UNIT"}) {
    EXPECT_EQ(classify(name), Keep::nothing) << name;
  }
}

}  // namespace
}  // namespace Kessel::test

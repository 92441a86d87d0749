// How much is kept of a record, by its type name.
#include "reader/classification.h"

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

constexpr std::string_view TYPES_KEPT[] = {
    "APPLIED_APPROVAL_ASSIGNMENT",
    "APPLIED_CERTIFICATION_ASSIGNMENT",
    "APPLIED_DATE_AND_TIME_ASSIGNMENT",
    "APPLIED_DATE_ASSIGNMENT",
    "APPLIED_DOCUMENT_REFERENCE",
    "APPLIED_EVENT_OCCURRENCE_ASSIGNMENT",
    "APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT",
    "APPLIED_ORGANIZATION_ASSIGNMENT",
    "APPLIED_PERSON_AND_ORGANIZATION_ASSIGNMENT",
    "APPLIED_SECURITY_CLASSIFICATION_ASSIGNMENT",
    "APPROVAL_DATE_TIME",
    "APPROVAL_PERSON_ORGANIZATION",
    "ASSEMBLY_COMPONENT_USAGE",
    "AXIS2_PLACEMENT_3D",
    "BEVELED_SHEET_REPRESENTATION",
    "COMPOSITE_ASSEMBLY_SEQUENCE_DEFINITION",
    "COMPOSITE_ASSEMBLY_TABLE",
    "COMPOSITE_SHEET_REPRESENTATION",
    "CONSTRUCTIVE_GEOMETRY_REPRESENTATION",
    "CONSTRUCTIVE_GEOMETRY_REPRESENTATION_RELATIONSHIP",
    "CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM",
    "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION",
    "DOCUMENT_REPRESENTATION_TYPE",
    "DRAPED_ORIENTATION_ANGLE",
    "DRAUGHTING_MODEL",
    "GENERAL_PROPERTY",
    "GENERAL_PROPERTY_ASSOCIATION",
    "GENERAL_PROPERTY_RELATIONSHIP",
    "GEOMETRICALLY_BOUNDED_2D_WIREFRAME_REPRESENTATION",
    "GEOMETRIC_ITEM_SPECIFIC_USAGE",
    "ID_ATTRIBUTE",
    "INVISIBILITY",
    "ITEM_IDENTIFIED_REPRESENTATION_USAGE",
    "LAID_ORIENTATION_ANGLE",
    "MAKE_FROM_USAGE_OPTION",
    "MATERIAL_PROPERTY",
    "MATERIAL_PROPERTY_REPRESENTATION",
    "MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION",
    "MULTI_LEVEL_REFERENCE_DESIGNATOR",
    "NEUTRAL_SKETCH_REPRESENTATION",
    "NEXT_ASSEMBLY_USAGE_OCCURRENCE",
    "ORGANIZATIONAL_ADDRESS",
    "OVER_RIDING_STYLED_ITEM",
    "PERCENTAGE_LAMINATE_TABLE",
    "PERCENTAGE_PLY_DEFINITION",
    "PERSONAL_ADDRESS",
    "PERSON_AND_ORGANIZATION_ADDRESS",
    "PLY_LAMINATE_SEQUENCE_DEFINITION",
    "PLY_LAMINATE_TABLE",
    "PLY_ORIENTATION_ANGLE",
    "PRESENTATION_LAYER_ASSIGNMENT",
    "PRODUCT_CATEGORY",
    "PRODUCT_CATEGORY_RELATIONSHIP",
    "PRODUCT_DEFINITION_CONTEXT_ASSOCIATION",
    "PRODUCT_DEFINITION_SHAPE",
    "PROPERTY_DEFINITION",
    "PROPERTY_DEFINITION_REPRESENTATION",
    "QUANTIFIED_ASSEMBLY_COMPONENT_USAGE",
    "ROLE_ASSOCIATION",
    "SHAPE_ASPECT",
    "SHAPE_ASPECT_RELATIONSHIP",
    "SHAPE_DEFINITION_REPRESENTATION",
    "SHAPE_DIMENSION_REPRESENTATION",
    "SHAPE_REPRESENTATION_RELATIONSHIP",
    "SMEARED_MATERIAL_DEFINITION",
    "STYLED_ITEM",
    "THICKNESS_LAMINATE_TABLE",
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
  EXPECT_EQ(std::size(TYPES_KEPT), 67u);
  for (const std::string_view name : TYPES_KEPT) {
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

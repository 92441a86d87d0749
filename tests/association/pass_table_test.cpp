// The table of passes, row by row. Outputs depend on every cell.
#include <gtest/gtest.h>

#include "association/passes.h"
#include "reader/classification.h"

namespace Kessel::test {
namespace {

using namespace Rules;
using enum TypeGroup;

/// A row as it must be: literal names or a group, and the same for the other types.
struct Row {
  Rule rule;
  KindFilter filter;
  int n;
  std::set<std::string_view> names;
  TypeGroup group = none;
  std::set<std::string_view> other_names = {};
  TypeGroup other_group = none;
};

const Row ROWS[] = {
    {to_descendants, 0, 0, {"PRODUCT_DEFINITION"}},
    {Rules::gather_and_spread,
     0,
     0,
     {"COMPOSITE_ASSEMBLY_TABLE", "PERCENTAGE_LAMINATE_TABLE", "PLY_LAMINATE_TABLE",
      "SMEARED_MATERIAL_DEFINITION", "THICKNESS_LAMINATE_TABLE"}},
    {Rules::gather_and_spread,
     0,
     0,
     {"COMPOSITE_ASSEMBLY_SEQUENCE_DEFINITION", "PERCENTAGE_PLY_DEFINITION",
      "PLY_LAMINATE_SEQUENCE_DEFINITION"}},
    {from_child_and_down,
     1,
     0,
     {"ASSEMBLY_COMPONENT_USAGE", "NEXT_ASSEMBLY_USAGE_OCCURRENCE",
      "QUANTIFIED_ASSEMBLY_COMPONENT_USAGE"}},
    {Rules::gather_and_spread, 0, 0, {"MAKE_FROM_USAGE_OPTION"}},
    {through_usages, 0, 0, {"NEXT_ASSEMBLY_USAGE_OCCURRENCE"}, none, {"PRODUCT_DEFINITION"}},
    {from_children, 0, 0, {"MULTI_LEVEL_REFERENCE_DESIGNATOR"}},
    {from_children, 0, 0, {"APPLICATION_PROTOCOL_DEFINITION"}},
    {from_child_and_down, 0, 0, {"PRODUCT_DEFINITION_CONTEXT_ASSOCIATION"}},
    {from_children, 0, 0, {"PRODUCT_RELATED_PRODUCT_CATEGORY"}},
    {through_relationships,
     0,
     1,
     {"PRODUCT_CATEGORY_RELATIONSHIP"},
     none,
     {"PRODUCT_RELATED_PRODUCT_CATEGORY"}},
    {from_child, 0, 0, {"PRODUCT_DEFINITION_SHAPE"}},
    {from_child, 2, 0, {"SHAPE_ASPECT"}},
    {from_children, 0, 0, {"SHAPE_ASPECT_RELATIONSHIP"}},
    {Rules::gather_and_spread, 0, 0, {"APPLIED_DOCUMENT_REFERENCE"}},
    {both_ways, 0, 0, {"ROLE_ASSOCIATION"}},
    {both_ways, 0, 0, {"APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT"}},
    {from_children, 0, 0, {"DOCUMENT_REPRESENTATION_TYPE"}},
    {from_child, 0, 0, {"MATERIAL_PROPERTY", "PROPERTY_DEFINITION"}},
    {both_ways, 0, 0, {"SHAPE_DEFINITION_REPRESENTATION"}},
    {to_children_inside, 0, 0, {}, shape_representations, {}, placements_and_contexts},
    {to_children_outside, 2, 0, {}, shape_representations, {}, placements_and_contexts},
    {both_ways, 0, 0, {"CONTEXT_DEPENDENT_SHAPE_REPRESENTATION"}},
    {to_children_outside, 0, 0, {}, transformations, {}, shape_representations},
    {Rules::gather_and_spread, 0, 0, {"SHAPE_REPRESENTATION_RELATIONSHIP"}},
    {Rules::gather_and_spread, 2, 0, {"CONSTRUCTIVE_GEOMETRY_REPRESENTATION"}},
    {from_children, 2, 0, {"CONSTRUCTIVE_GEOMETRY_REPRESENTATION_RELATIONSHIP"}},
    {from_children,
     2,
     0,
     {"GEOMETRIC_ITEM_SPECIFIC_USAGE", "ITEM_IDENTIFIED_REPRESENTATION_USAGE"}},
    {Rules::gather_and_spread,
     0,
     0,
     {"MATERIAL_PROPERTY_REPRESENTATION", "PROPERTY_DEFINITION_REPRESENTATION"}},
    {both_ways, 0, 0, {"GENERAL_PROPERTY_ASSOCIATION"}},
    {through_relationships, 0, 0, {"GENERAL_PROPERTY_RELATIONSHIP"}, none, {"GENERAL_PROPERTY"}},
    {Rules::gather_and_spread, 0, 0, {"STYLED_ITEM"}},
    {Rules::gather_and_spread, 0, 0, {"OVER_RIDING_STYLED_ITEM"}},
    {Rules::gather_and_spread, 0, 0, {"CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM"}},
    {from_children,
     2,
     0,
     {"DRAUGHTING_MODEL", "MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION"}},
    {Rules::gather_and_spread, 0, 0, {"APPLIED_DOCUMENT_REFERENCE"}},
    {Rules::gather_and_spread, 0, 0, {"APPLIED_SECURITY_CLASSIFICATION_ASSIGNMENT"}},
    {Rules::gather_and_spread, 0, 0, {"APPLIED_CERTIFICATION_ASSIGNMENT"}},
    {Rules::gather_and_spread, 0, 0, {"APPLIED_EVENT_OCCURRENCE_ASSIGNMENT"}},
    {Rules::gather_and_spread, 0, 0, {"APPLIED_DATE_ASSIGNMENT"}},
    {Rules::gather_and_spread, 0, 0, {"APPLIED_APPROVAL_ASSIGNMENT"}},
    {Rules::gather_and_spread, 0, 0, {"APPLIED_ORGANIZATION_ASSIGNMENT"}},
    {Rules::gather_and_spread, 0, 0, {"APPLIED_PERSON_AND_ORGANIZATION_ASSIGNMENT"}},
    {from_children,
     0,
     0,
     {"ORGANIZATIONAL_ADDRESS", "PERSONAL_ADDRESS", "PERSON_AND_ORGANIZATION_ADDRESS"}},
    {Rules::gather_and_spread, 0, 0, {"APPROVAL_PERSON_ORGANIZATION"}},
    {Rules::gather_and_spread, 0, 0, {"APPLIED_DATE_AND_TIME_ASSIGNMENT"}},
    {Rules::gather_and_spread, 0, 0, {"APPROVAL_DATE_TIME"}},
    {from_children, 0, 0, {"PRESENTATION_LAYER_ASSIGNMENT"}},
    {from_children, 0, 0, {"INVISIBILITY"}},
    {from_children, 0, 0, {"ID_ATTRIBUTE"}},
    {Rules::gather_and_spread,
     0,
     0,
     {"DRAPED_ORIENTATION_ANGLE", "LAID_ORIENTATION_ANGLE", "PLY_ORIENTATION_ANGLE"}},
    {Rules::gather_and_spread, 0, 0, {}, units},
};

std::set<std::string_view> as_set(const std::vector<std::string_view>& names) {
  return {names.begin(), names.end()};
}

TEST(PassTable, EveryRowIsAsOutputsDependOnIt) {
  const auto passes = association_passes();
  ASSERT_EQ(passes.size(), std::size(ROWS));
  for (std::size_t i = 0; i < passes.size(); ++i) {
    const Pass& pass = passes[i];
    const Row& row = ROWS[i];
    SCOPED_TRACE(testing::Message()
                 << "row " << i << ' ' << (row.names.empty() ? "" : *row.names.begin()));
    EXPECT_EQ(pass.rule, row.rule);
    EXPECT_EQ(pass.filter, row.filter);
    EXPECT_EQ(pass.n, row.n);
    EXPECT_EQ(as_set(pass.types.names), row.names);
    EXPECT_EQ(pass.types.group, row.group);
    EXPECT_EQ(as_set(pass.other.names), row.other_names);
    EXPECT_EQ(pass.other.group, row.other_group);
  }
}

TEST(PassTable, ReaderKeepsEveryTypeThatIsNamedButOne) {
  std::set<std::string_view> not_kept;
  for (const Pass& pass : association_passes()) {
    for (const TypeSelection* selection : {&pass.types, &pass.other}) {
      for (const std::string_view type : selection->resolve({})) {
        if (classify(type) == Keep::nothing) not_kept.insert(type);
      }
    }
  }
  EXPECT_EQ(not_kept, std::set<std::string_view>{"APPLICATION_PROTOCOL_DEFINITION"});
}

TEST(PassTable, ProductCategoryIsKeptButNotNamed) {
  EXPECT_EQ(classify("PRODUCT_CATEGORY"), Keep::type);
  for (const Pass& pass : association_passes()) {
    EXPECT_FALSE(pass.types.resolve({}).contains("PRODUCT_CATEGORY"));
  }
}

TEST(PassTable, KindFiltersAreTheKindsOfParts) {
  EXPECT_EQ(ALL_PARTS, 0u);
  EXPECT_EQ(ASSEMBLIES, 1u);
  EXPECT_EQ(LEAVES, 2u);
  EXPECT_EQ(UNCLASSIFIED_PART, 0u);
  EXPECT_EQ(ASSEMBLY_PART, 1u);
  EXPECT_EQ(LEAF_PART, 2u);
}

}  // namespace
}  // namespace Kessel::test

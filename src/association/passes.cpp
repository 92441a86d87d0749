// The table of passes.
#include "association/passes.h"

namespace Kessel {

namespace {

using namespace Rules;
using enum TypeGroup;

// Parts start at their own definitions and at the root, flow down through each definition's data,
// into usages and the definitions they name, on to categories, shapes, documents, properties,
// representations and geometry (assemblies kept out of plain geometry), presentation, management
// data, composite materials and units. Types in braces are visited in ascending order.
const Pass PASSES[] = {
    // product structure
    {.types = {"PRODUCT_DEFINITION"}, .rule = to_descendants},
    {.types = {"PLY_LAMINATE_TABLE", "COMPOSITE_ASSEMBLY_TABLE", "THICKNESS_LAMINATE_TABLE",
               "PERCENTAGE_LAMINATE_TABLE", "SMEARED_MATERIAL_DEFINITION"},
     .rule = gather_and_spread},
    {.types = {"PLY_LAMINATE_SEQUENCE_DEFINITION", "COMPOSITE_ASSEMBLY_SEQUENCE_DEFINITION",
               "PERCENTAGE_PLY_DEFINITION"},
     .rule = gather_and_spread},
    {.types = {"ASSEMBLY_COMPONENT_USAGE", "NEXT_ASSEMBLY_USAGE_OCCURRENCE",
               "QUANTIFIED_ASSEMBLY_COMPONENT_USAGE"},
     .rule = from_child_and_down,
     .filter = ASSEMBLIES,
     .n = 0},
    {.types = {"MAKE_FROM_USAGE_OPTION"}, .rule = gather_and_spread},
    {.types = {"NEXT_ASSEMBLY_USAGE_OCCURRENCE"},
     .rule = through_usages,
     .n = 0,
     .other = {"PRODUCT_DEFINITION"}},
    {.types = {"MULTI_LEVEL_REFERENCE_DESIGNATOR"}, .rule = from_children},
    // The reader keeps no record of this type, so the pass selects nothing; outputs depend on that.
    {.types = {"APPLICATION_PROTOCOL_DEFINITION"}, .rule = from_children},
    {.types = {"PRODUCT_DEFINITION_CONTEXT_ASSOCIATION"}, .rule = from_child_and_down, .n = 0},
    // categories
    {.types = {"PRODUCT_RELATED_PRODUCT_CATEGORY"}, .rule = from_children},
    {.types = {"PRODUCT_CATEGORY_RELATIONSHIP"},
     .rule = through_relationships,
     .n = 1,
     .other = {"PRODUCT_RELATED_PRODUCT_CATEGORY"}},
    // shapes and aspects
    {.types = {"PRODUCT_DEFINITION_SHAPE"}, .rule = from_child, .n = 0},
    {.types = {"SHAPE_ASPECT"}, .rule = from_child, .filter = LEAVES, .n = 0},
    {.types = {"SHAPE_ASPECT_RELATIONSHIP"}, .rule = from_children},
    // documents
    {.types = {"APPLIED_DOCUMENT_REFERENCE"}, .rule = gather_and_spread},
    {.types = {"ROLE_ASSOCIATION"}, .rule = both_ways},
    {.types = {"APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT"}, .rule = both_ways},
    {.types = {"DOCUMENT_REPRESENTATION_TYPE"}, .rule = from_children},
    // properties, representations and geometry
    {.types = {"PROPERTY_DEFINITION", "MATERIAL_PROPERTY"}, .rule = from_child, .n = 0},
    {.types = {"SHAPE_DEFINITION_REPRESENTATION"}, .rule = both_ways},
    {.types = shape_representations, .rule = to_children_inside, .other = placements_and_contexts},
    {.types = shape_representations,
     .rule = to_children_outside,
     .filter = LEAVES,
     .other = placements_and_contexts},
    {.types = {"CONTEXT_DEPENDENT_SHAPE_REPRESENTATION"}, .rule = both_ways},
    {.types = transformations, .rule = to_children_outside, .other = shape_representations},
    {.types = {"SHAPE_REPRESENTATION_RELATIONSHIP"}, .rule = gather_and_spread},
    {.types = {"CONSTRUCTIVE_GEOMETRY_REPRESENTATION"},
     .rule = gather_and_spread,
     .filter = LEAVES},
    {.types = {"CONSTRUCTIVE_GEOMETRY_REPRESENTATION_RELATIONSHIP"},
     .rule = from_children,
     .filter = LEAVES},
    {.types = {"ITEM_IDENTIFIED_REPRESENTATION_USAGE", "GEOMETRIC_ITEM_SPECIFIC_USAGE"},
     .rule = from_children,
     .filter = LEAVES},
    {.types = {"PROPERTY_DEFINITION_REPRESENTATION", "MATERIAL_PROPERTY_REPRESENTATION"},
     .rule = gather_and_spread},
    {.types = {"GENERAL_PROPERTY_ASSOCIATION"}, .rule = both_ways},
    {.types = {"GENERAL_PROPERTY_RELATIONSHIP"},
     .rule = through_relationships,
     .n = 0,
     .other = {"GENERAL_PROPERTY"}},
    // presentation
    {.types = {"STYLED_ITEM"}, .rule = gather_and_spread},
    {.types = {"OVER_RIDING_STYLED_ITEM"}, .rule = gather_and_spread},
    {.types = {"CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM"}, .rule = gather_and_spread},
    {.types = {"MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION", "DRAUGHTING_MODEL"},
     .rule = from_children,
     .filter = LEAVES},
    // management data; documents once more, for what they gained since
    {.types = {"APPLIED_DOCUMENT_REFERENCE"}, .rule = gather_and_spread},
    {.types = {"APPLIED_SECURITY_CLASSIFICATION_ASSIGNMENT"}, .rule = gather_and_spread},
    {.types = {"APPLIED_CERTIFICATION_ASSIGNMENT"}, .rule = gather_and_spread},
    {.types = {"APPLIED_EVENT_OCCURRENCE_ASSIGNMENT"}, .rule = gather_and_spread},
    {.types = {"APPLIED_DATE_ASSIGNMENT"}, .rule = gather_and_spread},
    {.types = {"APPLIED_APPROVAL_ASSIGNMENT"}, .rule = gather_and_spread},
    {.types = {"APPLIED_ORGANIZATION_ASSIGNMENT"}, .rule = gather_and_spread},
    {.types = {"APPLIED_PERSON_AND_ORGANIZATION_ASSIGNMENT"}, .rule = gather_and_spread},
    {.types = {"PERSONAL_ADDRESS", "ORGANIZATIONAL_ADDRESS", "PERSON_AND_ORGANIZATION_ADDRESS"},
     .rule = from_children},
    {.types = {"APPROVAL_PERSON_ORGANIZATION"}, .rule = gather_and_spread},
    {.types = {"APPLIED_DATE_AND_TIME_ASSIGNMENT"}, .rule = gather_and_spread},
    {.types = {"APPROVAL_DATE_TIME"}, .rule = gather_and_spread},
    {.types = {"PRESENTATION_LAYER_ASSIGNMENT"}, .rule = from_children},
    {.types = {"INVISIBILITY"}, .rule = from_children},
    {.types = {"ID_ATTRIBUTE"}, .rule = from_children},
    // composite materials and units
    {.types = {"PLY_ORIENTATION_ANGLE", "LAID_ORIENTATION_ANGLE", "DRAPED_ORIENTATION_ANGLE"},
     .rule = gather_and_spread},
    {.types = units, .rule = gather_and_spread},
};

TypeNameSet shape_representation_types(const std::set<std::string>& file_types) {
  TypeNameSet names = types_ending_with(file_types, "SHAPE_REPRESENTATION");
  names.insert({
      "BEVELED_SHEET_REPRESENTATION",
      "COMPOSITE_SHEET_REPRESENTATION",
      "GEOMETRICALLY_BOUNDED_2D_WIREFRAME_REPRESENTATION",
      "NEUTRAL_SKETCH_REPRESENTATION",
      "SHAPE_DIMENSION_REPRESENTATION",
  });
  return names;
}

}  // namespace

TypeNameSet TypeSelection::resolve(const std::set<std::string>& file_types) const {
  switch (group) {
    case shape_representations:
      return shape_representation_types(file_types);
    case placements_and_contexts:
      return placement_and_context_types(file_types);
    case transformations:
      return types_containing(file_types, "REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION");
    case units:
      return types_containing(file_types, "CONVERSION_BASED_UNIT");
    case none:
      break;
  }
  return {names.begin(), names.end()};
}

std::span<const Pass> association_passes() {
  return PASSES;
}

void run_pass(const Store& store, const Pass& pass) {
  pass.rule(store, pass, {pass.types.resolve(store.types), pass.other.resolve(store.types)});
}

}  // namespace Kessel

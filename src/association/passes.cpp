// The table of passes.
#include "association/passes.h"

namespace Kessel {

namespace {

using enum Rule;
using enum TypeGroup;

// Parts start at their own definitions and at the root, flow down through each definition's data,
// into usages and the definitions they name, on to categories, shapes, documents, properties,
// representations and geometry (assemblies kept out of plain geometry), presentation, management
// data, composite materials and units. Types in braces are visited in ascending order.
const Pass PASSES[] = {
    // product structure
    {{"PRODUCT_DEFINITION"}, to_descendants},
    {{"PLY_LAMINATE_TABLE", "COMPOSITE_ASSEMBLY_TABLE", "THICKNESS_LAMINATE_TABLE",
      "PERCENTAGE_LAMINATE_TABLE", "SMEARED_MATERIAL_DEFINITION"},
     gather_and_spread},
    {{"PLY_LAMINATE_SEQUENCE_DEFINITION", "COMPOSITE_ASSEMBLY_SEQUENCE_DEFINITION",
      "PERCENTAGE_PLY_DEFINITION"},
     gather_and_spread},
    {{"ASSEMBLY_COMPONENT_USAGE", "NEXT_ASSEMBLY_USAGE_OCCURRENCE",
      "QUANTIFIED_ASSEMBLY_COMPONENT_USAGE"},
     from_child_and_down,
     ASSEMBLIES,
     0,
     {},
     In::classic_and_lean},
    {{"ASSEMBLY_COMPONENT_USAGE", "NEXT_ASSEMBLY_USAGE_OCCURRENCE",
      "QUANTIFIED_ASSEMBLY_COMPONENT_USAGE"},
     usages_to_assemblies,
     ALL_PARTS,
     0,
     {},
     In::nested},
    {{"MAKE_FROM_USAGE_OPTION"}, gather_and_spread},
    {{"NEXT_ASSEMBLY_USAGE_OCCURRENCE"},
     through_usages,
     ALL_PARTS,
     0,
     {"PRODUCT_DEFINITION"},
     In::classic_and_lean},
    {{"MULTI_LEVEL_REFERENCE_DESIGNATOR"}, from_children},
    // The reader keeps no record of this type, so the pass selects nothing; outputs depend on that.
    {{"APPLICATION_PROTOCOL_DEFINITION"}, from_children},
    {{"PRODUCT_DEFINITION_CONTEXT_ASSOCIATION"}, from_child_and_down, ALL_PARTS, 0},
    // categories
    {{"PRODUCT_RELATED_PRODUCT_CATEGORY"}, from_children},
    {{"PRODUCT_CATEGORY_RELATIONSHIP"},
     through_relationships,
     ALL_PARTS,
     1,
     {"PRODUCT_RELATED_PRODUCT_CATEGORY"}},
    // shapes and aspects
    {{"PRODUCT_DEFINITION_SHAPE"}, from_child, ALL_PARTS, 0},
    {{"SHAPE_ASPECT"}, from_child, LEAVES, 0},
    {{"SHAPE_ASPECT_RELATIONSHIP"}, from_children},
    // documents
    {{"APPLIED_DOCUMENT_REFERENCE"}, gather_and_spread},
    {{"ROLE_ASSOCIATION"}, both_ways},
    {{"APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT"}, both_ways},
    {{"DOCUMENT_REPRESENTATION_TYPE"}, from_children},
    // properties, representations and geometry
    {{"PROPERTY_DEFINITION", "MATERIAL_PROPERTY"}, from_child, ALL_PARTS, 0},
    {{"SHAPE_DEFINITION_REPRESENTATION"}, both_ways},
    {shape_representations, to_children_inside, ALL_PARTS, 0, placements_and_contexts},
    {shape_representations, to_children_outside, LEAVES, 0, placements_and_contexts},
    {{"CONTEXT_DEPENDENT_SHAPE_REPRESENTATION"}, both_ways},
    {transformations, to_children_outside, ALL_PARTS, 0, shape_representations},
    {{"SHAPE_REPRESENTATION_RELATIONSHIP"},
     gather_and_spread,
     ALL_PARTS,
     0,
     {},
     In::classic_and_nested},
    {{"SHAPE_REPRESENTATION_RELATIONSHIP"}, spread_to_leaves, ALL_PARTS, 0, {}, In::lean},
    {{"CONSTRUCTIVE_GEOMETRY_REPRESENTATION"}, gather_and_spread, LEAVES},
    {{"CONSTRUCTIVE_GEOMETRY_REPRESENTATION_RELATIONSHIP"}, from_children, LEAVES},
    {{"ITEM_IDENTIFIED_REPRESENTATION_USAGE", "GEOMETRIC_ITEM_SPECIFIC_USAGE"},
     from_children,
     LEAVES},
    {{"PROPERTY_DEFINITION_REPRESENTATION", "MATERIAL_PROPERTY_REPRESENTATION"}, gather_and_spread},
    {{"GENERAL_PROPERTY_ASSOCIATION"}, both_ways},
    {{"GENERAL_PROPERTY_RELATIONSHIP"}, through_relationships, ALL_PARTS, 0, {"GENERAL_PROPERTY"}},
    // presentation
    {{"STYLED_ITEM"}, gather_and_spread, ALL_PARTS, 0, {}, In::classic},
    {{"OVER_RIDING_STYLED_ITEM"}, gather_and_spread, ALL_PARTS, 0, {}, In::classic},
    {{"CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM"},
     gather_and_spread,
     ALL_PARTS,
     0,
     {},
     In::classic},
    {{"STYLED_ITEM"}, styles_to_items, ALL_PARTS, 0, {}, In::lean_and_nested},
    {{"OVER_RIDING_STYLED_ITEM"}, styles_to_items, ALL_PARTS, 0, {}, In::lean_and_nested},
    {{"CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM"},
     styles_to_items,
     ALL_PARTS,
     0,
     {},
     In::lean_and_nested},
    {{"MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION", "DRAUGHTING_MODEL"},
     from_children,
     LEAVES},
    // management data; documents once more, for what they gained since
    {{"APPLIED_DOCUMENT_REFERENCE"}, gather_and_spread},
    {{"APPLIED_SECURITY_CLASSIFICATION_ASSIGNMENT"}, gather_and_spread},
    {{"APPLIED_CERTIFICATION_ASSIGNMENT"}, gather_and_spread},
    {{"APPLIED_EVENT_OCCURRENCE_ASSIGNMENT"}, gather_and_spread},
    {{"APPLIED_DATE_ASSIGNMENT"}, gather_and_spread},
    {{"APPLIED_APPROVAL_ASSIGNMENT"}, gather_and_spread},
    {{"APPLIED_ORGANIZATION_ASSIGNMENT"}, gather_and_spread},
    {{"APPLIED_PERSON_AND_ORGANIZATION_ASSIGNMENT"}, gather_and_spread},
    {{"PERSONAL_ADDRESS", "ORGANIZATIONAL_ADDRESS", "PERSON_AND_ORGANIZATION_ADDRESS"},
     from_children},
    {{"APPROVAL_PERSON_ORGANIZATION"}, gather_and_spread},
    {{"APPLIED_DATE_AND_TIME_ASSIGNMENT"}, gather_and_spread},
    {{"APPROVAL_DATE_TIME"}, gather_and_spread},
    {{"PRESENTATION_LAYER_ASSIGNMENT"}, from_children},
    {{"INVISIBILITY"}, from_children},
    {{"ID_ATTRIBUTE"}, from_children},
    // composite materials and units
    {{"PLY_ORIENTATION_ANGLE", "LAID_ORIENTATION_ANGLE", "DRAPED_ORIENTATION_ANGLE"},
     gather_and_spread},
    {units, gather_and_spread},
    // nested: every part has all that is its own; now the assemblies get, through their usages, the
    // definition, shape and placements of their components
    {{"ASSEMBLY_COMPONENT_USAGE", "NEXT_ASSEMBLY_USAGE_OCCURRENCE",
      "QUANTIFIED_ASSEMBLY_COMPONENT_USAGE"},
     to_descendants,
     ALL_PARTS,
     0,
     {},
     In::nested},
    {{"PRODUCT_DEFINITION", "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS"},
     tops_to_root,
     ALL_PARTS,
     0,
     {},
     In::nested},
    {{"PRODUCT_DEFINITION_SHAPE"}, from_child, ALL_PARTS, 0, {}, In::nested},
    {{"SHAPE_DEFINITION_REPRESENTATION"}, both_ways, ALL_PARTS, 0, {}, In::nested},
    {shape_representations, to_children_inside, ALL_PARTS, 0, placements_and_contexts, In::nested},
    {{"CONTEXT_DEPENDENT_SHAPE_REPRESENTATION"}, both_ways, ALL_PARTS, 0, {}, In::nested},
    {transformations, to_children_outside, ALL_PARTS, 0, shape_representations, In::nested},
};

bool belongs_to(In in, AssemblyStyle style) {
  return (static_cast<unsigned>(in) >> static_cast<unsigned>(style) & 1) != 0;
}

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

/// Runs the pass for one of its types. `other` is what its second selection holds.
void run_rule(const Store& store, const Pass& pass, std::string_view type,
              const TypeNameIndex& other) {
  switch (pass.rule) {
    case from_child:
      return propagate_from_child(store, type, pass.n, pass.filter);
    case from_children:
      return propagate_from_children(store, type, pass.filter);
    case to_descendants:
      return propagate_to_descendants(store, type, pass.filter);
    case both_ways:
      return propagate_both_ways(store, type, pass.filter);
    case Rule::gather_and_spread:
      return Kessel::gather_and_spread(store, type, pass.filter);
    case from_child_and_down:
      return propagate_from_child_and_down(store, type, pass.n, pass.filter);
    case to_children_inside:
      return propagate_to_typed_children(store, type, other, ChildTypes::inside, pass.filter);
    case to_children_outside:
      return propagate_to_typed_children(store, type, other, ChildTypes::outside, pass.filter);
    case through_relationships:
      return propagate_through_relationships(store, type, *other.begin(), pass.n);
    case through_usages:
      return propagate_through_usages(store, type, *other.begin(), pass.n);
    case spread_to_leaves:
      return gather_and_spread_to_leaves(store, type);
    case styles_to_items:
      return styles_to_their_items(store, type);
    case usages_to_assemblies:
      return usages_to_their_assemblies(store, type);
    case tops_to_root:
      return tops_to_generated_root(store, type);
  }
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

std::vector<Pass> association_passes(AssemblyStyle style) {
  std::vector<Pass> passes;
  for (const Pass& pass : PASSES) {
    if (!belongs_to(pass.in, style)) continue;
    passes.push_back(pass);
    // Nested, every part starts in its own file alone: what a filter for leaves keeps out of the
    // assemblies is not on its way there, and an assembly's own bodies must come through.
    if (style == AssemblyStyle::nested && pass.filter == LEAVES) passes.back().filter = ALL_PARTS;
  }
  return passes;
}

void run_pass(const Store& store, const Pass& pass) {
  const TypeNameSet others = pass.other.resolve(store.types);
  const TypeNameIndex other(others.begin(), others.end());
  for (const std::string_view type : pass.types.resolve(store.types)) {
    run_rule(store, pass, type, other);
  }
}

}  // namespace Kessel

#include "sameness/values.h"

#include <algorithm>
#include <iterator>

#include "instances/keyword_row.h"

namespace Kessel::Sameness {

namespace {

using enum Keywords::Match;
using enum Worth;

struct ValueRow : Keywords::Row {
  Worth worth;
};

// The first row that fits counts; what no row fits bears identity.
constexpr ValueRow VALUES[] = {
    // Points and directions: numbers. What is made of them where it matters, a vertex or an item of
    // a representation, bears identity itself.
    {exactly, "CARTESIAN_POINT", geometry},
    {exactly, "POINT_ON_CURVE", geometry},
    {exactly, "POINT_ON_SURFACE", geometry},
    {exactly, "DEGENERATE_PCURVE", geometry},
    {exactly, "EVALUATED_DEGENERATE_PCURVE", geometry},
    {exactly, "DIRECTION", geometry},
    {exactly, "VECTOR", geometry},
    {exactly, "COORDINATES_LIST", geometry},
    // Placements: a place and directions.
    {exactly, "AXIS1_PLACEMENT", geometry},
    {exactly, "AXIS2_PLACEMENT_2D", geometry},
    {exactly, "AXIS2_PLACEMENT_3D", geometry},
    {beginning, "CARTESIAN_TRANSFORMATION_OPERATOR", geometry},
    // Curves: what an edge runs along; the edge bears identity.
    {exactly, "LINE", geometry},
    {exactly, "CIRCLE", geometry},
    {exactly, "ELLIPSE", geometry},
    {exactly, "HYPERBOLA", geometry},
    {exactly, "PARABOLA", geometry},
    {exactly, "CLOTHOID", geometry},
    {exactly, "POLYLINE", geometry},
    {exactly, "PCURVE", geometry},
    {exactly, "BOUNDED_PCURVE", geometry},
    {exactly, "SURFACE_CURVE", geometry},
    {exactly, "BOUNDED_SURFACE_CURVE", geometry},
    {exactly, "INTERSECTION_CURVE", geometry},
    {exactly, "SEAM_CURVE", geometry},
    {exactly, "BOUNDED_CURVE", geometry},
    {exactly, "TRIMMED_CURVE", geometry},
    {exactly, "COMPOSITE_CURVE", geometry},
    {exactly, "COMPOSITE_CURVE_ON_SURFACE", geometry},
    {exactly, "COMPOSITE_CURVE_SEGMENT", geometry},
    {exactly, "BOUNDARY_CURVE", geometry},
    {exactly, "OUTER_BOUNDARY_CURVE", geometry},
    {exactly, "REPARAMETRISED_COMPOSITE_CURVE_SEGMENT", geometry},
    {exactly, "OFFSET_CURVE_2D", geometry},
    {exactly, "OFFSET_CURVE_3D", geometry},
    {exactly, "CURVE_REPLICA", geometry},
    {exactly, "B_SPLINE_CURVE", geometry},
    {exactly, "B_SPLINE_CURVE_WITH_KNOTS", geometry},
    {exactly, "RATIONAL_B_SPLINE_CURVE", geometry},
    {exactly, "UNIFORM_CURVE", geometry},
    {exactly, "QUASI_UNIFORM_CURVE", geometry},
    {exactly, "BEZIER_CURVE", geometry},
    // Surfaces: what a face lies in; the face bears identity.
    {exactly, "PLANE", geometry},
    {exactly, "CYLINDRICAL_SURFACE", geometry},
    {exactly, "CONICAL_SURFACE", geometry},
    {exactly, "SPHERICAL_SURFACE", geometry},
    {exactly, "TOROIDAL_SURFACE", geometry},
    {exactly, "DEGENERATE_TOROIDAL_SURFACE", geometry},
    {exactly, "SURFACE_OF_REVOLUTION", geometry},
    {exactly, "SURFACE_OF_LINEAR_EXTRUSION", geometry},
    {exactly, "SWEPT_SURFACE", geometry},
    {exactly, "BOUNDED_SURFACE", geometry},
    {exactly, "ELEMENTARY_SURFACE", geometry},
    {exactly, "CURVE_BOUNDED_SURFACE", geometry},
    {exactly, "RECTANGULAR_TRIMMED_SURFACE", geometry},
    {exactly, "RECTANGULAR_COMPOSITE_SURFACE", geometry},
    {exactly, "SURFACE_PATCH", geometry},
    {exactly, "OFFSET_SURFACE", geometry},
    {exactly, "SURFACE_REPLICA", geometry},
    {exactly, "B_SPLINE_SURFACE", geometry},
    {exactly, "B_SPLINE_SURFACE_WITH_KNOTS", geometry},
    {exactly, "RATIONAL_B_SPLINE_SURFACE", geometry},
    {exactly, "UNIFORM_SURFACE", geometry},
    {exactly, "QUASI_UNIFORM_SURFACE", geometry},
    {exactly, "BEZIER_SURFACE", geometry},
    // Units and amounts: a millimetre is a millimetre.
    {ending, "_UNIT", measure},
    {exactly, "DERIVED_UNIT_ELEMENT", measure},
    {exactly, "DIMENSIONAL_EXPONENTS", measure},
    {exactly, "MEASURE_WITH_UNIT", measure},
    {ending, "_MEASURE_WITH_UNIT", measure},
    // How something looks. What looks so, a styled item or an annotation, bears identity.
    {exactly, "COLOUR", appearance},
    {exactly, "COLOUR_RGB", appearance},
    {exactly, "COLOUR_SPECIFICATION", appearance},
    {exactly, "PRE_DEFINED_ITEM", appearance},
    {exactly, "PRE_DEFINED_COLOUR", appearance},
    {exactly, "PRE_DEFINED_CURVE_FONT", appearance},
    {exactly, "PRE_DEFINED_TEXT_FONT", appearance},
    {exactly, "PRE_DEFINED_SYMBOL", appearance},
    {exactly, "PRE_DEFINED_MARKER", appearance},
    {exactly, "PRE_DEFINED_POINT_MARKER_SYMBOL", appearance},
    {beginning, "DRAUGHTING_PRE_DEFINED_", appearance},
    {exactly, "EXTERNALLY_DEFINED_CURVE_FONT", appearance},
    {exactly, "EXTERNALLY_DEFINED_TEXT_FONT", appearance},
    {exactly, "PRESENTATION_STYLE_ASSIGNMENT", appearance},
    {exactly, "PRESENTATION_STYLE_BY_CONTEXT", appearance},
    {beginning, "SURFACE_STYLE_", appearance},
    {exactly, "SURFACE_SIDE_STYLE", appearance},
    {beginning, "FILL_AREA_STYLE", appearance},
    {exactly, "CURVE_STYLE", appearance},
    {beginning, "CURVE_STYLE_FONT", appearance},
    {exactly, "CURVE_STYLE_RENDERING", appearance},
    {exactly, "POINT_STYLE", appearance},
    {exactly, "SYMBOL_STYLE", appearance},
    {exactly, "SYMBOL_COLOUR", appearance},
    {beginning, "TEXT_STYLE", appearance},
    {exactly, "NULL_STYLE", appearance},
    // Who, when, in which role, of which kind. What is signed, dated or classified bears identity,
    // and so do the records that sign, date or classify it.
    {exactly, "PERSON", management},
    {exactly, "ORGANIZATION", management},
    {exactly, "PERSON_AND_ORGANIZATION", management},
    {exactly, "ADDRESS", management},
    {exactly, "PERSONAL_ADDRESS", management},
    {exactly, "ORGANIZATIONAL_ADDRESS", management},
    {exactly, "DATE", management},
    {exactly, "CALENDAR_DATE", management},
    {exactly, "ORDINAL_DATE", management},
    {exactly, "WEEK_OF_YEAR_AND_DAY_DATE", management},
    {exactly, "DATE_AND_TIME", management},
    {exactly, "LOCAL_TIME", management},
    {exactly, "COORDINATED_UNIVERSAL_TIME_OFFSET", management},
    {ending, "_ROLE", management},
    {exactly, "APPROVAL_STATUS", management},
    {exactly, "SECURITY_CLASSIFICATION_LEVEL", management},
    {exactly, "DOCUMENT_TYPE", management},
    {exactly, "CONTRACT_TYPE", management},
    {exactly, "CERTIFICATION_TYPE", management},
    {exactly, "EXTERNAL_SOURCE", management},
};

// Partial records that say nothing by themselves.
constexpr std::string_view SUPERTYPES[] = {
    "REPRESENTATION_ITEM",
    "GEOMETRIC_REPRESENTATION_ITEM",
    "POINT",
    "CURVE",
    "SURFACE",
    "CONIC",
    "PLACEMENT",
    "FOUNDED_ITEM",
    "TOPOLOGICAL_REPRESENTATION_ITEM",
};

// Records that mean the very item which they refer to.
constexpr Keywords::Row NAMING[] = {
    // Sets of items without topology: a curve drawn twice is two.
    {ending, "GEOMETRIC_SET"},
    {ending, "GEOMETRIC_CURVE_SET"},
    // What is said of an item: how it looks, what it is called, what it is part of.
    {ending, "STYLED_ITEM"},
    {beginning, "ANNOTATION_"},
    {exactly, "ITEM_IDENTIFIED_REPRESENTATION_USAGE"},
    {exactly, "GEOMETRIC_ITEM_SPECIFIC_USAGE"},
    {exactly, "DRAUGHTING_MODEL_ITEM_ASSOCIATION"},
    // Where something is put: by this placement among a representation's items, not by its like.
    {exactly, "ITEM_DEFINED_TRANSFORMATION"},
    {exactly, "REPRESENTATION_MAP"},
    {exactly, "MAPPED_ITEM"},
};

// Records that say something of whatever they refer to.
constexpr Keywords::Row NAMING_VALUES[] = {
    {exactly, "NAME_ATTRIBUTE"},
    {exactly, "ID_ATTRIBUTE"},
    {exactly, "DESCRIPTION_ATTRIBUTE"},
};

// What shapes are made of and bears identity.
constexpr Keywords::Row SHAPE_PARTS[] = {
    {exactly, "VERTEX"},
    {exactly, "VERTEX_POINT"},
    {exactly, "VERTEX_LOOP"},
    {exactly, "VERTEX_SHELL"},
    {exactly, "EDGE"},
    {exactly, "EDGE_CURVE"},
    {exactly, "SUBEDGE"},
    {exactly, "SEAM_EDGE"},
    {exactly, "ORIENTED_EDGE"},
    {exactly, "EDGE_LOOP"},
    {exactly, "POLY_LOOP"},
    {exactly, "LOOP"},
    {exactly, "PATH"},
    {exactly, "OPEN_PATH"},
    {exactly, "ORIENTED_PATH"},
    {exactly, "FACE_BOUND"},
    {exactly, "FACE_OUTER_BOUND"},
    {exactly, "FACE"},
    {exactly, "FACE_SURFACE"},
    {exactly, "ADVANCED_FACE"},
    {exactly, "SUBFACE"},
    {exactly, "ORIENTED_FACE"},
    {exactly, "CONNECTED_FACE_SET"},
    {exactly, "CONNECTED_FACE_SUB_SET"},
    {exactly, "CONNECTED_EDGE_SET"},
    {exactly, "CLOSED_SHELL"},
    {exactly, "OPEN_SHELL"},
    {exactly, "ORIENTED_CLOSED_SHELL"},
    {exactly, "ORIENTED_OPEN_SHELL"},
    {exactly, "WIRE_SHELL"},
    {exactly, "SOLID_MODEL"},
    {exactly, "MANIFOLD_SOLID_BREP"},
    {exactly, "BREP_WITH_VOIDS"},
    {exactly, "FACETED_BREP"},
    {exactly, "SHELL_BASED_SURFACE_MODEL"},
    {exactly, "SHELL_BASED_WIREFRAME_MODEL"},
    {exactly, "FACE_BASED_SURFACE_MODEL"},
    {exactly, "EDGE_BASED_WIREFRAME_MODEL"},
    {exactly, "CSG_SOLID"},
    {exactly, "BOOLEAN_RESULT"},
    {exactly, "BLOCK"},
    {exactly, "SPHERE"},
    {exactly, "TORUS"},
    {exactly, "RIGHT_CIRCULAR_CYLINDER"},
    {exactly, "RIGHT_CIRCULAR_CONE"},
    {exactly, "RIGHT_ANGULAR_WEDGE"},
    {exactly, "BOX_DOMAIN"},
    {exactly, "HALF_SPACE_SOLID"},
    {exactly, "BOXED_HALF_SPACE"},
    {exactly, "SWEPT_AREA_SOLID"},
    {exactly, "EXTRUDED_AREA_SOLID"},
    {exactly, "REVOLVED_AREA_SOLID"},
    {exactly, "SURFACE_CURVE_SWEPT_AREA_SOLID"},
    {exactly, "SWEPT_FACE_SOLID"},
    {exactly, "EXTRUDED_FACE_SOLID"},
    {exactly, "REVOLVED_FACE_SOLID"},
    {exactly, "SWEPT_DISK_SOLID"},
    {exactly, "SOLID_REPLICA"},
    {exactly, "TESSELLATED_VERTEX"},
    {exactly, "TESSELLATED_EDGE"},
    {exactly, "TESSELLATED_CONNECTING_EDGE"},
    {exactly, "TESSELLATED_WIRE"},
    {exactly, "TESSELLATED_FACE"},
    {exactly, "TESSELLATED_SHELL"},
    {exactly, "TESSELLATED_SOLID"},
    {exactly, "TESSELLATED_POINT_SET"},
    {exactly, "TESSELLATED_CURVE_SET"},
    {exactly, "TRIANGULATED_FACE"},
    {exactly, "TRIANGULATED_SURFACE_SET"},
    {exactly, "COMPLEX_TRIANGULATED_FACE"},
    {exactly, "COMPLEX_TRIANGULATED_SURFACE_SET"},
};

// Lists that are neither sets nor unique.
constexpr Keywords::Row REPEATING[] = {
    {exactly, "POLYLINE"},       {beginning, "B_SPLINE_"},  {exactly, "BEZIER_CURVE"},
    {exactly, "BEZIER_SURFACE"}, {ending, "UNIFORM_CURVE"}, {ending, "UNIFORM_SURFACE"},
};

constexpr Keywords::Row CONTEXTS[] = {
    {ending, "REPRESENTATION_CONTEXT"},
    {exactly, "GLOBAL_UNIT_ASSIGNED_CONTEXT"},
    {exactly, "GLOBAL_UNCERTAINTY_ASSIGNED_CONTEXT"},
};

Worth worth_of(std::string_view keyword) {
  for (const ValueRow& row : VALUES) {
    if (row.fits(keyword)) return row.worth;
  }
  return identity;
}

template <std::size_t N>
bool is_in(const Keywords::Row (&rows)[N], std::string_view keyword) {
  return std::any_of(std::begin(rows), std::end(rows),
                     [&](const Keywords::Row& row) { return row.fits(keyword); });
}

bool is_supertype(std::string_view keyword) {
  return std::find(std::begin(SUPERTYPES), std::end(SUPERTYPES), keyword) != std::end(SUPERTYPES);
}

}  // namespace

Worth worth_of(const TypeTable& types, TypeId type) {
  // A line of a reference section is no more than the resource that it names.
  if (type == TypeTable::REFERENCE_ENTRY) return management;
  Worth worth = identity;
  for (const std::string_view keyword : types.keywords(type)) {
    if (types.is_complex(type) && is_supertype(keyword)) continue;
    const Worth of_part = worth_of(keyword);
    if (of_part == identity) return identity;
    worth = of_part;
  }
  return worth;
}

bool names_items(std::string_view keyword) {
  return is_in(NAMING, keyword);
}

bool names_values(std::string_view keyword) {
  return is_in(NAMING_VALUES, keyword);
}

bool is_shape_part(const TypeTable& types, TypeId type) {
  const auto& keywords = types.keywords(type);
  return std::any_of(keywords.begin(), keywords.end(),
                     [](std::string_view keyword) { return is_in(SHAPE_PARTS, keyword); }) &&
         std::all_of(keywords.begin(), keywords.end(), [](std::string_view keyword) {
           return is_in(SHAPE_PARTS, keyword) || is_supertype(keyword);
         });
}

bool may_repeat(const TypeTable& types, TypeId type) {
  const auto& keywords = types.keywords(type);
  return std::any_of(keywords.begin(), keywords.end(),
                     [](std::string_view keyword) { return is_in(REPEATING, keyword); });
}

bool is_representation_context(const TypeTable& types, TypeId type) {
  const auto& keywords = types.keywords(type);
  return !keywords.empty() &&
         std::all_of(keywords.begin(), keywords.end(),
                     [](std::string_view keyword) { return is_in(CONTEXTS, keyword); });
}

}  // namespace Kessel::Sameness

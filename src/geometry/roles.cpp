#include "geometry/roles.h"

#include <algorithm>
#include <iterator>

namespace Kessel::Geometry {

namespace {

struct RoleRow {
  std::string_view keyword;
  Role role;
};

constexpr RoleRow ROLES[] = {
    // Solids and surfaces (ISO 10303-42).
    {"MANIFOLD_SOLID_BREP", Role::holder},
    {"BREP_WITH_VOIDS", Role::holder},
    {"FACETED_BREP", Role::holder},
    {"SHELL_BASED_SURFACE_MODEL", Role::holder},
    {"FACE_BASED_SURFACE_MODEL", Role::holder},
    {"CLOSED_SHELL", Role::holder},
    {"OPEN_SHELL", Role::holder},
    {"ORIENTED_CLOSED_SHELL", Role::holder},
    {"ORIENTED_OPEN_SHELL", Role::holder},
    {"SURFACED_OPEN_SHELL", Role::holder},
    {"CONNECTED_FACE_SET", Role::holder},
    {"CONNECTED_FACE_SUB_SET", Role::holder},
    {"ADVANCED_FACE", Role::face},
    {"FACE_SURFACE", Role::face},
    {"ORIENTED_FACE", Role::face},
    {"SUBFACE", Role::face},
    {"FACE", Role::face},
    {"FACE_OUTER_BOUND", Role::holder},
    {"FACE_BOUND", Role::holder},
    {"EDGE_LOOP", Role::holder},
    {"ORIENTED_EDGE", Role::holder},
    {"EDGE_CURVE", Role::edge},
    {"SUBEDGE", Role::edge},
    {"POLY_LOOP", Role::loop},
    // Wireframes and sets.
    {"SHELL_BASED_WIREFRAME_MODEL", Role::holder},
    {"EDGE_BASED_WIREFRAME_MODEL", Role::holder},
    {"CONNECTED_EDGE_SET", Role::holder},
    {"CONNECTED_EDGE_SUB_SET", Role::holder},
    {"WIRE_SHELL", Role::holder},
    {"PATH", Role::holder},
    {"OPEN_PATH", Role::holder},
    {"ORIENTED_PATH", Role::holder},
    {"SUBPATH", Role::holder},
    {"GEOMETRIC_SET", Role::holder},
    {"GEOMETRIC_CURVE_SET", Role::holder},
    {"CURVE_BOUNDED_SURFACE", Role::holder},
    // Curves.
    {"LINE", Role::curve},
    {"CIRCLE", Role::curve},
    {"ELLIPSE", Role::curve},
    {"PARABOLA", Role::curve},
    {"HYPERBOLA", Role::curve},
    {"POLYLINE", Role::curve},
    {"TRIMMED_CURVE", Role::curve},
    {"B_SPLINE_CURVE", Role::curve},
    {"B_SPLINE_CURVE_WITH_KNOTS", Role::curve},
    {"UNIFORM_CURVE", Role::curve},
    {"QUASI_UNIFORM_CURVE", Role::curve},
    {"BEZIER_CURVE", Role::curve},
    {"RATIONAL_B_SPLINE_CURVE", Role::curve},
    {"COMPOSITE_CURVE", Role::curve},
    {"COMPOSITE_CURVE_ON_SURFACE", Role::curve},
    {"BOUNDARY_CURVE", Role::curve},
    {"OUTER_BOUNDARY_CURVE", Role::curve},
    {"SURFACE_CURVE", Role::curve},
    {"SEAM_CURVE", Role::curve},
    {"INTERSECTION_CURVE", Role::curve},
    {"BOUNDED_SURFACE_CURVE", Role::curve},
    {"CURVE_REPLICA", Role::curve},
    {"OFFSET_CURVE_3D", Role::curve},
    // What stands elsewhere (ISO 10303-43).
    {"MAPPED_ITEM", Role::mapped},
    // Tessellated shapes (ISO 10303-42, edition 2014).
    {"REPOSITIONED_TESSELLATED_ITEM", Role::moved},
    {"REPOSITIONED_TESSELLATED_GEOMETRIC_SET", Role::moved},
    {"TESSELLATED_SOLID", Role::tessellated},
    {"TESSELLATED_SHELL", Role::tessellated},
    {"TESSELLATED_WIRE", Role::tessellated},
    {"TESSELLATED_GEOMETRIC_SET", Role::tessellated},
    {"TESSELLATED_EDGE", Role::strip},
    {"TESSELLATED_CONNECTING_EDGE", Role::strip},
    {"TESSELLATED_CURVE_SET", Role::strip},
    {"TRIANGULATED_FACE", Role::triangles},
    {"COMPLEX_TRIANGULATED_FACE", Role::triangles},
    {"TRIANGULATED_SURFACE_SET", Role::triangles},
    {"COMPLEX_TRIANGULATED_SURFACE_SET", Role::triangles},
};

// Further records without which those above cannot be read.
constexpr std::string_view TEXTS[] = {
    "AXIS2_PLACEMENT_3D",
    "CARTESIAN_TRANSFORMATION_OPERATOR_3D",
    "COMPOSITE_CURVE_SEGMENT",
    "VECTOR",
    "COORDINATES_LIST",
    "STYLED_ITEM",
    "OVER_RIDING_STYLED_ITEM",
    "CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM",
    "COLOUR_RGB",
    "DRAUGHTING_PRE_DEFINED_COLOUR",
    "PRE_DEFINED_COLOUR",
};

Role role_of_keyword(std::string_view keyword) {
  const auto row = std::find_if(std::begin(ROLES), std::end(ROLES),
                                [&](const RoleRow& one) { return one.keyword == keyword; });
  return row == std::end(ROLES) ? Role::none : row->role;
}

bool is_read_by_references(Role role) {
  return role == Role::none || role == Role::holder || role == Role::face;
}

}  // namespace

Role role_of(const TypeTable& types, TypeId type) {
  for (const std::string_view keyword : types.keywords(type)) {
    const Role role = role_of_keyword(keyword);
    if (role != Role::none) return role;
  }
  return Role::none;
}

Kept kept_of(const TypeTable& types, TypeId type) {
  if (types.has(type, "CARTESIAN_POINT") || types.has(type, "DIRECTION")) return Kept::coordinates;
  if (!is_read_by_references(role_of(types, type))) return Kept::text;
  const auto& keywords = types.keywords(type);
  const bool is_needed = std::any_of(keywords.begin(), keywords.end(), [](std::string_view one) {
    return std::find(std::begin(TEXTS), std::end(TEXTS), one) != std::end(TEXTS);
  });
  return is_needed ? Kept::text : Kept::nothing;
}

}  // namespace Kessel::Geometry

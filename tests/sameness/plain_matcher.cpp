#include "sameness/plain_matcher.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace Kessel::test {

namespace {

const std::set<std::string> VALUES{
    "CARTESIAN_POINT", "DIRECTION", "VECTOR", "AXIS1_PLACEMENT", "AXIS2_PLACEMENT_2D",
    "AXIS2_PLACEMENT_3D", "LINE", "CIRCLE", "ELLIPSE", "HYPERBOLA", "PARABOLA", "POLYLINE",
    "PCURVE", "SURFACE_CURVE", "SEAM_CURVE", "INTERSECTION_CURVE", "BOUNDED_CURVE", "TRIMMED_CURVE",
    "COMPOSITE_CURVE", "COMPOSITE_CURVE_SEGMENT", "B_SPLINE_CURVE", "B_SPLINE_CURVE_WITH_KNOTS",
    "RATIONAL_B_SPLINE_CURVE", "UNIFORM_CURVE", "QUASI_UNIFORM_CURVE", "BEZIER_CURVE", "PLANE",
    "CYLINDRICAL_SURFACE", "CONICAL_SURFACE", "SPHERICAL_SURFACE", "TOROIDAL_SURFACE",
    "DEGENERATE_TOROIDAL_SURFACE", "SURFACE_OF_REVOLUTION", "SURFACE_OF_LINEAR_EXTRUSION",
    "BOUNDED_SURFACE", "CURVE_BOUNDED_SURFACE", "RECTANGULAR_TRIMMED_SURFACE", "OFFSET_SURFACE",
    "OFFSET_CURVE_3D", "DEGENERATE_PCURVE", "SURFACE_REPLICA", "CURVE_REPLICA",
    "CARTESIAN_TRANSFORMATION_OPERATOR_3D", "B_SPLINE_SURFACE", "B_SPLINE_SURFACE_WITH_KNOTS",
    "RATIONAL_B_SPLINE_SURFACE", "UNIFORM_SURFACE", "QUASI_UNIFORM_SURFACE", "BEZIER_SURFACE",
    // Units and amounts.
    "NAMED_UNIT", "SI_UNIT", "LENGTH_UNIT", "PLANE_ANGLE_UNIT", "SOLID_ANGLE_UNIT", "MASS_UNIT",
    "CONVERSION_BASED_UNIT", "DERIVED_UNIT", "AREA_UNIT", "VOLUME_UNIT", "RATIO_UNIT",
    "THERMODYNAMIC_TEMPERATURE_UNIT", "TIME_UNIT", "PRESSURE_UNIT", "FORCE_UNIT",
    "DERIVED_UNIT_ELEMENT", "DIMENSIONAL_EXPONENTS", "MEASURE_WITH_UNIT",
    "LENGTH_MEASURE_WITH_UNIT", "PLANE_ANGLE_MEASURE_WITH_UNIT", "UNCERTAINTY_MEASURE_WITH_UNIT",
    "MASS_MEASURE_WITH_UNIT", "CONTEXT_DEPENDENT_UNIT",
    // Styles.
    "COLOUR_RGB", "DRAUGHTING_PRE_DEFINED_COLOUR", "DRAUGHTING_PRE_DEFINED_CURVE_FONT",
    "PRESENTATION_STYLE_ASSIGNMENT", "PRESENTATION_STYLE_BY_CONTEXT", "SURFACE_STYLE_USAGE",
    "SURFACE_STYLE_FILL_AREA", "SURFACE_STYLE_TRANSPARENT", "SURFACE_STYLE_RENDERING",
    "SURFACE_STYLE_RENDERING_WITH_PROPERTIES", "SURFACE_STYLE_BOUNDARY", "SURFACE_SIDE_STYLE",
    "SURFACE_STYLE_PARAMETER_LINE", "SURFACE_STYLE_CONTROL_GRID", "SURFACE_STYLE_SILHOUETTE",
    "SURFACE_STYLE_SEGMENTATION_CURVE", "FILL_AREA_STYLE", "FILL_AREA_STYLE_COLOUR", "CURVE_STYLE",
    "POINT_STYLE", "TEXT_STYLE", "TEXT_STYLE_FOR_DEFINED_FONT",
    "TEXT_STYLE_WITH_BOX_CHARACTERISTICS", "CURVE_STYLE_FONT", "CURVE_STYLE_FONT_PATTERN",
    "DRAUGHTING_PRE_DEFINED_TEXT_FONT", "PRE_DEFINED_MARKER",
    // Management.
    "PERSON", "ORGANIZATION", "PERSON_AND_ORGANIZATION", "CALENDAR_DATE", "LOCAL_TIME",
    "DATE_AND_TIME", "COORDINATED_UNIVERSAL_TIME_OFFSET", "PERSON_AND_ORGANIZATION_ROLE",
    "DATE_TIME_ROLE", "APPROVAL_ROLE", "OBJECT_ROLE", "ORGANIZATION_ROLE", "IDENTIFICATION_ROLE",
    "APPROVAL_STATUS", "SECURITY_CLASSIFICATION_LEVEL", "DOCUMENT_TYPE", "PERSONAL_ADDRESS",
    "GROUP_ROLE", "DATE_ROLE"};

const std::set<std::string> SUPERTYPES{"REPRESENTATION_ITEM",
                                       "GEOMETRIC_REPRESENTATION_ITEM",
                                       "POINT",
                                       "CURVE",
                                       "SURFACE",
                                       "CONIC",
                                       "PLACEMENT",
                                       "FOUNDED_ITEM"};

// Records that mean their items, not what these say.
const std::set<std::string> NAMING{"GEOMETRIC_SET",
                                   "GEOMETRIC_CURVE_SET",
                                   "STYLED_ITEM",
                                   "OVER_RIDING_STYLED_ITEM",
                                   "ITEM_DEFINED_TRANSFORMATION",
                                   "REPRESENTATION_MAP",
                                   "MAPPED_ITEM",
                                   "GEOMETRIC_ITEM_SPECIFIC_USAGE",
                                   "ITEM_IDENTIFIED_REPRESENTATION_USAGE",
                                   "DRAUGHTING_MODEL_ITEM_ASSOCIATION",
                                   "ANNOTATION_OCCURRENCE",
                                   "ANNOTATION_CURVE_OCCURRENCE",
                                   "ANNOTATION_PLANE",
                                   "ANNOTATION_PLACEHOLDER_OCCURRENCE",
                                   "ANNOTATION_FILL_AREA",
                                   "ANNOTATION_FILL_AREA_OCCURRENCE",
                                   "CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM"};

/// The parameter that is a set; -1 for the last, -2 for none.
int set_of(const std::string& keyword) {
  if (keyword.ends_with("REPRESENTATION") || keyword == "DRAUGHTING_MODEL") return 1;
  if (keyword == "PRESENTATION_AREA" || keyword == "PRESENTATION_VIEW") return 1;
  if (keyword == "PRESENTATION_LAYER_ASSIGNMENT") return 2;
  if (keyword == "INVISIBILITY" || keyword == "CONTEXT_DEPENDENT_INVISIBILITY") return 0;
  if (keyword == "PRESENTATION_STYLE_ASSIGNMENT") return -2;
  if (keyword.ends_with("_ASSIGNMENT") || keyword.starts_with("CC_DESIGN_")) return -1;
  if (keyword == "APPLIED_DOCUMENT_REFERENCE" || keyword == "AUTO_DESIGN_DOCUMENT_REFERENCE")
    return 2;
  return keyword == "PRODUCT_RELATED_PRODUCT_CATEGORY" ? 2 : -2;
}

/// A record: its text with "#" for every reference and "(" ")" for a set, whom it refers to in
/// order, and whom in sets.
struct Node {
  std::string text;
  std::vector<std::string> references;
  std::set<std::string> listed;
  bool is_value = false;
};

std::vector<std::string> keywords_of(const PlainRecord& record) {
  std::vector<std::string> keywords;
  const bool is_complex = record.pieces.front().text == "(";
  int depth = 0;
  for (const Piece& piece : record.pieces) {
    if (piece.kind == Piece::Kind::word && depth == (is_complex ? 1 : 0) && piece.text[0] != '.') {
      keywords.push_back(piece.text);
    }
    depth += piece.text == "(" ? 1 : piece.text == ")" ? -1 : 0;
  }
  return keywords;
}

/// Numbers with a point by their values.
std::string spelling_of(const Piece& piece) {
  if (piece.kind != Piece::Kind::number || piece.text.find('.') == std::string::npos) {
    return piece.text;
  }
  char digits[40];
  // Plus nothing, since a zero with a sign is zero.
  std::snprintf(digits, sizeof digits, "%.17g.", std::strtod(piece.text.c_str(), nullptr) + 0.0);
  return digits;
}

/// The pieces of the set in the partial record that begins behind `at`, as first and end.
std::pair<std::size_t, std::size_t> set_in(const PlainRecord& record, std::size_t at, int which) {
  std::vector<std::pair<std::size_t, std::size_t>> parameters;
  int depth = 0;
  std::size_t begin = at + 2;
  for (std::size_t i = at + 1; i < record.pieces.size(); ++i) {
    const std::string& text = record.pieces[i].text;
    depth += text == "(" ? 1 : text == ")" ? -1 : 0;
    if ((text == "," && depth == 1) || depth == 0) {
      parameters.emplace_back(begin, i);
      begin = i + 1;
    }
    if (depth == 0) break;
  }
  if (which == -1) which = static_cast<int>(parameters.size()) - 1;
  if (which < 0 || static_cast<std::size_t>(which) >= parameters.size()) return {0, 0};
  const auto found = parameters[static_cast<std::size_t>(which)];
  return found.first < found.second && record.pieces[found.first].text == "("
             ? found
             : std::pair<std::size_t, std::size_t>{0, 0};
}

/// A file's records of identity, values spelled out in them.
class Records {
 public:
  explicit Records(const PlainFile& file) {
    for (const PlainRecord& record : file.records) add(record);
    for (const PlainRecord& record : file.records) mark_items(record);
    std::set<std::string> in_circles;
    for (const auto& [number, node] : nodes_) {
      if (node.is_value && leads_to_itself(number)) in_circles.insert(number);
    }
    for (const std::string& number : in_circles) nodes_[number].is_value = false;
  }

  /// Those of identity, and, once each, values that nothing refers to.
  std::vector<Node> spelled() {
    std::vector<Node> list;
    std::set<std::pair<std::string, std::vector<std::string>>> loose;
    const std::set<std::string> used = all_used();
    for (const auto& [number, node] : nodes_) {
      if (node.is_value && used.contains(number)) continue;
      Node whole;
      spell(number, whole);
      whole.listed = node.listed;
      if (node.is_value) {
        // Pure ones only say that they are there, if nobody else does.
        if (!loose.emplace(whole.text, whole.references).second) continue;
        if (whole.references.empty()) {
          loose_.insert(whole.text);
          continue;
        }
      }
      list.push_back(whole);
      numbers_.push_back(number);
    }
    return list;
  }

  const std::vector<std::string>& numbers() const { return numbers_; }
  /// Values that lead to no record of identity and that nothing refers to.
  const std::set<std::string>& loose() const { return loose_; }
  /// All values that lead to no record of identity.
  std::set<std::string> pure() {
    std::set<std::string> texts;
    for (const auto& [number, node] : nodes_) {
      if (!node.is_value) continue;
      Node whole;
      spell(number, whole);
      if (whole.references.empty()) texts.insert(whole.text);
    }
    return texts;
  }

 private:
  void add(const PlainRecord& record) {
    Node node;
    std::pair<std::size_t, std::size_t> set{0, 0};
    for (std::size_t i = 0; i < record.pieces.size(); ++i) {
      const Piece& piece = record.pieces[i];
      if (piece.kind == Piece::Kind::word && piece.text[0] != '.' && set_of(piece.text) != -2) {
        const auto found = set_in(record, i, set_of(piece.text));
        if (found.second != 0) set = found;
      }
      const bool is_listed = i >= set.first && i < set.second;
      if (piece.kind == Piece::Kind::instance) {
        if (is_listed) {
          node.listed.insert(piece.text);
        } else {
          node.references.push_back(piece.text);
          node.text += "# ";
        }
      } else if (!is_listed || piece.text != ",") {
        node.text += spelling_of(piece) + " ";
      }
    }
    const std::vector<std::string> keywords = keywords_of(record);
    node.is_value = std::all_of(keywords.begin(), keywords.end(), [&](const std::string& keyword) {
      return VALUES.contains(keyword) || (keywords.size() > 1 && SUPERTYPES.contains(keyword));
    });
    nodes_[record.number] = std::move(node);
  }

  void mark_items(const PlainRecord& record) {
    const Node& node = nodes_[record.number];
    for (const std::string& to : node.listed) mark(to);
    for (const std::string& keyword : keywords_of(record)) {
      if (!NAMING.contains(keyword)) continue;
      for (const std::string& to : node.references) {
        if (is_geometry(to)) mark(to);
      }
    }
  }

  /// Of what else tests refer to as items, nothing is a value.
  bool is_geometry(const std::string& number) const {
    const auto found = nodes_.find(number);
    return found != nodes_.end() && found->second.text.find("STYLE") == std::string::npos &&
           found->second.text.find("COLOUR") == std::string::npos;
  }

  void mark(const std::string& number) {
    const auto found = nodes_.find(number);
    if (found != nodes_.end()) found->second.is_value = false;
  }

  bool leads_to_itself(const std::string& number) const {
    std::set<std::string> seen;
    std::vector<std::string> open{number};
    while (!open.empty()) {
      const auto found = nodes_.find(open.back());
      open.pop_back();
      if (found == nodes_.end()) continue;
      std::vector<std::string> all = found->second.references;
      all.insert(all.end(), found->second.listed.begin(), found->second.listed.end());
      for (const std::string& to : all) {
        if (to == number) return true;
        if (seen.insert(to).second) open.push_back(to);
      }
    }
    return false;
  }

  std::set<std::string> all_used() const {
    std::set<std::string> used;
    for (const auto& [number, node] : nodes_) {
      used.insert(node.references.begin(), node.references.end());
      used.insert(node.listed.begin(), node.listed.end());
    }
    return used;
  }

  /// Appends what a record says; values below it are spelled out.
  void spell(const std::string& number, Node& whole) const {
    const Node& node = nodes_.at(number);
    whole.text += node.text + "<";
    for (const std::string& to : node.references) {
      const auto found = nodes_.find(to);
      if (found == nodes_.end()) {
        whole.text += "missing,";
      } else if (found->second.is_value) {
        spell(to, whole);
      } else {
        whole.text += "#,";
        whole.references.push_back(to);
      }
    }
    whole.text += ">";
  }

  std::map<std::string, Node> nodes_;
  std::vector<std::string> numbers_;
  std::set<std::string> loose_;
};

/// A record with places of others instead of numbers, and a colour.
struct Vertex {
  std::vector<int> references;
  std::vector<int> listed;
  std::vector<std::pair<int, int>> users;  // with the place of the reference, -1 in a set
};

using Colours = std::vector<int>;

struct Whole {
  std::vector<Vertex> vertices;
  Colours colours;
};

Whole whole_of(Records& records, std::map<std::string, int>& texts) {
  Whole whole;
  const std::vector<Node> nodes = records.spelled();
  std::map<std::string, int> places;
  for (std::size_t i = 0; i < nodes.size(); ++i) places[records.numbers()[i]] = static_cast<int>(i);
  whole.vertices.resize(nodes.size());
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    Vertex& vertex = whole.vertices[i];
    std::string text = nodes[i].text;
    for (const std::string& to : nodes[i].references) vertex.references.push_back(places.at(to));
    bool misses = false;
    for (const std::string& to : nodes[i].listed) {
      const auto found = places.find(to);
      misses = misses || found == places.end();
      if (found != places.end()) vertex.listed.push_back(found->second);
    }
    if (misses) text += "misses";
    whole.colours.push_back(texts.try_emplace(text, static_cast<int>(texts.size())).first->second);
  }
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    const int user = static_cast<int>(i);
    int place = 0;
    const auto users_of = [&](int to) -> auto& {
      return whole.vertices[static_cast<std::size_t>(to)].users;
    };
    for (const int to : whole.vertices[i].references) users_of(to).emplace_back(user, place++);
    for (const int to : whole.vertices[i].listed) users_of(to).emplace_back(user, -1);
  }
  return whole;
}

/// What a vertex sees: its colour and those around it.
std::vector<int> view(const Whole& whole, std::size_t i) {
  const auto colour = [&](int of) { return whole.colours[static_cast<std::size_t>(of)]; };
  const Vertex& vertex = whole.vertices[i];
  std::vector<int> seen{whole.colours[i]};
  for (const int to : vertex.references) seen.push_back(colour(to));
  std::vector<std::pair<int, int>> around;
  for (const int to : vertex.listed) around.emplace_back(colour(to), -2);
  for (const auto& [user, place] : vertex.users) around.emplace_back(colour(user), place);
  std::sort(around.begin(), around.end());
  for (const auto& [of, place] : around) seen.insert(seen.end(), {of, place});
  return seen;
}

/// Colours both anew by what each vertex sees. Returns how many colours there are then, or -1 where
/// they are not the same ones on both sides.
int recolour(Whole& a, Whole& b) {
  std::map<std::vector<int>, int> known;
  std::map<int, int> balance;
  Colours colours[2];
  int side = 0;
  for (const Whole* whole : {&a, &b}) {
    for (std::size_t i = 0; i < whole->vertices.size(); ++i) {
      const int colour =
          known.try_emplace(view(*whole, i), static_cast<int>(known.size())).first->second;
      colours[side].push_back(colour);
      balance[colour] += side == 0 ? 1 : -1;
    }
    ++side;
  }
  a.colours = colours[0];
  b.colours = colours[1];
  for (const auto& [colour, sum] : balance) {
    if (sum != 0) return -1;
  }
  return static_cast<int>(known.size());
}

bool match_wholes(Whole a, Whole b) {
  for (int before = -1;;) {
    const int count = recolour(a, b);
    if (count < 0) return false;
    // Each has a partner now; whether they see the same shows once more.
    if (count == static_cast<int>(a.vertices.size())) return recolour(a, b) >= 0;
    if (count == before) break;
    before = count;
  }
  std::map<int, std::vector<std::size_t>> of_colour;
  for (std::size_t i = 0; i < a.colours.size(); ++i) of_colour[a.colours[i]].push_back(i);
  const std::vector<std::size_t>* smallest = nullptr;
  for (const auto& [colour, vertices] : of_colour) {
    if (vertices.size() > 1 && (smallest == nullptr || vertices.size() < smallest->size())) {
      smallest = &vertices;
    }
  }
  const std::size_t one = smallest->front();
  const int colour = a.colours[one];
  a.colours[one] = -1;
  for (std::size_t i = 0; i < b.colours.size(); ++i) {
    if (b.colours[i] != colour) continue;
    b.colours[i] = -1;
    if (match_wholes(a, b)) return true;
    b.colours[i] = colour;
  }
  return false;
}

}  // namespace

bool match(const PlainFile& a, const PlainFile& b) {
  Records records_a(a);
  Records records_b(b);
  std::map<std::string, int> texts;
  Whole whole_a = whole_of(records_a, texts);
  Whole whole_b = whole_of(records_b, texts);
  const std::set<std::string> pure_a = records_a.pure();
  const std::set<std::string> pure_b = records_b.pure();
  const auto holds = [](const std::set<std::string>& all, const std::set<std::string>& some) {
    return std::includes(all.begin(), all.end(), some.begin(), some.end());
  };
  if (!holds(pure_b, records_a.loose()) || !holds(pure_a, records_b.loose())) return false;
  return whole_a.vertices.size() == whole_b.vertices.size() && match_wholes(whole_a, whole_b);
}

}  // namespace Kessel::test

#include "assemblies/form_maker.h"

#include <map>
#include <utility>

namespace Kessel::test {

namespace {

struct Schema {
  const char* name;
  const char* product_context;
  const char* definition_context;
  const char* formation_end;
  const char* formation;
};

const Schema& schema_of(const std::string& name) {
  static const Schema AP203{"CONFIG_CONTROL_DESIGN", "MECHANICAL_CONTEXT", "DESIGN_CONTEXT",
                            ",.MADE.)", "PRODUCT_DEFINITION_FORMATION_WITH_SPECIFIED_SOURCE"};
  static const Schema AP214{"AUTOMOTIVE_DESIGN { 1 0 10303 214 3 1 1 }", "PRODUCT_CONTEXT",
                            "PRODUCT_DEFINITION_CONTEXT", ")", "PRODUCT_DEFINITION_FORMATION"};
  static const Schema AP242{
      "AP242_MANAGED_MODEL_BASED_3D_ENGINEERING_MIM_LF { 1 0 10303 442 1 1 4 }", "PRODUCT_CONTEXT",
      "PRODUCT_DEFINITION_CONTEXT", ")", "PRODUCT_DEFINITION_FORMATION"};
  return name == "203" ? AP203 : name == "242" ? AP242 : AP214;
}

std::string numbers(double x, double y, double z) {
  return "(" + std::to_string(x) + "," + std::to_string(y) + "," + std::to_string(z) + ")";
}

using Corner = std::array<int, 3>;

/// The vertices and edges of a box, each made once.
class BoxFrame {
 public:
  BoxFrame(FormMaker& maker, const std::array<double, 3>& size, double x) : maker_(maker) {
    for (int i = 0; i < 8; ++i) {
      const Corner corner{i & 1, i >> 1 & 1, i >> 2 & 1};
      points_[corner] =
          maker.point(x + corner[0] * size[0], corner[1] * size[1], corner[2] * size[2]);
      vertices_[corner] = maker.add("VERTEX_POINT(''," + points_[corner] + ")");
    }
    for (int axis = 0; axis < 3; ++axis) {
      directions_[static_cast<std::size_t>(axis)] =
          maker.add("DIRECTION(''," + numbers(axis == 0, axis == 1, axis == 2) + ")");
    }
  }

  const Ref& point(const Corner& corner) const { return points_.at(corner); }

  Ref oriented_edge(const Corner& from, const Corner& to) {
    const bool is_forward = from < to;
    const Corner& low = is_forward ? from : to;
    const Corner& high = is_forward ? to : from;
    Ref& edge = edges_[{low, high}];
    if (edge.empty()) {
      const std::size_t axis = low[0] != high[0] ? 0 : low[1] != high[1] ? 1 : 2;
      const Ref vector = maker_.add("VECTOR(''," + directions_[axis] + ",1.)");
      const Ref line = maker_.add("LINE(''," + points_[low] + "," + vector + ")");
      edge = maker_.add("EDGE_CURVE(''," + vertices_[low] + "," + vertices_[high] + "," + line +
                        ",.T.)");
    }
    return maker_.add("ORIENTED_EDGE('',*,*," + edge + (is_forward ? ",.T.)" : ",.F.)"));
  }

  /// The face across `axis` on the near or far side, seen from outside.
  Ref face(std::size_t axis, int side) {
    const std::size_t u = axis == 0 ? 1 : 0;
    const std::size_t v = axis == 2 ? 1 : 2;
    std::vector<Corner> loop;
    for (const auto& [a, b] : {std::pair{0, 0}, {1, 0}, {1, 1}, {0, 1}}) {
      Corner corner{};
      corner[axis] = side;
      corner[u] = a;
      corner[v] = b;
      loop.push_back(corner);
    }
    if ((axis != 1) != (side == 1)) loop = {loop[3], loop[2], loop[1], loop[0]};
    std::vector<Ref> edges;
    for (std::size_t i = 0; i < 4; ++i) edges.push_back(oriented_edge(loop[i], loop[(i + 1) % 4]));
    const Ref bound = maker_.add("FACE_OUTER_BOUND(''," +
                                 maker_.add("EDGE_LOOP(''," + list_of(edges) + ")") + ",.T.)");
    std::array<double, 3> normal{};
    normal[axis] = side == 1 ? 1 : -1;
    const Ref up = maker_.add("DIRECTION(''," + numbers(normal[0], normal[1], normal[2]) + ")");
    const Ref place = maker_.add("AXIS2_PLACEMENT_3D(''," + points_[loop[0]] + "," + up + "," +
                                 directions_[u] + ")");
    return maker_.add("ADVANCED_FACE('',(" + bound + ")," + maker_.add("PLANE(''," + place + ")") +
                      ",.T.)");
  }

 private:
  FormMaker& maker_;
  std::map<Corner, Ref> points_, vertices_;
  std::map<std::pair<Corner, Corner>, Ref> edges_;
  std::array<Ref, 3> directions_;
};

}  // namespace

std::string list_of(const std::vector<Ref>& refs) {
  std::string list;
  for (const Ref& ref : refs) list += (list.empty() ? "(" : ",") + ref;
  return list.empty() ? "()" : list + ")";
}

FormMaker::FormMaker(const std::string& schema) : schema_(schema) {
  const Schema& of_it = schema_of(schema);
  application_ = add("APPLICATION_CONTEXT('')");
  product_context_ =
      add(std::string(of_it.product_context) + "(''," + application_ + ",'mechanical')");
  definition_context_ =
      add(std::string(of_it.definition_context) + "(''," + application_ + ",'design')");
  const Ref length = add("(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.))");
  angle_ = add("(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.))");
  solid_angle_ = add("(NAMED_UNIT(*)SI_UNIT($,.STERADIAN.)SOLID_ANGLE_UNIT())");
  begin_context(length);
  z_ = add("DIRECTION('',(0.,0.,1.))");
  x_ = add("DIRECTION('',(1.,0.,0.))");
}

Ref FormMaker::add(const std::string& body) {
  bodies_.push_back(body);
  return "#" + std::to_string(bodies_.size());
}

Ref FormMaker::begin_context(const Ref& length) {
  const Ref uncertainty = add("UNCERTAINTY_MEASURE_WITH_UNIT(LENGTH_MEASURE(1.E-05)," + length +
                              ",'distance_accuracy_value','')");
  context_ = add("(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNCERTAINTY_ASSIGNED_CONTEXT((" +
                 uncertainty + "))GLOBAL_UNIT_ASSIGNED_CONTEXT((" + length + "," + angle_ + "," +
                 solid_angle_ + "))REPRESENTATION_CONTEXT('','3D'))");
  return context_;
}

void FormMaker::replace(const Ref& name, const std::string& body) {
  bodies_.at(std::stoul(name.substr(1)) - 1) = body;
}

Ref FormMaker::point(double x, double y, double z) {
  return add("CARTESIAN_POINT(''," + numbers(x, y, z) + ")");
}

Ref FormMaker::axis(double x, double y, double z) {
  return add("AXIS2_PLACEMENT_3D(''," + point(x, y, z) + "," + z_ + "," + x_ + ")");
}

Ref FormMaker::shell(const std::array<double, 3>& size, double x, bool is_closed) {
  BoxFrame frame(*this, size, x);
  std::vector<Ref> faces;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    for (const int side : {0, 1}) faces.push_back(frame.face(axis, side));
  }
  return add((is_closed ? "CLOSED_SHELL(''," : "OPEN_SHELL('',") + list_of(faces) + ")");
}

Ref FormMaker::box(const std::array<double, 3>& size, double x, std::vector<Ref>* faces) {
  const Ref closed = shell(size, x);
  if (faces != nullptr) {
    const std::string& body = bodies_.at(std::stoul(closed.substr(1)) - 1);
    for (std::size_t at = body.find('#'); at != std::string::npos; at = body.find('#', at + 1)) {
      faces->push_back(body.substr(at, body.find_first_of(",)", at) - at));
    }
  }
  return add("MANIFOLD_SOLID_BREP(''," + closed + ")");
}

FormProduct FormMaker::product(const std::string& name, const Ref& formation) {
  const Schema& of_it = schema_of(schema_);
  FormProduct made;
  made.formation = formation;
  if (formation.empty()) {
    made.product = add("PRODUCT('" + name + "','" + name + "','',(" + product_context_ + "))");
    made.formation =
        add(std::string(of_it.formation) + "('',''," + made.product + of_it.formation_end);
  }
  made.definition =
      add("PRODUCT_DEFINITION('design',''," + made.formation + "," + definition_context_ + ")");
  made.shape = add("PRODUCT_DEFINITION_SHAPE('',''," + made.definition + ")");
  return made;
}

FormProduct FormMaker::part(const std::string& name, const std::array<double, 3>& size,
                            const Ref& from) {
  FormProduct made = product(name);
  made.axis = from.empty() ? axis() : from;
  made.solid = box(size, 0, &made.faces);
  made.representation = made.bodies = representation({made.axis, made.solid});
  link(made.shape, made.representation);
  return made;
}

FormProduct FormMaker::tied_part(const std::string& name, const Ref& from,
                                 const Ref& axis_of_bodies) {
  FormProduct made = product(name);
  made.axis = from.empty() ? axis() : from;
  made.solid = box({10, 10, 10}, 0, &made.faces);
  made.representation = representation({made.axis}, "SHAPE_REPRESENTATION");
  link(made.shape, made.representation);
  made.bodies = representation({made.solid, axis_of_bodies.empty() ? axis() : axis_of_bodies});
  tie(made.representation, made.bodies);
  return made;
}

FormProduct FormMaker::assembly(const std::string& name, const Ref& from) {
  FormProduct made = product(name);
  made.is_assembly = true;
  made.axis = from.empty() ? axis() : from;
  made.items = {made.axis};
  made.representation = made.bodies = add("");
  link(made.shape, made.representation);
  return made;
}

void FormMaker::finish(const FormProduct& assembly) {
  replace(assembly.representation,
          "SHAPE_REPRESENTATION(''," + list_of(assembly.items) + "," + context_ + ")");
}

Ref FormMaker::representation(const std::vector<Ref>& items, const std::string& kind) {
  return add(kind + "(''," + list_of(items) + "," + context_ + ")");
}

Ref FormMaker::link(const Ref& shape, const Ref& shown) {
  return add("SHAPE_DEFINITION_REPRESENTATION(" + shape + "," + shown + ")");
}

Ref FormMaker::tie(const Ref& a, const Ref& b) {
  return add("SHAPE_REPRESENTATION_RELATIONSHIP('',''," + a + "," + b + ")");
}

Ref FormMaker::mapped(const FormProduct& of, double x) {
  const Ref map = add("REPRESENTATION_MAP(" + of.axis + "," + of.representation + ")");
  return add("MAPPED_ITEM(''," + map + "," + axis(x) + ")");
}

Ref FormMaker::bare_usage(const FormProduct& assembly, const FormProduct& component) {
  return add("NEXT_ASSEMBLY_USAGE_OCCURRENCE('" + std::to_string(++usages_) + "','',''," +
             assembly.definition + "," + component.definition + ",$)");
}

FormUsage FormMaker::use(FormProduct& assembly, const FormProduct& component, double x, double y,
                         double z, const Ref& shown) {
  FormUsage made;
  made.usage = bare_usage(assembly, component);
  made.shape = add("PRODUCT_DEFINITION_SHAPE('',''," + made.usage + ")");
  made.axis = axis(x, y, z);
  assembly.items.push_back(made.axis);
  const Ref transformation =
      add("ITEM_DEFINED_TRANSFORMATION('',''," + component.axis + "," + made.axis + ")");
  made.relationship = add(
      "(REPRESENTATION_RELATIONSHIP('',''," + (shown.empty() ? component.representation : shown) +
      "," + assembly.representation + ")REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(" +
      transformation + ")SHAPE_REPRESENTATION_RELATIONSHIP())");
  made.placement =
      add("CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(" + made.relationship + "," + made.shape + ")");
  return made;
}

Ref FormMaker::colour(double red, double green, double blue) {
  return add("COLOUR_RGB(''," + std::to_string(red) + "," + std::to_string(green) + "," +
             std::to_string(blue) + ")");
}

Ref FormMaker::style(const Ref& colour) {
  const Ref fill = add("FILL_AREA_STYLE_COLOUR(''," + colour + ")");
  const Ref area =
      add("SURFACE_STYLE_FILL_AREA(" + add("FILL_AREA_STYLE('',(" + fill + "))") + ")");
  const Ref side = add("SURFACE_SIDE_STYLE('',(" + area + "))");
  return add("PRESENTATION_STYLE_ASSIGNMENT((" + add("SURFACE_STYLE_USAGE(.BOTH.," + side + ")") +
             "))");
}

Ref FormMaker::styled(const Ref& colour, const Ref& item) {
  return add("STYLED_ITEM('',(" + style(colour) + ")," + item + ")");
}

void FormMaker::present(const std::vector<Ref>& styled) {
  add("MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION(''," + list_of(styled) + "," +
      context_ + ")");
}

std::string FormMaker::text() const {
  std::string text =
      "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\n"
      "FILE_NAME('form','2026-01-01T00:00:00',(''),(''),'','','');\nFILE_SCHEMA(('" +
      std::string(schema_of(schema_).name) + "'));\nENDSEC;\nDATA;\n";
  for (std::size_t i = 0; i < bodies_.size(); ++i) {
    text += "#" + std::to_string(i + 1) + "=" + bodies_[i] + ";\n";
  }
  return text + "ENDSEC;\nEND-ISO-10303-21;\n";
}

}  // namespace Kessel::test

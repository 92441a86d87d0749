// The forms, by what they are about.
#include <utility>

#include "assemblies/nest.h"

namespace Kessel::test {

namespace {

void use_all(FormMaker& form, Nest& nest) {
  place_all(form, nest);
  finish_coloured(form, nest);
}

// Components that are placed from an axis which is not at the origin.

std::string axes_off_origin(const std::string& schema) {
  FormMaker form(schema);
  Nest nest{form.assembly("root"), form.assembly("sub"),
            form.part("one", {10, 20, 30}, form.axis(2, 3, 4)),
            form.part("two", {5, 5, 5}, form.axis(0, 0, 7))};
  use_all(form, nest);
  return form.text();
}

std::string axes_of_tied_off_origin() {
  FormMaker form;
  Nest nest{form.assembly("root"), form.assembly("sub"),
            form.tied_part("one", form.axis(2, 3, 4), form.axis(7, 7, 7)),
            form.tied_part("two", form.axis(), form.axis(0, 0, 7))};
  use_all(form, nest);
  return form.text();
}

/// All parts, and the root, have one axis.
std::string shared_axis_off_origin() {
  FormMaker form;
  const Ref axis = form.axis(2, 3, 4);
  Nest nest{form.assembly("root", axis), form.assembly("sub", axis),
            form.part("one", {10, 20, 30}, axis), form.part("two", {5, 5, 5}, axis)};
  use_all(form, nest);
  return form.text();
}

std::string turned_axes() {
  FormMaker form;
  Nest nest{form.assembly("root"), form.assembly("sub"),
            form.part("one", {10, 20, 30},
                      form.add("AXIS2_PLACEMENT_3D(''," + form.point(0, 0, 0) + "," +
                               form.add("DIRECTION('',(0.,1.,0.))") + "," +
                               form.add("DIRECTION('',(1.,0.,0.))") + ")")),
            form.part("two", {5, 5, 5},
                      form.add("AXIS2_PLACEMENT_3D(''," + form.point(0, 0, 0) + ",$,$)"))};
  use_all(form, nest);
  return form.text();
}

/// An assembly with a body that is placed from such an axis, and has components.
std::string body_beside_axis_off_origin(bool is_tied) {
  FormMaker form;
  Nest nest{form.assembly("root"), form.assembly("sub", form.axis(5, 6, 7)), form.part("one"),
            form.part("two", {1, 2, 3})};
  const Ref body = form.box({3, 3, 3});
  if (is_tied) {
    form.tie(nest.sub.representation, form.representation({body, form.axis(1, 1, 1)}));
  } else {
    nest.sub.items.push_back(body);
  }
  use_all(form, nest);
  return form.text();
}

/// Parts that usages name and only mapped items place, and the same placed as usual.
std::string mapped_from_axes(bool is_mapped) {
  FormMaker form;
  FormProduct root = form.assembly("root");
  const FormProduct one = form.part("one", {10, 20, 30}, form.axis(2, 3, 4));
  const FormProduct two = form.part("two");
  for (const auto& [part, x] : {std::pair{one, 0}, {two, 40}, {one, 80}}) {
    if (is_mapped) {
      form.bare_usage(root, part);
      root.items.push_back(form.mapped(part, x));
    } else {
      form.use(root, part, x);
    }
  }
  form.finish(root);
  return form.text();
}

/// Places of representations that are tied to those of the parts, or of the parts' own.
std::string tied_from_axes(bool names_tied) {
  FormMaker form;
  FormProduct root = form.assembly("root");
  for (const int x : {0, 50}) {
    const Ref axis = form.axis(2, 3, 4);
    const FormProduct part = form.tied_part(x == 0 ? "one" : "two", axis, axis);
    form.use(root, part, x, 0, 0, names_tied ? part.bodies : part.representation);
  }
  form.finish(root);
  return form.text();
}

// Several products in one file.

/// A part that shows another one, which no usage names, by mapped items.
std::string mapped_piece(bool is_first, bool is_used) {
  FormMaker form;
  FormProduct root = form.assembly("root");
  FormProduct piece;
  if (is_first) piece = form.part("piece", {3, 3, 3});
  FormProduct part = form.product("part");
  if (!is_first) piece = form.part("piece", {3, 3, 3});
  part.axis = form.axis();
  part.representation = form.representation(
      {part.axis, form.box({10, 10, 10}), form.mapped(piece, 20), form.mapped(piece, 30)});
  form.link(part.shape, part.representation);
  form.use(root, part, 100);
  form.use(root, part, 200);
  if (is_used) form.use(root, piece, -50);
  form.finish(root);
  form.present({form.styled(form.colour(1, 0, 0), piece.solid)});
  return form.text();
}

/// Another view of a part, in front of it or behind, of what its shape names or of what is tied.
std::string view(bool is_first, bool is_of_tied) {
  FormMaker form;
  FormProduct root = form.assembly("root");
  FormProduct part = form.tied_part("part");
  const Ref& shown = is_of_tied ? part.bodies : part.representation;
  FormProduct other = form.product("", part.formation);
  form.link(other.shape, shown);
  if (is_first) std::swap(part.definition, other.definition);
  if (is_first && is_of_tied) std::swap(part.representation, part.bodies);
  form.use(root, part, 5);
  form.use(root, part, 50);
  form.finish(root);
  form.present({form.styled(form.colour(0, 1, 0), part.solid)});
  return form.text();
}

// Shapes that an assembly and its components are tied to.

std::string same_place(bool is_tied, bool is_usual) {
  FormMaker form;
  FormProduct root = form.assembly("root");
  for (const int i : {0, 1}) {
    const std::string name = i == 0 ? "one" : "two";
    const FormProduct part = is_tied ? form.tied_part(name) : form.part(name);
    if (is_usual) {
      form.use(root, part, 0);
    } else {
      form.bare_usage(root, part);
      form.tie(i == 0 ? root.representation : part.bodies,
               i == 0 ? part.bodies : root.representation);
    }
  }
  form.finish(root);
  return form.text();
}

// Colours.

/// One that names what places the part, which is used once.
std::string colour_by_place() {
  FormMaker form("242");
  FormProduct root = form.assembly("root");
  const FormProduct part = form.part("part");
  const FormUsage usage = form.use(root, part, 5);
  form.finish(root);
  const Ref below = form.styled(form.colour(1, 0, 0), part.solid);
  const Ref above =
      form.add("CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM('',(" + form.style(form.colour(0, 1, 0)) +
               ")," + part.solid + "," + below + ",(" + usage.relationship + "))");
  form.present({below, above});
  return form.text();
}

// Records of AP203.

/// Definitions with documents of their own.
std::string documented_definitions() {
  FormMaker form("203");
  FormProduct root = form.assembly("root");
  for (const int x : {5, 50}) {
    const FormProduct part = form.part("part at " + std::to_string(x));
    const Ref document = form.add(std::string("DOCUMENT('d','") + (x == 5 ? "drawing.dwg" : "") +
                                  "',''," + form.add("DOCUMENT_TYPE('drawing')") + ")");
    form.replace(part.definition, "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS('',''," +
                                      part.formation + ",#3,(" + document + "))");
    form.use(root, part, x);
  }
  form.finish(root);
  return form.text();
}

/// Shapes besides those that the products name: of aspects of these.
std::string shapes_of_aspects(bool shares_axis) {
  FormMaker form("203");
  Nest nest{form.assembly("root"), form.assembly("sub"), form.part("one"),
            form.part("two", {1, 2, 3})};
  for (const FormProduct* product : {&nest.sub, &nest.one}) {
    const Ref aspect = form.add("SHAPE_ASPECT('more',''," + product->shape + ",.T.)");
    const Ref property = form.add("PROPERTY_DEFINITION('',''," + aspect + ")");
    const Ref surface =
        form.add("SHELL_BASED_SURFACE_MODEL('',(" + form.shell({7, 7, 7}, 20, false) + "))");
    form.link(property, form.representation({surface, shares_axis ? product->axis : form.axis()},
                                            "MANIFOLD_SURFACE_SHAPE_REPRESENTATION"));
  }
  use_all(form, nest);
  return form.text();
}

}  // namespace

namespace {

std::vector<AssemblyForm> forms_of_shapes() {
  return {
      {"axes_off_origin_203", [] { return axes_off_origin("203"); }},
      {"axes_off_origin_214", [] { return axes_off_origin("214"); }},
      {"axes_off_origin_242", [] { return axes_off_origin("242"); }},
      {"axes_of_tied_off_origin", axes_of_tied_off_origin},
      {"shared_axis_off_origin", shared_axis_off_origin},
      {"turned_axes", turned_axes},
      {"body_beside_axis", [] { return body_beside_axis_off_origin(false); }},
      {"tied_body_beside_axis", [] { return body_beside_axis_off_origin(true); }},
      {"mapped_from_axes", [] { return mapped_from_axes(true); },
       [] { return mapped_from_axes(false); }},
      {"tied_from_axes", [] { return tied_from_axes(true); }, [] { return tied_from_axes(false); }},
      {"piece_in_front", [] { return mapped_piece(true, false); }},
      {"piece_behind", [] { return mapped_piece(false, false); }},
      {"used_piece_in_front", [] { return mapped_piece(true, true); }},
      {"used_piece_behind", [] { return mapped_piece(false, true); }},
      {"view_in_front", [] { return view(true, false); }},
      {"view_behind", [] { return view(false, false); }},
      {"view_of_tied_behind", [] { return view(false, true); }},
      {"same_place", [] { return same_place(false, false); },
       [] { return same_place(false, true); }},
      {"same_place_tied", [] { return same_place(true, false); },
       [] { return same_place(true, true); }},
      {"colour_by_place", colour_by_place},
      {"documented_definitions", documented_definitions},
      {"shapes_of_aspects", [] { return shapes_of_aspects(false); }},
      {"shapes_of_aspects_at_shared_axes", [] { return shapes_of_aspects(true); }},
  };
}

}  // namespace

std::vector<AssemblyForm> assembly_forms() {
  std::vector<AssemblyForm> all;
  for (const auto& forms : {forms_of_shapes(), forms_of_structure(), forms_of_usages(),
                            forms_of_styles(), forms_of_remarks(), forms_of_notes()}) {
    all.insert(all.end(), forms.begin(), forms.end());
  }
  return all;
}

}  // namespace Kessel::test

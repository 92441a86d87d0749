// Forms of how products are put together: definitions, usages, places, shared shapes.
#include <utility>

#include "assemblies/nest.h"

namespace Kessel::test {

namespace {

/// What places `component` in `assembly` by that transformation.
std::string placing(const FormProduct& component, const FormProduct& assembly,
                    const Ref& transformation) {
  return "(REPRESENTATION_RELATIONSHIP('',''," + component.representation + "," +
         assembly.representation + ")REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(" +
         transformation + ")SHAPE_REPRESENTATION_RELATIONSHIP())";
}

Ref item_transformation(FormMaker& form, const Ref& from, const Ref& to) {
  return form.add("ITEM_DEFINED_TRANSFORMATION('',''," + from + "," + to + ")");
}

/// The same with the assembly's representation in front, and the transformation the other way.
std::string places_the_other_way() {
  FormMaker form;
  Nest nest = make_nest(form);
  const NestUsages usages = place_all(form, nest);
  form.replace(
      usages.one.relationship,
      placing(nest.root, nest.one, item_transformation(form, usages.one.axis, nest.one.axis)));
  form.replace(
      usages.sub_two.relationship,
      placing(nest.sub, nest.two, item_transformation(form, usages.sub_two.axis, nest.two.axis)));
  finish_coloured(form, nest);
  return form.text();
}

Ref place_operator(FormMaker& form, double x, const std::string& first, const std::string& scale) {
  return form.add("CARTESIAN_TRANSFORMATION_OPERATOR_3D('','',''," +
                  form.add("DIRECTION('',(" + first + ",0.,0.))") + "," +
                  form.add("DIRECTION('',(0.,1.,0.))") + "," + form.point(x, 0, 0) + "," + scale +
                  "," + form.add("DIRECTION('',(0.,0.,1.))") + ")");
}

/// Places by operators, which may mirror and scale.
std::string placed_by_operators(const std::string& first, const std::string& scale) {
  FormMaker form;
  Nest nest = make_nest(form);
  const NestUsages usages = place_all(form, nest);
  form.replace(usages.one.relationship,
               placing(nest.one, nest.root, place_operator(form, 4, first, scale)));
  form.replace(usages.sub_two.relationship,
               placing(nest.two, nest.sub, place_operator(form, 40, first, scale)));
  finish_coloured(form, nest);
  return form.text();
}

/// A part that usages name and an item mapped by an operator places, and the same placed as usual.
std::string mapped_by_operator(bool is_mapped) {
  FormMaker form;
  FormProduct root = form.assembly("root");
  const FormProduct part = form.part("part", {10, 20, 30});
  if (is_mapped) {
    form.bare_usage(root, part);
    const Ref map = form.add("REPRESENTATION_MAP(" + part.axis + "," + part.representation + ")");
    root.items.push_back(
        form.add("MAPPED_ITEM(''," + map + "," + place_operator(form, 40, "1.", "1.") + ")"));
  } else {
    form.use(root, part, 40);
  }
  form.finish(root);
  return form.text();
}

/// Some usages that are placed as usual beside others that mapped items place.
std::string mapped_and_placed(bool is_mapped) {
  FormMaker form;
  FormProduct root = form.assembly("root");
  const FormProduct one = form.part("one", {10, 20, 30});
  const FormProduct two = form.part("two", {3, 3, 3});
  for (const double x : {0, 100}) {
    form.use(root, one, x);
    if (is_mapped) {
      form.bare_usage(root, two);
      root.items.push_back(form.mapped(two, x + 40));
    } else {
      form.use(root, two, x + 40);
    }
  }
  form.finish(root);
  return form.text();
}

/// Usages of one part from different axes of its shape.
std::string placed_from_two_axes() {
  FormMaker form;
  FormProduct root = form.assembly("root");
  FormProduct part = form.product("part");
  const Ref second = form.axis(5, 5, 5);
  part.axis = form.axis();
  part.representation = form.representation({part.axis, second, form.box({10, 10, 10})});
  form.link(part.shape, part.representation);
  form.use(root, part, 10);
  part.axis = second;
  form.use(root, part, 50);
  form.finish(root);
  return form.text();
}

/// Parts in other units than the assembly.
std::string parts_in(const std::string& unit) {
  FormMaker form;
  FormProduct root = form.assembly("root");
  const Ref millimetres = form.context();
  const Ref millimetre = form.add("(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.))");
  const Ref inch = form.add(
      "(CONVERSION_BASED_UNIT('INCH'," +
      form.add("LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(25.4)," + millimetre + ")") +
      ")LENGTH_UNIT()NAMED_UNIT(" + form.add("DIMENSIONAL_EXPONENTS(1.,0.,0.,0.,0.,0.,0.)") + "))");
  form.begin_context(unit == "inch" ? inch
                                    : form.add("(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT($,.METRE.))"));
  const FormProduct one = form.part("one", {.1, .2, .3});
  form.begin_context(millimetre);
  const FormProduct two = form.part("two", {5, 6, 7});
  form.use(root, one, 10);
  form.use(root, two, 5000);
  form.replace(root.representation,
               "SHAPE_REPRESENTATION(''," + list_of(root.items) + "," + millimetres + ")");
  return form.text();
}

/// An assembly, and parts that nothing uses, in front of it and behind it.
std::string free_parts_beside_an_assembly() {
  FormMaker form;
  form.part("free one");
  FormProduct root = form.assembly("root");
  const FormProduct part = form.part("part", {1, 2, 3});
  form.use(root, part, 5);
  form.finish(root);
  form.part("free two", {3, 3, 3});
  return form.text();
}

/// Another shape for the view of manufacturing, which is another structure of the same parts.
std::string structure_by_view() {
  FormMaker form;
  FormProduct design = form.assembly("root");
  FormProduct other = form.product("", design.formation);
  other.axis = form.axis();
  other.items = {other.axis};
  other.representation = form.add("");
  form.link(other.shape, other.representation);
  const FormProduct one = form.part("one");
  const FormProduct two = form.part("two", {5, 6, 7});
  form.use(design, one, 5);
  form.use(design, two, 50);
  form.use(other, two, 5);
  form.use(other, one, 70);
  form.finish(design);
  form.finish(other);
  return form.text();
}

/// A part that is made from another one, which nothing uses.
std::string made_from() {
  FormMaker form;
  FormProduct root = form.assembly("root");
  const FormProduct part = form.part("part");
  const FormProduct raw = form.part("raw", {12, 12, 12});
  form.use(root, part, 5);
  form.use(root, part, 50);
  const Ref unit = form.add("(CONTEXT_DEPENDENT_UNIT('parts')NAMED_UNIT(" +
                            form.add("DIMENSIONAL_EXPONENTS(0.,0.,0.,0.,0.,0.,0.)") + "))");
  form.add("MAKE_FROM_USAGE_OPTION('','',''," + part.definition + "," + raw.definition + ",1,$," +
           form.add("MEASURE_WITH_UNIT(COUNT_MEASURE(1.)," + unit + ")") + ")");
  form.finish(root);
  return form.text();
}

/// A usage of a component's component, with a name for its shape and maybe a place.
std::string higher_usage(bool is_placed) {
  FormMaker form("242");
  Nest nest = make_nest(form);
  const NestUsages usages = place_all(form, nest);
  const Ref higher =
      form.add("SPECIFIED_HIGHER_USAGE_OCCURRENCE('','',''," + nest.root.definition + "," +
               nest.two.definition + ",$," + usages.sub.usage + "," + usages.sub_two.usage + ")");
  const Ref shape = form.add("PRODUCT_DEFINITION_SHAPE('',$," + higher + ")");
  const Ref axis = form.axis(160, 51, 1);
  if (is_placed) {
    nest.root.items.push_back(axis);
    const Ref relationship =
        form.add(placing(nest.two, nest.root, item_transformation(form, nest.two.axis, axis)));
    form.add("CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(" + relationship + "," + shape + ")");
  } else {
    form.link(shape, form.representation({axis}, "SHAPE_REPRESENTATION"));
  }
  finish_coloured(form, nest);
  return form.text();
}

/// Solids, or representations, that two parts have in common.
std::string shared_shell(bool is_tied) {
  FormMaker form;
  FormProduct root = form.assembly("root");
  const Ref shell = form.shell({10, 10, 10});
  const Ref axis = form.axis();
  for (const double x : {5, 50}) {
    FormProduct part = form.product(x == 5 ? "one" : "two");
    const Ref solid = form.add("MANIFOLD_SOLID_BREP(''," + shell + ")");
    part.axis = axis;
    part.bodies = form.representation({axis, solid});
    part.representation =
        is_tied ? form.representation({axis}, "SHAPE_REPRESENTATION") : part.bodies;
    if (is_tied) form.tie(part.bodies, part.representation);
    form.link(part.shape, part.representation);
    form.use(root, part, x);
  }
  form.finish(root);
  return form.text();
}

Ref tessellated(FormMaker& form, const Ref& solid) {
  const Ref points =
      form.add("COORDINATES_LIST('',4,((0.,0.,0.),(1.,0.,0.),(0.,1.,0.),(0.,0.,1.)))");
  const Ref faces = form.add("TRIANGULATED_FACE(''," + points +
                             ",4,((0.,0.,1.)),$,(),((1,3,2),(1,2,4),(2,3,4),(3,1,4)))");
  return form.add("TESSELLATED_SOLID('',(" + faces + ")," + solid + ")");
}

/// Solids beside their tessellation.
std::string tessellated_parts() {
  FormMaker form("242");
  Nest nest = make_nest(form);
  for (const FormProduct* part : {&nest.one, &nest.two}) {
    const Ref mesh = tessellated(form, part->solid);
    form.tie(part->representation,
             form.representation({mesh, part->axis}, "TESSELLATED_SHAPE_REPRESENTATION"));
    form.present({form.styled(form.colour(0, 1, 0), mesh)});
  }
  place_all(form, nest);
  finish_coloured(form, nest);
  return form.text();
}

/// Bodies of assemblies: among the items, in a representation that is tied to theirs, or to which
/// theirs is tied.
std::string bodies_of_assemblies() {
  FormMaker form;
  Nest nest = make_nest(form);
  nest.root.items.push_back(form.box({5, 5, 5}, -30));
  form.tie(nest.root.representation, form.representation({form.axis(), form.box({1, 1, 1}, -40)}));
  form.tie(form.representation({form.axis(), form.box({1, 1, 1}, -50)}), nest.sub.representation);
  place_all(form, nest);
  finish_coloured(form, nest);
  return form.text();
}

}  // namespace

std::vector<AssemblyForm> forms_of_structure() {
  return {
      {"places_the_other_way", places_the_other_way},
      {"placed_by_operators", [] { return placed_by_operators("1.", "1."); }},
      {"mirrored_by_operators", [] { return placed_by_operators("-1.", "1."); }},
      {"scaled_by_operators", [] { return placed_by_operators("1.", "2."); }},
      {"mapped_by_operator", [] { return mapped_by_operator(true); },
       [] { return mapped_by_operator(false); }},
      {"mapped_and_placed", [] { return mapped_and_placed(true); },
       [] { return mapped_and_placed(false); }},
      {"placed_from_two_axes", placed_from_two_axes},
      {"parts_in_inches", [] { return parts_in("inch"); }},
      {"parts_in_metres", [] { return parts_in("metre"); }},
      {"free_parts_beside_an_assembly", free_parts_beside_an_assembly},
      {"structure_by_view", structure_by_view},
      {"made_from", made_from},
      {"higher_usage", [] { return higher_usage(false); }},
      {"placed_higher_usage", [] { return higher_usage(true); }},
      {"shared_shell", [] { return shared_shell(false); }},
      {"shared_shell_tied", [] { return shared_shell(true); }},
      {"tessellated_parts", tessellated_parts},
      {"bodies_of_assemblies", bodies_of_assemblies},
  };
}

}  // namespace Kessel::test

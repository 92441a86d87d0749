// Forms of what usages say, and of products that have something in common.
#include <utility>

#include "assemblies/nest.h"

namespace Kessel::test {

namespace {

/// Assemblies at the top that share parts, and one that shares a sub-assembly with both.
std::string several_roots() {
  FormMaker form;
  FormProduct root = form.assembly("root");
  FormProduct other = form.assembly("other");
  FormProduct sub = form.assembly("sub");
  const FormProduct one = form.part("one");
  const FormProduct two = form.part("two", {5, 6, 7});
  form.use(root, one, 4);
  form.use(root, sub, 100);
  form.use(other, one, 40);
  form.use(other, sub, 70);
  form.use(sub, two, 9);
  for (const FormProduct* assembly : {&root, &other, &sub}) form.finish(*assembly);
  form.present({form.styled(form.colour(1, 0, 0), one.solid)});
  return form.text();
}

/// Every place is said twice: by its usage and by a mapped item. Only the usages are meant.
std::string mapped_beside_places(bool is_mapped) {
  FormMaker form;
  FormProduct root = form.assembly("root");
  const FormProduct part = form.part("part", {10, 20, 30});
  const Ref map = form.add("REPRESENTATION_MAP(" + part.axis + "," + part.representation + ")");
  for (const int x : {0, 40}) {
    const FormUsage usage = form.use(root, part, x);
    if (is_mapped) root.items.push_back(form.add("MAPPED_ITEM(''," + map + "," + usage.axis + ")"));
  }
  form.finish(root);
  return form.text();
}

/// Mapped items place components at two levels, whose usages place none.
std::string mapped_at_two_levels(bool is_mapped) {
  FormMaker form;
  Nest nest = make_nest(form);
  const auto show = [&](FormProduct& assembly, const FormProduct& component, double x) {
    if (!is_mapped) {
      form.use(assembly, component, x);
      return;
    }
    form.bare_usage(assembly, component);
    assembly.items.push_back(form.mapped(component, x));
  };
  show(nest.root, nest.sub, 100);
  show(nest.root, nest.one, 4);
  show(nest.sub, nest.one, 30);
  show(nest.sub, nest.two, 60);
  finish_coloured(form, nest);
  return form.text();
}

/// A component and an assembly without any shape, beside those that have one.
std::string without_shapes() {
  FormMaker form;
  Nest nest = make_nest(form);
  place_all(form, nest);
  const FormProduct bolt = form.product("bolt");
  FormProduct kit = form.product("kit");
  form.bare_usage(nest.root, bolt);
  form.bare_usage(nest.sub, bolt);
  form.bare_usage(nest.root, kit);
  form.bare_usage(kit, bolt);
  finish_coloured(form, nest);
  return form.text();
}

/// One representation for two parts of one shape.
std::string shared_representation() {
  FormMaker form;
  FormProduct root = form.assembly("root");
  const FormProduct one = form.part("one");
  FormProduct two = form.product("two");
  two.axis = one.axis;
  two.representation = one.representation;
  form.link(two.shape, one.representation);
  form.use(root, one, 5);
  form.use(root, two, 50);
  form.finish(root);
  form.present({form.styled(form.colour(1, 0, 0), one.solid)});
  return form.text();
}

/// A part whose representation maps that of another one, and nothing else.
std::string part_made_of_another(bool is_mapped) {
  FormMaker form;
  FormProduct root = form.assembly("root");
  const FormProduct left = form.part("left");
  FormProduct right = form.product("right");
  right.axis = form.axis();
  right.representation = form.representation(
      {right.axis, is_mapped ? form.mapped(left, 3) : form.box({10, 10, 10}, 3)});
  form.link(right.shape, right.representation);
  form.use(root, left, 5);
  form.use(root, right, 50);
  form.finish(root);
  return form.text();
}

/// Two definitions that are used, of one version and of two versions of one product.
std::string definitions_of_one_product(bool are_versions) {
  FormMaker form;
  FormProduct root = form.assembly("root");
  FormProduct first = form.part("part");
  const Ref formation = are_versions
                            ? form.add("PRODUCT_DEFINITION_FORMATION('2',''," + first.product + ")")
                            : first.formation;
  FormProduct second = form.product("part", formation);
  second.axis = form.axis();
  second.solid = form.box({3, 3, 3});
  second.representation = form.representation({second.axis, second.solid});
  form.link(second.shape, second.representation);
  form.use(root, first, 5);
  form.use(root, second, 50);
  form.finish(root);
  form.add("PRODUCT_DEFINITION_FORMATION_RELATIONSHIP('','','next'," + first.formation + "," +
           second.formation + ")");
  form.present({form.styled(form.colour(1, 0, 0), first.solid),
                form.styled(form.colour(0, 1, 0), second.solid)});
  return form.text();
}

/// A hose that has a shape of its own where it is used.
std::string shape_of_usage() {
  FormMaker form("242");
  Nest nest = make_nest(form);
  const NestUsages usages = place_all(form, nest);
  for (const FormUsage* usage : {&usages.one, &usages.sub_two}) {
    const Ref bent = form.shell({2, 2, 9}, 200, false);
    const Ref model = form.add("SHELL_BASED_SURFACE_MODEL('',(" + bent + "))");
    form.link(usage->shape,
              form.representation({model, form.axis()}, "MANIFOLD_SURFACE_SHAPE_REPRESENTATION"));
    form.add("STYLED_ITEM('',(" + form.style(form.colour(0, 1, 1)) + ")," + model + ")");
  }
  finish_coloured(form, nest);
  return form.text();
}

/// Usages that share their axis, their transformation and their relationship.
std::string shared_places() {
  FormMaker form;
  FormProduct root = form.assembly("root");
  const FormProduct one = form.part("one");
  const FormProduct two = form.part("two", {5, 6, 7}, one.axis);
  const FormUsage first = form.use(root, one, 5);
  const Ref again = form.bare_usage(root, one);
  const Ref shape = form.add("PRODUCT_DEFINITION_SHAPE('',''," + again + ")");
  form.add("CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(" + first.relationship + "," + shape + ")");
  const FormUsage third = form.use(root, two, 9);
  const Ref transformation =
      form.add("ITEM_DEFINED_TRANSFORMATION('',''," + two.axis + "," + first.axis + ")");
  form.replace(third.relationship, "(REPRESENTATION_RELATIONSHIP('',''," + two.representation +
                                       "," + root.representation +
                                       ")REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(" +
                                       transformation + ")SHAPE_REPRESENTATION_RELATIONSHIP())");
  form.finish(root);
  return form.text();
}

/// Axes of places that are in no representation.
std::string places_outside_of_representations() {
  FormMaker form;
  Nest nest = make_nest(form);
  place_all(form, nest);
  nest.root.items.resize(1);
  nest.sub.items.resize(1);
  finish_coloured(form, nest);
  return form.text();
}

/// A usage in a bill of materials, and one that only promises where its component is.
std::string counted_and_promised() {
  FormMaker form;
  Nest nest = make_nest(form);
  const NestUsages usages = place_all(form, nest);
  const Ref unit = form.add("(CONTEXT_DEPENDENT_UNIT('parts')NAMED_UNIT(" +
                            form.add("DIMENSIONAL_EXPONENTS(0.,0.,0.,0.,0.,0.,0.)") + "))");
  const Ref four = form.add("MEASURE_WITH_UNIT(COUNT_MEASURE(4.)," + unit + ")");
  const FormProduct bolt = form.part("bolt", {1, 1, 1});
  form.add(
      "(ASSEMBLY_COMPONENT_USAGE('B1')NEXT_ASSEMBLY_USAGE_OCCURRENCE()"
      "PRODUCT_DEFINITION_RELATIONSHIP('b','','four'," +
      nest.sub.definition + "," + bolt.definition +
      ")PRODUCT_DEFINITION_USAGE()QUANTIFIED_ASSEMBLY_COMPONENT_USAGE(" + four + "))");
  const Ref promised = form.add("PROMISSORY_USAGE_OCCURRENCE('p','',''," + nest.root.definition +
                                "," + nest.two.definition + ",$)");
  form.add("PROPERTY_DEFINITION('weight',''," + promised + ")");
  form.add("ASSEMBLY_COMPONENT_USAGE_SUBSTITUTE('',''," + usages.sub.usage + "," + promised + ")");
  finish_coloured(form, nest);
  return form.text();
}

/// Usages of usages over three levels, with styles, properties and a designator of the way.
std::string three_levels() {
  FormMaker form("242");
  FormProduct top = form.assembly("top");
  Nest nest = make_nest(form);
  const NestUsages usages = place_all(form, nest);
  const FormUsage root = form.use(top, nest.root, 7);
  const auto higher = [&](const FormProduct& of, const FormProduct& component, const Ref& upper,
                          const Ref& next) {
    return form.add("SPECIFIED_HIGHER_USAGE_OCCURRENCE('h','',''," + of.definition + "," +
                    component.definition + ",$," + upper + "," + next + ")");
  };
  const Ref two_in_root = higher(nest.root, nest.two, usages.sub.usage, usages.sub_two.usage);
  const Ref two_in_top = higher(top, nest.two, root.usage, two_in_root);
  for (const Ref& usage : {two_in_root, two_in_top}) {
    const Ref shape = form.add("PRODUCT_DEFINITION_SHAPE('',''," + usage + ")");
    form.add("SHAPE_ASPECT('a',''," + shape + ",.T.)");
    form.add("PROPERTY_DEFINITION('serial number',''," + usage + ")");
  }
  form.add("MULTI_LEVEL_REFERENCE_DESIGNATOR('','',''," + top.definition + "," +
           nest.two.definition + ",'R1/R2/R3',(" + root.usage + "," + usages.sub.usage + "," +
           usages.sub_two.usage + "))");
  form.finish(top);
  finish_coloured(form, nest);
  return form.text();
}

/// Usages of occurrences, as later editions have them.
std::string occurrences() {
  FormMaker form("242");
  Nest nest = make_nest(form);
  const NestUsages usages = place_all(form, nest);
  const auto occur = [&](const FormUsage& usage, const FormProduct& of, const FormProduct& in) {
    const Ref occurrence = form.add("PRODUCT_DEFINITION_OCCURRENCE('o','',$," + of.definition +
                                    "," + form.definition_context() + ")");
    form.replace(usage.usage, "NEXT_ASSEMBLY_USAGE_OCCURRENCE('u','',''," + in.definition + "," +
                                  occurrence + ",$)");
    form.add("PROPERTY_DEFINITION('remark',''," + occurrence + ")");
    form.add("ID_ATTRIBUTE('id'," + occurrence + ")");
  };
  occur(usages.sub_two, nest.two, nest.sub);
  occur(usages.sub, nest.sub, nest.root);
  finish_coloured(form, nest);
  return form.text();
}

}  // namespace

std::vector<AssemblyForm> forms_of_usages() {
  return {
      {"several_roots", several_roots},
      {"mapped_beside_places", [] { return mapped_beside_places(true); },
       [] { return mapped_beside_places(false); }},
      {"mapped_at_two_levels", [] { return mapped_at_two_levels(true); },
       [] { return mapped_at_two_levels(false); }},
      {"without_shapes", without_shapes},
      {"shared_representation", shared_representation},
      {"part_made_of_another", [] { return part_made_of_another(true); },
       [] { return part_made_of_another(false); }},
      {"views_that_are_used", [] { return definitions_of_one_product(false); }},
      {"versions_that_are_used", [] { return definitions_of_one_product(true); }},
      {"shape_of_usage", shape_of_usage},
      {"shared_places", shared_places},
      {"places_outside_of_representations", places_outside_of_representations},
      {"counted_and_promised", counted_and_promised},
      {"three_levels", three_levels},
      {"occurrences", occurrences},
  };
}

}  // namespace Kessel::test

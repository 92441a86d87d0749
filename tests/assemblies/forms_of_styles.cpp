// Forms of colours, layers and what is hidden.
#include <utility>

#include "assemblies/nest.h"

namespace Kessel::test {

namespace {

Ref style_by_context(FormMaker& form, const Ref& colour, const Ref& context) {
  const Ref fill = form.add("FILL_AREA_STYLE_COLOUR(''," + colour + ")");
  const Ref area =
      form.add("SURFACE_STYLE_FILL_AREA(" + form.add("FILL_AREA_STYLE('',(" + fill + "))") + ")");
  const Ref side = form.add("SURFACE_SIDE_STYLE('',(" + area + "))");
  return form.add("PRESENTATION_STYLE_BY_CONTEXT((" +
                  form.add("SURFACE_STYLE_USAGE(.BOTH.," + side + ")") + ")," + context + ")");
}

/// A representation that names an occurrence.
Ref name_of(FormMaker& form, const FormUsage& usage) {
  const Ref name = form.representation({usage.axis}, "SHAPE_REPRESENTATION");
  form.link(usage.shape, name);
  return name;
}

void finish(FormMaker& form, const Nest& nest, const std::vector<Ref>& styles) {
  form.finish(nest.root);
  form.finish(nest.sub);
  form.present(styles);
}

/// Where a part that is used twice has another colour.
enum class Seen : std::uint8_t { in_root, in_sub, at_one_place, at_the_other };

std::string colour_in_context(Seen seen, bool is_of_face) {
  FormMaker form("242");
  Nest nest = make_nest(form);
  const NestUsages usages = place_all(form, nest);
  const Ref below = form.styled(form.colour(1, 0, 0), nest.one.solid);
  const Ref context = seen == Seen::in_root        ? nest.root.representation
                      : seen == Seen::in_sub       ? nest.sub.representation
                      : seen == Seen::at_one_place ? name_of(form, usages.one)
                                                   : name_of(form, usages.sub_one);
  const Ref style = style_by_context(form, form.colour(0, 1, 0), context);
  const Ref above = is_of_face ? form.add("OVER_RIDING_STYLED_ITEM('',(" + style + ")," +
                                          nest.one.faces.at(1) + "," + below + ")")
                               : form.add("STYLED_ITEM('',(" + style + ")," + nest.one.solid + ")");
  finish(form, nest, {below, above});
  return form.text();
}

/// All of the sub-assembly, at its only place, has a colour.
std::string colour_of_sub_assembly() {
  FormMaker form("242");
  Nest nest = make_nest(form);
  const NestUsages usages = place_all(form, nest);
  const Ref style = style_by_context(form, form.colour(0, 1, 0), name_of(form, usages.sub));
  finish(form, nest,
         {form.styled(form.colour(1, 0, 0), nest.one.solid),
          form.add("STYLED_ITEM('',(" + style + ")," + nest.sub.representation + ")")});
  return form.text();
}

/// Styles that name what places the occurrence: at one level, or a level each.
std::string colours_by_places(bool names_both_levels) {
  FormMaker form("242");
  Nest nest = make_nest(form);
  const NestUsages usages = place_all(form, nest);
  const auto over = [&](const Ref& colour, const Ref& below, const std::string& places) {
    return form.add("CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM('',(" + form.style(colour) + ")," +
                    nest.one.solid + "," + below + ",(" + places + "))");
  };
  const Ref below = form.styled(form.colour(1, 0, 0), nest.one.solid);
  const std::string inner = usages.sub_one.relationship;
  const Ref first = over(form.colour(0, 1, 0), below,
                         names_both_levels ? usages.sub.relationship + "," + inner : inner);
  finish(form, nest, {below, first, over(form.colour(0, 0, 1), first, usages.sub.relationship)});
  return form.text();
}

/// Styles of whole components, which override that of what shows the root.
std::string colours_of_components() {
  FormMaker form;
  Nest nest{form.assembly("root"), form.assembly("sub"), form.tied_part("one"),
            form.tied_part("two")};
  const NestUsages usages = place_all(form, nest);
  const Ref below = form.styled(form.colour(.5, .5, .5), nest.root.representation);
  std::vector<Ref> styles{form.styled(form.colour(1, 0, 0), nest.one.solid), below};
  double green = 0;
  for (const auto& [part, places] :
       {std::pair{nest.one, usages.one.relationship},
        {nest.one, usages.sub.relationship + "," + usages.sub_one.relationship},
        {nest.two, usages.sub_two.relationship},
        {nest.sub, usages.sub.relationship}}) {
    styles.push_back(form.add("CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM('',(" +
                              form.style(form.colour(0, green += .2, 0)) + ")," +
                              part.representation + "," + below + ",(" + places + "))"));
  }
  finish(form, nest, styles);
  return form.text();
}

std::string colours_of_representations() {
  FormMaker form;
  Nest nest = make_nest(form);
  place_all(form, nest);
  finish(form, nest,
         {form.styled(form.colour(1, 0, 0), nest.one.representation),
          form.styled(form.colour(0, 0, 1), nest.sub.representation),
          form.styled(form.colour(0, 1, 0), nest.root.representation)});
  return form.text();
}

/// Layers over items of several parts, and of assemblies.
std::string layers() {
  FormMaker form;
  Nest nest = make_nest(form);
  nest.root.items.push_back(form.box({1, 2, 3}, -20));
  place_all(form, nest);
  const Ref style = form.styled(form.colour(1, 0, 0), nest.one.solid);
  finish(form, nest, {style});
  const auto add = [&](const std::string& name, const std::vector<Ref>& items) {
    return form.add("PRESENTATION_LAYER_ASSIGNMENT('" + name + "',''," + list_of(items) + ")");
  };
  add("bodies", {nest.one.solid, nest.two.solid, nest.two.faces.at(0), nest.root.items.back()});
  add("", {nest.one.faces.at(1)});
  add("styles", {style});
  form.add("INVISIBILITY((" + add("shapes", {nest.one.representation, nest.sub.representation}) +
           "," + style + "))");
  return form.text();
}

/// Presentations of parts, mapped into one of all.
std::string presentation_of_all() {
  FormMaker form;
  Nest nest = make_nest(form);
  place_all(form, nest);
  form.finish(nest.root);
  form.finish(nest.sub);
  std::vector<Ref> mapped;
  for (const FormProduct* part : {&nest.one, &nest.two}) {
    const Ref own =
        form.add("MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION('',(" +
                 form.styled(form.colour(1, 0, 0), part->solid) + ")," + form.context() + ")");
    const Ref map = form.add("REPRESENTATION_MAP(" + part->axis + "," + own + ")");
    mapped.push_back(form.add("MAPPED_ITEM(''," + map + "," + form.axis(3) + ")"));
  }
  form.present(mapped);
  return form.text();
}

}  // namespace

std::vector<AssemblyForm> forms_of_styles() {
  return {
      {"colour_in_root", [] { return colour_in_context(Seen::in_root, false); }},
      {"colour_in_sub", [] { return colour_in_context(Seen::in_sub, false); }},
      {"colour_of_face_in_root", [] { return colour_in_context(Seen::in_root, true); }},
      {"colour_at_one_place", [] { return colour_in_context(Seen::at_one_place, false); }},
      {"colour_at_the_other_place", [] { return colour_in_context(Seen::at_the_other, false); }},
      {"colour_of_sub_assembly", colour_of_sub_assembly},
      {"colours_by_places", [] { return colours_by_places(false); }},
      {"colours_by_places_of_levels", [] { return colours_by_places(true); }},
      {"colours_of_components", colours_of_components},
      {"colours_of_representations", colours_of_representations},
      {"layers", layers},
      {"presentation_of_all", presentation_of_all},
  };
}

}  // namespace Kessel::test

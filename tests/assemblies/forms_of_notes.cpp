// Forms of what later editions say of parts, of their faces, and of several of them at once:
// tolerances, views, identifiers, groups, further shapes.
#include <utility>

#include "assemblies/nest.h"

namespace Kessel::test {

namespace {

/// A nest in the schema that has all of these; what is said comes last.
struct NotedNest {
  NotedNest() : form("242"), nest(make_nest(form)), usages(place_all(form, nest)) {
    finish_coloured(form, nest);
  }
  Ref aspect(const Ref& shape) { return form.add("SHAPE_ASPECT('a',''," + shape + ",.T.)"); }
  Ref aspect_of_face(const FormProduct& part, std::size_t face, const std::string& keyword) {
    const Ref made = form.add(keyword + "('a',''," + part.shape + ",.T.)");
    form.add("GEOMETRIC_ITEM_SPECIFIC_USAGE('',''," + made + "," + part.representation + "," +
             part.faces.at(face) + ")");
    return made;
  }
  Ref length(const std::string& value) {
    return form.add("LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(" + value + "),#4)");
  }
  Ref camera() {
    const Ref box = form.add("PLANAR_BOX('',10.,10.," + form.axis(2) + ")");
    const Ref volume = form.add("VIEW_VOLUME(.PARALLEL.," + form.point(0, 0, 0) +
                                ",1.,1.,.F.,1.,.F.,.T.," + box + ")");
    return form.add("CAMERA_MODEL_D3(''," + form.axis(3) + "," + volume + ")");
  }

  FormMaker form;
  Nest nest;
  NestUsages usages;
};

/// A position tolerance that refers to a datum, with all that shows it, in a view of its own.
void tolerate(NotedNest& noted, const FormProduct& part) {
  FormMaker& form = noted.form;
  const Ref feature = noted.aspect_of_face(part, 0, "DATUM_FEATURE");
  const Ref datum = form.add("DATUM('',''," + part.shape + ",.F.,'A')");
  form.add("SHAPE_ASPECT_RELATIONSHIP('',''," + feature + "," + datum + ")");
  const Ref compartment =
      form.add("DATUM_REFERENCE_COMPARTMENT('',''," + part.shape + ",.F.," + datum + ",())");
  const Ref system = form.add("DATUM_SYSTEM('',''," + part.shape + ",.F.,(" + compartment + "))");
  const Ref aspect = noted.aspect_of_face(part, 1, "SHAPE_ASPECT");
  const Ref tolerance =
      form.add("(GEOMETRIC_TOLERANCE('',''," + noted.length("0.2") + "," + aspect +
               ")GEOMETRIC_TOLERANCE_WITH_DATUM_REFERENCE((" + system + "))POSITION_TOLERANCE())");
  const Ref points = form.add("COORDINATES_LIST('',2,((0.,0.,0.),(1.,0.,0.)))");
  const Ref curves = form.add("TESSELLATED_CURVE_SET(''," + points + ",((1,2)))");
  const Ref set = form.add("TESSELLATED_GEOMETRIC_SET('',(" + curves + "))");
  const Ref style = form.style(form.colour(0, 0, 0));
  const Ref occurrence =
      form.add("TESSELLATED_ANNOTATION_OCCURRENCE('',(" + style + ")," + set + ")");
  const Ref callout = form.add("DRAUGHTING_CALLOUT('',(" + occurrence + "))");
  const Ref plane = form.add("ANNOTATION_PLANE('',(" + style + ")," +
                             form.add("PLANE(''," + form.axis(1) + ")") + ",(" + callout + "))");
  const Ref camera = noted.camera();
  const Ref model = form.add("DRAUGHTING_MODEL('',(" + callout + "," + plane + "," + camera + ")," +
                             form.context() + ")");
  form.add("MECHANICAL_DESIGN_AND_DRAUGHTING_RELATIONSHIP('',''," + model + "," +
           part.representation + ")");
  form.add("DRAUGHTING_MODEL_ITEM_ASSOCIATION('',''," + tolerance + "," + model + "," + callout +
           ")");
  form.add("DEFAULT_MODEL_GEOMETRIC_VIEW('','','',(" + camera + ")," + model + ",''," + part.shape +
           ",.F.)");
  form.add("CHARACTERIZED_ITEM_WITHIN_REPRESENTATION('',''," + callout + "," + model + ")");
}

std::string tolerances_of_parts() {
  NotedNest noted;
  tolerate(noted, noted.nest.one);
  tolerate(noted, noted.nest.two);
  return noted.form.text();
}

/// A view of the assembly, with annotations of faces of both parts, which hides one of them.
std::string view_of_assembly() {
  NotedNest noted;
  FormMaker& form = noted.form;
  const Ref style = form.style(form.colour(0, 0, 0));
  std::vector<Ref> items{noted.camera()};
  std::vector<Ref> shown;
  for (const FormProduct* part : {&noted.nest.one, &noted.nest.two}) {
    const Ref aspect = noted.aspect_of_face(*part, 3, "SHAPE_ASPECT");
    const Ref size = form.add("DIMENSIONAL_SIZE(" + aspect + ",'')");
    const Ref line =
        form.add("POLYLINE('',(" + form.point(0, 0, 0) + "," + form.point(1, 1, 0) + "))");
    shown.push_back(form.add("ANNOTATION_CURVE_OCCURRENCE('',(" + style + ")," + line + ")"));
    items.push_back(form.add("DRAUGHTING_CALLOUT('',(" + shown.back() + "))"));
    shown.push_back(size);
  }
  const Ref model =
      form.add("DRAUGHTING_MODEL('view'," + list_of(items) + "," + form.context() + ")");
  form.add("MECHANICAL_DESIGN_AND_DRAUGHTING_RELATIONSHIP('',''," + model + "," +
           noted.nest.root.representation + ")");
  for (std::size_t i = 0; i < 2; ++i) {
    form.add("DRAUGHTING_MODEL_ITEM_ASSOCIATION('',''," + shown.at(2 * i + 1) + "," + model + "," +
             items.at(i + 1) + ")");
  }
  form.add("CONTEXT_DEPENDENT_INVISIBILITY((" + items.at(2) + ")," + model + ")");
  return form.text();
}

/// A distance between faces of two parts, and a tolerance on a feature of a component.
std::string measured_across_parts() {
  NotedNest noted;
  FormMaker& form = noted.form;
  const Ref one = noted.aspect_of_face(noted.nest.one, 1, "SHAPE_ASPECT");
  const Ref two = noted.aspect_of_face(noted.nest.two, 1, "SHAPE_ASPECT");
  const Ref location = form.add("DIMENSIONAL_LOCATION('distance',''," + one + "," + two + ")");
  const Ref value = form.add(
      "(LENGTH_MEASURE_WITH_UNIT()MEASURE_REPRESENTATION_ITEM()"
      "MEASURE_WITH_UNIT(LENGTH_MEASURE(7.),#4)REPRESENTATION_ITEM(''))");
  form.add("DIMENSIONAL_CHARACTERISTIC_REPRESENTATION(" + location + "," +
           form.representation({value}, "SHAPE_DIMENSION_REPRESENTATION") + ")");
  form.add("PLUS_MINUS_TOLERANCE(" +
           form.add("TOLERANCE_VALUE(" + noted.length("-0.1") + "," + noted.length("0.1") + ")") +
           "," + location + ")");
  const Ref of_component = form.add("COMPONENT_PATH_SHAPE_ASPECT('',''," + noted.nest.root.shape +
                                    ",.T.," + noted.usages.one.relationship + "," + one + ")");
  form.add("FLATNESS_TOLERANCE('',''," + noted.length("0.1") + "," + of_component + ")");
  const Ref all =
      form.add("COMPOSITE_GROUP_SHAPE_ASPECT('both',''," + noted.nest.root.shape + ",.T.)");
  for (const Ref& part : {one, two}) {
    form.add("SHAPE_ASPECT_RELATIONSHIP('',''," + all + "," + part + ")");
  }
  form.add("GEOMETRIC_ITEM_SPECIFIC_USAGE('',''," + all + "," + noted.nest.root.representation +
           "," + noted.nest.one.faces.at(4) + ")");
  return form.text();
}

/// Identifiers and names of all kinds of things, in records of their own.
std::string attributes() {
  NotedNest noted;
  FormMaker& form = noted.form;
  const auto name_all = [&](const std::vector<Ref>& items) {
    for (const Ref& item : items) {
      form.add("ID_ATTRIBUTE('id'," + item + ")");
      form.add("NAME_ATTRIBUTE('name'," + item + ")");
      form.add("DESCRIPTION_ATTRIBUTE('about it'," + item + ")");
    }
  };
  const Nest& nest = noted.nest;
  name_all({nest.root.representation, nest.one.representation, nest.two.shape,
            noted.aspect(nest.one.shape), noted.aspect(noted.usages.sub_one.shape),
            noted.usages.sub.relationship, noted.usages.one.usage,
            form.add("PROPERTY_DEFINITION('p',''," + nest.two.definition + ")"),
            form.add("DERIVED_UNIT((" + form.add("DERIVED_UNIT_ELEMENT(#4,2.)") + "))"),
            form.add("ADDRESS('1','street','box','town','r','2','country','f','t','e','x')")});
  const Ref language = form.add("LANGUAGE('en')");
  form.add("ATTRIBUTE_LANGUAGE_ASSIGNMENT(" + language + ",(" + nest.one.product + "," +
           nest.two.product + "))");
  form.add("V5_UUID_ATTRIBUTE('a96e3b4e-0f3b-5a8e-9c39-0a2f5e0c4a11',(" + nest.one.faces.at(0) +
           "," + nest.one.faces.at(1) + "))");
  form.add("V5_UUID_ATTRIBUTE('a96e3b4e-0f3b-5a8e-9c39-0a2f5e0c4a12',(" + nest.one.solid + "," +
           nest.two.solid + "))");
  return form.text();
}

/// Groups of faces, of parts and of groups; classes.
std::string groups() {
  NotedNest noted;
  FormMaker& form = noted.form;
  const Nest& nest = noted.nest;
  const auto group = [&](const std::string& name, const std::vector<Ref>& items) {
    const Ref made = form.add("GROUP('" + name + "','')");
    form.add("APPLIED_GROUP_ASSIGNMENT(" + made + "," + list_of(items) + ")");
    return made;
  };
  const Ref faces = group("faces", {nest.one.faces.at(0), nest.two.faces.at(0)});
  const Ref of_one = group("of one", {nest.one.faces.at(1)});
  const Ref products = group("products", {nest.one.definition, nest.sub.definition});
  form.add("GROUP_RELATIONSHIP('',''," + faces + "," + of_one + ")");
  form.add("GROUP_RELATIONSHIP('',''," + products + "," + group("empty", {}) + ")");
  const Ref kind = form.add("CLASS('screw','')");
  form.add("APPLIED_CLASSIFICATION_ASSIGNMENT(" + kind + "," +
           form.add("CLASSIFICATION_ROLE('','')") + "," +
           list_of({nest.one.product, nest.two.product}) + ")");
  return form.text();
}

/// Materials and changes that speak of many parts.
std::string one_material_of_many() {
  NotedNest noted;
  FormMaker& form = noted.form;
  const Nest& nest = noted.nest;
  const Ref steel = form.add("MATERIAL_DESIGNATION('steel'," +
                             list_of({nest.one.definition, nest.two.definition}) + ")");
  const auto represent = [&](const std::string& keyword, const Ref& of, const std::string& more) {
    const Ref property = form.add("PROPERTY_DEFINITION('',''," + of + ")");
    const Ref item = form.add("DESCRIPTIVE_REPRESENTATION_ITEM('','20')");
    return form.add(keyword + "(" + property + "," + form.representation({item}, "REPRESENTATION") +
                    more + ")");
  };
  const Ref warm = represent("PROPERTY_DEFINITION_REPRESENTATION",
                             form.add("CHARACTERIZED_OBJECT('temperature','')"), "");
  const Ref density = represent("MATERIAL_PROPERTY_REPRESENTATION", nest.one.definition,
                                "," + form.add("DATA_ENVIRONMENT('','',(" + warm + "))"));
  form.add("MATERIAL_DESIGNATION_CHARACTERIZATION('',''," + steel + "," + density + ")");
  const Ref request = form.add("VERSIONED_ACTION_REQUEST('r','','','')");
  form.add("CHANGE_REQUEST(" + request + "," +
           list_of({nest.one.formation, nest.two.formation, nest.sub.formation}) + ")");
  form.add("CHANGE(" + form.add("ACTION('c','',$)") + "," +
           list_of({nest.one.formation, nest.two.formation}) + ")");
  return form.text();
}

/// Wires, a tessellation and geometry that parts are constructed by, beside their solids.
std::string further_shapes() {
  NotedNest noted;
  FormMaker& form = noted.form;
  for (const FormProduct* part : {&noted.nest.one, &noted.nest.two}) {
    const Ref line =
        form.add("POLYLINE('',(" + form.point(0, 0, 0) + "," + form.point(9, 9, 9) + "))");
    const Ref wires = form.add("GEOMETRIC_CURVE_SET('',(" + line + "))");
    form.link(part->shape,
              form.representation({wires, form.axis()},
                                  "GEOMETRICALLY_BOUNDED_WIREFRAME_SHAPE_REPRESENTATION"));
    const Ref plane = form.add("PLANE('middle'," + form.axis(5) + ")");
    const Ref constructive =
        form.representation({plane, form.point(1, 2, 3)}, "CONSTRUCTIVE_GEOMETRY_REPRESENTATION");
    form.add("CONSTRUCTIVE_GEOMETRY_REPRESENTATION_RELATIONSHIP('',''," + part->representation +
             "," + constructive + ")");
    const Ref style = form.styled(form.colour(0, 0, 0), plane);
    form.add("INVISIBILITY((" + style + "))");
    form.add("PRESENTATION_LAYER_ASSIGNMENT('wires','',(" + line + "," + plane + "))");
    const Ref second = form.add("PRODUCT_DEFINITION_SHAPE('second',''," + part->definition + ")");
    form.link(second,
              form.representation({form.axis(), form.point(4, 4, 4)}, "SHAPE_REPRESENTATION"));
  }
  return form.text();
}

/// What hides components: styles of their representations and of their occurrences.
std::string hidden_components() {
  NotedNest noted;
  FormMaker& form = noted.form;
  const Nest& nest = noted.nest;
  const Ref null_style = form.add("PRESENTATION_STYLE_ASSIGNMENT((NULL_STYLE(.NULL.)))");
  const auto hide = [&](const Ref& item) {
    form.add("INVISIBILITY((" + form.add("STYLED_ITEM('',(" + null_style + ")," + item + ")") +
             "))");
  };
  hide(nest.sub.representation);
  hide(nest.two.solid);
  form.add("INVISIBILITY((" +
           form.add("PRESENTATION_LAYER_ASSIGNMENT('off','',(" + nest.one.solid + "," +
                    nest.root.representation + "))") +
           "))");
  return form.text();
}

/// Records that nobody refers to, and that speak of two parts, or of a part and an assembly.
std::string relations_between_parts() {
  NotedNest noted;
  FormMaker& form = noted.form;
  const Nest& nest = noted.nest;
  const std::pair<Ref, Ref> pairs[] = {{nest.one.definition, nest.two.definition},
                                       {nest.two.definition, nest.root.definition},
                                       {nest.sub.definition, nest.one.definition}};
  for (const auto& [a, b] : pairs) {
    form.add("PRODUCT_DEFINITION_RELATIONSHIP('','','depends on'," + a + "," + b + ")");
  }
  form.add("PRODUCT_RELATIONSHIP('','',''," + nest.one.product + "," + nest.two.product + ")");
  form.add("PRODUCT_DEFINITION_FORMATION_RELATIONSHIP('','',''," + nest.one.formation + "," +
           nest.root.formation + ")");
  form.add("PROPERTY_DEFINITION_RELATIONSHIP('',''," +
           form.add("PROPERTY_DEFINITION('',''," + nest.one.shape + ")") + "," +
           form.add("PROPERTY_DEFINITION('',''," + nest.two.shape + ")") + ")");
  form.add("SHAPE_REPRESENTATION_RELATIONSHIP('like it',''," +
           form.representation({form.axis(1)}, "SHAPE_REPRESENTATION") + "," +
           form.representation({form.axis(2)}, "SHAPE_REPRESENTATION") + ")");
  form.add("REPRESENTATION_RELATIONSHIP('',''," +
           form.representation({nest.one.faces.at(0)}, "REPRESENTATION") + "," +
           form.representation({nest.two.faces.at(0)}, "REPRESENTATION") + ")");
  form.add("PRODUCT_DEFINITION_CONTEXT_ASSOCIATION(" + nest.one.definition + "," +
           form.definition_context() + "," + form.add("PRODUCT_DEFINITION_CONTEXT_ROLE('part',$)") +
           ")");
  form.add("ROLE_ASSOCIATION(" + form.add("OBJECT_ROLE('',$)") + "," +
           form.add("APPLIED_DATE_ASSIGNMENT(" + form.add("CALENDAR_DATE(2026,1,1)") + "," +
                    form.add("DATE_ROLE('')") + ",(" + nest.two.definition + "))") +
           ")");
  return form.text();
}

}  // namespace

std::vector<AssemblyForm> forms_of_notes() {
  return {
      {"tolerances_of_parts", tolerances_of_parts},
      {"view_of_assembly", view_of_assembly},
      {"measured_across_parts", measured_across_parts},
      {"attributes", attributes},
      {"groups", groups},
      {"one_material_of_many", one_material_of_many},
      {"further_shapes", further_shapes},
      {"hidden_components", hidden_components},
      {"relations_between_parts", relations_between_parts},
  };
}

}  // namespace Kessel::test

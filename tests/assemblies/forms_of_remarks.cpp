// Forms of what is said of products, usages and shapes beside colours: annotations, properties,
// management data, mechanisms.
#include <utility>

#include "assemblies/nest.h"

namespace Kessel::test {

namespace {

/// What annotations are made on.
enum class On : std::uint8_t { part, root, usage };

/// Tolerances on aspects, what shows them, and a saved view.
std::string annotations(On on) {
  FormMaker form("242");
  Nest nest = make_nest(form);
  const NestUsages usages = place_all(form, nest);
  finish_coloured(form, nest);
  const Ref& shape = on == On::part   ? nest.one.shape
                     : on == On::root ? nest.root.shape
                                      : usages.one.shape;
  const Ref& shown = on == On::root ? nest.root.representation : nest.one.representation;
  const Ref aspect = form.add("SHAPE_ASPECT('a',''," + shape + ",.T.)");
  form.add("GEOMETRIC_ITEM_SPECIFIC_USAGE('',''," + aspect + "," + shown + "," +
           nest.one.faces.at(0) + ")");
  const Ref tolerance =
      form.add("FLATNESS_TOLERANCE('',''," +
               form.add("LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(.1),#4)") + "," + aspect + ")");
  const Ref line =
      form.add("POLYLINE('',(" + form.point(0, 0, 0) + "," + form.point(1, 1, 0) + "))");
  const Ref style = form.add("PRESENTATION_STYLE_ASSIGNMENT((" +
                             form.add("CURVE_STYLE('',$,$," + form.colour(0, 0, 0) + ")") + "))");
  const Ref occurrence = form.add("ANNOTATION_OCCURRENCE('',(" + style + ")," +
                                  form.add("GEOMETRIC_CURVE_SET('',(" + line + "))") + ")");
  const Ref model = form.add("DRAUGHTING_MODEL('',(" + occurrence + ")," + form.context() + ")");
  form.add("MECHANICAL_DESIGN_AND_DRAUGHTING_RELATIONSHIP('',''," + model + "," + shown + ")");
  form.add("DRAUGHTING_MODEL_ITEM_ASSOCIATION('',''," + tolerance + "," + model + "," + occurrence +
           ")");
  const Ref view = form.add(
      "(CHARACTERIZED_OBJECT('','')CHARACTERIZED_REPRESENTATION()"
      "DRAUGHTING_MODEL()REPRESENTATION('view',(" +
      occurrence + "," + form.axis(0, 0, 9) + ")," + form.context() + "))");
  form.add("MECHANICAL_DESIGN_AND_DRAUGHTING_RELATIONSHIP('',''," + model + "," + view + ")");
  form.add("PRESENTATION_LAYER_ASSIGNMENT('notes','',(" + occurrence + "," + nest.two.solid + "))");
  return form.text();
}

/// Aspects of parts and of their occurrences, with relations between them.
std::string related_aspects() {
  FormMaker form("242");
  Nest nest = make_nest(form);
  const NestUsages usages = place_all(form, nest);
  const auto aspect = [&](const Ref& shape) {
    return form.add("SHAPE_ASPECT('',''," + shape + ",.T.)");
  };
  const auto relate = [&](const Ref& a, const Ref& b) {
    form.add("SHAPE_ASPECT_RELATIONSHIP('mate',''," + a + "," + b + ")");
  };
  const Ref of_part = aspect(nest.one.shape);
  const Ref of_usage = aspect(usages.one.shape);
  relate(of_usage, aspect(usages.sub_two.shape));
  relate(of_part, aspect(nest.two.shape));
  relate(of_usage, of_part);
  finish_coloured(form, nest);
  return form.text();
}

/// Validation properties and attributes of products and usages.
std::string properties() {
  FormMaker form;
  Nest nest = make_nest(form);
  const NestUsages usages = place_all(form, nest);
  const Ref general = form.add("GENERAL_PROPERTY('','weight',$)");
  const Ref cubic = form.add("DERIVED_UNIT((" + form.add("DERIVED_UNIT_ELEMENT(#4,3.)") + "))");
  const auto volume = [&](const Ref& of, double value) {
    const Ref property =
        form.add("PROPERTY_DEFINITION('geometric validation property','volume'," + of + ")");
    const Ref item = form.add("MEASURE_REPRESENTATION_ITEM('volume measure',VOLUME_MEASURE(" +
                              std::to_string(value) + ")," + cubic + ")");
    form.add("PROPERTY_DEFINITION_REPRESENTATION(" + property + "," +
             form.representation({item}, "REPRESENTATION") + ")");
  };
  const auto weight = [&](const Ref& of) {
    const Ref property =
        form.add("PROPERTY_DEFINITION('weight','user defined attribute'," + of + ")");
    form.add("GENERAL_PROPERTY_ASSOCIATION('',''," + general + "," + property + ")");
    const Ref item = form.add("DESCRIPTIVE_REPRESENTATION_ITEM('weight','3')");
    form.add("PROPERTY_DEFINITION_REPRESENTATION(" + property + "," +
             form.representation({item}, "REPRESENTATION") + ")");
  };
  volume(nest.root.shape, 3210);
  volume(nest.sub.shape, 1210);
  volume(nest.one.shape, 1000);
  volume(nest.two.shape, 210);
  volume(usages.sub.shape, 1210);
  volume(usages.sub_one.shape, 1000);
  for (const Ref& of : {nest.root.definition, nest.one.definition, nest.two.definition,
                        usages.one.usage, usages.sub_one.usage}) {
    weight(of);
  }
  finish_coloured(form, nest);
  return form.text();
}

/// Materials that are products, and materials of several parts.
std::string materials() {
  FormMaker form;
  Nest nest = make_nest(form);
  place_all(form, nest);
  const FormProduct steel = form.product("steel");
  for (const FormProduct* part : {&nest.one, &nest.two}) {
    form.add("PRODUCT_DEFINITION_RELATIONSHIP('','material',''," + part->definition + "," +
             steel.definition + ")");
  }
  form.add("MATERIAL_DESIGNATION('steel',(" + nest.one.definition + "," + nest.two.definition +
           "))");
  const Ref parts = form.add("PRODUCT_RELATED_PRODUCT_CATEGORY('part','',(" + nest.one.product +
                             "," + nest.two.product + "," + nest.root.product + "))");
  form.add("PRODUCT_CATEGORY_RELATIONSHIP('',''," + parts + "," +
           form.add("PRODUCT_RELATED_PRODUCT_CATEGORY('detail','',(" + nest.one.product + "))") +
           ")");
  finish_coloured(form, nest);
  return form.text();
}

/// Approvals, classifications and effectivities, by which usages are configured.
std::string management() {
  FormMaker form("203");
  Nest nest = make_nest(form);
  const NestUsages usages = place_all(form, nest);
  const std::vector<Ref> definitions{nest.root.definition, nest.sub.definition, nest.one.definition,
                                     nest.two.definition};
  const std::vector<Ref> versions{nest.root.formation, nest.sub.formation, nest.one.formation,
                                  nest.two.formation};
  const Ref person = form.add("PERSON_AND_ORGANIZATION(" + form.add("PERSON('1','a',$,$,$,$)") +
                              "," + form.add("ORGANIZATION('1','o','')") + ")");
  const Ref approval = form.add("APPROVAL(" + form.add("APPROVAL_STATUS('approved')") + ",'')");
  form.add("APPROVAL_PERSON_ORGANIZATION(" + person + "," + approval + "," +
           form.add("APPROVAL_ROLE('')") + ")");
  const Ref secret = form.add("SECURITY_CLASSIFICATION('',''," +
                              form.add("SECURITY_CLASSIFICATION_LEVEL('unclassified')") + ")");
  form.add("CC_DESIGN_SECURITY_CLASSIFICATION(" + secret + "," + list_of(versions) + ")");
  form.add("CC_DESIGN_APPROVAL(" + approval + ",(" + secret + "))");
  form.add("CC_DESIGN_APPROVAL(" + approval + "," + list_of(definitions) + ")");
  form.add("CC_DESIGN_PERSON_AND_ORGANIZATION_ASSIGNMENT(" + person + "," +
           form.add("PERSON_AND_ORGANIZATION_ROLE('creator')") + "," + list_of(definitions) + ")");
  const Ref item = form.add("CONFIGURATION_ITEM('i','i',''," +
                            form.add("PRODUCT_CONCEPT('c','c',''," +
                                     form.add("PRODUCT_CONCEPT_CONTEXT('',#1,'')") + ")") +
                            ",$)");
  const Ref design = form.add("CONFIGURATION_DESIGN(" + item + "," + nest.root.formation + ")");
  for (const FormUsage* usage : {&usages.sub, &usages.one, &usages.sub_one}) {
    form.add("(CONFIGURATION_EFFECTIVITY(" + design +
             ")EFFECTIVITY('e')PRODUCT_DEFINITION_EFFECTIVITY(" + usage->usage +
             ")SERIAL_NUMBERED_EFFECTIVITY('1','9'))");
  }
  form.add("ASSEMBLY_COMPONENT_USAGE_SUBSTITUTE('',''," + usages.one.usage + "," +
           usages.sub_one.usage + ")");
  form.add("ALTERNATE_PRODUCT_RELATIONSHIP('',''," + nest.one.product + "," + nest.two.product +
           ",'fits')");
  finish_coloured(form, nest);
  return form.text();
}

/// A mechanism whose links are parts and a sub-assembly.
std::string mechanism() {
  FormMaker form("242");
  Nest nest = make_nest(form);
  place_all(form, nest);
  std::vector<Ref> links;
  std::vector<Ref> shown;
  for (const FormProduct* part : {&nest.one, &nest.two, &nest.sub}) {
    links.push_back(form.add("KINEMATIC_LINK('',$)"));
    shown.push_back(form.representation({form.axis(1)}, "KINEMATIC_LINK_REPRESENTATION"));
    form.add("KINEMATIC_LINK_REPRESENTATION_ASSOCIATION('',''," + shown.back() + "," +
             part->representation + ")");
  }
  const Ref joint = form.add("KINEMATIC_JOINT(''," + links.at(0) + "," + links.at(1) + ")");
  const Ref structure = form.representation({joint}, "KINEMATIC_TOPOLOGY_STRUCTURE");
  const Ref mechanism = form.add("MECHANISM_REPRESENTATION('',(" + form.axis() + ")," +
                                 form.context() + "," + structure + ")");
  form.add("(GEOMETRIC_REPRESENTATION_ITEM()ITEM_DEFINED_TRANSFORMATION('',''," + form.axis(1) +
           "," + form.axis(2) + ")KINEMATIC_PAIR(" + joint +
           ")REPRESENTATION_ITEM('')REVOLUTE_PAIR())");
  const Ref kinematics =
      form.add("PRODUCT_DEFINITION_KINEMATICS('',''," + nest.root.definition + ")");
  form.add("KINEMATIC_PROPERTY_MECHANISM_REPRESENTATION(" + kinematics + "," + mechanism + "," +
           shown.at(0) + ")");
  form.add("PAIR_REPRESENTATION_RELATIONSHIP('',''," + shown.at(0) + "," + shown.at(1) + ")");
  finish_coloured(form, nest);
  return form.text();
}

/// Documents of parts and usages, one of them a product.
std::string documents() {
  FormMaker form;
  Nest nest = make_nest(form);
  const NestUsages usages = place_all(form, nest);
  const Ref type = form.add("DOCUMENT_TYPE('geometry')");
  const Ref picture = form.add("DOCUMENT_FILE('one.jpg','one','',''," + type + ",'',$)");
  form.add("APPLIED_DOCUMENT_REFERENCE(" + picture + ",''," +
           list_of({nest.one.definition, nest.two.definition, usages.one.usage}) + ")");
  form.add("DOCUMENT_REPRESENTATION_TYPE('digital'," + picture + ")");
  const FormProduct manual = form.product("manual");
  form.replace(manual.definition, "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS('',''," +
                                      manual.formation + "," + form.definition_context() + ",(" +
                                      picture + "))");
  form.add("APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('x'," +
           form.add("IDENTIFICATION_ROLE('alias',$)") + "," +
           form.add("EXTERNAL_SOURCE(IDENTIFIER('s'))") + ",(" + nest.one.product + "," +
           nest.two.product + "))");
  finish_coloured(form, nest);
  return form.text();
}

}  // namespace

std::vector<AssemblyForm> forms_of_remarks() {
  return {
      {"annotations_of_part", [] { return annotations(On::part); }},
      {"annotations_of_root", [] { return annotations(On::root); }},
      {"annotations_of_usage", [] { return annotations(On::usage); }},
      {"related_aspects", related_aspects},
      {"properties", properties},
      {"materials", materials},
      {"management", management},
      {"mechanism", mechanism},
      {"documents", documents},
  };
}

}  // namespace Kessel::test

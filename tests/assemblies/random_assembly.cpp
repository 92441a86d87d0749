#include "assemblies/random_assembly.h"

#include <algorithm>
#include <numeric>
#include <random>
#include <string_view>
#include <utility>
#include <vector>

namespace Kessel::test {

namespace {

/// A record by its position among those that were made; written as "#" and its number.
struct Ref {
  std::size_t record = 0;
};
using Refs = std::vector<Ref>;

/// Gathers records, and writes them with whatever numbers they get in the end.
class Records {
 public:
  /// Makes a record from pieces of its body: texts, references, lists of references.
  template <class... Pieces>
  Ref add(const Pieces&... pieces) {
    std::vector<Piece>& body = bodies_.emplace_back();
    (append(body, pieces), ...);
    return {bodies_.size() - 1};
  }

  /// A record that another file holds.
  Ref add_external(const std::string& uri) {
    const Ref external = add("<" + uri + ">");
    externals_.push_back(external.record);
    return external;
  }

  /// A name for a record, for other files.
  void add_anchor(const std::string& name, Ref record) { anchors_.push_back({name, record}); }

  /// The sections of an exchange file behind the header. Records are shared out to data sections
  /// by chance, one for each of `sections`, the parameters behind DATA.
  std::string text(std::mt19937_64& random, bool shuffled,
                   const std::vector<std::string>& sections) const {
    std::vector<std::size_t> order(bodies_.size());
    std::iota(order.begin(), order.end(), 0);
    std::vector<std::uint64_t> numbers(bodies_.size());
    std::iota(numbers.begin(), numbers.end(), 1);
    if (shuffled) {
      std::shuffle(order.begin(), order.end(), random);
      std::shuffle(numbers.begin(), numbers.end(), random);
      const std::uint64_t step = 1 + random() % 9;
      for (std::uint64_t& number : numbers) number = number * step + 7;
    }
    std::string text;
    if (!anchors_.empty()) {
      text += "ANCHOR;\n";
      for (const auto& [name, ref] : anchors_) {
        text += "<" + name + ">=#" + std::to_string(numbers[ref.record]) + ";\n";
      }
      text += "ENDSEC;\n";
    }
    if (!externals_.empty()) {
      text += "REFERENCE;\n";
      for (const std::size_t record : externals_) text += line(record, numbers);
      text += "ENDSEC;\n";
    }
    std::vector<std::string> data(sections.size());
    for (const std::size_t record : order) {
      const bool is_external =
          std::find(externals_.begin(), externals_.end(), record) != externals_.end();
      if (is_external) continue;
      const std::size_t section =
          sections.size() == 1 ? 0 : static_cast<std::size_t>(random() % sections.size());
      data[section] += line(record, numbers);
    }
    for (std::size_t i = 0; i < sections.size(); ++i) {
      text += "DATA" + sections[i] + ";\n" + data[i] + "ENDSEC;\n";
    }
    return text;
  }

 private:
  struct Piece {
    bool is_reference;
    std::size_t record;
    std::string text;
  };
  std::string line(std::size_t record, const std::vector<std::uint64_t>& numbers) const {
    std::string text = "#" + std::to_string(numbers[record]) + "=";
    for (const Piece& piece : bodies_[record]) {
      text += piece.is_reference ? "#" + std::to_string(numbers[piece.record]) : piece.text;
    }
    return text + ";\n";
  }
  static void append(std::vector<Piece>& body, const std::string& text) {
    body.push_back({false, 0, text});
  }
  static void append(std::vector<Piece>& body, const char* text) {
    body.push_back({false, 0, text});
  }
  static void append(std::vector<Piece>& body, Ref reference) {
    body.push_back({true, reference.record, {}});
  }
  static void append(std::vector<Piece>& body, const Refs& list) {
    for (std::size_t i = 0; i < list.size(); ++i) {
      append(body, i == 0 ? "(" : ",");
      append(body, list[i]);
    }
    append(body, list.empty() ? "()" : ")");
  }

  std::vector<std::vector<Piece>> bodies_;
  std::vector<std::size_t> externals_;
  std::vector<std::pair<std::string, Ref>> anchors_;
};

/// What a file may obey, and how it calls itself.
struct Schema {
  const char* name;
  const char* application;
  const char* protocol;
};
constexpr Schema SCHEMAS[] = {
    {"AUTOMOTIVE_DESIGN { 1 0 10303 214 3 1 1 }", "automotive design", "automotive_design"},
    {"CONFIG_CONTROL_DESIGN", "configuration controlled 3d designs", "config_control_design"},
    {"AP242_MANAGED_MODEL_BASED_3D_ENGINEERING_MIM_LF { 1 0 10303 442 1 1 4 }",
     "managed model based 3d engineering", "ap242_managed_model_based_3d_engineering"},
};

/// What products may be called beside "same" and "p0": exchange strings' bodies.
constexpr const char* ODD_NAMES[] = {"a;b", "''", "\\X2\\652F67B6\\X0\\", "T\\X\\FCr", "x/y",
                                     "/*",  ""};

/// What is known of a product while its file is made.
struct MadeProduct {
  Ref product, formation, definition, shape, context, link;
  Ref representation;  // the one that the shape has
  Refs solids, faces, placements;
  Ref body_representation;  // the one that holds the solids
  bool has_shape = false;
  Refs styles;  // of its solids and faces
};

struct MadeUsage {
  std::size_t assembly, component;
  Ref usage;
  Ref shape;
  Ref placement;  // the record that places the component
  bool is_placed = false;
  bool is_related = false;  // by a relationship
  Ref name;                 // the representation that names the occurrence
  bool has_name = false;
};

class Maker {
 public:
  Maker(std::uint64_t seed, const AssemblyTraits& traits) : random_(seed), traits_(traits) {}

  std::string make() {
    make_common();
    const std::size_t count = 2 + below(11);
    for (std::size_t i = 0; i < count; ++i) make_product(i);
    make_usages();
    share_bodies();
    make_views();
    make_pieces();
    make_aspect_shapes();
    tie_across();
    make_styles();
    make_layers();
    make_properties();
    make_management();
    make_documents();
    if (traits_.sections && chance(8)) make_anchors();
    if (traits_.lost_records) make_lost_records();
    return file();
  }

 private:
  std::size_t below(std::size_t n) { return static_cast<std::size_t>(random_() % n); }
  bool chance(unsigned one_in) { return below(one_in) == 0; }
  template <class T>
  const T& any(const std::vector<T>& from) {
    return from[below(from.size())];
  }
  /// Some of them, at least one, each once.
  Refs some(Refs from) {
    std::shuffle(from.begin(), from.end(), random_);
    from.resize(1 + below(from.size()));
    return from;
  }

  template <class... Pieces>
  Ref add(const Pieces&... pieces) {
    return records_.add(pieces...);
  }

  /// The header and the sections. Several data sections have names, and obey one schema or two.
  std::string file() {
    const std::string schema = std::string("'") + schema_.name + "'";
    std::string schemas = schema;
    std::vector<std::string> sections{""};
    if (traits_.sections && chance(8)) {
      const std::string second = chance(2) ? schema : "'SECOND_SCHEMA'";
      if (second != schema) schemas += "," + second;
      sections = {"('one',(" + schema + "))", "('two',(" + second + "))"};
    }
    return "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'4;1');\n"
           "FILE_NAME('random','2026-01-01T00:00:00',(''),(''),'','','');\nFILE_SCHEMA((" +
           schemas + "));\nENDSEC;\n" +
           records_.text(random_, traits_.shuffled && chance(2), sections) + "END-ISO-10303-21;\n";
  }

  bool is_ap203() const { return schema_.name == std::string_view("CONFIG_CONTROL_DESIGN"); }

  void make_common() {
    if (traits_.schemas) schema_ = SCHEMAS[below(std::size(SCHEMAS))];
    application_ = add(std::string("APPLICATION_CONTEXT('") + schema_.application + "')");
    add(std::string("APPLICATION_PROTOCOL_DEFINITION('international standard','") +
            schema_.protocol + "',2000,",
        application_, ")");
    product_context_ = add(is_ap203() ? "MECHANICAL_CONTEXT(''," : "PRODUCT_CONTEXT('',",
                           application_, ",'mechanical')");
    definition_context_ =
        add(is_ap203() ? "DESIGN_CONTEXT(''," : "PRODUCT_DEFINITION_CONTEXT('part definition',",
            application_, ",'design')");
    length_ = add("(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.))");
    angle_ = add("(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.))");
    shared_context_ = make_context();
    colour_ = add("COLOUR_RGB('',1.,0.5,0.)");
    const Ref fill = add("FILL_AREA_STYLE_COLOUR('',", colour_, ")");
    const Ref area = add("FILL_AREA_STYLE('',(", fill, "))");
    const Ref surface = add("SURFACE_STYLE_FILL_AREA(", area, ")");
    const Ref side = add("SURFACE_SIDE_STYLE('',(", surface, "))");
    const Ref usage = add("SURFACE_STYLE_USAGE(.BOTH.,", side, ")");
    style_ = add("PRESENTATION_STYLE_ASSIGNMENT((", usage, "))");
  }

  Ref make_context() {
    const Ref uncertainty = add("UNCERTAINTY_MEASURE_WITH_UNIT(LENGTH_MEASURE(1.E-007),", length_,
                                ",'distance_accuracy_value','')");
    return add("(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNCERTAINTY_ASSIGNED_CONTEXT((",
               uncertainty, "))GLOBAL_UNIT_ASSIGNED_CONTEXT((", length_, ",", angle_,
               "))REPRESENTATION_CONTEXT('','3D'))");
  }

  Ref point() { return add("CARTESIAN_POINT('',(" + std::to_string(below(100)) + ".,0.,0.))"); }

  Ref placement() {
    if (directions_.empty() || chance(3)) {
      directions_ = {add("DIRECTION('',(0.,0.,1.))"), add("DIRECTION('',(1.,0.,0.))")};
    }
    return add("AXIS2_PLACEMENT_3D('',", point(), ",", directions_[0], ",", directions_[1], ")");
  }

  Ref face(MadeProduct& product) {
    const Ref vertex = add("VERTEX_POINT('',", point(), ")");
    const Ref loop = add("VERTEX_LOOP('',", vertex, ")");
    const Ref bound = add("FACE_BOUND('',", loop, ",.T.)");
    const Ref plane = add("PLANE('',", placement(), ")");
    const Ref face = add("ADVANCED_FACE('',(", bound, "),", plane, ",.T.)");
    product.faces.push_back(face);
    return face;
  }

  Ref solid(MadeProduct& product) {
    Refs faces;
    const std::size_t count = 1 + below(3);
    for (std::size_t i = 0; i < count; ++i) faces.push_back(face(product));
    const Ref shell = add("CLOSED_SHELL('',", faces, ")");
    const Ref solid = add("MANIFOLD_SOLID_BREP('',", shell, ")");
    product.solids.push_back(solid);
    return solid;
  }

  void make_product(std::size_t i) {
    MadeProduct made;
    // Definitions often say the same word for word, and so do products.
    std::string name = chance(4) ? "same" : "p" + std::to_string(i);
    if (chance(10)) name = ODD_NAMES[below(std::size(ODD_NAMES))];
    made.product = add("PRODUCT('" + name + "','" + name + "','',(", product_context_, "))");
    made.formation = is_ap203() ? add("PRODUCT_DEFINITION_FORMATION_WITH_SPECIFIED_SOURCE('','',",
                                      made.product, ",.MADE.)")
                                : add("PRODUCT_DEFINITION_FORMATION('','',", made.product, ")");
    made.definition = make_definition(made.formation);
    made.context = chance(3) ? shared_context_ : make_context();
    made.has_shape = !chance(10);
    if (made.has_shape) make_shape(made);
    products_.push_back(made);
  }

  /// Some definitions of AP203 have documents already.
  Ref make_definition(Ref formation) {
    if (!is_ap203() || !chance(8)) {
      return add("PRODUCT_DEFINITION('design','',", formation, ",", definition_context_, ")");
    }
    const Ref document =
        add("DOCUMENT('d','d','',", add("DOCUMENT_TYPE('cad_filename of old')"), ")");
    return add("PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS('design','',", formation, ",",
               definition_context_, ",(", document, "))");
  }

  void make_shape(MadeProduct& made) {
    made.shape = add("PRODUCT_DEFINITION_SHAPE('','',", made.definition, ")");
    made.placements.push_back(placement());
    while (chance(2)) made.placements.push_back(placement());
    Refs items = made.placements;
    const bool has_bodies = !chance(3);
    const bool is_tied = has_bodies && chance(2);
    Refs bodies;
    if (has_bodies) {
      bodies.push_back(solid(made));
      if (chance(3)) bodies.push_back(solid(made));
    }
    if (is_tied) {
      made.representation = add("SHAPE_REPRESENTATION('',", items, ",", made.context, ")");
      Refs own = bodies;
      own.push_back(placement());
      made.body_representation =
          add("ADVANCED_BREP_SHAPE_REPRESENTATION('',", own, ",", made.context, ")");
      add("SHAPE_REPRESENTATION_RELATIONSHIP('','',", made.representation, ",",
          made.body_representation, ")");
    } else {
      items.insert(items.end(), bodies.begin(), bodies.end());
      made.representation =
          add(has_bodies ? "ADVANCED_BREP_SHAPE_REPRESENTATION(''," : "SHAPE_REPRESENTATION('',",
              items, ",", made.context, ")");
      made.body_representation = made.representation;
    }
    const char* link =
        chance(8) ? "PROPERTY_DEFINITION_REPRESENTATION(" : "SHAPE_DEFINITION_REPRESENTATION(";
    made.link = add(link, made.shape, ",", made.representation, ")");
    if (chance(6)) {  // A second representation.
      const Ref second =
          add("GEOMETRICALLY_BOUNDED_WIREFRAME_SHAPE_REPRESENTATION('',(",
              add("GEOMETRIC_CURVE_SET('',(", point(), "))"), "),", made.context, ")");
      add("SHAPE_DEFINITION_REPRESENTATION(", made.shape, ",", second, ")");
    }
  }

  void make_usages() {
    const std::size_t count = products_.size();
    for (std::size_t component = 1; component < count; ++component) {
      if (traits_.several_tops && chance(12)) continue;
      const std::size_t uses = 1 + below(3);
      for (std::size_t i = 0; i < uses; ++i) use(below(component), component);
    }
    if (traits_.circles && chance(10) && count > 2) use(count - 1, below(count - 1));
    if (usages_.size() > 1 && chance(4)) make_higher_usage();
  }

  /// A component of a component, which may have a name and so a style of its own.
  void make_higher_usage() {
    MadeUsage made{0, usages_.back().component, {}, {}, {}, false, false, {}, false};
    made.usage = add("SPECIFIED_HIGHER_USAGE_OCCURRENCE('','',$,", products_[0].definition, ",",
                     products_[made.component].definition, ",$,", usages_.front().usage, ",",
                     usages_.back().usage, ")");
    if (chance(2)) {
      made.shape = add("PRODUCT_DEFINITION_SHAPE('','',", made.usage, ")");
      name_occurrence(made, shared_context_);
    }
    higher_usages_.push_back(made);
  }

  void use(std::size_t assembly, std::size_t component) {
    MadeUsage made{assembly, component, {}, {}, {}, false, false, {}, false};
    MadeProduct& whole = products_[assembly];
    const MadeProduct& piece = products_[component];
    const Ref used = chance(12)
                         ? add("PRODUCT_DEFINITION_OCCURRENCE('','',$,", piece.definition, ",$)")
                         : piece.definition;
    made.usage =
        add("NEXT_ASSEMBLY_USAGE_OCCURRENCE('" + std::to_string(usages_.size()) + "','','',",
            whole.definition, ",", used, ",$)");
    if (whole.has_shape && piece.has_shape && !chance(8)) {
      made.is_placed = true;
      made.shape = add("PRODUCT_DEFINITION_SHAPE('Placement','',", made.usage, ")");
      if (chance(8)) {
        place_by_mapping(made, whole, piece);
      } else {
        made.is_related = true;
        place_by_transformation(made, whole, piece);
      }
      if (chance(5)) name_occurrence(made, whole.context);
    }
    usages_.push_back(made);
  }

  /// A shape of the usage's own.
  void name_occurrence(MadeUsage& made, Ref context) {
    made.has_name = true;
    made.name = add("SHAPE_REPRESENTATION('',(", placement(), "),", context, ")");
    add("SHAPE_DEFINITION_REPRESENTATION(", made.shape, ",", made.name, ")");
  }

  void place_by_transformation(MadeUsage& made, const MadeProduct& whole,
                               const MadeProduct& piece) {
    const Ref transformation = add("ITEM_DEFINED_TRANSFORMATION('','',", any(piece.placements), ",",
                                   any(whole.placements), ")");
    made.placement = add("(REPRESENTATION_RELATIONSHIP('','',", piece.representation, ",",
                         whole.representation, ")REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(",
                         transformation, ")SHAPE_REPRESENTATION_RELATIONSHIP())");
    add("CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(", made.placement, ",", made.shape, ")");
  }

  /// A mapped item in a representation of its own that the usage's shape has.
  void place_by_mapping(MadeUsage& made, const MadeProduct& whole, const MadeProduct& piece) {
    const Ref map =
        add("REPRESENTATION_MAP(", any(piece.placements), ",", piece.representation, ")");
    made.placement = add("MAPPED_ITEM('',", map, ",", placement(), ")");
    const Ref shown = add("SHAPE_REPRESENTATION('',(", made.placement, "),", whole.context, ")");
    add("SHAPE_REPRESENTATION_RELATIONSHIP('','',", whole.representation, ",", shown, ")");
  }

  /// Two products own one body.
  void share_bodies() {
    if (!chance(6)) return;
    for (const MadeProduct& first : products_) {
      if (first.solids.empty()) continue;
      MadeProduct& second = products_[below(products_.size())];
      if (!second.has_shape) return;
      const Ref shared = add("ADVANCED_BREP_SHAPE_REPRESENTATION('',(", first.solids[0], ",",
                             placement(), "),", second.context, ")");
      add("SHAPE_REPRESENTATION_RELATIONSHIP('','',", second.representation, ",", shared, ")");
      return;
    }
  }

  /// Further definitions of products, of the same shape or one of their own.
  void make_views() {
    for (const MadeProduct& product : products_) {
      if (!product.has_shape || !chance(12)) continue;
      const Ref view = make_definition(product.formation);
      const Ref shape = add("PRODUCT_DEFINITION_SHAPE('','',", view, ")");
      const Ref shown =
          chance(2)   ? product.representation
          : chance(2) ? product.body_representation
                      : add("SHAPE_REPRESENTATION('',(", placement(), "),", product.context, ")");
      add("SHAPE_DEFINITION_REPRESENTATION(", shape, ",", shown, ")");
    }
  }

  /// A product that another one shows by a mapped item in a representation of its own.
  void make_pieces() {
    if (!chance(4)) return;
    const MadeProduct& piece = any(products_);
    const MadeProduct& whole = any(products_);
    if (!piece.has_shape || !whole.has_shape || piece.shape.record == whole.shape.record) return;
    const Ref map =
        add("REPRESENTATION_MAP(", any(piece.placements), ",", piece.representation, ")");
    const Ref item = add("MAPPED_ITEM('',", map, ",", placement(), ")");
    const Ref shown = add("SHAPE_REPRESENTATION('',(", item, "),", whole.context, ")");
    add("SHAPE_DEFINITION_REPRESENTATION(", whole.shape, ",", shown, ")");
  }

  /// Shapes of aspects, which may share placements with the product's own.
  void make_aspect_shapes() {
    for (MadeProduct& product : products_) {
      if (!product.has_shape || !chance(8)) continue;
      const Ref aspect = add("SHAPE_ASPECT('','',", product.shape, ",.T.)");
      const Ref property = add("PROPERTY_DEFINITION('','',", aspect, ")");
      MadeProduct loose;
      const Ref body = solid(loose);
      const Ref at = chance(2) ? any(product.placements) : placement();
      const Ref shown =
          add("ADVANCED_BREP_SHAPE_REPRESENTATION('',(", body, ",", at, "),", product.context, ")");
      add("SHAPE_DEFINITION_REPRESENTATION(", property, ",", shown, ")");
    }
  }

  /// A relationship without a placement from an assembly to a shape of its component.
  void tie_across() {
    if (!chance(6)) return;
    for (const MadeUsage& usage : usages_) {
      const MadeProduct& whole = products_[usage.assembly];
      const MadeProduct& piece = products_[usage.component];
      if (!whole.has_shape || !piece.has_shape || !chance(3)) continue;
      add("SHAPE_REPRESENTATION_RELATIONSHIP('','',", whole.representation, ",",
          chance(2) ? piece.representation : piece.body_representation, ")");
    }
  }

  /// STYLED_ITEM and those that override it, and the representations that collect them.
  void make_styles() {
    Refs styled_of_all;
    for (MadeProduct& product : products_) {
      Refs styled;
      for (const Ref solid : product.solids) {
        if (!chance(4)) styled.push_back(add("STYLED_ITEM('',(", style_, "),", solid, ")"));
      }
      for (const Ref face : product.faces) {
        if (chance(3)) styled.push_back(add("STYLED_ITEM('',(", style_, "),", face, ")"));
      }
      if (styled.empty()) continue;
      if (chance(2)) {
        add("MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION('',", styled, ",",
            product.context, ")");
      } else {
        styled_of_all.insert(styled_of_all.end(), styled.begin(), styled.end());
      }
      if (chance(4)) override_style(styled[0], product);
      product.styles = styled;
      all_styled_.insert(all_styled_.end(), styled.begin(), styled.end());
    }
    for (const auto* usages : {&usages_, &higher_usages_}) {
      for (const MadeUsage& usage : *usages) {
        if (usage.has_name && chance(2)) style_occurrence(usage, styled_of_all);
        if (traits_.styles_by_place && usage.is_related && chance(6)) {
          style_by_place(usage, styled_of_all);
        }
      }
    }
    if (!styled_of_all.empty()) {
      add("MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION('',", styled_of_all, ",",
          shared_context_, ")");
    }
    if (!all_styled_.empty() && chance(3)) add("INVISIBILITY(", some(all_styled_), ")");
  }

  /// A colour of its own for one occurrence, by the context of its name.
  void style_occurrence(const MadeUsage& usage, Refs& styled) {
    const MadeProduct& product = products_[usage.component];
    if (product.solids.empty()) return;
    const Ref style = add("PRESENTATION_STYLE_BY_CONTEXT((", colour_, "),", usage.name, ")");
    if (product.styles.empty() || chance(2)) {
      styled.push_back(add("STYLED_ITEM('',(", style, "),", any(product.solids), ")"));
    } else {
      styled.push_back(add("OVER_RIDING_STYLED_ITEM('',(", style, "),", any(product.solids), ",",
                           any(product.styles), ")"));
    }
  }

  /// The same by what places it, which may be one level below an assembly's usage.
  void style_by_place(const MadeUsage& usage, Refs& styled) {
    const MadeProduct& product = products_[usage.component];
    if (product.styles.empty()) return;
    const Ref item = chance(3)   ? product.representation
                     : chance(2) ? any(product.faces)
                                 : any(product.solids);
    Refs places;
    for (const MadeUsage& above : usages_) {
      if (above.is_related && above.component == usage.assembly && chance(3)) {
        places.push_back(above.placement);
        break;
      }
    }
    places.push_back(usage.placement);
    styled.push_back(add("CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM('',(", style_, "),", item, ",",
                         any(product.styles), ",", places, ")"));
  }

  /// A colour of its own for one occurrence, said in the assembly's context.
  void override_style(Ref styled, const MadeProduct& product) {
    if (product.solids.empty()) return;
    const MadeUsage* usage = nullptr;
    for (const MadeUsage& candidate : usages_) {
      const bool fits = &products_[candidate.component] == &product && candidate.is_placed;
      if (fits) usage = &candidate;
    }
    if (usage != nullptr && chance(2)) {
      add("CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM('',(", style_, "),", product.solids[0], ",",
          styled, ",(", usage->placement, "))");
    } else {
      const Ref item =
          add("OVER_RIDING_STYLED_ITEM('',(", style_, "),", product.solids[0], ",", styled, ")");
      add("MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION('',(", item, "),",
          product.context, ")");
    }
  }

  void make_layers() {
    Refs items;
    for (const MadeProduct& product : products_) {
      items.insert(items.end(), product.solids.begin(), product.solids.end());
    }
    while (!items.empty() && chance(2)) {
      add("PRESENTATION_LAYER_ASSIGNMENT('same','',", some(items), ")");
    }
  }

  void make_properties() {
    for (const MadeProduct& product : products_) {
      if (chance(3)) {
        const Ref property = add("PROPERTY_DEFINITION('mass','',", product.definition, ")");
        const Ref value =
            add("MEASURE_REPRESENTATION_ITEM('mass',LENGTH_MEASURE(1.),", length_, ")");
        const Ref holder = add("REPRESENTATION('',(", value, "),", product.context, ")");
        add("PROPERTY_DEFINITION_REPRESENTATION(", property, ",", holder, ")");
        const Ref general = add("GENERAL_PROPERTY('','mass','')");
        add("GENERAL_PROPERTY_ASSOCIATION('','',", general, ",", property, ")");
      }
      if (product.has_shape && !product.faces.empty() && chance(3)) make_pmi(product);
    }
    for (const MadeUsage& usage : usages_) {
      if (chance(6)) add("PROPERTY_DEFINITION('remark','',", usage.usage, ")");
    }
  }

  /// A dimension on a face and how it is shown.
  void make_pmi(const MadeProduct& product) {
    const Ref aspect = add("SHAPE_ASPECT('','',", product.shape, ",.T.)");
    add("GEOMETRIC_ITEM_SPECIFIC_USAGE('','',", aspect, ",", product.body_representation, ",",
        product.faces[0], ")");
    const Ref size = add("DIMENSIONAL_SIZE(", aspect, ",'diameter')");
    const Ref value =
        add("(LENGTH_MEASURE_WITH_UNIT()MEASURE_REPRESENTATION_ITEM()MEASURE_WITH_UNIT("
            "LENGTH_MEASURE(2.),",
            length_, ")REPRESENTATION_ITEM('nominal value'))");
    const Ref shown = add("SHAPE_DIMENSION_REPRESENTATION('',(", value, "),", product.context, ")");
    add("DIMENSIONAL_CHARACTERISTIC_REPRESENTATION(", size, ",", shown, ")");
    const Ref plane = add("ANNOTATION_PLANE('',(", style_, "),", placement(), ",$)");
    const Ref model = add("DRAUGHTING_MODEL('',(", plane, "),", product.context, ")");
    add("DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',", size, ",", model, ",", plane, ")");
  }

  void make_management() {
    const Ref person = add("PERSON('1','A','B',$,$,$)");
    const Ref organization = add("ORGANIZATION('1','O','')");
    const Ref both = add("PERSON_AND_ORGANIZATION(", person, ",", organization, ")");
    const Ref role = add("PERSON_AND_ORGANIZATION_ROLE('creator')");
    Refs definitions;
    Refs all_products;
    for (const MadeProduct& product : products_) {
      definitions.push_back(product.definition);
      definitions.push_back(product.formation);
      all_products.push_back(product.product);
    }
    for (const MadeUsage& usage : usages_) definitions.push_back(usage.usage);
    while (!chance(3)) {
      add("APPLIED_PERSON_AND_ORGANIZATION_ASSIGNMENT(", both, ",", role, ",", some(definitions),
          ")");
    }
    const Ref status = add("APPROVAL_STATUS('approved')");
    while (!chance(3)) {
      const Ref approval = add("APPROVAL(", status, ",'')");
      const char* assignment = chance(2) ? "CC_DESIGN_APPROVAL(" : "APPLIED_APPROVAL_ASSIGNMENT(";
      add(assignment, approval, ",", some(definitions), ")");
      add("APPROVAL_PERSON_ORGANIZATION(", both, ",", approval, ",",
          add("APPROVAL_ROLE('approver')"), ")");
      const Ref date = add("CALENDAR_DATE(2026,1,1)");
      add("APPROVAL_DATE_TIME(", date, ",", approval, ")");
    }
    if (chance(2)) {
      const Ref level = add("SECURITY_CLASSIFICATION_LEVEL('unclassified')");
      const Ref security = add("SECURITY_CLASSIFICATION('','',", level, ")");
      add("CC_DESIGN_SECURITY_CLASSIFICATION(", security, ",", some(definitions), ")");
      const Ref approval = add("APPROVAL(", status, ",'')");
      add("CC_DESIGN_APPROVAL(", approval, ",(", security, "))");
    }
    const Ref category = add("PRODUCT_RELATED_PRODUCT_CATEGORY('part',$,", some(all_products), ")");
    const Ref above = add("PRODUCT_CATEGORY('part','kind')");
    if (chance(2)) add("PRODUCT_CATEGORY_RELATIONSHIP('','',", above, ",", category, ")");
  }

  void make_documents() {
    if (chance(2)) return;
    const Ref type = add("DOCUMENT_TYPE('configuration controlled document version')");
    const Ref document = add("DOCUMENT('d','drawing','',", type, ")");
    add("APPLIED_DOCUMENT_REFERENCE(", document, ",'',(", any(products_).definition, "))");
    const Ref material = add("PRODUCT('steel','steel','',(", product_context_, "))");
    const Ref formation = add("PRODUCT_DEFINITION_FORMATION('','',", material, ")");
    const Ref definition = add("PRODUCT_DEFINITION('material definition','',", formation, ",",
                               definition_context_, ")");
    add("MAKE_FROM_USAGE_OPTION('','','',", any(products_).definition, ",", definition, ",1,'',$)");
  }

  /// Names for other files, and a style that another file holds.
  void make_anchors() {
    for (const MadeProduct& product : products_) {
      if (chance(2)) add_anchor(product.definition);
      if (!product.faces.empty() && chance(2)) add_anchor(product.faces[0]);
      if (!product.solids.empty() && chance(3)) {
        // Several names may stand for one style.
        const std::size_t which = externals_ != 0 && chance(2) ? below(externals_) : externals_++;
        const Ref style = records_.add_external("styles.stp#style" + std::to_string(which));
        add("STYLED_ITEM('',(", style, "),", product.solids[0], ")");
      }
    }
  }
  void add_anchor(Ref record) { records_.add_anchor("a" + std::to_string(anchors_++), record); }

  void make_lost_records() {
    while (chance(2))
      add("GENERAL_PROPERTY('nobody','refers to it','" + std::to_string(below(9)) + "')");
    if (chance(3)) add("SHAPE_ASPECT_RELATIONSHIP('','',", lone_aspect(), ",", lone_aspect(), ")");
    if (chance(3)) add("COLOUR_RGB('unused',0.,0.,0.)");
  }

  Ref lone_aspect() {
    for (const MadeProduct& product : products_) {
      if (product.has_shape && chance(2)) return add("SHAPE_ASPECT('','',", product.shape, ",.T.)");
    }
    return add("GENERAL_PROPERTY('','','')");
  }

  std::mt19937_64 random_;
  AssemblyTraits traits_;
  Schema schema_ = SCHEMAS[0];
  Records records_;
  std::size_t anchors_ = 0;
  std::size_t externals_ = 0;
  Ref application_, product_context_, definition_context_, length_, angle_, shared_context_;
  Ref colour_, style_;
  Refs directions_;
  std::vector<MadeProduct> products_;
  std::vector<MadeUsage> usages_;
  std::vector<MadeUsage> higher_usages_;
  Refs all_styled_;
};

}  // namespace

std::string random_assembly(std::uint64_t seed, const AssemblyTraits& traits) {
  return Maker(seed, traits).make();
}

}  // namespace Kessel::test

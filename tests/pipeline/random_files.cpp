#include "random_files.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <initializer_list>
#include <string_view>
#include <vector>

#include "naive/kept_types.h"

namespace Kessel::test {
namespace {

/// Numbers that are the same on every machine (splitmix64).
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  std::uint64_t next() {
    state_ += 0x9E3779B97F4A7C15;
    std::uint64_t z = state_;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
    return z ^ (z >> 31);
  }

  /// A number from 0 to `count` - 1.
  std::uint32_t below(std::size_t count) { return static_cast<std::uint32_t>(next() % count); }
  bool chance(unsigned percent) { return below(100) < percent; }

  template <class List>
  const auto& pick(const List& list) {
    return list[below(std::size(list))];
  }
  std::string_view pick(std::initializer_list<std::string_view> list) {
    return list.begin()[below(list.size())];
  }

  template <class List>
  void shuffle(List& list) {
    for (std::size_t i = list.size(); i > 1; --i) std::swap(list[i - 1], list[below(i)]);
  }

 private:
  std::uint64_t state_;
};

/// What may be wrong, or at least unusual, with a file.
enum Oddity : std::size_t {
  MISSING_REFERENCES,
  REFERENCES_BEYOND_THE_STORE,
  WRONG_REFERENCES,
  SPOILT_REFERENCES,
  LEADING_ZEROS,
  REPEATED_NUMBERS,
  SHORT_RECORDS,
  SPOILT_RECORDS,
  ODD_STRINGS,
  ODD_PRESENTATIONS,
  ODD_CONTEXTS,
  CYCLE_OF_USAGES,
  SELF_USAGE,
  DEFINITIONS_WITHOUT_PRODUCT,
  COMMENTS,
  EMPTY_CHUNK,
  ODD_HEADER,
  UNTERMINATED_END,
  LONG_TEXT,
  ODDITY_COUNT,
};

// Besides KEPT_TYPES: others whose records the splitter looks for, and a few that it does not keep.
constexpr std::string_view OTHER_TYPES[] = {
    "APPLICATION_PROTOCOL_DEFINITION",
    "APPROVAL",
    "CARTESIAN_POINT",
    "CONVERSION_BASED_UNIT",
    "GEOMETRIC_REPRESENTATION_CONTEXT",
    "MAPPED_ITEM",
    "PERSON_AND_ORGANIZATION",
    "PRODUCT_DEFINITION",
    "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS",
    "PRODUCT_RELATED_PRODUCT_CATEGORY",
    "REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION",
};

// Representations of a shape, most of them by the end of their name.
constexpr std::string_view SHAPES[] = {
    "ADVANCED_BREP_SHAPE_REPRESENTATION",
    "ADVANCED_BREP_SHAPE_REPRESENTATION",
    "BEVELED_SHEET_REPRESENTATION",
    "COMPOSITE_SHEET_REPRESENTATION",
    "FACETED_BREP_SHAPE_REPRESENTATION",
    "GEOMETRICALLY_BOUNDED_2D_WIREFRAME_REPRESENTATION",
    "GEOMETRICALLY_BOUNDED_SURFACE_SHAPE_REPRESENTATION",
    "MANIFOLD_SURFACE_SHAPE_REPRESENTATION",
    "NEUTRAL_SKETCH_REPRESENTATION",
    "SHAPE_DIMENSION_REPRESENTATION",
    "SHAPE_REPRESENTATION",
    "SHAPE_REPRESENTATION",
    "SHAPE_REPRESENTATION_WITH_PARAMETERS",
};

constexpr std::string_view USAGES[] = {
    "NEXT_ASSEMBLY_USAGE_OCCURRENCE",      "NEXT_ASSEMBLY_USAGE_OCCURRENCE",
    "NEXT_ASSEMBLY_USAGE_OCCURRENCE",      "ASSEMBLY_COMPONENT_USAGE",
    "QUANTIFIED_ASSEMBLY_COMPONENT_USAGE",
};

/// The records that make up one part of the product.
struct PartRecords {
  std::uint32_t product;
  std::uint32_t formation;
  std::uint32_t definition;
  std::uint32_t shape;
  std::uint32_t representation;
  std::uint32_t placement;
  std::uint32_t solid;
};

/// One exchange file in the making: first the records, then their order and their look.
class RandomFile {
 public:
  explicit RandomFile(std::uint64_t seed) : random_(seed) {
    choose_oddities();
    choose_numbers();
  }

  std::string make() {
    add_surroundings();
    add_parts();
    add_usages();
    add_mapped_items();
    add_styles();
    add_relationships();
    add_extras();
    add_chain();
    return header() + data() + end();
  }

 private:
  struct Record {
    std::uint32_t number;
    std::string body;
  };

  // ---------------------------------------------------------------------------------------------
  // What is odd

  void choose_oddities() {
    std::size_t count = random_.below(100);
    count = count < 50 ? 0 : count < 82 ? 1 : 2;
    for (; count > 0; --count) oddities_[random_.below(ODDITY_COUNT)] = true;
  }

  /// In a file with the oddity: true this often.
  bool odd(Oddity oddity, unsigned percent = 100) {
    return oddities_[oddity] && random_.chance(percent);
  }

  // ---------------------------------------------------------------------------------------------
  // Instance numbers and references

  /// Most files count up. Others jump about, or have records beyond the first block of the store.
  void choose_numbers() {
    const std::uint32_t way = random_.below(100);
    if (way < 45) {
      for (std::uint32_t n = 1; n <= 2000; ++n) free_numbers_.push_back(n);
    } else if (way < 65) {
      for (std::uint32_t n = 10; free_numbers_.size() < 2000; n += 1 + random_.below(30)) {
        free_numbers_.push_back(n);
      }
    } else if (way < 90) {
      for (std::uint32_t n = 1; n <= 2000; ++n) free_numbers_.push_back(n);
      random_.shuffle(free_numbers_);
    } else if (way < 97) {
      const std::uint32_t first = 1'048'576 - random_.below(120);
      for (std::uint32_t n = 0; n < 2000; ++n) free_numbers_.push_back(first + n);
    } else {
      for (std::uint32_t n = 0; n < 2000; ++n) free_numbers_.push_back(3'000'000 - n * 997);
    }
    std::reverse(free_numbers_.begin(), free_numbers_.end());
  }

  std::uint32_t new_number() {
    if (!numbers_.empty() && odd(REPEATED_NUMBERS, 8)) return random_.pick(numbers_);
    numbers_.push_back(free_numbers_.back());
    free_numbers_.pop_back();
    return numbers_.back();
  }

  std::string zeros() {
    return odd(LEADING_ZEROS, 20) ? std::string(1 + random_.below(9), '0') : std::string();
  }

  std::string ref(std::uint32_t number) {
    if (odd(MISSING_REFERENCES, 4)) number = 900'000 + random_.below(1000);
    if (odd(WRONG_REFERENCES, 6)) number = any();
    if (odd(SPOILT_REFERENCES, 3)) {
      return std::string(random_.pick({"#", "#0", "#00", "#x7", "# 5", "#4294967296", "#-1"}));
    }
    if (odd(REFERENCES_BEYOND_THE_STORE, 1)) {
      return std::string(random_.pick({"#1048576", "#2097152", "#3999999", "#4294967295"}));
    }
    return "#" + zeros() + std::to_string(number);
  }

  std::string list(const std::vector<std::uint32_t>& numbers) {
    std::string text;
    for (const std::uint32_t number : numbers) text += (text.empty() ? "" : ",") + ref(number);
    return "(" + text + ")";
  }

  /// Any record that there is, or will be.
  std::uint32_t any() { return numbers_.empty() ? 1 : random_.pick(numbers_); }

  /// A record that extras like to refer to.
  std::uint32_t anchor() {
    if (parts_.empty() || random_.chance(25)) return any();
    const PartRecords& part = random_.pick(parts_);
    const std::uint32_t numbers[] = {part.product,        part.formation, part.definition,
                                     part.definition,     part.shape,     part.shape,
                                     part.representation, part.solid,     part.placement};
    return random_.pick(numbers);
  }

  // ---------------------------------------------------------------------------------------------
  // Records

  void add(std::uint32_t number, std::string body) { records_.push_back({number, body}); }

  std::uint32_t add(std::string body) {
    const std::uint32_t number = new_number();
    add(number, std::move(body));
    return number;
  }

  std::string text() {
    if (odd(ODD_STRINGS, 25)) {
      return std::string(random_.pick({"'a;b'", "'a ; b'", "'a);b'", "'#1'", "'#'", "'it''s'",
                                       "''''", "'(,'", "'),('", "';'", "'x;;y'", "'a,b'",
                                       "'ENDSEC;'", "'open", "'\\X2\\00C4\\X0\\'", "'\xC3\x84\xFF'",
                                       "'two\nlines'", "'/* no comment */'"}));
    }
    return std::string(random_.pick({"''", "'a'", "'part'", "'#3'", "'it''s'"}));
  }

  void add_surroundings() {
    application_ = add("APPLICATION_CONTEXT(" + text() + ")");
    if (random_.chance(50)) {
      add("APPLICATION_PROTOCOL_DEFINITION('',''," + ref(application_) + ")");
    }
    definition_context_ =
        add("PRODUCT_DEFINITION_CONTEXT(" + text() + "," + ref(application_) + ",'')");
    const std::uint32_t exponents = add("DIMENSIONAL_EXPONENTS(1.,0.,0.)");
    const std::uint32_t measure = add("LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(25.4),$)");
    unit_ = add("( CONVERSION_BASED_UNIT('INCH'," + ref(measure) + ") LENGTH_UNIT() NAMED_UNIT(" +
                ref(exponents) + ") )");
    for (std::size_t count = 1 + random_.below(3); count > 0; --count) {
      contexts_.push_back(add(context()));
    }
  }

  std::string context() {
    if (odd(ODD_CONTEXTS, 60)) {
      return std::string(random_.pick({
          "GEOMETRIC_REPRESENTATION_CONTEXT()",
          "GEOMETRIC_REPRESENTATION_CONTEXT('id')",
          "GEOMETRIC_REPRESENTATION_CONTEXT('id',3)",
          "GEOMETRIC_REPRESENTATION_CONTEXT('i,d','3D',3)",
          "GEOMETRIC_REPRESENTATION_CONTEXT(,,)",
          "GEOMETRIC_REPRESENTATION_CONTEXT /* , */ ('','',3)",
          "PARAMETRIC_REPRESENTATION_CONTEXT('',$)",
      }));
    }
    if (random_.chance(50)) {
      return "GEOMETRIC_REPRESENTATION_CONTEXT(" + text() + "," +
             (random_.chance(30) ? ref(unit_) : "'3D'") + ",3)";
    }
    return "( GEOMETRIC_REPRESENTATION_CONTEXT(3) GLOBAL_UNIT_ASSIGNED_CONTEXT((" + ref(unit_) +
           ")) REPRESENTATION_CONTEXT(" + text() + ",'3D') )";
  }

  void add_parts() {
    static constexpr std::size_t COUNTS[] = {1, 2, 2, 3, 3, 3, 4, 4, 5, 6, 7, 8};
    std::size_t count = random_.pick(COUNTS);
    if (random_.chance(2)) count = 0;
    if (random_.chance(1)) count = 52 + random_.below(8);
    for (; count > 0; --count) parts_.push_back(add_part());
  }

  PartRecords add_part() {
    PartRecords part;
    const bool shares_product = !parts_.empty() && random_.chance(12);
    const bool shares_formation = !parts_.empty() && random_.chance(8);
    part.product = shares_product ? random_.pick(parts_).product
                                  : add("PRODUCT(" + text() + "," + text() + ",'',())");
    part.formation =
        shares_formation
            ? random_.pick(parts_).formation
            : add("PRODUCT_DEFINITION_FORMATION(" + text() + ",''," + ref(part.product) + ")");
    part.definition = add(definition(part.formation));
    part.shape = add("PRODUCT_DEFINITION_SHAPE('',''," + ref(part.definition) + ")");
    part.placement =
        add("AXIS2_PLACEMENT_3D(''," + ref(add("CARTESIAN_POINT('',(0.,0.,0.))")) + ",$,$)");
    part.solid = add("MANIFOLD_SOLID_BREP(''," + ref(add("CLOSED_SHELL('',())")) + ")");
    add_representation(part);
    return part;
  }

  std::string definition(std::uint32_t formation) {
    const std::string strings = text() + ",'',";
    const std::string context = "," + ref(definition_context_);
    if (odd(DEFINITIONS_WITHOUT_PRODUCT, 40)) {
      switch (random_.below(3)) {
        case 0:
          return "PRODUCT_DEFINITION(" + strings + "$" + context + ")";
        case 1:  // Leads to a product, though not by its first reference.
          return "PRODUCT_DEFINITION(" + strings + "#899999" + context + "," + ref(formation) + ")";
        default:
          return "PRODUCT_DEFINITION()";
      }
    }
    if (random_.chance(15)) {
      return "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS(" + strings + ref(formation) + context +
             ",())";
    }
    return "PRODUCT_DEFINITION(" + strings + ref(formation) + context + ")";
  }

  /// The part's shape: a placement for an assembly's sake, mostly with a solid; sometimes the solid
  /// hangs in a representation of its own.
  void add_representation(PartRecords& part) {
    const std::uint32_t context = random_.pick(contexts_);
    std::vector<std::uint32_t> items = {part.placement};
    const std::uint32_t kind = random_.below(10);
    if (kind < 4) items.push_back(part.solid);
    part.representation = add(std::string(random_.pick(SHAPES)) + "(" + text() + "," + list(items) +
                              "," + ref(context) + ")");
    if (kind > 6) {
      const std::uint32_t other =
          add("ADVANCED_BREP_SHAPE_REPRESENTATION(''," + list({part.solid, part.placement}) + "," +
              ref(context) + ")");
      add("SHAPE_REPRESENTATION_RELATIONSHIP('',''," + ref(part.representation) + "," + ref(other) +
          ")");
    }
    if (random_.chance(90)) {
      add("SHAPE_DEFINITION_REPRESENTATION(" + ref(part.shape) + "," + ref(part.representation) +
          ")");
    }
    if (odd(SHORT_RECORDS, 20)) {
      add("SHAPE_DEFINITION_REPRESENTATION(" + (random_.chance(50) ? ref(part.shape) : "") + ")");
    }
  }

  // ---------------------------------------------------------------------------------------------
  // Assemblies

  void add_usages() {
    // Each part hangs below an earlier one, a few below none: the first part is the usual root.
    for (std::size_t child = 1; child < parts_.size(); ++child) {
      if (random_.chance(6)) continue;
      const std::size_t parent = random_.chance(40) ? 0 : random_.below(child);
      for (std::size_t times = random_.chance(15) ? 2 : 1; times > 0; --times) {
        add_usage(parent, child);
      }
      if (random_.chance(10)) add_usage(random_.below(child), child);
    }
    if (parts_.empty()) return;
    if (odd(CYCLE_OF_USAGES)) add_usage(parts_.size() - 1, 0);
    if (odd(SELF_USAGE)) {
      const std::size_t part = random_.below(parts_.size());
      add_usage(part, part);
    }
    if (random_.chance(10)) add_unclaimed_definition();
    for (const std::string_view type : USAGES) {
      if (odd(SHORT_RECORDS, 40)) {
        add(std::string(type) + "('',''" + (random_.chance(70) ? "," + ref(anchor()) : "") + ")");
      }
    }
  }

  void add_usage(std::size_t parent_index, std::size_t child_index) {
    const PartRecords& parent = parts_[parent_index];
    const PartRecords& child = parts_[child_index];
    const std::string_view type = random_.pick(USAGES);
    const std::string more = type == USAGES[4] ? "," + ref(unit_) : ",$";
    const std::uint32_t usage =
        add(std::string(type) + "(" + text() + ",'',''," + ref(parent.definition) + "," +
            ref(child.definition) + more + ")");
    if (random_.chance(40)) return;
    const std::uint32_t shape = add("PRODUCT_DEFINITION_SHAPE('',''," + ref(usage) + ")");
    const std::uint32_t transformation =
        add("ITEM_DEFINED_TRANSFORMATION('',''," + ref(parent.placement) + "," +
            ref(child.placement) + ")");
    const std::uint32_t relation =
        add("( REPRESENTATION_RELATIONSHIP(" + text() + ",''," + ref(child.representation) + "," +
            ref(parent.representation) + ") REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(" +
            ref(transformation) + ") SHAPE_REPRESENTATION_RELATIONSHIP() )");
    add("CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(" + ref(relation) + "," + ref(shape) + ")");
  }

  /// A component whose definition leads to no product, with something below it.
  void add_unclaimed_definition() {
    const std::uint32_t point = add("CARTESIAN_POINT('unclaimed',(1.,1.,1.))");
    const std::uint32_t formation = add("FORMATION(" + ref(point) + ")");
    const std::uint32_t definition = add("PRODUCT_DEFINITION('',''," + ref(formation) + ",$)");
    const std::uint32_t below = add("PRODUCT_DEFINITION('below',''," + ref(formation) + ",$)");
    add("NEXT_ASSEMBLY_USAGE_OCCURRENCE('','',''," + ref(random_.pick(parts_).definition) + "," +
        ref(definition) + ",$)");
    add("NEXT_ASSEMBLY_USAGE_OCCURRENCE('','',''," + ref(definition) + "," + ref(below) + ",$)");
  }

  void add_mapped_items() {
    if (parts_.empty() || !random_.chance(15)) return;
    for (std::size_t count = 1 + random_.below(2); count > 0; --count) {
      const PartRecords& part = random_.pick(parts_);
      const std::uint32_t map =
          add("REPRESENTATION_MAP(" + (random_.chance(50) ? ref(part.placement) + "," : "") +
              ref(part.representation) + ")");
      const std::uint32_t item =
          add("MAPPED_ITEM(" + text() + "," + ref(map) + "," + ref(part.placement) + ")");
      if (random_.chance(60)) {
        const std::uint32_t shape = add("SHAPE_REPRESENTATION(''," + list({item, part.placement}) +
                                        "," + ref(random_.pick(contexts_)) + ")");
        add("SHAPE_DEFINITION_REPRESENTATION(" +
            ref(random_.chance(70) ? random_.pick(parts_).shape : item) + "," + ref(shape) + ")");
      }
    }
  }

  // ---------------------------------------------------------------------------------------------
  // Presentation, relationships, and everything else

  void add_styles() {
    if (parts_.empty() || random_.chance(30)) return;
    const std::uint32_t style = add("PRESENTATION_STYLE_ASSIGNMENT(())");
    std::vector<std::uint32_t> items;
    for (const PartRecords& part : parts_) {
      if (random_.chance(40)) continue;
      items.push_back(
          add("STYLED_ITEM(" + text() + "," + list({style}) + "," + ref(part.solid) + ")"));
      if (random_.chance(20)) {
        items.push_back(add(
            std::string(random_.pick(
                {"OVER_RIDING_STYLED_ITEM", "CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM"})) +
            "(''," + list({style}) + "," + ref(part.placement) + "," + ref(items.back()) + ")"));
      }
    }
    for (std::size_t count = 1 + random_.below(2); count > 0; --count) {
      add(presentation(items, random_.pick(contexts_)));
    }
    if (random_.chance(20)) add("INVISIBILITY(" + list(items) + ")");
    if (random_.chance(20)) add("PRESENTATION_LAYER_ASSIGNMENT('',''," + list(items) + ")");
  }

  std::string presentation(const std::vector<std::uint32_t>& items, std::uint32_t context) {
    const std::string keyword = "MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION";
    const std::string last = ref(context);
    if (!odd(ODD_PRESENTATIONS))
      return keyword + "(" + text() + "," + list(items) + "," + last + ")";
    switch (random_.below(11)) {
      case 0:
        return keyword + "('a)b'," + list(items) + "," + last + ")";
      case 1:
        return keyword + "('a(b'," + list(items) + "," + last + ")";
      case 2:
        return keyword + "(''," + (items.empty() ? "$" : ref(items.front())) + "," + last + ")";
      case 3:
        return keyword + "('')";
      case 4:
        return keyword + "(''," + list(items) + ")";
      case 5:
        return keyword + "(''," + list(items) + "," + last + ",'#" + std::to_string(any()) + "')";
      case 6:
        return keyword + "(" + list(items) + last + ")";
      case 7:
        return "(" + keyword + "(" + list(items) + "," + last + ")SHAPE_REPRESENTATION())";
      case 8:
        return keyword + "('#" + std::to_string(any()) + "'," + list(items) + ",$)";
      case 9:
        return keyword + "(''," + list(items) + "," + list({context}) + ",'it''s')";
      default:
        return keyword + "(" + list({}) + "," + last + "," + list(items) + ")";
    }
  }

  /// Chains of categories and properties, along which parts climb.
  void add_relationships() {
    if (parts_.empty() || random_.chance(50)) return;
    std::vector<std::uint32_t> categories;
    std::vector<std::uint32_t> properties;
    for (std::size_t i = 0; i < 4; ++i) {
      const PartRecords& part = random_.pick(parts_);
      const std::string products = random_.chance(50) ? list({part.product}) : "()";
      categories.push_back(add("PRODUCT_RELATED_PRODUCT_CATEGORY('',''," + products + ")"));
      properties.push_back(add("GENERAL_PROPERTY('',''," + text() + ")"));
      const std::uint32_t property = add("PROPERTY_DEFINITION('',''," + ref(part.definition) + ")");
      if (random_.chance(50)) {
        add("GENERAL_PROPERTY_ASSOCIATION('',''," + ref(properties.back()) + "," + ref(property) +
            ")");
      }
    }
    for (std::size_t i = 0; i < 6; ++i) {
      add("PRODUCT_CATEGORY_RELATIONSHIP('',''," + ref(random_.pick(categories)) + "," +
          ref(random_.pick(categories)) + ")");
      add("GENERAL_PROPERTY_RELATIONSHIP('',''," + ref(random_.pick(properties)) + "," +
          ref(random_.pick(properties)) + ")");
      if (odd(SHORT_RECORDS, 30)) {
        add("PRODUCT_CATEGORY_RELATIONSHIP('',''," + ref(random_.pick(categories)) + ")");
        add("GENERAL_PROPERTY_RELATIONSHIP('','')");
      }
    }
  }

  std::string_view any_type() {
    const std::size_t of_kept = std::size(naive::KEPT_TYPES);
    const std::size_t place = random_.below(of_kept + std::size(OTHER_TYPES));
    return place < of_kept ? naive::KEPT_TYPES[place] : OTHER_TYPES[place - of_kept];
  }

  /// Records of any type that refer to this and that, also to each other.
  void add_extras() {
    std::vector<std::uint32_t> extras;
    const std::size_t count = random_.below(25);
    for (std::size_t i = 0; i < count; ++i) extras.push_back(new_number());
    for (const std::uint32_t extra : extras) {
      const std::string keyword(any_type());
      std::string attributes = random_.chance(70) ? text() : "$";
      std::size_t references = 1 + random_.below(4);
      if (odd(SHORT_RECORDS, 40)) references = 0;
      for (; references > 0; --references) {
        const std::uint32_t to = random_.chance(70) ? anchor() : random_.pick(extras);
        attributes += "," + (random_.chance(20) ? list({to, anchor()}) : ref(to));
      }
      const std::string record = keyword + "(" + attributes + ")";
      add(extra, random_.chance(8) ? "(" + record + "REPRESENTATION_ITEM('x'))" : record);
    }
  }

  /// Records that no pass asks for, each of which refers to the next and the last to the product.
  void add_chain() {
    if (parts_.empty() || random_.chance(70)) return;
    std::vector<std::uint32_t> links;
    for (std::size_t count = 3 + random_.below(25); count > 0; --count) {
      links.push_back(new_number());
    }
    if (random_.chance(30)) std::reverse(links.begin(), links.end());
    for (std::size_t i = 0; i < links.size(); ++i) {
      const bool last = i + 1 == links.size();
      add(links[i],
          "CHAIN_LINK(" + ref(last ? random_.pick(parts_).definition : links[i + 1]) + ")");
    }
  }

  // ---------------------------------------------------------------------------------------------
  // The text of the file

  std::string line_end() const { return crlf_ ? "\r\n" : "\n"; }

  std::string header() {
    crlf_ = random_.chance(15);
    const std::string eol = line_end();
    if (odd(ODD_HEADER)) return odd_header(eol);
    return "ISO-10303-21;" + eol + "HEADER;" + eol + "FILE_DESCRIPTION((''),'2;1');" + eol +
           "FILE_NAME('in.stp','2020-02-02T02:02:02',(''),(''),'','','');" + eol +
           "FILE_SCHEMA(('AUTOMOTIVE_DESIGN'));" + eol + "ENDSEC;" + eol + "DATA;" + eol;
  }

  std::string odd_header(const std::string& eol) {
    const std::string first(random_.pick({"ISO-10303-21;", " ISO-10303-21; ", "ISO-10303-21", ""}));
    const std::string body(random_.pick({
        "",
        "FILE_DESCRIPTION((''),'2;1');\nFILE_SCHEMA(('A','B','C'));\n",
        "FILE_DESCRIPTION($);\n",
        "FILE_NAME($);\n",
        "FILE_NAME('only name');\n",
        "FILE_NAME('open);\n",
        "FILE_NAME('','');\n",
        "FILE_NAME('it''s','2020',(''));\n",
        "FILE_NAME(\n  /* name */ 'in.stp',\n\t/* time */ '2020',\n  (''), (''), '', '', '');\n",
        "FILE_DESCRIPTION(('FILE_NAME'),'2;1');\nFILE_NAME('in.stp','2020',(''),(''),'','','');\n",
        "#1=PRODUCT('in the header','',());\nFILE_NAME('a;b','2020');\n",
    }));
    const std::string last(random_.pick({
        "ENDSEC;\nDATA;\n",
        "ENDSEC; DATA;\nENDSEC;\n",
        "ENDSEC ;\nENDSEC;\n",
        "  ENDSEC;  \n\n\nDATA ;\n",
        "FILE_SCHEMA(('X'));ENDSEC;\nDATA;\n",
        "ENDSEC;\n",
        "ENDSEC ;\nDATA;\n",
    }));
    std::string text = first + "\nHEADER;\n" + body + last;
    for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += eol.size()) {
      text.replace(at, 1, eol);
    }
    return text;
  }

  std::string data() {
    arrange();
    const std::size_t empty_at = odd(EMPTY_CHUNK) ? random_.below(records_.size() + 1) : SIZE_MAX;
    const std::size_t long_at = odd(LONG_TEXT) ? random_.below(records_.size() + 1) : SIZE_MAX;
    std::string text;
    for (std::size_t i = 0; i < records_.size(); ++i) {
      if (i == empty_at) text += " ;" + line_end();
      if (i == long_at) text += long_text();
      if (odd(SPOILT_RECORDS, 8)) text += spoilt_record() + line_end();
      text += record_text(records_[i]);
      text += random_.chance(10) ? std::string(random_.pick({"", " ", "\t"})) : line_end();
    }
    return text;
  }

  /// Text that leads up to, or beyond, the size of the blocks in which files are read.
  std::string long_text() {
    if (random_.chance(50)) return std::string(261'000 + random_.below(1200), 'x') + ";";
    return "#" + std::to_string(any()) + "=STYLED_ITEM('" + std::string(270'000, 'x') + "',()," +
           ref(anchor()) + ");";
  }

  /// Most files list their records as they were made, others by number or in any order.
  void arrange() {
    const std::uint32_t way = random_.below(100);
    if (way < 25) {
      std::stable_sort(records_.begin(), records_.end(),
                       [](const Record& a, const Record& b) { return a.number < b.number; });
    } else if (way < 50) {
      random_.shuffle(records_);
    } else if (way < 60) {
      std::reverse(records_.begin(), records_.end());
    }
  }

  std::string record_text(const Record& record) {
    std::string text = "#" + zeros() + std::to_string(record.number);
    text +=
        random_.chance(80) ? "=" : std::string(random_.pick({" = ", " =\n", "\t=\r\n  ", "= "}));
    text += record.body;
    if (odd(COMMENTS, 15)) {
      switch (random_.below(4)) {
        case 0:  // The record is lost with its comment.
          return "/* a comment */ " + text + ";";
        case 1:  // The next record is.
          return text + "; /* a comment */";
        case 2:
          return text + " /* #1, it's */;";
        default:
          return "/* a comment; " + text + ";";
      }
    }
    return text + (random_.chance(95) ? ";" : " ;");
  }

  /// Something in the place of a record that is none, or that is lost.
  std::string spoilt_record() {
    const std::string number = std::to_string(any());
    switch (random_.below(12)) {
      case 0:
        return "#" + number + "=();";
      case 1:
        return "#" + number + "=NO_PARENTHESES;";
      case 2:
        return "#" + number + "PRODUCT('','',());";
      case 3:
        return "#=PRODUCT('','',());";
      case 4:
        return "#0=PRODUCT('','',());";
      case 5:
        return "#4294967296=PRODUCT('','',());";
      case 6:  // Without a type it is not read, but its number is looked up when files are written.
        return "#" + std::to_string(1'048'576 * (1 + random_.below(3))) + "=();";
      case 7:
        return "#" + number + "=X(')";
      case 8:
        return "stray text;";
      case 9:
        return "#" + number + "= (#" + number + ");";
      case 10:
        return "# " + number + "=PRODUCT('','',());";
      default:
        return "#" + number + "=PRODUCT('',#0,#" + std::to_string(2'000'000 + any()) + ");";
    }
  }

  std::string end() {
    const std::string eol = line_end();
    if (odd(UNTERMINATED_END)) {
      return std::string(random_.pick({"", "ENDSEC;", "\n \t\n", ";", "ENDSEC;\nEND-ISO-10303-21",
                                       "ENDSEC;\nEND-ISO-10303-21;\nstray", "#1=PRODUCT('','',())",
                                       "ENDSEC;DATA;#1=PRODUCT('','',());ENDSEC;"}));
    }
    return "ENDSEC;" + eol + "END-ISO-10303-21;" + eol;
  }

  Random random_;
  std::array<bool, ODDITY_COUNT> oddities_{};
  std::vector<std::uint32_t> free_numbers_;  // the next one last
  std::vector<std::uint32_t> numbers_;       // given out
  std::vector<Record> records_;
  std::vector<PartRecords> parts_;
  std::vector<std::uint32_t> contexts_;
  std::uint32_t application_ = 0;
  std::uint32_t definition_context_ = 0;
  std::uint32_t unit_ = 0;
  bool crlf_ = false;
};

}  // namespace

std::string random_exchange_file(std::uint64_t seed) {
  return RandomFile(seed).make();
}

}  // namespace Kessel::test

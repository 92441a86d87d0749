#include "join/product_shapes.h"

#include <algorithm>
#include <iterator>

#include "exchange/parameters.h"

namespace Kessel {

namespace {

/// The first record that `record` refers to and of which `fits(keyword)` holds.
template <class Fits>
Index first_reference(const Instances& instances, Index record, Fits fits) {
  for (const Reference reference : instances.references(record)) {
    if (reference.record() == NO_RECORD) continue;
    const auto& keywords = instances.types().keywords(instances.type(reference.record()));
    if (std::any_of(keywords.begin(), keywords.end(), fits)) return reference.record();
  }
  return NO_RECORD;
}

bool is_definition_keyword(std::string_view keyword) {
  return keyword == "PRODUCT_DEFINITION" ||
         keyword == "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS";
}

/// Whether a PROPERTY_DEFINITION_REPRESENTATION that refers to such a record ties a shape to a
/// definition, as some systems write it.
bool is_shape_keyword(std::string_view keyword) {
  return keyword.ends_with("SHAPE_REPRESENTATION");
}

/// The usages that make one definition a component of another.
constexpr std::string_view USAGES[] = {
    "ASSEMBLY_COMPONENT_USAGE",          "NEXT_ASSEMBLY_USAGE_OCCURRENCE",
    "PROMISSORY_USAGE_OCCURRENCE",       "QUANTIFIED_ASSEMBLY_COMPONENT_USAGE",
    "SPECIFIED_HIGHER_USAGE_OCCURRENCE",
};

bool is_usage(std::string_view keyword) {
  return std::find(std::begin(USAGES), std::end(USAGES), keyword) != std::end(USAGES);
}

}  // namespace

bool is_product_definition(const Instances& instances, Index record) {
  const auto& keywords = instances.types().keywords(instances.type(record));
  return std::any_of(keywords.begin(), keywords.end(), is_definition_keyword);
}

Index formation_of(const Instances& instances, Index definition) {
  return first_reference(instances, definition, [](std::string_view keyword) {
    return keyword.starts_with("PRODUCT_DEFINITION_FORMATION");
  });
}

Index product_of(const Instances& instances, Index definition) {
  const Index formation = formation_of(instances, definition);
  if (formation == NO_RECORD) return NO_RECORD;
  return first_reference(instances, formation,
                         [](std::string_view keyword) { return keyword == "PRODUCT"; });
}

std::string_view product_id(const Instances& instances, Index definition) {
  const Index product = product_of(instances, definition);
  if (product == NO_RECORD) return {};
  return Exchange::parameter(Exchange::parameters_of(instances.kept_body(product), "PRODUCT"), 0);
}

ProductShapes::ProductShapes(const Instances& instances) : instances_(instances) {
  for (const Index link : instances.kept()) {
    const bool is_link = instances.is(link, "SHAPE_DEFINITION_REPRESENTATION");
    if (!is_link && !instances.is(link, "PROPERTY_DEFINITION_REPRESENTATION")) continue;
    const auto references = instances.references(link);
    if (references.size() < 2) continue;
    const Index shape = references[0].record();
    const Index representation = references[1].record();
    if (shape == NO_RECORD || representation == NO_RECORD) continue;
    if (!instances.is(shape, "PRODUCT_DEFINITION_SHAPE")) continue;
    const auto& keywords = instances.types().keywords(instances.type(representation));
    if (!is_link && std::none_of(keywords.begin(), keywords.end(), is_shape_keyword)) continue;
    const Index definition = first_reference(instances, shape, is_definition_keyword);
    if (definition == NO_RECORD) continue;
    links_.push_back({definition, shape, link, representation});
    definitions_.emplace(representation, definition);
  }
  std::stable_sort(links_.begin(), links_.end(), [](const ShapeLink& a, const ShapeLink& b) {
    return a.definition < b.definition;
  });
}

std::span<const ShapeLink> ProductShapes::of(Index definition) const {
  const auto [first, end] = std::equal_range(
      links_.begin(), links_.end(), ShapeLink{.definition = definition},
      [](const ShapeLink& a, const ShapeLink& b) { return a.definition < b.definition; });
  return {first, end};
}

Index ProductShapes::definition_of(Index representation) const {
  const auto found = definitions_.find(representation);
  return found == definitions_.end() ? NO_RECORD : found->second;
}

std::vector<Index> ProductShapes::tops() const {
  std::vector<Index> components;
  std::vector<Index> definitions;
  for (const Index record : instances_.kept()) {
    if (is_product_definition(instances_, record)) definitions.push_back(record);
    const auto& keywords = instances_.types().keywords(instances_.type(record));
    if (std::none_of(keywords.begin(), keywords.end(), is_usage)) continue;
    const auto references = instances_.references(record);
    if (references.size() < 2 || references[0].record() == references[1].record()) continue;
    components.push_back(references[1].record());
  }
  std::sort(components.begin(), components.end());
  std::vector<Index> tops;
  std::vector<Index> with_shape;
  for (const Index definition : definitions) {
    if (std::binary_search(components.begin(), components.end(), definition)) continue;
    tops.push_back(definition);
    if (!of(definition).empty()) with_shape.push_back(definition);
  }
  return with_shape.empty() ? tops : with_shape;
}

}  // namespace Kessel

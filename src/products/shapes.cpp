// Which shapes there are, what they are the shapes of, and which representations show them.
#include <algorithm>

#include "products/parameter_reader.h"
#include "products/structure.h"

namespace Kessel {

namespace {

bool has_keyword_ending(const Instances& instances, Index record, std::string_view ending) {
  const auto& keywords = instances.types().keywords(instances.type(record));
  return std::any_of(keywords.begin(), keywords.end(),
                     [&](std::string_view keyword) { return keyword.ends_with(ending); });
}

}  // namespace

bool is_shape_representation(const Instances& instances, Index record) {
  // A CONTEXT_DEPENDENT_SHAPE_REPRESENTATION relates representations, and is none.
  if (instances.is(record, "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION")) return false;
  return has_keyword_ending(instances, record, "SHAPE_REPRESENTATION") ||
         has_keyword_ending(instances, record, "CONSTRUCTIVE_GEOMETRY_REPRESENTATION");
}

Shapes find_shapes(const Instances& instances) {
  Shapes shapes;
  for (const Index shape : instances.kept_with("PRODUCT_DEFINITION_SHAPE")) {
    const Index subject = ParameterReader(instances, shape, "PROPERTY_DEFINITION").record(2);
    if (subject != NO_RECORD) shapes.of[subject].push_back(shape);
  }
  const auto add_links = [&](std::string_view keyword, bool must_be_shape) {
    for (const Index link : instances.kept_with(keyword)) {
      const ParameterReader parameters(instances, link, "PROPERTY_DEFINITION_REPRESENTATION");
      const Index shape = parameters.record(0);
      const Index representation = parameters.record(1);
      if (shape == NO_RECORD || representation == NO_RECORD) continue;
      if (!instances.is(shape, "PRODUCT_DEFINITION_SHAPE")) continue;
      // In a complex instance of both keywords it was a link already.
      if (must_be_shape && (!is_shape_representation(instances, representation) ||
                            instances.is(link, "SHAPE_DEFINITION_REPRESENTATION"))) {
        continue;
      }
      shapes.links[shape].push_back({link, shape, representation});
    }
  };
  add_links("SHAPE_DEFINITION_REPRESENTATION", false);
  add_links("PROPERTY_DEFINITION_REPRESENTATION", true);
  return shapes;
}

}  // namespace Kessel

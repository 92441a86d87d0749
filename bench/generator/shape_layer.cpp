// One layer: many small parts that share a placement, all of them on one layer.

#include <cstdint>
#include <string>
#include <vector>

#include "geometry_records.h"
#include "shapes.h"
#include "simple_parts.h"

namespace Kessel::bench {
namespace {

// Writes a part that is a set of one point, placed from `origin`; returns the set.
InstanceId write_point_part(StepWriter& out, const ProductContexts& contexts,
                            InstanceId geometric_context, InstanceId origin,
                            const std::string& name, std::vector<Usage>& usages) {
  const Product product = write_product(out, contexts, name);
  const double x = 10.0 * static_cast<double>(usages.size());
  const InstanceId point = write_point(out, {1.0, 2.0, 3.0});
  const InstanceId set = out.add("GEOMETRIC_SET", "", list(point));
  Component part;
  part.definition = product.definition;
  part.origin = origin;
  part.representation = out.add("GEOMETRICALLY_BOUNDED_SURFACE_SHAPE_REPRESENTATION", "",
                                list(set, origin), geometric_context);
  write_shape_definition(out, product, part.representation);
  usages.push_back(usage_at(part, name, {x, 0.0, 0.0}));
  return set;
}

}  // namespace

void write_one_layer(StepWriter& out, Random&, std::uint32_t size) {
  const ProductContexts contexts = write_product_contexts(out);
  const InstanceId geometric_context = write_own_context(out);
  const InstanceId origin = write_placement(out, {});
  std::vector<Usage> usages;
  std::vector<InstanceId> sets;
  for (std::uint32_t i = 0; i < size; ++i) {
    sets.push_back(write_point_part(out, contexts, geometric_context, origin,
                                    "Mark " + std::to_string(i + 1), usages));
  }
  write_assembly(out, contexts, geometric_context, "Marks", usages);
  out.add("PRESENTATION_LAYER_ASSIGNMENT", "marks", "", sets);
}

}  // namespace Kessel::bench

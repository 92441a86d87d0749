// Small parts: many boxes directly under one assembly.

#include <cstdint>
#include <string>
#include <vector>

#include "shapes.h"
#include "simple_parts.h"

namespace Kessel::bench {

void write_small_parts(StepWriter& out, Random& random, std::uint32_t size) {
  const std::uint32_t per_row = 100;
  const double pitch = 60.0;
  const ProductContexts contexts = write_product_contexts(out);
  std::vector<Usage> usages;
  for (std::uint32_t i = 0; i < size; ++i) {
    const std::string name = "Block " + std::to_string(i + 1);
    const Vec3 edges{random.length(5.0, 50.0), random.length(5.0, 50.0), random.length(5.0, 50.0)};
    const Component part = write_box_part(out, contexts, name, edges, random_colour(random));
    usages.push_back(usage_at(part, name, {pitch * (i % per_row), pitch * (i / per_row), 0.0}));
  }
  const InstanceId geometric_context = write_own_context(out);
  write_assembly(out, contexts, geometric_context, "Box of blocks", usages);
}

}  // namespace Kessel::bench

// Ladder: every assembly uses the next one twice, so that a few records stand for 2^size boxes.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "shapes.h"
#include "simple_parts.h"

namespace Kessel::bench {

void write_ladder(StepWriter& out, Random& random, std::uint32_t size) {
  const ProductContexts contexts = write_product_contexts(out);
  const Vec3 edges{2.0, 3.0, 4.0};
  Component lower = write_box_part(out, contexts, "Rung", edges, random_colour(random));
  for (std::uint32_t level = 1; level <= size; ++level) {
    const InstanceId geometric_context = write_own_context(out);
    // The directions take turns and the distance doubles after each turn, so that nothing overlaps;
    // the limit keeps very long ladders within sensible lengths.
    const double distance = std::ldexp(10.0, static_cast<int>(std::min(level - 1, 90U) / 3));
    const Vec3 offset = level % 3 == 1   ? Vec3{distance, 0.0, 0.0}
                        : level % 3 == 2 ? Vec3{0.0, distance, 0.0}
                                         : Vec3{0.0, 0.0, distance};
    const std::vector<Usage> usages{usage_at(lower, "Left", {}), usage_at(lower, "Right", offset)};
    lower =
        write_assembly(out, contexts, geometric_context, "Level " + std::to_string(level), usages);
  }
}

}  // namespace Kessel::bench

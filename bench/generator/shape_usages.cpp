// Small assemblies that differ in how components are used.

#include <cstdint>
#include <string>
#include <vector>

#include "shapes.h"
#include "simple_parts.h"

namespace Kessel::bench {
namespace {

constexpr Vec3 BOLT_SIZE{4.0, 4.0, 20.0};

}  // namespace

void write_shared_levels(StepWriter& out, Random& random, std::uint32_t size) {
  const ProductContexts contexts = write_product_contexts(out);
  const Component bolt = write_box_part(out, contexts, "Bolt", BOLT_SIZE, random_colour(random));
  Component lower =
      write_box_part(out, contexts, "Ground plate", {40.0, 40.0, 5.0}, random_colour(random));
  for (std::uint32_t level = 1; level <= size; ++level) {
    const InstanceId geometric_context = write_own_context(out);
    // Each level stands the one below it a little higher and adds two bolts.
    const std::vector<Usage> usages{usage_at(bolt, "Left bolt", {0.0, 50.0, 0.0}),
                                    usage_at(lower, "Lower level", {0.0, 0.0, 30.0}),
                                    usage_at(bolt, "Right bolt", {30.0, 50.0, 0.0})};
    lower =
        write_assembly(out, contexts, geometric_context, "Level " + std::to_string(level), usages);
  }
}

void write_several_usages(StepWriter& out, Random& random, std::uint32_t size) {
  const ProductContexts contexts = write_product_contexts(out);
  const Component bolt = write_box_part(out, contexts, "Bolt", BOLT_SIZE, random_colour(random));
  std::vector<Usage> usages;
  for (std::uint32_t i = 0; i < size; ++i) {
    // Every second bolt lies along the x axis.
    Usage usage = usage_at(bolt, "Bolt " + std::to_string(i + 1), {0.0, 10.0 * i, 0.0});
    if (i % 2 == 1) {
      usage.placement.axis = {1.0, 0.0, 0.0};
      usage.placement.ref_direction = {0.0, 0.0, -1.0};
    }
    usages.push_back(usage);
  }
  const InstanceId geometric_context = write_own_context(out);
  write_assembly(out, contexts, geometric_context, "Bolt rack", usages);
}

void write_several_roots(StepWriter& out, Random& random, std::uint32_t size) {
  const ProductContexts contexts = write_product_contexts(out);
  const Component bolt = write_box_part(out, contexts, "Bolt", BOLT_SIZE, random_colour(random));
  for (std::uint32_t i = 0; i < size; ++i) {
    const std::string number = std::to_string(i + 1);
    const Component plate =
        write_box_part(out, contexts, "Plate " + number, {60.0, 20.0, 5.0}, random_colour(random));
    const InstanceId geometric_context = write_own_context(out);
    const std::vector<Usage> usages{usage_at(plate, "Plate", {}),
                                    usage_at(bolt, "Bolt", {0.0, 0.0, 5.0})};
    write_assembly(out, contexts, geometric_context, "Stand " + number, usages);
  }
}

void write_detached(StepWriter& out, Random& random, std::uint32_t size) {
  const ProductContexts contexts = write_product_contexts(out);
  const Component bolt =
      write_box_part(out, contexts, "Bolt", BOLT_SIZE, random_colour(random), SolidLink::detached);
  std::vector<Usage> groups;
  for (std::uint32_t i = 0; i < size; ++i) {
    const std::string number = std::to_string(i + 1);
    const Component plate = write_box_part(out, contexts, "Plate " + number, {60.0, 20.0, 5.0},
                                           random_colour(random), SolidLink::detached);
    const InstanceId geometric_context = write_own_context(out);
    const std::vector<Usage> usages{usage_at(plate, "Plate", {}),
                                    usage_at(bolt, "Left bolt", {0.0, 0.0, 5.0}),
                                    usage_at(bolt, "Right bolt", {50.0, 0.0, 5.0})};
    const Component group =
        write_assembly(out, contexts, geometric_context, "Bolted plate " + number, usages);
    groups.push_back(usage_at(group, "Bolted plate " + number, {0.0, 40.0 * i, 0.0}));
  }
  groups.push_back(usage_at(bolt, "Spare bolt", {-20.0, 0.0, 0.0}));
  const InstanceId geometric_context = write_own_context(out);
  write_assembly(out, contexts, geometric_context, "Bolted plates", groups);
}

}  // namespace Kessel::bench

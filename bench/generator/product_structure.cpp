// Writes products, shapes and assembly usages.

#include "product_structure.h"

#include <cstddef>
#include <cstdint>
#include <vector>

#include "geometry_records.h"

namespace Kessel::bench {
namespace {

InstanceId write_solid_representation(StepWriter& out, InstanceId origin,
                                      InstanceId geometric_context,
                                      std::span<const InstanceId> solids) {
  std::vector<InstanceId> items{origin};
  items.insert(items.end(), solids.begin(), solids.end());
  return out.add("ADVANCED_BREP_SHAPE_REPRESENTATION", "", items, geometric_context);
}

// Writes the records of one usage: `placement` is the component's placement among the items of the
// assembly's representation, `number` counts the usages of the assembly from 1.
void write_usage(StepWriter& out, const Component& assembly, const Usage& usage,
                 InstanceId placement, std::size_t number) {
  const Component& component = usage.component;
  const InstanceId occurrence =
      out.add("NEXT_ASSEMBLY_USAGE_OCCURRENCE", std::to_string(number), usage.name, "",
              assembly.definition, component.definition, Unset{});
  const InstanceId shape =
      out.add("PRODUCT_DEFINITION_SHAPE", "Placement", "Placement of an item", occurrence);
  const InstanceId transformation =
      out.add("ITEM_DEFINED_TRANSFORMATION", "", "", component.origin, placement);
  const InstanceId relationship =
      out.add_complex(partial("REPRESENTATION_RELATIONSHIP", "", "", component.representation,
                              assembly.representation),
                      partial("REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION", transformation),
                      partial("SHAPE_REPRESENTATION_RELATIONSHIP"));
  out.add("CONTEXT_DEPENDENT_SHAPE_REPRESENTATION", relationship, shape);
}

}  // namespace

ProductContexts write_product_contexts(StepWriter& out) {
  const InstanceId application = out.add("APPLICATION_CONTEXT", "automotive design");
  out.add("APPLICATION_PROTOCOL_DEFINITION", "international standard", "automotive_design", 2000,
          application);
  ProductContexts contexts;
  contexts.product = out.add("PRODUCT_CONTEXT", "", application, "mechanical");
  contexts.definition =
      out.add("PRODUCT_DEFINITION_CONTEXT", "part definition", application, "design");
  return contexts;
}

Product write_product(StepWriter& out, const ProductContexts& contexts, std::string_view name) {
  const InstanceId product = out.add("PRODUCT", name, name, "", list(contexts.product));
  out.add("PRODUCT_RELATED_PRODUCT_CATEGORY", "part", Unset{}, list(product));
  const InstanceId formation = out.add("PRODUCT_DEFINITION_FORMATION", "", "", product);
  Product written;
  written.definition = out.add("PRODUCT_DEFINITION", "design", "", formation, contexts.definition);
  written.definition_shape = out.add("PRODUCT_DEFINITION_SHAPE", "", "", written.definition);
  return written;
}

void write_shape_definition(StepWriter& out, const Product& product, InstanceId representation) {
  out.add("SHAPE_DEFINITION_REPRESENTATION", product.definition_shape, representation);
}

Component write_part(StepWriter& out, const ProductContexts& contexts, InstanceId geometric_context,
                     std::string_view name, std::span<const InstanceId> solids) {
  const Product product = write_product(out, contexts, name);
  Component part;
  part.definition = product.definition;
  part.origin = write_placement(out, {});
  part.representation = write_solid_representation(out, part.origin, geometric_context, solids);
  write_shape_definition(out, product, part.representation);
  return part;
}

Component write_detached_part(StepWriter& out, const ProductContexts& contexts,
                              InstanceId geometric_context, std::string_view name,
                              std::span<const InstanceId> solids) {
  const Component part = write_assembly(out, contexts, geometric_context, name, {});
  attach_solids(out, part, geometric_context, solids);
  return part;
}

void attach_solids(StepWriter& out, const Component& component, InstanceId geometric_context,
                   std::span<const InstanceId> solids) {
  const InstanceId origin = write_placement(out, {});
  const InstanceId attached = write_solid_representation(out, origin, geometric_context, solids);
  out.add("SHAPE_REPRESENTATION_RELATIONSHIP", "", "", component.representation, attached);
}

Component write_assembly(StepWriter& out, const ProductContexts& contexts,
                         InstanceId geometric_context, std::string_view name,
                         std::span<const Usage> usages, std::span<const InstanceId> own_items) {
  const Product product = write_product(out, contexts, name);
  Component assembly;
  assembly.definition = product.definition;
  assembly.origin = write_placement(out, {});
  std::vector<InstanceId> items{assembly.origin};
  for (const Usage& usage : usages) items.push_back(write_placement(out, usage.placement));
  items.insert(items.end(), own_items.begin(), own_items.end());
  assembly.representation = out.add("SHAPE_REPRESENTATION", "", items, geometric_context);
  write_shape_definition(out, product, assembly.representation);
  for (std::size_t i = 0; i < usages.size(); ++i)
    write_usage(out, assembly, usages[i], items[i + 1], i + 1);
  return assembly;
}

}  // namespace Kessel::bench

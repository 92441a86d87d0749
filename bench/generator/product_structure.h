// Products, their shapes, and the usages that make assemblies of them (ISO 10303-41, -43, -44).

#pragma once

#include <span>
#include <string>
#include <string_view>

#include "step_writer.h"
#include "vec3.h"

namespace Kessel::bench {

// The records that all products of a file share.
struct ProductContexts {
  InstanceId product;     // PRODUCT_CONTEXT
  InstanceId definition;  // PRODUCT_DEFINITION_CONTEXT
};

// A product as it was written.
struct Product {
  InstanceId definition;        // PRODUCT_DEFINITION
  InstanceId definition_shape;  // PRODUCT_DEFINITION_SHAPE of the definition
};

// What an assembly needs of a part or sub-assembly that it uses.
struct Component {
  InstanceId definition;      // PRODUCT_DEFINITION
  InstanceId representation;  // the SHAPE_REPRESENTATION or subtype that shows its shape
  InstanceId origin;          // AXIS2_PLACEMENT_3D of that representation's own frame
};

// One use of a component in an assembly.
struct Usage {
  Component component;
  std::string name;  // the occurrence's name (UTF-8)
  Frame placement;   // where the component's frame lies in the assembly's frame (millimetres)
};

// Writes the application context and the contexts of products and definitions and returns them.
ProductContexts write_product_contexts(StepWriter& out);

// Writes a PRODUCT named `name` (UTF-8), its category, formation, definition and definition shape.
Product write_product(StepWriter& out, const ProductContexts& contexts, std::string_view name);

// Writes the SHAPE_DEFINITION_REPRESENTATION that joins `product` and `representation`.
void write_shape_definition(StepWriter& out, const Product& product, InstanceId representation);

// Writes a part whose ADVANCED_BREP_SHAPE_REPRESENTATION holds `solids` (MANIFOLD_SOLID_BREPs that
// were written with lengths and angles in the units of `geometric_context`).
Component write_part(StepWriter& out, const ProductContexts& contexts, InstanceId geometric_context,
                     std::string_view name, std::span<const InstanceId> solids);

// Writes a part whose SHAPE_REPRESENTATION holds its origin only and whose `solids` are attached by
// `attach_solids`.
Component write_detached_part(StepWriter& out, const ProductContexts& contexts,
                              InstanceId geometric_context, std::string_view name,
                              std::span<const InstanceId> solids);

// Writes an ADVANCED_BREP_SHAPE_REPRESENTATION of `solids` and attaches it to the representation of
// `component` through a SHAPE_REPRESENTATION_RELATIONSHIP.
void attach_solids(StepWriter& out, const Component& component, InstanceId geometric_context,
                   std::span<const InstanceId> solids);

// Writes an assembly of `usages`: its product, the SHAPE_REPRESENTATION of its placements, and the
// records of every usage. `own_items` (such as solids of the assembly itself) join the placements
// in the representation.
Component write_assembly(StepWriter& out, const ProductContexts& contexts,
                         InstanceId geometric_context, std::string_view name,
                         std::span<const Usage> usages, std::span<const InstanceId> own_items = {});

}  // namespace Kessel::bench

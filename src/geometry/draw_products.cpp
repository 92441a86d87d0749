#include "geometry/draw_products.h"

#include "geometry/component_placement.h"
#include "geometry/context_styles.h"
#include "geometry/part_lines.h"

namespace Kessel::Geometry {

namespace {

Matrix3x4 matrix_of(const Frame& frame) {
  return {{frame.x.x, frame.y.x, frame.z.x, frame.origin.x, frame.x.y, frame.y.y, frame.z.y,
           frame.origin.y, frame.x.z, frame.y.z, frame.z.z, frame.origin.z}};
}

PlacedComponent component_of(const GeometryRecords& records, const Usage& usage,
                             ComponentPlacement& placement) {
  PlacedComponent component;
  component.part = usage.component;
  component.usage = records.instances().number(usage.record);
  component.closes_cycle = usage.closes_circle;
  const auto frame = placement.place(usage);
  component.is_placed = frame.has_value();
  const double unit = placement.units_of(usage.component).to(placement.units_of(usage.assembly));
  component.matrix = matrix_of(frame ? *frame : scaled(unit, Frame()));
  return component;
}

/// Enough for any file that is no trap: records are read a few times, and points made of them.
std::uint64_t budget_for(const GeometryRecords& records, const DrawingOptions& options) {
  return 50'000'000 + 20 * records.text_bytes() + 20 * std::uint64_t{records.instances().size()} +
         4 * options.most_points;
}

}  // namespace

std::vector<DrawnPart> draw_products(const GeometryRecords& records, const Products& products,
                                     const DrawingOptions& options, std::uint64_t most_bytes,
                                     const std::function<void(std::size_t)>& done) {
  const Owners owners(products);
  const StyleTable styles(records);
  if (styles.bytes() > most_bytes) throw NoRoom();
  most_bytes -= styles.bytes();
  UnitTable units(records.instances());
  Budget budget(budget_for(records, options));
  ComponentPlacement placement(records, owners, units);
  PartLines lines(records, owners, styles, units, options, most_bytes, budget);
  std::vector<DrawnPart> parts(products.products.size());
  for (ProductId product = 0; product < parts.size(); ++product) {
    lines.draw(product, parts[product]);
    for (const std::uint32_t usage : products.products[product].usages) {
      parts[product].components.push_back(component_of(records, products.usages[usage], placement));
    }
    done(product + 1);
  }
  style_components(styles, products, parts);
  return parts;
}

}  // namespace Kessel::Geometry

// The lines of one product.
#pragma once

#include <span>
#include <vector>

#include "geometry/curve.h"
#include "geometry/owners.h"
#include "geometry/shown_items.h"
#include "geometry/units.h"
#include "kessel/drawing.h"

namespace Kessel::Geometry {

/// Lines would take more memory than they may.
struct NoRoom {};

/// Draws products one after the other.
class PartLines {
 public:
  PartLines(const GeometryRecords& records, const Owners& owners, const StyleTable& styles,
            UnitTable& units, const DrawingOptions& options, std::uint64_t most_bytes,
            Budget& budget);

  /// Fills the lines of `part`, its box, unit and what was dropped, from the product's
  /// representations. Throws NoRoom where all lines so far, with the lists that it takes to find
  /// them, would be more than `most_bytes`.
  void draw(ProductId product, DrawnPart& part);

 private:
  struct Place;
  struct Pass;
  void draw_all(Pass& pass);
  void draw_place(const Place& place, Pass& pass);
  void draw_item(const ShownItem& item, const Place& place, Pass& pass);
  const Points& trace(const ShownItem& item, const Place& place, Pass& pass);
  bool is_drawn_exactly(const ShownItem& item) const;
  void open_place(Place place, Pass& pass);
  void open_mapped(const ShownItem& item, const Place& place, Pass& pass);
  void open_moved(const ShownItem& item, const Place& place, Pass& pass);
  void draw_pieces(const ShownItem& item, const Points& points, const Place& place, Pass& pass);
  void draw_mesh(const Place& place, Pass& pass);
  void add_line(const ShownItem& item, const Points& points, const Place& place, Pass& pass);
  std::uint64_t taken_bytes(const Pass& pass) const;
  void require_room(const Pass& pass) const;
  void make_room(Pass& pass, std::size_t points) const;

  const GeometryRecords& records_;
  const Owners& owners_;
  UnitTable& units_;
  const DrawingOptions& options_;
  Budget& budget_;
  ItemFinder finder_;
  std::uint64_t points_left_;
  std::uint64_t bytes_left_;  // beside what finished parts and finder_ hold
  Points scratch_;
};

}  // namespace Kessel::Geometry

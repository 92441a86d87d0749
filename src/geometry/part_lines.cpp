#include "geometry/part_lines.h"

#include <algorithm>
#include <limits>
#include <unordered_map>
#include <utility>

#include "geometry/edges.h"
#include "geometry/mapping.h"
#include "geometry/placement_reader.h"
#include "geometry/tessellation.h"

namespace Kessel::Geometry {

namespace {

// How often a part may show others by mapped items, and through how many of them.
constexpr std::size_t MOST_PLACES = 50'000;
constexpr std::size_t MOST_LEVELS = 32;

/// What is no shape but helps to construct one.
bool is_auxiliary(const Instances& instances, Index representation) {
  return instances.is(representation, "CONSTRUCTIVE_GEOMETRY_REPRESENTATION");
}

std::uint64_t bytes_of(const DrawnPart& part) {
  return std::uint64_t{part.points.capacity()} * sizeof(Point3) +
         std::uint64_t{part.lines.capacity()} * sizeof(DrawnLine);
}

/// Bytes for which the list of what is shown is kept twice, for each item.
constexpr std::uint64_t ITEM_BYTES = 2 * sizeof(ShownItem);

/// What the table of places takes that items are found by.
std::uint64_t finder_bytes(const GeometryRecords& records) {
  return std::uint64_t{records.instances().size()} * sizeof(std::uint32_t);
}

/// Room for more elements as a vector takes it by itself, or throws NoRoom where, while both the
/// old and the new ones are there, that would be more than `most_bytes`.
template <class Element>
void grow(std::vector<Element>& all, std::size_t more, std::uint64_t most_bytes) {
  if (all.capacity() - all.size() >= more) return;
  const std::size_t wanted = std::max(2 * all.capacity(), all.size() + more);
  if (std::uint64_t{wanted} * sizeof(Element) > most_bytes) throw NoRoom();
  all.reserve(wanted);
}

}  // namespace

/// Representations that are shown together, and where.
struct PartLines::Place {
  std::vector<ShownRoot> roots;
  struct Setting {
    Frame frame;     ///< from the representation's coordinates to the part's
    double stretch;  ///< by how much at most it makes lengths longer
    RepresentationUnits units;
  };
  std::vector<Setting> settings;  // one per root
  std::vector<Index> way;         // the mapped representations that lead here
  bool is_mapped = false;         // by an item: it may be shown again, elsewhere

  void add(Index record, const Colour& colour, const Frame& frame,
           const RepresentationUnits& units) {
    roots.push_back({record, colour});
    const double stretch = std::max({length(frame.x), length(frame.y), length(frame.z)});
    settings.push_back({frame, stretch, units});
  }
};

/// One going through a product's representations.
struct PartLines::Pass {
  explicit Pass(const GeometryRecords& records) : lists(records) {}

  DrawnPart* part = nullptr;
  double chord = 0;
  std::uint64_t points_left = 0;
  bool has_curves = false;  ///< whether any line would be another one with another chord
  ProductId product = NO_PRODUCT;
  std::vector<Place> open;
  std::size_t places = 0;
  std::uint64_t item_bytes = 0;  ///< of the lists of what the place shows
  // Of the place that is drawn.
  DrawnPieces pieces;
  TriangleMesh mesh;
  std::vector<const ShownItem*> mesh_items;
  CoordinateLists lists;

  /// The line of an item in its representation's coordinates, and what it was traced with.
  struct TracedLine {
    Points points;
    double chord = 0;
    double angle = 0;

    std::uint64_t bytes() const { return NODE + sizeof *this + points.capacity() * sizeof(Vector); }
  };
  /// What a mapped item does, where lengths of what it maps are `unit` times those around it.
  struct KnownMapping {
    Mapping mapping;
    Frame frame;
    double unit = 0;
  };
  static constexpr std::uint64_t NODE = 32;  // of a table, with its share of the buckets
  // What was read of mapped representations, for the next time that they are shown.
  std::unordered_map<Index, TracedLine> traced;
  std::unordered_map<Index, KnownMapping> mappings;
  std::uint64_t traced_bytes = 0;

  std::uint64_t bytes() const {
    return item_bytes + pieces.bytes() + mesh.bytes() + lists.bytes() + traced_bytes +
           mappings.size() * (NODE + sizeof(KnownMapping));
  }
};

PartLines::PartLines(const GeometryRecords& records, const Owners& owners, const StyleTable& styles,
                     UnitTable& units, const DrawingOptions& options, std::uint64_t most_bytes,
                     Budget& budget)
    : records_(records),
      owners_(owners),
      units_(units),
      options_(options),
      budget_(budget),
      finder_(records, styles, budget),
      points_left_(options.most_points),
      bytes_left_(most_bytes) {
  const std::uint64_t finder = finder_bytes(records);
  if (finder > bytes_left_) throw NoRoom();
  bytes_left_ -= finder;
}

void PartLines::draw(ProductId product, DrawnPart& part) {
  Pass rough(records_);
  rough.part = &part;
  rough.product = product;
  rough.chord = std::numeric_limits<double>::infinity();
  rough.points_left = points_left_;
  draw_all(rough);
  if (rough.has_curves && !part.box.is_empty()) {
    const double diagonal = distance({part.box.low[0], part.box.low[1], part.box.low[2]},
                                     {part.box.high[0], part.box.high[1], part.box.high[2]});
    const bool is_absolute = options_.tolerance_metres > 0 && part.unit_metres > 0;
    part.lines.clear();
    part.points.clear();
    part.box = {};
    part.dropped = 0;
    Pass fine(records_);
    fine.part = &part;
    fine.product = product;
    fine.chord = is_absolute ? options_.tolerance_metres / part.unit_metres
                             : std::max(options_.tolerance, 1e-9) * diagonal;
    fine.points_left = points_left_;
    draw_all(fine);
  }
  points_left_ -= part.points.size();
  // Both are there for a moment.
  if (2 * bytes_of(part) <= bytes_left_) {
    part.lines.shrink_to_fit();
    part.points.shrink_to_fit();
  }
  if (bytes_of(part) > bytes_left_) throw NoRoom();
  bytes_left_ -= bytes_of(part);
}

std::uint64_t PartLines::taken_bytes(const Pass& pass) const {
  return bytes_of(*pass.part) + pass.bytes();
}

void PartLines::require_room(const Pass& pass) const {
  if (taken_bytes(pass) > bytes_left_) throw NoRoom();
}

/// For one more line in the part that is drawn.
void PartLines::make_room(Pass& pass, std::size_t points) const {
  DrawnPart& part = *pass.part;
  require_room(pass);
  grow(part.points, points, bytes_left_ - taken_bytes(pass));
  require_room(pass);
  grow(part.lines, 1, bytes_left_ - taken_bytes(pass));
}

void PartLines::draw_all(Pass& pass) {
  Place top;
  const RepresentationUnits* units = nullptr;
  for (const Index representation : owners_.representations(pass.product)) {
    if (is_auxiliary(records_.instances(), representation)) continue;
    const RepresentationUnits& own = units_.of(representation);
    if (units == nullptr || units->metres <= 0) units = &own;
    top.add(representation, {}, {}, own);
    top.way.push_back(representation);
  }
  if (units == nullptr) return;
  pass.part->unit = units->name;
  pass.part->unit_metres = units->metres;
  for (auto& setting : top.settings) {
    setting.stretch = setting.units.to(*units);
    setting.frame = scaled(setting.stretch, setting.frame);
  }
  pass.open.push_back(std::move(top));
  while (!pass.open.empty()) {
    const Place place = std::move(pass.open.back());
    pass.open.pop_back();
    draw_place(place, pass);
  }
}

void PartLines::draw_place(const Place& place, Pass& pass) {
  std::vector<ShownItem> items;
  try {
    const auto found = finder_.find(place.roots);
    pass.item_bytes = ITEM_BYTES * found.size();
    items.assign(found.begin(), found.end());
  } catch (const BadGeometry&) {
    ++pass.part->dropped;
    return;
  }
  pass.pieces = {};
  pass.mesh = {};
  pass.mesh_items.clear();
  const std::size_t first_open = pass.open.size();
  for (const ShownItem& item : items) {
    try {
      draw_item(item, place, pass);
    } catch (const BadGeometry&) {
      ++pass.part->dropped;
    }
  }
  // The first mapped item is opened first.
  std::reverse(pass.open.begin() + static_cast<std::ptrdiff_t>(first_open), pass.open.end());
  try {
    draw_mesh(place, pass);
  } catch (const BadGeometry&) {
    ++pass.part->dropped;
  }
}

void PartLines::draw_item(const ShownItem& item, const Place& place, Pass& pass) {
  switch (item.role) {
    case Role::edge:
    case Role::curve:
      return add_line(item, trace(item, place, pass), place, pass);
    case Role::loop:
      scratch_.clear();
      for (const Reference point : records_.instances().references(item.record)) {
        require(point.record() != NO_RECORD);
        scratch_.push_back(read_point(records_, point.record()));
      }
      require(scratch_.size() >= 2);
      scratch_.push_back(scratch_.front());
      return draw_pieces(item, scratch_, place, pass);
    case Role::strip:
      if (is_drawn_exactly(item)) return;
      for (const Points& strip : read_strips(records_, item.record, pass.lists, budget_)) {
        draw_pieces(item, strip, place, pass);
      }
      return require_room(pass);
    case Role::triangles:
      if (is_drawn_exactly(item)) return;
      pass.mesh_items.push_back(&item);
      pass.mesh.add(records_, item.record, pass.lists, budget_);
      return require_room(pass);
    case Role::mapped:
      return open_mapped(item, place, pass);
    case Role::moved:
      return open_moved(item, place, pass);
    default:
      return;
  }
}

/// The line of an edge or a curve in its representation's coordinates, valid until the next call.
const Points& PartLines::trace(const ShownItem& item, const Place& place, Pass& pass) {
  const Place::Setting& setting = place.settings[item.root];
  const double chord = pass.chord / setting.stretch;
  const double angle = setting.units.angle;
  if (place.is_mapped) {
    const auto known = pass.traced.find(item.record);
    if (known != pass.traced.end() && known->second.chord == chord &&
        known->second.angle == angle) {
      budget_.spend(known->second.points.size());
      return known->second.points;
    }
  }
  scratch_.clear();
  const CurveReading reading{records_, angle, {chord, &budget_}};
  if (item.role == Role::edge) {
    if (!trace_edge(reading, item.record, scratch_)) pass.has_curves = true;
  } else {
    pass.has_curves = true;
    trace_curve(reading, item.record, scratch_);
  }
  if (place.is_mapped) {
    Pass::TracedLine& line = pass.traced[item.record];
    pass.traced_bytes -= line.points.empty() ? 0 : line.bytes();
    line = {{scratch_.begin(), scratch_.end()}, chord, angle};
    pass.traced_bytes += line.bytes();
  }
  return scratch_;
}

bool PartLines::is_drawn_exactly(const ShownItem& item) const {
  const Index exact = pictured_item(records_, item.record);
  return exact != NO_RECORD && finder_.has(exact);
}

void PartLines::open_place(Place place, Pass& pass) {
  require(pass.places < MOST_PLACES && place.way.size() <= MOST_LEVELS);
  ++pass.places;
  pass.open.push_back(std::move(place));
}

void PartLines::open_mapped(const ShownItem& item, const Place& place, Pass& pass) {
  const Place::Setting& here = place.settings[item.root];
  auto found = pass.mappings.find(item.record);
  if (found == pass.mappings.end()) {
    found = pass.mappings.insert({item.record, {read_mapping(records_, item.record), {}, 0}}).first;
  }
  Pass::KnownMapping& known = found->second;
  const Mapping& mapping = known.mapping;
  const ProductId mapped = owners_.of(mapping.representation);
  // What stands for a component is drawn with it.
  if (mapped != NO_PRODUCT && owners_.uses(pass.product, mapped)) return;
  const auto is_on_way = std::find(place.way.begin(), place.way.end(), mapping.representation);
  require(is_on_way == place.way.end());
  const RepresentationUnits units = units_.of(mapping.representation);
  const double unit = units.to(here.units);
  if (known.unit != unit) {
    known.frame = frame_between(records_, mapping.origin, mapping.target, unit);
    known.unit = unit;
  }
  const Frame frame = after(here.frame, known.frame);
  Place there;
  there.is_mapped = true;
  there.way = place.way;
  there.way.push_back(mapping.representation);
  for (const Index representation : owners_.shown_with(mapping.representation)) {
    if (is_auxiliary(records_.instances(), representation)) continue;
    const RepresentationUnits& own = units_.of(representation);
    there.add(representation, item.colour, after(frame, scaled(own.to(units), Frame())), own);
  }
  open_place(std::move(there), pass);
}

void PartLines::open_moved(const ShownItem& item, const Place& place, Pass& pass) {
  const Place::Setting& here = place.settings[item.root];
  Place there;
  there.is_mapped = place.is_mapped;
  there.way = place.way;
  there.way.push_back(item.record);
  const Frame frame = after(here.frame, read_frame(records_, reposition_of(records_, item.record)));
  there.add(item.record, item.colour, frame, here.units);
  open_place(std::move(there), pass);
}

void PartLines::draw_pieces(const ShownItem& item, const Points& points, const Place& place,
                            Pass& pass) {
  budget_.spend(points.size());
  pass.pieces.draw(points, [&](const Points& way) { add_line(item, way, place, pass); });
}

void PartLines::draw_mesh(const Place& place, Pass& pass) {
  const std::vector<TriangleMesh::Piece> all = pass.mesh.outline();
  for (std::size_t i = 0; i < all.size();) {
    const std::size_t face = all[i].face;
    std::vector<TriangleMesh::Piece> of_face;
    for (; i < all.size() && all[i].face == face; ++i) of_face.push_back(all[i]);
    for (const Points& way : join_pieces(of_face)) {
      draw_pieces(*pass.mesh_items[face], way, place, pass);
    }
  }
}

void PartLines::add_line(const ShownItem& item, const Points& points, const Place& place,
                         Pass& pass) {
  require(points.size() >= 2 && points.size() <= pass.points_left);
  DrawnPart& part = *pass.part;
  const Frame& frame = place.settings[item.root].frame;
  make_room(pass, points.size());
  const std::size_t first = part.points.size();
  for (const Vector& point : points) {
    const Vector moved = frame.point(point);
    if (!is_finite(moved)) {
      part.points.resize(first);
      throw BadGeometry();
    }
    part.points.push_back({moved.x, moved.y, moved.z});
  }
  pass.points_left -= points.size();
  for (std::size_t i = first; i < part.points.size(); ++i) part.box.add(part.points[i]);
  part.lines.push_back(
      {records_.instances().number(item.record), item.colour.rgb, first, points.size()});
}

}  // namespace Kessel::Geometry

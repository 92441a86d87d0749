#include "geometry/tessellation.h"

#include <algorithm>
#include <iterator>
#include <limits>

#include "exchange/values.h"
#include "geometry/attributes.h"

namespace Kessel::Geometry {

namespace {

/// Where attributes stand behind the name.
struct Layout {
  std::string_view keyword;
  std::size_t link;       ///< to the exact item; NOWHERE
  std::size_t numbering;  ///< which points of the list are meant; NOWHERE
  std::size_t first;      ///< strips, or triangles
  bool has_fans;          ///< strips and fans of triangles, else triangles one by one
};

constexpr std::size_t NOWHERE = 100;

constexpr Layout LAYOUTS[] = {
    {"TESSELLATED_EDGE", 1, NOWHERE, 2, false},
    {"TESSELLATED_CONNECTING_EDGE", 1, NOWHERE, 2, false},
    {"TESSELLATED_CURVE_SET", NOWHERE, NOWHERE, 1, false},
    {"TRIANGULATED_FACE", 3, 4, 5, false},
    {"COMPLEX_TRIANGULATED_FACE", 3, 4, 5, true},
    {"TRIANGULATED_SURFACE_SET", NOWHERE, 3, 4, false},
    {"COMPLEX_TRIANGULATED_SURFACE_SET", NOWHERE, 3, 4, true},
};

const Layout& layout_of(const GeometryRecords& records, Index record) {
  const auto found = std::find_if(std::begin(LAYOUTS), std::end(LAYOUTS), [&](const Layout& one) {
    return records.instances().is(record, one.keyword);
  });
  require(found != std::end(LAYOUTS));
  return *found;
}

std::vector<std::vector<std::uint32_t>> read_lists(std::string_view text) {
  std::vector<std::vector<std::uint32_t>> lists;
  for (const std::string_view list : Exchange::items_of(text)) lists.push_back(read_integers(list));
  return lists;
}

}  // namespace

std::vector<Index> tessellated_items(const GeometryRecords& records, Index record) {
  for (const std::string_view keyword :
       {"TESSELLATED_SOLID", "TESSELLATED_SHELL", "TESSELLATED_WIRE", "TESSELLATED_GEOMETRIC_SET",
        "REPOSITIONED_TESSELLATED_GEOMETRIC_SET"}) {
    if (records.instances().is(record, keyword)) {
      return Attributes(records, record, keyword, 1).records(0);
    }
  }
  throw BadGeometry();
}

Index reposition_of(const GeometryRecords& records, Index record) {
  if (records.instances().is(record, "REPOSITIONED_TESSELLATED_GEOMETRIC_SET")) {
    return Attributes(records, record, "REPOSITIONED_TESSELLATED_GEOMETRIC_SET", 2).record(0);
  }
  return Attributes(records, record, "REPOSITIONED_TESSELLATED_ITEM", 1).record(0);
}

Index pictured_item(const GeometryRecords& records, Index record) {
  const Layout& layout = layout_of(records, record);
  if (layout.link == NOWHERE) return NO_RECORD;
  const Attributes own(records, record, layout.keyword, 1);
  return own.is_given(layout.link) ? own.record(layout.link) : NO_RECORD;
}

const Points& CoordinateLists::of(Index list, Budget& budget) {
  const auto [place, is_new] = lists_.try_emplace(list);
  if (!is_new) return place->second;
  budget.spend(records_.body(list).size());
  const Attributes own(records_, list, "COORDINATES_LIST", 1);
  for (const std::string_view point : Exchange::items_of(own.raw(1))) {
    const auto numbers = Exchange::items_of(point);
    const auto at = [&](std::size_t i) {
      // What is no number makes no place for a point, which others must not move to.
      constexpr double NONE = std::numeric_limits<double>::quiet_NaN();
      return number_or_none(Exchange::parameter(numbers, i)).value_or(NONE);
    };
    place->second.push_back({at(0), at(1), at(2)});
  }
  bytes_ += place->second.capacity() * sizeof(Vector);
  return place->second;
}

std::vector<Points> read_strips(const GeometryRecords& records, Index record,
                                CoordinateLists& lists, Budget& budget) {
  const Layout& layout = layout_of(records, record);
  const Attributes own(records, record, layout.keyword, 1);
  budget.spend(records.body(record).size());
  const Points& all = lists.of(own.record(0), budget);
  const bool is_one = layout.keyword != "TESSELLATED_CURVE_SET";
  std::vector<std::vector<std::uint32_t>> lists_of_numbers;
  if (is_one) {
    lists_of_numbers.push_back(own.integers(layout.first));
  } else {
    lists_of_numbers = read_lists(own.raw(layout.first));
  }
  std::vector<Points> strips;
  for (const auto& numbers : lists_of_numbers) {
    Points& strip = strips.emplace_back();
    for (const std::uint32_t number : numbers) {
      require(number >= 1 && number <= all.size() && is_finite(all[number - 1]));
      strip.push_back(all[number - 1]);
    }
  }
  return strips;
}

std::uint64_t TriangleMesh::bytes() const {
  constexpr std::uint64_t NODE = 48;  // of a table, with its share of the buckets
  return faces_.capacity() * sizeof(Index) + numbers_.bytes() + NODE * places_.size() +
         pieces_.capacity() * sizeof(std::uint64_t) + borders_.capacity() * sizeof(Border);
}

void TriangleMesh::add(const GeometryRecords& records, Index record, CoordinateLists& lists,
                       Budget& budget) {
  const Layout& layout = layout_of(records, record);
  const Attributes own(records, record, layout.keyword, 1);
  budget.spend(records.body(record).size());
  const Points& all = lists.of(own.record(0), budget);
  require(own.is_given(layout.first));
  const std::vector<std::uint32_t> chosen = own.integers(layout.numbering);
  const auto corner = [&](std::uint32_t number) {
    if (!chosen.empty()) {
      require(number >= 1 && number <= chosen.size());
      number = chosen[number - 1];
    }
    require(number >= 1 && number <= all.size() && is_finite(all[number - 1]));
    return all[number - 1];
  };
  const auto face = static_cast<std::uint32_t>(faces_.size());
  faces_.push_back(record);
  const auto add_of = [&](const std::vector<std::uint32_t>& list, std::size_t a, std::size_t b,
                          std::size_t c) {
    add_triangle(face, {corner(list[a]), corner(list[b]), corner(list[c])});
  };
  for (const auto& list : read_lists(own.raw(layout.first))) {
    require(list.size() >= 3 && (layout.has_fans || list.size() == 3));
    // Every other triangle of a strip is turned.
    for (std::size_t i = 0; i + 2 < list.size(); ++i) {
      i % 2 == 0 ? add_of(list, i, i + 1, i + 2) : add_of(list, i + 1, i, i + 2);
    }
  }
  if (!layout.has_fans) return;
  for (const auto& list : read_lists(own.raw(layout.first + 1))) {
    for (std::size_t i = 1; i + 1 < list.size(); ++i) add_of(list, 0, i, i + 1);
  }
}

void TriangleMesh::add_triangle(std::uint32_t face, const Points& corners) {
  // Bends of less are those of a round surface.
  constexpr double COSINE_OF_BEND = 0.866;
  const Vector across = cross(corners[1] - corners[0], corners[2] - corners[0]);
  const double size = length(across);
  const Vector normal = size > 0 ? (1 / size) * across : Vector();
  for (std::size_t i = 0; i < 3; ++i) {
    const std::uint32_t a = numbers_.of(corners[i]);
    const std::uint32_t b = numbers_.of(corners[(i + 1) % 3]);
    if (a == b) continue;
    const auto [place, is_new] = places_.emplace(piece_between(a, b), borders_.size());
    if (is_new) {
      pieces_.push_back(place->first);
      borders_.push_back({face, true, normal});
      continue;
    }
    Border& border = borders_[place->second];
    // A triangle without a size bends nothing.
    const bool is_flat = size <= 0 || dot(border.normal, border.normal) <= 0;
    border.is_drawn =
        border.face != face || (!is_flat && dot(border.normal, normal) < COSINE_OF_BEND);
  }
}

std::vector<TriangleMesh::Piece> TriangleMesh::outline() const {
  std::vector<Piece> pieces;
  for (std::size_t i = 0; i < borders_.size(); ++i) {
    if (!borders_[i].is_drawn) continue;
    pieces.push_back({borders_[i].face,
                      numbers_.point(static_cast<std::uint32_t>(pieces_[i] >> 32)),
                      numbers_.point(static_cast<std::uint32_t>(pieces_[i]))});
  }
  std::stable_sort(pieces.begin(), pieces.end(),
                   [](const Piece& a, const Piece& b) { return a.face < b.face; });
  return pieces;
}

std::vector<Points> join_pieces(const std::vector<TriangleMesh::Piece>& pieces) {
  PointNumbers numbers;
  std::vector<std::vector<std::size_t>> at;  // by point: the pieces that end there
  std::vector<std::array<std::uint32_t, 2>> ends;
  for (const TriangleMesh::Piece& piece : pieces) {
    ends.push_back({numbers.of(piece.from), numbers.of(piece.to)});
    for (const std::uint32_t end : ends.back()) {
      if (at.size() <= end) at.resize(end + 1);
      at[end].push_back(ends.size() - 1);
    }
  }
  std::vector<bool> is_taken(pieces.size());
  std::vector<Points> ways;
  for (std::size_t first = 0; first < pieces.size(); ++first) {
    if (is_taken[first]) continue;
    is_taken[first] = true;
    Points way{pieces[first].from, pieces[first].to};
    // On where exactly one other piece goes on, first ahead and then back.
    for (const std::size_t side : {std::size_t{1}, std::size_t{0}}) {
      std::uint32_t end = ends[first][side];
      while (at[end].size() == 2) {
        const std::size_t next = is_taken[at[end][0]] ? at[end][1] : at[end][0];
        if (is_taken[next]) break;
        is_taken[next] = true;
        end = ends[next][0] == end ? ends[next][1] : ends[next][0];
        way.push_back(numbers.point(end));
      }
      std::reverse(way.begin(), way.end());
    }
    ways.push_back(std::move(way));
  }
  return ways;
}

}  // namespace Kessel::Geometry

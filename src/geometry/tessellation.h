// Tessellated items (ISO 10303-42, edition 2014): lines and triangles of points in lists.
#pragma once

#include <array>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "geometry/curve.h"
#include "geometry/geometry_records.h"
#include "geometry/segments.h"

namespace Kessel::Geometry {

/// What a tessellated solid, shell, wire or set holds, repositioned or not. Throws BadGeometry for
/// all else.
std::vector<Index> tessellated_items(const GeometryRecords& records, Index record);

/// The placement of what is repositioned.
Index reposition_of(const GeometryRecords& records, Index record);

/// The exact item that a tessellated face or edge is a picture of; NO_RECORD for none.
Index pictured_item(const GeometryRecords& records, Index record);

/// The lists of points of one part, each read once.
class CoordinateLists {
 public:
  explicit CoordinateLists(const GeometryRecords& records) : records_(records) {}

  const Points& of(Index list, Budget& budget);
  /// Bytes that they take.
  std::uint64_t bytes() const { return bytes_; }

 private:
  const GeometryRecords& records_;
  std::unordered_map<Index, Points> lists_;
  std::uint64_t bytes_ = 0;
};

/// The lines of a tessellated edge or curve set.
std::vector<Points> read_strips(const GeometryRecords& records, Index record,
                                CoordinateLists& lists, Budget& budget);

/// Triangles of several faces.
class TriangleMesh {
 public:
  bool empty() const { return faces_.empty(); }
  /// Bytes that they take, about.
  std::uint64_t bytes() const;

  /// Adds the triangles of the tessellated face or surface set `record`.
  void add(const GeometryRecords& records, Index record, CoordinateLists& lists, Budget& budget);

  /// One piece of an outline: where a face ends, meets another one, or has a sharp bend.
  struct Piece {
    std::size_t face = 0;  ///< in the order in which they were added
    Vector from;
    Vector to;
  };
  std::vector<Piece> outline() const;

 private:
  struct Border {
    std::uint32_t face = 0;
    bool is_drawn = true;
    Vector normal;
  };
  void add_triangle(std::uint32_t face, const Points& corners);

  std::vector<Index> faces_;
  PointNumbers numbers_;
  std::unordered_map<std::uint64_t, std::size_t> places_;  // piece -> in borders_
  std::vector<std::uint64_t> pieces_;
  std::vector<Border> borders_;
};

/// Joins pieces of one face that meet to longer ways, in the order of the first piece of each.
std::vector<Points> join_pieces(const std::vector<TriangleMesh::Piece>& pieces);

}  // namespace Kessel::Geometry

// The lines of an exchange file's parts, and where its components are, as plain data.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <limits>
#include <span>
#include <string>
#include <vector>

#include "kessel/assembly.h"
#include "kessel/export.h"
#include "kessel/options.h"

namespace Kessel {

/// Coordinates x, y, z in the length unit of the part that the point belongs to.
using Point3 = std::array<double, 3>;

/// The box around some points, along the axes.
struct Box3 {
  /// Lowest coordinates; above the highest ones in the box of no point.
  Point3 low{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity(),
             std::numeric_limits<double>::infinity()};
  Point3 high{-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
              -std::numeric_limits<double>::infinity()};

  bool is_empty() const { return low[0] > high[0]; }
  /// Makes it large enough for the point.
  void add(const Point3& point) {
    for (std::size_t i = 0; i < 3; ++i) {
      if (point[i] < low[i]) low[i] = point[i];
      if (point[i] > high[i]) high[i] = point[i];
    }
  }
};

/// Takes points from one part's coordinates to another's: three rows of a 4x4 matrix, row by row,
/// whose last column is the translation. Lengths may change with it: by the units of the two parts,
/// and where the file has a scaling (CARTESIAN_TRANSFORMATION_OPERATOR, ISO 10303-42).
struct Matrix3x4 {
  std::array<double, 12> rows{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0};

  Point3 apply(const Point3& p) const {
    Point3 moved;
    for (std::size_t i = 0; i < 3; ++i) {
      const double* row = rows.data() + 4 * i;
      moved[i] = row[0] * p[0] + row[1] * p[1] + row[2] * p[2] + row[3];
    }
    return moved;
  }
  /// What does `inner` first, and then this.
  Matrix3x4 after(const Matrix3x4& inner) const {
    Matrix3x4 both;
    for (std::size_t i = 0; i < 3; ++i) {
      const double* row = rows.data() + 4 * i;
      for (std::size_t k = 0; k < 4; ++k) {
        both.rows[4 * i + k] = row[0] * inner.rows[k] + row[1] * inner.rows[4 + k] +
                               row[2] * inner.rows[8 + k] + (k == 3 ? row[3] : 0);
      }
    }
    return both;
  }
};

/// What stands for a colour where the file gives none.
inline constexpr std::int32_t NO_COLOUR = -1;

/// An edge, or another curve that a part shows, as straight pieces.
struct DrawnLine {
  std::uint64_t record = 0;  ///< instance number of the EDGE_CURVE, or of the curve, loop or face
  /// 0xRRGGBB as the file has it: that of a face that the edge is of, else that of what holds the
  /// face, else that of the part; NO_COLOUR.
  std::int32_t colour = NO_COLOUR;
  std::size_t first = 0;  ///< its first point in `DrawnPart::points`
  std::size_t count = 0;  ///< how many points it has; at least two
};

/// One component, placed.
struct PlacedComponent {
  std::size_t part = 0;     ///< index of the component in `Assembly::parts`
  std::uint64_t usage = 0;  ///< instance number of the usage (ISO 10303-44); 0 in a generated root
  Matrix3x4 matrix = {};    ///< from the component's coordinates to those of the part that uses it
  /// False where the file does not say where it is: `matrix` has no more than the units then.
  bool is_placed = true;
  /// What this usage of the component is coloured, whatever colours its lines have; NO_COLOUR.
  std::int32_t colour = NO_COLOUR;
  bool is_hidden = false;     ///< the file says that it is not to be seen here
  bool closes_cycle = false;  ///< as that of `PartUse`
};

/// What a part says of a component of its components.
struct PlacedStyle {
  /// The way to it: the position in `DrawnPart::components` of the part, of the component there,
  /// and so on. Two or more.
  std::vector<std::size_t> path;
  std::int32_t colour = NO_COLOUR;  ///< as `PlacedComponent::colour`
  bool is_hidden = false;           ///< as `PlacedComponent::is_hidden`
};

/// What is drawn of one part.
struct DrawnPart {
  std::vector<DrawnLine> lines;  ///< its own, each edge once; those of components are theirs
  std::vector<Point3> points;    ///< of all lines, one line's behind the other's
  Box3 box;                      ///< around its own lines
  std::string unit;        ///< of lengths: "millimetre", "INCH", as `UnitUse::name`; may be empty
  double unit_metres = 0;  ///< its size in metres; 0 where the file does not say
  /// Edges and curves that are not drawn since the file does not say, or not in a way that can be
  /// followed, what they are: a point is missing, an axis is zero, knots do not fit.
  std::uint64_t dropped = 0;
  std::vector<PlacedComponent> components;  ///< one per usage, in order of the file
  /// Of what is further below. Where several speak of one place, that of the uppermost part counts.
  std::vector<PlacedStyle> styled = {};
};

/// The parts of one file with their lines. Owns everything that it holds.
struct Drawing {
  Assembly assembly;             ///< as read_assembly() gives it
  std::vector<DrawnPart> parts;  ///< parallel to `assembly.parts`

  /// The points of one line of a part.
  static std::span<const Point3> points_of(const DrawnPart& part, const DrawnLine& line) {
    return std::span(part.points).subspan(line.first, line.count);
  }
};

/// How finely lines are drawn.
struct DrawingOptions {
  /// How far a piece of a line may be from its curve: as a fraction of the diagonal of the box
  /// around the part's own lines. At least 1e-9.
  double tolerance = 1e-3;
  /// The same as a length in metres, which counts where it is above 0 and the part's unit is known.
  double tolerance_metres = 0;
  /// How many points all lines of a file may have together; edges beyond are dropped.
  std::uint64_t most_points = 20'000'000;
};

/// Reads what the exchange file `in` (ISO 10303-21, clear text) draws, from its records alone:
/// edges (ISO 10303-42) of solids, surfaces and wireframes with their curves; tessellated edges,
/// and where there are only triangles, their outlines; and where components are placed, by
/// ITEM_DEFINED_TRANSFORMATION, MAPPED_ITEM or CARTESIAN_TRANSFORMATION_OPERATOR. Items,
/// representations and layers that the file hides (INVISIBILITY, ISO 10303-46) have no lines. The
/// file is read once. Of `options`, those of read_assembly() matter.
///
/// Geometry that cannot be drawn is counted (`DrawnPart::dropped`) and no error. Prints nothing and
/// writes nothing. Throws as read_assembly() does, and what `options.progress` throws; the memory
/// limit counts what is kept of the records, the lists of what a part shows, and lines with their
/// points. Works on the caller's thread.
KESSEL_EXPORT Drawing read_drawing(const std::filesystem::path& in,
                                   const DrawingOptions& drawing = DrawingOptions(),
                                   const Options& options = Options());

/// A part at one of its places in another one.
struct PlacedPart {
  std::size_t part = 0;  ///< index in `Drawing::parts`
  Matrix3x4 matrix;      ///< from its coordinates to those of the part where the walk began
  std::int32_t colour = NO_COLOUR;  ///< what all its lines are coloured there; NO_COLOUR: their own
  /// The way to it: of each part from the first on, the position in `DrawnPart::components`. Empty
  /// for the part where the walk began.
  std::span<const std::size_t> path;
};

/// Tells `visit` of part `from` and every component below it at every place, each part in front of
/// its components, which come in their order. Uses that close a cycle and what is hidden are passed
/// over, and what has no lines at any level is not entered. Returns false where there are more than
/// `limit` places, of which the first ones are told. The path is valid during the call. What
/// `visit` throws passes through.
KESSEL_EXPORT bool visit_places(const Drawing& drawing, std::size_t from, std::uint64_t limit,
                                const std::function<void(const PlacedPart&)>& visit);

/// The box around a part with all its components, along the part's axes and in its unit; empty
/// where it has no lines. Exact, but for a part that has more than a million places or whose points
/// at all places are more than a hundred million: that gets a box which may be larger, around those
/// of its components.
KESSEL_EXPORT Box3 whole_box(const Drawing& drawing, std::size_t part);

}  // namespace Kessel

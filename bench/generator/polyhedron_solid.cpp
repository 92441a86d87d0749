// Writes a body with plane faces: its vertices, then its edges and faces, then shell and solid.

#include "polyhedron_solid.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <map>
#include <unordered_map>
#include <utility>

#include "geometry_records.h"

namespace Kessel::bench {
namespace {

// An edge as it was written: the EDGE_CURVE and the corner that it starts from.
struct Edge {
  InstanceId curve;
  std::uint32_t start;
};

// Hands out records of directions and vectors, equal ones once only.
class CommonDirections {
 public:
  explicit CommonDirections(StepWriter& out) : out_(out) {}

  // Returns a DIRECTION for `direction` (of length 1).
  InstanceId direction(const Vec3& direction) {
    InstanceId& id = directions_[key_of(direction)];
    if (id.number == 0) id = write_direction(out_, direction);
    return id;
  }

  // Returns a VECTOR of length 1 along `along` (of length 1).
  InstanceId vector(const Vec3& along) {
    InstanceId& id = vectors_[key_of(along)];
    if (id.number == 0) id = out_.add("VECTOR", "", direction(along), 1.0);
    return id;
  }

 private:
  using Key = std::array<long long, 3>;

  // Directions that differ by rounding errors only have the same key.
  static Key key_of(const Vec3& direction) {
    const double scale = 1e9;
    return {std::llround(direction.x * scale), std::llround(direction.y * scale),
            std::llround(direction.z * scale)};
  }

  StepWriter& out_;
  std::map<Key, InstanceId> directions_;
  std::map<Key, InstanceId> vectors_;
};

// Returns the outward normal of the face with these corners, of length 1 (Newell's sum, which also
// holds for faces with re-entrant corners).
Vec3 normal_of(const std::vector<Vec3>& points, const std::vector<std::uint32_t>& loop) {
  Vec3 sum;
  for (std::size_t i = 0; i < loop.size(); ++i) {
    const Vec3& from = points[loop[i]];
    const Vec3& to = points[loop[(i + 1) % loop.size()]];
    // Relative to the first corner, so that nothing is lost far away from the origin.
    sum = sum + cross(from - points[loop[0]], to - points[loop[0]]);
  }
  return normalised(sum);
}

class PolyhedronWriter {
 public:
  PolyhedronWriter(StepWriter& out, const Polyhedron& body, GeometryStyle style)
      : out_(out), body_(body), style_(style), common_(out) {}

  Solid write(std::string_view name) {
    for (const Vec3& point : body_.points) {
      points_.push_back(write_point(out_, point));
      vertices_.push_back(out_.add("VERTEX_POINT", "", points_.back()));
    }
    Solid solid;
    for (const auto& loop : body_.faces) solid.faces.push_back(write_face(loop));
    const InstanceId shell = out_.add("CLOSED_SHELL", "", solid.faces);
    solid.brep = out_.add("MANIFOLD_SOLID_BREP", name, shell);
    return solid;
  }

 private:
  InstanceId write_face(const std::vector<std::uint32_t>& loop) {
    oriented_.clear();
    for (std::size_t i = 0; i < loop.size(); ++i)
      oriented_.push_back(write_oriented_edge(loop[i], loop[(i + 1) % loop.size()]));
    const InstanceId edge_loop = out_.add("EDGE_LOOP", "", oriented_);
    const InstanceId bound = out_.add("FACE_OUTER_BOUND", "", edge_loop, true);
    const InstanceId plane = write_plane(loop);
    return out_.add("ADVANCED_FACE", "", list(bound), plane, true);
  }

  InstanceId write_oriented_edge(std::uint32_t from, std::uint32_t to) {
    const Edge edge = edge_between(from, to);
    return out_.add("ORIENTED_EDGE", "", Derived{}, Derived{}, edge.curve, edge.start == from);
  }

  // Returns the edge between two corners and writes it when it is met for the first time.
  Edge edge_between(std::uint32_t from, std::uint32_t to) {
    const auto [low, high] = std::minmax(from, to);
    const std::uint64_t key = (std::uint64_t{low} << 32U) | high;
    const auto found = edges_.find(key);
    if (found != edges_.end()) return found->second;
    const Vec3 along = normalised(body_.points[to] - body_.points[from]);
    const InstanceId line = style_ == GeometryStyle::common
                                ? out_.add("LINE", "", points_[from], common_.vector(along))
                                : write_line(out_, write_point(out_, body_.points[from]), along);
    const InstanceId curve = out_.add("EDGE_CURVE", "", vertices_[from], vertices_[to], line, true);
    return edges_.emplace(key, Edge{curve, from}).first->second;
  }

  InstanceId write_plane(const std::vector<std::uint32_t>& loop) {
    const Vec3 normal = normal_of(body_.points, loop);
    const Vec3 along = normalised(body_.points[loop[1]] - body_.points[loop[0]]);
    if (style_ == GeometryStyle::separate)
      return out_.add("PLANE", "", write_placement(out_, {body_.points[loop[0]], normal, along}));
    const InstanceId axis = common_.direction(normal);
    const InstanceId ref_direction = common_.direction(along);
    return out_.add("PLANE", "",
                    out_.add("AXIS2_PLACEMENT_3D", "", points_[loop[0]], axis, ref_direction));
  }

  StepWriter& out_;
  const Polyhedron& body_;
  GeometryStyle style_;
  CommonDirections common_;
  std::vector<InstanceId> points_;
  std::vector<InstanceId> vertices_;
  std::vector<InstanceId> oriented_;
  std::unordered_map<std::uint64_t, Edge> edges_;
};

}  // namespace

Solid write_polyhedron(StepWriter& out, std::string_view name, const Polyhedron& body,
                       GeometryStyle style) {
  return PolyhedronWriter(out, body, style).write(name);
}

}  // namespace Kessel::bench

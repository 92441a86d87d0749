// Writes a turned body: a circle per profile corner, a face per profile piece.

#include "turned_solid.h"

#include <cmath>
#include <cstddef>

#include "geometry_records.h"

namespace Kessel::bench {
namespace {

// The records of one profile corner: where the circle starts and ends, and the circle itself.
struct CircleEdge {
  InstanceId vertex;
  InstanceId curve;
};

class TurnedSolidWriter {
 public:
  TurnedSolidWriter(StepWriter& out, const Frame& frame, const std::vector<ProfilePoint>& profile)
      : out_(out), frame_(frame), profile_(profile) {}

  Solid write(std::string_view name) {
    for (const ProfilePoint& corner : profile_) circles_.push_back(write_circle(corner));
    Solid solid;
    for (std::size_t i = 0; i + 1 < profile_.size(); ++i) solid.faces.push_back(write_piece(i));
    const InstanceId shell = out_.add("CLOSED_SHELL", "", solid.faces);
    solid.brep = out_.add("MANIFOLD_SOLID_BREP", name, shell);
    return solid;
  }

 private:
  static bool on_axis(const ProfilePoint& corner) { return corner.radius == 0.0; }

  Vec3 start_of(const ProfilePoint& corner) const {
    return frame_.point_outside({corner.radius, 0.0, corner.height});
  }

  // Returns the placement on the axis at `height` millimetres, pointing up or down.
  InstanceId write_axis_placement(double height, bool up) {
    const Frame placed{frame_.point_outside({0.0, 0.0, height}),
                       up ? frame_.axis : -1.0 * frame_.axis, frame_.ref_direction};
    return write_placement(out_, placed);
  }

  // Writes the closed edge of a corner; corners on the axis have none.
  CircleEdge write_circle(const ProfilePoint& corner) {
    if (on_axis(corner)) return {};
    const InstanceId vertex = out_.add("VERTEX_POINT", "", write_point(out_, start_of(corner)));
    const InstanceId circle =
        out_.add("CIRCLE", "", write_axis_placement(corner.height, true), corner.radius);
    return {vertex, out_.add("EDGE_CURVE", "", vertex, vertex, circle, true)};
  }

  InstanceId write_oriented(InstanceId curve, bool forward) {
    return out_.add("ORIENTED_EDGE", "", Derived{}, Derived{}, curve, forward);
  }

  // Writes the face between corner `i` and the next one. Its boundary runs along the first circle
  // forward and along the second one backward, whichever way the piece points.
  InstanceId write_piece(std::size_t i) {
    return profile_[i].height == profile_[i + 1].height ? write_flat_piece(i)
                                                        : write_round_piece(i);
  }

  InstanceId write_flat_piece(std::size_t i) {
    const bool outward = profile_[i + 1].radius > profile_[i].radius;
    std::vector<InstanceId> bounds;
    if (!on_axis(profile_[i])) bounds.push_back(write_circle_bound(i, true, !outward));
    if (!on_axis(profile_[i + 1])) bounds.push_back(write_circle_bound(i + 1, false, outward));
    // A profile that runs outward has its material above, so the face looks down.
    const InstanceId plane =
        out_.add("PLANE", "", write_axis_placement(profile_[i].height, !outward));
    return out_.add("ADVANCED_FACE", "", bounds, plane, true);
  }

  InstanceId write_circle_bound(std::size_t i, bool forward, bool outer) {
    const InstanceId edge = write_oriented(circles_[i].curve, forward);
    const InstanceId loop = out_.add("EDGE_LOOP", "", list(edge));
    return out_.add(outer ? "FACE_OUTER_BOUND" : "FACE_BOUND", "", loop, true);
  }

  InstanceId write_round_piece(std::size_t i) {
    const InstanceId seam = write_seam(i);
    const InstanceId first = write_oriented(circles_[i].curve, true);
    const InstanceId there = write_oriented(seam, true);
    const InstanceId second = write_oriented(circles_[i + 1].curve, false);
    const InstanceId back = write_oriented(seam, false);
    const InstanceId loop = out_.add("EDGE_LOOP", "", list(first, there, second, back));
    const InstanceId bound = out_.add("FACE_OUTER_BOUND", "", loop, true);
    const InstanceId surface = write_round_surface(profile_[i], profile_[i + 1]);
    // The surfaces' normals point away from the axis; so does the face where the profile rises.
    const bool rising = profile_[i + 1].height > profile_[i].height;
    return out_.add("ADVANCED_FACE", "", list(bound), surface, rising);
  }

  InstanceId write_seam(std::size_t i) {
    const Vec3 start = start_of(profile_[i]);
    const Vec3 along = normalised(start_of(profile_[i + 1]) - start);
    const InstanceId line = write_line(out_, write_point(out_, start), along);
    return out_.add("EDGE_CURVE", "", circles_[i].vertex, circles_[i + 1].vertex, line, true);
  }

  InstanceId write_round_surface(const ProfilePoint& from, const ProfilePoint& to) {
    if (from.radius == to.radius)
      return out_.add("CYLINDRICAL_SURFACE", "", write_axis_placement(from.height, true),
                      from.radius);
    const double slope = (to.radius - from.radius) / (to.height - from.height);
    // Rounded, so that the last digit does not depend on the machine's arc tangent.
    const double scale = 1e13;
    const double semi_angle = std::round(std::atan(std::abs(slope)) * scale) / scale;
    // A cone widens along its axis (ISO 10303-42, conical_surface).
    return out_.add("CONICAL_SURFACE", "", write_axis_placement(from.height, slope > 0.0),
                    from.radius, semi_angle);
  }

  StepWriter& out_;
  const Frame& frame_;
  const std::vector<ProfilePoint>& profile_;
  std::vector<CircleEdge> circles_;
};

}  // namespace

Solid write_turned_solid(StepWriter& out, std::string_view name, const Frame& frame,
                         const std::vector<ProfilePoint>& profile) {
  return TurnedSolidWriter(out, frame, profile).write(name);
}

std::vector<ProfilePoint> cylinder_profile(double radius, double height) {
  return {{0.0, 0.0}, {radius, 0.0}, {radius, height}, {0.0, height}};
}

}  // namespace Kessel::bench

// Straight pieces between shared points, each drawn once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "geometry/curve.h"

namespace Kessel::Geometry {

/// Gives points with equal coordinates one number.
class PointNumbers {
 public:
  std::uint32_t of(const Vector& point);
  const Vector& point(std::uint32_t number) const { return points_[number]; }
  /// Bytes that all this takes, about.
  std::uint64_t bytes() const {
    return 56 * std::uint64_t{numbers_.size()} + points_.capacity() * sizeof(Vector);
  }

 private:
  struct Hash {
    std::size_t operator()(const Vector& point) const;
  };
  struct Equal {
    bool operator()(const Vector& a, const Vector& b) const {
      return a.x == b.x && a.y == b.y && a.z == b.z;
    }
  };
  std::unordered_map<Vector, std::uint32_t, Hash, Equal> numbers_;
  Points points_;
};

/// The pieces between two points as one word, whichever comes first.
std::uint64_t piece_between(std::uint32_t a, std::uint32_t b);

/// Remembers which pieces were drawn.
class DrawnPieces {
 public:
  /// Cuts the way along `points` into the longest ways of pieces that were not drawn before, and
  /// gives each to `draw`.
  void draw(std::span<const Vector> points, const std::function<void(const Points&)>& draw);

  PointNumbers& numbers() { return numbers_; }
  /// Bytes that all this takes, about.
  std::uint64_t bytes() const { return numbers_.bytes() + 32 * std::uint64_t{drawn_.size()}; }

 private:
  PointNumbers numbers_;
  std::unordered_set<std::uint64_t> drawn_;
};

}  // namespace Kessel::Geometry

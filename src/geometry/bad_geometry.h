// What ends the drawing of one edge, and only of that.
#pragma once

#include <cstdint>

namespace Kessel::Geometry {

/// Thrown inside of this folder where a record does not say what it should; never leaves it. What
/// was to be drawn is counted as dropped.
struct BadGeometry {};

inline void require(bool holds) {
  if (!holds) throw BadGeometry();
}

/// Bounds the work on one file, whatever its records refer to how often: a unit is a point, a byte
/// of text, or the like. Where nothing is left, all else is dropped.
class Budget {
 public:
  explicit Budget(std::uint64_t units) : left_(units) {}

  void spend(std::uint64_t units) {
    if (units > left_) left_ = 0;
    require(left_ != 0);
    left_ -= units;
  }

 private:
  std::uint64_t left_;
};

}  // namespace Kessel::Geometry

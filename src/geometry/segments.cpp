#include "geometry/segments.h"

#include <algorithm>
#include <bit>

namespace Kessel::Geometry {

std::size_t PointNumbers::Hash::operator()(const Vector& point) const {
  std::uint64_t hash = 0;
  for (const double coordinate : {point.x, point.y, point.z}) {
    // Adding 0 makes one zero of both.
    hash = (hash ^ std::bit_cast<std::uint64_t>(coordinate + 0.0)) * 0x9E37'79B9'7F4A'7C15u;
    hash ^= hash >> 29;
  }
  return static_cast<std::size_t>(hash);
}

std::uint32_t PointNumbers::of(const Vector& point) {
  const auto [place, is_new] = numbers_.emplace(point, static_cast<std::uint32_t>(points_.size()));
  if (is_new) points_.push_back(point);
  return place->second;
}

std::uint64_t piece_between(std::uint32_t a, std::uint32_t b) {
  return std::uint64_t{std::min(a, b)} << 32 | std::max(a, b);
}

void DrawnPieces::draw(std::span<const Vector> points,
                       const std::function<void(const Points&)>& draw) {
  Points way;
  const auto end_way = [&] {
    if (way.size() >= 2) draw(way);
    way.clear();
  };
  for (std::size_t i = 1; i < points.size(); ++i) {
    const std::uint32_t a = numbers_.of(points[i - 1]);
    const std::uint32_t b = numbers_.of(points[i]);
    if (a == b) continue;
    if (!drawn_.insert(piece_between(a, b)).second) {
      end_way();
      continue;
    }
    if (way.empty()) way.push_back(points[i - 1]);
    way.push_back(points[i]);
  }
  end_way();
}

}  // namespace Kessel::Geometry

// The units that a context assigns (ISO 10303-41 and -43).
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "instances/instances.h"

namespace Kessel::Geometry {

/// A unit of length or plane angle.
struct Unit {
  enum class Kind : std::uint8_t { length, plane_angle };
  Kind kind = Kind::length;
  /// "millimetre" for an SI unit, otherwise the name that the file gives it, such as "INCH".
  std::string name;
  double factor = 0;  ///< its size in metres or radians; 0 where the file does not say
};

/// Those that `context` assigns, in its order.
std::vector<Unit> assigned_units(const Instances& instances, Index context);

/// What the numbers of one representation are measured in.
struct RepresentationUnits {
  std::string name;   ///< of lengths; empty where the file does not say
  double metres = 0;  ///< 0 where the file does not say
  double angle = 1;   ///< in radians; 1 where the file does not say

  /// What lengths in these units are multiplied with to be in `other`'s; 1 where either is unknown.
  double to(const RepresentationUnits& other) const {
    return metres > 0 && other.metres > 0 ? metres / other.metres : 1;
  }
};

/// Looks up the units of representations.
class UnitTable {
 public:
  explicit UnitTable(const Instances& instances) : instances_(instances) {}

  const RepresentationUnits& of(Index representation);

 private:
  const Instances& instances_;
  std::unordered_map<Index, RepresentationUnits> by_context_;
};

}  // namespace Kessel::Geometry

// The units that contexts assign.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "instances/instances.h"

namespace Kessel {

/// The entity that assigns units to a context (ISO 10303-41).
inline constexpr std::string_view UNIT_ASSIGNING_CONTEXT = "GLOBAL_UNIT_ASSIGNED_CONTEXT";

/// A unit of lengths or plane angles.
struct AssignedUnit {
  std::string name;   ///< "millimetre" for an SI unit, otherwise what the file calls it
  double factor = 0;  ///< its size in metres or radians; 0 where the file does not say
  bool is_length = false;
};

/// Those that the context `context` assigns.
std::vector<AssignedUnit> units_of(const Instances& instances, Index context);

/// The size in metres of the unit of lengths in which the items of `representation` are measured; 0
/// where the file does not say.
double length_unit_of(const Instances& instances, Index representation);

}  // namespace Kessel

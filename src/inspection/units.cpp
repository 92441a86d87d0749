// The units that geometric contexts assign.
#include "inspection/units.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>

#include "geometry/units.h"

namespace Kessel {

namespace {

/// How many contexts assign each unit, by name and factor.
using Tally = std::map<std::pair<std::string, double>, std::uint64_t>;

std::vector<UnitUse> most_used_first(const Tally& tally) {
  std::vector<UnitUse> uses;
  for (const auto& [unit, contexts] : tally) uses.push_back({unit.first, unit.second, contexts});
  std::stable_sort(uses.begin(), uses.end(),
                   [](const UnitUse& a, const UnitUse& b) { return a.contexts > b.contexts; });
  return uses;
}

}  // namespace

void sum_up_units(const Instances& instances, Summary& summary) {
  Tally lengths;
  Tally plane_angles;
  for (const Index context : instances.kept_with("GLOBAL_UNIT_ASSIGNED_CONTEXT")) {
    for (const Geometry::Unit& unit : Geometry::assigned_units(instances, context)) {
      const bool is_length = unit.kind == Geometry::Unit::Kind::length;
      ++(is_length ? lengths : plane_angles)[{unit.name, unit.factor}];
    }
  }
  summary.length_units = most_used_first(lengths);
  summary.plane_angle_units = most_used_first(plane_angles);
}

}  // namespace Kessel

#include "geometry/units.h"

#include <cmath>
#include <string_view>
#include <utility>

#include "exchange/parameters.h"
#include "exchange/values.h"

namespace Kessel::Geometry {

namespace {

constexpr std::pair<std::string_view, int> SI_PREFIXES[] = {
    {"EXA", 18},  {"PETA", 15},  {"TERA", 12},   {"GIGA", 9},   {"MEGA", 6},   {"KILO", 3},
    {"HECTO", 2}, {"DECA", 1},   {"DECI", -1},   {"CENTI", -2}, {"MILLI", -3}, {"MICRO", -6},
    {"NANO", -9}, {"PICO", -12}, {"FEMTO", -15}, {"ATTO", -18},
};

/// The power of ten that a prefix stands for; 0 for none.
int exponent_of(std::string_view prefix) {
  for (const auto& [name, exponent] : SI_PREFIXES) {
    if (name == prefix) return exponent;
  }
  return 0;
}

void append_lower(std::string& out, std::string_view name) {
  for (const char c : name) out += c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

/// What a unit's record says, entity by entity.
struct UnitRecord {
  explicit UnitRecord(std::string_view body) {
    for (const auto& [keyword, list] : Exchange::partial_records(body)) {
      is_length = is_length || keyword == "LENGTH_UNIT";
      is_plane_angle = is_plane_angle || keyword == "PLANE_ANGLE_UNIT";
      if (keyword == "SI_UNIT") si = Exchange::items_of(list);
      if (keyword == "CONVERSION_BASED_UNIT") conversion = Exchange::items_of(list);
    }
  }
  std::string name() const {
    if (!conversion.empty()) return text_value(conversion[0]);
    std::string name;
    append_lower(name, enumeration_value(Exchange::parameter(si, 0)));
    append_lower(name, enumeration_value(Exchange::parameter(si, 1)));
    return name;
  }

  bool is_length = false;
  bool is_plane_angle = false;
  Exchange::Parameters si;          // prefix, name
  Exchange::Parameters conversion;  // name, measure
};

/// The body of the record that `parameter` names.
std::string_view body_of(const Instances& instances, std::string_view parameter) {
  const Index record = instances.find(Exchange::instance_of(parameter));
  return record == NO_RECORD ? std::string_view() : instances.kept_body(record);
}

/// The size of a unit in metres or radians; 0 where its conversions do not lead there.
double factor_of(const Instances& instances, UnitRecord unit) {
  constexpr int MOST_CONVERSIONS = 10;  // More than any unit needs: they may go in a circle.
  double value = 1;
  for (int conversion = 0; conversion < MOST_CONVERSIONS; ++conversion) {
    if (!unit.si.empty()) {
      // Positive powers of ten are exact, so that 25.4 mm become what 0.0254 is in a program.
      const int exponent = exponent_of(enumeration_value(unit.si[0]));
      const double power = std::pow(10.0, std::abs(exponent));
      const double factor = exponent < 0 ? value / power : value * power;
      return std::isfinite(factor) ? factor : 0;
    }
    const std::string_view body = body_of(instances, Exchange::parameter(unit.conversion, 1));
    Exchange::Parameters measure;
    for (const auto& [keyword, list] : Exchange::partial_records(body)) {
      if (keyword.ends_with("MEASURE_WITH_UNIT") && measure.empty()) {
        measure = Exchange::items_of(list);
      }
    }
    value *= number_value(Exchange::parameter(measure, 0));
    unit = UnitRecord(body_of(instances, Exchange::parameter(measure, 1)));
  }
  return 0;
}

constexpr std::string_view ASSIGNING = "GLOBAL_UNIT_ASSIGNED_CONTEXT";

/// The context of a representation is the last that it refers to.
Index context_of(const Instances& instances, Index representation) {
  const auto references = instances.references(representation);
  for (auto reference = references.rbegin(); reference != references.rend(); ++reference) {
    const Index record = reference->record();
    if (record != NO_RECORD && instances.is(record, ASSIGNING)) return record;
  }
  return NO_RECORD;
}

}  // namespace

std::vector<Unit> assigned_units(const Instances& instances, Index context) {
  std::vector<Unit> units;
  const auto assigned = Exchange::parameters_of(instances.kept_body(context), ASSIGNING);
  for (const std::string_view item : Exchange::items_of(Exchange::parameter(assigned, 0))) {
    const UnitRecord unit(body_of(instances, item));
    if (!unit.is_length && !unit.is_plane_angle) continue;
    const auto kind = unit.is_length ? Unit::Kind::length : Unit::Kind::plane_angle;
    units.push_back({kind, unit.name(), factor_of(instances, unit)});
  }
  return units;
}

const RepresentationUnits& UnitTable::of(Index representation) {
  const Index context = context_of(instances_, representation);
  const auto [place, is_new] = by_context_.try_emplace(context);
  RepresentationUnits& units = place->second;
  if (!is_new || context == NO_RECORD) return units;
  bool has_angle = false;
  for (Unit& unit : assigned_units(instances_, context)) {
    if (unit.kind == Unit::Kind::length && units.name.empty() && units.metres == 0) {
      units.name = std::move(unit.name);
      units.metres = unit.factor;
    } else if (unit.kind == Unit::Kind::plane_angle && !has_angle && unit.factor > 0) {
      units.angle = unit.factor;
      has_angle = true;
    }
  }
  return units;
}

}  // namespace Kessel::Geometry

#include "geometry/trimming.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "exchange/values.h"
#include "geometry/derived_curves.h"
#include "geometry/placement_reader.h"

namespace Kessel::Geometry {

namespace {

/// One end, as the file gives it.
struct End {
  std::optional<double> parameter;
  std::optional<Vector> point;
};

End read_end(const CurveReading& reading, const Attributes& trimmed, std::size_t i, double unit) {
  End end;
  for (const std::string_view item : Exchange::items_of(trimmed.raw(i))) {
    if (item.starts_with('#')) {
      end.point = read_point(reading.records, trimmed.record_in(item));
    } else if (const auto number = number_or_none(item)) {
      end.parameter = *number * unit;
    }
  }
  require(end.parameter || end.point);
  return end;
}

double parameter_of(const Curve& basis, const End& end, double near) {
  if (!end.point) return *end.parameter;
  if (end.parameter && distance(basis.at(*end.parameter), *end.point) <= near) {
    return *end.parameter;
  }
  return basis.nearest(*end.point);
}

}  // namespace

CurvePointer trim(const CurveReading& reading, CurvePointer basis, const Attributes& trimmed) {
  const double unit = basis->parameter_unit(reading.angle);
  const End first = read_end(reading, trimmed, 1, unit);
  const End second = read_end(reading, trimmed, 2, unit);
  const double size = first.point && second.point ? distance(*first.point, *second.point) : 0;
  const double near = 1e-4 * size + 1e-6;
  double from = parameter_of(*basis, first, near);
  double to = parameter_of(*basis, second, near);
  const bool is_reversed = !trimmed.is_true(3);
  if (is_reversed) std::swap(from, to);
  require(std::isfinite(from) && std::isfinite(to));
  if (basis->period() > 0) {
    if (std::isfinite(basis->begin())) from = std::clamp(from, basis->begin(), basis->end());
    to = from + way_around(from, to, basis->period());
  } else {
    if (from > to) std::swap(from, to);
    from = std::max(from, basis->begin());
    to = std::min(to, basis->end());
  }
  require(from < to);
  return std::make_shared<TrimmedCurve>(std::move(basis), from, to, is_reversed);
}

}  // namespace Kessel::Geometry

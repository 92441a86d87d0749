// From measurements to figures.
#include "measure/figures.h"

namespace Kessel::bench {

double Figures::memory_per_record(const Measurement& measurement) const {
  return (measurement.run.peak_memory - peak_of_empty_run_) /
         static_cast<double>(measurement.input.records);
}

const MeasuredCase* Figures::find(std::string_view shape, std::uint32_t size) const {
  for (const MeasuredCase& measured : cases_) {
    if (measured.what.shape == shape && measured.what.size == size) return &measured;
  }
  return nullptr;
}

std::optional<double> Figures::value_of(const Target& target) const {
  const MeasuredCase* measured = find(target.shape, target.size);
  if (measured == nullptr) return std::nullopt;
  switch (target.figure) {
    case Figure::ratio_to_floor:
      return measured->full.ratio_to_floor();
    case Figure::memory_per_record:
      return memory_per_record(measured->full);
    case Figure::time_against_bodies:
      for (const MeasuredCase& other : cases_) {
        if (other.what.shape != "bodies") continue;
        return measured->full.seconds_per_record() / other.full.seconds_per_record();
      }
      return std::nullopt;
    case Figure::twice_the_size:
      if (!measured->half) return std::nullopt;
      return measured->full.run.seconds / measured->half->run.seconds;
    case Figure::openings_of_allowance:
      for (const auto& [shape, openings] : openings_) {
        if (shape != target.shape) continue;
        return static_cast<double>(openings.count) / openings.allowance();
      }
      return std::nullopt;
  }
  return std::nullopt;
}

}  // namespace Kessel::bench

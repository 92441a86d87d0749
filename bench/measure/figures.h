// All measurements of one session, and the figures that targets are set for.
#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "measure/cases.h"
#include "measure/openings.h"
#include "measure/samples.h"

namespace Kessel::bench {

/// A case as it was measured.
struct MeasuredCase {
  Case what;
  Measurement full;
  std::optional<Measurement> half;
};

/// What was measured so far. Cases are found by the size in the table of cases, also when a quick
/// run measured a smaller one.
class Figures {
 public:
  explicit Figures(double peak_of_empty_run) : peak_of_empty_run_(peak_of_empty_run) {}

  void add(MeasuredCase measured) { cases_.push_back(std::move(measured)); }
  void add(std::string_view shape, const Openings& openings) {
    openings_.emplace_back(shape, openings);
  }
  const std::vector<MeasuredCase>& cases() const { return cases_; }

  /// Bytes of peak memory per record above the peak of an empty run.
  double memory_per_record(const Measurement& measurement) const;

  /// The value of the target's figure; nothing when something it needs was not measured.
  std::optional<double> value_of(const Target& target) const;

 private:
  const MeasuredCase* find(std::string_view shape, std::uint32_t size) const;

  double peak_of_empty_run_;
  std::vector<MeasuredCase> cases_;
  std::vector<std::pair<std::string_view, Openings>> openings_;
};

}  // namespace Kessel::bench

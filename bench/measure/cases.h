// What is measured, and what the figures are to be.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace Kessel::bench {

/// One shape of assembly at one size, and at half of it where that is measured too.
struct Case {
  std::string_view shape;          ///< as generate_assembly knows it
  std::uint32_t size;              ///< even
  std::uint32_t quick_size;        ///< for a run that only shows that everything works; even
  bool half_too;                   ///< measures half the size alternately
  std::uint32_t splits_per_round;  ///< above 1 where one split is too short to be timed
};

/// All cases, in the order in which they are measured.
std::span<const Case> all_cases();

/// The figures that targets are set for.
enum class Figure {
  ratio_to_floor,        ///< time of the run / time of the floor
  memory_per_record,     ///< peak memory above that of an empty run / records, bytes
  time_against_bodies,   ///< time per record / that of the bodies shape
  twice_the_size,        ///< time of the full size / time of half of it
  openings_of_allowance  ///< file openings / (4 per part + 1 per MiB written)
};

/// What a figure is called in the table.
std::string_view name_of(Figure figure);

/// One target: the figure of the shape's case is to be at most this.
struct Target {
  std::string_view shape;
  std::uint32_t size;  ///< of the case
  Figure figure;
  double at_most;
  double better;  ///< what would be better still; 0 for nothing
};

/// All targets, in the order of the cases.
std::span<const Target> all_targets();

/// The side-by-side run with another way to do the same job: its input and its targets.
struct PeerCase {
  std::string_view shape;
  std::uint32_t size;
  std::uint32_t quick_size;
  double times_faster;   ///< at least
  double times_smaller;  ///< at least
};
PeerCase peer_case();

}  // namespace Kessel::bench

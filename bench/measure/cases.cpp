// The tables of cases and targets.
#include "measure/cases.h"

#include <array>

namespace Kessel::bench {

namespace {

using enum Figure;

// A split of the ladder of 60 levels takes milliseconds, most of them for starting a process, so
// many are timed together; its growth is measured on a ladder long enough to be timed by itself. A
// cost that doubles with every level would end neither.
constexpr std::array CASES = {
    Case{"bodies", 3600, 20, true, 1},   Case{"small-parts", 20000, 20, true, 1},
    Case{"shared", 2000, 20, true, 1},   Case{"long-records", 200000, 1000, true, 1},
    Case{"ladder", 60, 20, true, 20},    Case{"ladder", 6000, 100, true, 1},
    Case{"mapped", 20000, 100, true, 1},
};

constexpr std::array TARGETS = {
    Target{"bodies", 3600, ratio_to_floor, 5, 3.5},
    Target{"bodies", 3600, memory_per_record, 120, 0},
    Target{"small-parts", 20000, time_against_bodies, 3, 0},
    Target{"small-parts", 20000, twice_the_size, 2.3, 0},
    Target{"shared", 2000, ratio_to_floor, 15, 0},
    Target{"shared", 2000, openings_of_allowance, 1, 0},
    Target{"long-records", 200000, twice_the_size, 2.3, 0},
    Target{"ladder", 60, twice_the_size, 2.3, 0},
    Target{"ladder", 6000, twice_the_size, 2.3, 0},
    Target{"mapped", 20000, twice_the_size, 2.3, 0},
};

}  // namespace

std::span<const Case> all_cases() {
  return CASES;
}

std::span<const Target> all_targets() {
  return TARGETS;
}

PeerCase peer_case() {
  return {"bodies", 225, 10, 150, 10};
}

std::string_view name_of(Figure figure) {
  switch (figure) {
    case ratio_to_floor:
      return "time / floor";
    case memory_per_record:
      return "bytes per record";
    case time_against_bodies:
      return "time per record / that of bodies";
    case twice_the_size:
      return "time / time of half the size";
    case openings_of_allowance:
      return "openings / (4 per part + 1 per MiB)";
  }
  return {};
}

}  // namespace Kessel::bench

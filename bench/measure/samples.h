// Repeated runs of the floor and of the splitter, and their medians.
#pragma once

#include <cstdint>
#include <vector>

#include "measure/child.h"
#include "measure/workshop.h"

namespace Kessel::bench {

/// The middle of `values`, which are not empty; of an even number the upper one.
double median(std::vector<double> values);

/// What runs with equal arguments cost: medians.
struct Medians {
  double seconds = 0;
  double cpu_seconds = 0;
  double peak_memory = 0;  ///< bytes
  double spread = 0;       ///< the longest time / the shortest
};

/// Runs of one program with the same arguments.
class Samples {
 public:
  void add(const Cost& cost);
  Medians medians() const;

 private:
  std::vector<double> seconds_;
  std::vector<double> cpu_seconds_;
  std::vector<double> peak_memory_;
};

/// The figures of one input.
struct Measurement {
  Input input;
  Medians floor;
  Medians files_floor;  ///< with as many files, of the same sizes, as the run writes
  Medians run;
  Written written;  ///< by one split

  double ratio_to_floor() const { return run.seconds / floor.seconds; }
  double ratio_to_files_floor() const { return run.seconds / files_floor.seconds; }
  double seconds_per_record() const { return run.seconds / static_cast<double>(input.records); }
};

/// Splits `input` once with `program` (split_once or one called like it) into a fresh folder, which
/// is removed; tells in `written`, if given, what was in it. Throws when it holds less than two
/// files.
Cost split_and_remove(const Workshop& workshop, const std::filesystem::path& program,
                      const Input& input, Written* written = nullptr);

/// Measures both floors and the splitter on each of `inputs`, all in turns, `rounds` times over, so
/// that what disturbs the machine for a while disturbs all of them. In one turn a program runs
/// `runs_per_round` times and the mean counts.
std::vector<Measurement> measure(const Workshop& workshop, const Programs& programs,
                                 const std::vector<Input>& inputs, unsigned rounds,
                                 unsigned runs_per_round);

}  // namespace Kessel::bench

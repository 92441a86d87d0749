// Runs in turns, and their medians.
#include "measure/samples.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace Kessel::bench {

namespace {

Cost copy_once(const Workshop& workshop, const Programs& programs, const Input& input) {
  const std::filesystem::path copy = workshop.fresh("floor.out");
  const Cost cost = run_child({programs.copy_floor, input.path, copy}, workshop.folder());
  std::filesystem::remove(copy);
  return cost;
}

/// Copies into files of the sizes that a split wrote, in a fresh folder, which is removed.
Cost copy_into_files(const Workshop& workshop, const Programs& programs, const Input& input,
                     const Written& written) {
  const std::filesystem::path sizes = workshop.fresh("floor.sizes");
  std::ofstream out(sizes);
  for (const std::uint64_t size : written.sizes) out << size << '\n';
  out.close();
  const std::filesystem::path folder = workshop.fresh("floor.out");
  std::filesystem::create_directory(folder);
  const Cost cost = run_child({programs.copy_floor, input.path, folder, sizes}, workshop.folder());
  if (look_into(folder).bytes != written.bytes) throw std::runtime_error("the floor wrote less");
  std::filesystem::remove_all(folder);
  std::filesystem::remove(sizes);
  return cost;
}

/// The mean cost of `count` runs; of the peaks, the highest.
template <class Run>
Cost mean_of(unsigned count, Run run) {
  Cost sum;
  for (unsigned i = 0; i < count; ++i) {
    const Cost cost = run();
    sum.seconds += cost.seconds / count;
    sum.cpu_seconds += cost.cpu_seconds / count;
    sum.peak_memory = std::max(sum.peak_memory, cost.peak_memory);
  }
  return sum;
}

}  // namespace

double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

void Samples::add(const Cost& cost) {
  seconds_.push_back(cost.seconds);
  cpu_seconds_.push_back(cost.cpu_seconds);
  peak_memory_.push_back(static_cast<double>(cost.peak_memory));
}

Medians Samples::medians() const {
  const auto [shortest, longest] = std::minmax_element(seconds_.begin(), seconds_.end());
  return {median(seconds_), median(cpu_seconds_), median(peak_memory_), *longest / *shortest};
}

Cost split_and_remove(const Workshop& workshop, const std::filesystem::path& program,
                      const Input& input, Written* written) {
  const std::filesystem::path folder = workshop.fresh("split.out");
  std::filesystem::create_directory(folder);
  const Cost cost = run_child({program, input.path, folder}, workshop.folder());
  const Written found = look_into(folder);
  if (found.files < 2) throw std::runtime_error(program.string() + " wrote no parts");
  if (written != nullptr) *written = found;
  std::filesystem::remove_all(folder);
  return cost;
}

std::vector<Measurement> measure(const Workshop& workshop, const Programs& programs,
                                 const std::vector<Input>& inputs, unsigned rounds,
                                 unsigned runs_per_round) {
  std::vector<Measurement> measurements(inputs.size());
  std::vector<Samples> floors(inputs.size());
  std::vector<Samples> files_floors(inputs.size());
  std::vector<Samples> runs(inputs.size());
  for (unsigned round = 0; round < rounds; ++round) {
    for (std::size_t i = 0; i < inputs.size(); ++i) {
      floors[i].add(
          mean_of(runs_per_round, [&] { return copy_once(workshop, programs, inputs[i]); }));
      runs[i].add(mean_of(runs_per_round, [&] {
        return split_and_remove(workshop, programs.split_once, inputs[i], &measurements[i].written);
      }));
      files_floors[i].add(mean_of(runs_per_round, [&] {
        return copy_into_files(workshop, programs, inputs[i], measurements[i].written);
      }));
    }
  }
  for (std::size_t i = 0; i < inputs.size(); ++i) {
    measurements[i].input = inputs[i];
    measurements[i].floor = floors[i].medians();
    measurements[i].files_floor = files_floors[i].medians();
    measurements[i].run = runs[i].medians();
  }
  return measurements;
}

}  // namespace Kessel::bench

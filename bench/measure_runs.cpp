// Measures whole runs: the splitter against both floors on every shape of assembly, or against a
// peer.
//
//     measure_runs [--work FOLDER] [--quick] [--only SHAPE] [--peer] [--check]
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "measure/cases.h"
#include "measure/child.h"
#include "measure/figures.h"
#include "measure/openings.h"
#include "measure/samples.h"
#include "measure/table.h"
#include "measure/workshop.h"

namespace Kessel::bench {
namespace {

constexpr double MIB = 1024.0 * 1024.0;

/// The command line.
struct Options {
  std::filesystem::path work;
  std::filesystem::path programs = std::filesystem::canonical("/proc/self/exe").parent_path();
  std::string only;
  unsigned rounds = 5;
  unsigned peer_rounds = 1;  // One round of the peer takes minutes.
  bool quick = false;
  bool peer = false;
  bool check = false;
};

void say_progress(const std::string& text) {
  std::cerr << "measuring " << text << "...\n";
}

/// "ok" or "MISSED"; the sizes of a quick run mean nothing, so it gets neither.
std::string verdict(const Options& options, bool reached) {
  if (options.quick) return "(quick)";
  return reached ? "ok" : "MISSED";
}

/// The peak of a split that has next to nothing to do: a file of two small parts.
double measure_empty_run(const Options& options, const Workshop& workshop,
                         const Programs& programs) {
  const Input tiny = workshop.input(programs, "small-parts", 1);
  Samples samples;
  for (unsigned round = 0; round < options.rounds; ++round) {
    samples.add(split_and_remove(workshop, programs.split_once, tiny));
  }
  return samples.medians().peak_memory;
}

MeasuredCase measure_case(const Options& options, const Workshop& workshop,
                          const Programs& programs, const Case& what) {
  const std::uint32_t size = options.quick ? what.quick_size : what.size;
  say_progress(std::string(what.shape) + " " + std::to_string(size));
  std::vector<Input> inputs = {workshop.input(programs, what.shape, size)};
  if (what.half_too) inputs.push_back(workshop.input(programs, what.shape, size / 2));
  const std::vector<Measurement> measured =
      measure(workshop, programs, inputs, options.rounds, what.splits_per_round);
  return {what, measured[0], what.half_too ? std::optional(measured[1]) : std::nullopt};
}

void print_runs(const Figures& figures) {
  Table table({"shape", "size", "MB", "records", "files", "floor s", "files floor s", "run s",
               "run/floor", "run/files floor", "cpu/floor cpu", "max/min", "us/record", "peak MiB",
               "bytes/record"});
  const auto add = [&](const Measurement& m) {
    table.add_row(
        {std::string(m.input.shape), std::to_string(m.input.size),
         fixed(static_cast<double>(m.input.bytes) * 1e-6, 1), std::to_string(m.input.records),
         std::to_string(m.written.files), fixed(m.floor.seconds, 3),
         fixed(m.files_floor.seconds, 3), fixed(m.run.seconds, 3), fixed(m.ratio_to_floor(), 2),
         fixed(m.ratio_to_files_floor(), 2), fixed(m.run.cpu_seconds / m.floor.cpu_seconds, 2),
         fixed(m.run.spread, 2), fixed(m.seconds_per_record() * 1e6, 3),
         fixed(m.run.peak_memory / MIB, 1), fixed(figures.memory_per_record(m), 1)});
  };
  for (const MeasuredCase& measured : figures.cases()) {
    if (measured.half) add(*measured.half);
    add(measured.full);
  }
  table.print(std::cout);
}

/// Prints every target whose figure was measured and returns whether all were reached.
bool print_targets(const Options& options, const Figures& figures) {
  Table table({"shape", "size", "figure", "measured", "at most", "better", "verdict"});
  bool all_reached = true;
  for (const Target& target : all_targets()) {
    const std::optional<double> value = figures.value_of(target);
    if (!value) continue;
    const bool reached = *value <= target.at_most;
    all_reached = all_reached && reached;
    table.add_row({std::string(target.shape), std::to_string(target.size),
                   std::string(name_of(target.figure)), fixed(*value, 2), fixed(target.at_most, 1),
                   target.better == 0 ? "" : fixed(target.better, 1), verdict(options, reached)});
  }
  if (!table.empty()) {
    std::cout << '\n';
    table.print(std::cout);
  }
  return all_reached;
}

/// Counts the openings of the case, when a target asks for them.
void add_openings(const Workshop& workshop, const Programs& programs, Figures& figures,
                  const MeasuredCase& measured) {
  const auto targets = all_targets();
  const bool asked = std::any_of(targets.begin(), targets.end(), [&](const Target& target) {
    return target.figure == Figure::openings_of_allowance && target.shape == measured.what.shape;
  });
  if (!asked) return;
  const std::optional<Openings> openings = count_openings(workshop, programs, measured.full.input);
  if (!openings) {
    std::cout << "Openings are not counted: strace is missing (Debian package strace).\n";
    return;
  }
  figures.add(measured.what.shape, *openings);
  std::cout << "Openings of " << measured.what.shape << ": " << openings->count << " for "
            << openings->written.files << " files and "
            << fixed(static_cast<double>(openings->written.bytes) / MIB, 1) << " MiB, allowed "
            << fixed(openings->allowance(), 0) << ".\n";
}

bool measure_shapes(const Options& options, const Workshop& workshop, const Programs& programs) {
  Figures figures(measure_empty_run(options, workshop, programs));
  std::cout << "Creating a small file in the work folder takes "
            << fixed(seconds_to_create_a_file(workshop) * 1e6, 0) << " us.\n";
  for (const Case& what : all_cases()) {
    if (!options.only.empty() && options.only != what.shape) continue;
    const MeasuredCase measured = measure_case(options, workshop, programs, what);
    figures.add(measured);
    add_openings(workshop, programs, figures, measured);
  }
  std::cout << "Medians of " << options.rounds << " runs in turns, warm page cache:\n\n";
  print_runs(figures);
  return print_targets(options, figures);
}

bool measure_peer(const Options& options, const Workshop& workshop, const Programs& programs) {
  if (!std::filesystem::exists(programs.peer_split)) {
    std::cout << "The peer was not built: OpenCASCADE is missing (Debian package "
                 "libocct-data-exchange-dev).\n";
    return true;
  }
  const PeerCase what = peer_case();
  const Input input =
      workshop.input(programs, what.shape, options.quick ? what.quick_size : what.size);
  Samples peers;
  Samples runs;
  Written peer_written;
  Written run_written;
  for (unsigned round = 0; round < options.peer_rounds; ++round) {
    say_progress("peer, round " + std::to_string(round + 1));
    peers.add(split_and_remove(workshop, programs.peer_split, input, &peer_written));
    for (unsigned run = 0; run < options.rounds; ++run) {
      runs.add(split_and_remove(workshop, programs.split_once, input, &run_written));
    }
  }
  const Medians peer = peers.medians();
  const Medians run = runs.medians();
  std::cout << "The peer on " << what.shape << " " << input.size << ", "
            << fixed(static_cast<double>(input.bytes) * 1e-6, 1) << " MB, medians of "
            << options.peer_rounds << " and " << options.peer_rounds * options.rounds
            << " runs:\n\n";
  Table table({"", "s", "cpu s", "peak MiB", "files", "MB written"});
  const auto add = [&](const std::string& name, const Medians& medians, const Written& written) {
    table.add_row({name, fixed(medians.seconds, 3), fixed(medians.cpu_seconds, 3),
                   fixed(medians.peak_memory / MIB, 1), std::to_string(written.files),
                   fixed(static_cast<double>(written.bytes) * 1e-6, 1)});
  };
  add("peer_split", peer, peer_written);
  add("split_once", run, run_written);
  table.print(std::cout);

  const double faster = peer.seconds / run.seconds;
  const double smaller = peer.peak_memory / run.peak_memory;
  Table targets({"figure", "measured", "at least", "verdict"});
  targets.add_row({"times faster", fixed(faster, 1), fixed(what.times_faster, 0),
                   verdict(options, faster >= what.times_faster)});
  targets.add_row({"times smaller", fixed(smaller, 1), fixed(what.times_smaller, 0),
                   verdict(options, smaller >= what.times_smaller)});
  std::cout << '\n';
  targets.print(std::cout);
  return faster >= what.times_faster && smaller >= what.times_smaller;
}

bool is_measured_shape(const std::string& name) {
  const auto cases = all_cases();
  return std::any_of(cases.begin(), cases.end(),
                     [&](const Case& what) { return what.shape == name; });
}

}  // namespace
}  // namespace Kessel::bench

int main(int argc, char** argv) {
  using namespace Kessel::bench;
  CLI::App app("Measures whole runs of the splitter against the floor on every shape of assembly.",
               "measure_runs");
  try {
    Options options;
    app.add_option("--work", options.work,
                   "Folder for inputs, which stay there for the next time, and outputs, which do "
                   "not; without it a temporary folder, in memory where possible");
    app.add_option("--programs", options.programs, "Folder of the programs to run")
        ->capture_default_str();
    app.add_option("--rounds", options.rounds, "Runs of which the median is taken")
        ->capture_default_str()
        ->check(CLI::Range(1U, 1000U));
    app.add_option("--peer-rounds", options.peer_rounds, "Runs of the peer, the same")
        ->capture_default_str()
        ->check(CLI::Range(1U, 1000U));
    app.add_option("--only", options.only, "Measure this shape alone")
        ->check([](const std::string& name) {
          return is_measured_shape(name) ? std::string() : "not a measured shape: " + name;
        });
    app.add_flag("--peer", options.peer, "Measure the peer instead of the shapes");
    auto* quick =
        app.add_flag("--quick", options.quick, "Small sizes, to see in seconds that all works");
    app.add_flag("--check", options.check, "Exit with 1 when a target is missed")->excludes(quick);
    CLI11_PARSE(app, argc, argv);

    const Programs programs(std::filesystem::absolute(options.programs));
    const Workshop workshop(options.work);
    const bool reached = options.peer ? measure_peer(options, workshop, programs)
                                      : measure_shapes(options, workshop, programs);
    return options.check && !reached ? 1 : 0;
  } catch (const std::exception& error) {
    std::cerr << "measure_runs: " << error.what() << '\n';
    return 2;
  }
}

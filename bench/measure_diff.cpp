// Prints what comparing two files costs: time against splitting both, and memory per record.
//
//     measure_diff [--parts N] [--check]
//
// The two files are one of N parts with bodies, and the same once more. --check: exit code 1 when a
// target is missed.
#include <CLI/CLI.hpp>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>

#include "measure/child.h"
#include "measure/samples.h"
#include "measure/workshop.h"

namespace {

using namespace Kessel::bench;
namespace fs = std::filesystem;

constexpr int ROUNDS = 5;
constexpr double MOST_SPLITS = 3;

struct Figures {
  Medians split;
  Medians diff;
  std::uint64_t records = 0;
};

Figures measure(const Workshop& workshop, const Programs& programs, const fs::path& diff_once,
                std::uint32_t parts) {
  const Input input = workshop.input(programs, "bodies", parts);
  const fs::path copy = workshop.fresh("copy.stp");
  fs::copy_file(input.path, copy);
  Samples splits;
  Samples diffs;
  for (int round = 0; round < ROUNDS; ++round) {
    splits.add(split_and_remove(workshop, programs.split_once, input));
    diffs.add(
        run_child({diff_once.string(), input.path.string(), copy.string()}, workshop.folder()));
  }
  fs::remove(copy);
  return {splits.medians(), diffs.medians(), input.records};
}

void print(const Figures& figures, std::uint32_t parts) {
  const auto records = 2 * static_cast<double>(figures.records);
  std::printf(
      "%u parts, %.0f records in both files: %.2f s, %.2f times two splits "
      "(processor: %.2f times), %.0f bytes per record\n",
      parts, records, figures.diff.seconds, figures.diff.seconds / (2 * figures.split.seconds),
      figures.diff.cpu_seconds / (2 * figures.split.cpu_seconds),
      figures.diff.peak_memory / records);
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app("What comparing two files costs.");
  std::uint32_t parts = 1800;
  bool check = false;
  app.add_option("--parts", parts, "Parts of the file")->capture_default_str();
  app.add_flag("--check", check, "Fail when a target is missed");
  CLI11_PARSE(app, argc, argv);
  try {
    const fs::path bin = fs::absolute(fs::path(argv[0])).parent_path();
    const Programs programs(bin);
    const Workshop workshop{fs::path()};
    const Figures half = measure(workshop, programs, bin / "diff_once", parts / 2);
    const Figures whole = measure(workshop, programs, bin / "diff_once", parts);
    print(half, parts / 2);
    print(whole, parts);
    const double growth = whole.diff.seconds / half.diff.seconds;
    std::printf("twice the size takes %.2f times as long\n", growth);
    const bool is_slow = whole.diff.seconds > MOST_SPLITS * 2 * whole.split.seconds;
    return check && (is_slow || growth > 2.5) ? 1 : 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "measure_diff: %s\n", error.what());
    return 1;
  }
}

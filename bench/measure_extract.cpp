// Prints what extracting a part costs: time against a nested split of the same file, and memory.
//
//     measure_extract [--parts N] [--check]
//
// The file is one of N parts with bodies. Extracted are its only top, which is the whole file and
// so the most there can be, and one part. --check: exit code 1 when a target is missed.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>

#include "kessel/extract.h"
#include "measure/child.h"
#include "measure/samples.h"
#include "measure/workshop.h"

namespace {

using namespace Kessel::bench;
namespace fs = std::filesystem;

constexpr int ROUNDS = 5;
constexpr double MOST_SPLITS = 1.5;

struct Figures {
  Medians split;
  Medians whole;
  Medians part;
};

std::string number_of(const Kessel::NamedPart& part) {
  return "#" + std::to_string(part.record);
}

Cost split_nested(const Workshop& workshop, const Programs& programs, const Input& input) {
  const fs::path folder = workshop.fresh("split.out");
  fs::create_directory(folder);
  const Cost cost =
      run_child({programs.split_once.string(), "--nested", input.path.string(), folder.string()},
                workshop.folder());
  fs::remove_all(folder);
  return cost;
}

Cost extract(const Workshop& workshop, const fs::path& program, const Input& input,
             const std::string& part) {
  const fs::path out = workshop.fresh("extracted.stp");
  const Cost cost =
      run_child({program.string(), input.path.string(), part, out.string()}, workshop.folder());
  fs::remove(out);
  return cost;
}

Figures measure(const Workshop& workshop, const Programs& programs, const fs::path& extract_once,
                std::uint32_t parts) {
  const Input input = workshop.input(programs, "bodies", parts);
  const auto all = Kessel::read_parts(input.path);
  const auto is_top = [](const Kessel::NamedPart& part) {
    return part.path.find('/') == std::string::npos;
  };
  const auto top = std::find_if(all.begin(), all.end(), is_top);
  const auto part = std::find_if_not(all.begin(), all.end(), is_top);
  Samples splits;
  Samples wholes;
  Samples ones;
  for (int round = 0; round < ROUNDS; ++round) {
    splits.add(split_nested(workshop, programs, input));
    wholes.add(extract(workshop, extract_once, input, number_of(*top)));
    ones.add(extract(workshop, extract_once, input, number_of(*part)));
  }
  return {splits.medians(), wholes.medians(), ones.medians()};
}

void print(const Figures& figures, std::uint32_t parts) {
  const auto line = [&](const char* what, const Medians& cost) {
    std::printf("%u parts, %s: %.2f s, %.2f times a split (processor: %.2f, memory: %.2f times)\n",
                parts, what, cost.seconds, cost.seconds / figures.split.seconds,
                cost.cpu_seconds / figures.split.cpu_seconds,
                cost.peak_memory / figures.split.peak_memory);
  };
  line("the only top", figures.whole);
  line("one part", figures.part);
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app("What extracting a part costs.");
  std::uint32_t parts = 1800;
  bool check = false;
  app.add_option("--parts", parts, "Parts of the file")->capture_default_str();
  app.add_flag("--check", check, "Fail when a target is missed");
  CLI11_PARSE(app, argc, argv);
  try {
    const fs::path bin = fs::absolute(fs::path(argv[0])).parent_path();
    const Programs programs(bin);
    const Workshop workshop{fs::path()};
    const Figures half = measure(workshop, programs, bin / "extract_once", parts / 2);
    const Figures whole = measure(workshop, programs, bin / "extract_once", parts);
    print(half, parts / 2);
    print(whole, parts);
    const double growth = whole.whole.seconds / half.whole.seconds;
    std::printf("twice the size takes %.2f times as long\n", growth);
    const bool is_slow =
        std::max(whole.whole.seconds, whole.part.seconds) > MOST_SPLITS * whole.split.seconds;
    return check && (is_slow || growth > 2.5) ? 1 : 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "measure_extract: %s\n", error.what());
    return 1;
  }
}

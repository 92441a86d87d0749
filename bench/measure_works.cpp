// Prints what comparing, joining, verifying and shrinking cost: time against splits of the same
// files, and memory per record.
//
//     measure_works [--parts N] [--rounds N] [--check]
//
// The file has N parts with bodies; half of that is measured, too. All works and the split take
// turns. --check: exit code 1 when a target is missed.
#include <CLI/CLI.hpp>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "measure/child.h"
#include "measure/samples.h"
#include "measure/workshop.h"

namespace {

using namespace Kessel::bench;
namespace fs = std::filesystem;

/// What is measured, and how many splits it may take.
struct Work {
  std::string name;
  double files;        ///< of the input's size that it reads: so many splits it is compared with
  double most_splits;  ///< for each of them
  std::string first;   ///< what it works on, in the folder of works
  std::string second;
};

const std::vector<Work> WORKS = {
    {"diff", 2, 3, "in.stp", "copy.stp"},
    {"join", 1, 2, "", "joined.stp"},
    {"verify", 1, 4, "in.stp", "parts"},
    {"shrink", 1, 4, "in.stp", "small.stp"},
};

/// The works on one file.
struct Figures {
  Medians split;
  std::vector<Medians> works;
  double records = 0;
  std::string shrunk;
};

class Measuring {
 public:
  Measuring(const Workshop& workshop, const Programs& programs, fs::path work_once)
      : workshop_(workshop), programs_(programs), work_once_(std::move(work_once)) {}

  Figures measure(std::uint32_t parts, int rounds) const {
    const Input input = workshop_.input(programs_, "bodies", parts);
    const fs::path folder = workshop_.fresh("works");
    fs::create_directory(folder);
    fs::create_hard_link(input.path, folder / "in.stp");
    fs::copy_file(input.path, folder / "copy.stp");
    run(folder, "split", "in.stp", "parts");
    std::ifstream list(folder / "parts" / "roots.txt");
    std::string root;
    std::getline(list, root);
    Samples splits;
    std::vector<Samples> works(WORKS.size());
    for (int round = 0; round < rounds; ++round) {
      splits.add(run(folder, "split", "in.stp", "fresh"));
      fs::remove_all(folder / "fresh");
      for (std::size_t i = 0; i < WORKS.size(); ++i) {
        const Work& work = WORKS[i];
        const std::string first = work.first.empty() ? "parts/" + root : work.first;
        works[i].add(run(folder, work.name, first, work.second));
      }
    }
    Figures figures{splits.medians(), {}, static_cast<double>(input.records), {}};
    for (const Samples& samples : works) figures.works.push_back(samples.medians());
    std::ifstream said(folder / "shrink.txt");
    std::getline(said, figures.shrunk);
    fs::remove_all(folder);
    return figures;
  }

 private:
  Cost run(const fs::path& folder, const std::string& work, const std::string& first,
           const std::string& second) const {
    return run_child({work_once_.string(), work, first, second}, folder, folder / (work + ".txt"));
  }

  const Workshop& workshop_;
  const Programs& programs_;
  fs::path work_once_;
};

double splits_of(const Figures& figures, std::size_t work) {
  return figures.works[work].seconds / (WORKS[work].files * figures.split.seconds);
}

/// Prints a row for each work, and returns whether all targets are met.
bool print(const Figures& half, const Figures& whole) {
  std::printf("%.0f records; the split: %.2f s, %.0f bytes per record\n\n", whole.records,
              whole.split.seconds, whole.split.peak_memory / whole.records);
  std::puts("| work | of as many splits | aim | processor | bytes per record | twice the size |");
  std::puts("|---|---:|---:|---:|---:|---:|");
  bool is_met = true;
  for (std::size_t i = 0; i < WORKS.size(); ++i) {
    const Work& work = WORKS[i];
    const Medians& cost = whole.works[i];
    const double growth = cost.seconds / half.works[i].seconds;
    const double splits = splits_of(whole, i);
    std::printf("| %s | %.2f | %.0f | %.2f | %.0f | %.2f |\n", work.name.c_str(), splits,
                work.most_splits, cost.cpu_seconds / (work.files * whole.split.cpu_seconds),
                cost.peak_memory / (work.files * whole.records), growth);
    is_met = is_met && splits <= work.most_splits && growth <= 2.5;
  }
  std::printf("\nShrunk: %s\n", whole.shrunk.c_str());
  return is_met;
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app("What comparing, joining, verifying and shrinking cost.");
  std::uint32_t parts = 960;
  int rounds = 5;
  bool check = false;
  app.add_option("--parts", parts, "Parts of the file; 960 make 46 MB")->capture_default_str();
  app.add_option("--rounds", rounds, "How often each is measured")->capture_default_str();
  app.add_flag("--check", check, "Fail when a target is missed");
  CLI11_PARSE(app, argc, argv);
  try {
    const fs::path bin = fs::absolute(fs::path(argv[0])).parent_path();
    const Programs programs(bin);
    const Workshop workshop{fs::path()};
    const Measuring measuring(workshop, programs, bin / "work_once");
    const Figures half = measuring.measure(parts / 2, rounds);
    const Figures whole = measuring.measure(parts, rounds);
    return print(half, whole) || !check ? 0 : 1;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "measure_works: %s\n", error.what());
    return 1;
  }
}

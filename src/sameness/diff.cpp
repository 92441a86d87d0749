// The order in which two files are compared.
#include "kessel/diff.h"

#include <algorithm>
#include <system_error>

#include "findings/progress_reporter.h"
#include "sameness/compared_file.h"
#include "sameness/comparison.h"
#include "sameness/differences.h"
#include "sameness/graph.h"
#include "sameness/isomorphism.h"
#include "sameness/owners.h"

namespace Kessel {

namespace {

using namespace Sameness;

/// The readings of several files as one stage.
class JointReading {
 public:
  JointReading(const Options& options, const std::filesystem::path& a,
               const std::filesystem::path& b)
      : options_(options) {
    std::error_code ignored;
    size_of_a_ = std::filesystem::file_size(a, ignored);
    if (ignored) size_of_a_ = 0;
    total_ = size_of_a_ + std::filesystem::file_size(b, ignored);
    if (ignored) total_ = size_of_a_;
  }

  Options of_a() const { return with_offset(0); }
  Options of_b() const { return with_offset(size_of_a_); }

 private:
  Options with_offset(std::uint64_t offset) const {
    Options options = options_;
    if (!options.progress) return options;
    options.progress = [this, offset](const Progress& progress) {
      const std::uint64_t done = std::min(offset + progress.done, total_);
      options_.progress({Stage::reading, done, total_});
    };
    return options;
  }

  const Options& options_;
  std::uint64_t size_of_a_ = 0;
  std::uint64_t total_ = 0;
};

/// Whether every value of `a` to which nothing refers is one of `b`'s, whoever refers to it there.
bool has_loose_values(const ComparedFile& a, const ComparedFile& b) {
  std::vector<bool> is_used(a.instances.size());
  for (Index record = 0; record < a.instances.size(); ++record) {
    for (const Reference reference : a.instances.references(record)) {
      if (reference.record() != NO_RECORD) is_used[reference.record()] = true;
    }
  }
  std::vector<std::uint64_t> loose;
  for (Index record = 0; record < a.instances.size(); ++record) {
    if (is_used[record] || !a.fingerprints.is_pure[record]) continue;
    loose.push_back(a.fingerprints.structure[record]);
  }
  if (loose.empty()) return true;
  std::sort(loose.begin(), loose.end());
  loose.erase(std::unique(loose.begin(), loose.end()), loose.end());
  std::vector<bool> is_there(loose.size());
  for (Index record = 0; record < b.instances.size(); ++record) {
    if (!b.fingerprints.is_pure[record]) continue;
    const std::uint64_t structure = b.fingerprints.structure[record];
    const auto found = std::lower_bound(loose.begin(), loose.end(), structure);
    if (found != loose.end() && *found == structure) {
      is_there[static_cast<std::size_t>(found - loose.begin())] = true;
    }
  }
  return std::find(is_there.begin(), is_there.end(), false) == is_there.end();
}

class Comparison {
 public:
  Comparison(const ComparedFile& a, const ComparedFile& b)
      : a_(a),
        b_(b),
        // Copies may take as many nodes as the records of both files take four times; where files
        // say the same, both stay below that or none does but for an equal one of each.
        most_further_(4 * (std::uint64_t{a.instances.size()} + b.instances.size())),
        owners_a_(a.instances, a.fingerprints, a.order, a.products, most_further_),
        owners_b_(b.instances, b.fingerprints, b.order, b.products, most_further_) {}

  Verdict verdict() const {
    if (!has_loose_values(a_, b_) || !has_loose_values(b_, a_)) return Verdict::different;
    const bool with_copies = !owners_a_.has_too_many() && !owners_b_.has_too_many();
    Graph graph_a(a_.instances, a_.fingerprints, a_.order, with_copies ? &owners_a_ : nullptr);
    const Column<std::uint64_t> colours_a = colours_of(graph_a, a_.fingerprints.structure);
    graph_a.forget_users();  // Colours nearly always tell all.
    Graph graph_b(b_.instances, b_.fingerprints, b_.order, with_copies ? &owners_b_ : nullptr);
    const Column<std::uint64_t> colours_b = colours_of(graph_b, b_.fingerprints.structure);
    graph_b.forget_users();
    return compare(graph_a, graph_b, colours_a, colours_b);
  }

  const Owners& owners_a() const { return owners_a_; }
  const Owners& owners_b() const { return owners_b_; }

 private:
  const ComparedFile& a_;
  const ComparedFile& b_;
  std::uint64_t most_further_;
  Owners owners_a_;
  Owners owners_b_;
};

}  // namespace

Difference Sameness::compare_files(const ComparedFile& a, const BodyReader& bodies_of_a,
                                   const ComparedFile& b, const BodyReader& bodies_of_b,
                                   const Options& options) {
  Difference difference;
  difference.schemas_in_a = schemas_of(a.instances);
  difference.schemas_in_b = schemas_of(b.instances);
  difference.records_in_a = a.instances.size();
  difference.records_in_b = b.instances.size();

  constexpr std::uint64_t STEPS = 3;
  ProgressReporter reporter(options, Stage::sorting, STEPS);
  const Comparison comparison(a, b);
  reporter.report(1);
  const Verdict verdict = comparison.verdict();
  reporter.report(2);
  difference.is_certain = verdict != Verdict::undecided;
  difference.is_same =
      verdict != Verdict::different && difference.schemas_in_a == difference.schemas_in_b;
  if (verdict == Verdict::different) {
    difference.products = differences({a, comparison.owners_a(), bodies_of_a},
                                      {b, comparison.owners_b(), bodies_of_b});
  }
  reporter.report_end();
  return difference;
}

Difference diff(const std::filesystem::path& a, const std::filesystem::path& b,
                const Options& options) {
  const JointReading reading(options, a, b);
  ComparedFile file_a;
  ComparedFile file_b;
  const Options options_a = reading.of_a();
  read_file(a, file_a, options_a);
  const Options options_b = reading.of_b();
  read_file(b, file_b, options_b);
  return compare_files(file_a, body_reader(a, file_a.instances), file_b,
                       body_reader(b, file_b.instances), options);
}

}  // namespace Kessel

// The order of the checks.
#include "kessel/check.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <utility>

#include "check/record_checks.h"
#include "check/referred_files.h"
#include "external/targets.h"
#include "findings/finding_list.h"
#include "findings/input_file.h"
#include "findings/progress_reporter.h"
#include "instances/noting_loader.h"
#include "instances/places.h"
#include "instances/schema.h"
#include "kessel/errors.h"
#include "products/products.h"

namespace Kessel {

namespace {

/// Reads `in`, finds what is wrong with it by itself, and lets `look` add what else there is to say
/// of the records, if they could be read to their end.
template <class Look>
std::vector<Finding> read_and_check(std::istream& in, const std::filesystem::path& folder,
                                    const Options& options, Look look) {
  FindingList findings;
  Instances instances;
  NotingLoader loader(instances, options, findings, size_for_progress(in, options));
  bool is_read = true;
  try {
    load_with(in, loader, options);
  } catch (const InputError& error) {
    findings.add(error.finding());
    is_read = false;
  }
  if (is_read) {
    const Products products = find_products(instances);
    check_records(in, instances, products, folder, findings);
    look(instances, products, findings);
  }
  std::vector<Finding> found = findings.take();
  locate(in, found);
  return found;
}

std::vector<Finding> check_alone(const std::filesystem::path& in, const Options& options) {
  std::ifstream file = open_input(in);
  return read_and_check(file, folder_of_references(in, options), options,
                        [](const Instances&, const Products&, FindingList&) {});
}

/// Checks one file after the other, and learns from each which others there are.
class FollowingCheck {
 public:
  FollowingCheck(const std::filesystem::path& in, const Options& options)
      : options_(options), files_(in, options) {}

  std::vector<Finding> run() {
    std::vector<std::vector<Finding>> by_file;
    for (std::size_t i = 0; i < files_.size(); ++i) by_file.push_back(named(i, check_file(i)));
    for (auto& [file, circle] : files_.circles()) {
      by_file[file].insert(by_file[file].begin(), std::move(circle));
    }
    std::vector<Finding> all;
    for (auto& found : by_file) std::move(found.begin(), found.end(), std::back_inserter(all));
    return all;
  }

 private:
  std::vector<Finding> check_file(std::size_t i) {
    const ReferredFile file = files_[i];
    try {
      const bool is_elsewhere = i != 0 && options_.readable;
      const auto path = is_elsewhere ? options_.readable(file.place) : file.place;
      Options options = options_;
      tell_progress(options);
      std::ifstream in = open_input(path);
      auto found = read_and_check(
          in, file.folder, options,
          [&](const Instances& instances, const Products& products, FindingList& findings) {
            require_schema(instances, findings);
            files_.follow(i, in, instances, products, findings);
          });
      bytes_ += size_of_file(path);
      return found;
    } catch (const InputError& error) {
      return {error.finding()};
    }
  }

  /// Of as many bytes as are known to be read.
  void tell_progress(Options& options) const {
    if (!options_.progress) return;
    options.progress = [this](const Progress& progress) {
      options_.progress({progress.stage, bytes_ + progress.done, bytes_ + progress.total});
    };
  }

  void require_schema(const Instances& instances, FindingList& findings) {
    const std::string schema = schema_of(instances);
    if (!schema_) schema_ = schema;
    if (schema == *schema_) return;
    Finding finding = other_schema(schema, *schema_);
    finding.severity = Severity::warning;
    findings.add(std::move(finding));
  }

  std::vector<Finding> named(std::size_t i, std::vector<Finding> found) const {
    // What is referred to may be a shape alone.
    if (i != 0)
      std::erase_if(found, [](const Finding& one) { return one.kind == FindingKind::no_part; });
    for (Finding& finding : found) finding.file = files_[i].name;
    return found;
  }

  const Options& options_;
  ReferredFiles files_;
  std::optional<std::string> schema_;  // the input's
  std::uint64_t bytes_ = 0;            // of the files that were read
};

}  // namespace

std::vector<Finding> check(const std::filesystem::path& in, const Options& options) {
  try {
    return options.follow_references ? FollowingCheck(in, options).run() : check_alone(in, options);
  } catch (const InputError& error) {
    return {error.finding()};
  }
}

}  // namespace Kessel

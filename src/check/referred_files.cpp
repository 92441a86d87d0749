#include "check/referred_files.h"

#include <set>
#include <span>

#include "check/cycles.h"
#include "encoding/utf8_path.h"
#include "external/external_references.h"
#include "external/targets.h"
#include "findings/finding_kinds.h"
#include "instances/places.h"

namespace Kessel {

namespace fs = std::filesystem;

ReferredFiles::ReferredFiles(const fs::path& in, const Options& options)
    : follow_outside_(options.follow_outside),
      folder_(without_links(folder_of_references(in, options))) {
  files_.push_back({in, folder_of_references(in, options), {}});
  targets_.emplace_back();
  known_.emplace(without_links(files_.front().folder / in.filename()), 0);
}

std::uint32_t ReferredFiles::enter(const fs::path& place, const fs::path& plain) {
  const auto [entry, is_new] = known_.emplace(plain, static_cast<std::uint32_t>(files_.size()));
  if (is_new) {
    files_.push_back({place, place.parent_path(), utf8_of_path(plain.lexically_relative(folder_))});
    targets_.emplace_back();
  }
  return entry->second;
}

void ReferredFiles::follow(std::size_t from, std::istream& in, const Instances& instances,
                           const Products& products, FindingList& findings) {
  const fs::path folder = files_[from].folder;
  std::set<fs::path> told;
  for (const ExternalReference& reference : find_external_references(instances, products)) {
    const Target target = find_target(folder, reference);
    if (!target.is_there) continue;  // The check of the file itself says so.
    const fs::path plain = without_links(target.path);
    if (follow_outside_ || is_below(plain, folder_)) {
      const std::uint32_t file = enter(target.path, plain);
      targets_[from].push_back(file);
    } else if (told.insert(plain).second) {
      findings.add(warning_at(in, instances, reference.document, FindingKind::target_outside,
                              "The file " + quoted_name(target.name->name) +
                                  " lies outside of the input's folder, and is not followed."));
    }
  }
}

std::vector<std::pair<std::size_t, Finding>> ReferredFiles::circles() const {
  const auto targets = [&](std::uint32_t file) { return std::span(targets_[file]); };
  const auto itself = [](std::uint32_t file) { return file; };
  CycleSearch search(files_.size(), targets, itself);
  search.visit(0);  // It leads to all of them.
  std::vector<std::pair<std::size_t, Finding>> findings;
  for (const Cycle& cycle : search.cycles()) {
    Finding finding = make_finding(
        FindingKind::file_cycle, cycle.size == 1 ? "The file refers to itself."
                                                 : "The file is one of " + with_commas(cycle.size) +
                                                       " that refer to each other in a circle.");
    finding.severity = Severity::warning;
    finding.file = files_[cycle.lowest].name;
    findings.emplace_back(cycle.lowest, std::move(finding));
  }
  return findings;
}

}  // namespace Kessel

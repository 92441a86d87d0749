#include "verify/split_folder.h"

#include <algorithm>
#include <fstream>
#include <system_error>
#include <vector>

#include "encoding/utf8_path.h"
#include "exchange/reader.h"
#include "external/external_references.h"
#include "external/targets.h"
#include "findings/finding_kinds.h"
#include "instances/loader.h"
#include "kessel/errors.h"
#include "products/products.h"
#include "split_list/split_root.h"

namespace Kessel {

namespace {

namespace fs = std::filesystem;

bool is_exchange_file(const fs::path& path) {
  std::string extension = path.extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return extension == ".stp" || extension == ".step" || extension == ".p21";
}

bool is_file(const fs::path& path) {
  std::error_code ignored;
  return fs::is_regular_file(path, ignored);
}

/// Counts records.
class RecordCounter final : public Exchange::Listener {
 public:
  void record(const Exchange::Record&) override { ++count_; }
  std::uint64_t count() const { return count_; }

 private:
  std::uint64_t count_ = 0;
};

/// What there is in a file of the folder that no other refers to.
struct Others {
  std::optional<Finding> error;
  std::uint64_t records = 0;
};

Others count_records(const fs::path& path) {
  RecordCounter counter;
  std::ifstream in(path, std::ios::in | std::ios::binary);
  const Exchange::Ending ending = read_exchange_file(in, {}, counter);
  return {ending.error, counter.count()};
}

}  // namespace

std::optional<fs::path> SplitFolder::find_root(FindingList& findings) {
  if (!read_names(findings)) return std::nullopt;
  read_list(findings);
  if (auto root = root_in_list(findings)) return root;
  if (auto root = listed_root(findings)) return root;
  if (auto root = unreferenced_file()) return root;
  findings.begin_file(".");
  findings.add(make_finding(FindingKind::missing_file,
                            names_.empty() ? "There is no exchange file in the folder."
                                           : "No file is known to be the root's: there is none, or "
                                             "more than one, to which no other refers."));
  return std::nullopt;
}

bool SplitFolder::read_names(FindingList& findings) {
  std::error_code error;
  fs::directory_iterator entry(path_, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    const fs::path name = entry->path().filename();
    if (is_exchange_file(name) && is_file(entry->path())) names_.insert(name);
  }
  if (!error) return true;
  findings.begin_file(".");
  findings.add(make_finding(FindingKind::missing_file,
                            "The folder cannot be read: " + error.message() + "."));
  return false;
}

void SplitFolder::read_list(FindingList& findings) {
  try {
    list_ = read_split_list(path_);
  } catch (const InputError& error) {
    findings.begin_file(error.finding().file);
    findings.add(error.finding());
  }
}

std::optional<fs::path> SplitFolder::root_in_list(FindingList& findings) const {
  if (!list_) return std::nullopt;
  const std::optional<std::string> other = read_root_list(path_);
  if (other && *other != list_->root) {
    findings.begin_file(ROOT_LIST);
    findings.add(make_finding(FindingKind::wrong_root_list,
                              "It does not name the root's file as the list of the split does."));
  }
  const fs::path root = path_of_utf8(list_->root);
  if (!names_.contains(root)) return std::nullopt;
  return path_ / root;
}

void SplitFolder::check_listed(FindingList& findings) const {
  if (!list_) return;
  for (const ListedFile& file : list_->files) {
    const ListedState state = state_of(file, path_);
    if (state == ListedState::unchanged) continue;
    findings.begin_file(file.name);
    findings.add(state == ListedState::missing
                     ? make_finding(FindingKind::missing_listed_file,
                                    "The split wrote this file, and it is not there.")
                     : make_finding(FindingKind::changed_listed_file,
                                    "The file has changed since the split wrote it."));
  }
}

std::optional<fs::path> SplitFolder::listed_root(FindingList& findings) const {
  const std::optional<std::string> name = read_root_list(path_);
  findings.begin_file(ROOT_LIST);
  if (!name) {
    findings.add(make_finding(FindingKind::missing_root_list,
                              "There is no \"roots.txt\" that holds the root file's name."));
    return std::nullopt;
  }
  const fs::path root = path_of_utf8(*name);
  if (names_.contains(root)) return path_ / root;
  findings.add(make_finding(FindingKind::wrong_root_list,
                            "It does not hold the name of an exchange file in the folder."));
  return std::nullopt;
}

std::optional<fs::path> SplitFolder::unreferenced_file() const {
  std::set<fs::path> with_records;
  std::set<fs::path> referenced;
  for (const fs::path& name : names_) {
    Instances instances;
    try {
      std::ifstream in(path_ / name, std::ios::in | std::ios::binary);
      load_instances(in, instances);
    } catch (const InputError&) {
      with_records.insert(name);  // What cannot be read is told when it is joined.
      continue;
    }
    if (instances.size() != 0) with_records.insert(name);
    const Products products = find_products(instances);
    for (const ExternalReference& reference : find_external_references(instances, products)) {
      for (const FileName& target : reference.names) {
        referenced.insert(path_of_utf8(target.name).lexically_normal());
      }
    }
  }
  for (const fs::path& name : referenced) with_records.erase(name);
  if (with_records.size() != 1) return std::nullopt;
  return path_ / *with_records.begin();
}

std::uint64_t SplitFolder::check_others(const std::set<fs::path>& joined, FindingList& findings) {
  std::uint64_t frames = 0;
  for (const fs::path& name : names_) {
    if (joined.contains(name)) continue;
    const Others others = count_records(path_ / name);
    findings.begin_file(utf8_of_path(name));
    if (others.error) {
      findings.add(*others.error);
    } else if (others.records != 0) {
      findings.add(make_finding(FindingKind::foreign_file,
                                "The file does not belong to the split: no other refers to it."));
    } else {
      ++frames;
    }
  }
  return frames;
}

}  // namespace Kessel

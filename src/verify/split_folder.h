// The folder of a split.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <set>
#include <string>

#include "findings/finding_list.h"
#include "kessel/split_list.h"

namespace Kessel {

/// The exchange files in a folder, and which of them is the root's.
class SplitFolder {
 public:
  /// Looks into `path`, which must outlive the object.
  explicit SplitFolder(const std::filesystem::path& path) : path_(path) {}

  /// The path of the root's file: the one that the list of the split names, or "roots.txt", or
  /// without those the only one with records to which no other refers. None where there is no such
  /// file, which is a finding, as is a list that is wrong, and a "roots.txt" that is wrong or,
  /// without a list, missing.
  std::optional<std::filesystem::path> find_root(FindingList& findings);

  /// Finds the files of the list that are not there or have changed.
  void check_listed(FindingList& findings) const;

  /// Looks at the files that `joined`, by their names, does not hold: one with records is a
  /// finding, and so is one that cannot be read. Returns how many others there are: frames of
  /// assemblies whose records all stand in the root's file.
  std::uint64_t check_others(const std::set<std::filesystem::path>& joined, FindingList& findings);

 private:
  bool read_names(FindingList& findings);
  void read_list(FindingList& findings);
  std::optional<std::filesystem::path> root_in_list(FindingList& findings) const;
  std::optional<std::filesystem::path> listed_root(FindingList& findings) const;
  std::optional<std::filesystem::path> unreferenced_file() const;

  const std::filesystem::path& path_;
  std::set<std::filesystem::path> names_;
  std::optional<SplitList> list_;
};

}  // namespace Kessel

// The folder of a split.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "findings/finding_list.h"
#include "kessel/part.h"

namespace Kessel {

/// What there is under a part's name. Nothing is opened to find out.
class OutputFolder {
 public:
  /// Looks for the files of `parts` in `path`, both of which must outlive the object.
  OutputFolder(const std::filesystem::path& path, const std::vector<Part*>& parts);

  /// Whether the part's file is there, as a file.
  bool holds(const Part& part) const { return there_[part.list_position] != 0; }

  /// Checks what stands in the folder besides the files of the parts: exchange files, and
  /// "roots.txt", which names `root`'s file (null where there is no root). Returns whether the
  /// folder can be read at all; where it cannot, that is a finding.
  bool check_others(const Part* root, FindingList& findings) const;

  /// Why the part's file is none.
  Finding why_not(const Part& part) const;

  /// The whole of a part's file that is there. A finding where it has more than `most` bytes, or
  /// cannot be read; `text` is then empty.
  std::optional<Finding> read(const Part& part, std::uint64_t most, std::string& text) const;

 private:
  void check_root_list(const Part* root, FindingList& findings) const;

  const std::filesystem::path& path_;
  const std::vector<Part*>& parts_;
  std::vector<char> there_;  // by position in the list of parts
};

}  // namespace Kessel

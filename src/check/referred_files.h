// The files that are checked together: an input, and those to which it refers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <istream>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "findings/finding_list.h"
#include "instances/instances.h"
#include "kessel/finding.h"
#include "kessel/options.h"
#include "products/products.h"

namespace Kessel {

/// One of the files.
struct ReferredFile {
  std::filesystem::path place;   ///< where it lies
  std::filesystem::path folder;  ///< from which its names of other files are seen
  std::string name;              ///< seen from the input's folder, UTF-8; empty for the input
};

/// Files, each once, in the order in which references lead to them; the input is the first.
class ReferredFiles {
 public:
  /// Just the input. Of the options its folder and `follow_outside` matter.
  ReferredFiles(const std::filesystem::path& in, const Options& options);

  std::size_t size() const { return files_.size(); }
  const ReferredFile& operator[](std::size_t i) const { return files_[i]; }

  /// Adds the files to which `instances` refers, read from `in`, the file at `from`. Adds to
  /// `findings` which of them lie outside of the input's folder, if these are not followed.
  void follow(std::size_t from, std::istream& in, const Instances& instances,
              const Products& products, FindingList& findings);

  /// Files that refer to each other in circles: of each circle its first file, and the finding.
  std::vector<std::pair<std::size_t, Finding>> circles() const;

 private:
  std::uint32_t enter(const std::filesystem::path& place, const std::filesystem::path& plain);

  const bool follow_outside_;
  std::filesystem::path folder_;  // the input's, without links
  std::vector<ReferredFile> files_;
  std::vector<std::vector<std::uint32_t>> targets_;       // by file: those to which it refers
  std::map<std::filesystem::path, std::uint32_t> known_;  // by path without links
};

}  // namespace Kessel

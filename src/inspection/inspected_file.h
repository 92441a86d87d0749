// An exchange file that was read to be looked at, not to be split.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "inspection/kept_texts.h"
#include "inspection/type_counts.h"
#include "model/store.h"
#include "kessel/options.h"

namespace Kessel {

/// The store of a file with its parts linked and named as in a split, and besides what the store
/// does not keep. Prints nothing and leaves nothing behind, on the disk or in statics.
class InspectedFile {
 public:
  /// Reads `in` once, for a split with `options`. Throws as read_assembly() does.
  InspectedFile(const std::filesystem::path& in, const Options& options);

  const Store& file() const { return file_; }
  /// The number of a part's record; 0 for a generated root.
  std::uint32_t number_of(const Part& part) const { return numbers_[part.list_position]; }
  /// The file up to the end of its header section, line by line.
  const std::string& header() const { return header_; }
  /// The texts of products, units, measures and contexts, and what representations are called.
  const KeptTexts& texts() const { return texts_; }
  const TypeCounts& types() const { return types_; }
  /// The numbers of contexts that assign units, ascending.
  const std::vector<std::uint32_t>& unit_contexts() const { return unit_contexts_; }

 private:
  void read();
  void keep_text(std::uint32_t number, const TypeCounts::Type& type, std::string_view record);
  void find_structure();

  Store file_;
  std::string header_;
  KeptTexts texts_;
  TypeCounts types_;
  std::vector<std::uint32_t> unit_contexts_;
  std::vector<std::uint32_t> numbers_;  // by position in the list of parts
};

}  // namespace Kessel

// The input of a split, and what the rules place in each file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/store.h"
#include "kessel/options.h"
#include "structure/reachability.h"
#include "verify/record_texts.h"

namespace Kessel {

/// A reference block that belongs into a file.
struct PlacedBlock {
  const Part* component = nullptr;  ///< whose file it names; null where it names none
  std::uint32_t shape = 0;          ///< number in the file of the component's shape
  std::uint32_t definition = 0;     ///< number in the file of the component's definition
};

/// Reads an input as a run does, up to the point where a run would write. Prints nothing, writes
/// nothing and leaves nothing in statics.
class PlacedInput {
 public:
  /// Throws `InputError` as the checked form of a run does, `std::invalid_argument` where `in`
  /// cannot be opened, `std::out_of_range` over a reference beyond the store.
  PlacedInput(const std::filesystem::path& in, const Options& options);

  const Store& file() const { return *file_; }
  const std::vector<Part*>& parts() const { return file_->parts; }
  const std::string& first_line() const { return file_->first_line; }
  const std::string& header() const { return file_->header; }

  /// Which record of the input each record of the part's file is: the first is number 1's. 0 where
  /// nothing is placed.
  std::span<const std::uint32_t> records_of(const Part& part) const;
  /// The reference blocks in the part's file, in their order; their numbers follow those of the
  /// records.
  std::span<const PlacedBlock> blocks_of(const Part& part) const;
  /// The number of the input's record `id` in the part's file; 0 where it is not placed there.
  std::uint32_t number_in(Part& part, std::uint32_t id) const;
  /// The texts of the records.
  RecordTexts& texts() { return texts_; }

 private:
  void list_records();
  void place_blocks(std::uint32_t link, AssemblyStyle style, ReachabilitySearch& search);

  std::unique_ptr<Store> file_;
  RecordTexts texts_;
  std::vector<std::size_t> first_record_;         // by position in the list of parts, and the end
  std::vector<std::uint32_t> records_;            // of all parts
  std::vector<std::vector<PlacedBlock>> blocks_;  // by position in the list of parts
};

}  // namespace Kessel

// The records of a reference block.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "verify/placed_input.h"
#include "verify/tokens.h"

namespace Kessel {

/// How many records a reference block has (external document reference, ISO 10303-41).
inline constexpr std::uint32_t BLOCK_RECORDS = 11;

/// Which of them, counted from 0, names the file first.
inline constexpr std::uint32_t DOCUMENT_FILE = 1;

/// How a record compares with that of a block.
enum class BlockMatch {
  same,
  other_name,  ///< the same but for the file's name
  other,
};

/// Compares `words` with the record `index` of `block`, whose first record has the number `first`
/// and which names `file_name` (UTF-8).
BlockMatch match_block(const std::vector<Token>& words, std::uint32_t index,
                       const PlacedBlock& block, std::uint32_t first, std::string_view file_name);

}  // namespace Kessel

// The marks by which a split says where its records come from.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace Kessel {

/// What stands in a comment in front of a record of a split's file.
struct Mark {
  enum class Kind : std::uint8_t {
    none,      ///< no mark: a record of the input that stands in this file only, whole
    whole,     ///< /*12*/ the input's record, or a share of its list, which stands elsewhere, too
    stand_in,  ///< /*~12*/ stands for the input's record, and says less
    made,      ///< /*~*/ the split made it
  };
  Kind kind = Kind::none;
  std::uint64_t number = 0;  ///< of the record in the input
};

/// The mark in what stands in front of a record (Exchange::Record::lead); the last of several.
Mark mark_in(std::string_view lead);

/// The number that tells one input from another, from the comment in front of a split file's first
/// record; none where there is no such comment. Marks mean nothing without it.
std::optional<std::uint64_t> split_in(std::string_view lead);

}  // namespace Kessel

// Texts of records with other numbers in them.
#pragma once

#include <span>
#include <string_view>

#include "exchange/statement_cutter.h"
#include "instances/instances.h"
#include "output/file_numbers.h"

namespace Kessel {

/// A text of the input with the instance names in it, and what they refer to, in the same order.
struct MentioningText {
  std::string_view text;
  std::span<const Exchange::Mention> mentions;
  std::span<const Reference> references;

  /// The part of it that `part`, a view into `text`, takes.
  MentioningText cut(std::string_view part) const;
};

/// Digits that a number may take.
inline constexpr std::size_t MOST_DIGITS = 20;

/// Bytes that renumbered() may need for such a text.
std::size_t renumbering_room(const MentioningText& text);

/// Writes `text` to `out` with the numbers of `file`. A name that leads to no record keeps its
/// number where no record of the file has it, else it gets one that none has. Returns the end.
char* renumbered(const MentioningText& text, const FileNumbers& numbers, FileId file, char* out);

/// The same for one name, whose digits in the input are `digits`.
char* renumbered_name(std::string_view digits, Reference reference, const FileNumbers& numbers,
                      FileId file, char* out);

}  // namespace Kessel

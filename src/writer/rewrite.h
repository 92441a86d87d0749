// Rewrites one record's text for one part's file: its own number, its references, and the two kinds
// of record that change more than that. Texts are never parsed into attributes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/reader.h"
#include "instances/laid_out_input.h"
#include "kessel/entity.h"
#include "kessel/part.h"
#include "model/slots.h"
#include "reader/text.h"

namespace Kessel {

/// One `#n` of a text, the record's own number included.
struct TextReference {
  std::size_t begin;     ///< where the number's digits begin, leading zeros left out
  std::size_t end;       ///< behind the last digit
  std::uint32_t number;  ///< 1 to 4,294,967,295
};

/// Finds the references in `text` outside string literals, in order, up to the first "#" without
/// such a number; whatever stands behind that keeps its references as they are. Clears `found`.
void find_references(std::string_view text, std::vector<TextReference>& found);

/// The same for a record that was read as the standard has it. What is no number from 1 to
/// 4,294,967,295 is passed over.
void find_references(const Exchange::Record& record, std::vector<TextReference>& found);

/// The same in a text without comments of such a record.
void find_all_references(std::string_view text, std::vector<TextReference>& found);

/// The reference `number` in `text`, whose digits stand at [begin, end).
inline TextReference reference_at(std::string_view text, std::uint32_t number, const char* begin,
                                  const char* end) {
  while (*begin == '0') ++begin;
  return {static_cast<std::size_t>(begin - text.data()),
          static_cast<std::size_t>(end - text.data()), number};
}

/// The first of them; no value where there is none.
inline std::optional<TextReference> first_reference(std::string_view text) {
  const char* const end = text.data() + text.size();
  const char* begin = text.data();
  if (begin == end || *begin != '#') begin = find_reference(begin, end);  // Nearly never.
  if (begin == nullptr) return std::nullopt;
  const char* p = ++begin;
  const std::uint32_t number = read_number(p, end);
  if (number == 0) return std::nullopt;
  return reference_at(text, number, begin, p);
}

/// Bytes that rewriting `text` may need at most, the ones that it may write behind its end
/// included.
std::size_t rewriting_room(std::string_view text, const std::vector<TextReference>& references);

/// Writes `text` to `out`, where rewriting_room() bytes are free, with every reference of
/// `references`, which were found in it, replaced by the number that the instance has in `part`'s
/// file. A reference that the part does not hold is cut out with one comma: back to the last "," or
/// "(" written, which goes (a comma) or stays (a parenthesis; then a comma that follows goes).
/// Zeros in front of a number stay. Returns the end of what was written. One forward pass, linear
/// in the text. Throws `std::out_of_range` "invalid vector subscript" over a reference beyond the
/// store.
char* rewrite_references(std::string_view text, const std::vector<TextReference>& references,
                         Slots slots, Part* part, char* out);

/// The same, appended to `out`, where an exception leaves some bytes more.
void rewrite_references(std::string_view text, const std::vector<TextReference>& references,
                        Slots slots, Part* part, std::string& out);

/// Fast path for records that many parts hold: the same for a whole record, whose own number, the
/// first of `references`, becomes `own_number` without being looked up.
char* rewrite_record(std::string_view record, const std::vector<TextReference>& references,
                     std::uint32_t own_number, Slots slots, Part* part, char* out);

/// Fast path for a record that is rewritten once: finds the references behind its own, `own`, on
/// the way. PIECE_BLOCK bytes behind it can be read. Needs more room, for a text that is nothing
/// but references.
std::size_t rewriting_room(std::string_view record);
char* rewrite_record(std::string_view record, const TextReference& own, std::uint32_t own_number,
                     Slots slots, Part* part, char* out);

/// The same for the record of a standard reading that `input` is at, whose references become
/// `numbers`, one for each of its names; takes these.
std::size_t rewriting_room(const LaidOutInput& input, std::size_t names);
char* rewrite_record(LaidOutInput& input, std::uint32_t own_number,
                     std::span<const std::uint32_t> numbers, char* out);

/// Appends the record `text` of `record`, a presentation representation, with its item list made
/// anew from those references of the record that `part` holds. The context, being a reference,
/// stands among them; outputs depend on it. Without an item list in the text (the second "(",
/// closed by the first ")" behind it) the record is rewritten like any other. Throws as
/// `rewrite_references` does.
void rewrite_presentation_items(std::string_view text, const std::vector<TextReference>& references,
                                const Entity& record, Slots slots, Part* part, std::string& out);

/// A representation context record for an assembly that shares it: its context type becomes
/// 'external'. That is the second attribute of a GEOMETRIC_REPRESENTATION_CONTEXT, in a complex
/// instance (`entity` is of another type) the second of its REPRESENTATION_CONTEXT. A text without
/// it is returned as it is.
std::string make_context_external(std::string text, const Entity& entity);

}  // namespace Kessel

// As much of JSON (RFC 8259) as the list of a split needs.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Kessel {

/// `utf8` in quotation marks, with escapes. What is not UTF-8 becomes characters as
/// naming/characters.h has it.
std::string json_string(std::string_view utf8);

/// A value that was read.
struct JsonValue {
  enum class Kind { other, number, string, list, object };

  Kind kind = Kind::other;       // "other" are true, false and null
  std::string text;              // of a string, decoded; of a number, as it stands
  std::string name;              // as a member of an object
  std::vector<JsonValue> items;  // of a list; the members of an object

  /// The first member of that name; null for none, and for what is no object.
  const JsonValue* find(std::string_view wanted) const;
  /// The number, where it is a whole one without sign of up to 64 bits.
  std::optional<std::uint64_t> whole_number() const;
};

/// Reads `text`, which is UTF-8 and holds one value; nothing where it does not, or where lists and
/// objects are nested more than thirty deep.
std::optional<JsonValue> read_json(std::string_view text);

}  // namespace Kessel

// Counts records by type, and knows whose text is worth keeping.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "kessel/summary.h"

namespace Kessel {

/// How much of a record's text inspection needs.
enum class TextKept {
  none,
  first_string,  ///< up to the end of its first string
  whole,
};

/// A tally by type. A complex instance counts under its keywords with a space between them.
class TypeCounts {
 public:
  struct Type {
    std::string name;
    TextKept text = TextKept::none;
    bool assigns_units = false;  ///< a context that says what units geometry is measured in
    std::uint64_t records = 0;
  };

  /// What `type`, a keyword or the inner text of a complex instance, counts under. The result is
  /// the caller's to count in, and valid as long as the object.
  Type& of(std::string_view type);

  /// All types, the most frequent first, equally frequent ones by name.
  std::vector<TypeCount> sorted() const;

 private:
  std::deque<Type> types_;
  std::unordered_map<std::string_view, Type*> by_name_;
  std::string keywords_;  // Scratch: the name of a complex instance.
};

}  // namespace Kessel

// Keeps the file names of one folder apart.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace Kessel {

/// The form in which names that file systems may take for one are equal. UTF-8 in and out.
std::string caseless_name(std::string_view name);

/// Gives out file names of which no two differ in case or normal form only, since many file systems
/// take such names for one.
class UniqueNames {
 public:
  /// The first of `stem`, "`stem` (2)", "`stem` (3)", ... that was not given out yet, cut where it
  /// would get too long, with ".stp" behind. UTF-8 in and out.
  std::string take(std::string_view stem);

  /// Keeps the file name `name` from being given out, whatever its case. UTF-8.
  void reserve(std::string_view name);

 private:
  /// By caseless name: the number that was given out last for this stem.
  std::unordered_map<std::string, std::uint32_t> taken_;
};

}  // namespace Kessel

// Keeps the file names of one folder apart.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace Kessel {

/// Gives out file names of which no two differ in case or normal form only, since many file systems
/// take such names for one.
class UniqueNames {
 public:
  /// The first of `stem`, "`stem` (2)", "`stem` (3)", ... that was not given out yet, cut where it
  /// would get too long, with ".stp" behind. UTF-8 in and out.
  std::string take(std::string_view stem);

 private:
  /// By caseless name: the number that was given out last for this stem.
  std::unordered_map<std::string, std::uint32_t> taken_;
};

}  // namespace Kessel

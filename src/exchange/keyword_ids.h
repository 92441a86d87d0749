// Numbers the keywords of a file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Kessel::Exchange {

/// Gives each keyword a number, from 0 on in the order in which they are first met.
class KeywordIds {
 public:
  static constexpr std::uint32_t NONE = 0xFFFF'FFFF;

  KeywordIds();

  /// NONE for a long one, and for those that are met when very many are known.
  std::uint32_t id_of(std::string_view keyword);

  /// Bytes behind a text's beginning that recognise() may read.
  static constexpr std::size_t READ_AHEAD = 32;
  /// Fast path for what nearly every record begins with: a keyword that was met before, with " " or
  /// "(" behind it. Returns its number and sets `keyword`; NONE for all else.
  std::uint32_t recognise(const char* text, std::string_view& keyword) const;

 private:
  /// The first and the last eight bytes of a name, which overlap in a short one.
  struct Ends {
    explicit Ends(std::string_view name);
    bool operator==(const Ends&) const = default;
    std::uint64_t first = 0;
    std::uint64_t last = 0;
  };
  struct Known {
    Ends ends{{}};
    std::string_view name;
    std::uint32_t id = 0;
  };
  static std::size_t place_of(const Ends& ends);
  static bool is(const Known& known, const Ends& ends, std::string_view keyword);
  std::uint32_t look_up(Known& known, const Ends& ends, std::string_view keyword);

  std::unordered_map<std::string, std::uint32_t> ids_;
  std::vector<Known> cache_;  // those met last, by a hash of their names' ends
};

}  // namespace Kessel::Exchange

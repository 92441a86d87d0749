// Numbers the keywords of a file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
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

  /// Fast path for what nearly every record begins with: the number of `text` where it is a keyword
  /// that was met not long ago. NONE for all else, which need be no keyword.
  std::uint32_t recognise(std::string_view text) const {
    const Ends ends(text);
    const Known& known = cache_[place_of(ends)];
    return is(known, ends, text) ? known.id : NONE;
  }

 private:
  static constexpr int CACHE_BITS = 10;

  /// The first and the last eight bytes of a name, which overlap in a short one.
  struct Ends {
    explicit Ends(std::string_view name) {
      const char* const begin = name.data();
      const char* const end = begin + name.size();
      if (name.size() >= 8) {
        first = word_at<std::uint64_t>(begin);
        last = word_at<std::uint64_t>(end - 8);
      } else if (name.size() >= 4) {
        first = word_at<std::uint32_t>(begin);
        last = word_at<std::uint32_t>(end - 4);
      } else {
        for (const char c : name) first = first << 8 | static_cast<unsigned char>(c);
      }
    }
    bool operator==(const Ends&) const = default;
    std::uint64_t first = 0;
    std::uint64_t last = 0;
  };
  struct Known {
    Ends ends{{}};
    std::string_view name;
    std::uint32_t id = NONE;
  };

  template <class Word>
  static std::uint64_t word_at(const char* place) {
    Word word = 0;
    std::memcpy(&word, place, sizeof word);
    return word;
  }
  static std::size_t place_of(const Ends& ends) {
    const std::uint64_t mixed = (ends.first + ends.last * 31) * 0x9E37'79B9'7F4A'7C15;
    return mixed >> (64 - CACHE_BITS);
  }
  /// Whether `known` is that keyword, which has those ends.
  static bool is(const Known& known, const Ends& ends, std::string_view keyword) {
    // Names of up to sixteen bytes are their ends.
    const std::size_t size = keyword.size();
    return known.ends == ends && known.name.size() == size &&
           (size <= 16 || std::memcmp(known.name.data() + 8, keyword.data() + 8, size - 16) == 0);
  }
  std::uint32_t look_up(Known& known, const Ends& ends, std::string_view keyword);

  std::unordered_map<std::string, std::uint32_t> ids_;
  std::vector<Known> cache_;  // those met last, by a hash of their names' ends
};

}  // namespace Kessel::Exchange

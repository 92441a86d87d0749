// The texts of those records that say more than the store keeps.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace Kessel {

/// Record texts by instance number. Of a number that is there twice, the last counts, as in the
/// store.
class KeptTexts {
 public:
  void keep(std::uint32_t number, std::string_view text) {
    places_[number] = {texts_.size(), text.size()};
    texts_ += text;
  }

  /// The text of record `number`; empty where none was kept. Valid until the next is kept.
  std::string_view find(std::uint32_t number) const {
    const auto place = places_.find(number);
    if (place == places_.end()) return {};
    return std::string_view(texts_).substr(place->second.begin, place->second.size);
  }

 private:
  struct Place {
    std::size_t begin;
    std::size_t size;
  };
  std::string texts_;
  std::unordered_map<std::uint32_t, Place> places_;
};

}  // namespace Kessel

#include "exchange/keyword_ids.h"

namespace Kessel::Exchange {

namespace {

// What no schema has more of: it bounds what a file can make grow here.
constexpr std::size_t MOST_KEYWORDS = 4096;
constexpr std::size_t MOST_LENGTH = 128;

}  // namespace

KeywordIds::KeywordIds() : cache_(std::size_t{1} << CACHE_BITS) {}

std::uint32_t KeywordIds::id_of(std::string_view keyword) {
  const Ends ends(keyword);
  Known& known = cache_[place_of(ends)];
  return is(known, ends, keyword) ? known.id : look_up(known, ends, keyword);
}

std::uint32_t KeywordIds::look_up(Known& known, const Ends& ends, std::string_view keyword) {
  if (keyword.size() > MOST_LENGTH) return NONE;
  auto entry = ids_.find(std::string(keyword));
  if (entry == ids_.end()) {
    if (ids_.size() == MOST_KEYWORDS) return NONE;
    entry = ids_.emplace(keyword, static_cast<std::uint32_t>(ids_.size())).first;
  }
  known = {ends, entry->first, entry->second};
  return known.id;
}

}  // namespace Kessel::Exchange

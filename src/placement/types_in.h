// Types by tables of entity names.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "instances/keyword_row.h"
#include "instances/type_table.h"

namespace Kessel {

/// STYLED_ITEM and what is derived from that (ISO 10303-46).
inline constexpr Keywords::Row STYLED_ITEMS[] = {{Keywords::Match::ending, "STYLED_ITEM"}};

/// By type: 1 for those of a set, else 0. Records are asked one after the other: no bits.
using TypeSet = std::vector<std::uint8_t>;

/// The types of which one keyword fits one of `rows`.
inline TypeSet types_in(std::span<const Keywords::Row> rows, const TypeTable& types) {
  const auto is_in = [&](std::string_view keyword) {
    return std::any_of(rows.begin(), rows.end(),
                       [&](const Keywords::Row& row) { return row.fits(keyword); });
  };
  TypeSet are_in(types.size());
  for (TypeId type = 0; type < are_in.size(); ++type) {
    const auto& keywords = types.keywords(type);
    are_in[type] = std::any_of(keywords.begin(), keywords.end(), is_in) ? 1 : 0;
  }
  return are_in;
}

}  // namespace Kessel

// How similar names are, for those who mistype one.
#pragma once

#include <cstddef>
#include <string_view>

namespace Kessel {

/// How much `name` differs from `wanted`: insertions, removals and replacements of bytes, ASCII
/// letters without regard to case; 0 where `wanted` is a part of `name`, or `name` half of `wanted`
/// or more. Names of which more than a third, and more than one byte, would have to change are
/// unlike, which is `UNLIKE`.
std::size_t unlikeness(std::string_view name, std::string_view wanted);

inline constexpr std::size_t UNLIKE = ~std::size_t{0};

}  // namespace Kessel

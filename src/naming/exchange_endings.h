// What the names of exchange files end in.
#pragma once

#include <string_view>

namespace Kessel {

/// `name` without the ending ".stp", ".step" or ".p21", in capital or small letters; the whole name
/// where it has none of them.
std::string_view without_exchange_ending(std::string_view name);

}  // namespace Kessel

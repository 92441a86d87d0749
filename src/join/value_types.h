// Which records are values: the one table of them.
#pragma once

#include <string_view>

namespace Kessel {

/// A value has no identity: two records that say the same are as good as one, whoever refers to
/// them. Everything else may be two things that happen to say the same.
///
/// Whether the entity `keyword` is a value. A complex instance is one if all its keywords are.
bool is_value_type(std::string_view keyword);

}  // namespace Kessel

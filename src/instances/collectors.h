// Which records collect others: the one table of them.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace Kessel {

/// A collector says one thing of many: a layer of its items, an approval of what it approves. Its
/// list may be shared out over several files without saying anything else of each item. Everything
/// that is no collector means something only with all that it refers to.

/// The last parameter.
inline constexpr unsigned LAST_PARAMETER = 255;
/// Not a collector.
inline constexpr unsigned NO_PARAMETER = 254;

/// Which parameter of the entity `keyword` (ISO 10303-41, -43, -46, -203, -214, -242), counted from
/// 0 and inherited ones included, is the list that may be shared out; NO_PARAMETER where it is no
/// collector. In a complex instance the keyword is that of the partial record.
unsigned collecting_parameter(std::string_view keyword);

/// The lists in `body` (Exchange::Record::body) that may be shared out, with their parentheses;
/// views into it. None where no partial record is a collector's.
std::vector<std::string_view> collected_lists(std::string_view body);

}  // namespace Kessel

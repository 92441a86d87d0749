// What parameters say (ISO 10303-21, 6.4).
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Kessel {

// Nothing here fails: a parameter that is none of what is asked for gives nothing.

/// What a string literal says, UTF-8.
std::string text_value(std::string_view parameter);

/// What the strings of a list say.
std::vector<std::string> text_values(std::string_view parameter);

/// The name of an enumeration item, "MILLI" for ".MILLI.".
std::string_view enumeration_value(std::string_view parameter);

/// A finite number, typed ("LENGTH_MEASURE(2.54)") or not; 0 for all else.
double number_value(std::string_view parameter);

/// The same; none for all else.
std::optional<double> number_or_none(std::string_view parameter);

}  // namespace Kessel

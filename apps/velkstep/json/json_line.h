// JSON as every command prints it, for the sources of this folder.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace Velkstep {

/// An object whose members stay in the order in which they are set.
using Json = nlohmann::ordered_json;

/// The version of what commands print as JSON, their member "format". It changes when a member
/// goes away or changes its meaning, not when one is added.
inline constexpr int JSON_FORMAT = 1;

/// `value` in one line. Never throws over text: what is not UTF-8 becomes U+FFFD, and all control
/// characters are escaped.
std::string json_line(const Json& value);

}  // namespace Velkstep

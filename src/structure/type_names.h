// Sets of type names found by their spelling.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <unordered_set>

namespace Kessel {

/// Type names in ascending byte order; views into the store's own names or into static text.
using TypeNameSet = std::set<std::string_view>;

/// The same for looking names up: a file may have thousands of complex instances, whose names are
/// long and begin alike.
using TypeNameIndex = std::unordered_set<std::string_view>;

/// Those of `types` that contain `name` anywhere.
TypeNameSet types_containing(const std::set<std::string>& types, std::string_view name);

/// Those of `types` that end with `name`.
TypeNameSet types_ending_with(const std::set<std::string>& types, std::string_view name);

/// Placements and geometric contexts: what a representation may hold without having geometry.
TypeNameSet placement_and_context_types(const std::set<std::string>& types);

}  // namespace Kessel

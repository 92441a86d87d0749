// Links assemblies and their components.
#pragma once

#include <string_view>

#include "model/store.h"

namespace Kessel {

/// The types of usage records (ISO 10303-44), in the order in which components are listed: all
/// links of one type, then those of the next. The first reference of a usage is the assembly's
/// definition, the second one the component's.
inline constexpr std::string_view LINK_TYPES[] = {
    "NEXT_ASSEMBLY_USAGE_OCCURRENCE",
    "ASSEMBLY_COMPONENT_USAGE",
    "QUANTIFIED_ASSEMBLY_COMPONENT_USAGE",
};

/// Enters every component and its assembly into each other's lists. Prints two lines on standard
/// error for a usage without two references. Throws `std::out_of_range` "invalid vector subscript"
/// over a reference beyond the store.
void link_parts(Store& store);

}  // namespace Kessel

// All styles of a split.
#pragma once

#include "kessel/options.h"

namespace Kessel::test {

inline constexpr AssemblyStyle ASSEMBLY_STYLES[] = {AssemblyStyle::classic, AssemblyStyle::lean,
                                                    AssemblyStyle::nested};
inline constexpr NameStyle NAME_STYLES[] = {NameStyle::record, NameStyle::product,
                                            NameStyle::product_unicode};

}  // namespace Kessel::test

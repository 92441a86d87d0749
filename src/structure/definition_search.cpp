// From a shape definition to the product definition behind it.
#include "structure/definition_search.h"

#include <string_view>

namespace Kessel {

std::uint32_t find_definition(ReachabilitySearch& search, std::uint32_t start) {
  constexpr std::string_view TYPES[] = {
      "PRODUCT_DEFINITION",
      "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS",
      "MAPPED_ITEM",
  };
  for (const std::string_view type : TYPES) {
    if (const std::uint32_t found = search.find(start, type)) return found;
  }
  return 0;
}

}  // namespace Kessel

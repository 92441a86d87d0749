// Which records keep their type name, and which an attribute as well.
#pragma once

#include <string_view>

namespace Kessel {

/// How much of a record the store keeps besides its references.
enum class Keep {
  nothing,             ///< references only
  type,                ///< the type name
  type_and_attribute,  ///< the type name and the first string
};

/// What is kept of a record with the given type name (a keyword, or the inner text of a complex
/// instance). Names are compared byte by byte; the tables behind it are hash sets that are built
/// when the library is loaded, and a short list of names that count wherever they occur.
Keep classify(std::string_view type);

}  // namespace Kessel

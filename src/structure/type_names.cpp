// Sets of type names found by their spelling.
#include "structure/type_names.h"

namespace Kessel {

TypeNameSet types_containing(const std::set<std::string>& types, std::string_view name) {
  TypeNameSet found;
  for (const std::string& type : types) {
    if (type.find(name) != std::string::npos) found.insert(found.end(), type);
  }
  return found;
}

TypeNameSet types_ending_with(const std::set<std::string>& types, std::string_view name) {
  TypeNameSet found;
  for (const std::string& type : types) {
    if (type.ends_with(name)) found.insert(found.end(), type);
  }
  return found;
}

TypeNameSet placement_and_context_types(const std::set<std::string>& types) {
  TypeNameSet names = types_containing(types, "GEOMETRIC_REPRESENTATION_CONTEXT");
  names.insert("AXIS2_PLACEMENT_3D");
  return names;
}

}  // namespace Kessel

// Products and usages for exchange files that stand in a test.
#pragma once

#include <string>

#include "splitter/small_inputs.h"

namespace Kessel::test {

inline std::string record(int number, const std::string& text) {
  return "#" + std::to_string(number) + "=" + text + ";\n";
}

/// A product (`number`), its formation and its definition (`number` + 2). `texts` are the product's
/// id, name and description as they stand in a file, such as "'a','b',$".
inline std::string product(int number, const std::string& texts) {
  const auto reference = [](int n) { return "#" + std::to_string(n); };
  return record(number, "PRODUCT(" + texts + ",())") +
         record(number + 1, "PRODUCT_DEFINITION_FORMATION('',''," + reference(number) + ")") +
         record(number + 2, "PRODUCT_DEFINITION('',''," + reference(number + 1) + ",$)");
}

/// A usage of one definition in another.
inline std::string usage(int number, int in, int of) {
  return record(number, "NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#" + std::to_string(in) + ",#" +
                            std::to_string(of) + ",$)");
}

/// A shape for a definition, four records from `number` on; with a solid in it or only a placement.
inline std::string shape(int number, int definition, bool with_solid) {
  const auto reference = [](int n) { return "#" + std::to_string(n); };
  return record(number, "PRODUCT_DEFINITION_SHAPE('',''," + reference(definition) + ")") +
         record(number + 1, "SHAPE_DEFINITION_REPRESENTATION(" + reference(number) + "," +
                                reference(number + 2) + ")") +
         record(number + 2, "SHAPE_REPRESENTATION('',(" + reference(number + 3) + "),$)") +
         record(number + 3,
                with_solid ? "MANIFOLD_SOLID_BREP('',$)" : "AXIS2_PLACEMENT_3D('',$,$,$)");
}

}  // namespace Kessel::test

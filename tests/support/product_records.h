// Records of small assemblies, for tests that write files by hand.
#pragma once

#include <string>

namespace Kessel::test {

/// What the products below share: #1 application context, #2 representation context, #3 placement
/// with #4 its point.
inline const std::string SHARED_RECORDS =
    "#1=APPLICATION_CONTEXT('');\n#2=REPRESENTATION_CONTEXT('ID1','3D');\n"
    "#3=AXIS2_PLACEMENT_3D('',#4,$,$);\n#4=CARTESIAN_POINT('',(0.,0.,0.));\n";

/// A product: definition #n, PRODUCT #n+1, version #n+2, shape #n+3, link #n+4, representation #n+5
/// with the items `items`.
inline std::string product_records(int n, const std::string& name, const std::string& items) {
  const auto at = [n](int i) { return "#" + std::to_string(n + i); };
  return at(0) + "=PRODUCT_DEFINITION('design',''," + at(2) + ",#1);\n" + at(1) + "=PRODUCT('id " +
         name + "','" + name + "','about it',(#1));\n" + at(2) +
         "=PRODUCT_DEFINITION_FORMATION('v1',''," + at(1) + ");\n" + at(3) +
         "=PRODUCT_DEFINITION_SHAPE('',''," + at(0) + ");\n" + at(4) +
         "=SHAPE_DEFINITION_REPRESENTATION(" + at(3) + "," + at(5) + ");\n" + at(5) +
         "=SHAPE_REPRESENTATION('',(" + items + "),#2);\n";
}

/// A solid #n with a face #n+1.
inline std::string solid_records(int n) {
  return "#" + std::to_string(n) + "=MANIFOLD_SOLID_BREP('',#" + std::to_string(n + 1) + ");\n#" +
         std::to_string(n + 1) + "=ADVANCED_FACE('',(),$,.T.);\n";
}

/// A usage #n without a place.
inline std::string usage_record(int n, int assembly, int component) {
  return "#" + std::to_string(n) + "=NEXT_ASSEMBLY_USAGE_OCCURRENCE('u" + std::to_string(n) +
         "','left','',#" + std::to_string(assembly) + ",#" + std::to_string(component) +
         ",'R1');\n";
}

/// A usage #n with its shape #n+1, place #n+2, relationship #n+3 and transformation #n+4 between
/// the placements #3; the products are those of product_records.
inline std::string placed_usage_records(int n, int assembly, int component) {
  const auto at = [n](int i) { return "#" + std::to_string(n + i); };
  return usage_record(n, assembly, component) + at(1) + "=PRODUCT_DEFINITION_SHAPE('',''," + at(0) +
         ");\n" + at(2) + "=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(" + at(3) + "," + at(1) +
         ");\n" + at(3) + "=(REPRESENTATION_RELATIONSHIP('','',#" + std::to_string(component + 5) +
         ",#" + std::to_string(assembly + 5) + ")REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(" +
         at(4) + ")SHAPE_REPRESENTATION_RELATIONSHIP());\n" + at(4) +
         "=ITEM_DEFINED_TRANSFORMATION('','',#3,#3);\n";
}

}  // namespace Kessel::test

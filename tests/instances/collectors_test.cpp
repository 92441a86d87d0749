#include "instances/collectors.h"

#include <gtest/gtest.h>

namespace Kessel {
namespace {

TEST(CollectingParameter, OfCollectors) {
  for (const auto& [keyword, parameter] : {
           std::pair("REPRESENTATION", 1u),
           std::pair("ADVANCED_BREP_SHAPE_REPRESENTATION", 1u),
           std::pair("MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION", 1u),
           std::pair("DRAUGHTING_MODEL", 1u),
           std::pair("PRESENTATION_AREA", 1u),
           std::pair("PRESENTATION_VIEW", 1u),
           std::pair("PRESENTATION_LAYER_ASSIGNMENT", 2u),
           std::pair("INVISIBILITY", 0u),
           std::pair("CONTEXT_DEPENDENT_INVISIBILITY", 0u),
           std::pair("APPLIED_APPROVAL_ASSIGNMENT", LAST_PARAMETER),
           std::pair("APPLIED_DOCUMENT_USAGE_CONSTRAINT_ASSIGNMENT", LAST_PARAMETER),
           std::pair("CC_DESIGN_APPROVAL", LAST_PARAMETER),
           std::pair("CC_DESIGN_SPECIFICATION_REFERENCE", LAST_PARAMETER),
           std::pair("APPLIED_DOCUMENT_REFERENCE", 2u),
           std::pair("AUTO_DESIGN_DOCUMENT_REFERENCE", 2u),
           std::pair("CHANGE", 1u),
           std::pair("CHANGE_REQUEST", 1u),
           std::pair("START_WORK", 1u),
           std::pair("START_REQUEST", 1u),
           std::pair("MATERIAL_DESIGNATION", 1u),
           std::pair("PRODUCT_RELATED_PRODUCT_CATEGORY", 2u),
       }) {
    EXPECT_EQ(collecting_parameter(keyword), parameter) << keyword;
  }
}

TEST(CollectingParameter, OfAllElse) {
  for (const char* keyword :
       {"", "PRODUCT", "PRODUCT_CATEGORY", "REPRESENTATION_ITEM",
        "SHAPE_REPRESENTATION_RELATIONSHIP", "APPROVAL", "ASSIGNMENT",
        "MATERIAL_DESIGNATION_CHARACTERIZATION", "!REPRESENTATIONS", "ADVANCED_FACE"}) {
    EXPECT_EQ(collecting_parameter(keyword), NO_PARAMETER) << keyword;
  }
}

}  // namespace
}  // namespace Kessel

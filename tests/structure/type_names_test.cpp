// Sets of type names found by their spelling.
#include "structure/type_names.h"

#include <gtest/gtest.h>

namespace Kessel::test {
namespace {

TEST(TypeNames, NameMayBeContainedAnywhere) {
  EXPECT_EQ(types_containing({"UNIT", "A_UNIT", "UNIT_A", "A UNIT() B", "UNI", "unit"}, "UNIT"),
            (TypeNameSet{"UNIT", "A_UNIT", "UNIT_A", "A UNIT() B"}));
}

TEST(TypeNames, NameMustStandAtTheEnd) {
  EXPECT_EQ(types_ending_with({"UNIT", "A_UNIT", "UNIT_A", "NIT", "A_unit"}, "UNIT"),
            (TypeNameSet{"UNIT", "A_UNIT"}));
}

TEST(TypeNames, AscendInByteOrder) {
  const std::set<std::string> types = {"b_X", "X_1", "X", "B_X"};
  const TypeNameSet found = types_containing(types, "X");
  EXPECT_EQ(std::vector<std::string_view>(found.begin(), found.end()),
            (std::vector<std::string_view>{"B_X", "X", "X_1", "b_X"}));
}

TEST(TypeNames, PlacementIsInTheSetEvenWhereTheFileHasNone) {
  EXPECT_EQ(placement_and_context_types({}), TypeNameSet{"AXIS2_PLACEMENT_3D"});
}

TEST(TypeNames, ContextsAreThoseThatContainTheName) {
  EXPECT_EQ(placement_and_context_types({
                "AXIS2_PLACEMENT_2D",
                "GEOMETRIC_REPRESENTATION_CONTEXT",
                "GEOMETRIC_REPRESENTATION_CONTEXT(3) GLOBAL_UNIT_ASSIGNED_CONTEXT((#21))",
                "PARAMETRIC_REPRESENTATION_CONTEXT",
                "PARAMETRIC_REPRESENTATION_CONTEXT() GEOMETRIC_REPRESENTATION_CONTEXT(2)",
                "REPRESENTATION_CONTEXT",
            }),
            (TypeNameSet{
                "AXIS2_PLACEMENT_3D",
                "GEOMETRIC_REPRESENTATION_CONTEXT",
                "GEOMETRIC_REPRESENTATION_CONTEXT(3) GLOBAL_UNIT_ASSIGNED_CONTEXT((#21))",
                "PARAMETRIC_REPRESENTATION_CONTEXT() GEOMETRIC_REPRESENTATION_CONTEXT(2)",
            }));
}

}  // namespace
}  // namespace Kessel::test

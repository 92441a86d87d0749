// The types that a pass visits.
#include <gtest/gtest.h>

#include "association/passes.h"

namespace Kessel::test {
namespace {

// Type names of a file, complex instances among them.
const std::set<std::string> FILE_TYPES = {
    "ADVANCED_BREP_SHAPE_REPRESENTATION",
    "AXIS2_PLACEMENT_3D",
    "BEVELED_SHEET_REPRESENTATION",
    "CONSTRUCTIVE_GEOMETRY_REPRESENTATION",
    "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION",
    "CONVERSION_BASED_UNIT('DEGREE',#1) NAMED_UNIT(#2) PLANE_ANGLE_UNIT()",
    "CONVERSION_BASED_UNIT_AND_LENGTH_UNIT",
    "DRAUGHTING_MODEL() SHAPE_REPRESENTATION",
    "GEOMETRIC_REPRESENTATION_CONTEXT(3) REPRESENTATION_CONTEXT('','')",
    "PRODUCT_DEFINITION_SHAPE",
    "REPRESENTATION_RELATIONSHIP('','',#1,#2) "
    "REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(#3) SHAPE_REPRESENTATION_RELATIONSHIP()",
    "SHAPE_DEFINITION_REPRESENTATION",
    "SHAPE_DIMENSION_REPRESENTATION",
    "SHAPE_REPRESENTATION",
    "SHAPE_REPRESENTATION_RELATIONSHIP",
    "STYLED_ITEM",
};

TEST(TypeSelection, LiteralNamesAreVisitedInAscendingOrderWhateverTheFileHolds) {
  const TypeNameSet names = TypeSelection{"PLY", "B_PLY", "PLANE"}.resolve({});
  EXPECT_EQ(std::vector<std::string_view>(names.begin(), names.end()),
            (std::vector<std::string_view>{"B_PLY", "PLANE", "PLY"}));
}

TEST(TypeSelection, NothingIsSelectedByDefault) {
  EXPECT_EQ(TypeSelection().resolve(FILE_TYPES), TypeNameSet{});
}

TEST(TypeSelection, ShapeRepresentationsAreFiveNamesAndAllThatEndSo) {
  EXPECT_EQ(TypeSelection(TypeGroup::shape_representations).resolve(FILE_TYPES),
            (TypeNameSet{
                "ADVANCED_BREP_SHAPE_REPRESENTATION",
                "BEVELED_SHEET_REPRESENTATION",
                "COMPOSITE_SHEET_REPRESENTATION",
                "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION",
                "DRAUGHTING_MODEL() SHAPE_REPRESENTATION",
                "GEOMETRICALLY_BOUNDED_2D_WIREFRAME_REPRESENTATION",
                "NEUTRAL_SKETCH_REPRESENTATION",
                "SHAPE_DIMENSION_REPRESENTATION",
                "SHAPE_REPRESENTATION",
            }));
}

TEST(TypeSelection, FiveShapeRepresentationsAreSelectedInAFileWithoutTypes) {
  EXPECT_EQ(TypeSelection(TypeGroup::shape_representations).resolve({}),
            (TypeNameSet{
                "BEVELED_SHEET_REPRESENTATION",
                "COMPOSITE_SHEET_REPRESENTATION",
                "GEOMETRICALLY_BOUNDED_2D_WIREFRAME_REPRESENTATION",
                "NEUTRAL_SKETCH_REPRESENTATION",
                "SHAPE_DIMENSION_REPRESENTATION",
            }));
}

TEST(TypeSelection, PlacementsAndContextsIncludeComplexContexts) {
  EXPECT_EQ(TypeSelection(TypeGroup::placements_and_contexts).resolve(FILE_TYPES),
            (TypeNameSet{
                "AXIS2_PLACEMENT_3D",
                "GEOMETRIC_REPRESENTATION_CONTEXT(3) REPRESENTATION_CONTEXT('','')",
            }));
  EXPECT_EQ(TypeSelection(TypeGroup::placements_and_contexts).resolve({}),
            TypeNameSet{"AXIS2_PLACEMENT_3D"});
}

TEST(TypeSelection, TransformationsAreTheTypesThatContainTheName) {
  EXPECT_EQ(TypeSelection(TypeGroup::transformations).resolve(FILE_TYPES),
            (TypeNameSet{
                "REPRESENTATION_RELATIONSHIP('','',#1,#2) "
                "REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(#3) "
                "SHAPE_REPRESENTATION_RELATIONSHIP()",
            }));
  EXPECT_EQ(TypeSelection(TypeGroup::transformations).resolve({}), TypeNameSet{});
}

TEST(TypeSelection, UnitsAreTheTypesThatContainTheName) {
  EXPECT_EQ(TypeSelection(TypeGroup::units).resolve(FILE_TYPES),
            (TypeNameSet{
                "CONVERSION_BASED_UNIT('DEGREE',#1) NAMED_UNIT(#2) PLANE_ANGLE_UNIT()",
                "CONVERSION_BASED_UNIT_AND_LENGTH_UNIT",
            }));
  EXPECT_EQ(TypeSelection(TypeGroup::units).resolve({}), TypeNameSet{});
}

}  // namespace
}  // namespace Kessel::test

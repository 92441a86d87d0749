// What counts as a difference between shapes.
#include <gtest/gtest.h>

#include <limits>

#include "interop/kernel_reader.h"

namespace Kessel::test {
namespace {

/// A block of 30 by 40 by 120 mm, whose diagonal is 130 mm, used as the one component of a frame.
DocumentShape frame() {
  return {.name = "frame",
          .tree = "  left -> block\n",
          .figures = {.components = 1,
                      .solids = 1,
                      .shells = 1,
                      .faces = 6,
                      .edges = 24,
                      .volume = 144000,
                      .area = 19200,
                      .centre_of_mass = {15, 20, 60},
                      .box = {0, 0, 0, 30, 40, 120}}};
}

TEST(Differences, EqualShapesHaveNone) {
  EXPECT_EQ(differences(frame(), frame()), "");
  EXPECT_EQ(differences(std::vector{frame(), frame()}, std::vector{frame(), frame()}), "");
}

TEST(Differences, NumbersOfShapesAreComparedFirst) {
  EXPECT_EQ(differences(std::vector{frame()}, std::vector{frame(), frame()}),
            "1 shapes became 2\n");
}

TEST(Differences, NamesAndTreesAreShownWhole) {
  DocumentShape other = frame();
  other.tree = "  right -> block\n";
  EXPECT_EQ(differences(frame(), other),
            "tree\nframe\n  left -> block\nbecame\nframe\n  right -> block\n");
  other = frame();
  other.name = "rack";
  EXPECT_EQ(differences(frame(), other),
            "tree\nframe\n  left -> block\nbecame\nrack\n  left -> block\n");
}

TEST(Differences, EveryCountIsCompared) {
  DocumentShape other = frame();
  other.figures.components = 2;
  other.figures.solids = 3;
  other.figures.shells = 4;
  other.figures.faces = 5;
  other.figures.edges = 7;
  EXPECT_EQ(differences(frame(), other),
            "components 1 became 2\n"
            "solids 1 became 3\n"
            "shells 1 became 4\n"
            "faces 6 became 5\n"
            "edges 24 became 7\n");
}

TEST(Differences, FiguresMayDifferByAMillionthOfTheShape) {
  DocumentShape other = frame();
  other.figures.volume += 0.14;
  other.figures.area += 0.019;
  other.figures.centre_of_mass[1] += 0.00012;
  other.figures.box[5] += 0.00012;
  EXPECT_EQ(differences(frame(), other), "");
  other.figures.volume += 0.86;
  other.figures.area += 0.981;
  other.figures.centre_of_mass[1] += 0.49988;
  other.figures.box[5] += 0.49988;
  EXPECT_EQ(differences(frame(), other),
            "volume 144000 became 144001\n"
            "area 19200 became 19201\n"
            "centre of mass 20 became 20.5\n"
            "bounding box 120 became 120.5\n");
}

TEST(Differences, ColoursAreComparedFaceByFace) {
  DocumentShape red = frame();
  red.colours["#FF0000FF"] = {6, 19200, {1, 2, 3}};
  EXPECT_EQ(differences(red, red), "");
  DocumentShape mixed = red;
  mixed.colours["#FF0000FF"].faces = 5;
  mixed.colours["none"] = {1, 0, {}};
  EXPECT_EQ(differences(red, mixed),
            "faces of colour #FF0000FF 6 became 5\nfaces of colour none 0 became 1\n");
  EXPECT_EQ(differences(mixed, red),
            "faces of colour #FF0000FF 5 became 6\nfaces of colour none 1 became 0\n");
}

TEST(Differences, LayersAndPropertiesAreCompared) {
  const DocumentRemarks before{{{"1", 50}}, {"block area 7", "block volume 12"}};
  EXPECT_EQ(differences(before, before), "");
  EXPECT_EQ(differences(before, {{{"2", 50}}, {"block area 7"}}),
            "area on layer 1 50 became -1\narea on layer 2 -1 became 50\n"
            "property block volume 12\n");
}

TEST(Differences, FigureThatIsNoNumberDiffers) {
  DocumentShape other = frame();
  other.figures.volume = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(differences(frame(), other), "volume 144000 became nan\n");
}

}  // namespace
}  // namespace Kessel::test

// Pictures: what is on them, where, in which colours, and what is not.
#include "kessel/picture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "geometry/drawn_text.h"
#include "kessel/errors.h"
#include "kessel/splitter.h"
#include "picture/sketch.h"
#include "picture/svg.h"
#include "support/folder_tree.h"

namespace Kessel::test {
namespace {

using testing::Each;
using testing::Field;
using testing::Gt;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// A part with these lines; the first is red, the others have no colour.
Drawing drawing_of(const std::vector<std::vector<Point3>>& lines) {
  Drawing drawing;
  DrawnPart& part = drawing.parts.emplace_back();
  for (const auto& points : lines) {
    part.lines.push_back({part.lines.size() + 1, part.lines.empty() ? 0xFF0000 : NO_COLOUR,
                          part.points.size(), points.size()});
    part.points.insert(part.points.end(), points.begin(), points.end());
  }
  for (const Point3& point : part.points) part.box.add(point);
  return drawing;
}

std::string svg_of(const Drawing& drawing, View view, const std::string& title = "one") {
  std::ostringstream out;
  write_svg(sketch(drawing, 0, Projection(view)), title, out);
  return out.str();
}

TEST(Picture, IsWholeText) {
  EXPECT_EQ(svg_of(drawing_of({{{0, 0, 0}, {2, 0, 0}, {2, 1, 0}}}), View::top, "A & <B>"),
            "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"800.0\" height=\"410.0\" "
            "viewBox=\"0 0 8000 4100\" role=\"img\" aria-label=\"A &amp; &lt;B&gt;\">\n"
            "<title>A &amp; &lt;B&gt;</title>\n"
            "<g fill=\"none\" stroke-width=\"12\" stroke-linecap=\"round\" "
            "stroke-linejoin=\"round\">\n"
            "<path stroke=\"#ff0000\" stroke-opacity=\"1.00\" d=\"M100 4000l7800 0 0-3900\"/>\n"
            "</g>\n</svg>\n");
}

/// One line along each axis, longer along each.
TEST(Picture, ViewsLookAlongAxes) {
  const Drawing drawing =
      drawing_of({{{0, 0, 0}, {1, 0, 0}}, {{0, 0, 0}, {0, 2, 0}}, {{0, 0, 0}, {0, 0, 4}}});
  const auto size_of = [&](View view) {
    const Sketch seen = sketch(drawing, 0, Projection(view));
    return double(seen.width - 200) / (seen.height - 200);
  };
  EXPECT_NEAR(size_of(View::top), 1.0 / 2, 1e-3);
  EXPECT_NEAR(size_of(View::front), 1.0 / 4, 1e-3);
  EXPECT_NEAR(size_of(View::right), 2.0 / 4, 1e-3);
  // 3 axes at 120 degrees: (1 + 2) cos 30 wide; up 4 + 1 (x and y go along, each by half).
  EXPECT_NEAR(size_of(View::isometric), 3 * std::sqrt(0.75) / (4 + 0.5), 0.3);
}

TEST(Picture, NearLinesCoverFarOnesAndAreStronger) {
  const Drawing drawing =
      drawing_of({{{0, 0, 5}, {2, 0, 5}}, {{2, 0, 0}, {0, 0, 0}}, {{0, 0, 0}, {0, 1, 0}}});
  const Sketch seen = sketch(drawing, 0, Projection(View::top));
  ASSERT_THAT(seen.lines, SizeIs(2));
  EXPECT_EQ(seen.lines[0].colour, 0xFF0000);
  const std::string text = svg_of(drawing, View::top);
  EXPECT_THAT(text, HasSubstr("<path stroke=\"#ff0000\" stroke-opacity=\"1.00\""));
  EXPECT_THAT(text, HasSubstr("<path stroke=\"#303030\" stroke-opacity=\"0.30\""));
  EXPECT_LT(text.find("0.30"), text.find("1.00"));  // The far ones lie below.
}

TEST(Picture, WhatNobodySeesIsNotInIt) {
  std::vector<std::vector<Point3>> lines{{{0, 0, 0}, {100, 0, 0}},
                                         {{50, 0, 0}, {50.001, 0.001, 0}},  // too small
                                         {{0, 50, 0}, {0, 50, 9}}};         // seen from its end
  for (int i = 0; i <= 1000; ++i) {
    if (i == 0) lines.emplace_back();
    lines.back().push_back({i * 0.01, 10, 0});
  }
  const Sketch seen = sketch(drawing_of(lines), 0, Projection(View::top));
  ASSERT_THAT(seen.lines, SizeIs(2));
  EXPECT_LT(seen.points.size(), 300u);
  EXPECT_EQ(seen.left_out, 0u);
}

TEST(Picture, OfMoreThanItHoldsLeavesOutTheSmallest) {
  std::vector<std::vector<Point3>> lines;
  for (int i = 0; i < 250'000; ++i) {
    const double column = i % 500;
    const double row = i / 500;
    lines.push_back({{column, row, 0}, {column + (i == 7 ? 1 : 5), row + 2, 0}});
  }
  const Drawing drawing = drawing_of(lines);
  const Sketch seen = sketch(drawing, 0, Projection(View::top));
  EXPECT_EQ(seen.left_out, 100'000u);
  std::size_t points = 0;
  for (const SketchedLine& line : seen.lines) points += line.count;
  EXPECT_EQ(points, 300'000u);
  EXPECT_THAT(seen.lines, Each(Field(&SketchedLine::size, Gt(50))));  // without the smallest
  EXPECT_LT(svg_of(drawing, View::top).size(), 4'000'000u);
}

TEST(Picture, LightColoursAreDarkened) {
  Drawing drawing = drawing_of({{{0, 0, 0}, {1, 1, 0}}});
  for (const auto& [colour, seen] : std::vector<std::pair<int, std::string>>{
           {0xFFFFFF, "#8c8c8c"}, {0xFFFF00, "#9e9e00"}, {0x000000, "#000000"}}) {
    drawing.parts[0].lines[0].colour = colour;
    EXPECT_THAT(svg_of(drawing, View::top), HasSubstr("stroke=\"" + seen + "\""));
  }
}

TEST(Picture, OfNothingIsEmpty) {
  EXPECT_THAT(sketch(Drawing(), 0, Projection(View::top)).lines, IsEmpty());
  const ScratchFolder folder;
  std::ofstream(folder / "in.stp", std::ios::binary) << exchange_file("");
  const Picture picture = draw_picture(folder / "in.stp", folder / "out.svg");
  EXPECT_EQ(picture.name, "in");
  EXPECT_EQ(picture.lines, 0u);
  EXPECT_EQ(picture.bytes, read_file(folder / "out.svg").size());
}

TEST(Picture, IsTheSameEveryTime) {
  const ScratchFolder folder;
  for (const char* name : {"one.svg", "other.svg"}) {
    const Picture picture =
        draw_picture(PROJECT_FOLDER "/examples/desk-lamp.step", folder / name, {.part = "Boom"});
    EXPECT_EQ(picture.name, "Boom");
    EXPECT_EQ(picture.dropped, 0u);
    EXPECT_GT(picture.places, 5u);
  }
  EXPECT_EQ(read_file(folder / "one.svg"), read_file(folder / "other.svg"));
}

/// The lamp, split: its file refers to its components' files, and two of these to others.
class PictureOfSplit : public testing::Test {
 protected:
  PictureOfSplit() { split(LAMP, "lamp"); }

  static bool is_refused(const std::filesystem::path& out, PictureOptions options) {
    const std::string before = read_file(out);
    options.replace = true;
    try {
      draw_picture(ROOT, out, options);
      return false;
    } catch (const OutputError& error) {
      EXPECT_EQ(read_file(out), before);
      return error.reason() == std::errc::file_exists && error.path() == out;
    }
  }

  static constexpr const char* LAMP = PROJECT_FOLDER "/examples/desk-lamp.step";
  static constexpr const char* ROOT = "lamp/Desk lamp.stp";
  const ScratchFolder folder_;
};

TEST_F(PictureOfSplit, SaysHowManyShapesAreElsewhere) {
  const Picture root = draw_picture(ROOT, "root.svg");
  EXPECT_EQ(root.places, 0u);
  EXPECT_EQ(root.elsewhere, 3u);
  EXPECT_EQ(draw_picture(ROOT, "part.svg", {.part = "Boom"}).elsewhere, 1u);
  EXPECT_EQ(draw_picture("lamp/Base.stp", "base.svg").elsewhere, 0u);
}

TEST_F(PictureOfSplit, FollowedIsThatOfTheWhole) {
  for (const char* const part : {"", "Arm", "Desk lamp/Boom/Head"}) {
    const Picture whole = draw_picture(LAMP, "whole.svg", {.part = part, .replace = true});
    const Picture followed = draw_picture(
        ROOT, "followed.svg", {.part = part, .follow_references = true, .replace = true});
    EXPECT_EQ(read_file("followed.svg"), read_file("whole.svg")) << part;
    EXPECT_EQ(followed.places, whole.places);
    EXPECT_EQ(followed.elsewhere, 0u);
  }
}

TEST_F(PictureOfSplit, FollowedElsewhereOnlyWhereAllowed) {
  std::filesystem::rename("lamp/Bulb.stp", "Bulb.stp");
  EXPECT_THROW(draw_picture(ROOT, "out.svg", {.follow_references = true}), InputError);
  std::filesystem::create_symlink("../Bulb.stp", "lamp/Bulb.stp");
  EXPECT_THROW(draw_picture(ROOT, "out.svg", {.follow_references = true}), InputError);
  EXPECT_FALSE(std::filesystem::exists("out.svg"));
  draw_picture(ROOT, "out.svg", {.follow_references = true, .follow_outside = true});
  draw_picture(LAMP, "whole.svg");
  EXPECT_EQ(read_file("out.svg"), read_file("whole.svg"));
}

TEST_F(PictureOfSplit, TakesThePlaceOfNoFileThatIsReadOrReferredTo) {
  EXPECT_TRUE(is_refused(ROOT, {}));
  EXPECT_TRUE(is_refused("lamp/Boom.stp", {}));
  EXPECT_FALSE(is_refused("lamp/Socket.stp", {}));  // only what Head.stp refers to
  split(LAMP, "again");
  std::filesystem::copy_file("again/Socket.stp", "lamp/Socket.stp",
                             std::filesystem::copy_options::overwrite_existing);
  EXPECT_TRUE(is_refused("lamp/Socket.stp", {.follow_references = true}));
}

}  // namespace
}  // namespace Kessel::test

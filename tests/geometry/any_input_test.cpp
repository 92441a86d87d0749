// What holds for every input: moved products have moved lines, and junk ends in counts.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <numbers>
#include <random>
#include <span>
#include <string_view>
#include <vector>

#include "geometry/drawn_text.h"
#include "kessel/errors.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

std::string example() {
  std::ifstream in(PROJECT_FOLDER "/examples/desk-lamp.step", std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

Drawing draw_file(const std::string& text, const DrawingOptions& options = {},
                  const Options& reading = {}) {
  const ScratchFolder folder;
  std::ofstream(folder / "in.stp", std::ios::binary) << text;
  return read_drawing(folder / "in.stp", options, reading);
}

/// Replaces the coordinates behind each `keyword`.
std::string with_moved(const std::string& text, std::string_view keyword,
                       const std::function<Point3(const Point3&)>& move) {
  std::string moved;
  std::size_t at = 0;
  for (std::size_t begin; (begin = text.find(keyword, at)) != std::string::npos;) {
    begin = text.find(",(", begin) + 2;
    const std::size_t end = text.find("))", begin);
    const char* number = text.c_str() + begin;
    Point3 point{};
    for (double& coordinate : point) {
      char* behind = nullptr;
      coordinate = std::strtod(number, &behind);
      number = behind + 1;
    }
    point = move(point);
    char written[100];
    std::snprintf(written, sizeof written, "%.17E,%.17E,%.17E", point[0], point[1], point[2]);
    moved += text.substr(at, begin - at) + written;
    at = end;
  }
  return moved + text.substr(at);
}

double distance_to_piece(const Point3& p, const Point3& a, const Point3& b) {
  double along = 0;
  double square = 0;
  for (std::size_t i = 0; i < 3; ++i) {
    along += (p[i] - a[i]) * (b[i] - a[i]);
    square += (b[i] - a[i]) * (b[i] - a[i]);
  }
  const double t = square > 0 ? std::clamp(along / square, 0.0, 1.0) : 0;
  return distance(p,
                  {a[0] + t * (b[0] - a[0]), a[1] + t * (b[1] - a[1]), a[2] + t * (b[2] - a[2])});
}

/// How far some point of `line` is from the other line.
double most_distance(std::span<const Point3> line, const std::vector<Point3>& other) {
  double most = 0;
  for (const Point3& point : line) {
    double least = distance(point, other.front());
    for (std::size_t i = 1; i < other.size(); ++i) {
      least = std::min(least, distance_to_piece(point, other[i - 1], other[i]));
    }
    most = std::max(most, least);
  }
  return most;
}

TEST(AnyInput, MovedProductsHaveMovedLines) {
  const double c = std::cos(0.7);
  const double s = std::sin(0.7);
  const auto turn = [&](const Point3& p) {
    const Point3 around_z{c * p[0] - s * p[1], s * p[0] + c * p[1], p[2]};
    return Point3{around_z[0], c * around_z[1] - s * around_z[2],
                  s * around_z[1] + c * around_z[2]};
  };
  const auto move = [&](const Point3& p) {
    const Point3 turned = turn(p);
    return Point3{turned[0] + 10, turned[1] - 20, turned[2] + 30};
  };
  const std::string text = example();
  const DrawingOptions fineness{.tolerance_metres = 1e-5};
  const Drawing before = draw_file(text, fineness);
  const Drawing after = draw_file(
      with_moved(with_moved(text, "= CARTESIAN_POINT(", move), "= DIRECTION(", turn), fineness);
  ASSERT_EQ(after.parts.size(), before.parts.size());
  for (std::size_t i = 0; i < before.parts.size(); ++i) {
    const DrawnPart& part = before.parts[i];
    ASSERT_EQ(after.parts[i].lines.size(), part.lines.size());
    for (std::size_t k = 0; k < part.lines.size(); ++k) {
      std::vector<Point3> moved;
      for (const Point3& point : Drawing::points_of(part, part.lines[k])) {
        moved.push_back(move(point));
      }
      const auto line = Drawing::points_of(after.parts[i], after.parts[i].lines[k]);
      EXPECT_LE(distance(line.front(), moved.front()), 1e-9);
      EXPECT_LE(distance(line.back(), moved.back()), 1e-9);
      // Points stand elsewhere, since some mark where curves turn along the axes.
      EXPECT_LE(most_distance(line, moved), 1e-2);
      EXPECT_NEAR(length_of(after.parts[i], after.parts[i].lines[k]),
                  length_of(part, part.lines[k]), 1e-3 * length_of(part, part.lines[k]));
    }
  }
}

TEST(AnyInput, GivesTheSameTwice) {
  const Drawing one = draw_file(example());
  const Drawing other = draw_file(example());
  ASSERT_EQ(one.parts.size(), other.parts.size());
  for (std::size_t i = 0; i < one.parts.size(); ++i) {
    EXPECT_EQ(one.parts[i].points, other.parts[i].points);
  }
}

/// A text whose numbers, names and values were exchanged here and there.
std::string mutated(std::string text, std::uint32_t seed) {
  static const char* const VALUES[] = {"$",       "*",      "0.", "-1.",        "1.E308",
                                       "1.E-308", "NAN",    "()", ".T.",        ".F.",
                                       "#1",      "#99999", "''", "4294967295", "9.E99"};
  std::mt19937 random(seed);
  const auto below = [&](std::size_t end) { return random() % end; };
  const std::size_t data = text.find("DATA;");
  for (int i = 0; i < 60; ++i) {
    std::size_t begin = data + below(text.size() - data);
    begin = text.find_first_of(",(", begin);
    if (begin == std::string::npos) continue;
    const std::size_t end = text.find_first_of(",();", begin + 1);
    if (end == std::string::npos) continue;
    if (below(2) == 0) {
      text.replace(begin + 1, end - begin - 1, VALUES[below(std::size(VALUES))]);
    } else {
      const std::string number = "#" + std::to_string(1 + below(1340));
      text.replace(begin + 1, end - begin - 1, number);
    }
  }
  return text;
}

TEST(AnyInput, OfJunkEndsWithFinitePoints) {
  const std::string text = example();
  std::uint64_t dropped = 0;
  for (std::uint32_t seed = 0; seed < 150; ++seed) {
    try {
      const Drawing drawing = draw_file(mutated(text, seed), {.most_points = 100'000});
      ASSERT_EQ(drawing.parts.size(), drawing.assembly.parts.size());
      for (const DrawnPart& part : drawing.parts) {
        dropped += part.dropped;
        for (const DrawnLine& line : part.lines) {
          ASSERT_GE(line.count, 2u);
          ASSERT_LE(line.first + line.count, part.points.size());
        }
        for (const Point3& point : part.points) {
          ASSERT_TRUE(std::all_of(point.begin(), point.end(), [](double c) {
            return std::isfinite(c);
          })) << seed;
        }
      }
      if (!drawing.parts.empty()) whole_box(drawing, drawing.assembly.roots.at(0));
    } catch (const InputError&) {
      // What is no exchange file any more is told as by every other reading.
    }
  }
  EXPECT_GT(dropped, 100u);
}

TEST(AnyInput, AboveTheMemoryLimitIsRefused) {
  EXPECT_THROW(draw_file(example(), {}, {.memory_limit = 20'000}), InputError);
  EXPECT_NO_THROW(draw_file(example(), {}, {.memory_limit = 2'000'000}));
}

TEST(AnyInput, TellsHowFarItHasCome) {
  std::vector<Progress> told;
  const Options options{.progress = [&](const Progress& progress) { told.push_back(progress); }};
  const Drawing drawing = draw_file(example(), {}, options);
  ASSERT_FALSE(told.empty());
  EXPECT_EQ(told.front().stage, Stage::reading);
  EXPECT_EQ(told.back().stage, Stage::sorting);
  EXPECT_EQ(told.back().done, drawing.parts.size());
  EXPECT_EQ(told.back().total, drawing.parts.size());
}

/// Bytes that the lines of a drawing take.
std::uint64_t bytes_of_lines(const Drawing& drawing) {
  std::uint64_t bytes = 0;
  for (const DrawnPart& part : drawing.parts) {
    bytes += part.points.capacity() * sizeof(Point3) + part.lines.capacity() * sizeof(DrawnLine);
  }
  return bytes;
}

// A circle is a few records and, drawn finely, any number of points.
TEST(AnyInput, TheMemoryLimitCountsPoints) {
  std::string circles = drawn_product("#20");
  std::string items;
  for (int i = 0; i < 20; ++i) {
    const std::string number = "#" + std::to_string(30 + i);
    circles += number + "=CIRCLE('',#21,1.);\n";
    items += (i == 0 ? "" : ",") + number;
  }
  circles += "#20=GEOMETRIC_CURVE_SET('',(" + items +
             "));\n#21=AXIS2_PLACEMENT_3D('',#22,$,$);\n"
             "#22=CARTESIAN_POINT('',(0.,0.,0.));\n";
  const DrawingOptions fine{.tolerance = 1e-9};
  const Drawing whole = draw(circles, fine);
  EXPECT_EQ(whole.parts[0].lines.size(), 20u);
  const std::uint64_t needed = bytes_of_lines(whole);
  EXPECT_GT(needed, 4'000'000u);
  for (const std::uint64_t limit : {needed / 4, needed / 2, needed - 1}) {
    try {
      draw(circles, fine, {.memory_limit = limit});
      ADD_FAILURE() << limit << " bytes held " << needed;
    } catch (const InputError& error) {
      EXPECT_EQ(error.finding().kind, FindingKind::memory_limit);
    }
  }
  EXPECT_EQ(draw(circles, fine, {.memory_limit = 4 * needed}).parts[0].lines.size(), 20u);
}

/// The least memory limit, to a hundredth, with which `records` can be drawn.
std::uint64_t least_limit(const std::string& records) {
  std::uint64_t low = 0;
  std::uint64_t high = 100'000'000;
  while (high - low > high / 100) {
    const std::uint64_t limit = (low + high) / 2;
    try {
      draw(records, {}, {.memory_limit = limit});
      high = limit;
    } catch (const InputError& error) {
      EXPECT_EQ(error.finding().kind, FindingKind::memory_limit);
      low = limit;
    }
  }
  return high;
}

TEST(AnyInput, TheMemoryLimitCountsStyles) {
  constexpr int STYLES = 20'000;
  std::string styled = drawn_product("#20") + "#20=CARTESIAN_POINT('',(0.,0.,0.));\n" +
                       "#21=PRESENTATION_STYLE_ASSIGNMENT((#22));\n#22=CURVE_STYLE('',$,$,#23);\n";
  for (int i = 100; i < 100 + STYLES; ++i) {
    const std::string item = "#" + std::to_string(i + STYLES);
    styled += "#" + std::to_string(i) + "=STYLED_ITEM('',(#21)," + item + ");\n" + item +
              "=CARTESIAN_POINT('',(0.,0.,0.));\n";
  }
  const std::uint64_t plain = least_limit(styled + "#23=COLOUR_XYZ('',1.,0.,0.);\n");
  const std::uint64_t coloured = least_limit(styled + "#23=COLOUR_RGB('',1.,0.,0.);\n");
  EXPECT_GT(coloured, plain + 40 * STYLES);
}

TEST(AnyInput, TheMemoryLimitCountsNamesWhereverTheyAre) {
  // In the records, in the products, and in what is told of them.
  constexpr std::size_t LETTERS = 2'000'000;
  std::string named = drawn_product("#20") + "#20=CARTESIAN_POINT('',(0.,0.,0.));\n";
  named.replace(named.find("'one'"), 5, "'" + std::string(LETTERS, 'n') + "'");
  EXPECT_GT(least_limit(named), 3 * LETTERS);
}

/// A square of so many squares, of two triangles each, as a part's only item.
std::string mesh_of(std::size_t side) {
  std::string points;
  std::string triangles;
  const auto corner = [&](std::size_t x, std::size_t y) {
    return std::to_string(1 + y * (side + 1) + x);
  };
  const auto list = [](const std::string& a, const std::string& b, const std::string& c) {
    return "(" + a + "," + b + "," + c + "),";
  };
  for (std::size_t y = 0; y <= side; ++y) {
    for (std::size_t x = 0; x <= side; ++x) {
      points += list(std::to_string(x) + ".", std::to_string(y) + ".", "0.");
      if (x == side || y == side) continue;
      triangles += list(corner(x, y), corner(x + 1, y), corner(x + 1, y + 1));
      triangles += list(corner(x, y), corner(x + 1, y + 1), corner(x, y + 1));
    }
  }
  points.pop_back();
  triangles.pop_back();
  return drawn_product("#20") + "#20=TRIANGULATED_SURFACE_SET('',#21," +
         std::to_string((side + 1) * (side + 1)) + ",(),(),(" + triangles +
         "));\n#21=COORDINATES_LIST(''," + std::to_string((side + 1) * (side + 1)) + ",(" + points +
         "));\n";
}

TEST(AnyInput, TheMemoryLimitCountsTrianglesOfWhichNoneIsDrawn) {
  constexpr std::size_t SIDE = 100;
  const std::string mesh = mesh_of(SIDE);
  const Drawing drawing = draw(mesh);
  ASSERT_EQ(drawing.parts[0].dropped, 0u);
  EXPECT_EQ(drawing.parts[0].box.high, (Point3{SIDE, SIDE, 0}));
  EXPECT_LT(drawing.parts[0].points.size(), 1000u);
  // The text, the points twice, and three pieces for each square.
  constexpr std::size_t LEAST_OF_A_PIECE = 48;
  EXPECT_GT(least_limit(mesh),
            mesh.size() + 2 * SIDE * SIDE * sizeof(Point3) + 3 * SIDE * SIDE * LEAST_OF_A_PIECE);
}

}  // namespace
}  // namespace Kessel::test

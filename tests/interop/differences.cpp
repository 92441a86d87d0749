// What differs between documents.
#include <algorithm>
#include <cmath>
#include <sstream>
#include <string_view>

#include "interop/kernel_reader.h"

namespace Kessel::test {

namespace {

constexpr double TOLERANCE = 1e-6;

/// Lines on what differs.
class Report {
 public:
  void compare(std::string_view what, int expected, int actual) {
    if (expected != actual) add(what, expected, actual);
  }

  /// `size` is what a difference is measured by.
  void compare(std::string_view what, double expected, double actual, double size) {
    const bool same = std::abs(expected - actual) <= TOLERANCE * size;
    if (!same) add(what, expected, actual);
  }

  std::string text() const { return text_.str(); }

 private:
  template <class Value>
  void add(std::string_view what, Value expected, Value actual) {
    text_.precision(12);
    text_ << what << ' ' << expected << " became " << actual << '\n';
  }

  std::ostringstream text_;
};

double diagonal_of(const std::array<double, 6>& box) {
  return std::hypot(box[3] - box[0], box[4] - box[1], box[5] - box[2]);
}

}  // namespace

std::string whole_tree(const DocumentShape& shape) {
  return shape.name + "\n" + shape.tree;
}

std::string differences(const ShapeFigures& expected, const ShapeFigures& actual) {
  Report report;
  report.compare("components", expected.components, actual.components);
  report.compare("solids", expected.solids, actual.solids);
  report.compare("shells", expected.shells, actual.shells);
  report.compare("faces", expected.faces, actual.faces);
  report.compare("edges", expected.edges, actual.edges);
  report.compare("volume", expected.volume, actual.volume, std::abs(expected.volume));
  report.compare("area", expected.area, actual.area, std::abs(expected.area));
  const double length = diagonal_of(expected.box);
  for (std::size_t axis = 0; axis < expected.centre_of_mass.size(); ++axis) {
    report.compare("centre of mass", expected.centre_of_mass[axis], actual.centre_of_mass[axis],
                   length);
  }
  for (std::size_t side = 0; side < expected.box.size(); ++side) {
    report.compare("bounding box", expected.box[side], actual.box[side], length);
  }
  return report.text();
}

std::string differences(const DocumentShape& expected, const DocumentShape& actual) {
  std::string text;
  if (whole_tree(expected) != whole_tree(actual)) {
    text += "tree\n" + whole_tree(expected) + "became\n" + whole_tree(actual);
  }
  return text + differences(expected.figures, actual.figures);
}

std::string differences(const std::vector<DocumentShape>& expected,
                        const std::vector<DocumentShape>& actual) {
  if (expected.size() != actual.size()) {
    return std::to_string(expected.size()) + " shapes became " + std::to_string(actual.size()) +
           '\n';
  }
  std::string text;
  for (std::size_t i = 0; i < expected.size(); ++i) text += differences(expected[i], actual[i]);
  return text;
}

int count_solids(const std::vector<DocumentShape>& shapes) {
  int count = 0;
  for (const DocumentShape& shape : shapes) count += shape.figures.solids;
  return count;
}

}  // namespace Kessel::test

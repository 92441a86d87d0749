// What differs between documents.
#include <algorithm>
#include <cmath>
#include <iterator>
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

namespace {

void compare(Report& report, const std::string& colour, const ColouredFaces& expected,
             const ColouredFaces& actual, double length) {
  report.compare("faces of colour " + colour, expected.faces, actual.faces);
  report.compare("area of colour " + colour, expected.area, actual.area, std::abs(expected.area));
  for (std::size_t axis = 0; axis < expected.moment.size(); ++axis) {
    report.compare("place of colour " + colour, expected.moment[axis], actual.moment[axis],
                   std::abs(expected.area) * length);
  }
}

std::string colour_differences(const DocumentShape& expected, const DocumentShape& actual) {
  Report report;
  const double length = diagonal_of(expected.figures.box);
  std::map<std::string, ColouredFaces> all = expected.colours;
  all.insert(actual.colours.begin(), actual.colours.end());
  const auto faces_of = [](const DocumentShape& shape, const std::string& colour) {
    const auto found = shape.colours.find(colour);
    return found == shape.colours.end() ? ColouredFaces() : found->second;
  };
  for (const auto& [colour, faces] : all) {
    compare(report, colour, faces_of(expected, colour), faces_of(actual, colour), length);
  }
  return report.text();
}

}  // namespace

std::string differences(const DocumentRemarks& expected, const DocumentRemarks& actual) {
  Report report;
  std::map<std::string, double> all = expected.layers;
  all.insert(actual.layers.begin(), actual.layers.end());
  const auto area_of = [](const DocumentRemarks& remarks, const std::string& layer) {
    const auto found = remarks.layers.find(layer);
    return found == remarks.layers.end() ? -1.0 : found->second;
  };
  for (const auto& [layer, area] : all) {
    report.compare("area on layer " + layer, area_of(expected, layer), area_of(actual, layer),
                   std::max(area, 1.0));
  }
  std::string text = report.text();
  std::vector<std::string> changed;
  std::set_symmetric_difference(expected.properties.begin(), expected.properties.end(),
                                actual.properties.begin(), actual.properties.end(),
                                std::back_inserter(changed));
  for (const std::string& property : changed) text += "property " + property + '\n';
  return text;
}

std::string differences(const DocumentShape& expected, const DocumentShape& actual) {
  std::string text;
  if (whole_tree(expected) != whole_tree(actual)) {
    text += "tree\n" + whole_tree(expected) + "became\n" + whole_tree(actual);
  }
  return text + differences(expected.figures, actual.figures) +
         colour_differences(expected, actual);
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

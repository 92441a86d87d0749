// Lines that are drawn, beside the edges that a CAD kernel reads from the same file.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "interop/kernel_reader.h"
#include "kessel/drawing.h"

namespace Kessel::test {

inline double distance_of_points(const std::array<double, 3>& a, const std::array<double, 3>& b) {
  return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

/// How far the ends of one edge are from those of the other, whichever way it goes.
inline double distance_of_ends(const PlacedEdge& a, const PlacedEdge& b) {
  return std::min(std::max(distance_of_points(a.begin, b.begin), distance_of_points(a.end, b.end)),
                  std::max(distance_of_points(a.begin, b.end), distance_of_points(a.end, b.begin)));
}

/// How far one box reaches out of the other at most.
inline double distance_of_boxes(const PlacedEdge& a, const PlacedEdge& b) {
  double most = 0;
  for (std::size_t i = 0; i < 6; ++i) most = std::max(most, std::fabs(a.box[i] - b.box[i]));
  return most;
}

/// A line in millimetres, as the kernel has its edges.
inline PlacedEdge placed(const DrawnPart& part, const DrawnLine& line, const Matrix3x4& matrix,
                         double millimetres) {
  PlacedEdge edge;
  Box3 box;
  std::vector<Point3> points;
  for (const Point3& point : Drawing::points_of(part, line)) {
    Point3 moved = matrix.apply(point);
    for (double& coordinate : moved) coordinate *= millimetres;
    if (!points.empty()) edge.length += distance_of_points(points.back(), moved);
    points.push_back(moved);
    box.add(moved);
  }
  edge.begin = points.front();
  edge.end = points.back();
  std::copy(box.low.begin(), box.low.end(), edge.box.begin());
  std::copy(box.high.begin(), box.high.end(), edge.box.begin() + 3);
  return edge;
}

inline std::vector<PlacedEdge> drawn_edges(const Drawing& drawing) {
  std::vector<PlacedEdge> edges;
  for (const std::size_t root : drawing.assembly.roots) {
    const double millimetres = 1000 * drawing.parts[root].unit_metres;
    visit_places(drawing, root, 1'000'000, [&](const PlacedPart& place) {
      const DrawnPart& part = drawing.parts[place.part];
      for (const DrawnLine& line : part.lines) {
        edges.push_back(placed(part, line, place.matrix, millimetres));
      }
    });
  }
  return edges;
}

inline std::string text_of(const PlacedEdge& edge) {
  std::ostringstream text;
  text << "length " << edge.length << " from " << edge.begin[0] << ' ' << edge.begin[1] << ' '
       << edge.begin[2] << " to " << edge.end[0] << ' ' << edge.end[1] << ' ' << edge.end[2]
       << '\n';
  return text.str();
}

/// The kernel's edges, each of which is compared once.
class KernelEdges {
 public:
  explicit KernelEdges(std::vector<PlacedEdge> edges)
      : edges_(std::move(edges)), is_taken_(edges_.size()) {
    Box3 box;
    for (const PlacedEdge& edge : edges_) {
      box.add({edge.box[0], edge.box[1], edge.box[2]});
      box.add({edge.box[3], edge.box[4], edge.box[5]});
    }
    diagonal_ = edges_.empty() ? 0 : distance_of_points(box.low, box.high);
  }

  /// Takes the edge that is most like `drawn`; returns a line where it is another one.
  std::string take(const PlacedEdge& drawn) {
    std::size_t best = edges_.size();
    double least = INFINITY;
    for (std::size_t i = 0; i < edges_.size(); ++i) {
      if (is_taken_[i]) continue;
      const double there = distance_of_ends(drawn, edges_[i]) +
                           std::fabs(drawn.length - edges_[i].length) +
                           distance_of_boxes(drawn, edges_[i]);
      if (there < least) {
        least = there;
        best = i;
      }
    }
    if (best == edges_.size()) return "none is left for " + text_of(drawn);
    const PlacedEdge& edge = edges_[best];
    const double fine = 1e-6 * diagonal_;
    const double missed = 1e-3 * edge.length + edge.gap;
    const bool is_same = distance_of_ends(drawn, edge) <= fine &&
                         std::fabs(drawn.length - edge.length) <= missed &&
                         distance_of_boxes(drawn, edge) <= missed + fine;
    if (!is_same) return "drawn is " + text_of(drawn) + "nearest is " + text_of(edge);
    is_taken_[best] = true;
    return "";
  }

  /// Lines for what was not taken. The kernel cuts closed surfaces by seams of its own.
  std::string left() const {
    std::string text;
    for (std::size_t i = 0; i < edges_.size(); ++i) {
      if (!is_taken_[i] && !edges_[i].is_seam) text += "not drawn is " + text_of(edges_[i]);
    }
    return text;
  }

 private:
  std::vector<PlacedEdge> edges_;
  std::vector<bool> is_taken_;
  double diagonal_ = 0;
};

}  // namespace Kessel::test

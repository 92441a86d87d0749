// Reads an exchange file with the CAD kernel, external references included, into plain figures that
// can be compared.
#pragma once

#include <array>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace Kessel::test {

/// How much a shape holds, and where it is, in its own frame and in millimetres.
struct ShapeFigures {
  int components = 0;  ///< usages below it, at all levels
  int solids = 0;      ///< these and the next three count each placement
  int shells = 0;
  int faces = 0;
  int edges = 0;
  double volume = 0;
  double area = 0;
  std::array<double, 3> centre_of_mass{};
  std::array<double, 6> box{};  ///< lowest corner, highest corner; zeros for an empty shape
};

/// The faces that have one colour: how many, each placement counted, and where they are.
struct ColouredFaces {
  int faces = 0;
  double area = 0;
  std::array<double, 3> moment{};  ///< of the area
};

/// One shape of a document: a part or an assembly.
struct DocumentShape {
  std::string name;
  std::string tree;  ///< a line per component, "name -> what it uses", indented by level, in order
  ShapeFigures figures;
  std::map<std::string, ColouredFaces> colours = {};  ///< by colour, as "#FF0000FF"
};

/// What a document says beside its shapes.
struct DocumentRemarks {
  std::map<std::string, double> layers;  ///< area of what is on each
  /// Validation properties of every shape: "name volume 12.5".
  std::vector<std::string> properties;
};

/// The free shapes of the file `path`: those that nothing in it uses. The file is read from its own
/// folder, which is the working directory for that time. Throws `std::runtime_error` when the
/// kernel cannot read it.
std::vector<DocumentShape> read_free_shapes(const std::filesystem::path& path);

/// An edge at one of its places, in millimetres.
struct PlacedEdge {
  std::array<double, 3> begin{};  ///< its vertices
  std::array<double, 3> end{};
  double length = 0;
  double gap = 0;               ///< by how much its curve misses its vertices, both together
  bool is_seam = false;         ///< whether a face has it twice, as closed surfaces are cut
  std::array<double, 6> box{};  ///< lowest corner, highest corner, by points along the curve
};

/// The edges of all free shapes of the file `path`, each once at each place, those without a length
/// apart. Throws as read_free_shapes() does.
std::vector<PlacedEdge> read_edges(const std::filesystem::path& path);

/// The layers and validation properties of the file `path`, read in the same way.
DocumentRemarks read_remarks(const std::filesystem::path& path);

/// The free shapes' like for every shape that has components, used or not.
std::vector<DocumentShape> read_assemblies(const std::filesystem::path& path);

/// The same for every part and assembly.
std::vector<DocumentShape> read_all_shapes(const std::filesystem::path& path);

/// The tree of a shape under its name, such as "cart\n  front axle -> axle\n    left -> wheel\n".
std::string whole_tree(const DocumentShape& shape);

/// A line for each figure that differs, lengths by more than a millionth; empty for equal figures.
std::string differences(const ShapeFigures& expected, const ShapeFigures& actual);

/// The same for whole shapes: trees, then figures, then colours.
std::string differences(const DocumentShape& expected, const DocumentShape& actual);

/// The same for lists of shapes, in order.
std::string differences(const std::vector<DocumentShape>& expected,
                        const std::vector<DocumentShape>& actual);

/// A line for each layer or property that differs.
std::string differences(const DocumentRemarks& expected, const DocumentRemarks& actual);

/// The solids of all shapes.
int count_solids(const std::vector<DocumentShape>& shapes);

}  // namespace Kessel::test

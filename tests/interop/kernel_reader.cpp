#include "interop/kernel_reader.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRepBndLib.hxx>
#include <BRepGProp.hxx>
#include <BRep_Tool.hxx>
#include <Bnd_Box.hxx>
#include <GCPnts_AbscissaPoint.hxx>
#include <GProp_GProps.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_Printer.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <TCollection_AsciiString.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Document.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_DataMapOfShapeInteger.hxx>
#include <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Shape.hxx>
#include <TopoDS_Vertex.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_Area.hxx>
#include <XCAFDoc_Centroid.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_LayerTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XCAFDoc_Volume.hxx>
#include <XCAFPrs.hxx>
#include <XCAFPrs_IndexedDataMapOfShapeStyle.hxx>
#include <XCAFPrs_Style.hxx>
#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace Kessel::test {

namespace {

/// An open document of the kernel's application.
class OpenDocument {
 public:
  OpenDocument() { application_->NewDocument("MDTV-XCAF", document_); }
  OpenDocument(const OpenDocument&) = delete;
  OpenDocument& operator=(const OpenDocument&) = delete;
  ~OpenDocument() { application_->Close(document_); }

  const opencascade::handle<TDocStd_Document>& get() const { return document_; }

 private:
  opencascade::handle<XCAFApp_Application> application_ = XCAFApp_Application::GetApplication();
  opencascade::handle<TDocStd_Document> document_;
};

/// Makes a folder the working directory while it lives.
class WorkingDirectory {
 public:
  explicit WorkingDirectory(const std::filesystem::path& folder)
      : before_(std::filesystem::current_path()) {
    std::filesystem::current_path(folder);
  }
  WorkingDirectory(const WorkingDirectory&) = delete;
  WorkingDirectory& operator=(const WorkingDirectory&) = delete;
  ~WorkingDirectory() {
    std::error_code ignored;
    std::filesystem::current_path(before_, ignored);
  }

 private:
  std::filesystem::path before_;
};

/// A label's name, UTF-8. Where the file gives none, the kernel makes one up from its label
/// numbers, such as "=>[0:1:1:5]"; that is no name.
std::string name_of(const TDF_Label& label) {
  opencascade::handle<TDataStd_Name> name;
  if (!label.FindAttribute(TDataStd_Name::GetID(), name)) return {};
  std::string text = TCollection_AsciiString(name->Get()).ToCString();
  return text.starts_with("=>[") ? "" : text;
}

/// Appends the components below `label` to `tree` and returns how many there are.
int add_components(const TDF_Label& label, std::size_t level, std::string& tree) {
  TDF_LabelSequence components;
  XCAFDoc_ShapeTool::GetComponents(label, components, false);
  int count = components.Length();
  for (const TDF_Label& component : components) {
    TDF_Label used;
    XCAFDoc_ShapeTool::GetReferredShape(component, used);
    tree.append(2 * level, ' ').append(name_of(component));
    tree.append(" -> ").append(name_of(used)).append("\n");
    count += add_components(used, level + 1, tree);
  }
  return count;
}

int count_of(const TopoDS_Shape& shape, TopAbs_ShapeEnum kind) {
  int count = 0;
  for (TopExp_Explorer at(shape, kind); at.More(); at.Next()) ++count;
  return count;
}

std::array<double, 6> box_of(const TopoDS_Shape& shape) {
  Bnd_Box box;
  BRepBndLib::Add(shape, box, /*useTriangulation=*/false);
  std::array<double, 6> corners{};
  if (!box.IsVoid()) {
    box.Get(corners[0], corners[1], corners[2], corners[3], corners[4], corners[5]);
  }
  return corners;
}

GProp_GProps surface_of(const TopoDS_Shape& shape) {
  GProp_GProps area;
  BRepGProp::SurfaceProperties(shape, area);
  return area;
}

/// The colours of all faces of `label`'s shape: what is said of a face counts more than what is
/// said of something larger.
std::map<std::string, ColouredFaces> colours_of(const TDF_Label& label) {
  XCAFPrs_IndexedDataMapOfShapeStyle settings;
  XCAFPrs::CollectStyleSettings(label, TopLoc_Location(), settings);
  std::vector<int> order;
  for (int i = 1; i <= settings.Extent(); ++i) order.push_back(i);
  // Kinds of shapes are numbered from the largest to the smallest.
  std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
    return settings.FindKey(a).ShapeType() < settings.FindKey(b).ShapeType();
  });
  TopTools_DataMapOfShapeInteger style_of;
  for (const int i : order) {
    if (!settings.FindFromIndex(i).IsSetColorSurf()) continue;
    for (TopExp_Explorer at(settings.FindKey(i), TopAbs_FACE); at.More(); at.Next()) {
      style_of.Bind(at.Current(), i);
    }
  }
  std::map<std::string, ColouredFaces> colours;
  TopTools_IndexedMapOfShape faces;
  TopExp::MapShapes(XCAFDoc_ShapeTool::GetShape(label), TopAbs_FACE, faces);
  for (int i = 1; i <= faces.Extent(); ++i) {
    int style = 0;
    std::string colour = "none";
    if (style_of.Find(faces(i), style)) {
      const Quantity_ColorRGBA said = settings.FindFromIndex(style).GetColorSurfRGBA();
      colour = Quantity_ColorRGBA::ColorToHex(said).ToCString();
    }
    ColouredFaces& same = colours[colour];
    const GProp_GProps area = surface_of(faces(i));
    ++same.faces;
    same.area += area.Mass();
    same.moment[0] += area.Mass() * area.CentreOfMass().X();
    same.moment[1] += area.Mass() * area.CentreOfMass().Y();
    same.moment[2] += area.Mass() * area.CentreOfMass().Z();
  }
  return colours;
}

DocumentShape describe(const TDF_Label& label) {
  DocumentShape result;
  result.name = name_of(label);
  ShapeFigures& figures = result.figures;
  figures.components = add_components(label, 1, result.tree);
  const TopoDS_Shape shape = XCAFDoc_ShapeTool::GetShape(label);
  figures.solids = count_of(shape, TopAbs_SOLID);
  figures.shells = count_of(shape, TopAbs_SHELL);
  figures.faces = count_of(shape, TopAbs_FACE);
  figures.edges = count_of(shape, TopAbs_EDGE);
  GProp_GProps volume;
  BRepGProp::VolumeProperties(shape, volume);
  figures.volume = volume.Mass();
  const gp_Pnt centre = volume.CentreOfMass();
  figures.centre_of_mass = {centre.X(), centre.Y(), centre.Z()};
  figures.area = surface_of(shape).Mass();
  figures.box = box_of(shape);
  result.colours = colours_of(label);
  return result;
}

/// A file that the kernel has read.
class ReadFile {
 public:
  explicit ReadFile(const std::filesystem::path& path) {
    Message::DefaultMessenger()->RemovePrinters(STANDARD_TYPE(Message_Printer));
    const WorkingDirectory folder(path.parent_path());
    STEPCAFControl_Reader reader;
    reader.SetNameMode(true);
    reader.SetColorMode(true);
    reader.SetLayerMode(true);
    reader.SetPropsMode(true);
    if (reader.ReadFile(("./" + path.filename().string()).c_str()) != IFSelect_RetDone) {
      throw std::runtime_error("the kernel cannot read " + path.string());
    }
    opencascade::handle<TDocStd_Document> target = document_.get();
    if (!reader.Transfer(target)) {
      throw std::runtime_error("the kernel cannot transfer " + path.string());
    }
    // Shapes of assemblies know of what came from other files only then.
    shapes()->UpdateAssemblies();
  }

  opencascade::handle<XCAFDoc_LayerTool> layers() const {
    return XCAFDoc_DocumentTool::LayerTool(document_.get()->Main());
  }

  opencascade::handle<XCAFDoc_ShapeTool> shapes() const {
    return XCAFDoc_DocumentTool::ShapeTool(document_.get()->Main());
  }

 private:
  OpenDocument document_;
};

}  // namespace

std::vector<DocumentShape> read_free_shapes(const std::filesystem::path& path) {
  const ReadFile file(path);
  TDF_LabelSequence labels;
  file.shapes()->GetFreeShapes(labels);
  std::vector<DocumentShape> shapes;
  for (const TDF_Label& label : labels) shapes.push_back(describe(label));
  return shapes;
}

namespace {

std::array<double, 3> coordinates(const gp_Pnt& point) {
  return {point.X(), point.Y(), point.Z()};
}

PlacedEdge describe(const TopoDS_Edge& shape) {
  // The length without a tolerance is off where a spline has many pieces.
  constexpr double TOLERANCE = 1e-7;
  constexpr int PIECES = 256;
  const BRepAdaptor_Curve curve(shape);
  PlacedEdge edge;
  edge.length = GCPnts_AbscissaPoint::Length(curve, TOLERANCE);
  const gp_Pnt begin = BRep_Tool::Pnt(TopExp::FirstVertex(shape));
  const gp_Pnt end = BRep_Tool::Pnt(TopExp::LastVertex(shape));
  const double from = curve.FirstParameter();
  const double to = curve.LastParameter();
  edge.begin = coordinates(begin);
  edge.end = coordinates(end);
  edge.gap = begin.Distance(curve.Value(from)) + end.Distance(curve.Value(to));
  Bnd_Box box;
  for (int i = 0; i <= PIECES; ++i) box.Add(curve.Value(from + (to - from) * i / PIECES));
  box.Get(edge.box[0], edge.box[1], edge.box[2], edge.box[3], edge.box[4], edge.box[5]);
  return edge;
}

}  // namespace

std::vector<PlacedEdge> read_edges(const std::filesystem::path& path) {
  const ReadFile file(path);
  TDF_LabelSequence labels;
  file.shapes()->GetFreeShapes(labels);
  TopTools_IndexedDataMapOfShapeListOfShape faces_of;
  for (const TDF_Label& label : labels) {
    TopExp::MapShapesAndAncestors(XCAFDoc_ShapeTool::GetShape(label), TopAbs_EDGE, TopAbs_FACE,
                                  faces_of);
  }
  std::vector<PlacedEdge> edges;
  for (int i = 1; i <= faces_of.Extent(); ++i) {
    const TopoDS_Edge& shape = TopoDS::Edge(faces_of.FindKey(i));
    if (BRep_Tool::Degenerated(shape)) continue;
    PlacedEdge& edge = edges.emplace_back(describe(shape));
    for (const TopoDS_Shape& face : faces_of(i)) {
      edge.is_seam = edge.is_seam || BRep_Tool::IsClosed(shape, TopoDS::Face(face));
    }
  }
  return edges;
}

DocumentRemarks read_remarks(const std::filesystem::path& path) {
  const ReadFile file(path);
  DocumentRemarks remarks;
  TDF_LabelSequence layers;
  file.layers()->GetLayerLabels(layers);
  for (const TDF_Label& layer : layers) {
    TCollection_ExtendedString name;
    file.layers()->GetLayer(layer, name);
    TDF_LabelSequence labels;
    file.layers()->GetShapesOfLayer(layer, labels);
    double area = 0;
    for (const TDF_Label& label : labels) {
      area += surface_of(XCAFDoc_ShapeTool::GetShape(label)).Mass();
    }
    remarks.layers[TCollection_AsciiString(name).ToCString()] += area;
  }
  TDF_LabelSequence labels;
  file.shapes()->GetShapes(labels);
  for (const TDF_Label& label : labels) {
    const auto add = [&](const char* what, double value) {
      std::ostringstream text;
      text.precision(9);
      text << name_of(label) << ' ' << what << ' ' << value;
      remarks.properties.push_back(text.str());
    };
    double value = 0;
    if (XCAFDoc_Volume::Get(label, value)) add("volume", value);
    if (XCAFDoc_Area::Get(label, value)) add("area", value);
    gp_Pnt centre;
    if (XCAFDoc_Centroid::Get(label, centre)) add("centroid", centre.X() + centre.Y() + centre.Z());
  }
  std::sort(remarks.properties.begin(), remarks.properties.end());
  return remarks;
}

namespace {

template <class IsWanted>
std::vector<DocumentShape> read_shapes(const std::filesystem::path& path, IsWanted is_wanted) {
  const ReadFile file(path);
  TDF_LabelSequence labels;
  file.shapes()->GetShapes(labels);
  std::vector<DocumentShape> shapes;
  for (const TDF_Label& label : labels) {
    if (is_wanted(label)) shapes.push_back(describe(label));
  }
  return shapes;
}

}  // namespace

std::vector<DocumentShape> read_assemblies(const std::filesystem::path& path) {
  return read_shapes(path, [](const TDF_Label& one) { return XCAFDoc_ShapeTool::IsAssembly(one); });
}

std::vector<DocumentShape> read_all_shapes(const std::filesystem::path& path) {
  return read_shapes(path, [](const TDF_Label&) { return true; });
}

}  // namespace Kessel::test

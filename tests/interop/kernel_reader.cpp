#include "interop/kernel_reader.h"

#include <BRepBndLib.hxx>
#include <BRepGProp.hxx>
#include <Bnd_Box.hxx>
#include <GProp_GProps.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_Printer.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <TCollection_AsciiString.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Document.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Shape.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
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
  GProp_GProps area;
  BRepGProp::SurfaceProperties(shape, area);
  figures.area = area.Mass();
  figures.box = box_of(shape);
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
    if (reader.ReadFile(("./" + path.filename().string()).c_str()) != IFSelect_RetDone) {
      throw std::runtime_error("the kernel cannot read " + path.string());
    }
    opencascade::handle<TDocStd_Document> target = document_.get();
    if (!reader.Transfer(target)) {
      throw std::runtime_error("the kernel cannot transfer " + path.string());
    }
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

std::vector<DocumentShape> read_assemblies(const std::filesystem::path& path) {
  const ReadFile file(path);
  TDF_LabelSequence labels;
  file.shapes()->GetShapes(labels);
  std::vector<DocumentShape> shapes;
  for (const TDF_Label& label : labels) {
    if (XCAFDoc_ShapeTool::IsAssembly(label)) shapes.push_back(describe(label));
  }
  return shapes;
}

}  // namespace Kessel::test

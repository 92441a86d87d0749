#include "interop/kernel_writer.h"

#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRep_Builder.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_Printer.hxx>
#include <Quantity_Color.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Document.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Edge.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_GraphNode.hxx>
#include <XCAFDoc_LayerTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <initializer_list>
#include <stdexcept>

namespace Kessel::test {

namespace {

TopoDS_Shape box(double length) {
  return BRepPrimAPI_MakeBox(length, 2, 3).Shape();
}

TopoDS_Shape compound(std::initializer_list<TopoDS_Shape> shapes) {
  TopoDS_Compound all;
  const BRep_Builder builder;
  builder.MakeCompound(all);
  for (const TopoDS_Shape& shape : shapes) builder.Add(all, shape);
  return all;
}

enum class Colour : std::uint8_t { red, green, blue };

/// A document under way.
class Draft {
 public:
  Draft() { application_->NewDocument("MDTV-XCAF", document_); }
  Draft(const Draft&) = delete;
  Draft& operator=(const Draft&) = delete;
  ~Draft() { application_->Close(document_); }

  TDF_Label part(const char* name, const TopoDS_Shape& shape) {
    const TDF_Label label = shapes()->AddShape(shape, false);
    TDataStd_Name::Set(label, name);
    return label;
  }
  TDF_Label assembly(const char* name) {
    const TDF_Label label = shapes()->NewShape();
    TDataStd_Name::Set(label, name);
    return label;
  }
  /// Each usage lies farther out than the last.
  TDF_Label use(const TDF_Label& whole, const TDF_Label& piece) {
    gp_Trsf place;
    ++usages_;
    place.SetTranslation(gp_Vec(20 * usages_, usages_, 0));
    return shapes()->AddComponent(whole, piece, place);
  }
  void colour(const TDF_Label& label, Colour colour) {
    const auto part = [&](Colour one) { return colour == one ? 1. : 0.; };
    const Quantity_Color value(part(Colour::red), part(Colour::green), part(Colour::blue),
                               Quantity_TOC_RGB);
    XCAFDoc_DocumentTool::ColorTool(document_->Main())->SetColor(label, value, XCAFDoc_ColorSurf);
  }
  TDF_Label first_face(const TDF_Label& part) {
    return shapes()->AddSubShape(
        part, TopExp_Explorer(XCAFDoc_ShapeTool::GetShape(part), TopAbs_FACE).Current());
  }
  void colour_deep_usage(const TDF_Label& upper, const TDF_Label& lower, Colour its_colour) {
    TDF_LabelSequence path;
    path.Append(upper);
    path.Append(lower);
    opencascade::handle<XCAFDoc_GraphNode> usage;
    shapes()->SetSHUO(path, usage);
    XCAFDoc_ShapeTool::FindSHUO(path, usage);
    colour(usage->Label(), its_colour);
  }
  void put_on_layer(const TDF_Label& label, const char* layer) {
    XCAFDoc_DocumentTool::LayerTool(document_->Main())->SetLayer(label, layer);
  }

  void write(const std::filesystem::path& path) {
    Message::DefaultMessenger()->RemovePrinters(STANDARD_TYPE(Message_Printer));
    shapes()->UpdateAssemblies();
    STEPCAFControl_Writer writer;
    writer.SetNameMode(true);
    writer.SetColorMode(true);
    writer.SetLayerMode(true);
    if (!writer.Transfer(document_, STEPControl_AsIs) ||
        writer.Write(path.c_str()) != IFSelect_RetDone) {
      throw std::runtime_error("the kernel cannot write " + path.string());
    }
  }

 private:
  opencascade::handle<XCAFDoc_ShapeTool> shapes() const {
    return XCAFDoc_DocumentTool::ShapeTool(document_->Main());
  }

  opencascade::handle<XCAFApp_Application> application_ = XCAFApp_Application::GetApplication();
  opencascade::handle<TDocStd_Document> document_;
  int usages_ = 0;
};

void colour_every_occurrence(Draft& draft) {
  const TDF_Label root = draft.assembly("root");
  const TDF_Label part = draft.part("part", box(1));
  for (const Colour one : {Colour::red, Colour::green, Colour::blue}) {
    draft.colour(draft.use(root, part), one);
  }
}

void colour_one_of_three(Draft& draft) {
  const TDF_Label root = draft.assembly("root");
  const TDF_Label part = draft.part("part", box(1));
  draft.colour(part, Colour::red);
  draft.colour(draft.first_face(part), Colour::green);
  draft.use(root, part);
  draft.colour(draft.use(root, part), Colour::blue);
  draft.use(root, part);
}

void colour_only_occurrences(Draft& draft) {
  const TDF_Label root = draft.assembly("root");
  draft.colour(draft.use(root, draft.part("left", box(1))), Colour::red);
  draft.colour(draft.use(root, draft.part("right", box(2))), Colour::blue);
}

void colour_sub_assemblies(Draft& draft) {
  const TDF_Label root = draft.assembly("root");
  const TDF_Label left = draft.assembly("left");
  const TDF_Label right = draft.assembly("right");
  const TDF_Label part = draft.part("part", box(1));
  draft.colour(part, Colour::red);
  draft.use(left, part);
  draft.colour(draft.use(left, draft.part("lid", box(2))), Colour::blue);
  draft.use(right, part);
  draft.colour(draft.use(root, left), Colour::green);
  draft.colour(draft.use(root, right), Colour::blue);
  draft.use(root, right);
}

void colour_deep_occurrence(Draft& draft) {
  const TDF_Label root = draft.assembly("root");
  const TDF_Label left = draft.assembly("left");
  const TDF_Label part = draft.part("part", box(1));
  draft.colour(part, Colour::red);
  const TDF_Label lower = draft.use(left, part);
  const TDF_Label upper = draft.use(root, left);
  draft.use(root, left);
  draft.colour_deep_usage(upper, lower, Colour::green);
}

void put_on_layers(Draft& draft) {
  const TDF_Label root = draft.assembly("root");
  const TDF_Label left = draft.part("left", box(1));
  const TDF_Label right = draft.part("right", box(2));
  draft.put_on_layer(draft.use(root, left), "occurrence");
  draft.use(root, right);
  draft.put_on_layer(left, "both");
  draft.put_on_layer(right, "both");
  draft.put_on_layer(draft.first_face(right), "face");
}

void mix_bodies(Draft& draft) {
  const TDF_Label root = draft.assembly("root");
  const TopoDS_Shape edge = BRepBuilderAPI_MakeEdge(gp_Pnt(0, 0, 0), gp_Pnt(1, 1, 1)).Edge();
  const TopoDS_Shape face = TopExp_Explorer(box(1), TopAbs_FACE).Current();
  const TopoDS_Shape shell = TopExp_Explorer(box(2), TopAbs_SHELL).Current();
  draft.use(root, draft.part("edge", edge));
  draft.use(root, draft.part("face", face));
  draft.use(root, draft.part("shell", shell));
  draft.use(root, draft.part("mixed", compound({box(4), edge, face})));
  const TDF_Label pair = draft.part("pair", compound({box(3), BRepPrimAPI_MakeSphere(9).Shape()}));
  draft.colour(draft.use(root, pair), Colour::red);
  draft.colour(draft.use(root, pair), Colour::green);
  draft.use(root, draft.part("empty", compound({})));
}

void make_parts_alone(Draft& draft) {
  draft.colour(draft.part("left", box(1)), Colour::red);
  draft.colour(draft.part("right", box(4)), Colour::blue);
}

struct Row {
  const char* name;
  void (*make)(Draft& draft);
};
constexpr Row DOCUMENTS[] = {
    {"every_occurrence_coloured", colour_every_occurrence},
    {"one_of_three_coloured", colour_one_of_three},
    {"only_occurrences_coloured", colour_only_occurrences},
    {"sub_assemblies_coloured", colour_sub_assemblies},
    {"deep_occurrence_coloured", colour_deep_occurrence},
    {"layers", put_on_layers},
    {"bodies_of_all_kinds", mix_bodies},
    {"parts_alone", make_parts_alone},
};

}  // namespace

std::vector<std::string> kernel_documents() {
  std::vector<std::string> names;
  for (const Row& row : DOCUMENTS) names.emplace_back(row.name);
  return names;
}

void write_kernel_document(const std::string& name, const std::filesystem::path& path) {
  for (const Row& row : DOCUMENTS) {
    if (name != row.name) continue;
    Draft draft;
    row.make(draft);
    draft.write(path);
    return;
  }
  throw std::runtime_error("the kernel has no document " + name);
}

}  // namespace Kessel::test

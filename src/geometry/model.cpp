#include "geometry/model.h"

#include <BRepBndLib.hxx>
#include <BRep_Builder.hxx>
#include <Bnd_Box.hxx>
#include <TopoDS_Compound.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XCAFDoc_VisMaterial.hxx>
#include <XCAFPrs.hxx>

namespace quintara {
namespace {

TopoDS_Compound CompoundOf(const std::vector<TopoDS_Shape>& shapes) {
  TopoDS_Compound compound;
  const BRep_Builder builder;
  builder.MakeCompound(compound);
  for (const auto& shape : shapes) builder.Add(compound, shape);
  return compound;
}

}  // namespace

PartShape PartShapeAt(const TDF_Label& label) {
  PartShape part;
  part.shape = XCAFDoc_ShapeTool::GetShape(label);
  XCAFPrs::CollectStyleSettings(label, TopLoc_Location(), part.styles);
  return part;
}

PartShape PartShapeOf(const Document& document) {
  const auto roots = document.FreeShapes();
  if (roots.size() == 1) return PartShapeAt(roots.front());
  PartShape part;
  std::vector<TopoDS_Shape> shapes;
  for (const auto& root : roots) {
    const auto shape = XCAFDoc_ShapeTool::GetShape(root);
    if (shape.IsNull()) continue;
    shapes.push_back(shape);
    XCAFPrs::CollectStyleSettings(root, TopLoc_Location(), part.styles);
  }
  if (!shapes.empty()) part.shape = CompoundOf(shapes);
  return part;
}

Bnd_Box BoxOf(const TopoDS_Shape& shape) {
  Bnd_Box box;
  if (!shape.IsNull()) BRepBndLib::Add(shape, box, Standard_False);
  return box;
}

ModelBuilder::ModelBuilder(const Document& document)
    : shapes_(XCAFDoc_DocumentTool::ShapeTool(document.Get()->Main())),
      colours_(XCAFDoc_DocumentTool::ColorTool(document.Get()->Main())) {}

TDF_Label ModelBuilder::AddPart(const PartShape& part, const std::string& partNumber) {
  auto shape = part.shape;
  // The tool knows shapes by identity and splits off locations: a wrapper keeps each part its own.
  const bool wrapped = shape.IsNull() || !shape.Location().IsIdentity() || !shapes_->FindShape(shape).IsNull();
  if (wrapped) shape = shape.IsNull() ? CompoundOf({}) : CompoundOf({shape});
  const auto label = shapes_->AddShape(shape, Standard_False, Standard_False);
  SetName(label, partNumber);
  for (int i = 1; i <= part.styles.Extent(); ++i) {
    const auto& piece = part.styles.FindKey(i);
    const auto place = piece.IsSame(shape) ? label : shapes_->AddSubShape(label, piece);
    if (!place.IsNull()) Paint(place, part.styles.FindFromIndex(i));
  }
  return label;
}

TDF_Label ModelBuilder::AddAssembly(const std::string& partNumber) {
  const auto label = shapes_->NewShape();
  SetName(label, partNumber);
  return label;
}

TDF_Label ModelBuilder::AddInstance(const TDF_Label& assembly, const TDF_Label& definition, const gp_Trsf& movement,
                                    const std::string& name) {
  const auto label = shapes_->AddComponent(assembly, definition, TopLoc_Location(movement));
  SetName(label, name);
  return label;
}

void ModelBuilder::CopyColours(const TDF_Label& from, const TDF_Label& to) {
  for (const auto type : {XCAFDoc_ColorGen, XCAFDoc_ColorSurf, XCAFDoc_ColorCurv}) {
    Quantity_ColorRGBA colour;
    const auto tool = XCAFDoc_DocumentTool::ColorTool(from);
    if (tool->GetColor(from, type, colour)) colours_->SetColor(to, colour, type);
  }
}

void ModelBuilder::Finish() {
  shapes_->UpdateAssemblies();
}

void ModelBuilder::Paint(const TDF_Label& label, const XCAFPrs_Style& style) {
  const bool material = !style.Material().IsNull() && !style.Material()->IsEmpty();
  if (material) colours_->SetColor(label, style.Material()->BaseColor(), XCAFDoc_ColorSurf);
  if (style.IsSetColorSurf()) colours_->SetColor(label, style.GetColorSurfRGBA(), XCAFDoc_ColorSurf);
  if (style.IsSetColorCurv()) colours_->SetColor(label, style.GetColorCurv(), XCAFDoc_ColorCurv);
}

}  // namespace quintara

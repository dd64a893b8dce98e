#include "geometry/coloured_faces.h"

#include <BRep_Builder.hxx>
#include <NCollection_IndexedDataMap.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Iterator.hxx>
#include <TopoDS_Shell.hxx>

namespace quintara {
namespace {

void Collect(const PartShape& part, const TopoDS_Shape& shape, const XCAFPrs_Style& inherited,
             std::vector<ColouredFace>& faces) {
  const auto* own = part.styles.Seek(shape);
  const auto& style = own == nullptr ? inherited : *own;
  if (shape.ShapeType() == TopAbs_FACE) {
    faces.push_back({TopoDS::Face(shape), style});
    return;
  }
  if (shape.ShapeType() > TopAbs_FACE) return;
  for (TopoDS_Iterator child(shape); child.More(); child.Next()) Collect(part, child.Value(), style, faces);
}

TopoDS_Shape EmptyGroup(Grouping grouping) {
  const BRep_Builder builder;
  if (grouping == Grouping::kShell) {
    TopoDS_Shell shell;
    builder.MakeShell(shell);
    return shell;
  }
  TopoDS_Compound compound;
  builder.MakeCompound(compound);
  return compound;
}

}  // namespace

std::vector<ColouredFace> FacesOf(const PartShape& part) {
  std::vector<ColouredFace> faces;
  if (!part.shape.IsNull()) Collect(part, part.shape, XCAFPrs_Style(), faces);
  return faces;
}

PartShape WithoutCurves(const PartShape& part) {
  if (part.shape.IsNull()) return part;
  const bool curves = TopExp_Explorer(part.shape, TopAbs_EDGE, TopAbs_FACE).More();
  const bool points = TopExp_Explorer(part.shape, TopAbs_VERTEX, TopAbs_EDGE).More();
  return curves || points ? PartOfFaces(FacesOf(part), Grouping::kCompound) : part;
}

PartShape PartOfFaces(const std::vector<ColouredFace>& faces, Grouping grouping) {
  NCollection_IndexedDataMap<XCAFPrs_Style, TopoDS_Shape, XCAFPrs_Style> groups;
  const BRep_Builder builder;
  for (const auto& [face, style] : faces) {
    if (!groups.Contains(style)) groups.Add(style, EmptyGroup(grouping));
    builder.Add(groups.ChangeFromKey(style), face);
  }
  PartShape part;
  if (groups.IsEmpty()) return part;
  part.shape = EmptyGroup(Grouping::kCompound);
  for (int i = 1; i <= groups.Extent(); ++i) {
    builder.Add(part.shape, groups.FindFromIndex(i));
    if (!groups.FindKey(i).IsEmpty()) part.styles.Add(groups.FindFromIndex(i), groups.FindKey(i));
  }
  return part;
}

}  // namespace quintara

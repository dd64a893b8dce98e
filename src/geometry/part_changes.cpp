#include "geometry/part_changes.h"

#include <BRepBuilderAPI_GTransform.hxx>
#include <BRepBuilderAPI_Transform.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Poly_Triangulation.hxx>
#include <TopoDS.hxx>
#include <gp_GTrsf.hxx>

#include "geometry/coloured_faces.h"
#include "geometry/facets.h"
#include "geometry/placing.h"

namespace quintara {
namespace {

// Carries nodes and normals of meshes through one position.
class Mover {
 public:
  explicit Mover(const PositionMatrix& m)
      : points_(m[0], m[3], m[6], m[1], m[4], m[7], m[2], m[5], m[8]),
        origin_(m[9], m[10], m[11]),
        normals_(points_),
        mirrored_(points_.Determinant() < 0) {
    normals_.Invert();
    normals_.Transpose();
  }

  TopoDS_Face Moved(const TopoDS_Face& face, const Handle(Poly_Triangulation) & mesh, const gp_Trsf& place) const {
    const Handle(Poly_Triangulation) moved = mesh->Copy();
    for (int i = 1; i <= moved->NbNodes(); ++i) moved->SetNode(i, Point(moved->Node(i).Transformed(place)));
    if (moved->HasNormals()) {
      for (int i = 1; i <= moved->NbNodes(); ++i) moved->SetNormal(i, Normal(moved->Normal(i).Transformed(place)));
    }
    // The way round tells the outside; it turns over in a mirror.
    if (mirrored_ != (face.Orientation() == TopAbs_REVERSED)) TurnOver(*moved);
    TopoDS_Face result;
    BRep_Builder().MakeFace(result, moved);
    return result;
  }

 private:
  gp_Pnt Point(const gp_Pnt& point) const { return {points_ * point.XYZ() + origin_}; }
  gp_Dir Normal(const gp_Dir& normal) const { return {normals_ * normal.XYZ()}; }

  static void TurnOver(Poly_Triangulation& mesh) {
    for (int i = 1; i <= mesh.NbTriangles(); ++i) {
      int a = 0;
      int b = 0;
      int c = 0;
      mesh.Triangle(i).Get(a, b, c);
      mesh.SetTriangle(i, Poly_Triangle(a, c, b));
    }
  }

  gp_Mat points_;
  gp_XYZ origin_;
  gp_Mat normals_;
  bool mirrored_;
};

template <class Change>
PartShape Changed(const PartShape& part, Change change) {
  PartShape result;
  result.shape = change.Shape();
  for (int i = 1; i <= part.styles.Extent(); ++i) {
    result.styles.Add(change.ModifiedShape(part.styles.FindKey(i)), part.styles.FindFromIndex(i));
  }
  return result;
}

}  // namespace

PartShape MovedMesh(const PartShape& part, const PositionMatrix& position) {
  const Mover mover(position);
  std::vector<ColouredFace> moved;
  for (const auto& [face, style] : FacesOf(part)) {
    TopLoc_Location location;
    const auto& mesh = BRep_Tool::Triangulation(face, location);
    if (!mesh.IsNull()) moved.push_back({mover.Moved(face, mesh, location.Transformation()), style});
  }
  return PartOfFaces(moved, Grouping::kCompound);
}

PartShape MovedGeometry(const PartShape& part, const PositionMatrix& m) {
  if (part.shape.IsNull()) return part;
  if (KindOf(m) == PositionKind::kStretched) {
    const gp_Mat axes(m[0], m[3], m[6], m[1], m[4], m[7], m[2], m[5], m[8]);
    return Changed(part, BRepBuilderAPI_GTransform(part.shape, gp_GTrsf(axes, {m[9], m[10], m[11]}), Standard_True));
  }
  gp_Trsf movement;
  movement.SetValues(m[0], m[3], m[6], m[9], m[1], m[4], m[7], m[10], m[2], m[5], m[8], m[11]);
  return Changed(part, BRepBuilderAPI_Transform(part.shape, movement, Standard_True));
}

PartShape Facetted(const PartShape& part) {
  FacetMaker maker;
  std::vector<ColouredFace> faces;
  bool changed = false;
  for (const auto& coloured : FacesOf(part)) {
    if (!BRep_Tool::Surface(coloured.face).IsNull()) {
      faces.push_back(coloured);
      continue;
    }
    changed = true;
    for (const auto& facet : maker.FacetsOf(coloured.face)) faces.push_back({facet, coloured.style});
  }
  return changed ? PartOfFaces(faces, Grouping::kShell) : part;
}

}  // namespace quintara

#include "geometry/facets.h"

#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Geom_Line.hxx>
#include <Geom_Plane.hxx>
#include <Poly_Triangulation.hxx>
#include <Precision.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Wire.hxx>
#include <algorithm>
#include <bit>
#include <utility>

namespace quintara {
namespace {

gp_Pnt PointAt(const std::array<double, 3>& place) {
  return {place[0], place[1], place[2]};
}

}  // namespace

std::size_t FacetMaker::PlaceHash::operator()(const Place& place) const {
  constexpr std::uint64_t kPrime = 0x9E3779B97F4A7C15U;
  std::uint64_t hash = 0;
  for (const double number : place) hash = (hash ^ std::bit_cast<std::uint64_t>(number)) * kPrime + (hash >> 29U);
  return hash;
}

std::size_t FacetMaker::VertexAt(const Place& place) {
  const auto [known, added] = indices_.try_emplace(place, places_.size());
  if (added) {
    TopoDS_Vertex vertex;
    BRep_Builder().MakeVertex(vertex, PointAt(place), Precision::Confusion());
    places_.push_back(place);
    vertices_.push_back(vertex);
  }
  return known->second;
}

// An edge runs from the lower vertex to the higher; whoever goes the other way takes it reversed.
TopoDS_Edge FacetMaker::EdgeBetween(std::size_t from, std::size_t to) {
  const auto [low, high] = std::minmax(from, to);
  auto& edge = edges_[(static_cast<std::uint64_t>(low) << 32U) | high];
  if (edge.IsNull()) {
    const auto start = PointAt(places_[low]);
    const gp_Vec way(start, PointAt(places_[high]));
    const BRep_Builder builder;
    builder.MakeEdge(edge, new Geom_Line(start, gp_Dir(way)), Precision::Confusion());
    builder.Add(edge, vertices_[low].Oriented(TopAbs_FORWARD));
    builder.Add(edge, vertices_[high].Oriented(TopAbs_REVERSED));
    builder.Range(edge, 0, way.Magnitude());
  }
  return TopoDS::Edge(edge.Oriented(from == low ? TopAbs_FORWARD : TopAbs_REVERSED));
}

void FacetMaker::AddFacet(const Corners& corners, std::vector<TopoDS_Face>& facets) {
  const auto start = PointAt(places_[corners[0]]);
  const gp_Vec first(start, PointAt(places_[corners[1]]));
  const gp_Vec second(start, PointAt(places_[corners[2]]));
  const double shortest = std::min({first.Magnitude(), second.Magnitude(), (second - first).Magnitude()});
  const auto normal = first.Crossed(second);
  constexpr double kSharpest = 1e-9;
  if (shortest <= Precision::Confusion() || normal.Magnitude() <= kSharpest * first.Magnitude() * second.Magnitude())
    return;
  const BRep_Builder builder;
  TopoDS_Wire wire;
  builder.MakeWire(wire);
  for (std::size_t i = 0; i < corners.size(); ++i) builder.Add(wire, EdgeBetween(corners[i], corners[(i + 1) % 3]));
  wire.Closed(Standard_True);
  TopoDS_Face facet;
  builder.MakeFace(facet, new Geom_Plane(gp_Ax3(start, gp_Dir(normal), gp_Dir(first))), Precision::Confusion());
  builder.Add(facet, wire);
  facets.push_back(facet);
}

std::vector<TopoDS_Face> FacetMaker::FacetsOf(const TopoDS_Face& face) {
  TopLoc_Location location;
  const auto& mesh = BRep_Tool::Triangulation(face, location);
  std::vector<TopoDS_Face> facets;
  if (mesh.IsNull()) return facets;
  std::vector<std::size_t> vertices;
  for (int i = 1; i <= mesh->NbNodes(); ++i) {
    const auto node = mesh->Node(i).Transformed(location.Transformation());
    vertices.push_back(VertexAt({node.X() + 0.0, node.Y() + 0.0, node.Z() + 0.0}));
  }
  for (int i = 1; i <= mesh->NbTriangles(); ++i) {
    std::array<int, 3> n{};
    mesh->Triangle(i).Get(n[0], n[1], n[2]);
    if (face.Orientation() == TopAbs_REVERSED) std::swap(n[1], n[2]);
    Corners corners{};
    std::ranges::transform(n, corners.begin(), [&](int node) { return vertices[static_cast<std::size_t>(node - 1)]; });
    AddFacet(corners, facets);
  }
  return facets;
}

}  // namespace quintara

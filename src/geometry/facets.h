#pragma once

#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Vertex.hxx>
#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace quintara {

/// Makes plane facets of meshes. Nodes at the same place become one vertex and facets beside each
/// other share their edge, over all meshes given to one maker.
class FacetMaker {
 public:
  /// One facet for each triangle of the face's mesh; triangles without an area are left out.
  std::vector<TopoDS_Face> FacetsOf(const TopoDS_Face& face);

 private:
  using Place = std::array<double, 3>;
  using Corners = std::array<std::size_t, 3>;
  struct PlaceHash {
    std::size_t operator()(const Place& place) const;
  };

  std::size_t VertexAt(const Place& place);
  TopoDS_Edge EdgeBetween(std::size_t from, std::size_t to);
  void AddFacet(const Corners& corners, std::vector<TopoDS_Face>& facets);

  std::vector<Place> places_;
  std::vector<TopoDS_Vertex> vertices_;
  std::unordered_map<Place, std::size_t, PlaceHash> indices_;
  std::unordered_map<std::uint64_t, TopoDS_Edge> edges_;
};

}  // namespace quintara

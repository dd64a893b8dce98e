#include "geometry/measures.h"

#include <BRepBndLib.hxx>
#include <BRepGProp.hxx>
#include <BRep_Tool.hxx>
#include <GProp_GProps.hxx>
#include <Image_AlienPixMap.hxx>
#include <Poly_Triangulation.hxx>
#include <set>

#include "geometry/coloured_faces.h"
#include "geometry/part_file.h"

namespace quintara {
namespace {

std::size_t TrianglesOf(const std::vector<ColouredFace>& faces) {
  std::size_t count = 0;
  for (const auto& [face, style] : faces) {
    TopLoc_Location location;
    const auto& mesh = BRep_Tool::Triangulation(face, location);
    if (!mesh.IsNull()) count += static_cast<std::size_t>(mesh->NbTriangles());
  }
  return count;
}

std::array<double, 6> CornersOf(const TopoDS_Shape& shape) {
  Bnd_Box box;
  BRepBndLib::AddOptimal(shape, box, Standard_True, Standard_False);
  std::array<double, 6> corners{};
  if (!box.IsVoid()) box.Get(corners[0], corners[1], corners[2], corners[3], corners[4], corners[5]);
  return corners;
}

}  // namespace

FileMeasures MeasureFile(const std::string& path) {
  const auto part = WithoutCurves(LoadPartFile(path, {}));
  if (part.shape.IsNull()) return {};
  const auto faces = FacesOf(part);
  const bool exact = !faces.empty() && !BRep_Tool::Surface(faces.front().face).IsNull();
  GProp_GProps volume;
  GProp_GProps area;
  if (exact) {
    BRepGProp::VolumeProperties(part.shape, volume);
    BRepGProp::SurfaceProperties(part.shape, area);
  }
  return {faces.size(), TrianglesOf(faces), volume.Mass(), area.Mass(), CornersOf(part.shape)};
}

std::size_t CountColours(const std::string& picture, int left, int top, int width, int height) {
  Image_AlienPixMap pixels;
  if (!pixels.Load(picture.c_str())) throw Failure(failure::kInvalidFormat, picture + ": is no picture");
  std::set<std::array<float, 3>> colours;
  for (int y = top; y < top + height; ++y) {
    for (int x = left; x < left + width; ++x) {
      const auto colour = pixels.PixelColor(x, y).GetRGB();
      colours.insert(
          {static_cast<float>(colour.Red()), static_cast<float>(colour.Green()), static_cast<float>(colour.Blue())});
    }
  }
  return colours.size();
}

}  // namespace quintara

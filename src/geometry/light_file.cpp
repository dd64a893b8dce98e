#include "geometry/light_file.h"

#include <BRepMesh_IncrementalMesh.hxx>
#include <BRep_Tool.hxx>
#include <Bnd_Box.hxx>
#include <RWGltf_CafReader.hxx>
#include <RWGltf_CafWriter.hxx>
#include <TColStd_IndexedDataMapOfStringString.hxx>
#include <TDF_LabelSequence.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <cmath>
#include <filesystem>

#include "base/glb.h"
#include "base/text.h"
#include "geometry/file_bytes.h"

namespace quintara {
namespace {

constexpr double kMillimetre = 0.001;

bool HasMesh(const TopoDS_Shape& shape) {
  for (TopExp_Explorer face(shape, TopAbs_FACE); face.More(); face.Next()) {
    TopLoc_Location location;
    if (!BRep_Tool::Triangulation(TopoDS::Face(face.Current()), location).IsNull()) return true;
  }
  return false;
}

// Calls `body`; what it finds wrong with a light file becomes a failure that names the file.
template <class Body>
auto NamingFile(const std::string& path, Body&& body) {
  try {
    return body();
  } catch (const Failure& failure) {
    throw Failure(failure.Number(), path + ": is not a good light file: " + failure.Description());
  }
}

void CheckLightFile(const std::string& path) {
  const auto head = FirstBytesOfFile(path, kGlbHead);
  NamingFile(path, [&] { CheckGlb(head, std::filesystem::file_size(ToPath(path))); });
}

NumberedNode NumbersBelow(const TDF_Label& definition) {
  NumberedNode node = {NameOf(definition), {}};
  TDF_LabelSequence components;
  XCAFDoc_ShapeTool::GetComponents(definition, components);
  for (const auto& component : components) {
    TDF_Label referred;
    XCAFDoc_ShapeTool::GetReferredShape(component, referred);
    node.children.push_back(NumbersBelow(referred));
  }
  return node;
}

}  // namespace

void Mesh(const TopoDS_Shape& shape) {
  constexpr double kFineness = 0.002;
  constexpr double kAngle = 0.5;
  const auto box = BoxOf(shape);
  if (box.IsVoid()) return;
  const double size = std::sqrt(box.SquareExtent());
  // Meshes that are there already stay.
  if (size > 0) BRepMesh_IncrementalMesh(shape, kFineness * size, Standard_False, kAngle, Standard_False);
}

void WriteLightFile(const Document& document, const TDF_Label& label, const std::string& partNumber,
                    const std::string& path, const Progress& progress) {
  Translated(path, "could not be written", [&] {
    if (!HasMesh(XCAFDoc_ShapeTool::GetShape(label))) {
      return WriteFile(path, NamingFile(path, [&] { return GlbWithoutMeshes(partNumber); }));
    }
    RWGltf_CafWriter writer(path.c_str(), Standard_True);
    writer.ChangeCoordinateSystemConverter().SetInputLengthUnit(kMillimetre);
    writer.ChangeCoordinateSystemConverter().SetInputCoordinateSystem(RWMesh_CoordinateSystem_Zup);
    TDF_LabelSequence roots;
    roots.Append(label);
    TColStd_IndexedDataMapOfStringString information;
    information.Add("PartNumber", partNumber.c_str());
    KernelProgress writing(progress, 0.8, 1.0, "Writing the mesh");
    if (!writer.Perform(document.Get(), roots, nullptr, information, writing.Range())) {
      throw Failure(failure::kPathAccess, path + ": could not be written");
    }
    const auto bytes = BytesOfFile(path);
    WriteFile(path, NamingFile(path, [&] { return GlbWithPartNumbers(bytes, NumbersBelow(label)); }));
  });
}

PartShape ReadLightFile(const std::string& path, const Progress& progress) {
  CheckLightFile(path);
  return Translated(path, "could not be read", [&] {
    const Document document;
    RWGltf_CafReader reader;
    reader.SetDocument(document.Get());
    reader.SetSystemLengthUnit(kMillimetre);
    reader.SetSystemCoordinateSystem(RWMesh_CoordinateSystem_Zup);
    KernelProgress reading(progress, 0.0, 1.0, "Reading the mesh");
    if (!reader.Perform(path.c_str(), reading.Range())) {
      const auto bytes = BytesOfFile(path);
      if (!NamingFile(path, [&] { return HasMeshes(bytes); })) return PartShape();
      throw Failure(failure::kInvalidFormat, path + ": is damaged: its mesh could not be read");
    }
    return PartShapeOf(document);
  });
}

}  // namespace quintara

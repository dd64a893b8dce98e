#include "geometry/occ_geometry.h"

#include "base/packed_texts.h"
#include "geometry/coloured_faces.h"
#include "geometry/light_file.h"
#include "geometry/part_file.h"
#include "geometry/picture.h"
#include "geometry/saving.h"
#include "geometry/scene_model.h"
#include "geometry/split_assembly.h"
#include "geometry/step_file.h"
#include "geometry/worker.h"

namespace quintara {
namespace {

// A scene may name many files, any of which may be damaged and keep its reader busy for ever.
constexpr unsigned kExportSeconds = 3600;

class OccGeometry : public Geometry {
 public:
  std::unique_ptr<SplitAssembly> ReadAssembly(const std::string& path, const Progress& progress) override {
    return SplitStepAssembly(path, progress);
  }
  std::vector<std::string> WriteStep(const SceneNode& scene, const std::string& path,
                                     const Progress& progress) override;
  std::vector<std::string> WriteGltf(const SceneNode& scene, const std::string& path,
                                     const Progress& progress) override;
  void WritePicture(const std::vector<PictureView>& views, const std::string& path, int width, int height) override;
};

// What a writer gets: the scene as a document.
struct Model {
  const Document& document;
  TDF_Label root;
  bool hasFacets;
};

using Writer = std::function<void(const Model& model, const std::string& newPath, const Progress& progress)>;

std::vector<std::string> Export(const SceneNode& scene, Detail detail, const std::string& path, const Writer& write,
                                const Progress& progress) {
  std::string packed;
  SaveBeside(path, [&](const std::string& newPath) {
    const auto body = [&](const Progress& tell) {
      const Document document;
      SceneModel model(document, detail, [&](double done, const std::string& what) { tell(0.7 * done, what); });
      const auto root = model.Add(scene);
      if (root.IsNull()) throw Failure(failure::kInvalidCall, path + ": there is no geometry to write");
      model.Finish();
      const auto rest = [&](double done, const std::string& what) { tell(0.7 + 0.3 * done, what); };
      write({document, root, model.HasFacets()}, newPath, rest);
      return PackTexts(model.Lines());
    };
    packed = RunInWorker({path, "could not be written", "writer", kExportSeconds}, body, progress);
  });
  return UnpackTexts(packed);
}

std::vector<std::string> OccGeometry::WriteStep(const SceneNode& scene, const std::string& path,
                                                const Progress& progress) {
  const auto write = [](const Model& model, const std::string& newPath, const Progress& tell) {
    const auto curves = model.hasFacets ? EdgeCurves::kInSpace : EdgeCurves::kOnFaces;
    WriteStepFile(model.root, NameOf(model.root), curves, newPath, tell);
  };
  return Export(scene, Detail::kExact, path, write, progress);
}

std::vector<std::string> OccGeometry::WriteGltf(const SceneNode& scene, const std::string& path,
                                                const Progress& progress) {
  const auto write = [](const Model& model, const std::string& newPath, const Progress& tell) {
    WriteLightFile(model.document, model.root, NameOf(model.root), newPath, tell);
  };
  return Export(scene, Detail::kMesh, path, write, progress);
}

void OccGeometry::WritePicture(const std::vector<PictureView>& views, const std::string& path, int width, int height) {
  DrawPicture(views, path, width, height);
}

}  // namespace

std::size_t CountFaces(const std::string& path) {
  return FacesOf(LoadPartFile(path, {})).size();
}

std::unique_ptr<Geometry> MakeOccGeometry() {
  return std::make_unique<OccGeometry>();
}

}  // namespace quintara

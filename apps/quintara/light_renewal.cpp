#include "quintara/light_renewal.h"

#include "base/attempt.h"
#include "base/failure.h"
#include "quintara/product_tree.h"
#include "quintara/scene_of.h"

namespace quintara {
namespace {

// Closes what it had to open; a document that was open before belongs to the user.
class ReadProduct {
 public:
  ReadProduct(CadHost& host, const std::string& path) {
    const auto documents = host.Application()->Documents();
    const int before = documents->Count();
    document_ = documents->Read(path);
    isOwn_ = documents->Count() > before;
  }
  ~ReadProduct() {
    ErrorState ignored;
    if (isOwn_) Attempt(ignored, [&] { document_->Close(); });
  }
  ReadProduct(const ReadProduct&) = delete;
  ReadProduct& operator=(const ReadProduct&) = delete;

  Ref<zorva::Product> Root() const { return document_->AsProductDocument()->Product(); }

 private:
  Ref<zorva::Document> document_;
  bool isOwn_ = false;
};

void RenewOfProduct(const std::string& path, CadHost& host, Geometry& geometry, const Progress& progress) {
  const ReadProduct product(host, path);
  auto scene = SceneOf(product.Root());
  if (scene.root.children.empty()) return;
  if (!scene.leftOut.empty()) {
    throw Failure(failure::kFileNotFound,
                  "the light file of '" + path + "' can't be made anew: " + scene.leftOut.front());
  }
  scene.root.name = scene.root.partNumber;
  geometry.WriteGltf(scene.root, path + ".lwt", progress);
}

}  // namespace

void RenewLightOf(const std::string& path, CadHost& host, Geometry& geometry, const Progress& progress) {
  if (HasExtension(path, ".ZVAProduct")) return RenewOfProduct(path, host, geometry, progress);
  if (!HasExtension(path, ".stp") && !HasExtension(path, ".step")) return;
  const auto part = geometry.ReadAssembly(path, progress);
  part->WriteLight(part->Structure().root, path + ".lwt");
}

}  // namespace quintara

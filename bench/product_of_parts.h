#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "hosts/cad/cad_host.h"
#include "hosts/native/native_platform.h"
#include "vault_world.h"

namespace quintara {
class EmbeddedEngine;
}

namespace quintara::bench {

/// A product in a vault, checked in, with its matrix: modules of a hundred parts each, every part with a light
/// representation of 16 KiB. Beside the vault a CAD host without a document.
class ProductOfParts {
 public:
  static constexpr int kPartsOfAModule = 100;

  /// On `files` of the vault, durable ones or not.
  ProductOfParts(int parts, std::shared_ptr<NativeContents> files);
  ProductOfParts(const ProductOfParts&) = delete;
  ProductOfParts& operator=(const ProductOfParts&) = delete;

  static std::string PartNumber(int part) { return "P-" + std::to_string(part); }
  /// Where a part stands in the product.
  static std::array<double, 12> PositionOf(int part);

  int Size() const { return static_cast<int>(parts_.size()); }
  World& TheWorld() { return world_; }
  NativePlatform& Platform() { return *platform_; }
  const Ref<zorva::Application>& Zorva() const { return zorva_; }
  /// What the vault's user has selected.
  Ref<veldora::VdRecList> Selection();
  std::int32_t ObjectIdOf(int part) const { return parts_[static_cast<std::size_t>(part)]; }
  std::int16_t ClassOfParts() const { return classOfParts_; }
  std::int32_t MatrixId() const { return matrixId_; }

  /// Makes its hosts those of the process, with an empty work directory.
  void Activate();

 private:
  void Store();
  void AddMatrix(const Ref<veldora::VdObject>& root);

  Folder source_;
  World world_;
  std::shared_ptr<Gate> gate_ = std::make_shared<Gate>();
  std::shared_ptr<NativePlatform> platform_;
  CadHost host_{{gate_, std::make_shared<NativeContents>(gate_), {}}};
  Ref<zorva::Application> zorva_ = host_.Application();
  std::vector<std::int32_t> parts_;
  std::int16_t classOfParts_ = 0;
  std::int32_t matrixId_ = 0;
  Ref<veldora::VdObject> root_;
  int workFolders_ = 0;
};

}  // namespace quintara::bench

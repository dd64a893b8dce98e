#pragma once

#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "access/contracts/geometry.h"
#include "geometry/model.h"

namespace quintara {

/// What a scene is made for: exact geometry with meshes as facets, or meshes alone.
enum class Detail { kExact, kMesh };

/// Builds documents of scenes. Each file is loaded once, equal nodes share a definition. May crash on
/// damaged files: to be called in a worker.
class SceneModel {
 public:
  SceneModel(const Document& document, Detail detail, Progress progress);

  /// Adds a scene; null when nothing of it could be shown.
  TDF_Label Add(const SceneNode& scene);
  /// To be called when all is added.
  void Finish() { builder_.Finish(); }
  /// True when meshes became facets.
  bool HasFacets() const { return hasFacets_; }
  /// A line for each thing that could not be taken as it stands.
  const std::vector<std::string>& Lines() const { return lines_; }

 private:
  using LeafKey = std::tuple<std::string, std::string, PositionMatrix>;

  TDF_Label Definition(const SceneNode& node, const PositionMatrix& axes, const std::string& path);
  TDF_Label Leaf(const SceneNode& node, const PositionMatrix& axes, const std::string& path);
  TDF_Label Assembly(const SceneNode& node, const PositionMatrix& axes, const std::string& path);
  bool Report(const SceneNode& node, const std::string& path);
  const PartShape& Loaded(const std::string& file);
  PartShape Load(const std::string& file);
  PartShape Baked(const PartShape& part, const std::string& file, const PositionMatrix& axes) const;

  ModelBuilder builder_;
  Detail detail_;
  Progress progress_;
  std::vector<std::string> lines_;
  std::size_t files_ = 0;
  bool hasFacets_ = false;
  std::map<std::string, PartShape> loaded_;
  std::map<LeafKey, TDF_Label> leaves_;
  std::map<std::string, TDF_Label> assemblies_;
};

}  // namespace quintara

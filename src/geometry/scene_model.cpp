#include "geometry/scene_model.h"

#include <set>

#include "base/text.h"
#include "geometry/coloured_faces.h"
#include "geometry/light_file.h"
#include "geometry/part_changes.h"
#include "geometry/part_file.h"
#include "geometry/placing.h"

namespace quintara {
namespace {

void CollectFiles(const SceneNode& node, std::set<std::string>& files) {
  if (!node.file.empty()) files.insert(node.file);
  for (const auto& child : node.children) CollectFiles(child, files);
}

std::string TitleOf(const SceneNode& node) {
  return node.partNumber.empty() ? node.name : node.partNumber;
}

// What tells one instance from another, as text that can be a key.
std::string KeyOf(const TDF_Label& definition, const PositionMatrix& position, const std::string& name) {
  std::string key = std::to_string(definition.Tag()) + " " + name + '\0';
  key.append(reinterpret_cast<const char*>(position.data()), sizeof position);
  return key;
}

// A position that is no movement can't be written as one: its origin can, and its axes go into what
// stands there.
struct PartedPosition {
  explicit PartedPosition(const PositionMatrix& position)
      : movement(KindOf(position) == PositionKind::kMovement ? position : OriginOf(position)),
        axes(KindOf(position) == PositionKind::kMovement ? kIdentityPosition : AxesOf(position)) {}

  PositionMatrix movement;
  PositionMatrix axes;
};

}  // namespace

SceneModel::SceneModel(const Document& document, Detail detail, Progress progress)
    : builder_(document), detail_(detail), progress_(std::move(progress)) {}

TDF_Label SceneModel::Add(const SceneNode& scene) {
  std::set<std::string> files;
  CollectFiles(scene, files);
  files_ = files.size();
  if (scene.position == kIdentityPosition) return Definition(scene, kIdentityPosition, TitleOf(scene));
  SceneNode holder;
  holder.partNumber = TitleOf(scene);
  holder.children.push_back(scene);
  return Definition(holder, kIdentityPosition, holder.partNumber);
}

TDF_Label SceneModel::Definition(const SceneNode& node, const PositionMatrix& axes, const std::string& path) {
  return node.children.empty() && !node.file.empty() ? Leaf(node, axes, path) : Assembly(node, axes, path);
}

TDF_Label SceneModel::Leaf(const SceneNode& node, const PositionMatrix& axes, const std::string& path) {
  auto& label = leaves_[{node.file, node.partNumber, axes}];
  if (!label.IsNull()) return label;
  const auto& part = Loaded(node.file);
  if (part.shape.IsNull()) {
    lines_.push_back(path + ": " + node.file + " holds no geometry, left out");
    return {};
  }
  const auto title = node.partNumber.empty() ? FromPath(ToPath(node.file).stem()) : node.partNumber;
  label = builder_.AddPart(axes == kIdentityPosition ? part : Baked(part, node.file, axes), title);
  return label;
}

TDF_Label SceneModel::Assembly(const SceneNode& node, const PositionMatrix& axes, const std::string& path) {
  struct Child {
    TDF_Label definition;
    PositionMatrix movement;
    std::string name;
  };
  std::vector<Child> children;
  auto key = TitleOf(node) + '\0';
  for (const auto& child : node.children) {
    const auto childPath = path + "\\" + (child.name.empty() ? child.partNumber : child.name);
    if (!Report(child, childPath)) continue;
    const PartedPosition split(Placed(child.position, axes));
    const auto definition = Definition(child, split.axes, childPath);
    if (definition.IsNull()) continue;
    children.push_back({definition, split.movement, child.name.empty() ? TitleOf(child) : child.name});
    key += KeyOf(definition, split.movement, children.back().name);
  }
  if (children.empty()) {
    lines_.push_back(path + ": holds no geometry, left out");
    return {};
  }
  auto& label = assemblies_[key];
  if (!label.IsNull()) return label;
  label = builder_.AddAssembly(TitleOf(node));
  for (const auto& child : children)
    builder_.AddInstance(label, child.definition, ToMovement(child.movement), child.name);
  return label;
}

// Says what is wrong with a position, if anything is; False when the node has to stay out.
bool SceneModel::Report(const SceneNode& node, const std::string& path) {
  switch (KindOf(node.position)) {
    case PositionKind::kMovement: return true;
    case PositionKind::kMirrored:
      lines_.push_back(path + ": mirrored position, its geometry was mirrored into a part of its own");
      return true;
    case PositionKind::kStretched:
      lines_.push_back(path + ": stretched position, its geometry was stretched into a part of its own");
      return true;
    case PositionKind::kSingular: lines_.push_back(path + ": singular position, left out"); return false;
  }
  return false;
}

const PartShape& SceneModel::Loaded(const std::string& file) {
  const auto known = loaded_.find(file);
  if (known != loaded_.end()) return known->second;
  if (progress_) progress_(static_cast<double>(loaded_.size()) / static_cast<double>(files_), "Loading " + file);
  return loaded_.emplace(file, Load(file)).first->second;
}

PartShape SceneModel::Load(const std::string& file) {
  auto part = LoadPartFile(file, {});
  const bool light = IsLightFile(file);
  if (detail_ == Detail::kMesh) {
    if (light || part.shape.IsNull()) return part;
    Mesh(part.shape);
    return WithoutCurves(part);
  }
  if (!light) return part;
  hasFacets_ = true;
  return Facetted(part);
}

PartShape SceneModel::Baked(const PartShape& part, const std::string& file, const PositionMatrix& axes) const {
  return Translated(file, "could not be mirrored or stretched",
                    [&] { return detail_ == Detail::kMesh ? MovedMesh(part, axes) : MovedGeometry(part, axes); });
}

}  // namespace quintara

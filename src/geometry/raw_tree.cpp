#include "geometry/raw_tree.h"

#include <Bnd_Box.hxx>
#include <NCollection_DataMap.hxx>
#include <TDF_LabelMap.hxx>
#include <TDF_LabelMapHasher.hxx>
#include <TDF_LabelSequence.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS_Shape.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <string_view>

#include "base/text.h"
#include "geometry/model.h"

namespace quintara {
namespace {

std::vector<TDF_Label> ComponentsOf(const TDF_Label& definition) {
  TDF_LabelSequence components;
  XCAFDoc_ShapeTool::GetComponents(definition, components);
  return {components.begin(), components.end()};
}

TDF_Label DefinitionOf(const TDF_Label& component) {
  TDF_Label definition;
  XCAFDoc_ShapeTool::GetReferredShape(component, definition);
  return definition;
}

bool IsNumber(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

// A body of a part: neither the component nor what it refers to has a name.
bool IsBody(const TDF_Label& component) {
  return NameOf(component).empty() && NameOf(DefinitionOf(component)).empty();
}

bool StandsAtIdentity(const TDF_Label& component) {
  constexpr double kTolerance = 1e-12;
  const auto position = ToPosition(XCAFDoc_ShapeTool::GetLocation(component).Transformation());
  return std::ranges::equal(position, kIdentityPosition,
                            [](double a, double b) { return std::abs(a - b) <= kTolerance; });
}

// A piece of a shape that its writer took apart: numbered after the whole, without a position.
bool IsPiece(const TDF_Label& component, const std::string& whole) {
  const auto name = NameOf(DefinitionOf(component));
  return IsNumber(NameOf(component)) && name.starts_with(whole + ".") &&
         IsNumber(std::string_view(name).substr(whole.size() + 1)) && StandsAtIdentity(component);
}

bool IsPart(const TDF_Label& definition) {
  if (!XCAFDoc_ShapeTool::IsAssembly(definition)) return true;
  const auto components = ComponentsOf(definition);
  const auto name = NameOf(definition);
  return !components.empty() && std::ranges::all_of(components, [&](const TDF_Label& component) {
    return IsBody(component) || (IsPiece(component, name) && IsPart(DefinitionOf(component)));
  });
}

class Walk {
 public:
  explicit Walk(RawTree& tree) : tree_(tree) {}

  std::size_t Visit(const TDF_Label& label) {
    if (const auto* known = indices_.Seek(label)) return *known;
    AssemblyStructure::Definition definition = {NameOf(label), !IsPart(label), {}};
    std::vector<TDF_Label> components;
    if (definition.isAssembly) components = ComponentsOf(label);
    for (const auto& component : components) {
      const auto position = ToPosition(XCAFDoc_ShapeTool::GetLocation(component).Transformation());
      definition.children.push_back({NameOf(component), Visit(DefinitionOf(component)), position});
    }
    tree_.structure.definitions.push_back(std::move(definition));
    tree_.labels.push_back(label);
    tree_.components.push_back(std::move(components));
    const auto index = tree_.labels.size() - 1;
    indices_.Bind(label, index);
    return index;
  }

  std::size_t MakeRoot(const std::string& name, const std::vector<TDF_Label>& labels) {
    AssemblyStructure::Definition root = {name, true, {}};
    for (const auto& label : labels) root.children.push_back({{}, Visit(label), kIdentityPosition});
    tree_.structure.definitions.push_back(std::move(root));
    tree_.labels.emplace_back();
    tree_.components.emplace_back();
    return tree_.labels.size() - 1;
  }

 private:
  RawTree& tree_;
  NCollection_DataMap<TDF_Label, std::size_t, TDF_LabelMapHasher> indices_;
};

// Materials and the like come as products without any shape; beside real ones they are no roots.
std::vector<TDF_Label> Roots(const Document& document) {
  const auto all = document.FreeShapes();
  if (all.size() == 1) return all;
  std::vector<TDF_Label> roots;
  std::ranges::copy_if(all, std::back_inserter(roots),
                       [](const TDF_Label& label) { return !BoxOf(XCAFDoc_ShapeTool::GetShape(label)).IsVoid(); });
  return roots.empty() ? all : roots;
}

}  // namespace

RawTree RawTreeOf(const Document& document, const std::string& path) {
  const auto roots = Roots(document);
  if (roots.empty()) throw Failure(failure::kInvalidFormat, path + ": holds no part and no assembly");
  RawTree tree;
  Walk walk(tree);
  tree.structure.root =
      roots.size() == 1 ? walk.Visit(roots.front()) : walk.MakeRoot(FromPath(ToPath(path).stem()), roots);
  return tree;
}

}  // namespace quintara

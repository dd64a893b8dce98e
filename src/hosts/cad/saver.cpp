#include "hosts/cad/saver.h"

#include <filesystem>
#include <unordered_set>
#include <vector>

#include "base/text.h"
#include "hosts/cad/file_kind.h"
#include "hosts/cad/product_file.h"

namespace quintara::cad {
namespace {

std::string FileFrom(const std::string& holder, const std::string& file) {
  const auto path = ToPath(file);
  return path.parent_path() == ToPath(holder).parent_path() ? FromPath(path.filename()) : file;
}

void RequireOtherPaths(const Definition& definition, const std::string& path) {
  std::unordered_set<const Definition*> seen{&definition};
  std::vector<const Definition*> pending{&definition};
  while (!pending.empty()) {
    const auto& each = *pending.back();
    pending.pop_back();
    for (const auto& child : each.Children()) {
      if (child->definition->path == path) {
        throw Failure(failure::kInvalidCall, "\"" + path + "\" is a component of what would be saved there");
      }
      if (seen.insert(child->definition.get()).second) pending.push_back(child->definition.get());
    }
  }
}

ProductFile FileOf(const Definition& definition, const std::string& path) {
  ProductFile product{
      definition.partNumber, definition.rootName, definition.rootPosition, definition.properties, {}, {}};
  std::unordered_set<const Definition*> noted;
  for (const auto& child : definition.Children()) {
    const auto& reference = *child->definition;
    if (reference.path.empty()) {
      throw Failure(failure::kInvalidCall, "The component \"" + child->name + "\" has no file; it must be saved first");
    }
    auto file = FileFrom(path, reference.path);
    const bool holdsItsOwn = KindOf(reference.path) == FileKind::kProduct;
    if (!holdsItsOwn && !reference.properties.All().empty() && noted.insert(&reference).second) {
      product.references.push_back({file, reference.properties});
    }
    product.components.push_back({child->name, std::move(file), child->position, child->properties});
  }
  return product;
}

}  // namespace

void SaveProduct(Session& session, Definition& definition, const std::string& path) {
  if (definition.TheKind() != Definition::Kind::kAssembly) {
    throw Failure(failure::kInvalidCall, "\"" + definition.partNumber + "\" is no product document");
  }
  if (KindOf(path) != FileKind::kProduct) {
    throw Failure(failure::kInvalidCall, "A product document can't be saved as \"" + path + "\", only as .ZVAProduct");
  }
  const auto target = NormalPath(path);
  RequireOtherPaths(definition, target);
  const auto text = ProductFileText(FileOf(definition, target));
  WriteBeside(session.Files(), target, text);
  session.Move(definition, target, DigestOf(text));
}

}  // namespace quintara::cad

#include "hosts/cad/saver.h"

#include <filesystem>
#include <unordered_map>
#include <unordered_set>
#include <utility>
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
    for (const auto* const child : each.Children()) {
      if (!seen.insert(child->definition.get()).second) continue;
      if (IsSameFile(child->definition->path, path)) {
        throw Failure(failure::kInvalidCall, "\"" + path + "\" is a component of what would be saved there");
      }
      pending.push_back(child->definition.get());
    }
  }
}

// What somebody else has made of the file since it was opened must not be lost.
void RequireUnchanged(const Definition& definition, FileContents& files) {
  std::error_code ignored;
  if (!std::filesystem::exists(ToPath(definition.path), ignored)) return;
  if (DigestOf(files.Read(definition.path)) == definition.content) return;
  throw Failure(failure::kInvalidCall, "\"" + definition.path + "\" has changed since it was opened");
}

/// What the children of a product file tell of their files.
class ReferenceTable {
 public:
  explicit ReferenceTable(ProductFile& product) : product_(product) {}

  // Two contents of one file become one when the product is opened again: the newest one's.
  void Note(const Definition& reference, const std::string& file) {
    const auto [noted, isNew] = noted_.try_emplace(KeyOf(reference.path), Entry{&reference, file});
    if (!isNew && reference.found > noted->second.reference->found) noted->second.reference = &reference;
    if (isNew) order_.push_back(&noted->second);
  }
  void Write() const {
    for (const auto* const entry : order_) {
      const auto& properties = entry->reference->properties;
      if (!properties.All().empty()) product_.references.push_back({entry->file, properties});
    }
  }

 private:
  struct Entry {
    const Definition* reference;
    std::string file;
  };

  ProductFile& product_;
  std::unordered_map<std::string, Entry> noted_;
  std::vector<const Entry*> order_;
};

ProductFile FileOf(const Definition& definition, const std::string& path) {
  ProductFile product{
      definition.partNumber, definition.rootName, definition.rootPosition, definition.properties, {}, {}};
  ReferenceTable references(product);
  for (const auto& child : definition.Children()) {
    const auto& reference = *child->definition;
    if (reference.path.empty()) {
      throw Failure(failure::kInvalidCall, "The component \"" + child->name + "\" has no file; it must be saved first");
    }
    auto file = FileFrom(path, reference.path);
    if (KindOf(reference.path) != FileKind::kProduct) references.Note(reference, file);
    product.components.push_back({child->name, std::move(file), child->position, child->properties});
  }
  references.Write();
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
  const bool isItsOwn = !definition.path.empty() && IsSameFile(definition.path, target);
  if (isItsOwn) {
    RequireUnchanged(definition, session.Files());
  } else {
    session.RequireFreePath(target);
  }
  RequireOtherPaths(definition, target);
  const auto text = ProductFileText(FileOf(definition, target));
  // Nothing may replace a good file that couldn't be opened again.
  ParseProductFile(text, target);
  session.Files().WriteWhole(target, text);
  session.Move(definition, target, DigestOf(text));
}

}  // namespace quintara::cad

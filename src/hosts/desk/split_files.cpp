#include "hosts/desk/split_files.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <system_error>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "base/text.h"
#include "hosts/cad/cad_host.h"
#include "hosts/cad/product_file.h"

namespace quintara {
namespace {

namespace fs = std::filesystem;

constexpr auto kProduct = ".ZVAPRODUCT";

std::string ExtensionOf(const fs::path& path) {
  return Capitals(FromPath(path.extension()));
}

bool IsFile(const fs::path& path) {
  std::error_code error;
  return fs::is_regular_file(path, error);
}

[[noreturn]] void Refuse(const fs::path& path, const std::string& why) {
  throw Failure(failure::kInvalidCall, "'" + FromPath(path) + "' " + why);
}

// Walks the product documents with a stack of its own, since they come from outside.
class TreeReader {
 public:
  explicit TreeReader(FileContents& files) : files_(files) {}

  AssemblyPlan Read(const fs::path& root) {
    Open(root);
    while (!open_.empty()) {
      auto& top = open_.back();
      if (top.next == top.components.size()) {
        Close();
      } else if (const auto known = known_.find(top.components[top.next]); known != known_.end()) {
        top.Add(known->second);
        ++top.next;
      } else {
        Open(fs::path(top.components[top.next]));
      }
    }
    return std::move(plan_);
  }

 private:
  struct OpenFile {
    fs::path path;
    AssemblyPlan::Definition definition;
    std::vector<fs::path> components = {};
    std::size_t next = 0;
    std::map<std::size_t, std::size_t> places = {};  ///< of its children's definitions among its children

    void Add(std::size_t child) {
      const auto [place, isNew] = places.try_emplace(child, definition.children.size());
      if (isNew) definition.children.push_back({child, 0});
      ++definition.children[place->second].quantity;
    }
  };

  void Open(const fs::path& path) {
    const auto isThis = [&](const OpenFile& file) { return file.path == path; };
    if (std::ranges::any_of(open_, isThis)) Refuse(path, "holds itself");
    if (!IsFile(path)) Refuse(path, "isn't there");
    open_.push_back(ExtensionOf(path) == kProduct ? Product(path) : Part(path));
  }

  void Close() {
    auto& done = open_.back();
    if (!partNumbers_.insert(Capitals(done.definition.partNumber)).second) {
      Refuse(done.path, "has the part number '" + done.definition.partNumber + "', as another file of the tree has");
    }
    known_[done.path] = plan_.definitions.size();
    plan_.definitions.push_back(std::move(done.definition));
    open_.pop_back();
  }

  OpenFile Product(const fs::path& path) {
    const auto product = cad::ParseProductFile(files_.Read(FromPath(path)), FromPath(path));
    OpenFile file{path, DefinitionOf(path, product.partNumber, true)};
    for (const auto& component : product.components) {
      file.components.push_back((path.parent_path() / ToPath(component.file)).lexically_normal());
    }
    return file;
  }

  OpenFile Part(const fs::path& path) {
    const auto extension = ExtensionOf(path);
    if (extension == ".LWT") Refuse(path, "is a light file, which is no component of a vault's product");
    if (extension != ".STP" && extension != ".STEP") Refuse(path, "is neither a product document nor a part file");
    // The name of what joins a part to an assembly; a part alone has no such line.
    if (files_.Read(FromPath(path)).find("NEXT_ASSEMBLY_USAGE_OCCURRENCE") != std::string::npos) {
      Refuse(path, "is a STEP assembly, which has to be split by 'quintara import' first");
    }
    return {path, DefinitionOf(path, PartNumberOfFile(FromPath(path), files_), false)};
  }

  static AssemblyPlan::Definition DefinitionOf(const fs::path& path, const std::string& partNumber, bool isAssembly) {
    AssemblyPlan::Definition definition;
    definition.partNumber = partNumber;
    definition.isAssembly = isAssembly;
    definition.file = FromPath(path);
    auto beside = path;
    beside += ".lwt";
    for (const auto& light : {path.parent_path() / ToPath(partNumber + ".lwt"), beside}) {
      if (definition.lightFile.empty() && IsFile(light)) definition.lightFile = FromPath(light);
    }
    return definition;
  }

  FileContents& files_;
  AssemblyPlan plan_;
  std::vector<OpenFile> open_;
  std::map<fs::path, std::size_t> known_;
  std::set<std::string> partNumbers_;
};

std::vector<fs::path> ProductsIn(const fs::path& folder) {
  std::vector<fs::path> products;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    if (ExtensionOf(entry->path()) == kProduct) products.push_back(entry->path());
  }
  if (error) Refuse(folder, "can't be read: " + error.message());
  std::ranges::sort(products);
  return products;
}

// The one product document that no other holds.
fs::path RootIn(const fs::path& folder, FileContents& files) {
  const auto products = ProductsIn(folder);
  std::set<fs::path> held;
  for (const auto& product : products) {
    const auto path = FromPath(product);
    for (const auto& component : cad::ParseProductFile(files.Read(path), path).components) {
      held.insert((folder / ToPath(component.file)).lexically_normal());
    }
  }
  std::vector<fs::path> roots;
  for (const auto& product : products) {
    if (!held.contains(product)) roots.push_back(product);
  }
  if (roots.empty()) Refuse(folder, "has no product document that is held by no other");
  if (roots.size() > 1) {
    Refuse(folder, "has several product documents that are held by no other, such as '" +
                       FromPath(roots[0].filename()) + "' and '" + FromPath(roots[1].filename()) + "'; name one");
  }
  return roots.front();
}

}  // namespace

std::string FileOfDefinition(const AssemblyStructure::Definition& definition) {
  return definition.partNumber + (definition.isAssembly ? ".ZVAProduct" : ".stp");
}

std::string LightFileOfDefinition(const AssemblyStructure::Definition& definition) {
  return definition.partNumber + ".lwt";
}

AssemblyPlan PlanOfStructure(const AssemblyStructure& structure, const std::string& folder) {
  AssemblyPlan plan;
  // Where the last assembly that holds a definition has it among its children.
  std::vector<std::size_t> placeOf(structure.definitions.size());
  for (const auto& definition : structure.definitions) {
    AssemblyPlan::Definition planned;
    planned.partNumber = definition.partNumber;
    planned.isAssembly = definition.isAssembly;
    planned.file = FromPath(ToPath(folder) / ToPath(FileOfDefinition(definition)));
    planned.lightFile = FromPath(ToPath(folder) / ToPath(LightFileOfDefinition(definition)));
    for (const auto& instance : definition.children) {
      auto& place = placeOf[instance.definition];
      if (place < planned.children.size() && planned.children[place].definition == instance.definition) {
        ++planned.children[place].quantity;
      } else {
        place = planned.children.size();
        planned.children.push_back({instance.definition, 1});
      }
    }
    plan.definitions.push_back(std::move(planned));
  }
  return plan;
}

AssemblyPlan PlanOfFiles(const std::string& path, FileContents& files) {
  std::error_code error;
  const auto absolute = fs::absolute(ToPath(path), error).lexically_normal();
  if (error) throw Failure(failure::kPathNotFound, "'" + path + "' can't be found: " + error.message());
  return TreeReader(files).Read(fs::is_directory(absolute, error) ? RootIn(absolute, files) : absolute);
}

}  // namespace quintara

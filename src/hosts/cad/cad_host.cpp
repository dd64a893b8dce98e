#include "hosts/cad/cad_host.h"

#include <utility>
#include <vector>

#include "base/text.h"
#include "hosts/cad/document.h"
#include "hosts/cad/file_kind.h"
#include "hosts/cad/occurrence.h"
#include "hosts/cad/product_file.h"
#include "hosts/cad/saver.h"
#include "hosts/cad/session.h"

namespace quintara {
namespace {

using cad::Definition;

const AssemblyStructure::Definition& DefinitionAt(const AssemblyStructure& structure, std::size_t index) {
  if (index < structure.definitions.size()) return structure.definitions[index];
  throw Failure(failure::kSubscriptOutOfRange, "The structure has no definition " + std::to_string(index));
}

void RequireBefore(const AssemblyStructure::Instance& child, std::size_t holder) {
  if (child.definition < holder) return;
  throw Failure(failure::kInvalidCall, "\"" + child.name + "\" stands for a definition behind the one that holds it");
}

std::unique_ptr<cad::Instance> InstanceOf(const AssemblyStructure::Instance& child,
                                          std::shared_ptr<Definition> definition) {
  auto instance = std::make_unique<cad::Instance>();
  instance->name = child.name;
  instance->definition = std::move(definition);
  instance->position = child.position;
  return instance;
}

}  // namespace

CadHost::CadHost(Surroundings surroundings) : session_(cad::Session::Start(std::move(surroundings))) {}

CadHost::~CadHost() = default;

Ref<zorva::Application> CadHost::Application() {
  return session_->TheApplication();
}

void CadHost::RegisterItem(const std::string& name, const Ref<AnyObject>& object) {
  session_->items[name] = object;
}

Ref<zorva::ProductDocument> CadHost::Build(const AssemblyStructure& structure) {
  if (!DefinitionAt(structure, structure.root).isAssembly) {
    throw Failure(failure::kInvalidCall, "\"" + structure.definitions[structure.root].partNumber + "\" is no assembly");
  }
  std::vector<std::shared_ptr<Definition>> definitions;
  for (const auto& given : structure.definitions) {
    const auto kind = given.isAssembly ? Definition::Kind::kAssembly : Definition::Kind::kPart;
    auto definition = std::make_shared<Definition>(kind, given.partNumber);
    for (const auto& child : given.children) {
      RequireBefore(child, definitions.size());
      definition->Append(InstanceOf(child, definitions[child.definition]));
    }
    definitions.push_back(std::move(definition));
  }
  const auto document = session_->OpenNew(definitions[structure.root])->AsContract();
  return Ref<zorva::ProductDocument>(std::dynamic_pointer_cast<zorva::ProductDocument>(document.Shared()));
}

Ref<zorva::Document> CadHost::Open(const std::string& path, const FormChoice& form) {
  return session_->Open(path, form)->AsContract();
}

void CadHost::SetForm(const Ref<zorva::Product>& component, ComponentForm form) {
  session_->SetForm(*cad::OccurrenceOf(component, *session_), form);
}

void CadHost::Save(const Ref<zorva::Document>& document, const std::string& path) {
  cad::SaveProduct(*session_, cad::DocumentObject::Of(document, *session_)->TheDefinition(), path);
}

void CadHost::AddDuringSleep(int n) {
  session_->AddDuringSleep(n);
}

void CadHost::NoteSleep() {
  session_->NoteSleep();
}

int CadHost::Redraws() const {
  return session_->redraws;
}

namespace {

// Each is written into one folder and looked for there, so it must not lead out of it.
std::string FileOf(const AssemblyStructure::Definition& definition) {
  auto file = definition.partNumber + (definition.isAssembly ? cad::kProductExtension : ".stp");
  const bool isPlain = !definition.partNumber.empty() && IsUtf8(file) && file.find_first_of("/\\:") == file.npos &&
                       file.find('\0') == file.npos;
  if (isPlain) return file;
  throw Failure(failure::kInvalidCall, "The part number \"" + definition.partNumber + "\" can't be the name of a file");
}

}  // namespace

void WriteProductFiles(const AssemblyStructure& structure, const std::string& folder, FileContents& files) {
  DefinitionAt(structure, structure.root);
  std::vector<std::string> names;
  for (const auto& definition : structure.definitions) names.push_back(FileOf(definition));
  std::vector<std::pair<std::string, std::string>> texts;
  for (std::size_t i = 0; i < structure.definitions.size(); ++i) {
    const auto& definition = structure.definitions[i];
    if (!definition.isAssembly) continue;
    cad::ProductFile product;
    product.partNumber = definition.partNumber;
    for (const auto& child : definition.children) {
      RequireBefore(child, i);
      product.components.push_back({child.name, names[child.definition], child.position, {}});
    }
    texts.emplace_back(FromPath(ToPath(folder) / ToPath(names[i])), cad::ProductFileText(product));
  }
  for (const auto& [path, text] : texts) files.WriteWhole(path, text);
}

}  // namespace quintara

#include "hosts/cad/file_loader.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "base/text.h"
#include "hosts/cad/session.h"

namespace quintara::cad {
namespace {

std::string PathFrom(const std::string& holder, const std::string& file) {
  return NormalPath(FromPath(ToPath(holder).parent_path() / ToPath(file)));
}

}  // namespace

std::vector<std::shared_ptr<Definition>> FileLoader::Load(const std::vector<std::string>& paths) {
  std::vector<std::size_t> wanted;
  for (const auto& path : paths) {
    KindOf(path);
    wanted.push_back(Place(NormalPath(path)));
  }
  const auto asked = files_.size();
  for (std::size_t i = 0; i < files_.size(); ++i) {
    Read(files_[i], i >= asked);
    PlaceComponents(i);
  }
  RefuseCycles();
  MakeDefinitions();
  std::vector<std::shared_ptr<Definition>> loaded;
  for (const auto index : wanted) loaded.push_back(files_[index].definition);
  return loaded;
}

std::size_t FileLoader::Place(const std::string& path) {
  const auto [place, isNew] = places_.try_emplace(KeyOf(path), files_.size());
  if (isNew) files_.emplace_back().path = path;
  return place->second;
}

void FileLoader::Read(File& file, bool mayBeMissing) {
  file.kind = KindOf(file.path);
  std::string bytes;
  try {
    bytes = session_.Files().Read(file.path);
  } catch (const Failure& failure) {
    file.isMissing = failure.Number() == failure::kFileNotFound || failure.Number() == failure::kPathNotFound;
    if (!mayBeMissing || !file.isMissing) throw;
    file.definition = std::make_shared<Definition>(Definition::Kind::kMissing, std::string());
    file.definition->path = file.path;
    return;
  }
  file.content = DigestOf(bytes);
  file.definition = session_.Find(file.path, file.content);
  if (file.definition) return;
  if (file.kind == FileKind::kProduct) {
    file.product = ParseProductFile(bytes, file.path);
  } else {
    file.product.partNumber =
        file.kind == FileKind::kStep ? StepPartNumber(bytes, file.path) : LightPartNumber(bytes, file.path);
  }
}

void FileLoader::PlaceComponents(std::size_t index) {
  if (files_[index].definition) return;
  fresh_.push_back(index);
  auto& file = files_[index];
  for (const auto& component : file.product.components) {
    file.components.push_back(Place(PathFrom(file.path, component.file)));
  }
}

// Known references can't hold new ones, so only the new ones can go round.
void FileLoader::RefuseCycles() const {
  enum class State { kUnseen, kOnTheWay, kDone };
  std::vector<State> states(files_.size(), State::kUnseen);
  std::vector<std::pair<std::size_t, std::size_t>> way;
  for (const auto start : fresh_) {
    if (states[start] == State::kUnseen) way.emplace_back(start, 0);
    while (!way.empty()) {
      auto& [index, next] = way.back();
      const auto& components = files_[index].components;
      states[index] = next == components.size() ? State::kDone : State::kOnTheWay;
      if (next == components.size()) {
        way.pop_back();
        continue;
      }
      const auto child = components[next++];
      if (states[child] == State::kOnTheWay) ThrowUnreadable(files_[child].path, "it holds itself");
      if (states[child] == State::kUnseen) way.emplace_back(child, 0);
    }
  }
}

void FileLoader::Ask() {
  for (const auto index : fresh_) {
    auto& file = files_[index];
    for (std::size_t i = 0; i < file.components.size(); ++i) {
      const auto& component = files_[file.components[i]];
      const auto label = "Component " + std::to_string(i + 1);
      if (file.isUnnamed[i]) file.warnings.push_back(label + " has no name and gets one");
      if (component.isMissing) file.warnings.push_back(label + " isn't loaded: \"" + component.path + "\" is missing");
    }
    if (!file.warnings.empty()) session_.AskAbout(file.path, file.warnings);
  }
}

void FileLoader::MakeDefinitions() {
  for (const auto index : fresh_) {
    auto& file = files_[index];
    const auto kind = file.kind == FileKind::kProduct ? Definition::Kind::kAssembly : Definition::Kind::kPart;
    file.definition = std::make_shared<Definition>(kind, std::move(file.product.partNumber));
    file.definition->path = file.path;
    file.definition->content = file.content;
    file.definition->rootName = std::move(file.product.name);
    file.definition->rootPosition = file.product.position;
    file.definition->properties = std::move(file.product.properties);
  }
  for (const auto index : fresh_) Link(files_[index]);
}

void FileLoader::Enter() {
  for (const auto index : fresh_) {
    const auto& file = files_[index];
    session_.Enter(file.definition);
    const auto isMissing = [&](std::size_t component) { return files_[component].isMissing; };
    if (std::ranges::any_of(file.components, isMissing)) session_.NoteIncomplete(file.definition);
  }
}

void FileLoader::Link(File& file) {
  auto& definition = *file.definition;
  std::vector<Instance*> unnamed;
  for (std::size_t i = 0; i < file.components.size(); ++i) {
    auto& component = file.product.components[i];
    file.isUnnamed.push_back(component.name.empty());
    auto instance = std::make_unique<Instance>();
    instance->name = std::move(component.name);
    instance->definition = files_[file.components[i]].definition;
    instance->position = component.position;
    instance->properties = std::move(component.properties);
    auto& child = definition.Append(std::move(instance));
    if (child.name.empty()) unnamed.push_back(&child);
  }
  for (auto* const child : unnamed) definition.Rename(*child, definition.FreeName(child->definition->BaseName()));
}

void FileLoader::MergeProperties() {
  for (const auto index : fresh_) {
    const auto& file = files_[index];
    for (const auto& reference : file.product.references) {
      const auto place = places_.at(KeyOf(PathFrom(file.path, reference.file)));
      files_[place].definition->properties.AddMissing(reference.properties);
    }
  }
}

}  // namespace quintara::cad

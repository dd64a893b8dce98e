#include "geometry/assembly_reader.h"

#include <Bnd_Box.hxx>
#include <NCollection_DataMap.hxx>
#include <TDF_LabelMapHasher.hxx>
#include <TDF_LabelSequence.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <cmath>
#include <cstring>

#include "base/packed_texts.h"
#include "geometry/model.h"
#include "geometry/name_mender.h"
#include "geometry/raw_tree.h"
#include "geometry/step_file.h"

namespace quintara {
namespace {

// The box around the whole, from those of the parts, each measured once.
double SizeOf(const RawTree& tree) {
  std::vector<Bnd_Box> boxes;
  for (std::size_t i = 0; i < tree.labels.size(); ++i) {
    const auto& definition = tree.structure.definitions[i];
    Bnd_Box box;
    if (!definition.isAssembly) box = BoxOf(XCAFDoc_ShapeTool::GetShape(tree.labels[i]));
    for (const auto& child : definition.children) {
      const auto& childBox = boxes[child.definition];
      if (!childBox.IsVoid()) box.Add(childBox.Transformed(ToMovement(child.position)));
    }
    boxes.push_back(box);
  }
  const auto& whole = boxes[tree.structure.root];
  return whole.IsVoid() ? 0 : std::sqrt(whole.SquareExtent());
}

void Rebuild(const RawTree& tree, const Document& document) {
  ModelBuilder builder(document);
  std::vector<TDF_Label> made;
  for (std::size_t i = 0; i < tree.labels.size(); ++i) {
    const auto& definition = tree.structure.definitions[i];
    if (!definition.isAssembly) {
      made.push_back(builder.AddPart(PartShapeAt(tree.labels[i]), definition.partNumber));
      continue;
    }
    made.push_back(builder.AddAssembly(definition.partNumber));
    for (std::size_t n = 0; n < definition.children.size(); ++n) {
      const auto& child = definition.children[n];
      const auto instance =
          builder.AddInstance(made[i], made[child.definition], ToMovement(child.position), child.name);
      if (!tree.components[i].empty()) builder.CopyColours(tree.components[i][n], instance);
    }
  }
  builder.Finish();
}

}  // namespace

ReadingNotes ReadAssemblyInto(const Document& document, const std::string& path, const Progress& progress) {
  const Document raw;
  const auto reading = [&](double fraction, const std::string& what) {
    if (progress) progress(0.9 * fraction, what);
  };
  ReadStep(path, raw, reading);
  return Translated(path, "could not be read", [&] {
    auto tree = RawTreeOf(raw, path);
    MendNames(tree.structure);
    const double size = SizeOf(tree);
    if (progress) progress(0.9, "Building the tree");
    Rebuild(tree, document);
    return ReadingNotes{std::move(tree.structure.changes), size};
  });
}

// The bytes of the size, which need not be finite, and then four texts for each change.
std::string ToBytes(const ReadingNotes& notes) {
  std::vector texts = {std::string(reinterpret_cast<const char*>(&notes.size), sizeof notes.size)};
  for (const auto& change : notes.changes) {
    texts.insert(texts.end(), {change.kind, change.from, change.to, change.reason});
  }
  return PackTexts(texts);
}

ReadingNotes ToNotes(const std::string& bytes) {
  const auto texts = UnpackTexts(bytes);
  ReadingNotes notes{};
  std::memcpy(&notes.size, texts.at(0).data(), sizeof notes.size);
  for (std::size_t i = 1; i < texts.size(); i += 4) {
    notes.changes.push_back({texts.at(i), texts.at(i + 1), texts.at(i + 2), texts.at(i + 3)});
  }
  return notes;
}

AssemblyStructure StructureOf(const Document& document) {
  AssemblyStructure structure;
  NCollection_DataMap<TDF_Label, std::size_t, TDF_LabelMapHasher> indices;
  for (const auto& label : document.Shapes()) {
    AssemblyStructure::Definition definition = {
        NameOf(label), XCAFDoc_ShapeTool::IsAssembly(label) == Standard_True, {}};
    TDF_LabelSequence components;
    XCAFDoc_ShapeTool::GetComponents(label, components);
    for (const auto& component : components) {
      TDF_Label referred;
      XCAFDoc_ShapeTool::GetReferredShape(component, referred);
      const auto position = ToPosition(XCAFDoc_ShapeTool::GetLocation(component).Transformation());
      definition.children.push_back({NameOf(component), indices.Find(referred), position});
    }
    indices.Bind(label, structure.definitions.size());
    structure.definitions.push_back(std::move(definition));
  }
  structure.root = structure.definitions.size() - 1;
  return structure;
}

}  // namespace quintara

#include "geometry/split_assembly.h"

#include <TDF_LabelSequence.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS_Shape.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <filesystem>
#include <set>

#include "base/text.h"
#include "geometry/assembly_reader.h"
#include "geometry/light_file.h"
#include "geometry/saving.h"
#include "geometry/step_file.h"
#include "geometry/worker.h"

namespace quintara {
namespace {

constexpr unsigned kWritingSeconds = 600;

class OccSplitAssembly : public SplitAssembly {
 public:
  OccSplitAssembly(const std::string& storedIn, const std::string& name, ReadingNotes notes)
      : document_(storedIn, name), labels_(document_.Shapes()), structure_(StructureOf(document_)) {
    structure_.changes = std::move(notes.changes);
    structure_.size = notes.size;
  }

  const AssemblyStructure& Structure() const override { return structure_; }
  std::vector<PlacedOccurrence> Occurrences() const override;
  void WritePart(std::size_t definition, const std::string& path) const override;
  void WriteLight(std::size_t definition, const std::string& path) const override;

 private:
  const TDF_Label& LabelOf(std::size_t definition) const;
  void MeshBelow(std::size_t definition, std::set<std::size_t>& done) const;

  Document document_;
  std::vector<TDF_Label> labels_;
  AssemblyStructure structure_;
};

// Positions are composed by the kernel, as the only ones in the system that are.
void Collect(const TDF_Label& assembly, const std::string& path, const TopLoc_Location& location,
             std::vector<PlacedOccurrence>& found) {
  TDF_LabelSequence components;
  XCAFDoc_ShapeTool::GetComponents(assembly, components);
  for (const auto& component : components) {
    TDF_Label definition;
    XCAFDoc_ShapeTool::GetReferredShape(component, definition);
    const auto place = location * XCAFDoc_ShapeTool::GetLocation(component);
    const auto ownPath = path + "\\" + NameOf(component);
    const bool isAssembly = XCAFDoc_ShapeTool::IsAssembly(definition);
    found.push_back({ownPath, NameOf(definition), isAssembly, ToPosition(place.Transformation())});
    Collect(definition, ownPath, place, found);
  }
}

// Writing goes on in a worker too: what a damaged file holds may still crash a writer, and each
// file is written from the same state of the kernel.
void WriteInWorker(const std::string& path, const std::function<void(const std::string& newPath)>& write) {
  SaveBeside(path, [&](const std::string& newPath) {
    const auto body = [&](const Progress&) {
      write(newPath);
      return std::string();
    };
    RunInWorker({path, "could not be written", "writer", kWritingSeconds}, body, {});
  });
}

std::vector<PlacedOccurrence> OccSplitAssembly::Occurrences() const {
  std::vector<PlacedOccurrence> found;
  const auto& root = labels_[structure_.root];
  Collect(root, NameOf(root), TopLoc_Location(), found);
  return found;
}

const TDF_Label& OccSplitAssembly::LabelOf(std::size_t definition) const {
  if (definition >= labels_.size()) throw Failure(failure::kSubscriptOutOfRange);
  return labels_[definition];
}

void OccSplitAssembly::WritePart(std::size_t definition, const std::string& path) const {
  const auto& label = LabelOf(definition);
  const auto& partNumber = structure_.definitions[definition].partNumber;
  if (structure_.definitions[definition].isAssembly) {
    throw Failure(failure::kInvalidCall, partNumber + ": is an assembly, not a part");
  }
  WriteInWorker(
      path, [&](const std::string& newPath) { WriteStepFile(label, partNumber, EdgeCurves::kOnFaces, newPath, {}); });
}

void OccSplitAssembly::WriteLight(std::size_t definition, const std::string& path) const {
  const auto& label = LabelOf(definition);
  WriteInWorker(path, [&](const std::string& newPath) {
    std::set<std::size_t> done;
    MeshBelow(definition, done);
    WriteLightFile(document_, label, structure_.definitions[definition].partNumber, newPath, {});
  });
}

void OccSplitAssembly::MeshBelow(std::size_t definition, std::set<std::size_t>& done) const {
  if (!done.insert(definition).second) return;
  if (!structure_.definitions[definition].isAssembly) Mesh(XCAFDoc_ShapeTool::GetShape(labels_[definition]));
  for (const auto& child : structure_.definitions[definition].children) MeshBelow(child.definition, done);
}

// Damaged data may keep a reader busy for ever; good data takes about half a second a megabyte.
unsigned ReadingSeconds(const std::string& path) {
  std::error_code error;
  const auto bytes = std::filesystem::file_size(ToPath(path), error);
  return 300 + (error ? 0 : static_cast<unsigned>(bytes / 50'000));
}

}  // namespace

std::unique_ptr<SplitAssembly> SplitStepAssembly(const std::string& path, const Progress& progress) {
  const NamelessFile store;
  const auto read = [&](const Progress& tell) {
    const Document document;
    const auto notes = ReadAssemblyInto(document, path, tell);
    document.Save(store.Path());
    return ToBytes(notes);
  };
  const WorkerTask task = {path, "could not be read", "reader", ReadingSeconds(path)};
  auto notes = ToNotes(RunInWorker(task, read, progress));
  return std::make_unique<OccSplitAssembly>(store.Path(), path, std::move(notes));
}

}  // namespace quintara

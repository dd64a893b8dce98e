#include "commands/replacement_bench.h"

#include <filesystem>

#include "access/utils/Cls_Utils.h"
#include "base/text.h"
#include "hosts/vault/database.h"
#include "support/tiny_files.h"

namespace quintara::test {

using veldora::VdObject;
using zorva::Product;

ReplacementBench::ReplacementBench() {
  RunVault();
  RunZorva();
  EXPECT_TRUE(Init());
  GivenWip();
}

void ReplacementBench::GivenWip(const std::vector<Node>& unsaved) {
  root = host.Build(StructureOf({"WIP~~TEST", "WIP~~TEST", kIdentityPosition, unsaved}))->Product();
  Utils().WriteStringProperty(root, "WIP", "TRUE");
}

void ReplacementBench::GivenNoDocument() {
  host.Application()->ActiveDocument()->AsDocument()->Close();
}

Ref<VdObject> ReplacementBench::Add(const std::string& partNumber, const std::string& className, bool hasLight) {
  const auto file = "source/" + partNumber + ".stp";
  folder.Write(file, TinyStep(partNumber));
  if (hasLight) folder.Write(file + ".lwt", TinyLight(partNumber));
  const auto object = vault->AddObject(className, {{"NM_CN_PART_NUMBER", partNumber}}, folder.Path(file));
  CheckIn(object);
  return object;
}

Ref<VdObject> ReplacementBench::NewRevision(const Ref<VdObject>& object, const std::string& revision) {
  const auto next = vault->NewRevision(object);
  const auto partNumber = TextOf(next, "NM_CN_PART_NUMBER");
  std::filesystem::create_directories(ToPath(folder.Path("next")));
  const auto file = "next/" + partNumber + ".stp";
  folder.Write(file, TinyStep(partNumber, "next"));
  folder.Write(file + ".lwt", TinyLight(partNumber, "next"));
  vault->StoreFile(next, folder.Path(file));
  if (!revision.empty()) SetRevision(next, revision);
  return next;
}

// The vault gives its revisions names that differ by more than capitals, each higher than the one before.
void ReplacementBench::SetRevision(const Ref<VdObject>& object, const std::string& revision) {
  vault::Database database(ReadVaultFolder(Plan().folder, *files).connection);
  database.Execute(R"(UPDATE "ZORVA_PART" SET "REVISION" = ? WHERE "OBJECT_ID" = ?)", {revision, object->ObjectId()});
}

Ref<Product> ReplacementBench::AddFile(const std::string& path) {
  root->Products()->AddComponentsFromFiles({path}, "All");
  return Child(root->Products()->Count());
}

Ref<Product> ReplacementBench::AddLight(const Ref<VdObject>& object) {
  const auto component = AddFile(Utils().CopyVeldoraObjectLWTToWork(object, Process().gFileSystem));
  Stamp(component->Reference(), object);
  return component;
}

void ReplacementBench::Stamp(const Ref<Product>& component, const Ref<VdObject>& object) {
  Utils().WriteStringProperty(component, "TYPE", "LWT");
  Utils().WriteStringProperty(component, "OBJECT_ID", std::to_string(object->ObjectId()));
  Utils().WriteStringProperty(component, "CLASS_ID", std::to_string(object->ClassId()));
}

Ref<Product> ReplacementBench::AddDocumentOf(const Ref<VdObject>& object) {
  return AddFile(Utils().CopyVeldoraObjectToWork(object));
}

void ReplacementBench::RunWith(const UserScript& user) {
  desk.WhenShown("formSelectLWT", [&](ScriptedView& dialog) {
    if (user) user(dialog);
    if (dialog.IsShown()) dialog.Press("cmdOK");
  });
  RunAlone();
}

std::vector<Box> ReplacementBench::NewBoxes() {
  const auto& all = platform.Boxes();
  std::vector<Box> boxes(all.begin() + boxesSeen_, all.end());
  boxesSeen_ = static_cast<std::ptrdiff_t>(all.size());
  return boxes;
}

const TreeModel& ReplacementBench::NodesOf(const ScriptedView& dialog) {
  return dynamic_cast<const TreeModel&>(*dialog.Of("Tree1").tree);
}

std::vector<std::string> ReplacementBench::LinesOf(const ScriptedView& dialog) {
  const auto& nodes = NodesOf(dialog);
  std::vector<std::string> lines;
  for (int node = 1; node <= nodes.Count(); ++node) {
    std::string line;
    for (int at = nodes.Parent(node); at != 0; at = nodes.Parent(at)) line += "  ";
    line += nodes.Key(node) + ", " + nodes.Text(node) + ": " + nodes.Tag(node);
    if (nodes.Picture(node) != nodes.Tag(node)) line += " with the picture " + nodes.Picture(node);
    lines.push_back(line);
  }
  return lines;
}

std::vector<std::string> ReplacementBench::Names() {
  std::vector<std::string> names;
  for (int i = 1; i <= root->Products()->Count(); ++i) names.push_back(Child(i)->Name());
  return names;
}

std::string ReplacementBench::Property(const Ref<Product>& component, const std::string& name) {
  return Utils().ReadStringProperty(component, name);
}

std::string ReplacementBench::StampsOf(const Ref<Product>& component) {
  return Property(component, "TYPE") + " " + Property(component, "CLASS_ID") + ":" + Property(component, "OBJECT_ID");
}

std::string ReplacementBench::IdOf(const Ref<VdObject>& object) {
  return "LWT " + std::to_string(object->ClassId()) + ":" + std::to_string(object->ObjectId());
}

std::string ReplacementBench::FileOf(const Ref<Product>& component) {
  const auto document = component->Reference()->Parent()->AsDocument();
  return FromPath(ToPath(document->FullName()).filename());
}

std::vector<std::string> ReplacementBench::Candidates() {
  std::vector<std::string> candidates;
  for (const auto& candidate : Process().ReplaceCandidates) {
    candidates.push_back(candidate.Key + (candidate.Replace ? "!" : ""));
  }
  EXPECT_EQ(int{Process().ReplaceCandidateCount}, std::ssize(candidates));
  return candidates;
}

Box LoadingFailed(const std::string& description) {
  return Told("Error in frmViewChanges::LoadTreeBefore : " + description);
}

}  // namespace quintara::test

#include "commands/switching_bench.h"

#include <algorithm>

#include "access/utils/Cls_Utils.h"
#include "base/text.h"
#include "hosts/vault/database.h"
#include "support/tiny_files.h"

namespace quintara::test {

SwitchingBench::SwitchingBench() {
  RunVault();
  RunZorva();
  EXPECT_TRUE(Init());
  GivenWip();
}

Ref<VdObject> SwitchingBench::Add(const std::string& partNumber, bool hasLight) {
  const auto object = AddPart(partNumber, TinyStep(partNumber), hasLight ? TinyLight(partNumber) : std::string());
  CheckIn(object);
  return object;
}

void SwitchingBench::SetState(const Ref<VdObject>& object, int state) const {
  vault::Database(vault->Folder().connection)
      .Execute("UPDATE \"ZORVA_PART\" SET \"STATE\" = ? WHERE \"OBJECT_ID\" = ?",
               {std::int64_t{state}, std::int64_t{object->ObjectId()}});
}

void SwitchingBench::GivenWip(bool isMarked) {
  document = host.Application()->Documents()->Add("ZVAProduct")->AsProductDocument();
  root = document->Product();
  root->SetPartNumber("WIP~~TEST");
  if (isMarked) Utils().WriteStringProperty(root, "WIP", "TRUE");
}

SwitchingBench::Product SwitchingBench::AddFile(const std::string& path) {
  root->Products()->AddComponentsFromFiles({path}, "All");
  const auto component = Child(Count());
  PositionMatrix place = kIdentityPosition;
  place[9] = 100.0 * Count();
  component->Position()->SetComponents(place);
  return component;
}

SwitchingBench::Product SwitchingBench::AddDocumentOf(const Ref<VdObject>& object) {
  return AddFile(Utils().CopyVeldoraObjectToWork(object));
}

SwitchingBench::Product SwitchingBench::AddLight(const Ref<VdObject>& object) {
  const auto component = AddFile(Utils().CopyVeldoraObjectLWTToWork(object, Process().gFileSystem));
  Stamp(component->Reference(), "LWT", object);
  return component;
}

SwitchingBench::Product SwitchingBench::AddAssemblyWith(const std::string& path) {
  const auto active = document;
  const auto assembly = host.Application()->Documents()->Add("ZVAProduct");
  assembly->AsProductDocument()->Product()->SetPartNumber("ASSEMBLY");
  assembly->AsProductDocument()->Product()->Products()->AddComponentsFromFiles({path}, "All");
  host.Save(assembly, WorkPath("ASSEMBLY.ZVAProduct"));
  assembly->Close();
  return AddFile(WorkPath("ASSEMBLY.ZVAProduct"));
}

void SwitchingBench::Stamp(const Product& product, const std::string& type, const Ref<VdObject>& object) {
  Utils().WriteStringProperty(product, "TYPE", type);
  Utils().WriteStringProperty(product, "OBJECT_ID", std::to_string(object->ObjectId()));
  Utils().WriteStringProperty(product, "CLASS_ID", std::to_string(object->ClassId()));
}

void SwitchingBench::Select(const std::vector<int>& children) {
  Selection()->Clear();
  for (const int child : children) Selection()->Add(Child(child));
}

void SwitchingBench::SelectAll() {
  Selection()->Clear();
  for (int i = 1; i <= Count(); ++i) Selection()->Add(Child(i));
}

template <class Command>
std::vector<Box> SwitchingBench::BoxesOf() {
  const auto before = static_cast<std::ptrdiff_t>(platform.Boxes().size());
  Command().Run();
  return {platform.Boxes().begin() + before, platform.Boxes().end()};
}

template <class Command>
std::vector<std::string> SwitchingBench::CallsOf() {
  gate->StartRecording();
  Command().Run();
  gate->StopRecording();
  const auto& record = gate->Record();
  return {std::ranges::find(record, "Application.ActiveDocument"), record.end()};
}

std::vector<Box> SwitchingBench::BoxesOfSwitchToLwt() {
  return BoxesOf<Cls_SwitchToLWT>();
}

std::vector<Box> SwitchingBench::BoxesOfSwitchToProduct() {
  return BoxesOf<Cls_SwitchToProduct>();
}

std::vector<std::string> SwitchingBench::CallsOfSwitchToLwt() {
  return CallsOf<Cls_SwitchToLWT>();
}

std::vector<std::string> SwitchingBench::CallsOfSwitchToProduct() {
  return CallsOf<Cls_SwitchToProduct>();
}

std::vector<std::string> SwitchingBench::OfZorva(std::vector<std::string> calls) {
  std::erase_if(calls, [](const auto& call) {
    return call.starts_with("Vd") || call.starts_with("File") || call.starts_with("Platform.") ||
           call.starts_with("HIX") || call.starts_with("IntegrationVault.") || call.find(".As") != call.npos;
  });
  return calls;
}

std::vector<std::string> SwitchingBench::Components() {
  std::vector<std::string> lines;
  for (int i = 1; i <= Count(); ++i) {
    const auto component = Child(i);
    auto line = component->Name() + " " + FromPath(ToPath(FileOf(component)).filename());
    if (const auto type = Property(component, "TYPE"); !type.empty()) line += " " + type;
    const auto identity = Property(component, "CLASS_ID") + ":" + Property(component, "OBJECT_ID");
    lines.push_back(identity == ":" ? line : line + " " + identity);
  }
  return lines;
}

std::string SwitchingBench::FileOf(const Product& component) {
  return component->Reference()->Parent()->AsDocument()->FullName();
}

std::string SwitchingBench::Property(const Product& product, const std::string& name) {
  return Utils().ReadStringProperty(product, name);
}

std::string SwitchingBench::IdOf(const Ref<VdObject>& object) {
  return std::to_string(object->ClassId()) + ":" + std::to_string(object->ObjectId());
}

std::string SwitchingBench::AsDocument(const std::string& partNumber) {
  return partNumber + ".1 " + partNumber + ".stp";
}

std::string SwitchingBench::AsLight(const Ref<VdObject>& object) {
  const auto partNumber = object->Record()->ValueAsString("NM_CN_PART_NUMBER");
  return partNumber + ".1 " + partNumber + ".lwt LWT " + IdOf(object);
}

}  // namespace quintara::test

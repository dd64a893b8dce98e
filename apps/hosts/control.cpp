#include "hosts/control.h"

#include <filesystem>
#include <utility>

#include "base/failure.h"
#include "base/text.h"
#include "hosts/desk/import_classes.h"
#include "hosts/desk/product_comparison.h"
#include "hosts/desk/split_files.h"

namespace quintara::hosts {
namespace {

std::string OutcomeText(ImportedObject::Outcome outcome) {
  switch (outcome) {
    case ImportedObject::Outcome::kAdded: return "added";
    case ImportedObject::Outcome::kRevised: return "revised";
    case ImportedObject::Outcome::kUnchanged: return "unchanged";
  }
  return {};
}

ComponentForm FormOf(std::int32_t number) {
  switch (number) {
    case 0: return ComponentForm::kDesign;
    case 1: return ComponentForm::kWithoutDesign;
    case 2: return ComponentForm::kUnloaded;
    default: throw Failure(failure::kInvalidCall, "there is no form " + std::to_string(number));
  }
}

void RequireAnswer(std::int32_t answer) {
  if (answer < Questions::kAskUser) {
    throw Failure(failure::kInvalidCall, std::to_string(answer) + " is no answer");
  }
}

Ref<veldora::VdSession> SessionOf(EmbeddedVault& vault) {
  return vault.Application()->Engine()->Sessions(0);
}

}  // namespace

Ref<veldora::VdApplication> Control::Vault() {
  return around_.desk.RequireVault().Application();
}

Ref<zorva::Application> Control::Cad() {
  return around_.desk.RequireCad().Application();
}

void Control::StartCad() {
  const Gate::Rest unseen(around_.desk.TheGate());
  around_.desk.RequireCad();
  around_.desk.StartCad();
  around_.publish();
}

void Control::OpenVault(const std::string& folder, const std::string& workFolder, const std::string& login,
                        const std::string& password) {
  const Gate::Rest unseen(around_.desk.TheGate());
  around_.desk.RequireVault();
  auto choice = around_.desk.Choice();
  choice.folder = folder;
  choice.workFolder = workFolder;
  choice.login = login;
  choice.password = password;
  choice.mayMake = true;
  around_.desk.OpenVault(choice);
  around_.publish();
}

std::string Control::VaultFolder() {
  return around_.desk.RequireVault().Folder().folder;
}

std::string Control::WorkDirectory() {
  around_.desk.RequireVault();
  return around_.desk.Choice().workFolder;
}

std::int32_t Control::ProcessId() {
  return static_cast<std::int32_t>(GetCurrentProcessId());
}

std::int32_t Control::Calls() {
  return around_.calls.Count();
}

void Control::Quit() {
  around_.quit();
}

std::string Control::Import(const std::string& path) {
  const Gate::Rest unseen(around_.desk.TheGate());
  auto& vault = around_.desk.RequireVault();
  const auto plan = PlanOfFiles(path, around_.desk.Files());
  AssemblyImportOptions options;
  options.productClass = FirstClassOfSiteSetting(vault, "QD", "CLASS_PRODUCTS");
  options.partClass = FirstClassOfSiteSetting(vault, "QD", "CLASS_PARTS");
  options.sameChildren = HoldTheSameChildren;
  const auto objects = vault.ImportAssembly(plan, options);
  std::string lines;
  for (std::size_t i = 0; i < objects.size(); ++i) {
    lines +=
        OutcomeText(objects[i].outcome) + "\t" + plan.definitions[i].partNumber + "\t" + objects[i].revision + "\n";
  }
  return lines;
}

Ref<veldora::VdObject> Control::FindObject(const std::string& name) {
  const Gate::Rest unseen(around_.desk.TheGate());
  auto& vault = around_.desk.RequireVault();
  auto found = vault.FindNewest(name);
  if (const auto at = name.rfind('@'); found.empty() && at != std::string::npos)
    found = vault.FindRevision(name.substr(0, at), name.substr(at + 1));
  if (found.size() != 1) {
    throw Failure(failure::kInvalidCall, (found.empty() ? "no object" : "several objects") +
                                             std::string(" of the vault are called '") + name + "'");
  }
  return SessionOf(vault)->ObjectStore()->ObjectById(found[0].identity.classId, found[0].identity.objectId);
}

Ref<veldora::VdRecList> Control::SelectedRecords(const std::string& names) {
  const Gate::Rest unseen(around_.desk.TheGate());
  const auto objects = SessionOf(around_.desk.RequireVault())->ObjectStore()->NewObjects();
  if (!names.empty()) {
    for (const auto& name : Split(names, '|')) objects->Add(FindObject(name));
  }
  return objects->Records();
}

void Control::AnswerDialogs(std::int32_t index) {
  RequireAnswer(index);
  around_.questions.AnswerDialogs(index);
}

void Control::SetForm(const Ref<zorva::Product>& component, std::int32_t form) {
  const Gate::Rest unseen(around_.desk.TheGate());
  around_.desk.RequireCad().SetForm(component, FormOf(form));
}

std::string Control::Save(const std::string& path) {
  const Gate::Rest unseen(around_.desk.TheGate());
  auto& cad = around_.desk.RequireCad();
  const auto document = cad.Application()->ActiveDocument();
  auto target = path.empty() ? document->AsDocument()->FullName() : path;
  if (target.empty()) target = PathForNew(document->AsProductDocument());
  cad.Save(document->AsDocument(), target);
  return document->AsDocument()->FullName();
}

std::string Control::PathForNew(const Ref<zorva::ProductDocument>& document) const {
  around_.desk.RequireVault();
  const auto name = document->Product()->PartNumber() + ".ZVAProduct";
  return FromPath(ToPath(around_.desk.Choice().workFolder) / ToPath(name));
}

void Control::AddDuringSleep(std::int32_t n) {
  around_.desk.RequireCad().AddDuringSleep(n);
}

void Control::NoteSleep() {
  const Gate::Rest unseen(around_.desk.TheGate());
  around_.desk.RequireCad().NoteSleep();
}

std::int32_t Control::Redraws() {
  return around_.desk.RequireCad().Redraws();
}

void Control::AnswerBoxes(std::int32_t answer) {
  RequireAnswer(answer);
  around_.questions.AnswerBoxes(answer);
}

std::string Control::ReadShown() {
  return around_.questions.ReadShown();
}

void Control::ArmGate(std::int32_t n) {
  around_.desk.TheGate().FailCall(n);
}

void Control::ArmOperation(const std::string& name, std::int32_t n) {
  around_.desk.TheGate().FailOperation(name, n);
}

void Control::DisarmGate() {
  around_.desk.TheGate().Reset();
}

void Control::ClearRecord() {
  around_.desk.TheGate().StartRecording();
}

std::string Control::ReadRecord() {
  std::string lines;
  for (const auto& operation : around_.desk.TheGate().Record()) lines += operation + "\n";
  return lines;
}

void Control::EndInMidCall(const std::string& member, std::int32_t n) {
  around_.calls.EndInCall(member, n);
}

}  // namespace quintara::hosts

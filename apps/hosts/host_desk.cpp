#include "hosts/host_desk.h"

#include <utility>

#include "base/failure.h"
#include "hosts/desk/engine_link.h"
#include "hosts/desk/places.h"
#include "hosts/workbook/workbook_host.h"
#include "nls/embedded_texts.h"

namespace quintara::hosts {

// The engine saves through whatever CAD host runs.
class HostDesk::Saver final : public IntegrationCad {
 public:
  explicit Saver(HostDesk& desk) : desk_(desk) {}
  void Save(const Ref<zorva::Document>& document, const std::string& path) override {
    desk_.RequireCad().Save(document, path);
  }

 private:
  HostDesk& desk_;
};

HostDesk::HostDesk(std::shared_ptr<Gate> gate, Answers answers)
    : answers_(std::move(answers)),
      gate_(std::move(gate)),
      files_(std::make_shared<NativeContents>(gate_)),
      saver_(std::make_unique<Saver>(*this)) {}

HostDesk::~HostDesk() {
  if (cad_) DisconnectEngine(*cad_);
}

void HostDesk::OpenVault(const VaultChoice& choice) {
  auto chosen = choice;
  if (!IsVault(chosen.folder)) {
    if (!chosen.mayMake) throw Failure(failure::kPathNotFound, "'" + chosen.folder + "' is no vault");
    VaultPlan plan;
    plan.folder = chosen.folder;
    plan.login = chosen.login;
    plan.password = chosen.password;
    for (const auto& [path, bytes] : EmbeddedTexts()) plan.texts[std::string(path)] = bytes;
    InitVault(plan, *files_);
  }
  if (chosen.workFolder.empty()) chosen.workFolder = WorkFolderOf(chosen.folder, chosen.login);
  auto opened = std::make_unique<EmbeddedVault>(chosen.folder, OptionsFor(chosen));
  MakeWorkFolder(chosen.workFolder);
  if (cad_) DisconnectEngine(*cad_);
  vault_ = std::move(opened);
  choice_ = std::move(chosen);
  Connect();
}

EmbeddedVault::Options HostDesk::OptionsFor(const VaultChoice& choice) const {
  EmbeddedVault::Options options;
  options.gate = gate_;
  options.files = files_;
  options.login = choice.login;
  options.password = choice.password;
  options.workDirectory = choice.workFolder;
  options.language = choice.language;
  options.zorvaStartedFirst = choice.zorvaStartedFirst;
  options.answerDialog = answers_.answerDialog;
  return options;
}

void HostDesk::StartCad() {
  if (cad_) DisconnectEngine(*cad_);
  cad_ = std::make_unique<CadHost>(CadHost::Surroundings{gate_, files_, answers_.ask});
  Connect();
}

void HostDesk::Connect() {
  if (!cad_) return;
  if (vault_) {
    ConnectEngine(gate_, *vault_, *cad_, *saver_);
  } else {
    DisconnectEngine(*cad_);
  }
}

EmbeddedVault& HostDesk::RequireVault() const {
  if (!vault_) throw Failure(failure::kInvalidCall, "this process has no vault");
  return *vault_;
}

CadHost& HostDesk::RequireCad() const {
  if (!cad_) throw Failure(failure::kInvalidCall, "this process serves no CAD host");
  return *cad_;
}

Ref<excel::Application> HostDesk::NewSpreadsheet() {
  return StartWorkbooksInMemory(gate_, files_);
}

}  // namespace quintara::hosts

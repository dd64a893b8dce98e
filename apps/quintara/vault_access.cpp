#include "quintara/vault_access.h"

#include <utility>

#include "base/failure.h"
#include "hosts/desk/engine_link.h"
#include "hosts/native/native_files.h"
#include "quintara/light_renewal.h"
#include "quintara/wrong_use.h"

namespace quintara {

class VaultAccess::Saver final : public IntegrationCad {
 public:
  explicit Saver(const Surroundings& around)
      : host_(*around.host), geometry_(*around.geometry), progress_(around.progress) {}
  void Save(const Ref<zorva::Document>& document, const std::string& path) override { host_.Save(document, path); }
  void RenewLight(const std::string& path) override { RenewLightOf(path, host_, geometry_, progress_); }

 private:
  CadHost& host_;
  Geometry& geometry_;
  Progress progress_;
};

VaultAccess::VaultAccess(Surroundings surroundings, UserChoice choice)
    : around_(std::move(surroundings)), choice_(std::move(choice)), saver_(std::make_unique<Saver>(around_)) {}

VaultAccess::~VaultAccess() {
  if (vault_) DisconnectEngine(*around_.host);
}

bool VaultAccess::IsThere() const {
  if (choice_.vault.empty()) return false;
  if (!IsVault(choice_.vault)) {
    throw WrongUse("'" + choice_.vault + "' is no vault; 'quintara vault init' makes one");
  }
  return true;
}

std::string VaultAccess::WorkFolder() const {
  try {
    return WorkFolderOf(choice_.vault, choice_.user);
  } catch (const Failure& failure) {
    throw WrongUse(failure.Description());
  }
}

EmbeddedVault& VaultAccess::Open(const std::string& workFolder) {
  if (vault_) return *vault_;
  if (!IsThere()) {
    throw WrongUse(
        "there is no vault here; go to a folder that has one in it or above it, name one with --vault, or "
        "make one with 'quintara vault init'");
  }
  LogOn(OptionsFor(workFolder));
  MakeWorkFolder(workFolder);
  Register();
  return *vault_;
}

EmbeddedVault::Options VaultAccess::OptionsFor(const std::string& workFolder) const {
  EmbeddedVault::Options options;
  options.gate = around_.gate;
  options.files = std::make_shared<NativeContents>(around_.gate);
  options.login = choice_.user;
  options.password = around_.environment ? around_.environment("QUINTARA_PASSWORD") : std::string();
  options.workDirectory = workFolder;
  options.language = choice_.language;
  options.zorvaStartedFirst = choice_.zorvaStartedFirst;
  options.answerDialog = around_.answerDialog;
  return options;
}

// Many a vault of one's own has no password, so nobody is asked for one before it is missed.
void VaultAccess::LogOn(EmbeddedVault::Options options) {
  for (;;) {
    try {
      vault_ = std::make_unique<EmbeddedVault>(choice_.vault, options);
      return;
    } catch (const LogOnRefused& refused) {
      const auto typed =
          options.password.empty() ? around_.askPassword("Password of '" + choice_.user + "': ") : std::nullopt;
      if (!typed || typed->empty()) {
        throw WrongUse(refused.Description() + "; --user names the user, QUINTARA_PASSWORD holds the password");
      }
      options.password = *typed;
    }
  }
}

void VaultAccess::Register() {
  auto& platform = *around_.platform;
  platform.Register("Veldora.VdApplication", vault_->Application());
  platform.RegisterMaker("Veldora.VdClientContext", [this] { return vault_->NewClientContext(); });
  platform.RegisterMaker("Veldora.VdTranslator", [this] { return vault_->NewTranslator(); });
  ConnectEngine(around_.gate, *vault_, *around_.host, *saver_);
}

}  // namespace quintara

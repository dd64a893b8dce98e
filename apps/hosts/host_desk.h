#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "access/contracts/integration.h"
#include "access/contracts/spreadsheet.h"
#include "hosts/cad/cad_host.h"
#include "hosts/gate/gate.h"
#include "hosts/native/native_files.h"
#include "hosts/vault/embedded_vault.h"

namespace quintara::hosts {

/// Who works in which vault.
struct VaultChoice {
  std::string folder;
  std::string login = "admin";
  std::string password;
  std::string workFolder;  ///< empty for the user's own in the vault's folder
  std::string language = "EN";
  bool zorvaStartedFirst = false;
  bool mayMake = false;  ///< a folder that is no vault becomes one, whose first user this is
};

/// The embedded hosts of the process, put together. All that they do passes one gate.
class HostDesk {
 public:
  struct Answers {
    std::function<bool(const std::string& warning)> ask;
    VaultDialogAnswer answerDialog;
  };

  HostDesk(std::shared_ptr<Gate> gate, Answers answers);
  ~HostDesk();
  HostDesk(const HostDesk&) = delete;
  HostDesk& operator=(const HostDesk&) = delete;

  /// Opens a vault in place of the one that is open; that goes on serving those who hold its objects. Fails, and
  /// leaves things as they are, where that isn't possible.
  void OpenVault(const VaultChoice& choice);
  /// Starts a CAD host in place of the one that runs.
  void StartCad();

  /// Null where there is none.
  EmbeddedVault* Vault() const { return vault_.get(); }
  CadHost* Cad() const { return cad_.get(); }
  /// Fail where there is none.
  EmbeddedVault& RequireVault() const;
  CadHost& RequireCad() const;
  const VaultChoice& Choice() const { return choice_; }

  /// Another application with workbooks in memory.
  Ref<excel::Application> NewSpreadsheet();

  Gate& TheGate() { return *gate_; }
  FileContents& Files() { return *files_; }

 private:
  class Saver;

  void Connect();
  EmbeddedVault::Options OptionsFor(const VaultChoice& choice) const;

  Answers answers_;
  std::shared_ptr<Gate> gate_;
  std::shared_ptr<NativeContents> files_;
  std::unique_ptr<Saver> saver_;
  VaultChoice choice_;
  std::unique_ptr<CadHost> cad_;
  std::unique_ptr<EmbeddedVault> vault_;
};

}  // namespace quintara::hosts

#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "access/contracts/geometry.h"
#include "access/contracts/integration.h"
#include "hosts/cad/cad_host.h"
#include "hosts/desk/places.h"
#include "hosts/native/native_platform.h"
#include "hosts/vault/embedded_vault.h"
#include "quintara/user_choice.h"

namespace quintara {

/// The vault of one run of the program: found at once, opened at its first use, and from then on one of the
/// programs that run.
class VaultAccess {
 public:
  struct Surroundings {
    std::shared_ptr<Gate> gate;
    Environment environment;
    /// These must outlive the access.
    NativePlatform* platform = nullptr;
    CadHost* host = nullptr;
    Geometry* geometry = nullptr;
    Progress progress;  ///< told how far the making of light files is
    /// Asks for a password; nothing where nobody can be asked.
    std::function<std::optional<std::string>(const std::string& question)> askPassword;
    VaultDialogAnswer answerDialog;
  };

  VaultAccess(Surroundings surroundings, UserChoice choice);
  ~VaultAccess();
  VaultAccess(const VaultAccess&) = delete;
  VaultAccess& operator=(const VaultAccess&) = delete;

  /// Whether there is one. Wrong use when the vault that was named is none.
  bool IsThere() const;
  /// The folder that was named or found; empty for none.
  const std::string& Folder() const { return choice_.vault; }
  const std::string& User() const { return choice_.user; }

  /// The work directory that the user has in the vault's folder, whether it is there yet or not. Wrong use for a
  /// user whose name is none of a folder.
  std::string WorkFolder() const;

  /// The vault, opened with `workFolder` as the user's, which is made when it isn't there. Wrong use when there is
  /// none, and for a user or password that the vault doesn't know.
  EmbeddedVault& Open(const std::string& workFolder);

 private:
  /// What the integration engine asks of the CAD host.
  class Saver;

  EmbeddedVault::Options OptionsFor(const std::string& workFolder) const;
  void LogOn(EmbeddedVault::Options options);
  void Register();

  Surroundings around_;
  UserChoice choice_;
  std::unique_ptr<Saver> saver_;
  std::unique_ptr<EmbeddedVault> vault_;
};

}  // namespace quintara

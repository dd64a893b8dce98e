#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "access/session/process.h"
#include "access/session/texts.h"
#include "base/failure.h"
#include "hosts/cad/cad_host.h"
#include "hosts/integration/embedded_engine.h"
#include "hosts/vault/vault_fixture.h"
#include "services/Cls_Init.h"
#include "support/test_platform.h"

namespace quintara::test {

inline constexpr int kCritical = 16;
inline constexpr int kInformation = 64;
inline constexpr int kCriticalModal = 4112;
inline constexpr int kInformationModal = 4160;

void PrintTo(const Box& box, std::ostream* out);

/// A critical box of the system.
inline Box Told(const std::string& text) {
  return {text, kCritical, "Quintara"};
}

/// The text that `RunningHosts` writes for a key: language, key, and in brackets the token of each
/// parameter.
std::string CatalogueTextOf(const std::string& language, const TextKey& key);

/// What the English text of a key says with these parameters, and the box of it.
std::string Says(const std::string& key, const std::vector<std::string>& parameters = {});
Box TextBox(const std::string& key, int style, const std::vector<std::string>& parameters = {});
/// The standard report.
Box Report(const std::string& label, int style, const std::string& description);

/// A vault, a CAD host and the integration engine between them, and the NLS files of a language. All
/// share one gate. What a command would attach to is told to the platform by the `Run...` operations.
class RunningHosts : public VaultBase {
 public:
  explicit RunningHosts(const SettingsColumns& columns = SettingsColumns::OfGeneration("TDMX_"));
  ~RunningHosts();

  void RunVault();
  /// With `client` in front of the vault.
  void RunVault(const Ref<veldora::VdApplication>& client);
  void RunZorva();
  /// Opens the vault anew, in this language, and runs it.
  void RunVaultIn(const std::string& language);

  /// The start that each command makes.
  static bool Init();
  /// What `Init` shows.
  std::vector<Box> BoxesOfInit();
  /// Drops the instance that start-up keeps.
  static void EndInit() { Process().gClsInit = nullptr; }

  /// Writes both NLS files of a language, a text for each key but the ones left out.
  void WriteTexts(const std::string& language, const std::vector<std::string>& leftOut = {}) const;
  std::string NLSPath(const std::string& language, const std::string& appendix) const;
  void RemoveNLSFile(const std::string& language, const std::string& appendix) const;

  TestPlatform platform;
  CadHost host;
  std::unique_ptr<IntegrationCad> cadSide;
  Ref<EmbeddedEngine> engine;
};

/// The names of the texts that aren't as the NLS files of a language have them.
std::vector<std::string> TextsUnlike(const std::string& language);

/// Those of `calls` that begin with `name`.
std::vector<std::string> CallsOf(const std::vector<std::string>& calls, const std::string& name);

}  // namespace quintara::test

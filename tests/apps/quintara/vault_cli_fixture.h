#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "access/contracts/veldora.h"
#include "apps/quintara/cli_fixture.h"
#include "base/text.h"
#include "hosts/native/native_files.h"
#include "hosts/vault/embedded_vault.h"

namespace quintara::test {

/// Runs the program on a vault of its own, made by the program itself.
class VaultCli : public Cli {
 protected:
  using Object = Ref<veldora::VdObject>;

  VaultCli() { MakeVault(Folder()); }

  void MakeVault(const std::string& folder) {
    const auto made = RunBare({"vault", "init", folder});
    if (made.exitCode != kDone) throw std::runtime_error("the vault could not be made: " + made.errors);
  }
  std::string Folder() const { return elsewhere.Path("quintara.vault"); }
  /// The work directory that the vault keeps for "admin", or the path of a file in it.
  std::string AdminPath(const std::string& fileName = {}) const {
    auto path = ToPath(Folder()) / "work" / "admin";
    return FromPath(fileName.empty() ? path : path / ToPath(fileName));
  }

  /// Runs a verb on that vault.
  Outcome Run(std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), {"--vault", Folder()});
    return RunBare(arguments);
  }

  /// The vault, for what no verb does; each test closes it before it runs a verb.
  std::unique_ptr<EmbeddedVault> Open() const {
    EmbeddedVault::Options options;
    options.gate = std::make_shared<Gate>();
    options.files = std::make_shared<NativeContents>(options.gate);
    options.workDirectory = work.Path();
    return std::make_unique<EmbeddedVault>(Folder(), options);
  }
  Object Add(EmbeddedVault& vault, const std::string& className, const std::string& partNumber) const {
    work.Write(partNumber + ".stp", "content of " + partNumber);
    return vault.AddObject(className, {{"NM_CN_PART_NUMBER", partNumber}}, work.Path(partNumber + ".stp"));
  }
  static void CheckIn(EmbeddedVault& vault, const Object& object) {
    const auto session = vault.Application()->Engine()->Sessions(0);
    session->GetService("VdUtil.VdSessionUtil")->AsVdSessionUtil()->CheckIn(object, nullptr, false);
  }
  /// "gear" holds "axle" once and "nut" eight times, "axle" holds "nut" twice; "nut" has the revisions A and B,
  /// of which all hold A.
  void AddGear() const {
    const auto vault = Open();
    const auto nut = Add(*vault, "ZORVA Part", "nut");
    const auto axle = Add(*vault, "ZORVA Product", "axle");
    const auto gear = Add(*vault, "ZORVA Product", "gear");
    vault->SetStructure(axle, {{nut, 2}});
    vault->SetStructure(gear, {{axle, 1}, {nut, 8}});
    CheckIn(*vault, nut);
    vault->NewRevision(nut);
  }
};

}  // namespace quintara::test

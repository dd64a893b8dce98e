#pragma once

#include <gtest/gtest.h>

#include <string>

#include "hosts/native/native_files.h"
#include "services/running_hosts.h"
#include "services/substitutes.h"

namespace quintara::test {

/// Hosts on which a start can be made to fail, and to succeed again.
class AilingHosts : public RunningHosts {
 public:
  AilingHosts() { Mend(); }

  void Mend() {
    gate->Reset();
    RunVaultWithWorkDirectory(folder.Path("work"));
    RunZorva();
    platform.Native().RegisterMaker("Scripting.FileSystemObject",
                                    [this] { return Ref<AnyObject>(MakeRef<NativeFileSystem>(gate)); });
  }
  void RunVaultWithWorkDirectory(const std::string& path) {
    auto options = Options();
    options.workDirectory = path;
    Open(options);
    RunVault();
  }
  void RunVaultWithSession(const Ref<veldora::VdSession>& session) {
    RunVault(MakeRef<ClientWithSession>(vault->Application(), session));
  }
  /// A whole start, after which the catalogue is loaded; the next command makes one again.
  void LoadCatalogue() {
    Mend();
    ASSERT_TRUE(Init());
    EndInit();
  }
};

}  // namespace quintara::test

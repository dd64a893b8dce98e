#pragma once

#include "apps/hosts/hosts_process.h"
#include "automation/dispatch/hosts_control.h"

namespace quintara::test {

/// The hosts in another process, one for all tests of this program. It is started at its first use, again where it
/// has ended, and ends with the tests.
class RemoteHosts {
 public:
  /// The process, which serves; fails where it can't be started.
  static HostsProcess& Process();
  /// What its hosts are prepared with.
  static Ref<automation::HostsControl> Control();
  /// Serves the vault of this folder, whose user is "admin" with the password "secret", from now on.
  static void OpenVault(const std::string& folder, const std::string& workFolder);
  /// Lets go of the vault that is served, so that its files can be removed.
  static void CloseVault();
  /// Starts a CAD host without documents in place of the one that is served.
  static void StartCad() { Control()->StartCad(); }
};

}  // namespace quintara::test

#include "automation/remote/remote_hosts.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

#include "support/test_platform.h"

namespace quintara::test {
namespace {

struct Shared {
  TemporaryFolder folder;  // with a vault that nobody uses
  std::unique_ptr<HostsProcess> process;
  Ref<automation::HostsControl> control;

  void Start() {
    control = nullptr;
    process.reset();
    SetEnvironmentVariableW(L"QUINTARA_PASSWORD", L"secret");
    process = std::make_unique<HostsProcess>(
        std::vector<std::string>{"--control", "--init", "--vault", folder.Path("resting.vault")});
    if (!process->IsRunning()) throw std::runtime_error("the hosts have ended: " + process->Errors());
    control = HostsProcess::Control();
  }
};

std::unique_ptr<Shared>& TheShared() {
  static std::unique_ptr<Shared> shared;
  return shared;
}

Shared& Running() {
  auto& shared = TheShared();
  if (!shared) shared = std::make_unique<Shared>();
  if (!shared->process || !shared->process->IsRunning()) shared->Start();
  return *shared;
}

class Ending : public testing::Environment {
 public:
  void TearDown() override { TheShared().reset(); }
};

const auto* const kEnding = testing::AddGlobalTestEnvironment(new Ending);

}  // namespace

HostsProcess& RemoteHosts::Process() {
  return *Running().process;
}

Ref<automation::HostsControl> RemoteHosts::Control() {
  return Running().control;
}

void RemoteHosts::OpenVault(const std::string& folder, const std::string& workFolder) {
  Control()->OpenVault(folder, workFolder, "admin", "secret");
}

void RemoteHosts::CloseVault() {
  auto& shared = Running();
  shared.control->OpenVault(shared.folder.Path("resting.vault"), {}, "admin", "secret");
}

}  // namespace quintara::test

#include "automation/dispatch/hosts_control.h"

#include "automation/dispatch/kinds_control.h"
#include "automation/dispatch/late_bound.h"

namespace quintara::automation {
namespace {

class HostsControlAdapter final : public LateBound<HostsControl> {
 public:
  using LateBound::LateBound;

  Ref<veldora::VdApplication> Vault() override { return Ask<&HostsControl::Vault>(); }
  Ref<zorva::Application> Cad() override { return Ask<&HostsControl::Cad>(); }
  void StartCad() override { Ask<&HostsControl::StartCad>(); }
  void OpenVault(const std::string& folder, const std::string& workFolder, const std::string& login,
                 const std::string& password) override {
    Ask<&HostsControl::OpenVault>(folder, workFolder, login, password);
  }
  std::string VaultFolder() override { return Ask<&HostsControl::VaultFolder>(); }
  std::string WorkDirectory() override { return Ask<&HostsControl::WorkDirectory>(); }
  std::int32_t ProcessId() override { return Ask<&HostsControl::ProcessId>(); }
  std::int32_t Calls() override { return Ask<&HostsControl::Calls>(); }
  void Quit() override { Ask<&HostsControl::Quit>(); }
  std::string Import(const std::string& path) override { return Ask<&HostsControl::Import>(path); }
  Ref<veldora::VdObject> FindObject(const std::string& name) override { return Ask<&HostsControl::FindObject>(name); }
  Ref<veldora::VdRecList> SelectedRecords(const std::string& names) override {
    return Ask<&HostsControl::SelectedRecords>(names);
  }
  void AnswerDialogs(std::int32_t index) override { Ask<&HostsControl::AnswerDialogs>(index); }
  void SetForm(const Ref<zorva::Product>& component, std::int32_t form) override {
    Ask<&HostsControl::SetForm>(component, form);
  }
  std::string Save(const std::string& path) override { return Ask<&HostsControl::Save>(path); }
  void AddDuringSleep(std::int32_t n) override { Ask<&HostsControl::AddDuringSleep>(n); }
  void NoteSleep() override { Ask<&HostsControl::NoteSleep>(); }
  std::int32_t Redraws() override { return Ask<&HostsControl::Redraws>(); }
  void AnswerBoxes(std::int32_t answer) override { Ask<&HostsControl::AnswerBoxes>(answer); }
  std::string ReadShown() override { return Ask<&HostsControl::ReadShown>(); }
  void ArmGate(std::int32_t n) override { Ask<&HostsControl::ArmGate>(n); }
  void ArmOperation(const std::string& name, std::int32_t n) override { Ask<&HostsControl::ArmOperation>(name, n); }
  void DisarmGate() override { Ask<&HostsControl::DisarmGate>(); }
  void ClearRecord() override { Ask<&HostsControl::ClearRecord>(); }
  std::string ReadRecord() override { return Ask<&HostsControl::ReadRecord>(); }
  void EndInMidCall(const std::string& member, std::int32_t n) override { Ask<&HostsControl::EndInMidCall>(member, n); }
};

}  // namespace

template <>
Ref<HostsControl> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<HostsControlAdapter>(std::move(object), connection);
}

}  // namespace quintara::automation

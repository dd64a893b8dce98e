#pragma once

#include <functional>
#include <string>

#include "automation/dispatch/hosts_control.h"
#include "hosts/call_counter.h"
#include "hosts/host_desk.h"
#include "hosts/questions.h"

namespace quintara::hosts {

/// The control of this process's hosts.
class Control final : public automation::HostsControl {
 public:
  /// What it works on; all of it must outlive the control.
  struct Surroundings {
    HostDesk& desk;
    CallCounter& calls;
    Questions& questions;
    std::function<void()> publish;  ///< offers what stands in the place of other hosts now
    std::function<void()> quit;
  };

  explicit Control(Surroundings around) : around_(std::move(around)) {}

  Ref<veldora::VdApplication> Vault() override;
  Ref<zorva::Application> Cad() override;
  void StartCad() override;
  void OpenVault(const std::string& folder, const std::string& workFolder, const std::string& login,
                 const std::string& password) override;
  std::string VaultFolder() override;
  std::string WorkDirectory() override;
  std::int32_t ProcessId() override;
  std::int32_t Calls() override;
  void Quit() override;
  std::string Import(const std::string& path) override;
  Ref<veldora::VdObject> FindObject(const std::string& name) override;
  Ref<veldora::VdRecList> SelectedRecords(const std::string& names) override;
  void AnswerDialogs(std::int32_t index) override;
  void SetForm(const Ref<zorva::Product>& component, std::int32_t form) override;
  std::string Save(const std::string& path) override;
  void AddDuringSleep(std::int32_t n) override;
  void NoteSleep() override;
  std::int32_t Redraws() override;
  void AnswerBoxes(std::int32_t answer) override;
  std::string ReadShown() override;
  void ArmGate(std::int32_t n) override;
  void ArmOperation(const std::string& name, std::int32_t n) override;
  void DisarmGate() override;
  void ClearRecord() override;
  std::string ReadRecord() override;
  void EndInMidCall(const std::string& member, std::int32_t n) override;

 private:
  std::string PathForNew(const Ref<zorva::ProductDocument>& document) const;

  Surroundings around_;
};

}  // namespace quintara::hosts

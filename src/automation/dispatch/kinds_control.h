#pragma once

#include "automation/dispatch/hosts_control.h"
#include "automation/dispatch/kinds.h"

namespace quintara::automation {

template <>
struct Kind<HostsControl> : UsualKind {
  static constexpr std::string_view kName = "HostsControl";
  using Base = AnyObject;
  using Operations =
      std::tuple<Call<"Vault", &HostsControl::Vault>, Call<"Cad", &HostsControl::Cad>,
                 Call<"StartCad", &HostsControl::StartCad>, Call<"OpenVault", &HostsControl::OpenVault>,
                 Call<"VaultFolder", &HostsControl::VaultFolder>, Call<"WorkDirectory", &HostsControl::WorkDirectory>,
                 Call<"ProcessId", &HostsControl::ProcessId>, Call<"Calls", &HostsControl::Calls>,
                 Call<"Quit", &HostsControl::Quit>, Call<"Import", &HostsControl::Import>,
                 Call<"FindObject", &HostsControl::FindObject>, Call<"SelectedRecords", &HostsControl::SelectedRecords>,
                 Call<"AnswerDialogs", &HostsControl::AnswerDialogs>, Call<"SetForm", &HostsControl::SetForm>,
                 Call<"Save", &HostsControl::Save>, Call<"AddDuringSleep", &HostsControl::AddDuringSleep>,
                 Call<"NoteSleep", &HostsControl::NoteSleep>, Call<"Redraws", &HostsControl::Redraws>,
                 Call<"AnswerBoxes", &HostsControl::AnswerBoxes>, Call<"ReadShown", &HostsControl::ReadShown>,
                 Call<"ArmGate", &HostsControl::ArmGate>, Call<"ArmOperation", &HostsControl::ArmOperation>,
                 Call<"DisarmGate", &HostsControl::DisarmGate>, Call<"ClearRecord", &HostsControl::ClearRecord>,
                 Call<"ReadRecord", &HostsControl::ReadRecord>, Call<"EndInMidCall", &HostsControl::EndInMidCall>>;
};

}  // namespace quintara::automation

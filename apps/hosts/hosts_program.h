#pragma once

#include <memory>
#include <string>
#include <vector>

#include "hosts/call_counter.h"
#include "hosts/com_service.h"
#include "hosts/control.h"
#include "hosts/host_desk.h"
#include "hosts/questions.h"
#include "hosts/registration.h"
#include "hosts/session_window.h"
#include "hosts/switches.h"

namespace quintara::hosts {

/// A process that serves: puts the hosts together, offers them, and lasts as long as it is asked to.
class HostsProgram {
 public:
  /// Fails where something that was asked for can't be served.
  explicit HostsProgram(const Switches& switches);
  ~HostsProgram();
  HostsProgram(const HostsProgram&) = delete;
  HostsProgram& operator=(const HostsProgram&) = delete;

  /// What became of the names that it serves.
  const Registered& Names() const { return registered_; }

  /// Serves until the end.
  void Run();

 private:
  bool Serves(Host host) const;
  void RefuseDoubles() const;
  void OpenVault();
  void Publish();
  void Offer(const ServedName& name);
  automation::ComPtr<IDispatch> NewObject(const ServedName& name);
  void RegisterNames();
  void TellReady() const;
  void Tick();
  bool IsUnused() const;
  SessionWindow::Lines Lines();

  Switches switches_;
  std::shared_ptr<Gate> gate_ = std::make_shared<Gate>();
  CallCounter calls_;
  Questions questions_;
  HostDesk desk_;
  ComService service_;
  Ref<Control> control_;
  Registration registration_;
  Registered registered_;
  std::unique_ptr<SessionWindow> window_;
  int ticksInVain_ = 0;
  bool isEnding_ = false;
};

/// The command by which automation starts the server of a name, with the switches that are kept.
std::string CommandFor(const ServedName& name, const std::vector<std::string>& kept);

}  // namespace quintara::hosts

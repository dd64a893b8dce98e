#pragma once

#include <memory>
#include <optional>
#include <string>

#include "access/contracts/veldora.h"
#include "base/attempt.h"
#include "base/ref.h"
#include "services/frmWaiting.h"

namespace quintara {

/// Brings a product of the vault, with all that it holds, up to the newest revisions in one unattended run. An object
/// lives for one call.
class Cls_GlobalRefreshVD {
 public:
  /// `FirstRec` holds the records of the objects that are selected in the vault; there must be one, checked in or
  /// released, and so must be all that it holds. The user's life-cycle settings are silenced meanwhile, and the session
  /// is reloaded before and after where the vault was started first. Whatever stands in the way is shown; nothing is
  /// thrown.
  ///
  /// A failure behind the start puts the settings back, three of them under keys of their own, so that
  /// `$User\LIFE_CYCLE\SwitchToLatestForceCheckOut`, `$User\LifeCycleSetUp\ReplacingObjectsReportOnCheckOut` and
  /// `$User\LifeCycleSetUp\UseLightLifeCycleScreen` keep what they were overwritten with, unless they had been put back
  /// before; the CAD host's questions (`DisplayFileAlerts`) stay off then, and what was checked out stays so.
  void Run(const Ref<veldora::VdRecList>& FirstRec);

 private:
  friend class GlobalRefreshInternals;  // the tests' way to the private operations

  /// A failure that is to be told, empty where it is that of a reload, which has told it; nothing where none is.
  using Untold = std::optional<ErrorState>;
  class Silenced;

  Untold RefreshSelected(const Ref<veldora::VdRecList>& selection);
  Untold RefreshOne(const Ref<veldora::VdObject>& selected, const std::string& path);
  void ShowWaiting();
  void CloseWaiting();
  void Leave();

  /// Logs the user off and on again with the engine disconnected meanwhile, where the vault was started before the CAD
  /// host; elsewhere there is nothing to do. `WithLog` tells each step in "ReloadSession.log" of the work directory.
  /// False, after a box where something failed, when that didn't work.
  static bool ReloadSession(const Ref<veldora::VdSession>& Session, const Ref<veldora::HIXEngine>& Engine,
                            bool WithLog);

  std::shared_ptr<frmWaiting> waiting_;
};

}  // namespace quintara

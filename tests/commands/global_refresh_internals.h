#pragma once

#include "commands/Cls_GlobalRefreshVD.h"

namespace quintara {

/// The tests' way to what the command keeps to itself.
class GlobalRefreshInternals {
 public:
  static bool ReloadSession(const Ref<veldora::VdSession>& session, const Ref<veldora::HIXEngine>& engine,
                            bool withLog) {
    return Cls_GlobalRefreshVD::ReloadSession(session, engine, withLog);
  }
};

}  // namespace quintara

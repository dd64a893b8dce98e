#pragma once

#include "access/contracts/veldora.h"
#include "base/ref.h"

namespace quintara {

/// The command that makes a work in progress of one product of the vault.
class Cls_Application {
 public:
  /// `FirstRec` holds the records of the objects that are selected in the vault; there must be one, checked in or
  /// released. The user reviews it in the panel; what the panel has made is positioned, and the display brought up to
  /// date. Messages and failures are shown. Where the panel was opened, `gClsUtils`, `gClsInit` and
  /// `gClsAdminSettings` are let go at the end, so that the next command starts afresh.
  void Run(const Ref<veldora::VdRecList>& FirstRec);

 private:
  enum class End { kNotStarted, kCutShort, kNormal };

  static End ReviewAndPosition(const Ref<veldora::VdRecList>& selection);
};

}  // namespace quintara

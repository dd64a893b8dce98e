#pragma once

#include <string>

#include "access/contracts/veldora.h"
#include "base/ref.h"

namespace quintara {

/// Adds one vault object to the work in progress that is active in the CAD host.
class Cls_InsertLWT {
 public:
  /// `Mode` is "LWT" for its light representation, whose component gets the stamps that lead back to the object, or
  /// "PRODUCT" for its document, whose component gets none; in any other spelling nothing is brought to the work
  /// directory, and the CAD host refuses the empty path. An object that is no part or product of the CAD host is left
  /// out without a word. A failure is shown; one that comes up while the host loads the file leaves its questions
  /// (`DisplayFileAlerts`) off, one after that leaves the component without its stamps.
  void Run(const Ref<veldora::VdObject>& VaultObject, const std::string& Mode);
};

}  // namespace quintara

#pragma once

#include <string>

#include "access/contracts/zorva.h"
#include "base/ref.h"

namespace quintara {

/// The common operations on the two host systems. Stateless.
class Cls_Utils {
 public:
  /// True when the part number of the product can be read: a component that isn't loaded in
  /// design form can't give it. Failures count as False.
  bool IsInDesignMode(const Ref<zorva::Product>& ZVAProduct);

  /// The part number. A component that isn't in design form is brought into it for the reading
  /// (work mode 0) and set back afterwards (1). A failure gives the empty text, and the component
  /// may then stay in mode 0.
  std::string GetThePartNumber(const Ref<zorva::Product>& ZVAProduct);
};

}  // namespace quintara

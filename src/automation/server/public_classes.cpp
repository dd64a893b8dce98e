#include "automation/server/public_classes.h"

namespace quintara::automation {

const std::vector<PublicClass>& PublicClasses() {
  static const auto& classes = *[] {
    auto* const all = new std::vector<PublicClass>;
    AddCommandClasses(*all);
    AddServiceClasses(*all);
    AddUtilsClass(*all);
    return all;
  }();
  return classes;
}

}  // namespace quintara::automation

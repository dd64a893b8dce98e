#include "access/utils/Cls_Utils.h"
#include "base/attempt.h"

namespace quintara {

bool Cls_Utils::IsInDesignMode(const Ref<zorva::Product>& ZVAProduct) {
  return OrElse(false, [&] {
    ZVAProduct->PartNumber();
    return true;
  });
}

std::string Cls_Utils::GetThePartNumber(const Ref<zorva::Product>& ZVAProduct) {
  return OrElse(std::string(), [&] {
    if (IsInDesignMode(ZVAProduct)) return ZVAProduct->PartNumber();
    ZVAProduct->SetWorkMode(0);
    auto partNumber = ZVAProduct->PartNumber();
    ZVAProduct->SetWorkMode(1);
    return partNumber;
  });
}

}  // namespace quintara

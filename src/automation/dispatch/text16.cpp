#include "automation/dispatch/text16.h"

#include "base/failure.h"

namespace quintara::automation {

std::string FromBstr(BSTR text) {
  return text ? Narrow(std::wstring_view(text, SysStringLen(text))) : std::string();
}

BSTR NewBstr(std::string_view utf8) {
  const auto wide = Wide(utf8);
  const auto text = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
  if (!text) throw Failure(failure::kOutOfMemory);
  return text;
}

}  // namespace quintara::automation

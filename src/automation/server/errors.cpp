#include "automation/server/errors.h"

#include "automation/dispatch/failures.h"
#include "automation/dispatch/text16.h"

namespace quintara::automation {

HRESULT LeaveError(const std::exception& error, std::string_view source, REFIID interfaceId) noexcept {
  try {
    ComPtr<ICreateErrorInfo> made;
    ComPtr<IErrorInfo> left;
    if (SUCCEEDED(CreateErrorInfo(&made)) && SUCCEEDED(made.As(&left))) {
      made->SetGUID(interfaceId);
      made->SetSource(Wide(source).data());
      made->SetDescription(Wide(error.what()).data());
      SetErrorInfo(0, left.Get());
    }
    return ResultOf(error);
  } catch (const std::exception&) {
    return E_OUTOFMEMORY;
  }
}

void TakeError(HRESULT result, EXCEPINFO* details) noexcept {
  if (!details) return;
  *details = {};
  details->scode = result;
  ComPtr<IErrorInfo> left;
  if (GetErrorInfo(0, &left) != S_OK) return;
  left->GetSource(&details->bstrSource);
  left->GetDescription(&details->bstrDescription);
}

}  // namespace quintara::automation

#include "automation/dispatch/failures.h"

#include <array>
#include <string>

#include "automation/dispatch/text16.h"

namespace quintara::automation {
namespace {

constexpr unsigned kRunTimeErrors = 0x800A0000U;

struct Counterpart {
  HRESULT result;
  int number;
};
constexpr std::array kCounterparts = {
    Counterpart{DISP_E_UNKNOWNNAME, failure::kNoSuchMember}, Counterpart{DISP_E_MEMBERNOTFOUND, failure::kNoSuchMember},
    Counterpart{DISP_E_TYPEMISMATCH, failure::kTypeMismatch}, Counterpart{DISP_E_OVERFLOW, failure::kOverflow},
    Counterpart{DISP_E_BADINDEX, failure::kSubscriptOutOfRange}, Counterpart{E_OUTOFMEMORY, failure::kOutOfMemory},
    Counterpart{E_INVALIDARG, failure::kInvalidCall},
    // A program that has ended, while it was asked and before.
    Counterpart{HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE), failure::kServerGone},
    Counterpart{HRESULT_FROM_WIN32(RPC_S_CALL_FAILED), failure::kServerGone},
    Counterpart{HRESULT_FROM_WIN32(RPC_S_CALL_FAILED_DNE), failure::kServerGone},
    Counterpart{RPC_E_DISCONNECTED, failure::kServerGone}, Counterpart{CO_E_OBJNOTCONNECTED, failure::kServerGone},
    Counterpart{RPC_E_SERVER_DIED, failure::kServerGone}, Counterpart{RPC_E_SERVER_DIED_DNE, failure::kServerGone}};

int NumberOf(HRESULT result) {
  for (const auto& [known, number] : kCounterparts) {
    if (known == result) return number;
  }
  const auto bits = static_cast<unsigned>(result);
  if ((bits & 0xFFFF0000U) == kRunTimeErrors) return static_cast<int>(bits & 0xFFFFU);
  return result;
}

std::string SystemText(HRESULT result) {
  wchar_t* text = nullptr;
  const auto size =
      FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                     nullptr, static_cast<DWORD>(result), 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
  auto narrow = Narrow(std::wstring_view(text, size));
  LocalFree(text);
  while (!narrow.empty() && static_cast<unsigned char>(narrow.back()) <= ' ') narrow.pop_back();
  return narrow;
}

std::string DescriptionOf(HRESULT result, int number) {
  if (number != result) return Failure(number).Description();
  if (auto text = SystemText(result); !text.empty()) return text;
  std::array<char, 16> digits{};
  std::snprintf(digits.data(), digits.size(), "0x%08X", static_cast<unsigned>(result));
  return std::string("Error ") + digits.data();
}

}  // namespace

Failure FailureOf(HRESULT result, EXCEPINFO& details, std::string_view member) {
  std::string told;
  if (result == DISP_E_EXCEPTION) {
    if (details.pfnDeferredFillIn) details.pfnDeferredFillIn(&details);
    told = FromBstr(details.bstrDescription);
    for (auto* const text : {details.bstrSource, details.bstrDescription, details.bstrHelpFile}) SysFreeString(text);
    if (details.scode != 0) {
      result = details.scode;
    } else {
      result = static_cast<HRESULT>(kRunTimeErrors | details.wCode);
    }
    details = {};
  }
  const int number = NumberOf(result);
  if (told.empty()) told = DescriptionOf(result, number);
  return Failure(number, std::string(member) + ": " + told);
}

HRESULT ResultOf(const Failure& failure) {
  const int number = failure.Number();
  if (number < 0) return number;
  return static_cast<HRESULT>(kRunTimeErrors | (static_cast<unsigned>(number) & 0xFFFFU));
}

HRESULT ResultOf(const std::exception& error) {
  const auto* const failure = dynamic_cast<const Failure*>(&error);
  return failure ? ResultOf(*failure) : E_FAIL;
}

}  // namespace quintara::automation

#include "automation/dispatch/text16.h"

#include <limits>

#include "base/failure.h"

namespace quintara::automation {
namespace {

int LengthOf(std::size_t size) {
  if (size > std::size_t(std::numeric_limits<int>::max())) throw Failure(failure::kOutOfMemory);
  return static_cast<int>(size);
}

}  // namespace

std::wstring Wide(std::string_view utf8) {
  const int given = LengthOf(utf8.size());
  if (given == 0) return {};
  std::wstring text(std::size_t(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), given, nullptr, 0)), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), given, text.data(), LengthOf(text.size()));
  return text;
}

std::string Narrow(std::wstring_view utf16) {
  const int given = LengthOf(utf16.size());
  if (given == 0) return {};
  const auto size = WideCharToMultiByte(CP_UTF8, 0, utf16.data(), given, nullptr, 0, nullptr, nullptr);
  std::string text(std::size_t(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, utf16.data(), given, text.data(), size, nullptr, nullptr);
  return text;
}

std::string Narrow(BSTR text) {
  return text ? Narrow(std::wstring_view(text, SysStringLen(text))) : std::string();
}

BSTR NewBstr(std::string_view utf8) {
  const auto wide = Wide(utf8);
  const auto text = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
  if (!text) throw Failure(failure::kOutOfMemory);
  return text;
}

}  // namespace quintara::automation

#include "base/text16_windows.h"

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <limits>

#include "base/failure.h"

namespace quintara {
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

}  // namespace quintara

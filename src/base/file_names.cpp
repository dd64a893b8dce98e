#include "base/file_names.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/failure.h"
#include "base/text.h"

namespace quintara {
namespace {

constexpr std::size_t kLongestName = 255;

bool IsRefused(char character) {
  constexpr std::string_view kRefused = "<>:\"/\\|?*";
  return static_cast<unsigned char>(character) < 0x20 || character == 0x7F || kRefused.find(character) != kRefused.npos;
}

// Devices are met in every folder, whatever extension they are given.
bool IsDevice(const std::string& name) {
  constexpr std::array<std::string_view, 6> kDevices = {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"};
  auto stem = Capitals(name.substr(0, name.find('.')));
  while (!stem.empty() && stem.back() == ' ') stem.pop_back();
  if (std::ranges::find(kDevices, stem) != kDevices.end()) return true;
  if (!stem.starts_with("COM") && !stem.starts_with("LPT")) return false;
  const std::string_view number = std::string_view(stem).substr(3);
  return (number.size() == 1 && number[0] >= '0' && number[0] <= '9') || number == "\u00B9" || number == "\u00B2" ||
         number == "\u00B3";
}

bool IsPlain(const std::string& name) {
  if (name.empty() || name.size() > kLongestName || !IsUtf8(name)) return false;
  if (std::ranges::any_of(name, IsRefused)) return false;
  return name.back() != '.' && name.back() != ' ' && !IsDevice(name);
}

}  // namespace

void RequireFileName(const std::string& name) {
  if (!IsPlain(name)) throw Failure(failure::kInvalidCall, "\"" + name + "\" can't be the name of a file");
}

std::string PathIn(const std::string& directory, const std::string& name) {
  RequireFileName(name);
  return FromPath(ToPath(directory) / ToPath(name));
}

}  // namespace quintara

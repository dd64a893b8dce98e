#include "geometry/step_text.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <string_view>

#include "base/failure.h"
#include "base/text.h"
#include "geometry/step_scanner.h"

namespace quintara {
namespace {

constexpr std::string_view kBegin = "ISO-10303-21;";
// Some writers put a byte order mark, blank lines or a comment in front.
constexpr std::size_t kLongestLead = 4096;

std::string Content(const std::string& path) {
  const auto file = ToPath(path);
  std::error_code ignored;
  if (std::filesystem::is_directory(file, ignored)) throw Failure(failure::kPathAccess, path + ": is a folder");
  errno = 0;
  std::ifstream stream(file, std::ios::binary);
  if (!stream) {
    const int error = errno;
    const auto number = error == ENOENT || error == ENOTDIR ? failure::kFileNotFound : failure::kPermissionDenied;
    throw Failure(number, path + ": could not be opened (" + std::strerror(error) + ")");
  }
  std::string text(static_cast<std::size_t>(std::filesystem::file_size(file, ignored)), '\0');
  stream.read(text.data(), static_cast<std::streamsize>(text.size()));
  text.resize(static_cast<std::size_t>(stream.gcount()));
  return text;
}

}  // namespace

StepEncoding CheckStepFile(const std::string& path) {
  const auto text = Content(path);
  if (text.empty()) throw Failure(failure::kInvalidFormat, path + ": is empty");
  const auto begin = std::string_view(text).substr(0, kLongestLead).find(kBegin);
  if (begin == std::string_view::npos) throw Failure(failure::kInvalidFormat, path + ": is not a STEP file");
  const auto fault = StepScanner(std::string_view(text).substr(begin)).Fault();
  if (!fault.empty()) throw Failure(failure::kInvalidFormat, path + ": " + fault);
  return IsUtf8(text) ? StepEncoding::kUtf8 : StepEncoding::kCodePage1252;
}

}  // namespace quintara

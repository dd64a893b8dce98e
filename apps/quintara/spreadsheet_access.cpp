#include "quintara/spreadsheet_access.h"

#include <dlfcn.h>

#include <filesystem>
#include <system_error>

#include "base/failure.h"
#include "base/text.h"
#include "hosts/native/native_files.h"
#include "hosts/office/spreadsheet_module.h"

namespace quintara {
namespace {

namespace fs = std::filesystem;

constexpr auto kFileName = "quintara_spreadsheet.so";

[[noreturn]] void ThrowUnavailable(const std::string& reason) {
  throw Failure(failure::kCannotCreateObject, "The spreadsheet application can't be started: " + reason);
}

std::string LastLoadingError() {
  const char* const error = dlerror();
  return error == nullptr ? "unknown error" : error;
}

// It stays loaded: LibreOffice's libraries don't bear being unloaded.
SpreadsheetEntry& LoadEntry(const std::string& path) {
  std::error_code ignored;
  if (!fs::exists(ToPath(path), ignored)) {
    ThrowUnavailable("this program was installed without it ('" + path + "' is missing)");
  }
  void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    ThrowUnavailable(LastLoadingError() + "; is LibreOffice Calc installed (package 'libreoffice-calc-nogui')?");
  }
  void* const entry = dlsym(library, kSpreadsheetEntry);
  if (entry == nullptr) ThrowUnavailable("'" + path + "' is another library");
  return *reinterpret_cast<SpreadsheetEntry*>(entry);
}

Ref<AnyObject> Start(const std::string& path, const std::shared_ptr<Gate>& gate) {
  Ref<excel::Application> application;
  LoadEntry(path)({gate, std::make_shared<NativeContents>(gate)}, application);
  return application;
}

}  // namespace

std::string SpreadsheetLibrary() {
  std::error_code ignored;
  const auto folder = fs::read_symlink("/proc/self/exe", ignored).parent_path();
  const auto packaged = folder.parent_path() / "lib" / "quintara" / kFileName;
  return FromPath(fs::exists(packaged, ignored) ? packaged : folder / kFileName);
}

void RegisterSpreadsheet(NativePlatform& platform, const std::shared_ptr<Gate>& gate, const std::string& path) {
  platform.RegisterMaker(excel::kProgramName, [gate, path] { return Start(path, gate); });
}

}  // namespace quintara

#include "automation/platform/own_translator.h"

#include <vector>

#include "access/contracts/veldora_session.h"
#include "automation/dispatch/com.h"
#include "base/attempt.h"
#include "base/text.h"

namespace quintara::automation {

std::string OwnFolder() {
  constexpr auto kFlags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
  constexpr std::size_t kLongestPath = 32768;
  HMODULE self = nullptr;
  if (!GetModuleHandleExW(kFlags, reinterpret_cast<const wchar_t*>(&OwnFolder), &self)) return {};
  std::wstring path(kLongestPath, L'\0');
  path.resize(GetModuleFileNameW(self, path.data(), static_cast<DWORD>(path.size())));
  return FromPath(std::filesystem::path(path).parent_path());
}

OwnTranslator::OwnTranslator(Platform& platform) : platform_(platform), texts_(platform.Contents(), {OwnFolder()}) {}

std::string OwnTranslator::BaseDirectoryOfSession() {
  return OrElse(std::string(), [&] {
    const auto client = platform_.Attach("Veldora.VdApplication")->AsVdApplication();
    return client->Engine()->Sessions(0)->Config()->BaseDirectory();
  });
}

void OwnTranslator::SetLanguage(const std::string& language) {
  std::vector<std::string> folders;
  if (auto ofSession = BaseDirectoryOfSession(); !ofSession.empty()) folders.push_back(std::move(ofSession));
  folders.push_back(OwnFolder());
  texts_.SetBaseDirectories(std::move(folders));
  texts_.SetLanguage(language);
}

std::string OwnTranslator::Translate(const std::string& nameSpace, const std::string& key, const std::string& appendix,
                                     const std::string& version) {
  return texts_.Translate(nameSpace, key, appendix, version);
}

Ref<veldora::VdTranslator> OwnTranslator::AsVdTranslator() {
  return Ref<veldora::VdTranslator>(shared_from_this());
}

}  // namespace quintara::automation

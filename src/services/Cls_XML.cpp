#include "services/Cls_XML.h"

#include <filesystem>

#include "access/session/process.h"
#include "access/session/the_platform.h"
#include "base/attempt.h"

namespace quintara {
namespace {

constexpr auto kVersion = "1.0";

}  // namespace

void Cls_XML::Init(const Ref<veldora::VdSession>& session) {
  ContextService = ThePlatform().Create("Veldora.VdClientContext")->AsVdClientContext();
  const auto clientName = session->ClientName();
  const auto databaseType = std::to_string(session->Database()->DatabaseType());
  const auto applicationName = session->ApplicationName();
  const auto uri = "veldora://" + session->Database()->Alias();
  Config = ContextService->Open(clientName, databaseType, applicationName, uri, {});
  Session = session;
}

void Cls_XML::InitTranslator() {
  Translator = ThePlatform().Create("Veldora.VdTranslator")->AsVdTranslator();
}

void Cls_XML::InitLanguage() {
  Translator->SetLanguage(Process().gLanguage);
}

std::string Cls_XML::GetConfigParam(const std::string& Uri, const std::string& Key) {
  return OrElse(std::string(), [&] { return Config->Value(Uri, Key).ToText(); });
}

std::string Cls_XML::GetConfigParamNLS(const std::string& NameSpace, const std::string& AppendixID,
                                       const std::string& Key) {
  return OrElse(std::string(), [&] { return Translator->Translate(NameSpace, Key, AppendixID, kVersion); });
}

bool Cls_XML::IsNLSValid(const std::string& NameSpace, const std::string& Appendix) {
  return OrElse(false, [&] {
    const auto path = NLSFile(NameSpace, Appendix);
    if (!FileSystem) FileSystem = ThePlatform().Create("Scripting.FileSystemObject")->AsFileSystemObject();
    if (!FileSystem->FileExists(path)) return false;
    // Without key and appendix the translator only loads the file.
    Translator->Translate(NameSpace, "", "", kVersion);
    return true;
  });
}

std::string Cls_XML::NLSFile(const std::string& nameSpace, const std::string& appendix) const {
  constexpr auto kSeparator = static_cast<char>(std::filesystem::path::preferred_separator);
  auto path = Session->Config()->BaseDirectory();
  for (const auto& piece : {std::string("NLS"), Process().gLanguage, std::string("Custom"), appendix, nameSpace,
                            std::string(kVersion), std::string("NLS.xml")}) {
    path += kSeparator + piece;
  }
  return path;
}

}  // namespace quintara

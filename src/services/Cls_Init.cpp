#include "services/Cls_Init.h"

#include <array>
#include <cstddef>

#include "access/contracts/hix_engine.h"
#include "access/contracts/zorva.h"
#include "access/session/the_platform.h"
#include "access/utils/messages.h"

namespace quintara {
namespace {

constexpr auto kZorva = "ZORVA.Application";
constexpr auto kEnglish = "EN";

struct CatalogueName {
  const char* nameSpace;
  const char* appendix;
};

// In the order of the enumeration `Catalogue`.
constexpr std::array kCatalogues = {CatalogueName{"norvik.solutions.NLS.Controls.QNTR", "Controls"},
                                    CatalogueName{"norvik.solutions.NLS.Errors.QNTR", "Errors"}};

constexpr std::int16_t kTextsRead = 0;
constexpr std::int16_t kTextsNotRead = 1;

// Tells why start-up ends here. The steps that end so have found nothing, but none has failed, so
// that the error for which these texts have room is the empty one.
bool Stop(CatalogueText<1>& text, const char* literal) {
  if (text.text.empty()) text.text = literal;
  Show(text, box::kCritical, "");
  return false;
}

template <class Wanted>
Ref<Wanted> Converted(const Ref<AnyObject>& object, Ref<Wanted> (AnyObject::*conversion)()) {
  return object ? (*object.*conversion)() : Ref<Wanted>();
}

}  // namespace

Cls_Init::~Cls_Init() {
  auto& process = Process();
  process.gSession = nullptr;
  process.gZorva = nullptr;
  process.gHIX = nullptr;
  process.gSessionUtil = nullptr;
  process.gFileSystem = nullptr;
}

bool Cls_Init::Init() {
  return Reported("Cls_Init.Init", box::kCritical, false, [&] {
    if (!AttachToHosts() || !FindIntegration() || !FindServices()) return false;
    Process().gMatrixType = MatrixType::XML;
    if (!Initialised) Initialised = LoadSettings() && LoadTexts();
    return Initialised;
  });
}

bool Cls_Init::AttachToHosts() {
  auto& process = Process();
  process.gSession = nullptr;
  process.gSession = GetVaultSession();
  if (!process.gSession) {
    return Stop(process.texts.QD_INIT_ERROR_RETRIEVING_VELDORA_SESSION, "Error retrieving Veldora session -- ");
  }
  if (!GetZorvaApplication()) {
    return Stop(process.texts.QD_INIT_ERROR_RETRIEVING_ZORVA_SESSION, "Error retrieving ZORVA session -- ");
  }
  if (process.gZorva) return true;
  std::string text = "ZORVA Application is not accessible!";
  Utils().ShowMessage(text, box::kCritical, {});
  return false;
}

bool Cls_Init::FindIntegration() {
  auto& process = Process();
  auto& text = process.texts.QD_INIT_ZORVA_INTEGRATION_NOT_CONNECTED;
  process.gHIX = Converted(process.gZorva->GetItem("HIXEngine"), &AnyObject::AsHIXEngine);
  if (!process.gHIX) {
    // Also where the catalogue has a text: no key says that the integration is missing.
    text.text =
        "Veldora - unable to retrieve ZORVA Integration. Please check your Veldora-ZORVA Integration installation or "
        "contact your administrator.";
    Show(text, box::kCritical);
    return false;
  }
  if (process.gHIX->IsConnected()) return true;
  if (text.text.empty()) {
    text.text = "Veldora - ZORVA Integration is not connected. Please connect to Veldora-ZORVA Integration.";
  }
  Show(text, box::kCritical);
  return false;
}

bool Cls_Init::FindServices() {
  auto& process = Process();
  process.gWorkDirectory = GetVaultWorkDirectory();
  if (process.gWorkDirectory.empty()) {
    return Stop(process.texts.QD_INIT_ERROR_RETRIEVING_WORK, "Error retrieving Veldora working directory -- ");
  }
  process.gFileSystem = Converted(ThePlatform().Create("Scripting.FileSystemObject"), &AnyObject::AsFileSystemObject);
  if (!process.gFileSystem) {
    return Stop(process.texts.QD_INIT_ERROR_RETRIEVING_FILE_SYSTEM_OBJECT, "Error retrieving File System Object -- ");
  }
  process.gSessionUtil = Converted(process.gSession->GetService("VdUtil.VdSessionUtil"), &AnyObject::AsVdSessionUtil);
  if (process.gSessionUtil) return true;
  return Stop(process.texts.QD_INIT_ERROR_RETRIEVING_UTIL_SESSION, "Error retrieving Veldora Util Session -- ");
}

bool Cls_Init::LoadSettings() {
  auto& process = Process();
  if (!InitAdminSettings(process.gSession)) {
    return Stop(process.texts.QD_INIT_ERROR_RETRIEVING_ADMIN_SETTINGS, "Error retrieving admin settings -- ");
  }
  process.gLanguage = process.gSession->Language();
  return true;
}

bool Cls_Init::LoadTexts() {
  if (!InitXML(Process().gSession) || !InitTrans() || !InitLang()) return false;
  if (!NLSFilesExist()) {
    Process().gLanguage = kEnglish;
    if (!InitLang()) return false;
  }
  return InitiateNLSVariable() == kTextsRead;
}

Ref<veldora::VdSession> Cls_Init::GetVaultSession() {
  return OrElse(Ref<veldora::VdSession>(), []() -> Ref<veldora::VdSession> {
    const auto client = Converted(ThePlatform().Attach("Veldora.VdApplication"), &AnyObject::AsVdApplication);
    if (!client) return nullptr;
    const auto engine = client->Engine();
    const auto session = engine->Sessions(0);
    if (!session) return nullptr;
    const auto connection = engine->Databases(0)->ConnectionString();
    const auto password = engine->Databases(0)->ConnectionPassword();
    session->OpenDatabaseConnection(connection, password, true);
    return session;
  });
}

bool Cls_Init::GetZorvaApplication() {
  auto& zorva = Process().gZorva;
  if (zorva) return true;
  ErrorState ignored;
  Attempt(ignored, [&] { zorva = Converted(ThePlatform().Attach(kZorva), &AnyObject::AsApplication); });
  // What is started is not kept: it takes its time until it can serve, so the command ends, and the
  // next one finds it running.
  if (!zorva) Attempt(ignored, [] { ThePlatform().Create(kZorva); });
  return true;
}

std::string Cls_Init::GetVaultWorkDirectory() {
  const auto service = GetVaultSession()->GetService("VeldoraClientContextService.VdClientContextService");
  const auto paths = Converted(service, &AnyObject::AsVdClientContextService)->Context()->Paths();
  return paths->WorkDirectoryOf(paths->CurrentKey());
}

std::int16_t Cls_Init::InitiateNLSVariable() {
  return OrElse(kTextsNotRead, [&] {
    for (const auto& catalogue : kCatalogues) {
      if (Xml->IsNLSValid(catalogue.nameSpace, catalogue.appendix)) continue;
      Show(Process().texts.QD_INIT_NLS_UNVALID, box::kCritical, catalogue.nameSpace);
      return kTextsNotRead;
    }
    ForEachText(Process().texts, [&](std::string& global, const TextKey& key) {
      const auto& [nameSpace, appendix] = kCatalogues[static_cast<std::size_t>(key.catalogue)];
      global = Xml->GetConfigParamNLS(nameSpace, appendix, std::string(key.key));
    });
    return kTextsRead;
  });
}

bool Cls_Init::NLSFilesExist() {
  return OrElse(false, [&] {
    for (const auto& [nameSpace, appendix] : kCatalogues) {
      if (!Xml->IsNLSValid(nameSpace, appendix)) return false;
    }
    return true;
  });
}

bool Cls_Init::InitXML(const Ref<veldora::VdSession>& Session) {
  Xml = MakeRef<Cls_XML>();
  Xml->Init(Session);
  return true;
}

bool Cls_Init::CloseXML() {
  Xml = nullptr;
  return true;
}

bool Cls_Init::InitLang() {
  return OrElse(false, [&] {
    Xml->InitLanguage();
    return true;
  });
}

bool Cls_Init::InitTrans() {
  return OrElse(false, [&] {
    Xml->InitTranslator();
    return true;
  });
}

bool StartCommand() {
  auto& init = Process().gClsInit;
  if (!init) init = std::make_shared<Cls_Init>();
  return init->Init();
}

}  // namespace quintara

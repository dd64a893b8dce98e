#pragma once

#include <cstdint>
#include <string>

#include "access/contracts/veldora.h"
#include "base/ref.h"
#include "services/Cls_XML.h"

namespace quintara {

/// Start-up. Every command first calls `Init` of the instance in `gClsInit`, made where there is none,
/// and ends without a word when the result is False: the user has been told why. All other code
/// takes the globals of the process for granted.
///
/// The end of an instance puts `gSession`, `gZorva`, `gHIX`, `gSessionUtil` and `gFileSystem` back to
/// nothing; work directory, settings and texts stay.
class Cls_Init {
 public:
  Cls_Init() = default;
  Cls_Init(const Cls_Init&) = delete;
  Cls_Init& operator=(const Cls_Init&) = delete;
  ~Cls_Init();

  /// Attaches to the running vault client and CAD host, and fetches their services and the work
  /// directory, anew with each call. Settings and texts are read by the first call that comes that
  /// far, the language of the session being replaced by "EN" where it has no NLS files. False after a
  /// message in style 16, but without one where the translator can't be made or takes no language.
  /// A CAD host that isn't running is started, and the call ends without it all the same. What was
  /// filled before a failure stays.
  ///
  /// The catalogue isn't loaded yet in the first call of a process: messages then are literals, which
  /// stay in their globals until it is, and a text that has no literal shows as an empty box.
  bool Init();

  /// Reads the settings of the sections "COMMON" and "QD" into the globals, always from `gSession`,
  /// and names the attributes. A failure gives False, without a word; a section without settings is one.
  bool InitAdminSettings(const Ref<veldora::VdSession>& VdSession);

  /// Reads every text of both catalogues into its global; a missing one becomes empty. 0 when that
  /// went well. 1, after a message in style 16, when a catalogue's file is missing or broken, and
  /// without one on any other failure.
  std::int16_t InitiateNLSVariable();
  /// Whether the files of both catalogues are there in the language of the process and can be read.
  bool NLSFilesExist();

  /// Makes `Xml` anew and opens it. True; failures go to the caller.
  bool InitXML(const Ref<veldora::VdSession>& Session);
  /// Lets `Xml` go. True.
  bool CloseXML();
  /// `Xml.InitLanguage`. False on a failure.
  bool InitLang();
  /// `Xml.InitTranslator`. False on a failure.
  bool InitTrans();

  /// True once settings and texts are read.
  bool Initialised = false;
  /// The reader of configuration and texts, open as long as this instance lives.
  Ref<Cls_XML> Xml;

 private:
  static Ref<veldora::VdSession> GetVaultSession();
  static bool GetZorvaApplication();
  static std::string GetVaultWorkDirectory();

  static bool AttachToHosts();
  static bool FindIntegration();
  static bool FindServices();
  bool LoadSettings();
  bool LoadTexts();
};

/// What every command begins with: `Init` of the instance in `gClsInit`, made where there is none.
bool StartCommand();

}  // namespace quintara

#pragma once

#include <string>

#include "access/contracts/file_system.h"
#include "access/contracts/veldora.h"
#include "base/ref.h"

namespace quintara {

/// Reads the vault client's configuration and the texts of the NLS files. A value that can't be had,
/// for whatever reason, is the empty text, without a word.
class Cls_XML {
 public:
  /// Opens the configuration of the session's database. Failures go to the caller.
  void Init(const Ref<veldora::VdSession>& Session);
  /// Makes the translator. Failures go to the caller.
  void InitTranslator();
  /// Gives the translator, which must have been made, the language of the process. Failures go to
  /// the caller.
  void InitLanguage();

  /// The configuration value of a key under a URI such as "veldora://" and the database's alias.
  std::string GetConfigParam(const std::string& Uri, const std::string& Key);
  /// The text of a key in the language that the translator was given last.
  std::string GetConfigParamNLS(const std::string& NameSpace, const std::string& AppendixID, const std::string& Key);
  /// True when the NLS file of a namespace is there in the language of the process, and the
  /// translator could load it. No other folder or language is looked at.
  bool IsNLSValid(const std::string& NameSpace, const std::string& Appendix);

 private:
  std::string NLSFile(const std::string& nameSpace, const std::string& appendix) const;

  Ref<veldora::VdClientContext> ContextService;
  Ref<veldora::VdConfigProvider> Config;
  Ref<veldora::VdSession> Session;
  Ref<veldora::VdTranslator> Translator;
  Ref<FileSystemObject> FileSystem;  ///< made when it is first needed
};

}  // namespace quintara

#pragma once

#include <map>
#include <string>
#include <vector>

#include "access/contracts/file_system.h"

namespace quintara {

/// Texts out of NLS files: "NLS/LANGUAGE/Custom/APPENDIX/NAMESPACE/VERSION/NLS.xml" under a base directory.
/// Such a file holds, under a root of any name, one element for each text:
/// `<Text Key="QD.FIND_CAPTION">Find</Text>`. Each file is read once.
class NlsTexts {
 public:
  /// `files` must outlive it. Texts are looked for in the first of `baseDirectories` that has their file.
  NlsTexts(FileContents& files, std::vector<std::string> baseDirectories);

  void SetBaseDirectories(std::vector<std::string> baseDirectories);
  /// Fails for what is no plain name of a folder.
  void SetLanguage(const std::string& language);
  /// The text of a key. Without an appendix, the file is the first one that has this name space and version
  /// under any of them; without a key besides, it is read and the text is empty. Fails with 5 before a language was
  /// set and for a key that the file lacks, with 53 or 76 for a missing file and with 321 for a
  /// broken one.
  std::string Translate(const std::string& nameSpace, const std::string& key, const std::string& appendix,
                        const std::string& version);

 private:
  using Texts = std::map<std::string, std::string>;

  std::string FileOf(const std::string& nameSpace, const std::string& appendix, const std::string& version) const;
  std::string Searched() const;
  const Texts& Loaded(const std::string& path);

  FileContents& contents_;
  std::vector<std::string> baseDirectories_;
  std::string language_;
  std::map<std::string, Texts> files_;
};

}  // namespace quintara

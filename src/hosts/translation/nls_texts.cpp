#include "hosts/translation/nls_texts.h"

#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include "base/failure.h"
#include "base/file_names.h"
#include "base/text.h"
#include "base/xml.h"

namespace quintara {
namespace {

namespace fs = std::filesystem;

// The pieces of the path come from elsewhere: none may lead out of the folder.
fs::path Piece(const std::string& name) {
  RequireFileName(name);
  return ToPath(name);
}

// Without an appendix, the first folder that has the file; with one, the file that should be there.
std::optional<fs::path> FileUnder(const fs::path& custom, const std::string& appendix, const fs::path& rest) {
  if (!appendix.empty()) return custom / Piece(appendix) / rest;
  std::error_code error;
  for (const auto& folder : fs::directory_iterator(custom, error)) {
    const auto file = folder.path() / rest;
    if (fs::exists(file, error)) return file;
  }
  return std::nullopt;
}

}  // namespace

NlsTexts::NlsTexts(FileContents& files, std::vector<std::string> baseDirectories)
    : contents_(files), baseDirectories_(std::move(baseDirectories)) {}

void NlsTexts::SetBaseDirectories(std::vector<std::string> baseDirectories) {
  baseDirectories_ = std::move(baseDirectories);
}

void NlsTexts::SetLanguage(const std::string& language) {
  RequireFileName(language);
  language_ = language;
}

std::string NlsTexts::FileOf(const std::string& nameSpace, const std::string& appendix,
                             const std::string& version) const {
  if (language_.empty()) throw Failure(failure::kInvalidCall, "The translator was given no language");
  const auto rest = Piece(nameSpace) / Piece(version) / "NLS.xml";
  std::optional<fs::path> missing;
  std::error_code error;
  for (const auto& base : baseDirectories_) {
    const auto file = FileUnder(ToPath(base) / "NLS" / Piece(language_) / "Custom", appendix, rest);
    if (file && fs::exists(*file, error)) return FromPath(*file);
    if (!missing) missing = file;
  }
  // Reading it tells what is wrong.
  if (missing) return FromPath(*missing);
  throw Failure(failure::kFileNotFound, "No NLS file of \"" + nameSpace + "\" stands in " + Searched());
}

std::string NlsTexts::Searched() const {
  std::string searched;
  for (const auto& base : baseDirectories_) {
    searched += (searched.empty() ? "\"" : " or \"") + FromPath(ToPath(base) / "NLS" / ToPath(language_)) + "\"";
  }
  return searched.empty() ? "any folder, as none is known" : searched;
}

const NlsTexts::Texts& NlsTexts::Loaded(const std::string& path) {
  if (const auto known = files_.find(path); known != files_.end()) return known->second;
  XmlDocument document;
  if (!document.Parse(contents_.Read(path))) {
    throw Failure(failure::kInvalidFormat, "The NLS file \"" + path + "\" is broken: " + document.ParseError().reason);
  }
  Texts texts;
  for (const auto& text : document.Root().children("Text")) texts[text.attribute("Key").value()] = text.child_value();
  return files_[path] = std::move(texts);
}

std::string NlsTexts::Translate(const std::string& nameSpace, const std::string& key, const std::string& appendix,
                                const std::string& version) {
  const auto path = FileOf(nameSpace, appendix, version);
  const auto& texts = Loaded(path);
  if (key.empty() && appendix.empty()) return {};
  const auto text = texts.find(key);
  if (text == texts.end())
    throw Failure(failure::kInvalidCall, "The NLS file \"" + path + "\" has no key \"" + key + "\"");
  return text->second;
}

}  // namespace quintara

#include "hosts/vault/translator.h"

#include <filesystem>
#include <system_error>
#include <vector>

#include "base/failure.h"
#include "base/text.h"
#include "base/xml.h"
#include "hosts/vault/file_names.h"

namespace quintara::vault {
namespace {

namespace fs = std::filesystem;

// The pieces of the path come from elsewhere: none may lead out of the folder.
fs::path Piece(const std::string& name) {
  RequireFileName(name);
  return ToPath(name);
}

fs::path FileIn(const fs::path& appendixFolder, const std::string& nameSpace, const std::string& version) {
  return appendixFolder / Piece(nameSpace) / Piece(version) / "NLS.xml";
}

}  // namespace

void TranslatorObject::SetLanguage(const std::string& language) {
  PassLoggedOff<"SetLanguage">([&] { return language; });
  RequireFileName(language);
  language_ = language;
}

std::string TranslatorObject::FileOf(const std::string& nameSpace, const std::string& appendix,
                                     const std::string& version) const {
  if (language_.empty()) throw Failure(failure::kInvalidCall, "The translator was given no language");
  const auto custom = ToPath(core_->Folder().base) / "NLS" / Piece(language_) / "Custom";
  if (!appendix.empty()) return FromPath(FileIn(custom / Piece(appendix), nameSpace, version));
  std::error_code error;
  for (const auto& folder : fs::directory_iterator(custom, error)) {
    const auto file = FileIn(folder.path(), nameSpace, version);
    if (fs::exists(file, error)) return FromPath(file);
  }
  throw Failure(failure::kFileNotFound, "No NLS file of \"" + nameSpace + "\" stands in \"" + FromPath(custom) + "\"");
}

const TranslatorObject::Texts& TranslatorObject::Loaded(const std::string& path) {
  if (const auto known = files_.find(path); known != files_.end()) return known->second;
  XmlDocument document;
  if (!document.Parse(core_->Files().Read(path))) {
    throw Failure(failure::kInvalidFormat, "The NLS file \"" + path + "\" is broken: " + document.ParseError().reason);
  }
  Texts texts;
  for (const auto& text : document.Root().children("Text")) texts[text.attribute("Key").value()] = text.child_value();
  return files_[path] = std::move(texts);
}

std::string TranslatorObject::Translate(const std::string& nameSpace, const std::string& key,
                                        const std::string& appendix, const std::string& version) {
  PassLoggedOff<"Translate">([&] { return nameSpace + ", " + key + ", " + appendix + ", " + version; });
  const auto path = FileOf(nameSpace, appendix, version);
  const auto& texts = Loaded(path);
  if (key.empty() && appendix.empty()) return {};
  const auto text = texts.find(key);
  if (text == texts.end())
    throw Failure(failure::kInvalidCall, "The NLS file \"" + path + "\" has no key \"" + key + "\"");
  return text->second;
}

Ref<veldora::VdTranslator> TranslatorObject::AsVdTranslator() {
  return Ref<veldora::VdTranslator>(shared_from_this());
}

}  // namespace quintara::vault

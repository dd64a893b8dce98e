#include "hosts/vault/translator.h"

#include <utility>

namespace quintara::vault {

TranslatorObject::TranslatorObject(std::shared_ptr<Core> core)
    : Served(std::move(core)), texts_(core_->Files(), {core_->Folder().base}) {}

void TranslatorObject::SetLanguage(const std::string& language) {
  PassLoggedOff<"SetLanguage">([&] { return language; });
  texts_.SetLanguage(language);
}

std::string TranslatorObject::Translate(const std::string& nameSpace, const std::string& key,
                                        const std::string& appendix, const std::string& version) {
  PassLoggedOff<"Translate">([&] { return nameSpace + ", " + key + ", " + appendix + ", " + version; });
  return texts_.Translate(nameSpace, key, appendix, version);
}

Ref<veldora::VdTranslator> TranslatorObject::AsVdTranslator() {
  return Ref<veldora::VdTranslator>(shared_from_this());
}

}  // namespace quintara::vault

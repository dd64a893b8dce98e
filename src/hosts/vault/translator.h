#pragma once

#include <memory>
#include <string>

#include "access/contracts/veldora_services.h"
#include "hosts/translation/nls_texts.h"
#include "hosts/vault/served.h"

namespace quintara::vault {

/// Texts out of the NLS files under the vault's base directory.
class TranslatorObject final : public Served<"VdTranslator", veldora::VdTranslator>,
                               public std::enable_shared_from_this<TranslatorObject> {
 public:
  explicit TranslatorObject(std::shared_ptr<Core> core);

  void SetLanguage(const std::string& language) override;
  std::string Translate(const std::string& nameSpace, const std::string& key, const std::string& appendix,
                        const std::string& version) override;

  Ref<veldora::VdTranslator> AsVdTranslator() override;

 private:
  NlsTexts texts_;
};

}  // namespace quintara::vault

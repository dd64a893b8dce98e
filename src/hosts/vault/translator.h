#pragma once

#include <map>
#include <memory>
#include <string>

#include "access/contracts/veldora_services.h"
#include "hosts/vault/served.h"

namespace quintara::vault {

/// Texts out of NLS files: "NLS/LANGUAGE/Custom/APPENDIX/NAMESPACE/VERSION/NLS.xml" under the vault's
/// base directory. Such a file holds, under a root of any name, one element for each text:
/// `<Text Key="QD.FIND_CAPTION">Find</Text>`.
class TranslatorObject final : public Served<"VdTranslator", veldora::VdTranslator>,
                               public std::enable_shared_from_this<TranslatorObject> {
 public:
  using Served::Served;

  void SetLanguage(const std::string& language) override;
  std::string Translate(const std::string& nameSpace, const std::string& key, const std::string& appendix,
                        const std::string& version) override;

  Ref<veldora::VdTranslator> AsVdTranslator() override;

 private:
  using Texts = std::map<std::string, std::string>;

  std::string FileOf(const std::string& nameSpace, const std::string& appendix, const std::string& version) const;
  const Texts& Loaded(const std::string& path);

  std::string language_;
  std::map<std::string, Texts> files_;
};

}  // namespace quintara::vault

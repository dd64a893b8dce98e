#pragma once

#include <memory>
#include <string>

#include "access/contracts/platform.h"
#include "access/contracts/veldora_services.h"
#include "hosts/translation/nls_texts.h"

namespace quintara::automation {

/// The translator where the vault's client brings none. It reads the NLS files under the base directory of the running
/// vault session, and those in the folder "nls" beside this program's own file where that has none.
class OwnTranslator final : public veldora::VdTranslator, public std::enable_shared_from_this<OwnTranslator> {
 public:
  /// `platform` must outlive it.
  explicit OwnTranslator(Platform& platform);

  /// Looks up the base directory too, so that it stays the one of the session that the language is for.
  void SetLanguage(const std::string& language) override;
  std::string Translate(const std::string& nameSpace, const std::string& key, const std::string& appendix,
                        const std::string& version) override;

  Ref<veldora::VdTranslator> AsVdTranslator() override;

 private:
  std::string BaseDirectoryOfSession();

  Platform& platform_;
  NlsTexts texts_;
};

/// The folder in which the file of the program or library stands that this code belongs to.
std::string OwnFolder();

}  // namespace quintara::automation

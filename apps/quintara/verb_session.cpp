#include <array>

#include "access/session/process.h"
#include "base/text.h"
#include "quintara/command_context.h"
#include "quintara/session_start.h"
#include "quintara/vault_verbs.h"

namespace quintara {
namespace {

constexpr auto kNotSet = "(not set)";

struct ReadSetting {
  const char* name;
  std::string ProcessGlobals::*global;
  bool namesClasses = false;
};

constexpr std::array kRead = {
    ReadSetting{"QD CLASS_PRODUCTS", &ProcessGlobals::gClassProducts, true},
    ReadSetting{"QD CLASS_PARTS", &ProcessGlobals::gClassParts, true},
    ReadSetting{"COMMON TABLE_DOCUMENTS", &ProcessGlobals::gClassDocuments, true},
    ReadSetting{"COMMON DOC_DOC_LINK", &ProcessGlobals::gClassDocLink, true},
    ReadSetting{"COMMON PART_NUMBER", &ProcessGlobals::gAttrPartNumber},
    ReadSetting{"COMMON CN_ID", &ProcessGlobals::gAttrId},
    ReadSetting{"COMMON CN_DESCRIPTION", &ProcessGlobals::gAttrDescription},
    ReadSetting{"QD TREE_VIEW", &ProcessGlobals::gTreeView},
    ReadSetting{"QD TREE_VIEW_SEPARATOR", &ProcessGlobals::gTreeViewSeparator},
};

// What the start itself lets pass, and what then lets the commands fail one by one.
void CheckSetting(CommandContext& context, const ReadSetting& setting, const std::string& value) {
  if (value.empty()) return context.Complain("the setting " + std::string(setting.name) + " is missing");
  if (!setting.namesClasses) return;
  const auto classes = Process().gSession->MetaInfo()->Classes();
  for (const auto& name : Split(value, ',')) {
    if (classes->Find(name)) continue;
    context.Complain("the setting " + std::string(setting.name) + " names '" + name +
                     "', which is no class of the vault");
  }
}

std::string LanguageText(const ProcessGlobals& process) {
  const auto wanted = process.gSession->Language();
  return process.gLanguage == wanted ? wanted : process.gLanguage + ", since there are no texts in " + wanted;
}

std::string TextsText() {
  int count = 0;
  int missing = 0;
  ForEachText(Process().texts, [&](const std::string& global, const TextKey&) {
    ++count;
    if (global.empty()) ++missing;
  });
  return std::to_string(count - missing) + " of " + std::to_string(count);
}

}  // namespace

void RunVaultSession(CommandContext& context, const VaultSessionOptions& /*options*/) {
  StartSession(context);
  const auto& process = Process();
  TextTable table({{"session"}, {"value"}});
  table.AddRow({"user", context.User()});
  table.AddRow({"work directory", process.gWorkDirectory});
  table.AddRow({"language", LanguageText(process)});
  table.AddRow({"texts", TextsText()});
  for (const auto& setting : kRead) {
    const auto& value = process.*setting.global;
    table.AddRow({setting.name, value.empty() ? kNotSet : "'" + value + "'"});
  }
  context.Print(table);
  for (const auto& setting : kRead) CheckSetting(context, setting, process.*setting.global);
}

}  // namespace quintara

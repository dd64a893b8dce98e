#include "quintara/vault_dialog.h"

#include <ostream>
#include <string>
#include <vector>

#include "access/contracts/veldora.h"
#include "base/attempt.h"
#include "quintara/vault_objects.h"
#include "views/console/questions.h"
#include "views/console/screen_text.h"

namespace quintara {
namespace {

std::string Described(const Ref<veldora::VdObject>& object) {
  const auto record = object->Record();
  const auto text = [&](const std::string& attribute) {
    return OrElse(std::string(), [&] { return record->ValueAsString(attribute); });
  };
  const auto name = text("NM_CN_PART_NUMBER").empty() ? text("CN_DESCRIPTION") : text("NM_CN_PART_NUMBER");
  return name + "  " + text("REVISION") + "  " + object->ClassInfo()->ClassName() + "  " + text("FILE_NAME");
}

}  // namespace

std::optional<std::size_t> AnswerVaultDialog(const VaultDialog& dialog, std::istream& in, std::ostream& out) {
  if (dialog.objects.empty()) return std::nullopt;
  if (dialog.kind == kLookAtDialog) {
    out << OneLine(dialog.title) << '\n';
    for (const auto& object : dialog.objects) AttributesOf(object).Print(out);
    out << std::flush;
    return 0;
  }
  std::vector<std::string> lines;
  for (const auto& object : dialog.objects) lines.push_back(Described(object));
  return AskChoice(in, out, dialog.title, lines);
}

}  // namespace quintara

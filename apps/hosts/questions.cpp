#include "hosts/questions.h"

#include <algorithm>
#include <utility>

#include "automation/dispatch/com.h"
#include "base/attempt.h"
#include "base/text16_windows.h"

namespace quintara::hosts {
namespace {

constexpr auto kTitle = L"Quintara hosts";

std::string OnOneLine(std::string text) {
  std::ranges::replace_if(
      text, [](char c) { return c == '\n' || c == '\r'; }, ' ');
  return text;
}

std::string NameOf(const Ref<veldora::VdObject>& object) {
  const auto record = object->Record();
  const auto text = [&](const char* attribute) {
    return OrElse(std::string(), [&] { return record->ValueAsString(attribute); });
  };
  const auto name = text("NM_CN_PART_NUMBER").empty() ? text("CN_DESCRIPTION") : text("NM_CN_PART_NUMBER");
  return name + " " + text("REVISION") + " " + text("FILE_NAME");
}

}  // namespace

bool Questions::Ask(const std::string& warning) {
  shown_ += "box\t" + OnOneLine(warning) + "\n";
  if (boxAnswer_ != kAskUser) return boxAnswer_ > 0;
  if (!isAttended_) return false;
  return MessageBoxW(nullptr, Wide(warning).c_str(), kTitle, MB_YESNO | MB_ICONWARNING | MB_SETFOREGROUND) == IDYES;
}

std::optional<std::size_t> Questions::Pick(const VaultDialog& dialog) {
  shown_ += "dialog\t" + std::to_string(dialog.kind) + "\t" + OnOneLine(dialog.title) + "\t" +
            std::to_string(dialog.objects.size()) + "\n";
  if (dialogAnswer_ != kAskUser) {
    const bool isThere = dialogAnswer_ >= 0 && static_cast<std::size_t>(dialogAnswer_) < dialog.objects.size();
    return isThere ? std::optional(static_cast<std::size_t>(dialogAnswer_)) : std::nullopt;
  }
  if (!isAttended_) return std::nullopt;
  // One after another: the first one that is wanted.
  for (std::size_t i = 0; i < dialog.objects.size(); ++i) {
    const auto text = dialog.title + "\n\n" + NameOf(dialog.objects[i]);
    const auto answer = MessageBoxW(nullptr, Wide(text).c_str(), kTitle, MB_YESNOCANCEL | MB_SETFOREGROUND);
    if (answer == IDYES) return i;
    if (answer == IDCANCEL) return std::nullopt;
  }
  return std::nullopt;
}

std::string Questions::ReadShown() {
  return std::exchange(shown_, {});
}

}  // namespace quintara::hosts

#include <string_view>

#include "access/contracts/platform.h"
#include "access/session/process.h"
#include "access/session/the_platform.h"
#include "access/utils/Cls_Utils.h"
#include "base/text.h"

namespace quintara {
namespace {

constexpr auto kTitle = "Quintara";
constexpr std::string_view kLineBreakToken = "ENT";
constexpr std::string_view kLineBreak = "\r\n";

// What is put in isn't looked at again: "REP1" may stand for a text that holds "REP1".
void ReplaceAll(std::string& text, std::string_view token, std::string_view value) {
  std::string replaced;
  std::size_t from = 0;
  for (std::size_t at = 0; (at = text.find(token, from)) != std::string::npos; from = at + token.size()) {
    replaced.append(text, from, at - from).append(value);
  }
  if (from != 0) text = replaced.append(text, from);
}

void FillIn(std::string& text, const std::vector<Variant>& parameters) {
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    ReplaceAll(text, "REP" + std::to_string(i + 1), parameters[i].ToText());
  }
  ReplaceAll(text, kLineBreakToken, kLineBreak);
}

}  // namespace

Variant Cls_Utils::ShowMessage(std::string& Message, int MessageType, const std::vector<Variant>& Parameter) {
  if (Message.empty()) {
    ThePlatform().ShowBox(Process().texts.COMMON_UTILS_MESSAGE_IS_EMPTY.text, box::kCritical, kTitle);
    return {};
  }
  FillIn(Message, Parameter);
  return std::int32_t{ThePlatform().ShowBox(Message, MessageType, kTitle)};
}

std::string Cls_Utils::GetMessage(const std::string& Message, const std::vector<Variant>& Parameter) {
  if (Message.empty()) return {};
  auto message = Message;
  FillIn(message, Parameter);
  return message;
}

void Cls_Utils::GetError(const std::string& FunctionName, const ErrorState& error) {
  GetError(FunctionName, [&] { return error; });
}

void Cls_Utils::GetError(const std::string& FunctionName, const std::function<ErrorState()>& error) {
  if (!MatchesPattern("true", ThePlatform().Environment("DEBUG"))) return;
  const auto state = error();
  ThePlatform().ShowBox("Following Error has occured in ''" + FunctionName + "''\rNumber      : " +
                            std::to_string(state.number) + "\rDescription : " + state.description,
                        box::kCritical, kTitle);
}

Cls_Utils& Utils() {
  auto& utils = Process().gClsUtils;
  if (!utils) utils = std::make_shared<Cls_Utils>();
  return *utils;
}

}  // namespace quintara

#include "views/console/message_boxes.h"

#include <istream>
#include <ostream>
#include <utility>

#include "access/contracts/platform.h"
#include "base/text.h"
#include "base/trimmed.h"
#include "views/console/screen_text.h"
#include "views/console/waiting_input.h"

namespace quintara {
namespace {

constexpr int kButtons = 0x0F;
constexpr int kIcon = 0xF0;

const char* SignOf(int style) {
  switch (style & kIcon) {
    case box::kCritical: return " (error)";
    case box::kQuestion: return " (question)";
    case box::kWarning: return " (warning)";
    case box::kInformation: return " (information)";
    default: return "";
  }
}

bool Means(const std::string& typed, const std::string& button) {
  return !typed.empty() && IsUtf8(typed) && Capitals(button).starts_with(Capitals(typed));
}

}  // namespace

struct MessageBoxes::Choice {
  const char* accept;
  const char* refuse;
  int accepted;
  int refused;
};

MessageBoxes::MessageBoxes(std::istream& in, std::ostream& out, Answers answers, IsSuccess isSuccess)
    : in_(in), out_(out), answers_(answers), isSuccess_(std::move(isSuccess)) {}

int MessageBoxes::Show(const std::string& text, int style, const std::string& title) {
  out_ << OneLine(title) << SignOf(style) << ": " << (text.empty() ? "(no text)" : Lines(text));
  switch (style & kButtons) {
    case box::kYesNo: return Ask({"Yes", "No", answer::kYes, answer::kNo});
    case box::kOkCancel: return Ask({"OK", "Cancel", answer::kOk, answer::kCancel});
    default: break;
  }
  out_ << std::endl;
  if (!isSuccess_ || !isSuccess_(text)) failureShown_ = true;
  return answer::kOk;
}

int MessageBoxes::Ask(const Choice& choice) {
  const auto end = [&](bool accepted) {
    out_ << (accepted ? choice.accept : choice.refuse) << std::endl;
    return accepted ? choice.accepted : choice.refused;
  };
  const auto question = std::string(" [") + choice.accept + "/" + choice.refuse + "] ";
  const WaitingInput waiting;
  out_ << question;
  if (answers_ != Answers::kAsk) return end(answers_ == Answers::kYes);
  out_ << std::flush;
  for (std::string line; waiting.ReadLine(in_, line); out_ << question << std::flush) {
    const std::string typed(Trimmed(line));
    if (Means(typed, choice.accept)) return choice.accepted;
    if (Means(typed, choice.refuse)) return choice.refused;
  }
  return end(false);
}

}  // namespace quintara

#include "views/console/questions.h"

#include <charconv>
#include <istream>
#include <ostream>

#include "base/trimmed.h"
#include "views/console/screen_text.h"
#include "views/console/waiting_input.h"

namespace quintara {
namespace {

std::optional<std::size_t> NumberUpTo(std::size_t last, const std::string& text) {
  std::size_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || number < 1 || number > last) return std::nullopt;
  return number;
}

}  // namespace

std::optional<std::string> AskSecret(std::istream& in, std::ostream& out, const std::string& question) {
  const WaitingInput waiting(WaitingInput::Echo::kOff);
  out << OneLine(question) << std::flush;
  std::string line;
  const bool isTyped = waiting.ReadLine(in, line);
  out << std::endl;
  if (!isTyped) return std::nullopt;
  if (!line.empty() && line.back() == '\r') line.pop_back();
  return line;
}

std::optional<std::size_t> AskChoice(std::istream& in, std::ostream& out, const std::string& title,
                                     const std::vector<std::string>& lines) {
  const auto width = std::to_string(lines.size()).size();
  out << OneLine(title) << '\n';
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const auto number = std::to_string(i + 1);
    out << "  " << std::string(width - number.size(), ' ') << number << "  " << OneLine(lines[i]) << '\n';
  }
  const WaitingInput waiting;
  const auto question = "Number, or nothing for none [1-" + std::to_string(lines.size()) + "] ";
  for (std::string line; (out << question << std::flush) && waiting.ReadLine(in, line);) {
    const std::string typed(Trimmed(line));
    if (typed.empty()) return std::nullopt;
    if (const auto number = NumberUpTo(lines.size(), typed)) return *number - 1;
  }
  out << std::endl;
  return std::nullopt;
}

void AwaitEnter(std::istream& in, std::ostream& out) {
  const WaitingInput waiting;
  out << "Enter goes on " << std::flush;
  std::string line;
  if (!waiting.ReadLine(in, line)) out << std::endl;
}

}  // namespace quintara

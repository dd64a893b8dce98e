#include "automation/driver/steps.h"

#include <sstream>
#include <utility>

namespace quintara::driver {
namespace {

class LineReader {
 public:
  LineReader(const std::string& line, const Variables& variables) : line_(line), variables_(variables) {}

  std::vector<std::string> Words() {
    std::vector<std::string> words;
    for (SkipBlanks(); at_ < line_.size() && line_[at_] != '#'; SkipBlanks()) words.push_back(Word());
    return words;
  }

 private:
  static bool IsBlank(char letter) { return letter == ' ' || letter == '\t' || letter == '\r'; }

  void SkipBlanks() {
    while (at_ < line_.size() && IsBlank(line_[at_])) ++at_;
  }

  std::string Word() {
    if (line_[at_] == '"') return InQuotes();
    std::string word;
    while (at_ < line_.size() && !IsBlank(line_[at_])) {
      if (!Variable(word)) word += line_[at_++];
    }
    return word;
  }

  std::string InQuotes() {
    std::string word;
    for (++at_; at_ < line_.size() && line_[at_] != '"';) {
      if (line_[at_] == '\\') {
        word += Escaped();
      } else if (!Variable(word)) {
        word += line_[at_++];
      }
    }
    if (at_ == line_.size()) throw Failed("a quote isn't closed");
    ++at_;
    if (at_ < line_.size() && !IsBlank(line_[at_])) throw Failed("a blank is missing behind a quote");
    return word;
  }

  char Escaped() {
    const char letter = at_ + 1 < line_.size() ? line_[at_ + 1] : ' ';
    at_ += 2;
    switch (letter) {
      case 'n': return '\n';
      case 't': return '\t';
      case '"':
      case '\\': return letter;
      default: throw Failed(std::string("\\") + letter + " means nothing");
    }
  }

  bool Variable(std::string& word) {
    if (line_.compare(at_, 2, "${") != 0) return false;
    const auto end = line_.find('}', at_);
    if (end == std::string::npos) throw Failed("a ${ isn't closed");
    const auto name = line_.substr(at_ + 2, end - at_ - 2);
    const auto found = variables_.find(name);
    if (found == variables_.end()) throw Failed("nothing was given for ${" + name + "}");
    word += found->second;
    at_ = end + 1;
    return true;
  }

  const std::string& line_;
  const Variables& variables_;
  std::size_t at_ = 0;
};

}  // namespace

std::vector<Step> ReadSteps(const std::string& text, const Variables& variables) {
  std::vector<Step> steps;
  std::istringstream lines(text);
  int number = 0;
  for (std::string line; std::getline(lines, line);) {
    ++number;
    try {
      auto words = LineReader(line, variables).Words();
      if (!words.empty()) steps.push_back({number, std::move(words)});
    } catch (const Failed& failed) {
      throw Failed("line " + std::to_string(number) + ": " + failed.what());
    }
  }
  return steps;
}

std::string Quoted(const std::string& text) {
  std::string quoted = "\"";
  for (const char letter : text) {
    switch (letter) {
      case '\n': quoted += "\\n"; break;
      case '\t': quoted += "\\t"; break;
      case '\r': break;
      case '"':
      case '\\': quoted += std::string("\\") + letter; break;
      default: quoted += letter;
    }
  }
  return quoted + "\"";
}

}  // namespace quintara::driver

#include "base/step_tokens.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <system_error>

namespace quintara {
namespace {

using std::string_view;

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f' || c == '\v';
}

bool IsWord(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' || c == '-' || c == '!';
}

void Skip(string_view& rest, std::size_t count) {
  rest.remove_prefix(std::min(count, rest.size()));
}

string_view TakeWord(string_view& rest) {
  const auto end = std::find_if_not(rest.begin(), rest.end(), IsWord);
  const auto taken = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
  rest.remove_prefix(taken.size());
  return taken;
}

// Takes what ends with the semicolon of a statement; without one, nothing.
bool SkipToSemicolon(string_view& rest) {
  while (!rest.empty()) {
    const auto at = rest.find_first_of(";'/");
    Skip(rest, at);
    if (rest.empty()) return false;
    if (rest.front() == ';') return true;
    if (rest.front() == '\'') {
      TakeStepText(rest);
    } else if (rest.starts_with("/*")) {
      SkipStepBlanks(rest);
    } else {
      rest.remove_prefix(1);
    }
  }
  return false;
}

StepParameter TakeParameter(string_view& rest) {
  StepParameter parameter;
  for (int depth = 0; !rest.empty();) {
    SkipStepBlanks(rest);
    if (rest.empty()) break;
    const char c = rest.front();
    if (depth == 0 && (c == ',' || c == ')')) break;
    if (c == '\'') {
      const auto text = TakeStepText(rest);
      if (depth == 0) parameter = {text, {}};
    } else if (const auto reference = TakeStepReference(rest)) {
      if (depth == 0) parameter = {{}, reference};
    } else {
      rest.remove_prefix(1);
      if (c == '(') ++depth;
      if (c == ')') --depth;
    }
  }
  return parameter;
}

}  // namespace

string_view WithoutByteOrderMark(string_view bytes) {
  constexpr string_view kByteOrderMark = "\xEF\xBB\xBF";
  return bytes.substr(bytes.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0);
}

void SkipStepBlanks(string_view& rest) {
  while (!rest.empty()) {
    if (IsBlank(rest.front())) {
      rest.remove_prefix(1);
    } else if (rest.starts_with("/*")) {
      const auto end = rest.find("*/", 2);
      Skip(rest, end == rest.npos ? rest.size() : end + 2);
    } else {
      return;
    }
  }
}

string_view TakeStepText(string_view& rest) {
  std::size_t end = 1;
  while (true) {
    end = rest.find('\'', end);
    if (end == rest.npos || end + 1 >= rest.size() || rest[end + 1] != '\'') break;
    end += 2;
  }
  const auto text = rest.substr(1, end == rest.npos ? rest.npos : end - 1);
  Skip(rest, end == rest.npos ? rest.size() : end + 1);
  return text;
}

std::optional<StepId> TakeStepReference(string_view& rest) {
  if (!rest.starts_with('#')) return {};
  StepId id = 0;
  const auto read = std::from_chars(rest.data() + 1, rest.data() + rest.size(), id);
  if (read.ec != std::errc{}) return {};
  rest.remove_prefix(static_cast<std::size_t>(read.ptr - rest.data()));
  return id;
}

bool StepStatements::Next(StepStatement& statement) {
  statement = {};
  SkipStepBlanks(rest_);
  auto rest = rest_;
  if (const auto id = TakeStepReference(rest)) {
    SkipStepBlanks(rest);
    if (rest.starts_with('=')) {
      rest.remove_prefix(1);
      statement.id = id;
    }
    SkipStepBlanks(rest);
  }
  statement.keyword = TakeWord(rest);
  auto end = rest;
  if (!SkipToSemicolon(end)) return false;
  statement.parameters = rest.substr(0, rest.size() - end.size());
  rest_ = end.substr(1);
  return true;
}

std::vector<StepParameter> ParametersOf(const StepStatement& statement) {
  std::vector<StepParameter> parameters;
  auto rest = statement.parameters;
  SkipStepBlanks(rest);
  if (!rest.starts_with('(')) return parameters;
  do {
    rest.remove_prefix(1);
    parameters.push_back(TakeParameter(rest));
  } while (rest.starts_with(','));
  return parameters;
}

}  // namespace quintara

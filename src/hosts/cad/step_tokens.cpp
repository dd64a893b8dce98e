#include "hosts/cad/step_tokens.h"

#include <algorithm>
#include <cstddef>

namespace quintara::cad {
namespace {

using std::string_view;

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f' || c == '\v';
}

bool IsWord(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' || c == '-' || c == '!';
}

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

void Skip(string_view& rest, std::size_t count) {
  rest.remove_prefix(std::min(count, rest.size()));
}

void SkipBlanks(string_view& rest) {
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

template <class Belongs>
string_view Take(string_view& rest, Belongs belongs) {
  const auto end = std::find_if_not(rest.begin(), rest.end(), belongs);
  const auto taken = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
  rest.remove_prefix(taken.size());
  return taken;
}

// `rest` begins with a quote. A doubled quote belongs to the text.
string_view TakeText(string_view& rest) {
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

// Takes what ends with the semicolon of a statement; without one, nothing.
bool SkipToSemicolon(string_view& rest) {
  while (!rest.empty()) {
    const auto at = rest.find_first_of(";'/");
    Skip(rest, at);
    if (rest.empty()) return false;
    if (rest.front() == ';') return true;
    if (rest.front() == '\'') {
      TakeText(rest);
    } else if (rest.starts_with("/*")) {
      SkipBlanks(rest);
    } else {
      rest.remove_prefix(1);
    }
  }
  return false;
}

StepParameter TakeParameter(string_view& rest) {
  StepParameter parameter;
  for (int depth = 0; !rest.empty();) {
    SkipBlanks(rest);
    if (rest.empty()) break;
    const char c = rest.front();
    if (depth == 0 && (c == ',' || c == ')')) break;
    if (c == '\'') {
      const auto text = TakeText(rest);
      if (depth == 0) parameter = {StepParameter::Kind::kText, text};
      continue;
    }
    rest.remove_prefix(1);
    if (c == '(') ++depth;
    if (c == ')') --depth;
    if (c == '#' && depth == 0) parameter = {StepParameter::Kind::kReference, Take(rest, IsDigit)};
  }
  return parameter;
}

}  // namespace

bool StepStatements::Next(StepStatement& statement) {
  statement = {};
  SkipBlanks(rest_);
  auto rest = rest_;
  if (rest.starts_with('#')) {
    rest.remove_prefix(1);
    const auto id = Take(rest, IsDigit);
    SkipBlanks(rest);
    if (rest.starts_with('=')) {
      rest.remove_prefix(1);
      statement.id = id;
    }
    SkipBlanks(rest);
  }
  statement.keyword = Take(rest, IsWord);
  auto end = rest;
  if (!SkipToSemicolon(end)) return false;
  statement.parameters = rest.substr(0, rest.size() - end.size());
  rest_ = end.substr(1);
  return true;
}

std::vector<StepParameter> ParametersOf(const StepStatement& statement) {
  std::vector<StepParameter> parameters;
  auto rest = statement.parameters;
  SkipBlanks(rest);
  if (!rest.starts_with('(')) return parameters;
  do {
    rest.remove_prefix(1);
    parameters.push_back(TakeParameter(rest));
  } while (rest.starts_with(','));
  return parameters;
}

}  // namespace quintara::cad

#pragma once

#include <exception>
#include <string>
#include <utility>

namespace quintara {

/// What one attempted step left behind: number 0 and an empty description when it went well.
struct ErrorState {
  int number = 0;
  std::string description;

  explicit operator bool() const noexcept { return number != 0; }
};

/// The number and description of a caught exception: those of a Failure, 7 for exhausted memory,
/// 51 for anything else.
ErrorState StateOf(const std::exception& error);

/// Runs one statement with failures ignored: the only way to go on after a failed statement.
/// `state` is reset first and then tells what this very step did; the result is True when it
/// went well.
template <class Body>
bool Attempt(ErrorState& state, Body&& body) {
  state = {};
  try {
    std::forward<Body>(body)();
    return true;
  } catch (const std::exception& error) {
    state = StateOf(error);
    return false;
  }
}

/// Gives what `body` gives, or `neutral` when it fails, without a word.
template <class Result, class Body>
Result OrElse(Result neutral, Body&& body) {
  try {
    return std::forward<Body>(body)();
  } catch (const std::exception&) {
    return neutral;
  }
}

}  // namespace quintara

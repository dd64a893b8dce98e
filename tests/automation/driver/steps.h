#pragma once

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace quintara::driver {

/// What a step could not do, or found otherwise than it should be.
class Failed : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// One line of a script of steps: its words, the first of which says what to do.
struct Step {
  int line = 0;
  std::vector<std::string> words = {};

  bool operator==(const Step&) const = default;
};

/// What stands for `${NAME}` in a script.
using Variables = std::map<std::string, std::string>;

/// Reads a script: a step a line, words parted by blanks, nothing behind a word that starts with "#". A word between
/// quotes may hold blanks; within quotes \n is a line break, \t a tabulator, \" a quote and \\ a backslash, while
/// everywhere else a backslash is only one. Fails with a `Failed` that names the line.
std::vector<Step> ReadSteps(const std::string& text, const Variables& variables);

/// A word as it would stand in a script, in quotes.
std::string Quoted(const std::string& text);

}  // namespace quintara::driver

#pragma once

#include <stdexcept>

namespace quintara {

/// The command line asks for what can't be meant: nothing was changed, exit code 2. The text
/// names the argument.
class WrongUse : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace quintara

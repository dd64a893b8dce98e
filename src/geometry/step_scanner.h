#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/step_tokens.h"

namespace quintara {

/// Goes through the text of a STEP file without understanding it, as far as its end mark, and finds
/// what no reader should be given: broken statements, entities that are missing or doubled.
class StepScanner {
 public:
  explicit StepScanner(std::string_view text) : text_(text), rest_(text) {}

  /// What is wrong, as the end of a sentence that begins with the file; empty when nothing is.
  std::string Fault();

 private:
  bool ScanStatement();
  bool ScanToken();
  bool SkipBinary();
  bool ScanEntity();
  std::string EntityFault();
  std::string At(std::size_t place) const;

  std::string_view text_;
  std::string_view rest_;
  std::size_t statement_ = 0;  // where the one at hand begins
  int depth_ = 0;              // of parentheses
  bool ended_ = false;         // the end mark was met
  std::vector<StepId> defined_;
  std::vector<StepId> used_;
};

}  // namespace quintara

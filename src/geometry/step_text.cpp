#include "geometry/step_text.h"

#include "base/failure.h"
#include "base/step_tokens.h"
#include "base/text.h"
#include "geometry/file_bytes.h"
#include "geometry/step_scanner.h"

namespace quintara {

StepEncoding CheckStepFile(const std::string& path) {
  const auto bytes = BytesOfFile(path);
  if (bytes.empty()) throw Failure(failure::kInvalidFormat, path + ": is empty");
  const auto text = WithoutByteOrderMark(bytes);
  StepStatement first;
  if (!StepStatements(text).Next(first) || first.keyword != kStepBegin) {
    throw Failure(failure::kInvalidFormat, path + ": is not a STEP file");
  }
  const auto fault = StepScanner(text).Fault();
  if (!fault.empty()) throw Failure(failure::kInvalidFormat, path + ": " + fault);
  return IsUtf8(text) ? StepEncoding::kUtf8 : StepEncoding::kCodePage1252;
}

}  // namespace quintara

#pragma once

#include <string>

namespace quintara {

/// In which bytes the texts of a STEP file are written.
enum class StepEncoding { kUtf8, kCodePage1252 };

/// Looks at a STEP file from outside: fails, naming it and the reason, when it is missing, can't be
/// opened, is empty, is no STEP file, ends before its end mark, has broken statements or refers to
/// entities that it doesn't have. Gives its encoding.
StepEncoding CheckStepFile(const std::string& path);

}  // namespace quintara

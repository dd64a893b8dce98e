#include "matrix/guarded.h"

#include "access/session/the_platform.h"

namespace quintara {

void ShowCritical(const std::string& text) {
  ErrorState ignored;
  Attempt(ignored, [&] { ThePlatform().ShowBox(text, box::kCritical, "QNTR"); });
}

}  // namespace quintara

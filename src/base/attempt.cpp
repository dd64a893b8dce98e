#include "base/attempt.h"

#include <new>

#include "base/failure.h"

namespace quintara {

ErrorState StateOf(const std::exception& error) {
  if (const auto* failure = dynamic_cast<const Failure*>(&error)) {
    return {failure->Number(), failure->Description()};
  }
  if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) {
    return {failure::kOutOfMemory, Failure(failure::kOutOfMemory).Description()};
  }
  return {failure::kInternal, error.what()};
}

}  // namespace quintara

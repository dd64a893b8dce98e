#pragma once

#include <exception>
#include <string>
#include <utility>

#include "base/attempt.h"
#include "matrix/Cls_Matrice.h"

namespace quintara {

/// The one form in which an operation of `Cls_Matrice` guards its body: a failure is shown in a
/// box that names the operation, and the result is False.
template <class Body>
bool Cls_Matrice::Guarded(const char* operation, Body&& body) {
  try {
    return std::forward<Body>(body)();
  } catch (const std::exception& error) {
    ShowCritical("Unexpected error in function Cls_Matrice." + std::string(operation) + " : " +
                 StateOf(error).description);
    return false;
  }
}

}  // namespace quintara

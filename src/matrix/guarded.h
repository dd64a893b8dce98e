#pragma once

#include <exception>
#include <string>
#include <utility>

#include "base/attempt.h"

namespace quintara {

/// Shows `text` in the critical box of the matrix classes, titled "QNTR". A box that can't be shown
/// changes nothing.
void ShowCritical(const std::string& text);

/// The one form in which an operation of `Cls_Matrice` or `Cls_HashTable` guards its body: a failure
/// is shown in a box that names the operation, "Cls_Matrice.CheckPN", and the result is False.
template <class Body>
bool Guarded(const char* operation, Body&& body) {
  try {
    return std::forward<Body>(body)();
  } catch (const std::exception& error) {
    ShowCritical("Unexpected error in function " + std::string(operation) + " : " + StateOf(error).description);
    return false;
  }
}

}  // namespace quintara

#pragma once

#include <string>

#include "access/contracts/zorva.h"

namespace quintara::bench {

/// Writes the matrix of a product as a script would do it: the same walk, into the system's own document object model,
/// by late binding, and that saves it. Fails where the system has none.
void WriteWithTheDom(const Ref<zorva::Product>& root, const std::string& path);

}  // namespace quintara::bench

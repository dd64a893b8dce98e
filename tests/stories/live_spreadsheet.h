#pragma once

#include "access/contracts/spreadsheet.h"
#include "base/ref.h"

namespace quintara::test {

/// A LibreOffice of its own, had as the program has it.
Ref<excel::Application> StartLive();

/// One for all tests, which ends with them.
Ref<excel::Application> SharedLive();

/// Another one for all tests, for what the first is to read. A command that ends it leaves it to the next.
Ref<excel::Application> SharedWriter();

}  // namespace quintara::test

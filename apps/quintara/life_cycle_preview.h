#pragma once

#include <string>

#include "access/contracts/veldora.h"
#include "quintara/command_context.h"

namespace quintara {

/// Whether state and rights let the user run an operation of the vault on an object now. It needs a session.
bool CanPerform(const Ref<veldora::VdObject>& object, const std::string& vaultOperation);

/// Tells that `object` would "be checked in", say, and what else; or complains that it can't.
void PrintPreview(CommandContext& context, const Ref<veldora::VdObject>& object, const std::string& vaultOperation,
                  const std::string& what, const std::string& further = {});

}  // namespace quintara

#pragma once

namespace quintara {

class CommandContext;

/// Starts a session on the vault and the CAD host, as each command does. Wrong use without a vault. Fails when none
/// starts; a box has told why.
void StartSession(CommandContext& context);

}  // namespace quintara

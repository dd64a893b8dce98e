#pragma once

#include <functional>
#include <optional>

#include "access/contracts/zorva.h"
#include "base/ref.h"

namespace quintara {

// What the commands that switch the form of components have in common. Failures go to the caller.

/// The active work in progress.
struct ActiveWip {
  Ref<zorva::ProductDocument> document;
  Ref<zorva::Product> root;
};

/// Starts a command on it. Nothing when no session starts, or after a message that no work in progress is active.
std::optional<ActiveWip> StartSwitching();

/// Hands over each component that is selected in the document, in the order of the selection, until `switchOne` gives
/// False. With nothing selected a message tells so.
void ForEachSelected(const ActiveWip& wip, const std::function<bool(const Ref<zorva::Product>& component)>& switchOne);

}  // namespace quintara

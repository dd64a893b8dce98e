#pragma once

namespace quintara {

/// Replaces the light components that are selected in the active work in progress by their documents, which bear no
/// stamps.
class Cls_SwitchToProduct {
 public:
  /// Says nothing when all went well. A component whose object isn't in the vault, or is new, checked out or obsolete
  /// there, is passed over with a message; one that is a document already, can't be brought to the work directory or
  /// is refused by the CAD host ends it with one. What was replaced before stays so. Nothing is saved.
  void Run();
};

}  // namespace quintara

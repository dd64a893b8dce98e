#pragma once

namespace quintara {

/// Replaces the components that are selected in the active work in progress by their light representations, whose
/// references get the stamps that lead back to the objects of the vault.
class Cls_SwitchToLWT {
 public:
  /// Says nothing when all went well. The first component that can't be replaced ends it with a message: those before
  /// it stay as they have become, those behind it aren't looked at. Nothing is saved.
  void Run();
};

}  // namespace quintara

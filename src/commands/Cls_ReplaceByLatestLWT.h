#pragma once

namespace quintara {

/// Brings light components of the work in progress that is active in the CAD host up to the latest revisions in the
/// vault, those that the user ticks in a dialog.
class Cls_ReplaceByLatestLWT {
 public:
  /// Only direct children of the root are offered. What is ticked is replaced one after the other, in its place, and
  /// stamped on its reference: one with nothing new, or without a file in the vault, is told and passed over; one that
  /// is light no more ends the command, and what was replaced before stays so. Failures go to the caller.
  void Run();
};

}  // namespace quintara

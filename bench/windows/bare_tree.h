#pragma once

namespace quintara::bench {

/// The seconds until a window with nothing but a tree of so many rows can be seen: all expanded, each assembly with
/// sixteen children, filled before it is shown.
double SecondsToABareTree(int rows);

}  // namespace quintara::bench

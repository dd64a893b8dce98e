#pragma once

#include <string>

#include "bench_tree.h"

namespace quintara::bench {

/// The tree whose matrix is written and read.
const BenchTree& PositioningTree();

/// The task of the other process that serves a CAD host with the flat product of that tree.
inline constexpr auto kServeProduct = "--serve-product";
int ServeProduct(const std::string& classText);

/// The item of the host's session that is a `CounterItem`.
inline constexpr auto kCounter = "RequestCounter";

}  // namespace quintara::bench

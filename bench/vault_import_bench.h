#pragma once

#include <benchmark/benchmark.h>

namespace quintara::bench {

/// The import of 10,000 objects, each with a file of 4 KiB and a light file of 1 KiB of its own.
void Import(benchmark::State& state);
/// The same rows in the same tables, written on the bare database, and the same bytes in as many files,
/// each synced and renamed.
void ImportByHand(benchmark::State& state);

}  // namespace quintara::bench

#pragma once

#include <string>
#include <vector>

namespace quintara::bench {

/// A promise: the work takes at most `bound` times as long as its baseline, both measured in the
/// same run. With `perUnit` figures each time is divided by the units it was spent on first, and
/// the quotient of two sizes is compared.
struct Promise {
  std::string name;
  std::vector<std::string> work;      ///< one benchmark, or two: the large size over the small
  std::vector<std::string> baseline;  ///< the same number of benchmarks; none: the quotient of two is the figure
  double bound;
};

/// Runs the registered benchmarks in random interleaving, prints their figures and the peak memory,
/// and then a line for each promise: "met" or "missed", name, ratio, bound. 1 if any is missed.
int RunAndJudge(int argc, char** argv, const std::vector<Promise>& promises);

/// Prints the line of one figure: "met" or "missed", name, ratio, bound.
void PrintVerdict(const std::string& name, double ratio, double bound, bool isMet);

}  // namespace quintara::bench

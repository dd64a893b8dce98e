#include "verdicts.h"

#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <map>

namespace quintara::bench {
namespace {

// Keeps the time of every repetition and its time for one item.
class Collector : public benchmark::ConsoleReporter {
 public:
  struct Times {
    std::vector<double> seconds;
    std::vector<double> secondsPerItem;
  };

  Collector() : ConsoleReporter(OO_Tabular) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const auto& run : runs) {
      if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
      auto& times = times_[run.run_name.function_name];
      times.seconds.push_back(run.real_accumulated_time / static_cast<double>(run.iterations));
      const auto items = run.counters.find("items_per_second");
      if (items != run.counters.end()) times.secondsPerItem.push_back(1.0 / items->second.value);
    }
  }

  const Times* Of(const std::string& name) const {
    const auto found = times_.find(name);
    return found == times_.end() ? nullptr : &found->second;
  }

 private:
  std::map<std::string, Times> times_;
};

double Median(std::vector<double> values) {
  if (values.empty()) return 0;
  std::ranges::sort(values);
  return values[values.size() / 2];
}

double Figure(const Collector& collector, const std::vector<std::string>& names) {
  if (names.size() == 1) {
    const auto* times = collector.Of(names[0]);
    return times == nullptr ? 0 : Median(times->seconds);
  }
  const auto* large = collector.Of(names[0]);
  const auto* small = collector.Of(names[1]);
  if (large == nullptr || small == nullptr) return 0;
  const double perSmall = Median(small->secondsPerItem);
  return perSmall > 0 ? Median(large->secondsPerItem) / perSmall : 0;
}

bool Judge(const Collector& collector, const Promise& promise) {
  const double work = Figure(collector, promise.work);
  const double baseline = promise.baseline.empty() ? 1 : Figure(collector, promise.baseline);
  if (work <= 0 || baseline <= 0) {
    std::printf("missed  %-58s  not measured\n", promise.name.c_str());
    return false;
  }
  const double ratio = work / baseline;
  const bool met = ratio <= promise.bound;
  PrintVerdict(promise.name, ratio, promise.bound, met);
  return met;
}

void PrintPeakMemory() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  std::printf("peak memory: %ld MB\n", usage.ru_maxrss / 1024);
}

}  // namespace

int RunAndJudge(int argc, char** argv, const std::vector<Promise>& promises) {
  std::vector<std::string> arguments(argv, argv + argc);
  arguments.insert(arguments.begin() + 1, {"--benchmark_enable_random_interleaving=true", "--benchmark_repetitions=7",
                                           "--benchmark_min_time=0.2", "--benchmark_report_aggregates_only=false"});
  std::vector<char*> pointers;
  for (auto& argument : arguments) pointers.push_back(argument.data());
  int count = static_cast<int>(pointers.size());
  benchmark::Initialize(&count, pointers.data());
  if (benchmark::ReportUnrecognizedArguments(count, pointers.data())) return 2;
  Collector collector;
  benchmark::RunSpecifiedBenchmarks(&collector);
  PrintPeakMemory();
  bool allMet = true;
  for (const auto& promise : promises) allMet = Judge(collector, promise) && allMet;
  return allMet ? 0 : 1;
}

void PrintVerdict(const std::string& name, double ratio, double bound, bool isMet) {
  std::printf("%-6s  %-58s  ratio %5.2f  bound %4.1f\n", isMet ? "met" : "missed", name.c_str(), ratio, bound);
}

}  // namespace quintara::bench

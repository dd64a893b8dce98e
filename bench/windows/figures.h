#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace quintara::bench {

using Clock = std::chrono::steady_clock;

inline double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

double Median(std::vector<double> values);

/// A benchmark whose result is wrong measures nothing.
void Demand(bool holds, const std::string& what);

/// Prints "met" or "missed", name, ratio, bound. True where it is met.
bool PrintFigure(const std::string& name, double ratio, double bound);

/// A folder of its own that goes, with all it holds, at the end.
class Folder {
 public:
  Folder();
  ~Folder();
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  std::string PathOf(const std::string& name) const;

 private:
  std::string path_;
};

// Each figure: prints what was measured and its line, and gives whether its bound is met.

/// The requests that another process gets for each component that is positioned.
bool PositioningFigure();
/// The time of writing a matrix against the same walk and document with the system's own document object model.
bool WritingFigure();
/// The time from a command's start until its panel with 1,000 nodes can be seen: with the hosts in another process
/// against that many bare requests, and with them in this one against a bare window with as many rows.
bool OpeningFigures();

}  // namespace quintara::bench

#include "windows/figures.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "base/text.h"

namespace quintara::bench {

double Median(std::vector<double> values) {
  Demand(!values.empty(), "nothing was measured");
  std::ranges::sort(values);
  return values[values.size() / 2];
}

void Demand(bool holds, const std::string& what) {
  if (!holds) throw std::runtime_error(what);
}

bool PrintFigure(const std::string& name, double ratio, double bound) {
  const bool isMet = ratio <= bound;
  std::printf("%-6s  %-58s  ratio %6.3f  bound %5.2f\n", isMet ? "met" : "missed", name.c_str(), ratio, bound);
  return isMet;
}

Folder::Folder()
    : path_(FromPath(std::filesystem::temp_directory_path() /
                     ("quintara-bench-" + std::to_string(Clock::now().time_since_epoch().count())))) {
  std::filesystem::create_directories(ToPath(path_));
}

Folder::~Folder() {
  std::error_code ignored;
  std::filesystem::remove_all(ToPath(path_), ignored);
}

std::string Folder::PathOf(const std::string& name) const {
  return FromPath(ToPath(path_) / ToPath(name));
}

}  // namespace quintara::bench

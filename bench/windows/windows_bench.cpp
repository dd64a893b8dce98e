// Stands for what a user of the automation server waits for: components of another process that are put in place, a
// matrix that is written, the review panel that opens.

#include <cstdio>
#include <exception>
#include <memory>
#include <string>

#include "access/session/the_platform.h"
#include "automation/dispatch/com.h"
#include "windows/bench_platform.h"
#include "windows/figures.h"
#include "windows/served_product.h"
#include "windows/served_world.h"

namespace quintara::bench {
namespace {

int RunAll() {
  InstallPlatform(std::make_shared<BenchPlatform>());
  bool allMet = true;
  for (auto* const figure : {PositioningFigure, WritingFigure, OpeningFigures}) {
    allMet = figure() && allMet;
    std::fflush(stdout);
  }
  return allMet ? 0 : 1;
}

}  // namespace
}  // namespace quintara::bench

int main(int count, char** arguments) {
  using namespace quintara::bench;
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  try {
    if (count == 3 && arguments[1] == std::string(kServeProduct)) return ServeProduct(arguments[2]);
    if (count == 4 && arguments[1] == std::string(kServeWorld)) return ServeWorld(arguments[2], arguments[3]);
    return RunAll();
  } catch (const std::exception& error) {
    std::printf("missed  %s\n", error.what());
    return 2;
  }
}

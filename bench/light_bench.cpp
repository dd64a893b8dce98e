// Stands for opening a product light instead of in full: the time to load the light representation
// of each test assembly against that of its STEP file.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "access/contracts/geometry.h"
#include "geometry/occ_geometry.h"

namespace quintara::bench {
namespace {

const char* const kFiles[] = {"as1-oc-214.stp", "as1-tu-203.stp", "as1_pe_203.stp", "dm1-id-214.stp",
                              "dm1-oc-214.stp", "dm1-pe-214.stp", "SOT23.stp",      "TSM_104_01_L_DV_A.stp"};

// The best of five runs.
double SecondsToLoad(const std::string& path) {
  double best = 1e9;
  for (int i = 0; i < 5; ++i) {
    const auto start = std::chrono::steady_clock::now();
    if (CountFaces(path) == 0) std::printf("'%s' has no face\n", path.c_str());
    best = std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
  }
  return best;
}

int Run() {
  const auto folder = std::filesystem::temp_directory_path() / "quintara-light-bench";
  std::filesystem::create_directories(folder);
  const auto geometry = MakeOccGeometry();
  std::printf("%-24s %12s %12s %8s\n", "assembly", "STEP (ms)", "light (ms)", "ratio");
  for (const std::string file : kFiles) {
    const std::string path = std::string(QUINTARA_TEST_DATA) + "/" + file;
    const std::string light = (folder / (file + ".lwt")).string();
    const auto assembly = geometry->ReadAssembly(path, {});
    assembly->WriteLight(assembly->Structure().root, light);
    const double full = SecondsToLoad(path);
    const double fast = SecondsToLoad(light);
    std::printf("%-24s %12.1f %12.2f %8.0f\n", file.c_str(), full * 1e3, fast * 1e3, full / fast);
  }
  std::filesystem::remove_all(folder);
  return 0;
}

}  // namespace
}  // namespace quintara::bench

int main() {
  return quintara::bench::Run();
}

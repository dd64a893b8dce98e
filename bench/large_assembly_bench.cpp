// Stands for the system's purpose: a designer opens a work in progress of 50 light components instead of the assembly
// of 2,000 distinct parts and 30,000 instances that they belong to. Time and the most memory of it are held against
// loading the whole assembly from its STEP file with Open CASCADE, each in a process of its own, measured from its
// start to its end; and, without a bound, against loading it from Open CASCADE's own binary document. The work in
// progress is opened in two ways: by the program, which lists its components, and with the meshes of all components
// loaded and put in place, as what shows them needs it.
//
// All is made anew: the assembly, a vault with everything in it by `quintara import`, and the work in progress by
// `quintara wip`, whose components are compared with the places that Open CASCADE gives them.
//
// The bounds, twenty times faster and a tenth of the memory, are what makes a second form of each component worth its
// upkeep. On two cores with a load of ten, of the 141 MB of STEP and 30 MB of binary document:
//
//                                              seconds       MB
//   create the WIP from the vault                  1.9       88
//   open the WIP: quintara tree                   0.10       44    786 times faster, 22 times less than the STEP
//   open the WIP, all meshes loaded               0.12       36    635 times faster, 27 times less
//   load the whole from the binary document       1.33      156
//   load the whole from STEP                      78.5      975
//
// The memory of both ways is nearly all the libraries' own, so that it grows with what is linked, not with the work in
// progress.

#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <map>

#include "large_assembly.h"
#include "large_assembly_loading.h"
#include "measured_process.h"
#include "vault_world.h"
#include "verdicts.h"

namespace quintara::bench {
namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

constexpr int kComponents = 50;
constexpr int kRepetitions = 5;
constexpr double kTimesFaster = 20;
constexpr double kTimesLess = 10;

// A prime, so that every kind of part has its share, and their instances lie apart.
constexpr int kStep = 37;

double Median(std::vector<double> values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

/// The steps of the whole comparison, in a folder that goes at the end.
class Comparison {
 public:
  explicit Comparison(std::string self) : self_(std::move(self)) {
    std::printf("%-62s %10s %9s\n", "", "seconds", "MB");
  }

  void MakeAll() {
    Show("make the assembly of 2,000 parts and 30,000 instances", Itself({"make", QUINTARA_TEST_DATA, step_, binary_}));
    std::printf("  its STEP file: %ju MB; its binary document: %ju MB\n", MegabytesOf(step_), MegabytesOf(binary_));
    Program({"vault", "init", "quintara.vault"});
    Show("import it into a vault, with all light files", Program({"import", "--matrix", "root", step_}));
    Words create = {"wip", "LARGE"};
    for (int i = 0; i < kComponents; ++i)
      create.insert(create.end(), {"--light", LargeAssembly::PartNumber(i * kStep)});
    Show("create the WIP of 50 light components from the vault", Program(create));
    Itself({"check-places", wip_, binary_, Count()});
  }

  bool Judge() {
    const auto listed = Show("open the WIP: quintara tree", Repeated([&] { return Program({"tree", wip_}); }));
    const auto meshes = Show("open the WIP, all meshes loaded and in place", Repeated([&] {
                               return Itself({"load-wip", wip_, Count()});
                             }));
    const auto binary = Show("load the whole from the binary document", Repeated([&] {
                               return Itself({"load-binary", binary_});
                             }));
    const auto step = Show("load the whole from STEP", Itself({"load-step", step_}));
    DemandSmallerSelf(std::min(listed.megabytes, meshes.megabytes));
    PrintUnbound("WIP listed", listed, binary);
    PrintUnbound("WIP with meshes", meshes, binary);
    const bool listedIsMet = Bound("WIP listed", listed, step);
    return Bound("WIP with meshes", meshes, step) && listedIsMet;
  }

 private:
  static std::string Count() { return std::to_string(kComponents); }
  static std::uintmax_t MegabytesOf(const std::string& file) { return fs::file_size(file) / 1'000'000; }

  Consumption Itself(const Words& arguments) { return RunWith(self_, arguments); }
  Consumption Program(const Words& arguments) { return RunWith(QUINTARA_PROGRAM, arguments); }
  Consumption RunWith(const std::string& program, const Words& arguments) {
    Words command = {program};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return Run(command, folder_.PathOf(""), folder_.PathOf("output.txt"));
  }
  template <class Once>
  static Consumption Repeated(Once once) {
    std::vector<double> seconds;
    std::vector<double> megabytes;
    for (int i = 0; i < kRepetitions; ++i) {
      const Consumption consumption = once();
      seconds.push_back(consumption.seconds);
      megabytes.push_back(consumption.megabytes);
    }
    return {Median(seconds), Median(megabytes)};
  }
  static Consumption Show(const std::string& what, const Consumption& consumption) {
    std::printf("%-62s %10.3f %9.1f\n", what.c_str(), consumption.seconds, consumption.megabytes);
    std::fflush(stdout);
    return consumption;
  }
  // What this process held before it started another one would count as the other's.
  static void DemandSmallerSelf(double megabytes) {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    Demand(static_cast<double>(usage.ru_maxrss) / 1024 < megabytes, "the measuring process is the largest");
  }
  static void PrintUnbound(const std::string& what, const Consumption& light, const Consumption& binary) {
    std::printf("        %s, against the whole binary document: %.1f times faster, %.1f times less memory\n",
                what.c_str(), binary.seconds / light.seconds, binary.megabytes / light.megabytes);
  }
  static bool Bound(const std::string& what, const Consumption& light, const Consumption& whole) {
    const double faster = whole.seconds / light.seconds;
    const double less = whole.megabytes / light.megabytes;
    PrintVerdict(what + ", times faster than the STEP, at least", faster, kTimesFaster, faster >= kTimesFaster);
    PrintVerdict(what + ", times less memory than it, at least", less, kTimesLess, less >= kTimesLess);
    return faster >= kTimesFaster && less >= kTimesLess;
  }

  std::string self_;
  Folder folder_;
  std::string step_ = folder_.PathOf("large.stp");
  std::string binary_ = folder_.PathOf("large.xbf");
  std::string wip_ = (fs::path(folder_.PathOf("quintara.vault")) / "work" / "admin" / "WIP~~LARGE.ZVAProduct").string();
};

// What the user of this machine has set would lead elsewhere.
void ForgetSettings() {
  for (const auto* name : {"QUINTARA_VAULT", "QUINTARA_WORK", "QUINTARA_USER", "QUINTARA_LANG", "QUINTARA_PASSWORD"}) {
    unsetenv(name);
  }
}

int Compare() {
  ForgetSettings();
  Comparison comparison(fs::read_symlink("/proc/self/exe").string());
  comparison.MakeAll();
  return comparison.Judge() ? EXIT_SUCCESS : EXIT_FAILURE;
}

// One step of the comparison, in its own process.
int Take(const Words& arguments) {
  const auto& step = arguments.at(0);
  if (step == "make") {
    LargeAssembly::Make(arguments.at(1), arguments.at(2), arguments.at(3));
  } else if (step == "load-step") {
    LoadWholeFromStep(arguments.at(1));
  } else if (step == "load-binary") {
    LoadWholeFromBinary(arguments.at(1));
  } else if (step == "load-wip") {
    LoadWipWithMeshes(arguments.at(1), std::stoi(arguments.at(2)));
  } else if (step == "check-places") {
    CheckPlaces(arguments.at(1), arguments.at(2), std::stoi(arguments.at(3)));
  } else {
    throw std::invalid_argument("there is no step '" + step + "'");
  }
  return EXIT_SUCCESS;
}

}  // namespace
}  // namespace quintara::bench

int main(int argc, char** argv) try {
  using namespace quintara::bench;
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  const int status = arguments.empty() ? Compare() : Take(arguments);
  std::fflush(nullptr);
  // What was loaded needn't be given back piece by piece.
  std::_Exit(status);
} catch (const std::exception& error) {
  std::fprintf(stderr, "%s\n", error.what());
  return EXIT_FAILURE;
}

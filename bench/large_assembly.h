#pragma once

#include <string>
#include <vector>

namespace quintara::bench {

/// An assembly as large as those that are never loaded whole: 20 modules of 15 groups each, in every group twenty
/// parts five times. Its parts are those of the fetched assemblies, exact geometry and colours, each in a size of its
/// own, so that no two are alike.
struct LargeAssembly {
  static constexpr int kModules = 20;
  static constexpr int kGroupsOfEach = 15;
  static constexpr int kPartsOfAGroup = 20;
  static constexpr int kTimesInAGroup = 5;
  static constexpr int kParts = 2000;
  static constexpr int kInstances = kModules * kGroupsOfEach * kPartsOfAGroup * kTimesInAGroup;

  static std::string PartNumber(int part);

  /// Makes it from the STEP files in `dataFolder` and writes it with Open CASCADE: as STEP AP214 and as its own binary
  /// document.
  static void Make(const std::string& dataFolder, const std::string& stepFile, const std::string& binaryFile);
};

}  // namespace quintara::bench

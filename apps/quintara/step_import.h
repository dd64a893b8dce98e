#pragma once

#include <string>
#include <vector>

#include "access/contracts/geometry.h"
#include "access/contracts/platform.h"

namespace quintara {

struct StepImportRequest {
  std::string stepFile;  ///< absolute path
  std::string folder;    ///< where the files go; absolute path of a folder that is there
  bool replace = false;  ///< files that are there already are replaced; else they make it fail
  bool dryRun = false;   ///< reads and checks, writes nothing
};

/// What an import made, or would make.
struct StepImportReport {
  AssemblyStructure structure;
  std::vector<std::string> files;  ///< names in the folder, children before what holds them
};

/// Writes the files of all definitions into `folder`, the light ones only if `withLight` says so.
void WriteSplitFiles(const SplitAssembly& assembly, const std::string& folder, bool withLight, FileContents& files,
                     const Progress& progress);

/// `progress` for a piece of the work that takes `share` of the whole, when `done` of it is done.
Progress PieceOf(const Progress& progress, double done, double share);

/// Splits a STEP file into one part file ("PART NUMBER.stp") for each part, one product document
/// ("PART NUMBER.ZVAProduct") for each assembly, and a light representation ("PART NUMBER.lwt")
/// for each of both. All of it is written into a folder of its own first and then moved into
/// place; a failure leaves `folder` as it was. The STEP file itself is never replaced.
StepImportReport ImportStep(const StepImportRequest& request, Geometry& geometry, Platform& platform,
                            const Progress& progress);

}  // namespace quintara

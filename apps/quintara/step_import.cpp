#include "quintara/step_import.h"

#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

#include "base/failure.h"
#include "base/text.h"
#include "hosts/cad/cad_host.h"
#include "hosts/desk/split_files.h"
#include "quintara/staging_folder.h"

namespace quintara {
namespace {

namespace fs = std::filesystem;

// Reading takes about as long as writing parts and meshes does.
constexpr double kReadingShare = 0.5;

std::string In(const std::string& folder, const std::string& name) {
  return FromPath(ToPath(folder) / ToPath(name));
}

bool IsThere(const std::string& path) {
  std::error_code error;
  return fs::exists(fs::symlink_status(ToPath(path), error));
}

bool IsSameFile(const std::string& left, const std::string& right) {
  std::error_code error;
  return fs::equivalent(ToPath(left), ToPath(right), error) && !error;
}

std::vector<std::string> FilesOf(const AssemblyStructure& structure) {
  std::vector<std::string> files;
  for (const auto& definition : structure.definitions) {
    files.push_back(FileOfDefinition(definition));
    files.push_back(LightFileOfDefinition(definition));
  }
  return files;
}

void CheckTargets(const StepImportRequest& request, const std::vector<std::string>& files) {
  std::vector<std::string> there;
  for (const auto& file : files) {
    const auto target = In(request.folder, file);
    if (IsSameFile(target, request.stepFile)) {
      throw Failure(failure::kPathAccess, "'" + file +
                                              "' would replace the very file that is imported; import it into "
                                              "another folder");
    }
    if (IsThere(target)) there.push_back(file);
  }
  if (request.replace || there.empty()) return;
  const auto others = there.size() > 1 ? " and " + std::to_string(there.size() - 1) + " more files exist" : " exists";
  throw Failure(failure::kPathAccess,
                "'" + there.front() + "'" + others + " already in '" + request.folder + "'; --replace replaces them");
}

// Renames that can be taken back as long as they aren't confirmed.
class Renames {
 public:
  explicit Renames(FileContents& files) : files_(files) {}
  ~Renames() {
    for (auto step = done_.rbegin(); step != done_.rend(); ++step) {
      std::error_code error;
      fs::rename(ToPath(step->second), ToPath(step->first), error);
    }
  }
  Renames(const Renames&) = delete;
  Renames& operator=(const Renames&) = delete;

  void Do(const std::string& from, const std::string& to) {
    files_.Rename(from, to);
    done_.emplace_back(from, to);
  }
  void Confirm() { done_.clear(); }

 private:
  FileContents& files_;
  std::vector<std::pair<std::string, std::string>> done_;
};

void MoveIntoPlace(const StagingFolder& staging, const std::string& folder, const std::vector<std::string>& names,
                   Platform& platform) {
  const auto old = staging.PathOf("old");
  platform.FileSystem()->CreateFolder(old);
  Renames renames(platform.Contents());
  for (const auto& name : names) {
    const auto target = In(folder, name);
    if (IsThere(target)) renames.Do(target, In(old, name));
    renames.Do(staging.PathOf(name), target);
  }
  renames.Confirm();
}

}  // namespace

Progress PieceOf(const Progress& progress, double done, double share) {
  return [=](double fraction, const std::string& what) { progress(done + share * fraction, what); };
}

void WriteSplitFiles(const SplitAssembly& assembly, const std::string& folder, bool withLight, FileContents& files,
                     const Progress& progress) {
  const auto& definitions = assembly.Structure().definitions;
  for (std::size_t i = 0; i < definitions.size(); ++i) {
    progress(static_cast<double>(i) / static_cast<double>(definitions.size()), "Writing " + definitions[i].partNumber);
    if (!definitions[i].isAssembly) assembly.WritePart(i, In(folder, FileOfDefinition(definitions[i])));
    if (withLight) assembly.WriteLight(i, In(folder, LightFileOfDefinition(definitions[i])));
  }
  WriteProductFiles(assembly.Structure(), folder, files);
}

StepImportReport ImportStep(const StepImportRequest& request, Geometry& geometry, Platform& platform,
                            const Progress& progress) {
  const auto assembly = geometry.ReadAssembly(request.stepFile, PieceOf(progress, 0, kReadingShare));
  StepImportReport report{assembly->Structure(), FilesOf(assembly->Structure())};
  CheckTargets(request, report.files);
  if (request.dryRun) return report;
  const StagingFolder staging(request.folder, *platform.FileSystem());
  WriteSplitFiles(*assembly, staging.Path(), true, platform.Contents(),
                  PieceOf(progress, kReadingShare, 1 - kReadingShare));
  MoveIntoPlace(staging, request.folder, report.files, platform);
  return report;
}

}  // namespace quintara

#include "quintara/vault_import.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <system_error>

#include "base/attempt.h"
#include "base/failure.h"
#include "base/text.h"
#include "hosts/cad/product_file.h"
#include "quintara/setting_table.h"
#include "quintara/staging_folder.h"
#include "quintara/step_import.h"

namespace quintara {
namespace {

// Shares of the time that a large assembly takes.
constexpr double kReading = 0.45;
constexpr double kWriting = 0.45;

std::string FolderForTemporaryFiles() {
  std::error_code error;
  const auto folder = std::filesystem::temp_directory_path(error);
  if (error) throw Failure(failure::kPathNotFound, "There is no folder for temporary files: " + error.message());
  return FromPath(folder);
}

std::vector<AssemblyPlan::Child> DistinctChildren(const AssemblyStructure::Definition& definition,
                                                  std::vector<std::size_t>& placeOf) {
  std::vector<AssemblyPlan::Child> children;
  for (const auto& instance : definition.children) {
    auto& place = placeOf[instance.definition];
    if (place < children.size() && children[place].definition == instance.definition) {
      ++children[place].quantity;
    } else {
      place = children.size();
      children.push_back({instance.definition, 1});
    }
  }
  return children;
}

AssemblyPlan PlanOf(const AssemblyStructure& structure, const StagingFolder& folder) {
  AssemblyPlan plan;
  // Where the last assembly that holds a definition has it among its children.
  std::vector<std::size_t> placeOf(structure.definitions.size());
  for (const auto& definition : structure.definitions) {
    plan.definitions.push_back({definition.partNumber,
                                definition.isAssembly,
                                {},
                                folder.PathOf(FileOfDefinition(definition)),
                                folder.PathOf(LightFileOfDefinition(definition)),
                                DistinctChildren(definition, placeOf)});
  }
  return plan;
}

bool IsSameChild(const cad::ProductFile::Component& left, const cad::ProductFile::Component& right) {
  return left.name == right.name && left.file == right.file && left.position == right.position;
}

}  // namespace

bool HoldTheSameChildren(const std::string& left, const std::string& right) {
  return OrElse(false, [&] {
    const auto first = cad::ParseProductFile(left, "the stored file");
    const auto second = cad::ParseProductFile(right, "the new file");
    return first.partNumber == second.partNumber &&
           std::ranges::equal(first.components, second.components, IsSameChild);
  });
}

VaultImportReport ImportIntoVault(const VaultImportRequest& request, EmbeddedVault& vault, Geometry& geometry,
                                  Platform& platform, const Progress& progress) {
  // First, since reading takes its time.
  AssemblyImportOptions options;
  options.productClass = FirstClassOfSetting(vault, "QD", "CLASS_PRODUCTS");
  options.partClass = FirstClassOfSetting(vault, "QD", "CLASS_PARTS");
  const auto assembly = geometry.ReadAssembly(request.stepFile, PieceOf(progress, 0, kReading));
  const StagingFolder folder(FolderForTemporaryFiles(), *platform.FileSystem());
  // Light representations aren't compared, so that a dry run has no use for them.
  WriteSplitFiles(*assembly, folder.Path(), !request.dryRun, platform.Contents(),
                  PieceOf(progress, kReading, kWriting));
  const auto plan = PlanOf(assembly->Structure(), folder);
  options.sameChildren = HoldTheSameChildren;
  if (request.beforeCheckIn) {
    options.beforeCheckIn = [&](const Ref<veldora::VdObject>& object, std::size_t index) {
      request.beforeCheckIn({object, index, plan.definitions[index].file, index == assembly->Structure().root});
    };
  }
  options.progress = PieceOf(progress, kReading + kWriting, 1 - kReading - kWriting);
  return {assembly->Structure(),
          request.dryRun ? vault.PreviewImport(plan, options) : vault.ImportAssembly(plan, options)};
}

}  // namespace quintara

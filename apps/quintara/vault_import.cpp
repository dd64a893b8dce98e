#include "quintara/vault_import.h"

#include <filesystem>
#include <memory>
#include <system_error>

#include "base/failure.h"
#include "base/text.h"
#include "hosts/desk/product_comparison.h"
#include "hosts/desk/split_files.h"
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

}  // namespace

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
  const auto plan = PlanOfStructure(assembly->Structure(), folder.Path());
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

#include "hosts/vault/assembly_import.h"

#include <utility>

#include "hosts/vault/core.h"
#include "hosts/vault/deposits.h"
#include "hosts/vault/file_names.h"
#include "hosts/vault/import_comparison.h"
#include "hosts/vault/life_cycle.h"
#include "hosts/vault/links.h"
#include "hosts/vault/object.h"
#include "hosts/vault/object_storage.h"
#include "hosts/vault/schema_setup.h"
#include "hosts/vault/sequences.h"

namespace quintara {
namespace vault {
namespace {

using Outcome = ImportedObject::Outcome;

// What an import takes for looking, as a share of the whole.
constexpr double kComparingShare = 0.2;

/// A part of the progress, from `from` to `to`.
Progress Share(const Progress& progress, double from, double to) {
  if (!progress) return {};
  return [=](double fraction, const std::string& what) { progress(from + fraction * (to - from), what); };
}

ImportedObject Expected(const Comparison& comparison) {
  if (!comparison.present) return {Outcome::kAdded, FirstMaskRevision(*comparison.info, attribute::kRevision), {}};
  const auto& present = *comparison.present;
  if (comparison.changed) return {Outcome::kRevised, NextRevision(present.revision), {}};
  return {Outcome::kUnchanged, present.revision, {present.classId, present.id}};
}

/// Stores a plan, bottom up, as the comparison asks for it.
class Importer {
 public:
  struct Surroundings {
    std::shared_ptr<Core> core;
    Ref<veldora::VdSessionUtil> util;
    int productType;
    int partType;
  };

  Importer(Surroundings surroundings, const AssemblyPlan& plan, const AssemblyImportOptions& options)
      : around_(std::move(surroundings)), plan_(plan), options_(options) {}

  std::vector<ImportedObject> Run(const std::vector<Comparison>& comparisons) {
    const auto progress = Share(options_.progress, kComparingShare, 1);
    for (std::size_t i = 0; i < comparisons.size(); ++i) {
      if (progress) {
        progress(static_cast<double>(i) / static_cast<double>(comparisons.size()),
                 "Storing " + plan_.definitions[i].partNumber);
      }
      done_.push_back(Expected(comparisons[i]));
      if (comparisons[i].changed) Store(comparisons[i], i);
    }
    if (progress) progress(1, "Completing the import");
    return std::move(done_);
  }

 private:
  void Store(const Comparison& comparison, std::size_t index) {
    auto data = comparison.present ? Revised(comparison, index) : Added(comparison, index);
    done_[index].identity = {data.Info().id, data.Id()};
    if (plan_.definitions[index].isAssembly) SetChildren(data, LinksOf(index));
    const auto object = ObjectOf(std::move(data));
    if (plan_.definitions[index].isAssembly && options_.beforeCheckIn) options_.beforeCheckIn(object, index);
    around_.util->CheckIn(object, nullptr, false);
  }

  ObjectData Added(const Comparison& comparison, std::size_t index) {
    const auto& definition = plan_.definitions[index];
    ObjectData object(around_.core, *comparison.info, 0);
    object.SetText(kPartNumberAttribute, definition.partNumber);
    object.SetText(attribute::kFileType,
                   std::to_string(definition.isAssembly ? around_.productType : around_.partType));
    NameContent(object, definition);
    InsertNow(object);
    object.ForgetChanges();
    return object;
  }

  ObjectData Revised(const Comparison& comparison, std::size_t index) {
    auto object = NewRelease(ObjectData(around_.core, *comparison.info, comparison.present->id), true);
    NameContent(object, plan_.definitions[index]);
    Update(object);
    return object;
  }

  // Puts the files into the store and names them as the content that the next storing takes.
  void NameContent(ObjectData& object, const AssemblyPlan::Definition& definition) {
    const auto put = [&](const std::string& path) {
      return around_.core->Store().Put(around_.core->Files().Read(path));
    };
    const auto name = FileNameOf(definition.file);
    const auto file = put(definition.file);
    std::optional<FileStore::Content> light;
    if (!definition.lightFile.empty()) light = put(definition.lightFile);
    object.SetText(attribute::kFileName, name);
    object.SetText(attribute::kCadFileName, name);
    object.SetText(attribute::kDirectory, DirectoryOf(MakeDeposit(*around_.core, name, file, light).id));
    if (!definition.description.empty()) object.SetText(attribute::kDescription, definition.description);
  }

  std::vector<Link> LinksOf(std::size_t index) const {
    std::vector<Link> links;
    for (const auto& child : plan_.definitions[index].children) {
      const auto& identity = done_[child.definition].identity;
      links.push_back({0, identity.classId, identity.objectId, child.quantity});
    }
    return links;
  }

  Surroundings around_;
  const AssemblyPlan& plan_;
  const AssemblyImportOptions& options_;
  std::vector<ImportedObject> done_;
};

std::vector<Comparison> Compared(Core& core, const AssemblyPlan& plan, AssemblyImportOptions options, double share) {
  options.progress = Share(options.progress, 0, share);
  return CompareWithVault(core, plan, options);
}

}  // namespace
}  // namespace vault

std::vector<ImportedObject> EmbeddedVault::ImportAssembly(const AssemblyPlan& plan,
                                                          const AssemblyImportOptions& options) {
  core_->TheGate().Pass("EmbeddedVault.ImportAssembly");
  core_->RequireLoggedOn();
  const vault::Importer::Surroundings surroundings = {
      core_, application_->Engine()->Sessions(0)->GetService("VdUtil.VdSessionUtil")->AsVdSessionUtil(),
      FileTypeId("ZVAProduct"), FileTypeId("ZVAPart")};
  std::vector<ImportedObject> result;
  core_->InTransaction([&] {
    const auto comparisons = vault::Compared(*core_, plan, options, vault::kComparingShare);
    result = vault::Importer(surroundings, plan, options).Run(comparisons);
  });
  return result;
}

std::vector<ImportedObject> EmbeddedVault::PreviewImport(const AssemblyPlan& plan,
                                                         const AssemblyImportOptions& options) {
  core_->TheGate().Pass("EmbeddedVault.PreviewImport");
  core_->RequireLoggedOn();
  std::vector<ImportedObject> result;
  core_->InTransaction([&] {
    for (const auto& comparison : vault::Compared(*core_, plan, options, 1))
      result.push_back(vault::Expected(comparison));
  });
  return result;
}

}  // namespace quintara

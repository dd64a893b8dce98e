#pragma once

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "hosts/vault/assembly_import.h"
#include "hosts/vault/vault_fixture.h"

namespace quintara::test {

using Outcome = ImportedObject::Outcome;

/// A vault and the files of a small assembly, split beside it: CAR holds AXLE twice and BOLT three
/// times, AXLE holds BOLT twice and NUT once.
template <class Maker>
class ImportTest : public VaultTest<Maker> {
 protected:
  enum Place : std::size_t { kBolt, kNut, kAxle, kCar };

  ImportTest() { std::filesystem::create_directory(this->folder.Path("split")); }

  std::string SplitPath(const std::string& name) const { return this->folder.Path("split/" + name); }
  void WriteSplit(const std::string& name, const std::string& bytes) const {
    this->folder.Write("split/" + name, bytes);
  }

  AssemblyPlan::Definition Part(const std::string& number, const std::string& bytes) const {
    WriteSplit(number + ".stp", bytes);
    WriteSplit(number + ".lwt", "light " + bytes);
    return {number, false, {}, SplitPath(number + ".stp"), SplitPath(number + ".lwt"), {}};
  }
  AssemblyPlan::Definition Assembly(const std::string& number, const std::string& bytes,
                                    std::vector<AssemblyPlan::Child> children) const {
    WriteSplit(number + ".ZVAProduct", bytes);
    WriteSplit(number + ".lwt", "light " + bytes);
    return {number, true, {}, SplitPath(number + ".ZVAProduct"), SplitPath(number + ".lwt"), std::move(children)};
  }
  /// `prefix` stands in front of all part numbers and bytes.
  AssemblyPlan Car(const std::string& prefix = {}) const {
    return {{Part(prefix + "BOLT", prefix + "bolt"), Part(prefix + "NUT", prefix + "nut"),
             Assembly(prefix + "AXLE", prefix + "axle", {{kBolt, 2}, {kNut, 1}}),
             Assembly(prefix + "CAR", prefix + "car", {{kAxle, 2}, {kBolt, 3}})}};
  }

  std::vector<ImportedObject> Import(const AssemblyPlan& plan, const AssemblyImportOptions& options = {}) const {
    return this->vault->ImportAssembly(plan, options);
  }
  static std::vector<Outcome> OutcomesOf(const std::vector<ImportedObject>& objects) {
    std::vector<Outcome> outcomes;
    for (const auto& object : objects) outcomes.push_back(object.outcome);
    return outcomes;
  }

  Ref<VdObject> Newest(const std::string& partNumber) const {
    const auto found = this->vault->FindNewest(partNumber);
    if (found.size() != 1) return nullptr;
    return this->Store()->ObjectById(found[0].identity.classId, found[0].identity.objectId);
  }
  Ref<VdObject> Of(const ImportedObject& imported) const {
    return this->Store()->ObjectById(imported.identity.classId, imported.identity.objectId);
  }
  std::string RevisionOf(const std::string& partNumber) const { return this->TextOf(Newest(partNumber), "REVISION"); }
  /// "BOLT A x2" and so on.
  std::vector<std::string> StructureOf(const Ref<VdObject>& parent) const {
    std::vector<std::string> lines;
    for (const auto& [object, quantity] : this->vault->Structure(parent)) {
      lines.push_back(this->TextOf(object, "NM_CN_PART_NUMBER") + " " + this->TextOf(object, "REVISION") + " x" +
                      std::to_string(quantity));
    }
    return lines;
  }
  /// Takes the vault down as it is, to be the same later.
  void Remember() {
    dump_ = this->Dump();
    stored_ = StoredFiles();
  }
  void ExpectNothingChanged(const std::string& where = {}) const {
    EXPECT_EQ(this->Dump(), dump_) << where;
    EXPECT_EQ(StoredFiles(), stored_) << where;
  }
  std::vector<std::string> StoredFiles() const {
    std::vector<std::string> paths;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(this->vault->Folder().store)) {
      if (entry.is_regular_file()) paths.push_back(entry.path().string());
    }
    std::ranges::sort(paths);
    return paths;
  }

 private:
  std::string dump_;
  std::vector<std::string> stored_;
};

}  // namespace quintara::test

#pragma once

#include <string>
#include <vector>

#include "matrix/matrix_fixture.h"
#include "wip/panel_bench.h"

namespace quintara::test {

/// Hosts with a small assembly in the vault, checked in: PLANT holds BOLT, GROUP and PLATE, GROUP holds BOLT twice.
/// Each has its file and a light representation. No document is open in the CAD host.
class PlantInVault : public PanelBench {
 public:
  PlantInVault();

  /// Its nodes in the review tree.
  enum : int { kPlant = 1, kBolt, kGroup, kBoltInGroup, kPlate };

  /// The tree as the CAD host has it.
  static Node Plant();
  /// Stores a matrix document for a product. The XML form holds the whole tree.
  Ref<veldora::VdObject> GivenMatrix(const Ref<veldora::VdObject>& product, const std::string& partNumber,
                                     MatrixType type = MatrixType::XML);

  /// Runs the command on PLANT; the user does this in the panel.
  void RunWith(const UserScript& user);
  /// The same, then creates the WIP.
  void CreateWith(const UserScript& user = {});
  void Open(const std::string& partNumber);

  /// The root of the document that is active in the CAD host.
  Ref<zorva::Product> Root();
  std::vector<Component> Components();
  /// What a WIP remembers, "WIP=TRUE" and so on.
  std::vector<std::string> Marks();
  int OpenDocuments() { return host.Application()->Documents()->Count(); }
  /// The lines that the progress dialog showed.
  std::vector<std::string> Progress() const;

  Ref<veldora::VdObject> bolt, plate, group, plant;

 private:
  void AddAll();
  Ref<veldora::VdObject> Add(const std::string& className, const std::string& partNumber, const std::string& ending);
};

class PlantTest : public testing::Test, protected PlantInVault {};

}  // namespace quintara::test

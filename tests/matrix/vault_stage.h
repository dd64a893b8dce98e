#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "access/contracts/geometry.h"
#include "base/file_names.h"
#include "base/variant.h"
#include "matrix/matrix_fixture.h"
#include "services/running_hosts.h"

namespace quintara::test {

inline constexpr int kModalQuestion = 4132;

/// Hosts on which an assembly stands in the vault and is open in the CAD host, as a session has it that
/// has just started. CAR holds FRAME at 100, NUT at 200 and AXLE at 300; FRAME holds BOLT at 1 and at 2;
/// AXLE holds NUT at 5. All are new in the vault.
class CarInVault : public ::testing::Test, public RunningHosts {
 protected:
  CarInVault();

  /// Opens CAR anew with each of its nodes in a form of the test's choice.
  void OpenCar(const FormChoice& form);
  /// With what lies below the sub-assemblies unloaded.
  void OpenCarInPart();
  /// With everything loaded but the child of this name.
  void OpenCarWithout(const std::string& child);
  void OpenAlone(const std::string& partNumber);
  /// A product of so many children that the vault doesn't know.
  Ref<zorva::Product> Crowd(std::size_t children);

  Ref<VdObject> Of(const std::string& partNumber) const { return objects.at(partNumber); }
  /// Links a document with this matrix file to a product; of the form XML unless told otherwise.
  Ref<VdObject> GivenMatrix(const std::string& partNumber, const std::string& text,
                            const std::string& fileType = "xml");
  /// The texts of the matrices of FRAME and of AXLE, whose roots have names and positions of their own.
  static std::string FrameMatrix();
  static std::string AxleMatrix();
  void GivenMatrices();

  /// The matrix documents linked to a product, in the order of their ids.
  std::vector<Ref<VdObject>> MatricesOf(const std::string& partNumber) const;
  /// The path of a file of the work directory as the logic puts it together.
  std::string PathInWork(const std::string& name) const { return PathIn(folder.Path("work"), name); }
  std::string MatrixPath() const { return PathInWork("CAR Matrix.xml"); }

  static AssemblyStructure Car();

  std::map<std::string, Ref<VdObject>> objects;
  Ref<zorva::ProductDocument> document;
  Ref<zorva::Product> root;

 private:
  void StoreCar(const AssemblyStructure& car);
  void Take(const Ref<zorva::Document>& opened);
};

/// The elements of a matrix in document order: tag, full name, part number, instance name and X of the
/// origin, "PART CAR\\NUT.7 NUT NUT.7 200".
std::vector<std::string> ElementsOf(const std::string& matrix);

/// The calls of a record that tell what was done and in which order, without those that only lead there.
/// Paths are those below the test's folder.
std::vector<std::string> StepsOf(const std::vector<std::string>& record, const TemporaryFolder& folder);

/// The box of a key of the catalogue.
Box ToldText(const std::string& key, int style, const std::vector<Variant>& values = {});
/// The standard report of `Cls_GetMatrix.Run`.
Box RunReport(const std::string& description);

}  // namespace quintara::test

#pragma once

#include <string>

#include "matrix/Cls_Matrice.h"
#include "matrix/vault_stage.h"

namespace quintara::test {

inline constexpr auto kOld = "the matrix of before";
inline constexpr auto kInstruction = "<?xml version='1.0' encoding='UTF-8'?>";

/// Merges of the matrix of CAR.
class MergeXMLMatrix : public CarInVault {
 protected:
  bool Merge() { return matrice.MergeXMLMatrix(root, MatrixPath()); }
  std::string Merged() const { return ReadWork("CAR Matrix.xml"); }

  // What a merge without a word has to leave behind.
  void ExpectNothingDone() {
    EXPECT_EQ(Merged(), kOld);
    EXPECT_FALSE(WorkHas("CAR Matrix.xml.new"));
  }
  void ExpectFailure(const std::string& text) {
    WriteWork("CAR Matrix.xml", kOld);

    EXPECT_FALSE(Merge());

    EXPECT_THAT(platform.Boxes(), ::testing::ElementsAre(MatrixBox(text)));
    ExpectNothingDone();
  }
  void ExpectFailureInTheWalk(const std::string& description) {
    ExpectFailure("Unexpected error in function Cls_Matrice.ParseZORVATreeForMerging : " + description);
  }
  void ExpectSilentFailure() {
    WriteWork("CAR Matrix.xml", kOld);

    EXPECT_FALSE(Merge());

    EXPECT_THAT(platform.Boxes(), ::testing::IsEmpty());
    ExpectNothingDone();
  }
  std::string Copied(const std::string& partNumber) const { return PathInWork(partNumber + " Matrix.xml"); }

  Cls_Matrice matrice;
};

}  // namespace quintara::test

#include "quintara/matrix_instances.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/failure.h"
#include "support/fake_spreadsheet.h"

namespace quintara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> PlacesOf(const std::vector<MatrixInstance>& instances) {
  std::vector<std::string> places;
  for (const auto& instance : instances) {
    places.push_back(instance.partNumber + " " + std::to_string(static_cast<int>(instance.position[9])));
  }
  return places;
}

std::string Element(const std::string& tag, const std::string& partNumber, int x, const std::string& below = {}) {
  std::string numbers;
  for (const auto* name : {"XX", "YY", "ZZ"}) numbers += std::string(name) + "=\"1\" ";
  for (const auto* name : {"XY", "XZ", "YX", "YZ", "ZX", "ZY", "YO", "ZO"}) numbers += std::string(name) + "=\"0\" ";
  return "<" + tag + " PART_NUMBER=\"" + partNumber + "\" INSTANCE_NAME=\"i\" FULL_INSTANCE_NAME=\"i\" " + numbers +
         "XO=\"" + std::to_string(x) + "\">" + below + "</" + tag + ">";
}

// "gear" at 1 holds "axle" at 10 with "nut" at 100 and "bolt" at 200, and "nut" at 20.
class TheMatrixFile {
 public:
  std::vector<std::string> Places(const SoughtInstances& sought) const {
    return PlacesOf(InstancesInXml(
        sought, Element("PRODUCT", "gear", 1,
                        Element("PRODUCT", "axle", 10, Element("PART", "nut", 100) + Element("PART", "bolt", 200)) +
                            Element("PART", "nut", 20))));
  }
};

class TheWorkbook {
 public:
  TheWorkbook() {
    Add("gear", 1, 1);
    Add("axle", 2, 10);
    Add("nut", 3, 100);
    Add("bolt", 3, 200);
    Add("nut", 2, 20);
  }
  void Add(const std::string& partNumber, int level, double x) {
    const int row = ++rows_;
    spreadsheet->sheets[1][{row, 1}] = Variant(partNumber);
    spreadsheet->sheets[1][{row, 2}] = Variant(static_cast<double>(row));
    spreadsheet->sheets[1][{row, 3}] = Variant(static_cast<double>(level));
    // What is empty is 0.
    for (const int column : {15, 19, 23}) spreadsheet->sheets[0][{row, column}] = Variant(1.0);
    spreadsheet->sheets[0][{row, 24}] = Variant(x);
  }
  std::vector<std::string> Places(const SoughtInstances& sought) const {
    return PlacesOf(InstancesInWorkbook(sought, {spreadsheet.Sheet(1), spreadsheet.Sheet(2)}));
  }

  FakeSpreadsheet spreadsheet{std::make_shared<Gate>()};

 private:
  int rows_ = 0;
};

template <class Matrix>
class TheInstancesOf : public ::testing::Test {
 protected:
  Matrix matrix;
};
using Matrices = ::testing::Types<TheMatrixFile, TheWorkbook>;
TYPED_TEST_SUITE(TheInstancesOf, Matrices);

TYPED_TEST(TheInstancesOf, StandInTheFrameOfItsRoot) {
  EXPECT_THAT(this->matrix.Places({{"nut"}, {"nut"}}), ElementsAre("nut 111", "nut 21"));
}

TYPED_TEST(TheInstancesOf, LeaveOutWhatAComponentHolds) {
  EXPECT_THAT(this->matrix.Places({{"nut", "axle"}, {"nut", "axle"}}), ElementsAre("axle 11", "nut 21"));
  EXPECT_THAT(this->matrix.Places({{"gear", "nut"}, {"gear", "nut"}}), ElementsAre("gear 1"));
}

TYPED_TEST(TheInstancesOf, AreAlsoThoseBelowWhatIsNoComponent) {
  EXPECT_THAT(this->matrix.Places({{"nut", "axle"}, {"nut"}}), ElementsAre("axle 11", "nut 111", "nut 21"));
}

TYPED_TEST(TheInstancesOf, LeaveOutWhatAComponentHoldsThatIsNotSoughtItself) {
  EXPECT_THAT(this->matrix.Places({{"nut"}, {"axle"}}), ElementsAre("nut 21"));
}

TYPED_TEST(TheInstancesOf, AreNoneOfWhatItDoesNotHold) {
  EXPECT_THAT(this->matrix.Places({{"cover"}, {"cover"}}), IsEmpty());
}

TEST(TheInstancesOfAFile, NeedAMatrix) {
  EXPECT_THROW(InstancesInXml({{"nut"}, {}}, "no matrix"), Failure);
  EXPECT_THROW(InstancesInXml({{"nut"}, {}}, "<PART PART_NUMBER='nut' XX='one'/>"), Failure);
}

TEST(TheInstancesOfAWorkbook, NeedNumbers) {
  TheWorkbook matrix;
  matrix.spreadsheet->sheets[0][{5, 26}] = Variant("far");

  EXPECT_THAT(matrix.Places({{"bolt"}, {}}), ElementsAre("bolt 211"));
  EXPECT_THROW(matrix.Places({{"nut"}, {}}), Failure);
}

TEST(TheInstancesOfAWorkbook, NeedParents) {
  TheWorkbook matrix;
  matrix.Add("orphan", 4, 1);

  EXPECT_THROW(matrix.Places({{"nut"}, {}}), Failure);
}

}  // namespace
}  // namespace quintara::test

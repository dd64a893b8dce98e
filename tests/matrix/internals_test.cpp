#include <gtest/gtest.h>

#include <array>
#include <string>

#include "matrix/matrix_fixture.h"

namespace quintara {

class MatriceInternals {
 public:
  bool Convert(XmlNode node, XMLElement& element) { return matrice.ConvertNodeToXMLElement(node, element); }
  bool ToMatrix(const XMLElement& element, std::span<double> matrix) {
    return matrice.ConvertXMLElementToMatrix(element, matrix);
  }
  bool Multiply(std::span<const double> child, std::span<const double> parent, std::span<double> result) {
    return matrice.MultiplicateMatrixes(child, parent, result);
  }
  bool CheckPN(const std::string& partNumber, const ChildPartNumbers& children, bool& found) {
    return matrice.CheckPN(partNumber, children, found);
  }
  bool ParentsAreUsed(MatrixIndex& index, int element, const ChildPartNumbers& children, bool& used) {
    return matrice.CheckIfParentsAreUsed(index, element, children, used);
  }
  bool Instances(MatrixIndex& index, const std::string& partNumber, const ChildPartNumbers& children,
                 std::vector<int>& instances) {
    return matrice.GetInstancesFromPN(index, partNumber, children, instances);
  }
  bool Position(MatrixIndex& index, int element, PositionMatrix& out) {
    return matrice.PositionnerXML(index, element, out);
  }
  bool ConvertOnce(MatrixIndex& index, int element) { return matrice.ConvertOnce(index, element); }

  Cls_Matrice matrice;
};

namespace test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MatriceOperations : public ::testing::Test {
 protected:
  MatrixIndex& Given(const std::string& text) {
    EXPECT_TRUE(document.Parse(text)) << document.ParseError().reason;
    index = std::make_unique<MatrixIndex>(document.Node());
    index->Build();
    return *index;
  }
  static ChildPartNumbers Children(const std::vector<std::string>& partNumbers) {
    ChildPartNumbers children;
    for (const auto& partNumber : partNumbers) children.Add(partNumber);
    return children;
  }

  TestPlatform platform;
  MatriceInternals matrice;
  XmlDocument document;
  std::unique_ptr<MatrixIndex> index;
};

TEST_F(MatriceOperations, AnElementIsConvertedFieldByField) {
  document.Parse(
      "<A ZO='12' YO='11' XO='10' ZZ='9' ZY='8' ZX='7' YZ='6' YY='5' YX='4' XZ='3' XY='2' XX='1' "
      "FULL_INSTANCE_NAME='f' INSTANCE_NAME='i' PART_NUMBER='p' other='o' OX='99' X='99' XXX='99'/>");
  XMLElement element;
  element.Used = true;
  std::array<double, 12> matrix{};

  EXPECT_TRUE(matrice.Convert(document.Root(), element));
  EXPECT_TRUE(matrice.ToMatrix(element, matrix));

  EXPECT_EQ(element.PartNumber, "p");
  EXPECT_EQ(element.InstanceName, "i");
  EXPECT_EQ(element.FullInstanceName, "f");
  EXPECT_FALSE(element.Used);
  EXPECT_THAT(matrix, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12));
}

TEST_F(MatriceOperations, ARecordIsClearedBeforeItIsFilled) {
  document.Parse("<A PART_NUMBER='p'/>");
  XMLElement element{"old", "old", "old", 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, true};

  EXPECT_TRUE(matrice.Convert(document.Root(), element));

  EXPECT_EQ(element.PartNumber, "p");
  EXPECT_EQ(element.InstanceName, "");
  EXPECT_EQ(element.FullInstanceName, "");
  EXPECT_EQ(element.XX, 0);
  EXPECT_EQ(element.ZO, 0);
  EXPECT_FALSE(element.Used);
}

TEST_F(MatriceOperations, AttributeNamesAreComparedWithCase) {
  document.Parse("<A part_number='p' Part_Number='q' xx='1'/>");
  XMLElement element;

  EXPECT_TRUE(matrice.Convert(document.Root(), element));

  EXPECT_EQ(element.PartNumber, "");
  EXPECT_EQ(element.XX, 0);
}

TEST_F(MatriceOperations, ANodeThatIsNothingIsShown) {
  XMLElement element;

  EXPECT_FALSE(matrice.Convert({}, element));

  EXPECT_THAT(platform.Boxes(), ElementsAre(UnexpectedError("ConvertNodeToXMLElement",
                                                            "Object variable or With block variable not set")));
}

TEST_F(MatriceOperations, ANumberThatIsNoneIsShown) {
  document.Parse("<A XX='1,5'/>");
  XMLElement element;

  EXPECT_FALSE(matrice.Convert(document.Root(), element));

  EXPECT_THAT(platform.Boxes(),
              ElementsAre(UnexpectedError("ConvertNodeToXMLElement", "Type mismatch: \"1,5\" is not a number")));
}

TEST_F(MatriceOperations, TheAttributesOfAnElementAreCounted) {
  auto element = document.Node().append_child("A");
  for (int i = 0; i < 32'767; ++i) element.append_attribute("a");
  XMLElement record;

  EXPECT_TRUE(matrice.Convert(element, record));
  element.append_attribute("a");
  EXPECT_FALSE(matrice.Convert(element, record));

  EXPECT_THAT(platform.Boxes(), ElementsAre(UnexpectedError("ConvertNodeToXMLElement", "Overflow")));
}

TEST_F(MatriceOperations, AnArrayWithoutElementsIsShownByTheConversion) {
  EXPECT_FALSE(matrice.ToMatrix({}, {}));

  EXPECT_THAT(platform.Boxes(), ElementsAre(UnexpectedError("ConvertXMLElementToMatrix", "Subscript out of range")));
}

TEST_F(MatriceOperations, AnArrayWithoutElementsIsShownByTheMultiplication) {
  const PositionMatrix child{};
  PositionMatrix result{};

  EXPECT_FALSE(matrice.Multiply(child, {}, result));

  EXPECT_THAT(platform.Boxes(), ElementsAre(UnexpectedError("MultiplicateMatrixes", "Subscript out of range")));
}

TEST_F(MatriceOperations, ASearchThatFindsSetsTheFlag) {
  bool found = false;

  EXPECT_TRUE(matrice.CheckPN("B", Children({"A", "B"}), found));

  EXPECT_TRUE(found);
}

TEST_F(MatriceOperations, ASearchThatFindsNothingLeavesTheFlagAsItWas) {
  bool clear = false;
  bool set = true;

  EXPECT_TRUE(matrice.CheckPN("C", Children({"A", "B"}), clear));
  EXPECT_TRUE(matrice.CheckPN("C", Children({"A", "B"}), set));

  EXPECT_FALSE(clear);
  EXPECT_TRUE(set);
}

TEST_F(MatriceOperations, ASearchInAListWithoutEntriesIsShown) {
  bool found = false;

  EXPECT_FALSE(matrice.CheckPN("C", {}, found));

  EXPECT_THAT(platform.Boxes(), ElementsAre(UnexpectedError("CheckPN", "Subscript out of range")));
}

TEST_F(MatriceOperations, AnyAncestorAmongTheChildrenCounts) {
  auto& elements = Given("<A PART_NUMBER='A'><B PART_NUMBER='B'><C PART_NUMBER='C'/></B></A>");
  bool used = false;

  EXPECT_TRUE(matrice.ParentsAreUsed(elements, 2, Children({"A"}), used));

  EXPECT_TRUE(used);
}

TEST_F(MatriceOperations, AnElementsOwnPartNumberDoesNotCount) {
  auto& elements = Given("<A PART_NUMBER='A'><B PART_NUMBER='B'><C PART_NUMBER='C'/></B></A>");
  bool used = true;

  EXPECT_TRUE(matrice.ParentsAreUsed(elements, 2, Children({"C"}), used));

  EXPECT_FALSE(used);
}

TEST_F(MatriceOperations, TheRootElementHasNoUsedAncestor) {
  auto& elements = Given("<A PART_NUMBER='A'/>");
  bool used = true;

  EXPECT_TRUE(matrice.ParentsAreUsed(elements, 0, Children({"A"}), used));

  EXPECT_FALSE(used);
}

TEST_F(MatriceOperations, AnAncestorWithoutPartNumberIsPassedOver) {
  auto& elements = Given("<A PART_NUMBER='A'><B><C PART_NUMBER='C'/></B></A>");
  bool used = false;

  EXPECT_TRUE(matrice.ParentsAreUsed(elements, 2, Children({"A", ""}), used));

  EXPECT_TRUE(used);
}

TEST_F(MatriceOperations, OneUsedElementSaysNothingOfTheNext) {
  auto& elements = Given("<R PART_NUMBER='R'><G PART_NUMBER='G'><B PART_NUMBER='B'/></G><B PART_NUMBER='B'/></R>");
  std::vector<int> instances;

  EXPECT_TRUE(matrice.Instances(elements, "B", Children({"G", "B"}), instances));

  EXPECT_THAT(instances, ElementsAre(3));
}

TEST_F(MatriceOperations, AnElementPastTheEndIsShown) {
  auto& elements = Given("<A/>");
  bool used = false;

  EXPECT_FALSE(matrice.ParentsAreUsed(elements, 1, Children({"A"}), used));

  EXPECT_THAT(platform.Boxes(), ElementsAre(UnexpectedError("CheckIfParentsAreUsed", "Subscript out of range")));
}

TEST_F(MatriceOperations, AFailingSearchIsShownOnlyWhereItHappens) {
  auto& elements = Given("<R PART_NUMBER='R'><B PART_NUMBER='B'/></R>");
  std::vector<int> instances;

  EXPECT_FALSE(matrice.Instances(elements, "B", {}, instances));

  EXPECT_THAT(platform.Boxes(), ElementsAre(UnexpectedError("CheckPN", "Subscript out of range")));
}

TEST_F(MatriceOperations, InstancesAreErasedFirst) {
  auto& elements = Given("<R PART_NUMBER='R'/>");
  std::vector<int> instances{4, 5, 6};

  EXPECT_TRUE(matrice.Instances(elements, "nobody", Children({"A"}), instances));

  EXPECT_THAT(instances, IsEmpty());
}

TEST_F(MatriceOperations, AnElementRightBelowTheRootIsComposedOnce) {
  auto& elements = Given(
      "<R PART_NUMBER='R' FULL_INSTANCE_NAME='R' XX='2' YY='2' ZZ='2' XO='1'>"
      "<B PART_NUMBER='B' FULL_INSTANCE_NAME='R\\B' XX='1' YY='1' ZZ='1' XO='10'/></R>");
  PositionMatrix out{};
  ASSERT_TRUE(matrice.ConvertOnce(elements, 1));

  EXPECT_TRUE(matrice.Position(elements, 1, out));

  EXPECT_EQ(out, (PositionMatrix{2, 0, 0, 0, 2, 0, 0, 0, 2, 21, 0, 0}));
}

TEST_F(MatriceOperations, AnElementThatIsNotThereIsShownByThePositioning) {
  auto& elements = Given("<A/>");
  PositionMatrix out{};

  EXPECT_FALSE(matrice.Position(elements, 1, out));

  EXPECT_THAT(platform.Boxes(), ElementsAre(UnexpectedError("PositionnerXML", "Subscript out of range")));
}

}  // namespace
}  // namespace test
}  // namespace quintara

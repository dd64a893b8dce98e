#include <gtest/gtest.h>

#include <string>

#include "matrix/matrix_fixture.h"

namespace quintara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

// Both readers, told by the flag.
class BadMatrixFile : public ::testing::TestWithParam<bool>, protected MatrixBench {
 protected:
  bool Read() { return GetParam() ? Process() : PositionAll(true); }
  std::string Operation() const { return GetParam() ? "ProcessXMLFile" : "PositionAllInstances"; }

  void ExpectRefusedWhileLoading(const std::string& text, const std::string& reason) {
    GivenMatrixText(text);
    GivenFlat({"BOLT"});

    EXPECT_FALSE(Read());

    ASSERT_EQ(platform.Boxes().size(), 1U);
    const auto& box = platform.Boxes()[0];
    EXPECT_EQ(box.style, 16);
    EXPECT_EQ(box.title, "QNTR");
    EXPECT_THAT(box.text, StartsWith("Error in loading XML file \"" + MatrixPath() + "\" : "));
    EXPECT_THAT(box.text, HasSubstr(reason));
    EXPECT_THAT(Positions(), ElementsAre(kIdentityPosition));
  }
};

INSTANTIATE_TEST_SUITE_P(BothReaders, BadMatrixFile, ::testing::Bool(), [](const auto& reader) {
  return reader.param ? std::string("ProcessXMLFile") : std::string("PositionAllInstances");
});

TEST_P(BadMatrixFile, MissingIsRefused) {
  GivenFlat({"BOLT"});

  EXPECT_FALSE(Read());

  ASSERT_EQ(platform.Boxes().size(), 1U);
  EXPECT_THAT(platform.Boxes()[0].text, StartsWith("Error in loading XML file \"" + MatrixPath() + "\" : "));
  EXPECT_THAT(platform.Boxes()[0].text, ::testing::Not(::testing::EndsWith(" : "))) << "the reason is told";
}

TEST_P(BadMatrixFile, EmptyIsRefused) {
  ExpectRefusedWhileLoading("", "the file is empty");
}

TEST_P(BadMatrixFile, CutOffIsRefused) {
  const std::string whole = MatrixText({"R", "R", At(0), {{"BOLT", "BOLT.1", At(1), {}}}});
  ExpectRefusedWhileLoading(whole.substr(0, whole.size() - 7), "line 1");
}

TEST_P(BadMatrixFile, CutOffAnywhereIsRefused) {
  const std::string whole = MatrixText({"R", "R", At(0), {{"BOLT", "BOLT.1", At(1), {}}}});
  GivenFlat({"BOLT"});
  for (std::size_t length = 0; length < whole.size(); ++length) {
    GivenMatrixText(whole.substr(0, length));

    ASSERT_FALSE(Read()) << length;
  }
  EXPECT_EQ(platform.Boxes().size(), whole.size());
}

TEST_P(BadMatrixFile, NoUtf8IsRefused) {
  ExpectRefusedWhileLoading("<R PART_NUMBER='Geh\xE4use'/>", "not valid UTF-8");
}

TEST_P(BadMatrixFile, AnotherEncodingIsRefused) {
  ExpectRefusedWhileLoading("<?xml version='1.0' encoding='UTF-16'?><R/>", "UTF-16");
}

TEST_P(BadMatrixFile, AnEntityBombIsRefused) {
  ExpectRefusedWhileLoading(
      "<?xml version='1.0'?><!DOCTYPE R [<!ENTITY a 'aaaaaaaaaa'><!ENTITY b '&a;&a;&a;&a;&a;&a;&a;&a;'>"
      "<!ENTITY c '&b;&b;&b;&b;&b;&b;&b;&b;'>]><R PART_NUMBER='&c;'/>",
      "document type");
}

TEST_P(BadMatrixFile, AForeignFileIsNeverRead) {
  folder.Write("secret", "BOLT");
  ExpectRefusedWhileLoading("<!DOCTYPE R [<!ENTITY s SYSTEM 'secret'>]><R PART_NUMBER='&s;'/>", "document type");
}

TEST_P(BadMatrixFile, SeveralRootsAreRefused) {
  ExpectRefusedWhileLoading("<R/><R/>", "more than one root");
}

TEST_P(BadMatrixFile, AFolderIsRefused) {
  GivenFlat({"BOLT"});
  const auto path = folder.Path();

  EXPECT_FALSE(GetParam() ? matrice.ProcessXMLFile(root, path)
                          : matrice.PositionAllInstances(root, path, true, document->Selection()));

  ASSERT_EQ(platform.Boxes().size(), 1U);
  EXPECT_THAT(platform.Boxes()[0].text, StartsWith("Error in loading XML file \"" + path + "\" : "));
}

class LoadsWithAnError : public MatrixDocument {
 public:
  bool Load(const std::string&) override { return true; }
  XmlParseError ParseError() const override { return {5, "half read"}; }
};

TEST_P(BadMatrixFile, AParseErrorAfterTheLoadingHasItsOwnWords) {
  GivenFlat({"BOLT"});
  matrice = Cls_Matrice([] { return std::make_unique<LoadsWithAnError>(); });

  EXPECT_FALSE(Read());

  EXPECT_THAT(platform.Boxes(),
              ElementsAre(MatrixBox("Error in reading XML file \"" + MatrixPath() + "\" : half read")));
}

TEST_P(BadMatrixFile, ATextThatIsNoNumberFailsWhenItsElementIsConverted) {
  for (const std::string number : {"nan", "0,5", " ", "", " 1", "1 ", "inf", "1e999", "0x1", "1.0.0"}) {
    MatrixBench bench;
    bench.GivenMatrixText(
        "<R PART_NUMBER='R' FULL_INSTANCE_NAME='R' XX='1' YY='1' ZZ='1'>"
        "<A PART_NUMBER='A' FULL_INSTANCE_NAME='R\\A' XX='1' YY='1' ZZ='1' XO='7'/>"
        "<B PART_NUMBER='BOLT' FULL_INSTANCE_NAME='R\\B' XO='" +
        number + "'/></R>");
    bench.GivenFlat({"A", "BOLT"});

    EXPECT_FALSE(GetParam() ? bench.Process() : bench.PositionAll(true));

    EXPECT_THAT(
        bench.platform.Boxes(),
        ElementsAre(UnexpectedError("ConvertNodeToXMLElement", "Type mismatch: \"" + number + "\" is not a number")));
    EXPECT_THAT(bench.Positions(), ElementsAre(At(7), kIdentityPosition)) << "what was placed before keeps its place";
  }
}

TEST_P(BadMatrixFile, ATextThatIsNoNumberInAnAncestorFailsToo) {
  GivenMatrixText(
      "<R PART_NUMBER='R' FULL_INSTANCE_NAME='R' ZO='x'><B PART_NUMBER='BOLT' FULL_INSTANCE_NAME='R\\B'/></R>");
  GivenFlat({"BOLT"});

  EXPECT_FALSE(Read());

  EXPECT_THAT(platform.Boxes(),
              ElementsAre(UnexpectedError("ConvertNodeToXMLElement", "Type mismatch: \"x\" is not a number")));
}

TEST_P(BadMatrixFile, ATextThatIsNoNumberHurtsNobodyElse) {
  GivenMatrixText(
      "<R PART_NUMBER='R' FULL_INSTANCE_NAME='R' XX='1' YY='1' ZZ='1'>"
      "<A PART_NUMBER='A' FULL_INSTANCE_NAME='R\\A' XX='x'/>"
      "<B PART_NUMBER='BOLT' FULL_INSTANCE_NAME='R\\B' XX='1' YY='1' ZZ='1' XO='3'/></R>");
  GivenFlat({"BOLT"});

  EXPECT_TRUE(Read());

  EXPECT_THAT(Positions(), ElementsAre(At(3)));
}

std::string ManyElements(int count) {
  std::string text = "<R PART_NUMBER='R' FULL_INSTANCE_NAME='R' XX='1' YY='1' ZZ='1'>";
  for (int i = 1; i < count - 1; ++i) text += "<A/>";
  return text + "<B PART_NUMBER='BOLT' FULL_INSTANCE_NAME='B' XX='1' YY='1' ZZ='1' XO='9'/></R>";
}

TEST_P(BadMatrixFile, AsManyElementsAsTheCounterHoldsAreRead) {
  GivenMatrixText(ManyElements(32'767));
  GivenFlat({"BOLT"});

  EXPECT_TRUE(Read());

  EXPECT_THAT(Positions(), ElementsAre(At(9)));
}

TEST_P(BadMatrixFile, OneElementMoreOverflowsTheOperationThatCounts) {
  GivenMatrixText(ManyElements(32'768));
  GivenFlat({"BOLT"});

  EXPECT_FALSE(Read());

  EXPECT_THAT(platform.Boxes(), ElementsAre(UnexpectedError("GetInstancesFromPN", "Overflow")));
  EXPECT_THAT(Positions(), ElementsAre(kIdentityPosition));
}

std::string ManyAttributes(int count) {
  std::string text = "<R PART_NUMBER='BOLT' FULL_INSTANCE_NAME='R' XO='2'";
  for (int i = 3; i < count; ++i) text += " a" + std::to_string(i) + "=''";
  return text + "/>";
}

TEST_P(BadMatrixFile, AsManyAttributesAsTheCounterHoldsAreRead) {
  GivenMatrixText(ManyAttributes(32'767));
  GivenFlat({"BOLT"});

  EXPECT_TRUE(Read());

  EXPECT_EQ(Positions()[0][9], 2);
}

TEST_P(BadMatrixFile, OneAttributeMoreOverflowsTheOperationThatCounts) {
  GivenMatrixText(ManyAttributes(32'768));
  GivenFlat({"BOLT"});

  EXPECT_FALSE(Read());

  EXPECT_THAT(platform.Boxes(), ElementsAre(UnexpectedError("GetInstancesFromPN", "Overflow")));
}

const std::string kOverlong = ManyAttributes(32'768).substr(2);
const std::string kNoNumber = "<B PART_NUMBER='BOLT' FULL_INSTANCE_NAME='b' XO='x'/>";

TEST_P(BadMatrixFile, AnOverlongElementFailsBeforeAWrongNumberBehindIt) {
  GivenMatrixText("<R><L" + kOverlong + kNoNumber + "</R>");
  GivenFlat({"BOLT"});

  EXPECT_FALSE(Read());

  EXPECT_THAT(platform.Boxes(), ElementsAre(UnexpectedError("GetInstancesFromPN", "Overflow")));
}

TEST_P(BadMatrixFile, AWrongNumberFailsBeforeAnOverlongElementBehindIt) {
  GivenMatrixText("<R>" + kNoNumber + "<L" + kOverlong + "</R>");
  GivenFlat({"BOLT"});

  EXPECT_FALSE(Read());

  EXPECT_THAT(platform.Boxes(),
              ElementsAre(UnexpectedError("ConvertNodeToXMLElement", "Type mismatch: \"x\" is not a number")));
}

TEST_P(BadMatrixFile, AsManyChildrenAsTheCounterHoldsAreCounted) {
  GivenMatrix({"R", "R", At(0), {{"BOLT", "BOLT.1", At(1), {}}}});
  GivenFlat(std::vector<std::string>(32'767, "BOLT"));

  // The one reader places them all; the other removes neighbours until none is left behind the last.
  const bool read = Read();

  EXPECT_EQ(read, GetParam());
  for (const auto& box : platform.Boxes()) EXPECT_THAT(box.text, ::testing::Not(HasSubstr("Overflow")));
}

TEST_P(BadMatrixFile, OneChildMoreOverflows) {
  GivenMatrix({"R", "R", At(0), {{"BOLT", "BOLT.1", At(1), {}}}});
  GivenFlat(std::vector<std::string>(32'768, "BOLT"));

  EXPECT_FALSE(Read());

  EXPECT_THAT(platform.Boxes(), ElementsAre(UnexpectedError(Operation(), "Overflow")));
}

TEST_P(BadMatrixFile, AHundredMegabytesOnOneLineAreRead) {
  std::string text = "<R PART_NUMBER='BOLT' FULL_INSTANCE_NAME='R' XX='1' YY='1' ZZ='1' XO='4' long='";
  text.append(100'000'000, 'x');
  GivenMatrixText(text + "'/>");
  GivenFlat({"BOLT"});

  EXPECT_TRUE(Read());

  EXPECT_THAT(Positions(), ElementsAre(At(4)));
}

TEST_P(BadMatrixFile, AHundredMegabytesOfElementsOverflow) {
  std::string text = "<R>";
  text.reserve(100'000'100);
  while (text.size() < 100'000'000) text += "<PART PART_NUMBER='BOLT' FULL_INSTANCE_NAME='R\\BOLT' XX='1'/>";
  GivenMatrixText(text + "</R>");
  GivenFlat({"BOLT"});

  EXPECT_FALSE(Read());

  EXPECT_THAT(platform.Boxes(), ElementsAre(UnexpectedError("GetInstancesFromPN", "Overflow")));
}

}  // namespace
}  // namespace quintara::test

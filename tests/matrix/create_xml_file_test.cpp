#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "base/xml.h"
#include "matrix/matrix_fixture.h"

namespace quintara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class CreateXMLFile : public MatrixTest {
 protected:
  XmlNode Written() {
    EXPECT_TRUE(written_.Parse(folder.Read("matrix.xml"))) << written_.ParseError().reason;
    return written_.Root();
  }
  // A product whose only fault is that one node deep in the tree has no part number.
  Node TreeWithANamelessPart() {
    return {"A", "A", At(0), {{"B", "B.1", At(0), {{"C", "C.1", At(0), {{"", "D.1", At(0), {}}}}}}}};
  }

 private:
  XmlDocument written_;
};

TEST_F(CreateXMLFile, WritesTheInstructionAndTheRootAndNothingElse) {
  GivenProduct({"A", "A", At(0), {{"B", "B.1", At(1), {}}}});

  EXPECT_TRUE(Create());

  EXPECT_THAT(folder.Read("matrix.xml"),
              StartsWith("<?xml version='1.0' encoding='UTF-8'?><PRODUCT PART_NUMBER=\"A\""));
  EXPECT_THAT(folder.Read("matrix.xml"), ::testing::EndsWith("/></PRODUCT>"));
  EXPECT_THAT(folder.Names(), ElementsAre("matrix.xml"));
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(CreateXMLFile, WritesFifteenAttributesInTheirOrder) {
  GivenProduct({"A", "A", At(0), {{"B", "B.1", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10.5, -11, 1e-7}, {}}}});

  ASSERT_TRUE(Create());

  EXPECT_THAT(folder.Read("matrix.xml"),
              HasSubstr("<PART PART_NUMBER=\"B\" INSTANCE_NAME=\"B.1\" FULL_INSTANCE_NAME=\"A\\B.1\" XX=\"1\" XY=\"2\" "
                        "XZ=\"3\" YX=\"4\" YY=\"5\" YZ=\"6\" ZX=\"7\" ZY=\"8\" ZZ=\"9\" XO=\"10.5\" YO=\"-11\" "
                        "ZO=\"1e-07\"/>"));
}

TEST_F(CreateXMLFile, WritesARootWithoutChildrenAsASinglePart) {
  GivenProduct({"A", "A", At(0), {}});

  ASSERT_TRUE(Create());

  EXPECT_STREQ(Written().name(), "PART");
  EXPECT_FALSE(Written().first_child());
}

TEST_F(CreateXMLFile, NestsTheElementsAsTheTreeIs) {
  GivenProduct({"A", "A", At(0), {{"B", "B.1", At(0), {{"C", "C.1", At(0), {}}}}, {"C", "C.7", At(0), {}}}});

  ASSERT_TRUE(Create());

  const auto first = Written().first_child();
  EXPECT_STREQ(first.name(), "PRODUCT");
  EXPECT_STREQ(first.first_child().attribute("FULL_INSTANCE_NAME").value(), "A\\B.1\\C.1");
  EXPECT_STREQ(first.first_child().name(), "PART");
  EXPECT_STREQ(first.next_sibling().attribute("FULL_INSTANCE_NAME").value(), "A\\C.7");
}

TEST_F(CreateXMLFile, WritesTheRootsOwnPosition) {
  GivenProduct({"A", "A", At(0), {{"B", "B.1", At(1), {}}}});
  root->Position()->SetComponents(At(7, 8, 9));

  ASSERT_TRUE(Create());

  EXPECT_STREQ(Written().attribute("XO").value(), "7");
  EXPECT_STREQ(Written().attribute("ZO").value(), "9");
}

TEST_F(CreateXMLFile, TellsTwoInstancesOfOnePartByTheirNamesOnly) {
  GivenProduct({"A", "A", At(0), {{"B", "B.1", At(1), {}}, {"B", "B.2", At(2), {}}}});

  ASSERT_TRUE(Create());

  const auto first = Written().first_child();
  EXPECT_STREQ(first.attribute("PART_NUMBER").value(), first.next_sibling().attribute("PART_NUMBER").value());
  EXPECT_STREQ(first.attribute("INSTANCE_NAME").value(), "B.1");
  EXPECT_STREQ(first.next_sibling().attribute("INSTANCE_NAME").value(), "B.2");
  EXPECT_STREQ(first.next_sibling().attribute("FULL_INSTANCE_NAME").value(), "A\\B.2");
}

TEST_F(CreateXMLFile, DoesNotEscapeABackslashInAName) {
  GivenProduct({"A", "A", At(0), {{"B", "x\\y", At(1), {}}}});

  ASSERT_TRUE(Create());

  EXPECT_STREQ(Written().first_child().attribute("FULL_INSTANCE_NAME").value(), "A\\x\\y");
}

TEST_F(CreateXMLFile, KeepsNamesOfEveryScript) {
  GivenProduct({"Geh\xC3\xA4use <\"&'>", "r", At(0), {{"\xE9\x83\xA8\xE5\x93\x81", "\xF0\x9F\x94\xA9.1", At(1), {}}}});

  ASSERT_TRUE(Create());

  EXPECT_STREQ(Written().attribute("PART_NUMBER").value(), "Geh\xC3\xA4use <\"&'>");
  EXPECT_STREQ(Written().first_child().attribute("PART_NUMBER").value(), "\xE9\x83\xA8\xE5\x93\x81");
  EXPECT_STREQ(Written().first_child().attribute("INSTANCE_NAME").value(), "\xF0\x9F\x94\xA9.1");
}

TEST_F(CreateXMLFile, AsksTheHostInItsOrder) {
  GivenProduct({"A", "A", At(0), {{"B", "B.1", At(1), {}}}});
  TheGate().StartRecording();

  ASSERT_TRUE(Create());

  const auto path = MatrixPath();
  EXPECT_THAT(
      TheGate().Record(),
      ElementsAre("Product.PartNumber", "Product.PartNumber", "Product.Name", "Product.Products", "Products.Count",
                  "Product.Position", "Position.GetComponents",  //
                  "Products.Item(1)", "Product.PartNumber", "Product.PartNumber", "Product.Name", "Product.Products",
                  "Products.Count", "Product.Position", "Position.GetComponents", "Files.Write(" + path + ".new)",
                  "FileSystem.FileExists(" + path + ")", "Files.Rename(" + path + ".new, " + path + ")"));
}

TEST_F(CreateXMLFile, WritesAPartThatIsNotInDesignForm) {
  GivenProduct({"A", "A", At(0), {{"B", "B.1", At(1), {}}}});
  host.SetForm(Child(1), ComponentForm::kWithoutDesign);

  ASSERT_TRUE(Create());

  EXPECT_STREQ(Written().first_child().attribute("PART_NUMBER").value(), "B");
  EXPECT_THROW(Child(1)->PartNumber(), Failure) << "the component is set back";
}

TEST_F(CreateXMLFile, GivesASilentFalseForAPartWithoutPartNumber) {
  GivenProduct(TreeWithANamelessPart());
  folder.Write("matrix.xml", "old");

  EXPECT_FALSE(Create());

  EXPECT_EQ(folder.Read("matrix.xml"), "old");
  EXPECT_THAT(folder.Names(), ElementsAre("matrix.xml"));
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(CreateXMLFile, GivesASilentFalseForAComponentThatIsNotLoaded) {
  GivenProduct({"A", "A", At(0), {{"B", "B.1", At(1), {}}}});
  host.SetForm(Child(1), ComponentForm::kUnloaded);

  EXPECT_FALSE(Create());

  EXPECT_FALSE(folder.Has("matrix.xml"));
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(CreateXMLFile, GivesASilentFalseForARootThatIsNothing) {
  EXPECT_FALSE(matrice.CreateXMLFile(nullptr, MatrixPath()));

  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(CreateXMLFile, GivesASilentFalseForEachFailingCallOfTheHost) {
  GivenProduct({"A", "A", At(0), {{"B", "B.1", At(1), {}}}});
  folder.Write("matrix.xml", "old");
  constexpr int kCallsOfTheWalk = 15;
  for (int call = 1; call <= kCallsOfTheWalk; ++call) {
    TheGate().Reset();
    TheGate().FailCall(call);

    const bool created = Create();

    EXPECT_TRUE(TheGate().HasFailed()) << call;
    EXPECT_THAT(platform.Boxes(), IsEmpty()) << call;
    // The first reading of a part number is the test of the design form: after it the part number
    // is read in work mode 0 all the same.
    const bool isDesignTest = call == 1 || call == 9;
    EXPECT_EQ(created, isDesignTest) << call;
    if (!created) {
      EXPECT_EQ(folder.Read("matrix.xml"), "old") << call;
    }
    host.SetForm(root, ComponentForm::kDesign);
    host.SetForm(Child(1), ComponentForm::kDesign);
    folder.Write("matrix.xml", "old");
  }
}

TEST_F(CreateXMLFile, ReplacesAnOldFile) {
  GivenProduct({"A", "A", At(0), {}});
  folder.Write("matrix.xml", "old");
  TheGate().StartRecording();

  EXPECT_TRUE(Create());

  const auto path = MatrixPath();
  EXPECT_THAT(folder.Read("matrix.xml"), HasSubstr("PART_NUMBER=\"A\""));
  const auto& record = TheGate().Record();
  EXPECT_THAT(std::vector<std::string>(record.end() - 4, record.end()),
              ElementsAre("Files.Write(" + path + ".new)", "FileSystem.FileExists(" + path + ")",
                          "FileSystem.DeleteFile(" + path + ", True)", "Files.Rename(" + path + ".new, " + path + ")"));
}

TEST_F(CreateXMLFile, ShowsAFailingWriteAndKeepsTheOldFile) {
  GivenProduct({"A", "A", At(0), {}});
  folder.Write("matrix.xml", "old");
  TheGate().FailOperation("Files.Write", 1, Failure(failure::kDiskFull, "Disk full"));

  EXPECT_FALSE(Create());

  EXPECT_THAT(platform.Boxes(), ElementsAre(UnexpectedError("CreateXMLFile", "Disk full")));
  EXPECT_EQ(folder.Read("matrix.xml"), "old");
  EXPECT_THAT(folder.Names(), ElementsAre("matrix.xml"));
}

// The walk over a root without children makes seven calls, the writing beside is the eighth.
TEST_F(CreateXMLFile, CleansUpAfterAFailingTestForTheOldFile) {
  GivenProduct({"A", "A", At(0), {}});
  folder.Write("matrix.xml", "old");
  TheGate().FailCall(9);

  EXPECT_FALSE(Create());

  EXPECT_THAT(platform.Boxes(), ElementsAre(UnexpectedError("CreateXMLFile", "Injected failure")));
  EXPECT_EQ(folder.Read("matrix.xml"), "old");
  EXPECT_THAT(folder.Names(), ElementsAre("matrix.xml"));
}

TEST_F(CreateXMLFile, CleansUpAfterAFailingDeletionOfTheOldFile) {
  GivenProduct({"A", "A", At(0), {}});
  folder.Write("matrix.xml", "old");
  TheGate().FailCall(10);

  EXPECT_FALSE(Create());

  EXPECT_THAT(platform.Boxes(), ElementsAre(UnexpectedError("CreateXMLFile", "Injected failure")));
  EXPECT_EQ(folder.Read("matrix.xml"), "old");
  EXPECT_THAT(folder.Names(), ElementsAre("matrix.xml"));
}

TEST_F(CreateXMLFile, ShowsAForeignExceptionToo) {
  GivenProduct({"A", "A", At(0), {}});
  Cls_Matrice faulty([]() -> std::unique_ptr<MatrixDocument> { throw std::runtime_error("foreign"); });

  EXPECT_FALSE(faulty.CreateXMLFile(root, MatrixPath()));
  EXPECT_FALSE(faulty.ProcessXMLFile(root, MatrixPath()));
  EXPECT_FALSE(faulty.PositionAllInstances(root, MatrixPath(), true, document->Selection()));

  EXPECT_THAT(platform.Boxes(),
              ElementsAre(UnexpectedError("CreateXMLFile", "foreign"), UnexpectedError("ProcessXMLFile", "foreign"),
                          UnexpectedError("PositionAllInstances", "foreign")));
}

TEST_F(CreateXMLFile, GivesASilentFalseForANameWithANul) {
  GivenProduct({"A", "A", At(0), {{"B", std::string("x\0y", 3), At(0), {}}}});

  EXPECT_FALSE(Create());

  EXPECT_FALSE(folder.Has("matrix.xml"));
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(CreateXMLFile, WritesMoreElementsOverSeveralLevelsThanOneProductMayHold) {
  Node group{"G", "G", At(0), {}};
  group.children.assign(200, {"B", "B", At(0), {}});
  Node tree{"R", "R", At(0), {}};
  tree.children.assign(200, group);
  GivenProduct(tree);

  EXPECT_TRUE(Create());

  EXPECT_EQ(std::ranges::distance(Written().last_child().children()), 200);
}

TEST_F(CreateXMLFile, KeepsTheNewFileBesideWhenItCannotBePutInPlace) {
  GivenProduct({"A", "A", At(0), {}});
  folder.Write("matrix.xml", "old");
  TheGate().FailOperation("Files.Rename", 1, Failure(failure::kPermissionDenied));

  EXPECT_FALSE(Create());

  EXPECT_THAT(platform.Boxes(),
              ElementsAre(UnexpectedError("CreateXMLFile",
                                          "Permission denied (the new file is kept as \"" + MatrixPath() + ".new\")")));
  EXPECT_THAT(folder.Read("matrix.xml.new"), HasSubstr("PART_NUMBER=\"A\""));
}

TEST_F(CreateXMLFile, ShowsAFolderThatIsNotThere) {
  GivenProduct({"A", "A", At(0), {}});
  const auto path = folder.Path("nowhere") + "/matrix.xml";

  EXPECT_FALSE(matrice.CreateXMLFile(root, path));

  ASSERT_EQ(platform.Boxes().size(), 1U);
  EXPECT_THAT(platform.Boxes()[0].text, StartsWith("Unexpected error in function Cls_Matrice.CreateXMLFile : "));
  EXPECT_THAT(platform.Boxes()[0].text, HasSubstr(path));
}

TEST_F(CreateXMLFile, ShowsANameThatNoReaderWouldTake) {
  GivenProduct({"A", "A", At(0), {{"B", "\x02", At(0), {}}}});
  folder.Write("matrix.xml", "old");

  EXPECT_FALSE(Create());

  EXPECT_THAT(platform.Boxes(),
              ElementsAre(UnexpectedError(
                  "CreateXMLFile", "The XML document can't be written: a control character is not allowed here")));
  EXPECT_EQ(folder.Read("matrix.xml"), "old");
}

class FaultyDocument : public MatrixDocument {
 public:
  XmlParseError ParseError() const override { return {-1072896683, "a fault"}; }
};

TEST_F(CreateXMLFile, ShowsAParseErrorOfTheDocument) {
  GivenProduct({"A", "A", At(0), {}});
  folder.Write("matrix.xml", "old");
  Cls_Matrice faulty([] { return std::make_unique<FaultyDocument>(); });

  EXPECT_FALSE(faulty.CreateXMLFile(root, MatrixPath()));

  EXPECT_THAT(platform.Boxes(), ElementsAre(MatrixBox("The XML File contains some errors : a fault")));
  EXPECT_EQ(folder.Read("matrix.xml"), "old");
}

TEST_F(CreateXMLFile, ShowsADocumentThatCannotBeMade) {
  GivenProduct({"A", "A", At(0), {}});
  Cls_Matrice faulty([]() -> std::unique_ptr<MatrixDocument> { throw Failure(failure::kCannotCreateObject); });

  EXPECT_FALSE(faulty.CreateXMLFile(root, MatrixPath()));

  EXPECT_THAT(platform.Boxes(), ElementsAre(UnexpectedError("CreateXMLFile", "ActiveX component can't create object")));
}

TEST_F(CreateXMLFile, WritesTheSameBytesAgain) {
  GivenProduct({"A", "A", At(0), {{"B", "B.1", At(0.1, 1.0 / 3.0, 2e300), {}}}});

  ASSERT_TRUE(Create());
  const auto first = folder.Read("matrix.xml");
  ASSERT_TRUE(Create());

  EXPECT_EQ(folder.Read("matrix.xml"), first);
}

Node RootWithChildren(int count) {
  Node root{"R", "R", At(0), {}};
  root.children.assign(static_cast<std::size_t>(count), {"B", "B", At(0), {}});
  return root;
}

TEST_F(CreateXMLFile, WritesAsManyChildrenAsTheCounterHolds) {
  GivenProduct(RootWithChildren(32'767));

  EXPECT_TRUE(Create());

  EXPECT_EQ(std::ranges::distance(Written().children()), 32'767);
}

TEST_F(CreateXMLFile, GivesASilentFalseForOneChildMore) {
  GivenProduct(RootWithChildren(32'768));
  folder.Write("matrix.xml", "old");

  EXPECT_FALSE(Create());

  EXPECT_EQ(folder.Read("matrix.xml"), "old");
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(CreateXMLFile, WalksADeepTreeWithoutTheStack) {
  AssemblyStructure structure{};
  structure.definitions.push_back({"P", false, {}});
  constexpr std::size_t kDepth = 4'000;
  for (std::size_t i = 1; i <= kDepth; ++i) structure.definitions.push_back({"P", true, {{"n", i - 1, At(1)}}});
  structure.root = kDepth;
  document = host.Build(structure);
  root = document->Product();

  EXPECT_TRUE(Create());

  std::size_t depth = 0;
  for (auto node = Written(); node; node = node.first_child()) ++depth;
  EXPECT_EQ(depth, kDepth + 1);
}

}  // namespace
}  // namespace quintara::test

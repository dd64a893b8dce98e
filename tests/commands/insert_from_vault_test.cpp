#include "access/utils/Cls_Utils.h"
#include "commands/Cls_InsertFromVD.h"
#include "commands/zorva_mocks.h"
#include "positioning/wip_bench.h"
#include "support/tiny_files.h"

namespace quintara::test {
namespace {

using testing::AnyOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::NiceMock;
using testing::Return;
using veldora::VdObject;

const Box kIsThere{"Ca existe deja", 0, "Quintara"};
const Box kIsOld{
    "The matrix has been created with an old version of QNTR (< DROP 4).\r\nThe instances can't be positioned.\r\n"
    "Please generate a new matrix for this product.",
    kInformation, "Quintara"};

Box NoDocument(const std::string& description) {
  return TextBox("QD.INSERTWLT.CANT_RETRIEVE_ZORVA_ACTIVEDOCUMENT", kCriticalModal, {description});
}

Box NoMatrix() {
  return TextBox("QD.ALLINSTANCES.NO_MATRIX_FOR_ROOT_IN_VELDORA", kInformationModal);
}

// A work in progress of BOLT, PLATE and BOLT, whose matrix is a workbook, is active.
class InsertFromVault : public testing::Test, protected WipBench {
 protected:
  InsertFromVault() {
    EXPECT_TRUE(Init());
    bolt = AddPart("BOLT");
    GivenWip({"BOLT", "PLATE", "BOLT"});
    GivenWorkbook(Plant());
  }

  void Check(const Ref<VdObject>& object) { Cls_InsertFromVD().Run(object); }
  std::vector<Box> BoxesOfCheck(const Ref<VdObject>& object) {
    return BoxesOf([&] { Check(object); });
  }
  // The document that the root's marks lead to.
  Ref<VdObject> Matrix() {
    return Store()->ObjectById(static_cast<std::int16_t>(std::stoi(Utils().ReadStringProperty(root, "DocExcelCID"))),
                               std::stoi(Utils().ReadStringProperty(root, "DocExcelOID")));
  }
  // On every road.
  void ExpectSpreadsheetGone() {
    EXPECT_EQ(spreadsheet->running, 0);
    EXPECT_THAT(spreadsheet->open, IsEmpty());
    EXPECT_THAT(spreadsheet->saved, IsEmpty());
  }
  void ExpectSilence(const Ref<VdObject>& object) {
    EXPECT_THAT(BoxesOfCheck(object), IsEmpty());
    ExpectSpreadsheetGone();
  }

  Ref<VdObject> bolt;
};

TEST_F(InsertFromVault, TellsOfAComponentThatIsThere) {
  EXPECT_THAT(BoxesOfCheck(AddPart("PLATE")), ElementsAre(kIsThere));
  ExpectSpreadsheetGone();
}

TEST_F(InsertFromVault, TellsOfEachComponent) {
  EXPECT_THAT(BoxesOfCheck(bolt), ElementsAre(kIsThere, kIsThere));
}

TEST_F(InsertFromVault, TellsNothingOfAComponentThatIsntThere) {
  ExpectSilence(AddPart("NUT"));
}

TEST_F(InsertFromVault, ComparesPartNumbersExactly) {
  ExpectSilence(AddPart("Plate"));
  ExpectSilence(AddPart("PLATE "));
  ExpectSilence(AddPart("PLAT"));
}

TEST_F(InsertFromVault, TellsNothingInAnEmptyWip) {
  GivenWip({});
  GivenWorkbook(Plant());

  ExpectSilence(bolt);
}

TEST_F(InsertFromVault, LooksAtDirectChildrenOnly) {
  const Node group{"GROUP", "GROUP.1", kIdentityPosition, {{"BOLT", "BOLT.1", kIdentityPosition, {}}}};
  root = host.Build(StructureOf({"WIP~~TEST", "WIP~~TEST", kIdentityPosition, {group}}))->Product();
  Mark("WIP", "TRUE");
  GivenWorkbook(Plant());

  ExpectSilence(bolt);
}

TEST_F(InsertFromVault, TakesThePartNumberFromItsAttributeWhateverTheSettings) {
  Process().gAttrPartNumber = "CN_ID";

  EXPECT_THAT(BoxesOfCheck(bolt), ElementsAre(kIsThere, kIsThere));
}

TEST_F(InsertFromVault, TellsOfAnOldMatrixAndGoesOn) {
  for (const auto& age : {Variant(), Variant(std::string())}) {
    List()[{1, 4}] = age;

    EXPECT_THAT(BoxesOfCheck(bolt), ElementsAre(kIsOld, kIsThere, kIsThere));
    ExpectSpreadsheetGone();
  }
}

TEST_F(InsertFromVault, TakesAnythingInTheAgeCellForANewMatrix) {
  for (const auto& age : {Variant(" "), Variant(0.0), Variant(false)}) {
    List().clear();
    List()[{1, 4}] = age;

    ExpectSilence(AddPart("NUT"));
  }
}

TEST_F(InsertFromVault, LooksForTheAgeInTheSecondWorksheetOnly) {
  Tree().clear();
  List().erase({2, 4});
  List().erase({1, 3});

  ExpectSilence(AddPart("NUT"));
}

TEST_F(InsertFromVault, CallsTheHostsInThisOrder) {
  EXPECT_THAT(
      CallsOfHosts([&] { Check(bolt); }),
      ElementsAre("Application.ActiveDocument", "Document.AsProductDocument", "ProductDocument.Product",
                  "Product.Parameters", "Parameters.Count", "Parameters.Item(WIP)", "Parameter.ValueAsString",
                  "Product.Parameters", "Parameters.Count", "Parameters.Item(DocExcelCID)", "Parameter.ValueAsString",
                  "Product.Parameters", "Parameters.Count", "Parameters.Item(DocExcelOID)", "Parameter.ValueAsString",
                  "Platform.Create(Excel.Application)", "ExcelApplication.Workbooks",
                  "Workbooks.Open(PLANT Matrix.xls)", "ExcelApplication.ActiveWorkbook", "Workbook.Worksheets",
                  "Worksheets.Item(1)", "Worksheets.Item(2)", "Worksheet.Cells(2: 1, 4)", "Range.Value",
                  "Product.Products", "Products.Count", "Products.Item(1)", "Product.PartNumber", "Products.Item(2)",
                  "Product.PartNumber", "Products.Item(3)", "Product.PartNumber", "Workbook.Close(False)",
                  "ExcelApplication.Quit"));
}

TEST_F(InsertFromVault, ChangesNothing) {
  Check(bolt);  // the vault notes the first copy of a file
  const auto vaultBefore = Dump();
  const auto components = ComponentsOf(root);

  Check(bolt);

  EXPECT_EQ(ComponentsOf(root), components);
  EXPECT_EQ(Dump(), vaultBefore);
}

TEST_F(InsertFromVault, OpensTheNewestRevisionOfTheMatrix) {
  WriteWork("PLANT Matrix.xls", "of an older run");
  const auto matrix = Matrix();
  CheckIn(matrix);
  const auto next = vault->NewRevision(matrix);
  folder.Write("source/PLANT Matrix.xls", "a newer workbook");
  vault->StoreFile(next, folder.Path("source/PLANT Matrix.xls"));

  EXPECT_THAT(BoxesOfCheck(bolt), ElementsAre(kIsThere, kIsThere));
  EXPECT_EQ(ReadWork("PLANT Matrix.xls"), "a newer workbook");
}

TEST_F(InsertFromVault, NamesTheWorkbookByTheAttributeOfTheSettings) {
  Process().gAttrDescription = "CN_ID";
  const auto name = TextOf(Matrix(), "CN_ID") + ".xls";

  EXPECT_THAT(CallsOfHosts([&] { Check(bolt); }), Contains("Workbooks.Open(" + name + ")"));
  EXPECT_TRUE(WorkHas(name));
}

TEST_F(InsertFromVault, EndsWithoutAWordWhenTheStartFails) {
  gate->FailOperation("Application.GetItem");

  const auto boxes = BoxesOfCheck(bolt);

  gate->Reset();
  // The start's own.
  EXPECT_THAT(boxes, ElementsAre(Report("Cls_Init.Init", kCritical, "Injected failure")));
}

TEST_F(InsertFromVault, TellsWhyTheActiveDocumentCantBeTaken) {
  gate->FailOperation("Application.ActiveDocument", 1, Failure(failure::kDeviceError, "cable"));

  const auto boxes = BoxesOfCheck(bolt);

  gate->Reset();
  EXPECT_THAT(boxes, ElementsAre(NoDocument("cable")));
}

TEST_F(InsertFromVault, NeedsAnActiveDocument) {
  document->Close();
  const auto why = FailureOf([&] { host.Application()->ActiveDocument(); }).Description();

  EXPECT_THAT(BoxesOfCheck(bolt), ElementsAre(NoDocument(why)));
}

TEST_F(InsertFromVault, NeedsADocumentFromAHostThatGivesNone) {
  const auto zorva = std::make_shared<NiceMock<OddZorva>>(host.Application());
  ON_CALL(*zorva, ActiveDocument).WillByDefault(Return(Ref<AnyObject>()));
  Process().gZorva = Ref<zorva::Application>(zorva);

  EXPECT_THAT(BoxesOfCheck(bolt), ElementsAre(NoDocument("")));
}

TEST_F(InsertFromVault, SaysNothingOfADocumentThatIsNoProduct) {
  folder.Write("work/NUT.stp", TinyStep("NUT"));
  host.Application()->Documents()->Open(WorkPath("NUT.stp"));

  ExpectSilence(bolt);
}

TEST_F(InsertFromVault, NeedsAWip) {
  GivenProduct({"BOLT"});

  EXPECT_THAT(BoxesOfCheck(bolt), ElementsAre(TextBox("QD.INSERTWLT.IS_NOT_WIP", kCriticalModal, {""})));
}

TEST_F(InsertFromVault, KnowsWorkbooksOnly) {
  GivenWip({"BOLT"});
  GivenXmlMatrix(Plant());

  EXPECT_THAT(BoxesOfCheck(bolt), ElementsAre(NoMatrix()));
  ExpectSpreadsheetGone();
}

TEST_F(InsertFromVault, NeedsBothIdsOfTheMatrix) {
  for (const auto* known : {"DocExcelCID", "DocExcelOID"}) {
    GivenWip({"BOLT"});
    Mark(known, "5");

    EXPECT_THAT(BoxesOfCheck(bolt), ElementsAre(NoMatrix())) << known;
  }
}

TEST_F(InsertFromVault, NeedsTheDocumentOfItsMatrix) {
  Utils().WriteStringProperty(root, "DocExcelOID", "99999");

  EXPECT_THAT(BoxesOfCheck(bolt), ElementsAre(NoMatrix()));
}

TEST_F(InsertFromVault, SaysNothingOfIdsThatAreNoNumbers) {
  Utils().WriteStringProperty(root, "DocExcelOID", "many");
  ExpectSilence(bolt);
  Utils().WriteStringProperty(root, "DocExcelOID", "99999999999");
  ExpectSilence(bolt);
  Utils().WriteStringProperty(root, "DocExcelOID", "5");
  Utils().WriteStringProperty(root, "DocExcelCID", "32768");
  ExpectSilence(bolt);
}

TEST_F(InsertFromVault, NeedsTheFileOfItsMatrix) {
  WriteWork("PLANT Matrix.xls", "of an older run");
  gate->FailOperation("VdObject.CopyFileTo");
  gate->FailOperation("VdSessionUtil.CopyVaultFile");
  gate->FailOperation("VdSessionUtil.CopyDocumentFile");

  const auto boxes = BoxesOfCheck(bolt);

  gate->Reset();
  EXPECT_THAT(boxes, ElementsAre(TextBox("QD.ALLINSTANCES.RETRIEVE_MATRIX_FAILED", kCriticalModal)));
  ExpectSpreadsheetGone();
}

TEST_F(InsertFromVault, NeedsTheFileWhereItLooksForIt) {
  GivenBlindFileSystem();

  EXPECT_THAT(BoxesOfCheck(bolt), ElementsAre(TextBox("QD.ALLINSTANCES.NO_MATRIX_FOR_FILE", kInformationModal,
                                                      {WorkPath("PLANT Matrix.xls")})));
  ExpectSpreadsheetGone();
}

TEST_F(InsertFromVault, SaysNothingWithoutASpreadsheetApplication) {
  platform.Native().RegisterMaker(excel::kProgramName, [] { return Ref<AnyObject>(); });

  EXPECT_THAT(BoxesOfCheck(bolt), IsEmpty());
}

TEST_F(InsertFromVault, SaysNothingOfAWorkbookWithOneWorksheet) {
  spreadsheet->sheets.resize(1);

  ExpectSilence(bolt);
}

TEST_F(InsertFromVault, SaysNothingWithoutAnObject) {
  ExpectSilence(nullptr);
}

TEST_F(InsertFromVault, EndsAtAComponentWithoutAPartNumber) {
  host.SetForm(Child(2), ComponentForm::kUnloaded);

  EXPECT_THAT(BoxesOfCheck(bolt), ElementsAre(kIsThere));
  ExpectSpreadsheetGone();
}

// The marks are those of the real root, the children are made up.
class MadeUpChildren : public InsertFromVault {
 protected:
  MadeUpChildren() {
    ON_CALL(*zorva, ActiveDocument).WillByDefault(Return(Ref<AnyObject>(made)));
    ON_CALL(*made, Product).WillByDefault(Return(Ref<zorva::Product>(product)));
    ON_CALL(*product, Parameters).WillByDefault(Return(root->Parameters()));
    ON_CALL(*product, Products).WillByDefault(Return(Ref<zorva::Products>(children)));
    Process().gZorva = Ref<zorva::Application>(zorva);
  }

  std::shared_ptr<NiceMock<OddZorva>> zorva = std::make_shared<NiceMock<OddZorva>>(host.Application());
  std::shared_ptr<NiceMock<MockDocument>> made = std::make_shared<NiceMock<MockDocument>>();
  std::shared_ptr<NiceMock<MockProduct>> product = std::make_shared<NiceMock<MockProduct>>();
  std::shared_ptr<NiceMock<MockProducts>> children = std::make_shared<NiceMock<MockProducts>>();
};

TEST_F(MadeUpChildren, ThatAreNothingArePassedOver) {
  ON_CALL(*children, Count).WillByDefault(Return(3));
  ON_CALL(*children, Item(2)).WillByDefault(Return(Child(1)));

  EXPECT_THAT(BoxesOfCheck(bolt), ElementsAre(kIsThere));
  ExpectSpreadsheetGone();
}

TEST_F(MadeUpChildren, AreNoMoreThanSixteenBitsCount) {
  ON_CALL(*children, Count).WillByDefault(Return(32'768));
  EXPECT_CALL(*children, Item).Times(0);

  ExpectSilence(bolt);
}

TEST_F(MadeUpChildren, AreAsManyAsSixteenBitsCount) {
  ON_CALL(*children, Count).WillByDefault(Return(32'767));
  EXPECT_CALL(*children, Item).Times(32'767);

  ExpectSilence(bolt);
}

TEST_F(InsertFromVault, ClosesTheWorkbookAgainWhenThatFailed) {
  Check(bolt);  // which leaves a file to be replaced
  const auto calls = WholeRecord([&] { Check(bolt); });
  const auto close = std::ranges::find(calls, "Workbook.Close(False)") - calls.begin();

  gate->FailCall(static_cast<int>(close) + 1);
  const auto after = WholeRecord([&] { Check(bolt); });

  EXPECT_THAT(std::vector(after.end() - 3, after.end()),
              ElementsAre("Workbook.Close(False)", "Workbook.Close(False)", "ExcelApplication.Quit"));
  ExpectSpreadsheetGone();
}

TEST_F(InsertFromVault, QuitsTheApplicationAgainWhenThatFailed) {
  Check(bolt);  // which leaves a file to be replaced
  const auto calls = WholeRecord([&] { Check(bolt); });

  gate->FailCall(static_cast<int>(calls.size()));
  const auto after = WholeRecord([&] { Check(bolt); });

  EXPECT_THAT(std::vector(after.end() - 3, after.end()),
              ElementsAre("Workbook.Close(False)", "ExcelApplication.Quit", "ExcelApplication.Quit"));
  ExpectSpreadsheetGone();
}

TEST_F(InsertFromVault, QuitsAnApplicationWhoseWorkbookCantBeClosed) {
  gate->FailOperation("Workbook.Close(False)");

  Check(bolt);  // which leaves a file to be replaced
  const auto calls = WholeRecord([&] { Check(bolt); });

  EXPECT_EQ(calls.back(), "ExcelApplication.Quit");
  EXPECT_EQ(spreadsheet->running, 0);
}

// Fails each call once, one in a run.
TEST_F(InsertFromVault, EndsAtEachFailedCallWithoutAnErrorAndWithoutASpreadsheet) {
  const auto texts = Process().texts;
  List().erase({1, 4});
  int ended = 0;
  for (int n = 1;; ++n) {
    Process().texts = texts;
    gate->StartRecording();
    gate->FailCall(n);
    std::vector<Box> boxes;
    EXPECT_NO_THROW(boxes = BoxesOfCheck(bolt));
    const bool hasFailed = gate->HasFailed();
    const auto record = gate->Record();
    gate->Reset();
    if (!hasFailed) {
      EXPECT_THAT(boxes, ElementsAre(kIsOld, kIsThere, kIsThere));
      break;
    }
    const auto& call = record[static_cast<std::size_t>(n) - 1];
    SCOPED_TRACE("call " + std::to_string(n) + ", " + call);

    ExpectSpreadsheetGone();
    const bool isInStart = std::ranges::find(record, "Application.ActiveDocument") == record.end();
    if (isInStart) {
      EXPECT_EQ(boxes.size(), 1U);
      continue;
    }
    EXPECT_THAT(
        boxes,
        Each(AnyOf(kIsOld, kIsThere, NoMatrix(), NoDocument("Injected failure"),
                   TextBox("QD.INSERTWLT.IS_NOT_WIP", kCriticalModal, {""}),
                   TextBox("QD.ALLINSTANCES.RETRIEVE_MATRIX_FAILED", kCriticalModal),
                   TextBox("QD.ALLINSTANCES.NO_MATRIX_FOR_FILE", kInformationModal, {WorkPath("PLANT Matrix.xls")}))));
    ended += boxes.size() < 3 ? 1 : 0;
  }

  EXPECT_GT(ended, 40);
}

}  // namespace
}  // namespace quintara::test

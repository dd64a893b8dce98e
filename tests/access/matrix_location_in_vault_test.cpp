#include <string>
#include <vector>

#include "access/host_mocks.h"
#include "access/vault_bench.h"

namespace quintara::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::NiceMock;
using ::testing::Return;
using veldora::VdObjects;

// A car in a vault of either database, whose matrix documents are made as a test wants them.
template <class Maker>
class MatrixInVault : public VaultOn<Maker> {
 protected:
  MatrixInVault() {
    ON_CALL(*component, PartNumber).WillByDefault(Return("CAR"));
    Process().gWorkDirectory = this->folder.Path("work");
  }

  Ref<VdObject> AddMatrix(const Ref<VdObject>& product, const std::string& description, const std::string& type = "xml",
                          const std::string& bytes = "<matrix/>") {
    this->folder.Write("source/matrix", bytes);
    const auto fileType = std::to_string(this->vault->FileTypeId(type));
    const auto document = this->vault->AddObject("Document", {{"CN_DESCRIPTION", description}, {"FILE_TYPE", fileType}},
                                                 this->folder.Path("source/matrix"));
    this->Link(product, document, "Document Link");
    return document;
  }
  Ref<VdObject> Find(const Ref<VdObject>& product, MatrixType type = MatrixType::XML) {
    return this->utils.GetDocumentMatrixFromObject(this->session, product, this->Behavior(), type);
  }
  std::string Described(const Ref<VdObject>& document) const {
    return document ? document->Record()->ValueAsString("CN_DESCRIPTION") + " " +
                          document->Record()->ValueAsString("REVISION")
                    : "nothing";
  }
  std::vector<std::string> Linked(const Ref<VdObject>& object) {
    const auto documents = this->utils.GetLinkedDocs(this->session, object, MatrixType::XML);
    std::vector<std::string> texts;
    for (int i = 0; documents && i < documents->Count(); ++i) texts.push_back(Described(documents->Item(i)));
    return texts;
  }

  Ref<VdObject> car = this->AddProduct("CAR");
  Ref<NiceMock<MockProduct>> component = MakeRef<NiceMock<MockProduct>>();
};
TYPED_TEST_SUITE(MatrixInVault, Databases, DatabaseName);

TYPED_TEST(MatrixInVault, OfAProductIsTheFirstDocumentThatEndsInTheWord) {
  this->AddMatrix(this->car, "CAR Drawing");
  this->AddMatrix(this->car, "CAR matrix");
  this->AddMatrix(this->car, "CAR Matrix old");
  this->AddMatrix(this->car, "TRUCK Matrix");
  this->AddMatrix(this->car, "CAR Matrix");

  EXPECT_EQ(this->Described(this->Find(this->car)), "TRUCK Matrix A");
  EXPECT_THAT(this->Boxes(), IsEmpty());
}

TYPED_TEST(MatrixInVault, OfAProductIsToldApartByItsFileType) {
  this->AddMatrix(this->car, "old Matrix", "Microsoft Excel");
  this->AddMatrix(this->car, "new Matrix", "xml");

  EXPECT_EQ(this->Described(this->Find(this->car, MatrixType::XML)), "new Matrix A");
  EXPECT_EQ(this->Described(this->Find(this->car, MatrixType::Excel)), "old Matrix A");
  EXPECT_FALSE(this->Find(this->car, static_cast<MatrixType>(7)));
}

TYPED_TEST(MatrixInVault, OfAProductIsThatOfNoOther) {
  const auto cart = this->AddProduct("CART");
  this->AddMatrix(cart, "CAR Matrix");

  EXPECT_FALSE(this->Find(this->car));
  EXPECT_THAT(this->Boxes(), IsEmpty());
}

TYPED_TEST(MatrixInVault, ComesInItsNewestRevisionWhicheverIsLinked) {
  const auto matrix = this->AddMatrix(this->car, "CAR Matrix");
  this->Release(matrix);
  this->Util()->NewRelease(matrix, nullptr, false);

  EXPECT_EQ(this->Described(this->Find(this->car)), "CAR Matrix B");
  EXPECT_EQ(this->Described(this->utils.GetDocumentFromID(this->session, matrix->ClassId(), matrix->ObjectId())),
            "CAR Matrix B");
}

TYPED_TEST(MatrixInVault, GoesWithTheNextRevisionOfItsProduct) {
  this->AddMatrix(this->car, "CAR Matrix");
  this->Release(this->car);

  const auto next = this->Util()->NewRelease(this->car, nullptr, false);

  EXPECT_EQ(this->Described(this->Find(next)), "CAR Matrix A");
}

TYPED_TEST(MatrixInVault, IsNothingUnderAnIdThatIsUnknown) {
  EXPECT_FALSE(this->utils.GetDocumentFromID(this->session, this->ClassId("Document"), 987654));
}

TYPED_TEST(MatrixInVault, OfAComponentIsThoseOfTheRootsAbove) {
  const auto wheel = this->AddProduct("WHEEL");
  const auto axle = this->AddProduct("AXLE", {wheel});
  const auto cart = this->AddProduct("CART", {axle});
  this->Link(this->car, axle, "Structure Link");
  this->AddMatrix(this->car, "CAR Matrix");
  this->AddMatrix(cart, "CART Matrix");
  this->AddMatrix(axle, "AXLE Matrix");

  EXPECT_THAT(this->Linked(wheel), ElementsAre("CAR Matrix A", "CART Matrix A"));
  EXPECT_THAT(this->Linked(axle), ElementsAre("CAR Matrix A", "CART Matrix A"));
  EXPECT_THAT(this->Linked(this->car), ElementsAre("CAR Matrix A"));
}

TYPED_TEST(MatrixInVault, OfAComponentIsTakenOnceWhereAssembliesMeet) {
  const auto bolt = this->AddProduct("BOLT");
  const auto left = this->AddProduct("LEFT", {bolt});
  const auto right = this->AddProduct("RIGHT", {bolt});
  this->Link(this->car, left, "Structure Link");
  this->Link(this->car, right, "Structure Link");
  this->AddMatrix(this->car, "CAR Matrix");

  EXPECT_THAT(this->Linked(bolt), ElementsAre("CAR Matrix A"));
}

TYPED_TEST(MatrixInVault, IsNoneOfAComponentWithoutOneAnywhere) {
  const auto wheel = this->AddProduct("WHEEL");
  this->Link(this->car, wheel, "Structure Link");

  EXPECT_FALSE(this->utils.GetLinkedDocs(this->session, wheel, MatrixType::XML));
  EXPECT_THAT(this->Boxes(), IsEmpty());
}

TYPED_TEST(MatrixInVault, OfAComponentThatOnlyOtherClassesHoldIsItsOwn) {
  const auto wheel = this->AddProduct("WHEEL");
  const auto rack = this->vault->AddObject("Rack", {{"NM_CN_PART_NUMBER", "RACK"}}, {});
  this->Link(rack, wheel, "Structure Link");
  this->AddMatrix(rack, "RACK Matrix");
  this->AddMatrix(wheel, "WHEEL Matrix");

  EXPECT_THAT(this->Linked(wheel), ElementsAre("WHEEL Matrix A"));
}

TYPED_TEST(MatrixInVault, OfExactlyThisProductIsToldAndGiven) {
  this->AddMatrix(this->car, "TRUCK Matrix");
  bool exists = true;
  bool toUpdate = false;
  Ref<VdObject> found;

  const auto ask = [&] {
    return this->utils.IsMatrixAlreadyExist(this->component, this->car, exists, toUpdate, found, MatrixType::XML, true);
  };
  EXPECT_FALSE(ask());
  EXPECT_FALSE(exists);
  EXPECT_TRUE(toUpdate);
  EXPECT_FALSE(found);
  EXPECT_FALSE(this->utils.IsMatrixAlreadyExistAsInformation(this->component, this->car, MatrixType::XML));

  this->AddMatrix(this->car, "CAR Matrix");
  EXPECT_FALSE(ask());
  EXPECT_TRUE(exists);
  EXPECT_EQ(this->Described(found), "CAR Matrix A");
  EXPECT_TRUE(this->utils.IsMatrixAlreadyExistAsInformation(this->component, this->car, MatrixType::XML));
  EXPECT_FALSE(this->utils.IsMatrixAlreadyExistAsInformation(this->component, this->car, MatrixType::Excel));
  EXPECT_THAT(this->Boxes(), IsEmpty());
}

TYPED_TEST(MatrixInVault, OfAPartNumberWithAStarIsAPattern) {
  ON_CALL(*this->component, PartNumber).WillByDefault(Return("C*"));
  this->AddMatrix(this->car, "CAR Matrix");

  EXPECT_TRUE(this->utils.IsMatrixAlreadyExistAsInformation(this->component, this->car, MatrixType::XML));
}

TYPED_TEST(MatrixInVault, IsCopiedInPlaceOfAnOldFile) {
  const auto matrix = this->AddMatrix(this->car, "CAR Matrix", "xml", "<new/>");
  this->WriteWork("CAR Matrix.xml", "<old/>");

  EXPECT_EQ(this->utils.CopyMatrixFromDocument(this->session, matrix, MatrixType::XML), 1);
  EXPECT_EQ(this->utils.CopyMatrixFromDocument(this->session, matrix, MatrixType::Excel), 1);

  EXPECT_EQ(this->ReadWork("CAR Matrix.xml"), "<new/>");
  EXPECT_EQ(this->ReadWork("CAR Matrix.xls"), "<new/>");
}

TYPED_TEST(MatrixInVault, WithoutAFileIsNotCopiedWithoutAWord) {
  const auto document = this->AddDocument("CAR Matrix");

  EXPECT_EQ(this->utils.CopyMatrixFromDocument(this->session, document, MatrixType::XML), 0);

  EXPECT_THAT(this->Boxes(), IsEmpty());
}

TYPED_TEST(MatrixInVault, IsNotCopiedOutOfTheWorkDirectory) {
  this->folder.Write("x Matrix.xml", "not ours");
  const auto matrix = this->AddMatrix(this->car, "../x Matrix");

  EXPECT_EQ(this->utils.CopyMatrixFromDocument(this->session, matrix, MatrixType::XML), 0);

  EXPECT_EQ(this->folder.Read("x Matrix.xml"), "not ours");
}

TYPED_TEST(MatrixInVault, IsThatWhichTheUserPicksInTheVaultsDialog) {
  const auto list = this->Store()->NewObjects();
  list->Add(this->AddMatrix(this->car, "CAR Matrix"));
  list->Add(this->AddMatrix(this->car, "CART Matrix"));
  this->dialogAnswer = 1;

  EXPECT_EQ(this->Described(this->utils.ChooseMatrix(this->session, list)), "CART Matrix A");

  ASSERT_EQ(this->dialogs.size(), 1U);
  EXPECT_EQ(this->dialogs[0].kind, 1);
  EXPECT_EQ(this->dialogs[0].objects.size(), 2U);
}

TYPED_TEST(MatrixInVault, IsNoneWhereTheUserDismissesTheDialog) {
  const auto list = this->Store()->NewObjects();
  list->Add(this->AddMatrix(this->car, "CAR Matrix"));

  EXPECT_FALSE(this->utils.ChooseMatrix(this->session, list));

  EXPECT_THAT(this->Boxes(), IsEmpty());
}

class MatrixWithFailures : public MatrixInVault<OnSqlite> {};

TEST_F(MatrixWithFailures, IsFoundOrNothingWhicheverCallFails) {
  AddMatrix(car, "CAR Matrix");
  const auto policy = Behavior();

  FailingEachCall([&](int n) {
    const auto found = utils.GetDocumentMatrixFromObject(session, car, policy, MatrixType::XML);
    EXPECT_TRUE(n != 0 || found) << n;
  });

  EXPECT_THAT(Boxes(), testing::Not(IsEmpty()));
  EXPECT_THAT(Boxes(), Each(testing::Field(&Box::text,
                                           testing::StartsWith("Failure in Cls_Init.GetDocumentMatrixFromObject: "))));
}

TEST_F(MatrixWithFailures, IsCopiedOrNotWhicheverCallFailsWithoutAWord) {
  const auto matrix = AddMatrix(car, "CAR Matrix");

  FailingEachCall(
      [&](int n) { EXPECT_EQ(utils.CopyMatrixFromDocument(session, matrix, MatrixType::XML), n == 0 ? 1 : 0) << n; });

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(MatrixWithFailures, IsChosenOrNotWhicheverCallFailsWithoutAWord) {
  const auto list = Store()->NewObjects();
  list->Add(AddMatrix(car, "CAR Matrix"));
  dialogAnswer = 0;

  FailingEachCall([&](int n) { EXPECT_EQ(static_cast<bool>(utils.ChooseMatrix(session, list)), n == 0) << n; });

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(MatrixWithFailures, IsNoneAfterALogOff) {
  const auto matrix = AddMatrix(car, "CAR Matrix");
  const auto id = matrix->ObjectId();
  const auto classId = matrix->ClassId();
  session->UserLogoff();

  EXPECT_FALSE(utils.GetDocumentFromID(session, classId, id));
  EXPECT_FALSE(utils.GetLinkedDocs(session, car, MatrixType::XML));
  EXPECT_THROW(utils.IsMatrixAlreadyExistAsInformation(component, car, MatrixType::XML), Failure);
  EXPECT_THAT(Boxes(), IsEmpty());
}

}  // namespace
}  // namespace quintara::test

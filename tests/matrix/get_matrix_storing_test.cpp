#include <string>
#include <utility>

#include "access/host_mocks.h"
#include "access/session/process.h"
#include "matrix/get_matrix_bench.h"
#include "matrix/matrix_storing.h"

// How the document of a matrix is made, changed and linked, and what remains where that fails.
namespace quintara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::NiceMock;
using ::testing::Return;
using ::testing::SizeIs;

TEST_F(GetMatrix, GoesByOnePolicyInEachCallThatTakesOne) {
  Ref<veldora::VdBehavior> ofTheSearch;
  Ref<veldora::VdBehavior> ofTheLink;
  const auto newest = MakeRef<NiceMock<MockObject>>();
  const auto car = Of("CAR");
  ON_CALL(*newest, ClassId).WillByDefault([&] { return car->ClassId(); });
  ON_CALL(*newest, ObjectId).WillByDefault([&] { return car->ObjectId(); });
  ON_CALL(*newest, Record).WillByDefault([&] { return car->Record(); });
  EXPECT_CALL(*newest, AddLink)
      .WillOnce([&](auto linkClass, const auto& other, const auto& record, const auto& policy) {
        EXPECT_EQ(linkClass, ClassId("Document Link"));
        EXPECT_EQ(TextOf(other, "CN_DESCRIPTION"), "CAR Matrix");
        EXPECT_FALSE(record);
        ofTheLink = policy;
      });
  const auto product = MakeRef<NiceMock<MockObject>>();
  ON_CALL(*product, Parents).WillByDefault([&](const auto& definition, const auto& policy) {
    ofTheSearch = policy;
    return car->Parents(definition, policy);
  });
  ON_CALL(*product, Record).WillByDefault([&] { return car->Record(); });
  ON_CALL(*product, GetVersion(veldora::version::kLast)).WillByDefault(Return(Ref<VdObject>(newest)));

  Run("CheckIn", product, true);

  ASSERT_TRUE(ofTheSearch);
  EXPECT_EQ(ofTheSearch, ofTheLink);
  EXPECT_EQ(ofTheSearch->OptionA(), 0);
  EXPECT_EQ(ofTheSearch->OptionC(), 2);
}

TEST_F(GetMatrix, IsUpdatedUnderThePolicyOfTheRun) {
  const auto updated = MakeRef<NiceMock<MockObject>>();
  const auto matrix = GivenMatrix("CAR", "<old/>");
  ON_CALL(*updated, Record).WillByDefault([&] { return matrix->Record(); });
  const auto policy = Behavior();

  EXPECT_CALL(*updated, Update(policy));

  UpdateMatrix(updated, MatrixFile("CAR", MatrixType::XML), policy);
}

// A session that makes its new objects in another store.
class SessionOnStore : public HandingOn {
 public:
  SessionOnStore(Ref<veldora::VdSession> session, Ref<veldora::VdObjectStore> store)
      : HandingOn(std::move(session)), store_(std::move(store)) {}
  Ref<veldora::VdObjectStore> ObjectStore() override { return store_; }

 private:
  Ref<veldora::VdObjectStore> store_;
};

TEST_F(GetMatrix, IsAddedAndLinkedUnderThePolicyOfTheRun) {
  const auto added = MakeRef<NiceMock<MockObject>>();
  const auto product = MakeRef<NiceMock<MockObject>>();
  const auto store = MakeRef<NiceMock<MockObjectStore>>();
  const auto stored = Store()->NewObject(ClassId("Document"));
  ON_CALL(*added, ClassInfo).WillByDefault([&] { return stored->ClassInfo(); });
  ON_CALL(*added, Record).WillByDefault([&] { return stored->Record(); });
  ON_CALL(*store, NewQuery).WillByDefault([&] { return Store()->NewQuery(); });
  ON_CALL(*store, Masks).WillByDefault([&] { return Store()->Masks(); });
  ON_CALL(*store, NewObject(ClassId("Document"))).WillByDefault(Return(Ref<VdObject>(added)));
  Process().gSession = MakeRef<SessionOnStore>(Session(), store);
  const auto policy = Behavior();

  const ::testing::InSequence inThisOrder;
  EXPECT_CALL(*added, InitData);
  EXPECT_CALL(*added, AddToVault(policy));
  EXPECT_CALL(*product, AddLink(ClassId("Document Link"), Ref<VdObject>(added), Ref<veldora::VdRecord>(), policy));

  EXPECT_EQ(AddMatrix(product, MatrixFile("CAR", MatrixType::XML), policy), Ref<VdObject>(added));
  EXPECT_EQ(stored->Record()->ValueAsString("NM_CN_PART_NUMBER"), "CAR Matrix");
}

TEST_F(GetMatrix, IsNamedAfterTheProductInBothForms) {
  const MatrixFile xml("CAR", MatrixType::XML);
  const MatrixFile workbook("CAR", MatrixType::Excel);

  EXPECT_EQ(xml.title, "CAR Matrix");
  EXPECT_EQ(xml.name, "CAR Matrix.xml");
  EXPECT_EQ(xml.path, MatrixPath());
  EXPECT_STREQ(xml.fileType, "xml");
  EXPECT_EQ(workbook.title, "CAR Matrix");
  EXPECT_EQ(workbook.name, "CAR Matrix.xls");
  EXPECT_EQ(workbook.path, PathInWork("CAR Matrix.xls"));
  EXPECT_STREQ(workbook.fileType, "Microsoft Excel");
}

TEST_F(GetMatrix, StaysAsItWasStoredWhereItCannotBeCheckedIn) {
  gate->FailOperation("VdSessionUtil.RunOperation");

  RunUnasked();

  EXPECT_THAT(platform.Boxes(), IsEmpty());
  ASSERT_THAT(MatricesOf("CAR"), SizeIs(1));
  EXPECT_EQ(StateOf(MatricesOf("CAR")[0]), veldora::state::kNew);
}

TEST_F(GetMatrix, StaysUnlinkedAndNewWhereTheLinkFails) {
  gate->FailOperation("VdObject.AddLink");

  RunUnasked();

  EXPECT_THAT(platform.Boxes(), ElementsAre(RunReport("Injected failure")));
  EXPECT_THAT(MatricesOf("CAR"), IsEmpty());
  EXPECT_THAT(CallsOfTheRun("VdObject.AddToVault"), SizeIs(1));
  EXPECT_THAT(CallsOfTheRun("VdSessionUtil"), IsEmpty());
}

TEST_F(GetMatrix, StaysCheckedOutWhereItCannotBeUpdated) {
  const auto matrix = GivenMatrixIn(veldora::state::kCheckedIn);
  gate->FailOperation("VdObject.Update");

  RunUnasked();

  EXPECT_THAT(platform.Boxes(), ElementsAre(RunReport("Injected failure")));
  EXPECT_EQ(StateOf(matrix), veldora::state::kCheckedOut);
  EXPECT_EQ(vault->FileOf(Again(matrix)), "<old/>");
  ExpectOptionsAsBefore();
}

TEST_F(GetMatrix, IsNotTouchedWhereTheLocalFileCannotBeDeleted) {
  const auto matrix = GivenMatrixIn(veldora::state::kCheckedIn);
  WriteWork("CAR Matrix.xml", "local");
  gate->FailOperation("FileSystem.DeleteFile", 1, Failure(failure::kPermissionDenied));

  RunUnasked();

  EXPECT_THAT(platform.Boxes(), ElementsAre(RunReport("Permission denied")));
  EXPECT_EQ(StateOf(matrix), veldora::state::kCheckedIn);
  EXPECT_EQ(ReadWork("CAR Matrix.xml"), "local");
  ExpectOptionsAsBefore();
}

}  // namespace
}  // namespace quintara::test

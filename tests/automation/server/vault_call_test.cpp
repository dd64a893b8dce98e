#include <gmock/gmock.h>

#include "access/host_mocks.h"
#include "access/vault_bench.h"
#include "automation/dispatch/late_bound.h"
#include "automation/server/client.h"
#include "automation/server/foreign.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::NiceMock;
using testing::Return;
using veldora::VdObjects;

template <class Contract>
Value Out(const Ref<Contract>& object) {
  return Value(automation::Outgoing(object));
}

/// Calls that take objects of a vault and bring objects back.
class AVaultCall : public VaultOn<OnSqlite> {
 protected:
  AVaultCall() { ON_CALL(*component, PartNumber).WillByDefault(Return("CAR")); }

  static Variant Held(const Value& variable) { return automation::ToVariant(variable.Raw(), nullptr); }
  // Nothing where none came back.
  static Ref<VdObjects> ListIn(const Value& variable) {
    const auto object = Held(variable).ToObject();
    return object ? object->AsVdObjects() : nullptr;
  }
  Ref<VdObject> AddMatrix(const Ref<VdObject>& product) {
    folder.Write("source/matrix", "<matrix/>");
    const auto fileType = std::to_string(vault->FileTypeId("xml"));
    const auto document = vault->AddObject("Document", {{"CN_DESCRIPTION", "CAR Matrix"}, {"FILE_TYPE", fileType}},
                                           folder.Path("source/matrix"));
    Link(product, document, "Document Link");
    return document;
  }

  Client client{"Cls_Utils"};
  Ref<VdObject> bolt = AddPart("BOLT");
  Ref<VdObject> car = AddProduct("CAR", {bolt});
  Ref<NiceMock<MockProduct>> component = MakeRef<NiceMock<MockProduct>>();
};

TEST_F(AVaultCall, BringsBackAllChildren) {
  Value children;

  const auto outcome = client.Call("GetAllChildren", Out(session), Out(car), children);

  EXPECT_EQ(outcome.Given(), Variant(true));
  EXPECT_THAT(PartNumbers(ListIn(children)), ElementsAre("BOLT"));
}

TEST_F(AVaultCall, MayLeaveOutTheBehaviorBetweenOthers) {
  Value children;

  const auto outcome = client.Call("GetAllChildren", Out(session), Out(car), children, LeftOut(), "NM_CN_PART_NUMBER");

  EXPECT_EQ(outcome.Given(), Variant(true));
  EXPECT_EQ(ListIn(children)->Count(), 1);
}

TEST_F(AVaultCall, WritesAListOverWhateverStoodThere) {
  Value children(std::string("old"));

  client.Call("GetAllChildren", Out(session), Out(car), children);

  EXPECT_TRUE(ListIn(children));
}

TEST_F(AVaultCall, BringsBackTheObjectsLinked) {
  const auto document = AddMatrix(car);
  Value linked;

  const auto outcome =
      client.Call("RetrieveAllObjectsLinked", Out(session), Out(car), "Document", "Document Link", linked);

  EXPECT_EQ(outcome.Given(), Variant(true));
  ASSERT_TRUE(ListIn(linked));
  EXPECT_EQ(ListIn(linked)->Item(0)->ObjectId(), document->ObjectId());
}

TEST_F(AVaultCall, BringsBackNothingWhereNoneIsLinked) {
  Value linked(std::string("old"));

  client.Call("RetrieveAllObjectsLinked", Out(session), Out(car), "Document", "Document Link", linked);

  EXPECT_EQ(linked.Raw().vt, VT_DISPATCH);
  EXPECT_FALSE(ListIn(linked));
}

TEST_F(AVaultCall, BringsBackAllThreeOfAMatrixThatExists) {
  const auto document = AddMatrix(car);
  platform.answers = {answer::kYes};
  Value exists;
  Value toUpdate;
  Value matrix;

  const auto outcome = client.Call("IsMatrixAlreadyExist", Out(Ref<zorva::Product>(component)), Out(car), exists,
                                   toUpdate, matrix, 1, LeftOut());

  EXPECT_EQ(outcome.Given(), Variant(false));
  EXPECT_EQ(Held(exists), Variant(true));
  EXPECT_EQ(Held(toUpdate), Variant(true));
  EXPECT_EQ(Held(matrix).ToObject()->AsVdObject()->ObjectId(), document->ObjectId());
  EXPECT_THAT(Boxes(), ElementsAre(Told("update CAR?", kQuestion)));
}

TEST_F(AVaultCall, LeavesTheMatrixUnwrittenWhereNoneExists) {
  platform.answers = {answer::kNo};
  Value exists(std::string("old"));
  Value toUpdate(true);
  Value matrix(std::string("old"));

  client.Call("IsMatrixAlreadyExist", Out(Ref<zorva::Product>(component)), Out(car), exists, toUpdate, matrix, 1);

  EXPECT_EQ(Held(exists), Variant(false));
  EXPECT_EQ(Held(toUpdate), Variant(false));
  EXPECT_EQ(Held(matrix), Variant("old"));
}

TEST_F(AVaultCall, AnswersForItsUserWhereToldSo) {
  Value exists;
  Value toUpdate;
  Value matrix;

  client.Call("IsMatrixAlreadyExist", Out(Ref<zorva::Product>(component)), Out(car), exists, toUpdate, matrix, 1, true);

  EXPECT_EQ(Held(toUpdate), Variant(true));
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(AVaultCall, TellsTheFormsOfAMatrixApart) {
  AddMatrix(car);

  EXPECT_EQ(client.Call("IsMatrixAlreadyExistAsInformation", Out(Ref<zorva::Product>(component)), Out(car), 1).Given(),
            Variant(true));
  EXPECT_EQ(client.Call("IsMatrixAlreadyExistAsInformation", Out(Ref<zorva::Product>(component)), Out(car), 0).Given(),
            Variant(false));
}

TEST_F(AVaultCall, GivesTheNewestRevision) {
  Release(car);
  const auto next = Util()->NewRelease(car, nullptr, false);

  const auto outcome = client.Call("LastVersion", Out(car));

  EXPECT_EQ(outcome.Given().ToObject()->AsVdObject()->ObjectId(), next->ObjectId());
}

TEST_F(AVaultCall, HandsTheCallersOwnObjectBack) {
  const auto object = Foreign::Failing(E_FAIL, "gone");

  const auto outcome = client.Call("LastVersion", object);

  ASSERT_EQ(outcome.value.Raw().vt, VT_DISPATCH);
  EXPECT_EQ(outcome.value.Raw().pdispVal, object.Get());
}

TEST_F(AVaultCall, GivesNothingForWhatIsNotThere) {
  const auto outcome = client.Call("GetDocumentFromID", Out(session), 1, 987654);

  EXPECT_EQ(outcome.value.Raw().vt, VT_DISPATCH);
  EXPECT_EQ(outcome.value.Raw().pdispVal, nullptr);
}

TEST_F(AVaultCall, UsesTheCallersOwnFileSystemObject) {
  const auto own = Foreign::Giving("False");
  Process().gSessionUtil = Util();
  Process().gWorkDirectory = folder.Path("work");

  client.Call("CopyVeldoraObjectLWTToWork", Out(bolt), own);

  EXPECT_THAT(own->calls, testing::Contains("FileExists"));
}

TEST_F(AVaultCall, ReadsTheSettingsOfAllUsersWhereNoneIsNamed) {
  platform.Native().Register("Veldora.VdApplication", vault->Application());
  vault->AddObject("User Setting", {{"TDMX_USER_ID", "3"}, {"TDMX_SECTION", "COLOURS"}, {"TDMX_SUBJECT", "BOLTS"}}, {});
  Client settings("Cls_AdminSettings");
  settings.Call("InitSettings", Out(session));

  const auto ofAll = settings.Call("GetSettingSection", Out(session), "COLOURS", false);
  const auto ofAnother = settings.Call("GetSettingSection", Out(session), "COLOURS", false, 7);

  ASSERT_EQ(ofAll.result, S_OK) << ofAll.description;
  ASSERT_TRUE(ofAll.Given().ToObject());
  EXPECT_EQ(ofAll.Given().ToObject()->AsVdRecList()->RecordCount(), 1);
  EXPECT_FALSE(ofAnother.Given().ToObject());
}

}  // namespace
}  // namespace quintara::test

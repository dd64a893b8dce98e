#include <algorithm>
#include <string>
#include <vector>

#include "access/host_mocks.h"
#include "access/vault_bench.h"
#include "hosts/vault/database.h"

namespace quintara::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::NiceMock;
using ::testing::Return;
using ::testing::SizeIs;

class ClassIds : public WithVault {
 protected:
  std::int16_t product = ClassId("ZORVA Product");
  std::int16_t part = ClassId("ZORVA Part");
};

TEST_F(ClassIds, AreFoundByTheirNames) {
  EXPECT_EQ(utils.IndiceClasse(session, "ZORVA Part"), part);
  EXPECT_NE(part, 0);
}

TEST_F(ClassIds, OfUnknownNamesAreZeroWithoutAWord) {
  EXPECT_EQ(utils.IndiceClasse(session, "NO SUCH CLASS"), 0);
  EXPECT_EQ(utils.IndiceClasse(session, ""), 0);
  EXPECT_EQ(utils.IndiceClasse(nullptr, "ZORVA Part"), 0);
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(ClassIds, AreZeroWhicheverCallFails) {
  const int calls =
      FailingEachCall([&](int n) { EXPECT_EQ(utils.IndiceClasse(session, "ZORVA Part"), n == 0 ? part : 0) << n; });

  EXPECT_EQ(calls, 3);
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(ClassIds, AreLookedForInAListUntilOneFits) {
  gate->StartRecording();

  EXPECT_TRUE(utils.IsCorrectClassID(session, "ZORVA Part,ZORVA Product,NO SUCH CLASS", product));

  EXPECT_THAT(gate->Record(),
              ElementsAre("VdSession.MetaInfo", "VdMetaInfo.ClassByName(ZORVA Part)", "VdClass.ClassId",
                          "VdSession.MetaInfo", "VdMetaInfo.ClassByName(ZORVA Product)", "VdClass.ClassId"));
}

TEST_F(ClassIds, AreNotInAListOfOthers) {
  EXPECT_FALSE(utils.IsCorrectClassID(session, "ZORVA Part,Rack", product));
  EXPECT_FALSE(utils.IsCorrectClassID(session, "ZORVA Part", 0));
}

TEST_F(ClassIds, AreLookedForUnderNamesAsTheyStand) {
  EXPECT_THROW(utils.IsCorrectClassID(session, "ZORVA Part, ZORVA Product", product), Failure);
  EXPECT_THROW(utils.IsCorrectClassID(session, "zorva product", product), Failure);
}

TEST_F(ClassIds, OfAnUnknownNameInAListFailAtTheCaller) {
  for (const auto* list : {"NO SUCH CLASS", "NO SUCH CLASS,ZORVA Product", "ZORVA Part,NO SUCH CLASS", "",
                           "ZORVA Part,", ",ZORVA Product"}) {
    EXPECT_THROW(utils.IsCorrectClassID(session, list, product), Failure) << list;
  }

  EXPECT_THAT(Boxes(), IsEmpty());
}

class Roots : public WithVault {
 protected:
  bool IsTheRoot(const Ref<VdObject>& object) { return utils.IsTheRoot(session, object, Behavior()); }
  void Hold(const std::string& className, const Ref<VdObject>& child) {
    const auto parent = vault->AddObject(className, {{"NM_CN_PART_NUMBER", className}}, {});
    Link(parent, child, "Structure Link");
  }
  // An object that claims to be held by the objects of `rows`.
  Ref<VdObject> HeldBy(int count, const Ref<veldora::VdRecList>& rows) {
    const auto parents = MakeRef<NiceMock<MockObjects>>();
    ON_CALL(*parents, Count).WillByDefault(Return(count));
    ON_CALL(*parents, Records).WillByDefault(Return(rows));
    const auto object = MakeRef<NiceMock<MockObject>>();
    ON_CALL(*object, Parents).WillByDefault(Return(Ref<veldora::VdObjects>(parents)));
    return object;
  }
  Ref<veldora::VdRecList> RowsOf(int count, int classId, const std::string& attribute = "CLASS_ID") {
    const auto rows = vault->Application()->NewRecList();
    rows->AddField(attribute, 1, 4);
    for (int i = 0; i < count; ++i) rows->SetValue(attribute, rows->AddRow(), classId);
    return rows;
  }

  Ref<VdObject> product = AddProduct("CAR");
};

TEST_F(Roots, AreHeldByNothing) {
  const auto identity = std::to_string(product->ClassId()) + ":" + std::to_string(product->ObjectId());
  gate->StartRecording();

  EXPECT_TRUE(utils.IsTheRoot(session, product, nullptr));

  EXPECT_THAT(gate->Record(), ElementsAre("VdSession.ObjectStore", "VdObjectStore.NewQuery", "VdQuery.Definition",
                                          "VdQueryDefinition.From", "VdQueryFrom.Add(0, S)",
                                          "VdObject.Parents(" + identity + ")", "VdObjects.Count"));
}

TEST_F(Roots, AreHeldByNoProduct) {
  Hold("ZORVA Product", product);

  EXPECT_FALSE(IsTheRoot(product));
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(Roots, MayBeHeldByObjectsOfOtherClasses) {
  Hold("Rack", product);
  Hold("Cabinet", product);

  EXPECT_TRUE(IsTheRoot(product));
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(Roots, AreHeldByNoProductAmongOthers) {
  Hold("Rack", product);
  Hold("ZORVA Product", product);
  Hold("Cabinet", product);
  gate->StartRecording();

  EXPECT_FALSE(IsTheRoot(product));

  EXPECT_EQ(std::ranges::count(gate->Record(), "VdRecList.GetRecord(1)"), 1);
  EXPECT_EQ(std::ranges::count(gate->Record(), "VdRecList.GetRecord(2)"), 0);
}

TEST_F(Roots, AreHeldByNoProductOfAnyClassInTheSetting) {
  Process().gClassProducts = "ZORVA Product,Rack";
  Hold("Rack", product);

  EXPECT_FALSE(IsTheRoot(product));
}

TEST_F(Roots, AreHeldByProductsWhoseClassStandsInTheAttributeThatTheGlobalNames) {
  Process().CLASS_ID = "KIND";

  EXPECT_FALSE(IsTheRoot(HeldBy(1, RowsOf(1, product->ClassId(), "KIND"))));

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(Roots, AreNotKnownWithAnUnknownClassInTheSettingWhichIsReported) {
  Process().gClassProducts = "NO SUCH CLASS";
  Hold("Rack", product);

  EXPECT_FALSE(IsTheRoot(product));

  ASSERT_THAT(Boxes(), SizeIs(1));
  EXPECT_EQ(Boxes()[0].style, kCritical);
  EXPECT_THAT(Boxes()[0].text, testing::StartsWith("Failure in Cls_Init.IsTheRoot: "));
  EXPECT_THAT(Boxes()[0].text, testing::HasSubstr("NO SUCH CLASS"));
}

TEST_F(Roots, NeedNoClassInTheSettingWhereNothingHoldsThem) {
  Process().gClassProducts = "NO SUCH CLASS";

  EXPECT_TRUE(IsTheRoot(product));
}

TEST_F(Roots, AreNotKnownWhicheverCallFailsWhichIsReported) {
  Hold("Rack", product);
  const auto behavior = Behavior();

  const int calls =
      FailingEachCall([&](int n) { EXPECT_EQ(utils.IsTheRoot(session, product, behavior), n == 0) << n; });

  EXPECT_THAT(Boxes(), SizeIs(static_cast<std::size_t>(calls)));
  EXPECT_THAT(Boxes(), Each(Report("Cls_Init.IsTheRoot", "Injected failure")));
}

TEST_F(Roots, AreNotKnownOfNothingWhichIsReported) {
  EXPECT_FALSE(IsTheRoot(nullptr));

  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_Init.IsTheRoot", "Object variable or With block variable not set")));
}

TEST_F(Roots, AreNotKnownWithAParentWhoseClassHasMoreThanSixteenBits) {
  EXPECT_FALSE(IsTheRoot(HeldBy(1, RowsOf(1, 70000))));

  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_Init.IsTheRoot", "Overflow")));
}

TEST_F(Roots, MayBeHeldByAsManyAsACounterReaches) {
  constexpr int kRows = 32768;

  EXPECT_TRUE(IsTheRoot(HeldBy(kRows, RowsOf(kRows, ClassId("Rack")))));

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(Roots, AreNotKnownWhenMoreHoldThemThanACounterReaches) {
  EXPECT_FALSE(IsTheRoot(HeldBy(32769, RowsOf(1, ClassId("Rack")))));

  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_Init.IsTheRoot", "Overflow")));
}

using FileTypes = WithVault;

TEST_F(FileTypes, AreFoundByTheirNames) {
  for (const auto* name : {"ZVAProduct", "ZVAPart", "xml", "Microsoft Excel"}) {
    EXPECT_EQ(utils.IndiceFileType(session, name), vault->FileTypeId(name)) << name;
    EXPECT_NE(vault->FileTypeId(name), 0) << name;
  }
}

TEST_F(FileTypes, AreAskedForInTheirOwnClass) {
  gate->StartRecording();

  utils.IndiceFileType(session, "xml");

  const auto from = "VdQueryFrom.Add(" + std::to_string(ClassId("FILE_TYPE")) + ", F)";
  std::vector<std::string> calls = gate->Record();
  calls.resize(14);
  EXPECT_THAT(calls, ElementsAre("VdSession.MetaInfo", "VdMetaInfo.ClassByName(FILE_TYPE)", "VdClass.ClassId",
                                 "VdSession.ObjectStore", "VdObjectStore.NewQuery", "VdQuery.Definition",
                                 "VdQueryDefinition.From", from, "VdQueryDefinition.Select",
                                 "VdQuerySelect.Add(OBJECT_ID, F)", "VdQueryDefinition.Where",
                                 "VdQueryWhere.Add(TDM_NAME, xml, F)", "VdQuery.RunClassQuery", "VdQuery.Result"));
}

TEST_F(FileTypes, OfUnknownNamesAreZeroWithoutAWord) {
  EXPECT_EQ(utils.IndiceFileType(session, "docx"), 0);
  EXPECT_EQ(utils.IndiceFileType(session, "XML"), 0);
  EXPECT_EQ(utils.IndiceFileType(nullptr, "xml"), 0);
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(FileTypes, AreZeroWithoutTheirClass) {
  Process().FILE_TYPE = "NO SUCH CLASS";

  EXPECT_EQ(utils.IndiceFileType(session, "xml"), 0);
}

TEST_F(FileTypes, AreZeroWhicheverCallFails) {
  const int xml = vault->FileTypeId("xml");

  FailingEachCall([&](int n) { EXPECT_EQ(utils.IndiceFileType(session, "xml"), n == 0 ? xml : 0) << n; });

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(FileTypes, BeyondSixteenBitsAreZero) {
  vault::Database(vault->Folder().connection)
      .ExecuteOnce("UPDATE vd_sequence SET next_value = 40000 WHERE name = 'object'");
  vault->AddObject("FILE_TYPE", {{"TDM_NAME", "late"}}, {});

  EXPECT_GT(vault->FileTypeId("late"), 32767);
  EXPECT_EQ(utils.IndiceFileType(session, "late"), 0);
}

class Sequences : public WithVault {
 protected:
  const Box noValue = Told("no next value of CN_ID", kCriticalModal);
};

TEST_F(Sequences, GiveAnotherValueEachTime) {
  const auto first = utils.GetIdSequence(session, "ZORVA Part", "CN_ID");
  const auto second = utils.GetIdSequence(session, "ZORVA Part", "CN_ID");

  EXPECT_NE(first, "");
  EXPECT_LT(first, second);
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(Sequences, OfAnUnknownClassAreTold) {
  EXPECT_EQ(utils.GetIdSequence(session, "NO SUCH CLASS", "CN_ID"), "");

  EXPECT_THAT(Boxes(), ElementsAre(noValue));
}

TEST_F(Sequences, OfAnUnknownAttributeAreTold) {
  EXPECT_EQ(utils.GetIdSequence(session, "ZORVA Part", "NO_SUCH"), "");

  EXPECT_THAT(Boxes(), ElementsAre(Told("no next value of NO_SUCH", kCriticalModal)));
}

TEST_F(Sequences, OfAnAttributeWithoutAMaskAreTold) {
  EXPECT_EQ(utils.GetIdSequence(session, "ZORVA Part", "CN_DESCRIPTION"), "");

  EXPECT_THAT(Boxes(), ElementsAre(Told("no next value of CN_DESCRIPTION", kCriticalModal)));
}

TEST_F(Sequences, AreToldOfWhicheverCallFails) {
  const int calls = FailingEachCall(
      [&](int n) { EXPECT_EQ(utils.GetIdSequence(session, "ZORVA Part", "CN_ID").empty(), n != 0) << n; });

  EXPECT_EQ(calls, 8);
  EXPECT_THAT(Boxes(), SizeIs(8));
  EXPECT_THAT(Boxes(), Each(noValue));
}

TEST_F(Sequences, LookForTheClassFirstAndForTheMaskThen) {
  gate->StartRecording();

  utils.GetIdSequence(session, "ZORVA Part", "CN_ID");

  EXPECT_THAT(gate->Record(),
              ElementsAre("VdSession.MetaInfo", "VdMetaInfo.ClassByName(ZORVA Part)", "VdClass.Attributes",
                          "VdAttributes.ItemByName(CN_ID)", "VdSession.ObjectStore", "VdObjectStore.Masks",
                          "VdMasks.MaskOf", "VdMask.NextValue(CN_ID)"));
}

using ClassNames = WithVault;

TEST_F(ClassNames, ThatAreThereAreTakenWithoutAWord) {
  gate->StartRecording();

  EXPECT_TRUE(utils.CheckClassName(session, "ZORVA Part"));

  EXPECT_THAT(gate->Record(), ElementsAre("VdSession.MetaInfo", "VdMetaInfo.Classes", "VdClasses.Find(ZORVA Part)"));
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(ClassNames, ThatAreUnknownAreToldWithTheirOwnText) {
  EXPECT_FALSE(utils.CheckClassName(session, "NO SUCH CLASS"));

  EXPECT_THAT(Boxes(), ElementsAre(Told("no class NO SUCH CLASS", kCriticalModal)));
}

TEST_F(ClassNames, ToldASecondTimeRepeatTheFirst) {
  utils.CheckClassName(session, "ONE");
  utils.CheckClassName(session, "TWO");

  EXPECT_THAT(Boxes(), ElementsAre(Told("no class ONE", kCriticalModal), Told("no class ONE", kCriticalModal)));
}

TEST_F(ClassNames, AreNotKnownWhicheverCallFailsWhichIsReported) {
  FailingEachCall([&](int n) { EXPECT_EQ(utils.CheckClassName(session, "ZORVA Part"), n == 0) << n; });

  EXPECT_THAT(Boxes(), SizeIs(3));
  EXPECT_THAT(Boxes(), Each(Report("Cls_Utils.CheckClassName", "Injected failure")));
}

TEST_F(ClassNames, AreNotKnownWithoutASessionWhichIsReported) {
  EXPECT_FALSE(utils.CheckClassName(nullptr, "ZORVA Part"));

  EXPECT_THAT(Boxes(),
              ElementsAre(Report("Cls_Utils.CheckClassName", "Object variable or With block variable not set")));
}

}  // namespace
}  // namespace quintara::test

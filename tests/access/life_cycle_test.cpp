#include <algorithm>
#include <string>
#include <vector>

#include "access/noted_vault.h"
#include "access/utils_internals.h"

namespace quintara::test {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using veldora::VdObject;
using veldora::VdObjects;

const std::string kNotSet = "Object variable or With block variable not set";

struct Operation {
  std::string name;
  std::string vaultOperation;
  std::string call;
  std::vector<int> states;
};

const std::vector<Operation> kOperations = {{"CHECKIN", "CHECKIN", "CheckIn", {0, 2}},
                                            {"RELEASE", "APPROVE", "Release", {0, 1, 2}},
                                            {"OBSOLETE", "FREEZE", "Obsolete", {3}},
                                            {"CHECKOUT", "CHECKOUT", "CheckOut", {1}},
                                            {"NEWRELEASE", "NEWRELEASE", "NewRelease", {3}}};

class LifeCycle : public NotedVault {
 protected:
  LifeCycle() {
    object->info->keyAttributes = {"NM_CN_PART_NUMBER", "REVISION"};
    *object->values = {{"NM_CN_PART_NUMBER", "CAR"}, {"REVISION", "B"}};
  }

  bool Run(const std::string& operation, const Variant& state, bool scripts = false) {
    (*object->values)["STATE"] = state;
    notes->calls.clear();
    Process().texts.COMMON_UNEXPECTED_ERROR.text = "Failure in REP1: REP2";
    return utils.LifeCycleOperation(session, object, operation, scripts);
  }

  Ref<NotedObject> object = NewObject("the car", 7);
  const Box refusal = Report("Cls_Utils.LifeCycleOperation", "wrong state: CAR, B");
};

TEST_F(LifeCycle, OperationsRunFromTheirStates) {
  for (const auto& operation : kOperations) {
    for (const int state : operation.states) {
      EXPECT_TRUE(Run(operation.name, state)) << operation.name << state;
      EXPECT_THAT(Calls(), ElementsAre("GetService(VdUtil.VdSessionUtil)", "the car.InitData",
                                       "OperationByName(" + operation.vaultOperation + ")",
                                       operation.call + "(the car, nothing, False)"))
          << operation.name << state;
    }
  }

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(LifeCycle, OperationsAreRefusedFromAllOtherStatesWithoutTouchingTheVault) {
  std::size_t refused = 0;
  for (const auto& operation : kOperations) {
    for (const int state : {-1, 0, 1, 2, 3, 4, 5, 32, 35, 32767, -32768}) {
      if (std::ranges::count(operation.states, state) != 0) continue;
      EXPECT_FALSE(Run(operation.name, state)) << operation.name << state;
      EXPECT_THAT(Calls(), ElementsAre("GetService(VdUtil.VdSessionUtil)", "the car.InitData"))
          << operation.name << state;
      ++refused;
    }
  }

  EXPECT_THAT(Boxes(), testing::SizeIs(refused));
  EXPECT_THAT(Boxes(), testing::Each(refusal));
}

TEST_F(LifeCycle, OperationsInvokeScriptsWhenAskedTo) {
  for (const auto& operation : kOperations) {
    EXPECT_TRUE(Run(operation.name, operation.states[0], true));
    EXPECT_EQ(Calls().back(), operation.call + "(the car, nothing, True)");
  }
}

TEST_F(LifeCycle, OperationsInvokeNoScriptsUnlessAskedTo) {
  (*object->values)["STATE"] = 1;

  EXPECT_TRUE(utils.LifeCycleOperation(session, object, "CHECKOUT"));

  EXPECT_EQ(Calls().back(), "CheckOut(the car, nothing, False)");
}

TEST_F(LifeCycle, OperationsOfOtherNamesAreRefusedInTheSameWords) {
  for (const auto* name : {"checkin", "CheckIn", "APPROVE", "FREEZE", "", " CHECKIN", "CHECKIN "}) {
    EXPECT_FALSE(Run(name, 0)) << name;
    EXPECT_THAT(Calls(), ElementsAre("GetService(VdUtil.VdSessionUtil)", "the car.InitData")) << name;
    EXPECT_EQ(Boxes().back(), refusal) << name;
  }
}

TEST_F(LifeCycle, OperationsReadTheStateAsASixteenBitNumber) {
  EXPECT_TRUE(Run("CHECKOUT", "1"));
  EXPECT_TRUE(Run("CHECKOUT", 1.4));

  EXPECT_FALSE(Run("CHECKOUT", 65537));
  EXPECT_FALSE(Run("CHECKOUT", "one"));
  EXPECT_THAT(Boxes(),
              ElementsAre(Report("Cls_Utils.LifeCycleOperation", ""), Report("Cls_Utils.LifeCycleOperation", "")));
}

TEST_F(LifeCycle, OperationsReadTheStateThoughNothingWasStarted) {
  Process().STATE.clear();

  EXPECT_TRUE(Run("CHECKOUT", 1));
  EXPECT_TRUE(utils.AcceptGlobalRefresh(MakeRef<NotedList>(notes, "the work", std::vector<Ref<VdObject>>{object})));

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(LifeCycle, OperationsWithoutAStateFailWithAnEmptyRefusal) {
  EXPECT_FALSE(utils.LifeCycleOperation(session, object, "CHECKIN"));

  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_Utils.LifeCycleOperation", "")));
}

TEST_F(LifeCycle, RefusalsNameAllKeyAttributesInTheirOrder) {
  object->info->keyAttributes = {"REVISION", "NM_CN_PART_NUMBER", "CN_ID"};
  (*object->values)["CN_ID"] = 12;

  EXPECT_FALSE(Run("OBSOLETE", 0));

  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_Utils.LifeCycleOperation", "wrong state: B, CAR, 12")));
}

TEST_F(LifeCycle, RefusalsOfObjectsWithoutKeyAttributesAreEmptyWhateverTheState) {
  object->info->keyAttributes.clear();

  EXPECT_FALSE(Run("OBSOLETE", 0));
  EXPECT_FALSE(Run("CHECKIN", 0));

  EXPECT_THAT(CallsOf("CheckIn"), IsEmpty());
  EXPECT_THAT(Boxes(),
              ElementsAre(Report("Cls_Utils.LifeCycleOperation", ""), Report("Cls_Utils.LifeCycleOperation", "")));
}

TEST_F(LifeCycle, RefusalsWithOneEmptyKeyStillBearTheText) {
  object->info->keyAttributes = {"REVISION"};
  (*object->values)["REVISION"] = "";

  EXPECT_FALSE(Run("OBSOLETE", 0));

  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_Utils.LifeCycleOperation", "wrong state: ")));
}

TEST_F(LifeCycle, RefusalsLeaveTheirOwnTextAlone) {
  EXPECT_FALSE(Run("OBSOLETE", 0));

  EXPECT_EQ(Process().texts.QD_UTILS_UNCORRECT_STATE_FOR_LIFECYCLE.text, "wrong state:");
}

TEST_F(LifeCycle, RefusalsRepeatTheFirstOneSinceTheReportIsFilledInPlace) {
  EXPECT_FALSE(Run("OBSOLETE", 0));
  (*object->values)["NM_CN_PART_NUMBER"] = "CART";

  EXPECT_FALSE(utils.LifeCycleOperation(session, object, "OBSOLETE"));

  EXPECT_THAT(Boxes(), ElementsAre(refusal, refusal));
}

TEST_F(LifeCycle, FailuresAreToldInTheWordsOfARefusal) {
  for (const auto* call : {"OperationByName", "CheckOut"}) {
    GivenFailureOf(call);
    EXPECT_FALSE(Run("CHECKOUT", 1)) << call;
    EXPECT_EQ(Boxes().back(), refusal) << call;
  }
}

TEST_F(LifeCycle, FailuresBeforeTheKeysAreReadAreToldWithoutThem) {
  for (const auto* call : {"GetService", "the car.InitData"}) {
    GivenFailureOf(call);
    EXPECT_FALSE(Run("CHECKOUT", 1)) << call;
    EXPECT_EQ(Boxes().back(), Report("Cls_Utils.LifeCycleOperation", "")) << call;
  }
}

TEST_F(LifeCycle, FailuresWhileTheKeysAreReadAreToldWithThoseBefore) {
  object->info->keyAttributes = {"NM_CN_PART_NUMBER", "REVISION", "CN_ID"};

  EXPECT_FALSE(Run("CHECKOUT", 1));

  EXPECT_THAT(CallsOf("CheckOut"), IsEmpty());
  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_Utils.LifeCycleOperation", "CAR, B, ")));
}

TEST_F(LifeCycle, OperationsThatTheVaultGivesNothingForAreNotRun) {
  content->operations["FREEZE"] = 0;

  EXPECT_FALSE(Run("OBSOLETE", 3));

  EXPECT_THAT(CallsOf("Obsolete"), IsEmpty());
  EXPECT_THAT(Boxes(), ElementsAre(refusal));
}

TEST_F(LifeCycle, OperationsUnknownToTheVaultAreNotRun) {
  content->operations.erase("FREEZE");

  EXPECT_FALSE(Run("OBSOLETE", 3));

  EXPECT_THAT(CallsOf("Obsolete"), IsEmpty());
  EXPECT_THAT(Boxes(), ElementsAre(refusal));
}

TEST_F(LifeCycle, OperationsWithoutTheServiceFailOnlyWhenItIsNeeded) {
  content->util = nullptr;

  EXPECT_FALSE(Run("CHECKOUT", 1));

  EXPECT_THAT(Calls(),
              ElementsAre("GetService(VdUtil.VdSessionUtil)", "the car.InitData", "OperationByName(CHECKOUT)"));
  EXPECT_THAT(Boxes(), ElementsAre(refusal));
}

TEST_F(LifeCycle, OperationsOnNothingAreReported) {
  EXPECT_FALSE(utils.LifeCycleOperation(session, nullptr, "CHECKIN"));
  EXPECT_FALSE(utils.LifeCycleOperation(nullptr, object, "CHECKIN"));

  EXPECT_THAT(Boxes(),
              ElementsAre(Report("Cls_Utils.LifeCycleOperation", ""), Report("Cls_Utils.LifeCycleOperation", "")));
}

class SimpleForms : public LifeCycle {};

TEST_F(SimpleForms, RunTheirOperationWhateverTheState) {
  utils.CheckInObject(session, object);
  utils.ReleaseObject(session, object);

  EXPECT_THAT(Calls(),
              ElementsAre("GetService(Vdutil.VdSessionUtil)", "OperationByName(CHECKIN)",
                          "RunOperation(the car, CHECKIN, True, nothing, nothing)", "GetService(Vdutil.VdSessionUtil)",
                          "OperationByName(APPROVE)", "RunOperation(the car, APPROVE, True, nothing, nothing)"));
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(SimpleForms, FailInSilence) {
  for (const auto* call : {"GetService", "OperationByName", "RunOperation"}) {
    GivenFailureOf(call);
    EXPECT_NO_THROW(utils.CheckInObject(session, object)) << call;
    EXPECT_NO_THROW(utils.ReleaseObject(session, object)) << call;
  }
  content->util = nullptr;
  EXPECT_NO_THROW(utils.CheckInObject(session, object));
  EXPECT_NO_THROW(utils.ReleaseObject(nullptr, object));

  EXPECT_THAT(Boxes(), IsEmpty());
}

class MaskFilling : public NotedVault {
 protected:
  MaskFilling() {
    object->info->attributes = {"CN_ID", "CN_DESCRIPTION", "REVISION", "Revision"};
    content->masks = {{"CN_ID", "0042"}, {"REVISION", "never"}, {"Revision", "next"}};
  }

  Ref<NotedObject> object = NewObject("the car", 0);
};

TEST_F(MaskFilling, GivesEachNumberedAttributeItsNextValueAndTheRevisionItsFirst) {
  utils.PopulateObjectMasks(session, object);

  EXPECT_THAT(Calls(),
              ElementsAre("MaskOf(CN_ID)", "NextValue(CN_ID)", "the car.CN_ID = 0042", "MaskOf(CN_DESCRIPTION)",
                          "MaskOf(REVISION)", "FirstRevision(REVISION)", "the car.REVISION = A", "MaskOf(Revision)",
                          "NextValue(Revision)", "the car.Revision = next"));
}

TEST_F(MaskFilling, OfAClassWithoutAttributesDoesNothing) {
  object->info->attributes.clear();

  utils.PopulateObjectMasks(session, object);

  EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(MaskFilling, LetsFailuresGoToTheCaller) {
  for (const auto* call : {"MaskOf(REVISION)", "NextValue", "FirstRevision", "the car.REVISION"}) {
    GivenFailureOf(call);
    EXPECT_THROW(utils.PopulateObjectMasks(session, object), Failure) << call;
  }
  EXPECT_THROW(utils.PopulateObjectMasks(session, nullptr), Failure);
  EXPECT_THROW(utils.PopulateObjectMasks(nullptr, object), Failure);

  EXPECT_THAT(Boxes(), IsEmpty());
}

class LastVersions : public NotedVault {
 protected:
  LastVersions() { object->version = newest; }

  Ref<NotedObject> object = NewObject("the car", 7);
  Ref<NotedObject> newest = NewObject("the newest", 9);
};

TEST_F(LastVersions, AreReadAfreshAsTheObjectIs) {
  EXPECT_EQ(utils.LastVersion(object), Ref<VdObject>(newest));

  EXPECT_THAT(Calls(), ElementsAre("the car.Retrieve", "the car.GetVersion(3)", "the newest.Retrieve"));
}

TEST_F(LastVersions, AreTheObjectItselfAfterAFailureWithoutAWord) {
  for (const auto* call : {"the car.Retrieve", "the car.GetVersion", "the newest.Retrieve"}) {
    GivenFailureOf(call);
    EXPECT_EQ(utils.LastVersion(object), Ref<VdObject>(object)) << call;
  }

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(LastVersions, OfNothingAreNothing) {
  EXPECT_FALSE(utils.LastVersion(nullptr));

  EXPECT_THAT(Boxes(), IsEmpty());
}

class RefreshTest : public NotedVault {
 protected:
  Ref<VdObject> InState(const Variant& state) {
    const auto object = NewObject("an object", 1);
    (*object->values)["STATE"] = state;
    return object;
  }
  bool Accepts(const std::vector<Ref<VdObject>>& objects) {
    return utils.AcceptGlobalRefresh(MakeRef<NotedList>(notes, "the work", objects));
  }
};

TEST_F(RefreshTest, TakesObjectsThatAreAllCheckedInOrReleased) {
  EXPECT_TRUE(Accepts({InState(1), InState(3), InState(1)}));
  EXPECT_TRUE(Accepts({}));

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(RefreshTest, TakesNoneInAnyOtherState) {
  for (const int state : {0, 2, 4, 5, -1}) EXPECT_FALSE(Accepts({InState(1), InState(state)})) << state;

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(RefreshTest, DoesNotTakeNothing) {
  EXPECT_FALSE(Accepts({InState(1), nullptr}));
  EXPECT_FALSE(Accepts({nullptr}));

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(RefreshTest, StopsAtTheFirstThatIsNotTaken) {
  EXPECT_FALSE(Accepts({InState(2), InState(1e10)}));

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(RefreshTest, LeavesTrueAfterAFailureWhichIsReported) {
  EXPECT_TRUE(Accepts({InState(1e10), InState(2)}));

  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_Utils.AcceptGlobalRefresh", "Overflow")));
}

TEST_F(RefreshTest, LeavesTrueForNoListAtAllWhichIsReported) {
  EXPECT_TRUE(utils.AcceptGlobalRefresh(nullptr));

  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_Utils.AcceptGlobalRefresh", kNotSet)));
}

class AllChildren : public NotedVault {
 protected:
  AllChildren() {
    root->info->keyAttributes = {"NM_CN_PART_NUMBER", "REVISION"};
    root->children = {left, right};
    left->children = {bolt};
    right->children = {bolt, nut};
  }

  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (int i = 0; i < all->Count(); ++i) names.push_back(all->Item(i)->Name());
    return names;
  }

  Ref<NotedObject> root = NewObject("root", 1), left = NewObject("left", 2), right = NewObject("right", 3),
                   bolt = NewObject("bolt", 4), nut = NewObject("nut", 5);
  Ref<VdObjects> all;
};

TEST_F(AllChildren, ComeBreadthFirstAsOftenAsTheyAreHeld) {
  EXPECT_TRUE(utils.GetAllChildren(session, root, all));

  EXPECT_THAT(Names(), ElementsAre("left", "right", "bolt", "bolt", "nut"));
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(AllChildren, AreAskedForWithTheKeysOfTheRootsClass) {
  root->children = {bolt};

  EXPECT_TRUE(utils.GetAllChildren(session, root, all));

  EXPECT_THAT(Calls(),
              ElementsAre("NewObjects", "NewObjects", "list 2.Add(root)", "NewQueryDefinition", "From.Add(110, F)",
                          "Select.Add(NM_CN_PART_NUMBER, F, False)", "Select.Add(REVISION, F, False)",
                          "root.Children(the definition)", "bolt.GetVersion(2)", "list 1.Add(bolt)", "list 2.Add(bolt)",
                          "list 2.Remove(0)", "bolt.Children(the definition)", "list 2.Remove(0)"));
}

TEST_F(AllChildren, AreAskedForUnderThePolicyThatIsGiven) {
  const auto behavior = session->ObjectStore()->DefaultBehavior();

  EXPECT_TRUE(utils.GetAllChildren(session, left, all, behavior));

  EXPECT_THAT(CallsOf("left."), ElementsAre("left.ChildrenWithBehavior(the definition, the default)"));
  EXPECT_THAT(CallsOf("bolt.Children"), ElementsAre("bolt.ChildrenWithBehavior(the definition, the default)"));
}

TEST_F(AllChildren, AreTheVersionsThatAWalkGoesOnWith) {
  left->version = nut;
  root->children = {left};

  EXPECT_TRUE(utils.GetAllChildren(session, root, all));

  EXPECT_THAT(Names(), ElementsAre("nut"));
  EXPECT_THAT(CallsOf("left.Children"), IsEmpty());
  EXPECT_THAT(CallsOf("nut.Children"), ElementsAre("nut.Children(the definition)"));
}

TEST_F(AllChildren, GetTheirAttributesInOneStepAtTheEnd) {
  EXPECT_TRUE(utils.GetAllChildren(session, left, all, nullptr, "STATE,REVISION"));

  EXPECT_THAT(CallsOf("list 1"),
              ElementsAre("list 1.Add(bolt)", "list 1.SetAttributeNames(STATE,REVISION)", "list 1.RetrieveAll"));
  EXPECT_EQ(Calls().back(), "list 1.RetrieveAll");
}

TEST_F(AllChildren, GetNoAttributesUnlessAskedFor) {
  EXPECT_TRUE(utils.GetAllChildren(session, left, all, nullptr, ""));

  EXPECT_THAT(CallsOf("list 1"), ElementsAre("list 1.Add(bolt)"));
}

TEST_F(AllChildren, OfALeafAreAnEmptyListWithoutAttributes) {
  EXPECT_TRUE(utils.GetAllChildren(session, nut, all, nullptr, "STATE"));

  EXPECT_EQ(all->Count(), 0);
  EXPECT_THAT(CallsOf("list 1"), IsEmpty());
}

TEST_F(AllChildren, TakeThePlaceOfAnOldList) {
  all = MakeRef<NotedList>(notes, "old", std::vector<Ref<VdObject>>{nut});

  EXPECT_TRUE(utils.GetAllChildren(session, left, all));

  EXPECT_THAT(Names(), ElementsAre("bolt"));
}

TEST_F(AllChildren, EndWithWhateverFailsWhichIsReported) {
  for (const auto* call :
       {"NewObjects", "list", "NewQueryDefinition", "From", "Select", "right.Children", "nut.GetVersion"}) {
    Process().texts.COMMON_UNEXPECTED_ERROR.text = "Failure in REP1: REP2";
    notes->calls.clear();
    GivenFailureOf(call);
    EXPECT_FALSE(utils.GetAllChildren(session, root, all)) << call;
    EXPECT_EQ(Boxes().back(), Report("Cls_Utils.GetAllChildren", "cable")) << call;
  }
}

TEST_F(AllChildren, ThatWereFoundBeforeAFailureAreGiven) {
  GivenFailureOf("right.Children");

  EXPECT_FALSE(utils.GetAllChildren(session, root, all));

  EXPECT_THAT(Names(), ElementsAre("left", "right", "bolt"));
}

TEST_F(AllChildren, OfAStructureDeeperThanAStackAreFound) {
  constexpr int kDeep = 20000;
  const auto top = NewObject("top", 100 + kDeep);
  auto above = top;
  // The vault of the test lets go of the highest ids first, so that no level takes those below it along.
  for (int i = kDeep; i > 0; --i) {
    const auto below = NewObject("level", 99 + i);
    above->children = {below};
    above = below;
  }

  EXPECT_TRUE(utils.GetAllChildren(session, top, all));

  EXPECT_EQ(all->Count(), kDeep);
  EXPECT_EQ(all->Item(kDeep - 1), Ref<VdObject>(above));
}

TEST_F(AllChildren, EndWithAFailureOfReadingTheirAttributesWhichIsReported) {
  for (const auto* call : {"list 1.SetAttributeNames", "list 3.RetrieveAll"}) {
    GivenFailureOf(call);
    EXPECT_FALSE(utils.GetAllChildren(session, root, all, nullptr, "STATE")) << call;
    EXPECT_EQ(Boxes().back(), Report("Cls_Utils.GetAllChildren", "cable")) << call;
  }
}

TEST_F(AllChildren, OfNothingAreReported) {
  EXPECT_FALSE(utils.GetAllChildren(session, nullptr, all));

  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_Utils.GetAllChildren", kNotSet)));
}

class RootNames : public NotedVault {
 protected:
  std::string RootNameOf(const Variant& description) {
    const auto document = NewObject("the matrix", 7, 20);
    (*document->values)["CN_DESCRIPTION"] = description;
    return utils.GetTheRootName(document);
  }
};

TEST_F(RootNames, AreTheDescriptionWithoutItsLastWord) {
  EXPECT_EQ(RootNameOf("CAR BODY Matrix"), "CAR BODY");
  EXPECT_EQ(RootNameOf("CAR Matrix"), "CAR");
  EXPECT_EQ(RootNameOf("A B C D"), "A B C");
}

TEST_F(RootNames, OfOneWordAreEmpty) {
  EXPECT_EQ(RootNameOf("Matrix"), "");
  EXPECT_EQ(RootNameOf(""), "");
}

TEST_F(RootNames, KeepBlanksBetweenTheWords) {
  EXPECT_EQ(RootNameOf("CAR  Matrix"), "CAR ");
  EXPECT_EQ(RootNameOf(" Matrix"), "");
  EXPECT_EQ(RootNameOf("CAR Matrix "), "CAR Matrix");
  EXPECT_EQ(RootNameOf("CAR\tMatrix"), "");
}

TEST_F(RootNames, AreEmptyAfterAFailureWithoutAWord) {
  EXPECT_EQ(utils.GetTheRootName(NewObject("no description", 8)), "");
  EXPECT_EQ(utils.GetTheRootName(nullptr), "");

  EXPECT_THAT(Boxes(), IsEmpty());
}

class LinkedObjects : public NotedVault {
 protected:
  LinkedObjects() { GivenRows({21, 22}); }

  bool Retrieve() { return utils.RetrieveAllObjectsLinked(session, car, "Document", "Document Link", linked); }

  Ref<NotedObject> car = NewObject("the car", 7);
  Ref<NotedObject> first = NewObject("first", 21, 20), second = NewObject("second", 22, 20);
  Ref<VdObjects> linked;
};

TEST_F(LinkedObjects, AreAskedForInOneQueryAndTakenOneByOne) {
  EXPECT_TRUE(Retrieve());

  EXPECT_THAT(Calls(), ElementsAre("ClassByName(Document)", "ClassByName(Document Link)", "NewQuery", "From.Add(10, F)",
                                   "From.Add(30, L)", "From.Add(20, S)", "Select.Add(OBJECT_ID, S, False)",
                                   "Where.Add(, OBJECT_ID, =, 7, 0, F)", "the default.Clone", "a copy.OptionD = True",
                                   "a copy.OptionA = 0", "RunWithBehavior(a copy)", "ObjectById(20, 21)", "NewObjects",
                                   "list 1.Add(first)", "ObjectById(20, 22)", "list 1.Add(second)"));
  EXPECT_EQ(linked->Count(), 2);
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(LinkedObjects, AreTakenOnceEach) {
  GivenRows({21, 22, 21, 22, 22});

  EXPECT_TRUE(Retrieve());

  EXPECT_THAT(CallsOf("list 1"), ElementsAre("list 1.Add(first)", "list 1.Add(second)"));
}

TEST_F(LinkedObjects, ThatAreGoneArePassedOver) {
  GivenRows({99, 22});

  EXPECT_TRUE(Retrieve());

  EXPECT_THAT(CallsOf("list 1"), ElementsAre("list 1.Add(second)"));
}

TEST_F(LinkedObjects, AreNothingWithoutRowsAndThatIsNoFailure) {
  GivenRows({});
  linked = MakeRef<NotedList>(notes, "old");

  EXPECT_TRUE(Retrieve());

  EXPECT_FALSE(linked);
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(LinkedObjects, EndWithTheFirstThatCannotBeTaken) {
  GivenFailureOf("list 1.Add(first)");

  EXPECT_FALSE(Retrieve());

  EXPECT_THAT(CallsOf("ObjectById"), ElementsAre("ObjectById(20, 21)"));
  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_Utils.AddObjectToObjects", "cable")));
}

TEST_F(LinkedObjects, EndWithWhateverFailsWhichIsReported) {
  for (const auto* call : {"ClassByName(Document)", "ClassByName(Document Link)", "NewQuery", "From", "Select", "Where",
                           "the default.Clone", "a copy.OptionD", "a copy.OptionA", "RunWithBehavior", "ObjectById"}) {
    Process().texts.COMMON_UNEXPECTED_ERROR.text = "Failure in REP1: REP2";
    linked = MakeRef<NotedList>(notes, "old");
    GivenFailureOf(call);
    EXPECT_FALSE(Retrieve()) << call;
    EXPECT_FALSE(linked) << call;
    EXPECT_EQ(Boxes().back(), Report("Cls_Utils.RetrieveAllObjectsLinked", "cable")) << call;
  }
}

TEST_F(LinkedObjects, OfUnknownClassesAreReported) {
  EXPECT_FALSE(utils.RetrieveAllObjectsLinked(session, car, "NO SUCH CLASS", "Document Link", linked));

  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_Utils.RetrieveAllObjectsLinked", "no NO SUCH CLASS")));
}

class ListWithoutRepeats : public LinkedObjects {
 protected:
  bool Add(const Ref<VdObject>& object) { return UtilsInternals::AddObjectToObjects(utils, session, object, linked); }
};

TEST_F(ListWithoutRepeats, IsMadeForTheFirstObject) {
  EXPECT_TRUE(Add(first));

  EXPECT_THAT(Calls(), ElementsAre("NewObjects", "list 1.Add(first)"));
}

TEST_F(ListWithoutRepeats, IsNotMadeForNothing) {
  EXPECT_TRUE(Add(nullptr));

  EXPECT_FALSE(linked);
  EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(ListWithoutRepeats, TellsObjectsApartByClassAndId) {
  Add(first);

  EXPECT_TRUE(Add(NewObject("same id", 21, 10)));
  EXPECT_TRUE(Add(NewObject("same class", 22, 20)));
  EXPECT_TRUE(Add(NewObject("same", 21, 20)));

  EXPECT_THAT(CallsOf("list 1"), ElementsAre("list 1.Add(first)", "list 1.Add(same id)", "list 1.Add(same class)"));
}

TEST_F(ListWithoutRepeats, TakesAnObjectThatCannotBeComparedFurther) {
  linked = MakeRef<NotedList>(notes, "list", std::vector<Ref<VdObject>>{nullptr, first});

  EXPECT_TRUE(Add(first));

  EXPECT_THAT(CallsOf("list.Add"), ElementsAre("list.Add(first)"));
  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_Utils.CompareObjects", kNotSet)));
}

TEST_F(ListWithoutRepeats, IsNotGrownAfterAFailureWhichIsReported) {
  GivenFailureOf("NewObjects");

  EXPECT_FALSE(Add(first));

  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_Utils.AddObjectToObjects", "cable")));
}

TEST_F(ListWithoutRepeats, ComparesObjectsByClassAndId) {
  bool same = false;
  EXPECT_TRUE(UtilsInternals::CompareObjects(utils, first, NewObject("again", 21, 20), same));
  EXPECT_TRUE(same);
  EXPECT_TRUE(UtilsInternals::CompareObjects(utils, first, NewObject("other class", 21, 10), same));
  EXPECT_FALSE(same);
  same = true;
  EXPECT_TRUE(UtilsInternals::CompareObjects(utils, first, second, same));
  EXPECT_FALSE(same);

  EXPECT_FALSE(UtilsInternals::CompareObjects(utils, first, nullptr, same));
  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_Utils.CompareObjects", kNotSet)));
}

class LogicalLinks : public LinkedObjects {
 protected:
  LogicalLinks() { content->link = NewObject("the link", 3, 30); }

  bool Remove() { return utils.RemoveLogicalLink(session, car, first, "Document Link"); }
};

TEST_F(LogicalLinks, AreFoundByTheirEndsAndRemoved) {
  EXPECT_TRUE(Remove());

  EXPECT_THAT(Calls(), ElementsAre("ClassByName(Document Link)", "LinkObject(30, 10:7, 20:21)", "the default.Clone",
                                   "a copy.OptionD = True", "a copy.OptionA = 0", "a copy.OptionC = 2",
                                   "the link.RemoveLink(a copy)"));
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(LogicalLinks, ThatAreNotThereAreRemovedToo) {
  content->link = nullptr;

  EXPECT_TRUE(Remove());

  EXPECT_THAT(Calls(), ElementsAre("ClassByName(Document Link)", "LinkObject(30, 10:7, 20:21)"));
}

TEST_F(LogicalLinks, StayAfterWhateverFailsWhichIsReported) {
  for (const auto* call : {"ClassByName", "LinkObject", "the default.Clone", "a copy.OptionD", "a copy.OptionA",
                           "a copy.OptionC", "the link.RemoveLink"}) {
    Process().texts.COMMON_UNEXPECTED_ERROR.text = "Failure in REP1: REP2";
    GivenFailureOf(call);
    EXPECT_FALSE(Remove()) << call;
    EXPECT_EQ(Boxes().back(), Report("Cls_Utils.RemoveLogicalLink", "cable")) << call;
  }
}

TEST_F(LogicalLinks, OfNothingAreReported) {
  EXPECT_FALSE(utils.RemoveLogicalLink(session, car, nullptr, "Document Link"));
  EXPECT_FALSE(utils.RemoveLogicalLink(session, nullptr, first, "Document Link"));

  EXPECT_EQ(Boxes()[0], Report("Cls_Utils.RemoveLogicalLink", kNotSet));
}

}  // namespace
}  // namespace quintara::test

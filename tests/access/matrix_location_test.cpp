#include <filesystem>
#include <string>
#include <vector>

#include "access/noted_vault.h"
#include "access/utils_internals.h"

namespace quintara::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::NiceMock;
using ::testing::Return;
using ::testing::Throw;
using veldora::VdObject;
using veldora::VdObjects;

constexpr auto kOtherType = static_cast<MatrixType>(7);
const std::string kNotSet = "Object variable or With block variable not set";

class MatrixLocation : public NotedVault {
 protected:
  MatrixLocation() {
    (*product->values)["CN_ID"] = "P7";
    behavior = session->ObjectStore()->DefaultBehavior();
    ON_CALL(*component, PartNumber).WillByDefault(Return("CAR"));
    std::filesystem::create_directory(folder.Path("work"));
    Process().gWorkDirectory = folder.Path("work");
  }

  /// The calls in which the matrices of the product are asked for.
  static std::vector<std::string> Composition(const std::string& description, int fileType) {
    return {"NewQuery",
            "From.Add(10, F)",
            "ClassByName(Document Link)",
            "From.Add(30, L)",
            "From.Add(20, S)",
            "Select.Add(CN_DESCRIPTION, S, False)",
            "Select.Add(FILE_TYPE, S, False)",
            "Select.Add(CN_ID, F, False)",
            "Select.Add(OBJECT_ID, F, False)",
            "Where.Add(, CN_ID, =, \"P7\", 0, F)",
            "Where.Add(, OBJECT_ID, =, 7, 0, F)",
            "Where.Add(, CN_DESCRIPTION, =, \"" + description + "\", 0, S)",
            "Where.Add(, FILE_TYPE, =, " + std::to_string(fileType) + ", 0, S)"};
  }
  static std::vector<std::string> FileTypeLookUp(const std::string& name) {
    return {"ClassByName(FILE_TYPE)",
            "NewQuery",
            "From.Add(40, F)",
            "Select.Add(OBJECT_ID, F, True)",
            "Where.Add(, TDM_NAME, =, \"" + name + "\", 0, F)",
            "RunClassQuery"};
  }
  static std::vector<std::string> Joined(const std::vector<std::vector<std::string>>& lists) {
    std::vector<std::string> all;
    for (const auto& list : lists) all.insert(all.end(), list.begin(), list.end());
    return all;
  }
  void RenewReport() { Process().texts.COMMON_UNEXPECTED_ERROR.text = "Failure in REP1: REP2"; }

  TemporaryFolder folder;
  Ref<NotedObject> product = NewObject("the car", 7);
  Ref<NotedObject> matrix = NewObject("the matrix", 77, 20), other = NewObject("another", 78, 20),
                   newest = NewObject("the newest", 79, 20);
  Ref<NiceMock<MockProduct>> component = MakeRef<NiceMock<MockProduct>>();
  Ref<veldora::VdBehavior> behavior;
};

class MatrixOfProduct : public MatrixLocation {
 protected:
  MatrixOfProduct() {
    GivenRows({77});
    matrix->version = newest;
  }
  Ref<VdObject> Find(MatrixType type = MatrixType::XML) {
    return utils.GetDocumentMatrixFromObject(session, product, behavior, type);
  }
};

TEST_F(MatrixOfProduct, IsTheNewestRevisionOfTheDocumentThatIsLinked) {
  EXPECT_EQ(Find(), Ref<VdObject>(newest));

  EXPECT_EQ(Calls(), Joined({{"ClassByName(Document)"},
                             FileTypeLookUp("xml"),
                             Composition("*Matrix", 501),
                             {"RunWithBehavior(the default)", "ObjectsFromRecList(the table, 0)", "ObjectsOf(S)",
                              "ObjectById(20, 77)", "the matrix.Retrieve", "the matrix.Retrieve",
                              "the matrix.GetVersion(3)", "the newest.Retrieve", "the newest.Retrieve"}}));
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(MatrixOfProduct, IsAskedForByTheFileTypeOfItsForm) {
  Find(MatrixType::Excel);

  EXPECT_THAT(Calls(), Contains("Where.Add(, TDM_NAME, =, \"Microsoft Excel\", 0, F)"));
  EXPECT_THAT(Calls(), Contains("Where.Add(, FILE_TYPE, =, 502, 0, S)"));
}

TEST_F(MatrixOfProduct, OfAnotherFormIsAskedForByNoFileType) {
  Find(kOtherType);

  EXPECT_EQ(std::vector(Calls().begin(), Calls().begin() + 14),
            Joined({{"ClassByName(Document)"}, Composition("*Matrix", 0)}));
}

TEST_F(MatrixOfProduct, OfAnUnknownFileTypeIsAskedForAllTheSame) {
  content->fileTypes.clear();

  EXPECT_TRUE(Find());

  EXPECT_THAT(Calls(), Contains("Where.Add(, FILE_TYPE, =, 0, 0, S)"));
}

TEST_F(MatrixOfProduct, IsTheFirstOfSeveral) {
  GivenRows({77, 78});

  EXPECT_EQ(Find(), Ref<VdObject>(newest));

  EXPECT_THAT(CallsOf("ObjectById"), ElementsAre("ObjectById(20, 77)"));
}

TEST_F(MatrixOfProduct, IsCountedInTheQueryAndReadFromTheSoughtObjects) {
  GivenRows(3, {78});

  EXPECT_EQ(Find(), Ref<VdObject>(other));
}

TEST_F(MatrixOfProduct, IsNothingWhereTheQueryCountsNoneWhateverObjectsThereAre) {
  GivenRows(0, {77});

  EXPECT_FALSE(Find());

  EXPECT_THAT(CallsOf("ObjectsOf"), ElementsAre("ObjectsOf(S)"));
  EXPECT_THAT(CallsOf("ObjectById"), IsEmpty());
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(MatrixOfProduct, IsTheLinkedRevisionWhereTheNewestCannotBeHad) {
  GivenFailureOf("the matrix.GetVersion");

  EXPECT_EQ(Find(), Ref<VdObject>(matrix));

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(MatrixOfProduct, ThatIsGoneIsReported) {
  GivenRows({99});

  EXPECT_FALSE(Find());

  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_Init.GetDocumentMatrixFromObject", kNotSet)));
}

TEST_F(MatrixOfProduct, CountedWithoutSoughtObjectsIsReported) {
  GivenRows(1, {});

  EXPECT_FALSE(Find());

  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_Init.GetDocumentMatrixFromObject", "Subscript out of range")));
}

TEST_F(MatrixOfProduct, IsNothingWithWhateverFailsWhichIsReported) {
  for (const auto* call : {"From.Add(10", "ClassByName(Document Link)", "From.Add(30", "From.Add(20", "Select.Add(CN_",
                           "Where.Add(, CN_ID", "Where.Add(, FILE_TYPE", "RunWithBehavior", "ObjectsFromRecList",
                           "ObjectsOf", "ObjectById", "the matrix.Retrieve"}) {
    RenewReport();
    GivenFailureOf(call);
    EXPECT_FALSE(Find()) << call;
    EXPECT_EQ(Boxes().back(), Report("Cls_Init.GetDocumentMatrixFromObject", "cable")) << call;
  }
}

TEST_F(MatrixOfProduct, OfNothingIsReported) {
  EXPECT_FALSE(utils.GetDocumentMatrixFromObject(session, nullptr, behavior, MatrixType::XML));

  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_Init.GetDocumentMatrixFromObject", kNotSet)));
}

class DocumentById : public MatrixOfProduct {
 protected:
  Ref<VdObject> Find(std::int32_t id) { return utils.GetDocumentFromID(session, 20, id); }
};

TEST_F(DocumentById, IsItsNewestRevision) {
  EXPECT_EQ(Find(77), Ref<VdObject>(newest));

  EXPECT_THAT(Calls(), ElementsAre("ObjectById(20, 77)", "the matrix.Retrieve", "the matrix.Retrieve",
                                   "the matrix.GetVersion(3)", "the newest.Retrieve", "the newest.Retrieve"));
}

TEST_F(DocumentById, IsNothingWhereThereIsNone) {
  EXPECT_FALSE(Find(99));

  EXPECT_THAT(Calls(), ElementsAre("ObjectById(20, 99)"));
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(DocumentById, IsNothingAfterAFailureWithoutAWord) {
  GivenFailureOf("ObjectById");
  EXPECT_FALSE(Find(77));
  GivenFailureOf("the matrix.Retrieve");
  EXPECT_FALSE(Find(77));
  EXPECT_FALSE(utils.GetDocumentFromID(nullptr, 20, 77));

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(DocumentById, IsItselfWhereTheNewestCannotBeRead) {
  GivenFailureOf("the newest.Retrieve");

  EXPECT_EQ(Find(77), Ref<VdObject>(matrix));
}

class MatrixCopy : public MatrixLocation {
 protected:
  MatrixCopy() { (*matrix->values)["CN_DESCRIPTION"] = "CAR Matrix"; }

  std::int16_t Copy(MatrixType type = MatrixType::XML) { return utils.CopyMatrixFromDocument(session, matrix, type); }
  std::string Work() const { return folder.Path("work"); }
};

TEST_F(MatrixCopy, IsNamedAfterTheDescription) {
  EXPECT_EQ(Copy(), 1);

  EXPECT_THAT(Calls(), ElementsAre("GetService(VdUtil.VdSessionUtil)", "the matrix.Retrieve",
                                   "CopyDocumentFile(the matrix, CAR Matrix.xml, " + Work() + ", 0)"));
}

TEST_F(MatrixCopy, OfTheOlderFormIsAWorkbook) {
  EXPECT_EQ(Copy(MatrixType::Excel), 1);

  EXPECT_EQ(Calls().back(), "CopyDocumentFile(the matrix, CAR Matrix.xls, " + Work() + ", 0)");
}

TEST_F(MatrixCopy, OfAnotherFormIsLeftToTheVaultWithoutAName) {
  EXPECT_EQ(Copy(kOtherType), 1);

  EXPECT_EQ(Calls().back(), "CopyDocumentFile(the matrix, , " + Work() + ", 0)");
  EXPECT_THAT(folder.Names(), ElementsAre("work"));
}

TEST_F(MatrixCopy, TakesThePlaceOfAnOldOne) {
  folder.Write("work/CAR Matrix.xml", "old");
  folder.Write("work/CAR Matrix.xls", "older");

  EXPECT_EQ(Copy(), 1);

  EXPECT_FALSE(folder.Has("work/CAR Matrix.xml"));
  EXPECT_TRUE(folder.Has("work/CAR Matrix.xls"));
}

TEST_F(MatrixCopy, TakesThePlaceOfAnOldOneThatIsReadOnly) {
  folder.Write("work/CAR Matrix.xml", "old");
  platform.TheGate()->StartRecording();

  EXPECT_EQ(Copy(), 1);

  EXPECT_THAT(platform.TheGate()->Record(),
              Contains("FileSystem.DeleteFile(" + folder.Path("work/CAR Matrix.xml") + ", True)"));
}

TEST_F(MatrixCopy, MakesTheWorkDirectory) {
  Process().gWorkDirectory = folder.Path("new");

  EXPECT_EQ(Copy(), 1);

  EXPECT_TRUE(folder.Has("new"));
}

TEST_F(MatrixCopy, IsNotMadeBelowAFolderThatIsMissing) {
  Process().gWorkDirectory = folder.Path("new/work");

  EXPECT_EQ(Copy(), 0);

  EXPECT_THAT(CallsOf("CopyDocumentFile"), IsEmpty());
}

TEST_F(MatrixCopy, IsNotMadeUnderAnUnsafeName) {
  folder.Write("x Matrix.xml", "not ours");
  for (const auto* description : {"../x Matrix", "a/b", "a\\b", "CON.", "x\ny"}) {
    (*matrix->values)["CN_DESCRIPTION"] = description;
    EXPECT_EQ(Copy(), 0) << description;
  }

  EXPECT_TRUE(folder.Has("x Matrix.xml"));
  EXPECT_THAT(CallsOf("CopyDocumentFile"), IsEmpty());
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(MatrixCopy, FailsInSilence) {
  for (const auto* call : {"GetService", "the matrix.Retrieve", "CopyDocumentFile"}) {
    GivenFailureOf(call);
    EXPECT_EQ(Copy(), 0) << call;
  }
  EXPECT_EQ(utils.CopyMatrixFromDocument(session, nullptr, MatrixType::XML), 0);
  EXPECT_EQ(utils.CopyMatrixFromDocument(nullptr, matrix, MatrixType::XML), 0);
  content->util = nullptr;
  EXPECT_EQ(Copy(), 0);

  EXPECT_THAT(Boxes(), IsEmpty());
}

// A car whose wheels stand in an axle, and a cart that has the axle too. A query of links finds the matrix of
// whichever root asks.
class LinkedMatrices : public MatrixLocation {
 protected:
  LinkedMatrices() {
    for (const auto& object : {car, cart, axle, wheel}) (*object->values)["CN_ID"] = object->Name();
    axle->parents = {car, cart};
    wheel->parents = {axle};
    GivenRows({77});
  }

  Ref<VdObjects> Find(const Ref<VdObject>& object) { return utils.GetLinkedDocs(session, object, MatrixType::XML); }
  std::vector<std::string> Names(const Ref<VdObjects>& documents) {
    std::vector<std::string> names;
    for (int i = 0; i < documents->Count(); ++i) names.push_back(documents->Item(i)->Name());
    return names;
  }

  Ref<NotedObject> car = NewObject("car", 1), cart = NewObject("cart", 2), axle = NewObject("axle", 3),
                   wheel = NewObject("wheel", 4), rack = NewObject("rack", 5, 40);
};

TEST_F(LinkedMatrices, OfARootAreItsOwn) {
  EXPECT_EQ(Names(Find(car)), std::vector<std::string>{"the matrix"});

  const auto query = Composition("*Matrix", 501);
  auto calls = Calls();
  calls.resize(16);
  EXPECT_THAT(calls, ElementsAre("the default.Clone", "a copy.OptionB = 0", "a copy.OptionA = 0", "a copy.OptionC = 2",
                                 "ClassByName(ZORVA Product)", "NewObjects", "NewQuery", "From.Add(10, S)",
                                 "Select.Add(CN_DESCRIPTION, S, False)", "Select.Add(NM_CN_PART_NUMBER, S, False)",
                                 "Select.Add(FILE_NAME, S, False)", "Select.Add(CN_ID, S, False)",
                                 "Select.Add(OBJECT_ID, S, False)", "car.Parents(the query's definition, a copy)",
                                 "ClassByName(Document)", "ClassByName(FILE_TYPE)"));
  EXPECT_THAT(Calls(), Contains("RunWithBehavior(a copy)"));
}

TEST_F(LinkedMatrices, AreThoseOfTheRootsAbove) {
  EXPECT_TRUE(Find(wheel));

  EXPECT_THAT(CallsOf("Where.Add(, CN_ID"),
              ElementsAre("Where.Add(, CN_ID, =, \"car\", 0, F)", "Where.Add(, CN_ID, =, \"cart\", 0, F)"));
}

TEST_F(LinkedMatrices, AreTakenOnceEach) {
  EXPECT_EQ(Names(Find(wheel)), std::vector<std::string>{"the matrix"});

  EXPECT_THAT(CallsOf("list 1"), ElementsAre("list 1.Add(the matrix)"));
}

TEST_F(LinkedMatrices, AreNothingWhereNoRootHasOne) {
  GivenRows({});

  EXPECT_FALSE(Find(wheel));

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(LinkedMatrices, AreThoseOfAnObjectThatOnlyOtherClassesHold) {
  wheel->parents = {rack};

  EXPECT_TRUE(Find(wheel));

  EXPECT_THAT(CallsOf("rack."), IsEmpty());
  EXPECT_THAT(CallsOf("Where.Add(, CN_ID"), ElementsAre("Where.Add(, CN_ID, =, \"wheel\", 0, F)"));
}

TEST_F(LinkedMatrices, AreNotThoseOfAnObjectThatAProductHoldsToo) {
  wheel->parents = {rack, car, rack};

  EXPECT_TRUE(Find(wheel));

  EXPECT_THAT(CallsOf("Where.Add(, CN_ID"), ElementsAre("Where.Add(, CN_ID, =, \"car\", 0, F)"));
}

TEST_F(LinkedMatrices, LookUpwardsThroughTheFirstClassOfProductsOnly) {
  Process().gClassProducts = "FILE_TYPE,ZORVA Product";
  Process().gFirstClassProducts = "FILE_TYPE";

  EXPECT_TRUE(Find(wheel));

  EXPECT_THAT(CallsOf("Where.Add(, CN_ID"), ElementsAre("Where.Add(, CN_ID, =, \"wheel\", 0, F)"));
}

TEST_F(LinkedMatrices, AreLostWithAFailureAboveThoughTheWalkGoesOn) {
  GivenFailureOf("car.Parents");

  EXPECT_FALSE(Find(wheel));

  EXPECT_THAT(CallsOf("cart."), ElementsAre("cart.Parents(the query's definition, a copy)"));
  EXPECT_THAT(CallsOf("Where.Add(, CN_ID"), ElementsAre("Where.Add(, CN_ID, =, \"cart\", 0, F)"));
  EXPECT_THAT(CallsOf("list 1"), IsEmpty());
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(LinkedMatrices, AreLostWithAFailureThatEndsItsLevelAndNoOther) {
  const auto lower = NewObject("lower", 6);
  (*lower->values)["CN_ID"] = "lower";
  lower->parents = {axle, cart};
  axle->parents = {car, nullptr, rack, cart};

  EXPECT_FALSE(Find(lower));

  EXPECT_THAT(CallsOf("list 1"), ElementsAre("list 1.Add(the matrix)"));
  EXPECT_THAT(CallsOf("cart."), testing::SizeIs(1));
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(LinkedMatrices, AreLostWithALaterFailureToo) {
  GivenFailureOf("cart.Parents");

  EXPECT_FALSE(Find(wheel));

  EXPECT_THAT(CallsOf("list 1"), ElementsAre("list 1.Add(the matrix)"));
}

TEST_F(LinkedMatrices, OfARootWhoseQueryFailsAreReportedAndPassedOver) {
  GivenFailureOf("Where.Add(, CN_ID, =, \"car\"");

  EXPECT_EQ(Names(Find(wheel)), std::vector<std::string>{"the matrix"});

  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_Init.GetDocumentMatrixFromObject", "cable")));
}

TEST_F(LinkedMatrices, AreNothingWithWhateverFailsWithoutAWord) {
  for (const auto* call :
       {"the default.Clone", "a copy.OptionB", "a copy.OptionA", "a copy.OptionC", "ClassByName(ZORVA", "NewObjects",
        "NewQuery", "From.Add(10, S)", "Select.Add(FILE_NAME", "wheel.Parents", "list"}) {
    notes->calls.clear();
    GivenFailureOf(call);
    EXPECT_FALSE(Find(wheel)) << call;
  }
  GivenFailureOf("none");
  EXPECT_FALSE(Find(nullptr));
  EXPECT_FALSE(utils.GetLinkedDocs(nullptr, wheel, MatrixType::XML));

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(LinkedMatrices, OfAStructureDeeperThanAStackAreFound) {
  constexpr int kDeep = 20000;
  Ref<NotedObject> below = wheel;
  wheel->parents.clear();
  for (int i = 0; i < kDeep; ++i) {
    const auto above = NewObject("level", 1000 + i);
    (*above->values)["CN_ID"] = i;
    below->parents = {above};
    below = above;
  }

  EXPECT_TRUE(Find(wheel));

  EXPECT_THAT(CallsOf("RunWithBehavior"), testing::SizeIs(1));
  EXPECT_THAT(CallsOf("Where.Add(, CN_ID"), ElementsAre("Where.Add(, CN_ID, =, 19999, 0, F)"));
}

class Walk : public LinkedMatrices {
 protected:
  Ref<VdObjects> Collect(const Ref<VdObject>& object, const Ref<VdObjects>& documents) {
    return UtilsInternals::CollectRootMatrices(utils, session, object, 10, behavior, documents, MatrixType::XML);
  }
  Ref<NotedList> list = MakeRef<NotedList>(notes, "the list");
};

TEST_F(Walk, AddsToTheListThatItIsGiven) {
  list->objects = {other};

  EXPECT_EQ(Collect(car, list), Ref<VdObjects>(list));

  EXPECT_EQ(Names(list), (std::vector<std::string>{"another", "the matrix"}));
}

TEST_F(Walk, LeavesAListThatHasTheMatrixAlready) {
  list->objects = {other, NewObject("the same", 77, 20)};

  EXPECT_EQ(Collect(car, list), Ref<VdObjects>(list));

  EXPECT_EQ(Names(list), (std::vector<std::string>{"another", "the same"}));
}

TEST_F(Walk, TakesDocumentsOfOneIdAndTwoClassesForTwo) {
  list->objects = {NewObject("same id", 77, 10)};

  Collect(car, list);

  EXPECT_EQ(Names(list), (std::vector<std::string>{"same id", "the matrix"}));
}

TEST_F(Walk, GivesNothingForNothing) {
  EXPECT_FALSE(Collect(car, nullptr));
  GivenRows({});
  EXPECT_FALSE(Collect(car, nullptr));

  EXPECT_THAT(Boxes(), IsEmpty());
}

class Choice : public MatrixLocation {
 protected:
  Ref<VdObject> Choose(const std::vector<int>& results) {
    content->dialog = {results, {other, matrix}};
    return utils.ChooseMatrix(session, list);
  }
  Ref<NotedList> list = MakeRef<NotedList>(notes, "the list", std::vector<Ref<VdObject>>{matrix, other});
};

TEST_F(Choice, IsWhatTheUserPicked) {
  other->clone = newest;

  EXPECT_EQ(Choose({1}), Ref<VdObject>(newest));

  EXPECT_THAT(Calls(), ElementsAre("GetService(VdGUISrv.VdCommonGUI)", "Dialogs.New(1)", "the list.Records",
                                   "ObjectsFromRecList(the table, 0)", "Input.Objects = the results",
                                   "WindowOptionB = 0", "Show", "Result", "another.Clone", "the newest.Retrieve"));
}

TEST_F(Choice, IsNothingForEveryOtherResultWhichIsReadThreeTimes) {
  for (const int result : {0, 2, 6, 7, -1}) {
    notes->calls.clear();
    EXPECT_FALSE(Choose({result})) << result;
    EXPECT_THAT(CallsOf("Result"), ElementsAre("Result", "Result", "Result")) << result;
    EXPECT_THAT(CallsOf("another"), IsEmpty()) << result;
  }

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(Choice, IsNothingWhateverTheLaterResultsAre) {
  EXPECT_FALSE(Choose({0, 1, 1}));
  EXPECT_FALSE(Choose({7, 2, 0}));
  EXPECT_FALSE(Choose({7, 0, 6}));
}

TEST_F(Choice, ConfirmedWithNothingPickedIsNothing) {
  content->dialog.results = {1};

  EXPECT_FALSE(utils.ChooseMatrix(session, list));

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(Choice, IsNothingWithWhateverFailsWithoutAWord) {
  for (const auto* call : {"GetService", "Dialogs", "the list.Records", "ObjectsFromRecList", "Input", "WindowOptionB",
                           "Show", "Result", "another.Clone", "another.Retrieve"}) {
    GivenFailureOf(call);
    EXPECT_FALSE(Choose({1})) << call;
  }
  EXPECT_FALSE(utils.ChooseMatrix(session, nullptr));
  EXPECT_FALSE(utils.ChooseMatrix(nullptr, list));

  EXPECT_THAT(Boxes(), IsEmpty());
}

class Existence : public MatrixLocation {
 protected:
  bool Ask(bool forceYes = false, MatrixType type = MatrixType::XML) {
    return utils.IsMatrixAlreadyExist(component, product, exists, toUpdate, found, type, forceYes);
  }

  bool exists = true, toUpdate = true;
  Ref<VdObject> found;
};

TEST_F(Existence, IsTestedForExactlyThisProductInTheSessionOfTheProcess) {
  GivenRows({77});
  matrix->clone = newest;

  EXPECT_FALSE(Ask(true));

  EXPECT_EQ(Calls(), Joined({{"ClassByName(Document)"},
                             FileTypeLookUp("xml"),
                             Composition("CAR Matrix", 501),
                             {"RunLinkQuery", "ObjectsFromRecList(the table, 0)", "ObjectsOf(S)", "ObjectById(20, 77)",
                              "the matrix.Clone", "the newest.Retrieve"}}));
  EXPECT_TRUE(exists);
  EXPECT_TRUE(toUpdate);
  EXPECT_EQ(found, Ref<VdObject>(newest));
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(Existence, OfTheOlderFormIsTestedWithItsFileType) {
  Ask(true, MatrixType::Excel);

  EXPECT_THAT(Calls(), Contains("Where.Add(, FILE_TYPE, =, 502, 0, S)"));
}

TEST_F(Existence, OfAMatrixIsToldAndTheUserIsAskedToUpdateIt) {
  GivenRows({77, 78});
  for (const int answer : {6, 7, 1, 2}) {
    platform.answers = {answer};
    exists = false;
    EXPECT_FALSE(Ask()) << answer;
    EXPECT_TRUE(exists) << answer;
    EXPECT_EQ(toUpdate, answer == 6) << answer;
    EXPECT_EQ(found, Ref<VdObject>(matrix)) << answer;
    EXPECT_EQ(Boxes().back(), Told("update CAR?", kQuestion)) << answer;
  }
}

TEST_F(Existence, OfNoMatrixIsToldAndTheUserIsAskedToRecordOne) {
  GivenRows(0, {77});
  for (const int answer : {6, 7, 1, 2}) {
    platform.answers = {answer};
    exists = true;
    EXPECT_FALSE(Ask()) << answer;
    EXPECT_FALSE(exists) << answer;
    EXPECT_EQ(toUpdate, answer == 6) << answer;
    EXPECT_FALSE(found) << answer;
    EXPECT_EQ(Boxes().back(), Told("record CAR?", kQuestion)) << answer;
  }
}

TEST_F(Existence, OfNoMatrixNeedsNoQuestionWhenTheAnswerIsForced) {
  toUpdate = false;

  EXPECT_FALSE(Ask(true));

  EXPECT_FALSE(exists);
  EXPECT_TRUE(toUpdate);
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(Existence, LeavesTheMatrixThatWasGivenWhereThereIsNone) {
  found = other;

  Ask(true);

  EXPECT_EQ(found, Ref<VdObject>(other));
}

TEST_F(Existence, IsAskedAboutWithTheFirstPartNumberAgainAndAgain) {
  Ask();
  ON_CALL(*component, PartNumber).WillByDefault(Return("CART"));
  Ask();
  GivenRows({77});
  Ask();
  ON_CALL(*component, PartNumber).WillByDefault(Return("CAR"));
  Ask();

  EXPECT_THAT(Boxes(), ElementsAre(Told("record CAR?", kQuestion), Told("record CAR?", kQuestion),
                                   Told("update CART?", kQuestion), Told("update CART?", kQuestion)));
}

TEST_F(Existence, WithoutAQuestionsTextUpdatesNothing) {
  Process().texts.QD_UTILS_QUESTION_RECORD_POSITIONS.text.clear();
  platform.answers = {6};

  EXPECT_FALSE(Ask());

  EXPECT_FALSE(toUpdate);
  EXPECT_THAT(Boxes(), ElementsAre(Told("Nothing to say", kCritical)));
}

TEST_F(Existence, OfAProductWhosePartNumberCannotBeReadIsTestedWithoutOne) {
  ON_CALL(*component, PartNumber).WillByDefault(Throw(Failure(failure::kDeviceError)));

  Ask(true);

  EXPECT_THAT(Calls(), Contains("Where.Add(, CN_DESCRIPTION, =, \" Matrix\", 0, S)"));
}

TEST_F(Existence, IsToldBeforeTheMatrixIsReadAfresh) {
  GivenRows({77});
  exists = toUpdate = false;
  GivenFailureOf("the matrix.Retrieve");

  EXPECT_THROW(Ask(true), Failure);

  EXPECT_TRUE(exists);
  EXPECT_TRUE(toUpdate);
  EXPECT_EQ(found, Ref<VdObject>(matrix));
}

TEST_F(Existence, IsUntoldWhereTheQueryFails) {
  exists = toUpdate = true;
  GivenFailureOf("RunLinkQuery");

  EXPECT_THROW(Ask(), Failure);

  EXPECT_TRUE(exists);
  EXPECT_TRUE(toUpdate);
  EXPECT_FALSE(found);
}

TEST_F(Existence, LetsFailuresGoToTheCaller) {
  GivenRows({77});
  for (const auto* call :
       {"ClassByName(Document Link)", "From.Add(10", "Select", "Where.Add(, CN_ID", "RunLinkQuery",
        "ObjectsFromRecList", "ObjectsOf", "ObjectById", "the matrix.Clone", "the matrix.Retrieve"}) {
    GivenFailureOf(call);
    EXPECT_THROW(Ask(true), Failure) << call;
  }
  GivenFailureOf("none");
  GivenRows({99});
  EXPECT_THROW(Ask(true), Failure);
  EXPECT_THROW(utils.IsMatrixAlreadyExist(component, nullptr, exists, toUpdate, found, MatrixType::XML), Failure);

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(Existence, AsInformationIsTestedAlikeWithoutAQuestion) {
  GivenRows({77});

  EXPECT_TRUE(utils.IsMatrixAlreadyExistAsInformation(component, product, MatrixType::Excel));

  EXPECT_EQ(Calls(), Joined({{"ClassByName(Document)"},
                             FileTypeLookUp("Microsoft Excel"),
                             Composition("CAR Matrix", 502),
                             {"RunLinkQuery", "ObjectsFromRecList(the table, 0)", "ObjectsOf(S)"}}));
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(Existence, AsInformationIsWhatTheQueryCounts) {
  GivenRows(0, {77});
  EXPECT_FALSE(utils.IsMatrixAlreadyExistAsInformation(component, product, MatrixType::XML));
  GivenRows(2, {});
  EXPECT_TRUE(utils.IsMatrixAlreadyExistAsInformation(component, product, MatrixType::XML));
}

TEST_F(Existence, AsInformationLetsFailuresGoToTheCaller) {
  GivenFailureOf("RunLinkQuery");

  EXPECT_THROW(utils.IsMatrixAlreadyExistAsInformation(component, product, MatrixType::XML), Failure);
}

}  // namespace
}  // namespace quintara::test

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "access/access_fixture.h"
#include "access/host_mocks.h"
#include "access/utils/Cls_Utils.h"
#include "base/failure.h"
#include "hosts/cad/cad_host.h"
#include "hosts/native/native_files.h"
#include "support/tiny_files.h"

namespace quintara::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::InSequence;
using ::testing::IsEmpty;
using ::testing::NiceMock;
using ::testing::Return;
using ::testing::SizeIs;
using veldora::HIXDocument;
using veldora::VdObject;

// A component of a file in the CAD host, and a vault that answers what a test wants.
class Resolution : public ::testing::Test, protected AccessBench {
 protected:
  Resolution() {
    folder.Write("BOLT.stp", TinyStep("BOLT"));
    document = host.Application()->Documents()->Add("ZVAProduct")->AsProductDocument();
    document->Product()->Products()->AddComponentsFromFiles({folder.Path("BOLT.stp")}, "All");
    component = document->Product()->Products()->Item(1);
    ON_CALL(*session, ObjectStore).WillByDefault([this] { return Step<veldora::VdObjectStore>(store); });
    Process().gHIX = engine;
  }

  void GivenIds(const std::string& classId, const std::string& objectId) {
    utils.WriteStringProperty(component->Reference(), "CLASS_ID", classId);
    utils.WriteStringProperty(component->Reference(), "OBJECT_ID", objectId);
  }
  // The object 12:345, which gives `first` as its first clone.
  void GivenObject(const Ref<VdObject>& first) {
    ON_CALL(*store, ObjectById(12, 345)).WillByDefault([this](auto...) { return Step<VdObject>(object); });
    ON_CALL(*object, Clone).WillByDefault([this, first] { return Step<VdObject>(first); });
  }
  // The file of the component is that of 12:345.
  void GivenKnownFile() {
    ON_CALL(*engine, DocumentInfo(folder.Path("BOLT.stp"))).WillByDefault([this](auto&) {
      return Step<HIXDocument>(handle);
    });
    ON_CALL(*engine, DocumentClassId).WillByDefault([this](auto&) { return Counted(std::int16_t{12}); });
    ON_CALL(*engine, DocumentObjectId).WillByDefault([this](auto&) { return Counted(345); });
  }
  // Makes the n-th call of a host that answers fail, counted from now on.
  void GivenFailureOf(int n) { callsToFailure = n; }

  template <class Value>
  Value Counted(Value value) {
    if (--callsToFailure == 0) throw Failure(failure::kDeviceError, "cable");
    return value;
  }
  template <class Kind>
  Ref<Kind> Step(const Ref<Kind>& answer) {
    return Counted(answer);
  }

  Gate& gate = *platform.TheGate();
  TemporaryFolder folder;
  CadHost host{{platform.TheGate(), std::make_shared<NativeContents>(platform.TheGate()), {}}};
  Ref<zorva::ProductDocument> document;
  Ref<zorva::Product> component;
  Ref<NiceMock<MockSession>> session = MakeRef<NiceMock<MockSession>>();
  Ref<NiceMock<MockObjectStore>> store = MakeRef<NiceMock<MockObjectStore>>();
  Ref<NiceMock<MockEngine>> engine = MakeRef<NiceMock<MockEngine>>();
  Ref<NiceMock<MockHandle>> handle = MakeRef<NiceMock<MockHandle>>();
  Ref<NiceMock<MockObject>> object = MakeRef<NiceMock<MockObject>>();
  Ref<NiceMock<MockObject>> clone = MakeRef<NiceMock<MockObject>>();
  Ref<NiceMock<MockObject>> secondClone = MakeRef<NiceMock<MockObject>>();
  Cls_Utils utils;
  int callsToFailure = 0;
};

class FromProperties : public Resolution {
 protected:
  Ref<VdObject> Retrieve() { return utils.RetrieveVDObject_FromLWT(session, component); }

  const Box noIds = Told("BOLT.1 has no ids", kWarning);
  const Box noNumbers = Told("the ids of BOLT.1 are no numbers", kWarning);
  const Box noObject = Told("no object of BOLT.1", kWarning);
};

TEST_F(FromProperties, AComponentLeadsToACloneOfItsObject) {
  GivenIds("12", "345");
  GivenObject(clone);

  EXPECT_EQ(Retrieve(), Ref<VdObject>(clone));

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(FromProperties, AComponentWithoutIdsIsWarnedOf) {
  EXPECT_CALL(*session, ObjectStore).Times(0);

  EXPECT_FALSE(Retrieve());

  EXPECT_THAT(Boxes(), ElementsAre(noIds));
}

TEST_F(FromProperties, OneMissingIdIsEnoughAndComesBeforeOneThatIsNoNumber) {
  for (const auto& [classId, objectId] :
       {std::pair{"12", ""}, std::pair{"", "345"}, std::pair{"abc", ""}, std::pair{"", "abc"}}) {
    GivenIds(classId, objectId);
    EXPECT_FALSE(Retrieve()) << classId << ":" << objectId;
    EXPECT_EQ(Boxes().back(), noIds) << classId << ":" << objectId;
  }
}

TEST_F(FromProperties, AnIdThatCannotBeReadIsMissing) {
  GivenIds("12", "345");
  gate.FailOperation("Parameter.ValueAsString", 2);

  EXPECT_FALSE(Retrieve());

  EXPECT_THAT(Boxes(), ElementsAre(noIds));
}

TEST_F(FromProperties, EitherIdMustBeANumber) {
  EXPECT_CALL(*session, ObjectStore).Times(0);
  GivenIds("12", "abc");
  EXPECT_FALSE(Retrieve());
  GivenIds("abc", "345");
  EXPECT_FALSE(Retrieve());

  EXPECT_THAT(Boxes(), ElementsAre(noNumbers, noNumbers));
}

TEST_F(FromProperties, NumbersAreFiniteDecimalsWithNothingButBlanksAround) {
  for (const auto* text : {" ",
                           "\t",
                           "+",
                           "-",
                           "+-1",
                           "--1",
                           "1 2",
                           "12x",
                           "x12",
                           "1,5",
                           "1.2.3",
                           "0x10",
                           "&H10",
                           "nan",
                           "inf",
                           "1e",
                           "1e999",
                           "12 x",
                           "\xC2\xA0"
                           "12",
                           "\xEF\xBC\x91"}) {
    GivenIds("12", text);
    EXPECT_FALSE(Retrieve()) << text;
    EXPECT_EQ(Boxes().back(), noNumbers) << text;
  }
}

TEST_F(FromProperties, NumbersAreRoundedToWholeOnesHalvesToTheEvenOne) {
  const std::vector<std::pair<std::string, std::int16_t>> cases = {
      {"7", 7},   {"007", 7},   {" 7 ", 7},     {"\t7\r\n", 7},     {"+7", 7},
      {"-7", -7}, {"12.5", 12}, {"13.5", 14},   {"-0.5", 0},        {"0.51", 1},
      {"7.", 7},  {".6", 1},    {"1.2e2", 120}, {"32767.4", 32767}, {"-32768", -32768}};
  for (const auto& [text, number] : cases) {
    GivenIds(text, text);
    EXPECT_CALL(*store, ObjectById(number, number)).WillOnce(Return(Ref<VdObject>(object))).RetiresOnSaturation();
    Retrieve();
    EXPECT_TRUE(testing::Mock::VerifyAndClearExpectations(&*store)) << text;
  }

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(FromProperties, AClassIdBeyondSixteenBitsLeadsNowhere) {
  EXPECT_CALL(*store, ObjectById).Times(0);
  for (const auto* text : {"32768", "32767.5", "-32769", "1e300"}) {
    GivenIds(text, "345");
    EXPECT_FALSE(Retrieve()) << text;
    EXPECT_EQ(Boxes().back(), noObject) << text;
  }
}

TEST_F(FromProperties, AnObjectIdBeyondThirtyTwoBitsLeadsNowhere) {
  EXPECT_CALL(*store, ObjectById).Times(0);
  for (const auto* text : {"2147483648", "2147483647.5", "-2147483649"}) {
    GivenIds("12", text);
    EXPECT_FALSE(Retrieve()) << text;
    EXPECT_EQ(Boxes().back(), noObject) << text;
  }
}

TEST_F(FromProperties, TheGreatestIdsAreTaken) {
  GivenIds("32767", "2147483647");
  EXPECT_CALL(*store, ObjectById(32767, 2147483647)).WillOnce(Return(Ref<VdObject>(object)));

  Retrieve();

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(FromProperties, AnUnknownObjectIsWarnedOf) {
  GivenIds("12", "346");

  EXPECT_FALSE(Retrieve());

  EXPECT_THAT(Boxes(), ElementsAre(noObject));
}

TEST_F(FromProperties, AFailureIsWarnedOfLikeAnUnknownObject) {
  GivenIds("12", "345");
  GivenObject(clone);
  for (int n = 1; n <= 3; ++n) {
    GivenFailureOf(n);
    EXPECT_FALSE(Retrieve()) << n;
    EXPECT_EQ(callsToFailure, 0) << n;
  }

  EXPECT_THAT(Boxes(), ElementsAre(noObject, noObject, noObject));
}

TEST_F(FromProperties, WithoutASessionAnObjectIsWarnedOfLikeAnUnknownOne) {
  GivenIds("12", "345");

  EXPECT_FALSE(utils.RetrieveVDObject_FromLWT(nullptr, component));

  EXPECT_THAT(Boxes(), ElementsAre(noObject));
}

TEST_F(FromProperties, AWarningWhoseNameCannotBeReadAtOnceBecomesTheLastOne) {
  constexpr int kReadingTwoIds = 4;
  gate.FailCall(kReadingTwoIds + 1);

  EXPECT_FALSE(Retrieve());

  EXPECT_TRUE(gate.HasFailed());
  EXPECT_THAT(Boxes(), ElementsAre(noObject));
}

TEST_F(FromProperties, AComponentWithoutANameFailsAtTheCaller) {
  gate.FailOperation("Product.Name");

  EXPECT_THROW(Retrieve(), Failure);

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(FromProperties, NoComponentFailsAtTheCaller) {
  try {
    utils.RetrieveVDObject_FromLWT(session, nullptr);
    FAIL() << "no name to warn with";
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number(), failure::kObjectNotSet);
  }

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(FromProperties, TheSecondWarningNamesTheFirstComponentAgain) {
  document->Product()->Products()->AddComponentsFromFiles({folder.Path("BOLT.stp")}, "All");

  Retrieve();
  utils.RetrieveVDObject_FromLWT(session, document->Product()->Products()->Item(2));

  EXPECT_THAT(Boxes(), ElementsAre(noIds, noIds));
}

TEST_F(FromProperties, TheWarningForMissingIdsIsNotTheOneForMissingClasses) {
  Retrieve();

  EXPECT_EQ(Process().texts.QD_UTILS_UNABLE_TO_RETRIEVE_OBJECT_EMPTY_2.text, "no class REP1");
}

class FromTheDocument : public Resolution {
 protected:
  Ref<VdObject> Retrieve() { return utils.RetrieveVDObject(session, component); }
  Ref<VdObject> RetrieveAndTell() { return utils.RetrieveVDObject(session, component, true); }
};

TEST_F(FromTheDocument, AComponentLeadsToItsObjectReadAfresh) {
  const InSequence inThisOrder;
  EXPECT_CALL(*engine, DocumentInfo(folder.Path("BOLT.stp"))).WillOnce(Return(Ref<HIXDocument>(handle)));
  EXPECT_CALL(*engine, DocumentClassId(Ref<HIXDocument>(handle))).WillOnce(Return(12));
  EXPECT_CALL(*engine, DocumentObjectId(Ref<HIXDocument>(handle))).WillOnce(Return(345));
  EXPECT_CALL(*store, ObjectById(12, 345)).WillOnce(Return(Ref<VdObject>(object)));
  EXPECT_CALL(*object, Clone).WillOnce(Return(Ref<VdObject>(clone)));
  EXPECT_CALL(*clone, Retrieve);
  EXPECT_CALL(*clone, Clone).WillOnce(Return(Ref<VdObject>(secondClone)));

  EXPECT_EQ(RetrieveAndTell(), Ref<VdObject>(secondClone));

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(FromTheDocument, TheComponentIsAskedForItsReferenceAndThatForItsDocument) {
  gate.StartRecording();

  Retrieve();

  EXPECT_THAT(gate.Record(),
              ElementsAre("Product.Reference", "Product.Parent", "Document.AsDocument", "Document.FullName"));
}

TEST_F(FromTheDocument, AFileThatTheVaultDoesNotKnowLeadsNowhere) {
  EXPECT_CALL(*engine, DocumentInfo(folder.Path("BOLT.stp")));
  EXPECT_CALL(*engine, DocumentClassId).Times(0);

  EXPECT_FALSE(RetrieveAndTell());

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(FromTheDocument, ADocumentNeverSavedLeadsNowhereAndTheVaultIsNotAsked) {
  EXPECT_CALL(*engine, DocumentInfo).Times(0);

  EXPECT_FALSE(utils.RetrieveVDObject(session, document->Product(), true));

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(FromTheDocument, AComponentWhoseDocumentCannotBeNamedLeadsNowhere) {
  EXPECT_CALL(*engine, DocumentInfo).Times(0);
  for (int n = 1; n <= 4; ++n) {
    gate.FailCall(n);
    EXPECT_FALSE(RetrieveAndTell()) << n;
    EXPECT_TRUE(gate.HasFailed()) << n;
    gate.Reset();
  }

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(FromTheDocument, NoComponentLeadsNowhere) {
  EXPECT_FALSE(utils.RetrieveVDObject(session, nullptr, true));

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(FromTheDocument, AReferenceWhoseOwnerIsNoDocumentLeadsNowhere) {
  const auto reference = MakeRef<NiceMock<MockProduct>>();
  ON_CALL(*reference, Parent).WillByDefault(Return(Ref<AnyObject>(component)));
  const auto odd = MakeRef<NiceMock<MockProduct>>();
  ON_CALL(*odd, Reference).WillByDefault(Return(Ref<zorva::Product>(reference)));

  EXPECT_FALSE(utils.RetrieveVDObject(session, odd, true));

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(FromTheDocument, AnObjectThatIsGoneIsAFailure) {
  GivenKnownFile();

  EXPECT_FALSE(RetrieveAndTell());

  EXPECT_THAT(Boxes(),
              ElementsAre(Report("Cls_Utils.RetrieveVDObject", "Object variable or With block variable not set")));
}

TEST_F(FromTheDocument, AnObjectThatGivesNoCloneLeadsNowhereWithoutAFailure) {
  GivenKnownFile();
  GivenObject(nullptr);

  EXPECT_FALSE(RetrieveAndTell());

  EXPECT_THAT(Boxes(), IsEmpty());
}

// The calls that may fail, each of which a test makes fail once.
class FailingOnTheWay : public FromTheDocument {
 protected:
  static constexpr int kCalls = 8;

  FailingOnTheWay() {
    GivenKnownFile();
    GivenObject(clone);
    ON_CALL(*clone, Retrieve).WillByDefault([this] { Counted(0); });
    ON_CALL(*clone, Clone).WillByDefault([this] { return Step<VdObject>(secondClone); });
  }
};

TEST_F(FailingOnTheWay, ACallIsSilentUnlessItIsToBeTold) {
  for (int n = 1; n <= kCalls; ++n) {
    GivenFailureOf(n);
    EXPECT_FALSE(Retrieve()) << n;
    EXPECT_EQ(callsToFailure, 0) << n;
  }

  EXPECT_THAT(Boxes(), IsEmpty());
  EXPECT_EQ(Retrieve(), Ref<VdObject>(secondClone));
}

TEST_F(FailingOnTheWay, ACallIsReportedOnceWhenItIsToBeTold) {
  for (int n = 1; n <= kCalls; ++n) {
    GivenFailureOf(n);
    EXPECT_FALSE(RetrieveAndTell()) << n;
  }

  EXPECT_THAT(Boxes(), SizeIs(kCalls));
  EXPECT_THAT(Boxes(), Each(Report("Cls_Utils.RetrieveVDObject", "cable")));
}

TEST_F(FailingOnTheWay, TheMissingEngineIsOneOfThem) {
  Process().gHIX = nullptr;

  EXPECT_FALSE(Retrieve());
  EXPECT_THAT(Boxes(), IsEmpty());
  EXPECT_FALSE(RetrieveAndTell());
  EXPECT_THAT(Boxes(),
              ElementsAre(Report("Cls_Utils.RetrieveVDObject", "Object variable or With block variable not set")));
}

class Queries : public Resolution {
 protected:
  Queries() {
    ON_CALL(*store, NewQuery).WillByDefault(Return(Ref<veldora::VdQuery>(query)));
    ON_CALL(*query, Definition).WillByDefault(Return(Ref<veldora::VdQueryDefinition>(definition)));
    ON_CALL(*definition, From).WillByDefault(Return(Ref<veldora::VdQueryFrom>(from)));
    ON_CALL(*definition, Select).WillByDefault(Return(Ref<veldora::VdQuerySelect>(select)));
    ON_CALL(*definition, Where).WillByDefault(Return(Ref<veldora::VdQueryWhere>(where)));
  }

  Ref<NiceMock<MockQuery>> query = MakeRef<NiceMock<MockQuery>>();
  Ref<NiceMock<MockDefinition>> definition = MakeRef<NiceMock<MockDefinition>>();
  Ref<MockFrom> from = MakeRef<MockFrom>();
  Ref<MockSelect> select = MakeRef<MockSelect>();
  Ref<MockWhere> where = MakeRef<MockWhere>();
};

// Without schema the class is 0; the query has no result.
TEST_F(Queries, ForAFileTypeAreComposedInThisOrder) {
  Process().OBJECT_ID = "ID";  // what the global holds, not its name
  const InSequence inThisOrder;
  EXPECT_CALL(*from, Add(0, "F"));
  EXPECT_CALL(*select, Add("ID", "F", true));
  EXPECT_CALL(*where, Add("", "TDM_NAME", "=", Variant("xml"), 0, "F"));
  EXPECT_CALL(*query, RunClassQuery);
  EXPECT_CALL(*query, Result);

  EXPECT_EQ(utils.IndiceFileType(session, "xml"), 0);

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(Queries, ForParentsGoByTheBehaviorThatIsGiven) {
  const Ref<veldora::VdBehavior> behavior = MakeRef<MockBehavior>();
  const auto none = MakeRef<NiceMock<MockObjects>>();
  EXPECT_CALL(*from, Add(0, "S"));
  EXPECT_CALL(*object, Parents(Ref<veldora::VdQueryDefinition>(definition), behavior))
      .WillOnce(Return(Ref<veldora::VdObjects>(none)));

  EXPECT_TRUE(utils.IsTheRoot(session, object, behavior));

  EXPECT_THAT(Boxes(), IsEmpty());
}

}  // namespace
}  // namespace quintara::test

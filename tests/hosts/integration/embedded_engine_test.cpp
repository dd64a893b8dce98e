#include "hosts/integration/embedded_engine.h"

#include <functional>
#include <map>

#include "hosts/cad/cad_host.h"
#include "hosts/vault/database.h"
#include "hosts/vault/vault_fixture.h"

namespace quintara::test {
namespace {

constexpr auto kTakeLatest = "$User\\LifeCycleSetUp\\LatestAvailableOnCheckOut";
constexpr auto kForceCheckOut = "$User\\LIFE_CYCLE\\SwitchToLatestForceCheckOut";
constexpr auto kForceNewRelease = "$User\\LIFE_CYCLE\\SwitchToLatestForceNewRelease";
constexpr auto kOverwrite = "$User\\LifeCycleSetUp\\CheckOutOverwrite";

class CadSide final : public IntegrationCad {
 public:
  explicit CadSide(CadHost& host) : host_(host) {}

  void Save(const Ref<zorva::Document>& document, const std::string& path) override { host_.Save(document, path); }
  void RenewLight(const std::string& path) override {
    if (onRenewLight) onRenewLight(path);
  }

  std::function<void(const std::string&)> onRenewLight;

 private:
  CadHost& host_;
};

using NewConnection = std::string (*)();

// CAR holds AXLE and WHEEL, AXLE holds BOLT; all are released, and BOLT has a newer revision.
class EmbeddedEngineTest : public testing::TestWithParam<NewConnection>, public VaultBase {
 protected:
  EmbeddedEngineTest() : VaultBase(GetParam()()) {
    InitVault(Plan(), *files);
    auto options = Options();
    options.zorvaStartedFirst = true;
    Open(options);
    engine = MakeRef<EmbeddedEngine>(
        EmbeddedEngine::Surroundings{gate, Session(), host.Application(), &vault->Integration(), &cadSide});
    WriteProducts();
    bolt = AddPart("BOLT", "old bolt");
    const auto wheel = Add("WHEEL", {});
    axle = Add("AXLE", {bolt});
    car = Add("CAR", {axle, wheel});
    for (const auto& object : {bolt, axle, wheel, car}) Release(object);
    newBolt = Util()->NewRelease(bolt, nullptr, false);
    folder.Write("source/BOLT.stp", "new bolt");
    vault->StoreFile(newBolt, folder.Path("source/BOLT.stp"));
    CheckIn(newBolt);
  }

  void WriteProducts() {
    AssemblyStructure structure;
    structure.definitions = {{"WHEEL", true, {}},
                             {"AXLE", true, {}},
                             {"CAR", true, {{"AXLE.1", 1, kIdentityPosition}, {"WHEEL.1", 0, kIdentityPosition}}}};
    structure.root = 2;
    WriteProductFiles(structure, folder.Path("source"), *files);
  }
  Ref<VdObject> Add(const std::string& partNumber, const std::vector<Ref<VdObject>>& children) {
    const auto product = vault->AddObject("ZORVA Product", {{"NM_CN_PART_NUMBER", partNumber}},
                                          folder.Path("source/" + partNumber + ".ZVAProduct"));
    for (const auto& child : children) Link(product, child, "Structure Link");
    return product;
  }
  void Set(const std::string& path, const std::string& value) { Session()->Config()->SetValue(path, value); }
  void PermitAll() {
    Set(kTakeLatest, "YES");
    Set(kForceCheckOut, "TRUE");
    Set(kForceNewRelease, "TRUE");
    Set(kOverwrite, "YES");
  }
  Ref<veldora::HIXDocument> HandleOf(const Ref<VdObject>& object) {
    return engine->DocumentHandle(object->ClassId(), object->ObjectId());
  }
  Ref<VdObject> Latest(const Ref<VdObject>& object) { return object->GetVersion(3); }
  Ref<VdObject> Child(const Ref<VdObject>& parent, int index) { return parent->Children(nullptr)->Item(index); }

  CadHost host{{gate, files, {}}};
  CadSide cadSide{host};
  Ref<EmbeddedEngine> engine;
  Ref<VdObject> bolt, newBolt, axle, car;
};

TEST_P(EmbeddedEngineTest, ACheckOutPointsTheStructureAtTheLatestFromBelow) {
  PermitAll();

  engine->CheckOutDocument(HandleOf(car));

  const auto newCar = Latest(car);
  const auto newAxle = Child(newCar, 0);
  EXPECT_EQ(TextOf(newCar, "REVISION"), "B");
  EXPECT_EQ(newAxle->ObjectId(), Latest(axle)->ObjectId());
  EXPECT_EQ(TextOf(newAxle, "REVISION"), "B");
  EXPECT_EQ(Child(newAxle, 0)->ObjectId(), newBolt->ObjectId());
  EXPECT_EQ(Child(Again(car), 0)->ObjectId(), axle->ObjectId());
}

TEST_P(EmbeddedEngineTest, WhatHeldNothingOutdatedKeepsItsStateAndSoDoParts) {
  PermitAll();

  engine->CheckOutDocument(HandleOf(car));

  EXPECT_EQ(TextOf(Child(Latest(car), 1), "REVISION"), "A");
  EXPECT_EQ(StateOf(newBolt), 1);
  EXPECT_EQ(StateOf(car), 3);
}

TEST_P(EmbeddedEngineTest, ACheckOutCopiesTheFilesAndOpensTheRoot) {
  PermitAll();
  const auto handle = HandleOf(car);

  engine->CheckOutDocument(handle);

  EXPECT_EQ(ReadWork("BOLT.stp"), "new bolt");
  EXPECT_EQ(handle->Document()->FullName(), WorkPath("CAR.ZVAProduct"));
  EXPECT_EQ(engine->DocumentObjectId(handle), Latest(car)->ObjectId());
  EXPECT_EQ(host.Application()->ActiveDocument()->AsProductDocument()->Product()->PartNumber(), "CAR");
}

TEST_P(EmbeddedEngineTest, WhatIsCheckedInIsCheckedOutInPlace) {
  PermitAll();
  auto two = Util()->NewRelease(car, nullptr, false);
  CheckIn(two);

  engine->CheckOutDocument(HandleOf(car));

  EXPECT_EQ(Latest(car)->ObjectId(), two->ObjectId());
  EXPECT_EQ(StateOf(two), 2);
}

TEST_P(EmbeddedEngineTest, WithoutTheSettingNothingNewerIsTaken) {
  PermitAll();
  Set(kTakeLatest, "NO");

  engine->CheckOutDocument(HandleOf(car));

  EXPECT_EQ(Child(Latest(car), 0)->ObjectId(), axle->ObjectId());
  EXPECT_EQ(ReadWork("BOLT.stp"), "old bolt");
}

TEST_P(EmbeddedEngineTest, WithoutThePermissionNothingIsRevised) {
  PermitAll();
  for (const auto* value : {"FALSE", "true", ""}) {
    Set(kForceNewRelease, value);
    const auto before = Dump();

    const auto failure = FailureOf([&] { engine->CheckOutDocument(HandleOf(car)); });

    EXPECT_THAT(failure, FailsWith(failure::kPermissionDenied));
    EXPECT_THAT(failure.Description(), testing::HasSubstr(kForceNewRelease));
    EXPECT_EQ(Dump(), before);
  }
}

TEST_P(EmbeddedEngineTest, WithoutThePermissionNothingIsCheckedOut) {
  PermitAll();
  CheckIn(Util()->NewRelease(car, nullptr, false));
  Set(kForceCheckOut, "FALSE");
  const auto before = Dump();

  const auto failure = FailureOf([&] { engine->CheckOutDocument(HandleOf(car)); });

  EXPECT_THAT(failure, FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(failure.Description(), testing::HasSubstr(kForceCheckOut));
  EXPECT_EQ(Dump(), before);
}

TEST_P(EmbeddedEngineTest, TheConfigurationCountsFromTheLogOnOnWhereTheVaultWasFirst) {
  Open(Options());
  engine = MakeRef<EmbeddedEngine>(
      EmbeddedEngine::Surroundings{gate, Session(), host.Application(), &vault->Integration(), &cadSide});
  PermitAll();
  EXPECT_THAT(FailureOf([&] { engine->CheckOutDocument(HandleOf(car)); }), FailsWith(failure::kPermissionDenied));

  Session()->UserLogoff();
  Session()->UserLogin("admin", "secret");
  engine->CheckOutDocument(HandleOf(car));

  EXPECT_EQ(TextOf(Latest(car), "REVISION"), "B");
}

TEST_P(EmbeddedEngineTest, WithoutThePermissionNoFileIsReplaced) {
  PermitAll();
  Set(kOverwrite, "NO");
  WriteWork("BOLT.stp", "mine");
  const auto before = Dump();

  EXPECT_THAT(FailureOf([&] { engine->CheckOutDocument(HandleOf(car)); }), FailsWith(failure::kPermissionDenied));

  EXPECT_EQ(ReadWork("BOLT.stp"), "mine");
  EXPECT_EQ(Dump(), before);
}

TEST_P(EmbeddedEngineTest, WithoutThePermissionNoLightFileIsReplacedEither) {
  PermitAll();
  Set(kOverwrite, "NO");
  const auto two = vault->NewRevision(newBolt);
  folder.Write("source/BOLT.stp", "newer bolt");
  folder.Write("source/BOLT.stp.lwt", "newer light");
  vault->StoreFile(two, folder.Path("source/BOLT.stp"));
  CheckIn(two);
  WriteWork("BOLT.stp", "newer bolt");
  WriteWork("BOLT.stp.lwt", "my light");

  EXPECT_THAT(FailureOf([&] { engine->CheckOutDocument(HandleOf(car)); }), FailsWith(failure::kPermissionDenied));

  EXPECT_EQ(ReadWork("BOLT.stp.lwt"), "my light");
}

TEST_P(EmbeddedEngineTest, AFileOfTheSameContentIsNotReplaced) {
  PermitAll();
  Set(kOverwrite, "NO");
  WriteWork("BOLT.stp", "new bolt");

  engine->CheckOutDocument(HandleOf(car));

  EXPECT_EQ(ReadWork("BOLT.stp"), "new bolt");
}

TEST_P(EmbeddedEngineTest, CommitsStoreWhatChangedAndCheckIn) {
  PermitAll();
  engine->CheckOutDocument(HandleOf(car));
  const auto handle = engine->DocumentHandleOf(host.Application()->ActiveDocument()->AsProductDocument());
  handle->Document()->AsProductDocument()->Product()->Products()->Remove(2);

  engine->CommitStep1(handle);
  engine->CommitStep2(handle);

  const auto newCar = Latest(car);
  EXPECT_EQ(StateOf(newCar), 1);
  EXPECT_EQ(StateOf(Latest(axle)), 1);
  EXPECT_THAT(vault->FileOf(newCar), testing::Not(testing::HasSubstr("WHEEL")));
  EXPECT_EQ(engine->DocumentObjectId(engine->DocumentInfo(WorkPath("CAR.ZVAProduct"))), newCar->ObjectId());
  EXPECT_THAT(vault->Check(), testing::IsEmpty());
}

TEST_P(EmbeddedEngineTest, AnUnknownFileHasNoHandle) {
  EXPECT_FALSE(engine->DocumentInfo(WorkPath("unknown.ZVAProduct")));
  EXPECT_FALSE(engine->DocumentInfo(""));
  EXPECT_THAT(FailureOf([&] { engine->DocumentHandle(2, 99999); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { engine->DocumentClassId(nullptr); }), FailsWith(failure::kObjectNotSet));
}

TEST_P(EmbeddedEngineTest, NothingWorksBetweenDisconnectAndConnect) {
  const auto handle = HandleOf(car);
  engine->Disconnect();

  EXPECT_FALSE(engine->IsConnected());
  EXPECT_THAT(FailureOf([&] { engine->DocumentInfo("x"); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { engine->CheckOutDocument(handle); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { engine->Connect("eve", "secret"); }), FailsWith(failure::kPermissionDenied));

  gate->StartRecording();
  engine->Connect("admin", "secret");
  EXPECT_TRUE(engine->IsConnected());
  EXPECT_EQ(gate->Record().front(), "HIXEngine.Connect(***)");
}

TEST_P(EmbeddedEngineTest, LatestRevisionsThatWouldHoldEachOtherAreRefused) {
  PermitAll();
  auto newAxle = Util()->NewRelease(axle, nullptr, false);
  vault->SetStructure(newAxle, {{car, 1}});
  const auto before = Dump();

  EXPECT_THAT(FailureOf([&] { engine->CheckOutDocument(HandleOf(car)); }), FailsWith(failure::kInvalidCall));

  EXPECT_EQ(Dump(), before);
}

TEST_P(EmbeddedEngineTest, EachFailedCallOfACheckOutLeavesTheVaultAsItWas) {
  PermitAll();
  const auto before = Dump();
  for (int n = 1; n < 600; ++n) {
    gate->FailCall(n);
    const auto failure = FailureOf([&] { engine->CheckOutDocument(HandleOf(car)); });
    const bool injected = gate->HasFailed();
    gate->Reset();
    if (failure.Number() == 0) {
      EXPECT_GT(n, 50);
      EXPECT_FALSE(injected);
      return;
    }
    ASSERT_TRUE(Dump() == before) << "call " << n;
  }
  ADD_FAILURE() << "the check-out never came through";
}

TEST_P(EmbeddedEngineTest, AnOldAndTheNewestRevisionUnderOneParentBecomeOne) {
  PermitAll();
  auto newAxle = Util()->NewRelease(axle, nullptr, false);
  vault->SetStructure(newAxle, {{bolt, 2}, {newBolt, 3}});
  CheckIn(newAxle);

  engine->CheckOutDocument(HandleOf(car));

  const auto structure = vault->Structure(Latest(axle));
  ASSERT_EQ(structure.size(), 1U);
  EXPECT_EQ(structure[0].object->ObjectId(), newBolt->ObjectId());
  EXPECT_EQ(structure[0].quantity, 5);
}

TEST_P(EmbeddedEngineTest, EachCheckOutIsCommittedWithWhatItTook) {
  PermitAll();
  const auto wheel = Child(car, 1);
  const auto carHandle = HandleOf(car);
  const auto wheelHandle = HandleOf(wheel);
  engine->CheckOutDocument(carHandle);
  engine->CheckOutDocument(wheelHandle);

  engine->CommitStep1(carHandle);
  engine->CommitStep2(carHandle);

  EXPECT_EQ(StateOf(Latest(car)), 1);
  EXPECT_EQ(StateOf(Latest(axle)), 1);
  EXPECT_EQ(StateOf(Latest(wheel)), 0);
  engine->CommitStep1(wheelHandle);
  engine->CommitStep2(wheelHandle);
  EXPECT_EQ(StateOf(Latest(wheel)), 1);
}

TEST_P(EmbeddedEngineTest, WhatWasCheckedOutElsewhereIsCommittedAlone) {
  const auto two = Util()->NewRelease(car, nullptr, false);
  Util()->RunOperation(two, Operation("CopyFile"), true, nullptr, nullptr);
  const auto document = host.Application()->Documents()->Open(WorkPath("CAR.ZVAProduct"));
  document->AsProductDocument()->Product()->Products()->Remove(2);
  const auto handle = engine->DocumentHandleOf(document);

  engine->CommitStep1(handle);
  engine->CommitStep2(handle);

  EXPECT_EQ(StateOf(two), 1);
  EXPECT_THAT(vault->FileOf(two), testing::Not(testing::HasSubstr("WHEEL")));
}

TEST_P(EmbeddedEngineTest, WhatIsCommittedIsForgotten) {
  PermitAll();
  engine->CheckOutDocument(HandleOf(car));
  const auto handle = HandleOf(Latest(car));
  engine->CommitStep1(handle);
  engine->CommitStep2(handle);
  Util()->CheckOut(Latest(car), nullptr, false);

  engine->CommitStep1(handle);
  engine->CommitStep2(handle);

  EXPECT_EQ(StateOf(Latest(car)), 1);
  EXPECT_EQ(StateOf(Latest(axle)), 1);
}

TEST_P(EmbeddedEngineTest, WhatAnotherUserHasTakenIsRefused) {
  PermitAll();
  const auto two = Util()->NewRelease(car, nullptr, false);
  CheckIn(two);
  vault->AddUser("eve", "", true);
  auto options = Options();
  options.login = "eve";
  options.password.clear();
  const auto another = OpenAnother(options);
  const auto session = another->Application()->Engine()->Sessions(0);
  const auto hers = session->ObjectStore()->ObjectById(two->ClassId(), two->ObjectId());
  session->GetService("VdUtil.VdSessionUtil")->AsVdSessionUtil()->CheckOut(hers, nullptr, false);
  const auto before = Dump();

  const auto failure = FailureOf([&] { engine->CheckOutDocument(HandleOf(car)); });

  EXPECT_THAT(failure, FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(failure.Description(), testing::HasSubstr("can't be changed now"));
  EXPECT_EQ(Dump(), before);
}

TEST_P(EmbeddedEngineTest, WhatNobodyHasTakenCannotBeCommitted) {
  const auto before = Dump();

  EXPECT_THAT(FailureOf([&] { engine->CommitStep2(HandleOf(car)); }), FailsWith(failure::kInvalidCall));

  EXPECT_EQ(Dump(), before);
}

TEST_P(EmbeddedEngineTest, TheLightFilesOfAllThatWasTakenAreMadeAnewComponentsFirst) {
  PermitAll();
  std::vector<std::string> renewed;
  cadSide.onRenewLight = [&](const std::string& path) {
    renewed.push_back(path);
    files->Write(path + ".lwt", "light of " + path);
  };
  const auto handle = HandleOf(car);
  engine->CheckOutDocument(handle);

  engine->CommitStep1(handle);
  engine->CommitStep2(handle);

  EXPECT_EQ(renewed, (std::vector<std::string>{WorkPath("AXLE.ZVAProduct"), WorkPath("CAR.ZVAProduct")}));
  EXPECT_EQ(vault->LightFileOf(Latest(axle)), "light of " + WorkPath("AXLE.ZVAProduct"));
  EXPECT_EQ(vault->LightFileOf(Latest(car)), "light of " + WorkPath("CAR.ZVAProduct"));
}

TEST_P(EmbeddedEngineTest, AFailedCommitLeavesTheVaultAsItWas) {
  PermitAll();
  const auto handle = HandleOf(car);
  engine->CheckOutDocument(handle);
  WriteWork("AXLE.ZVAProduct", ReadWork("AXLE.ZVAProduct") + "<!-- changed -->");
  const auto sweep = [&](const std::function<void()>& step) {
    const auto before = Dump();
    for (int n = 1; n < 300; ++n) {
      gate->FailCall(n);
      const auto failure = FailureOf(step);
      gate->Reset();
      if (failure.Number() == 0) return;
      ASSERT_TRUE(Dump() == before) << "call " << n;
    }
    ADD_FAILURE() << "the step never came through";
  };

  sweep([&] { engine->CommitStep1(handle); });
  sweep([&] { engine->CommitStep2(handle); });

  EXPECT_EQ(StateOf(Latest(axle)), 1);
  EXPECT_THAT(vault->FileOf(Latest(axle)), testing::HasSubstr("changed"));
  EXPECT_THAT(vault->Check(), testing::IsEmpty());
}

TEST_P(EmbeddedEngineTest, AFailedCheckOutLeavesNoFileNotedAsWhatItIsNot) {
  PermitAll();
  bolt->CopyFileTo("BOLT.stp", folder.Path("work"));
  gate->FailOperation("Documents.Open");

  EXPECT_NE(FailureOf([&] { engine->CheckOutDocument(HandleOf(car)); }).Number(), 0);
  gate->Reset();

  EXPECT_FALSE(engine->DocumentInfo(WorkPath("BOLT.stp")));
}

TEST_P(EmbeddedEngineTest, NoFileNameOfTheVaultLeadsOutOfTheWorkDirectory) {
  vault::Database database(vault->Folder().connection);
  for (const auto* name : {"..", "../x", "..\\..\\x", "/tmp/x", "C:x", "CON", "x. "}) {
    database.Execute("UPDATE \"ZORVA_PRODUCT\" SET \"CAD_REF_FILE_NAME\" = ?", {std::string(name)});

    EXPECT_THAT(FailureOf([&] { HandleOf(car)->Document(); }), FailsWith(failure::kInvalidCall)) << name;
    EXPECT_THAT(FailureOf([&] { engine->CommitStep1(HandleOf(car)); }), FailsWith(failure::kInvalidCall)) << name;
  }
}

TEST_P(EmbeddedEngineTest, AWrongPasswordConnectsNobody) {
  engine->Disconnect();

  const auto failure = FailureOf([&] { engine->Connect("admin", "wrong-secret"); });

  EXPECT_THAT(failure, FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(failure.Description(), testing::Not(testing::HasSubstr("wrong-secret")));
  EXPECT_FALSE(engine->IsConnected());
}

INSTANTIATE_TEST_SUITE_P(Databases, EmbeddedEngineTest,
                         testing::Values(&OnSqlite::NewConnection, &OnPostgres::NewConnection), [](const auto& maker) {
                           return maker.param == &OnSqlite::NewConnection ? OnSqlite::kName : OnPostgres::kName;
                         });

}  // namespace
}  // namespace quintara::test

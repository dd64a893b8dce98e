#include <set>

#include "hosts/vault/import_fixture.h"

namespace quintara::test {
namespace {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

template <class Maker>
class VaultImport : public ImportTest<Maker> {};
TYPED_TEST_SUITE(VaultImport, Databases, DatabaseName);

TYPED_TEST(VaultImport, AddsEveryDefinitionCheckedInWithItsFiles) {
  const auto result = this->Import(this->Car());

  ASSERT_EQ(result.size(), 4U);
  EXPECT_THAT(this->OutcomesOf(result), Each(Outcome::kAdded));
  for (const auto& [number, bytes] :
       {std::pair("BOLT", "bolt"), std::pair("NUT", "nut"), std::pair("AXLE", "axle"), std::pair("CAR", "car")}) {
    const auto object = this->Newest(number);
    EXPECT_EQ(this->StateOf(object), 1) << number;
    EXPECT_EQ(this->RevisionOf(number), "A");
    EXPECT_EQ(this->vault->FileOf(object), bytes);
    EXPECT_EQ(this->vault->LightFileOf(object), std::string("light ") + bytes);
  }
  EXPECT_THAT(this->vault->Check(), IsEmpty());
}

TYPED_TEST(VaultImport, TellsTheIdentityOfWhatItStored) {
  const auto result = this->Import(this->Car());

  EXPECT_EQ(this->TextOf(this->Of(result[this->kAxle]), "NM_CN_PART_NUMBER"), "AXLE");
  EXPECT_EQ(result[this->kAxle].revision, "A");
}

TYPED_TEST(VaultImport, PutsPartsAndAssembliesIntoTheirClassesWithTheirFileTypes) {
  const auto result = this->Import(this->Car());

  EXPECT_EQ(result[this->kBolt].identity.classId, this->ClassId("ZORVA Part"));
  EXPECT_EQ(result[this->kCar].identity.classId, this->ClassId("ZORVA Product"));
  EXPECT_EQ(this->TextOf(this->Newest("BOLT"), "FILE_TYPE"), std::to_string(this->vault->FileTypeId("ZVAPart")));
  EXPECT_EQ(this->TextOf(this->Newest("CAR"), "FILE_TYPE"), std::to_string(this->vault->FileTypeId("ZVAProduct")));
}

TYPED_TEST(VaultImport, TakesTheClassesThatItIsTold) {
  AssemblyImportOptions options;
  options.partClass = "ZORVA Product";

  const auto result = this->Import(this->Car(), options);

  EXPECT_EQ(result[this->kBolt].identity.classId, this->ClassId("ZORVA Product"));
}

TYPED_TEST(VaultImport, StoresTheDescription) {
  auto plan = this->Car();
  plan.definitions[this->kBolt].description = "hexagonal";

  this->Import(plan);

  EXPECT_EQ(this->TextOf(this->Newest("BOLT"), "CN_DESCRIPTION"), "hexagonal");
  EXPECT_EQ(this->TextOf(this->Newest("NUT"), "CN_DESCRIPTION"), "");
}

TYPED_TEST(VaultImport, NamesTheFilesAsTheAssembliesDo) {
  this->Import(this->Car());

  const auto bolt = this->Newest("BOLT");
  EXPECT_EQ(this->TextOf(bolt, "FILE_NAME"), "BOLT.stp");
  EXPECT_EQ(this->TextOf(bolt, "CAD_REF_FILE_NAME"), "BOLT.stp");
  EXPECT_THAT(this->TextOf(bolt, "DIRECTORY"), Not(HasSubstr("split")));
}

TYPED_TEST(VaultImport, DoesWithoutALightFile) {
  auto plan = this->Car();
  plan.definitions[this->kNut].lightFile.clear();

  this->Import(plan);

  EXPECT_EQ(this->vault->LightFileOf(this->Newest("NUT")), "");
  EXPECT_THAT(this->vault->Check(), IsEmpty());
}

TYPED_TEST(VaultImport, LinksEachDistinctChildOnceInTheirOrder) {
  this->Import(this->Car());

  EXPECT_THAT(this->StructureOf(this->Newest("CAR")), ElementsAre("AXLE A x2", "BOLT A x3"));
  EXPECT_THAT(this->StructureOf(this->Newest("AXLE")), ElementsAre("BOLT A x2", "NUT A x1"));
}

TYPED_TEST(VaultImport, TakesOnePart) {
  const auto result = this->Import({{this->Part("BOLT", "bolt")}});

  EXPECT_THAT(this->OutcomesOf(result), ElementsAre(Outcome::kAdded));
}

TYPED_TEST(VaultImport, GoesRoundTheWorkDirectory) {
  this->WriteWork("BOLT.stp", "mine");

  this->Import(this->Car());

  EXPECT_EQ(this->ReadWork("BOLT.stp"), "mine");
  EXPECT_FALSE(this->WorkHas("NUT.stp"));
  EXPECT_FALSE(this->vault->Integration().NotedObject(this->WorkPath("BOLT.stp")));
}

TYPED_TEST(VaultImport, OfTheSameAgainChangesNothing) {
  const auto first = this->Import(this->Car());
  this->Remember();

  const auto second = this->Import(this->Car());

  EXPECT_THAT(this->OutcomesOf(second), Each(Outcome::kUnchanged));
  EXPECT_EQ(second[0].identity, first[0].identity);
  this->ExpectNothingChanged();
}

TYPED_TEST(VaultImport, OfANewLightFileAloneChangesNothing) {
  this->Import(this->Car());
  const auto plan = this->Car();
  this->WriteSplit("BOLT.lwt", "a finer mesh");
  this->Remember();

  EXPECT_THAT(this->OutcomesOf(this->Import(plan)), Each(Outcome::kUnchanged));
  this->ExpectNothingChanged();
}

TYPED_TEST(VaultImport, RevisesAChangedPartAloneAndLeavesItsParents) {
  const auto first = this->Import(this->Car());
  const auto plan = this->Car();
  this->WriteSplit("BOLT.stp", "a longer bolt");

  const auto second = this->Import(plan);

  EXPECT_THAT(this->OutcomesOf(second),
              ElementsAre(Outcome::kRevised, Outcome::kUnchanged, Outcome::kUnchanged, Outcome::kUnchanged));
  EXPECT_EQ(second[0].revision, "B");
  EXPECT_EQ(this->RevisionOf("BOLT"), "B");
  EXPECT_EQ(this->vault->FileOf(this->Newest("BOLT")), "a longer bolt");
  EXPECT_EQ(this->vault->FileOf(this->Of(first[0])), "bolt");
  EXPECT_EQ(this->StateOf(this->Newest("BOLT")), 1);
  EXPECT_EQ(this->TextOf(this->Newest("BOLT"), "CN_ID"), this->TextOf(this->Of(first[0]), "CN_ID"));
  EXPECT_THAT(this->StructureOf(this->Newest("CAR")), ElementsAre("AXLE A x2", "BOLT A x3"));
  EXPECT_THAT(this->vault->Check(), IsEmpty());
}

TYPED_TEST(VaultImport, OfTheSameAgainChangesNothingAfterARevisionToo) {
  this->Import(this->Car());
  const auto plan = this->Car();
  this->WriteSplit("BOLT.stp", "a longer bolt");
  this->Import(plan);
  this->Remember();

  EXPECT_THAT(this->OutcomesOf(this->Import(plan)), Each(Outcome::kUnchanged));
  this->ExpectNothingChanged();
}

TYPED_TEST(VaultImport, RevisesAReleasedPartThatChanged) {
  this->Import(this->Car());
  this->Release(this->Newest("BOLT"));
  const auto plan = this->Car();
  this->WriteSplit("BOLT.stp", "a longer bolt");

  EXPECT_EQ(this->Import(plan)[0].outcome, Outcome::kRevised);
  EXPECT_EQ(this->StateOf(this->Newest("BOLT")), 1);
}

TYPED_TEST(VaultImport, RevisesAnAssemblyWhosePositionsChangedAndLinksItToTheNewest) {
  this->Import(this->Car());
  const auto plan = this->Car();
  this->WriteSplit("BOLT.stp", "a longer bolt");
  this->WriteSplit("AXLE.ZVAProduct", "axle, bolt elsewhere");

  const auto result = this->Import(plan);

  EXPECT_THAT(this->OutcomesOf(result),
              ElementsAre(Outcome::kRevised, Outcome::kUnchanged, Outcome::kRevised, Outcome::kUnchanged));
  EXPECT_THAT(this->StructureOf(this->Newest("AXLE")), ElementsAre("BOLT B x2", "NUT A x1"));
  EXPECT_THAT(this->StructureOf(this->Newest("CAR")), ElementsAre("AXLE A x2", "BOLT A x3"));
  EXPECT_THAT(this->vault->Check(), IsEmpty());
}

TYPED_TEST(VaultImport, RevisesAnAssemblyWithAnotherChild) {
  this->Import(this->Car());
  auto plan = this->Car();
  plan.definitions.insert(plan.definitions.begin() + this->kAxle, this->Part("RING", "ring"));
  plan.definitions[3] = this->Assembly("AXLE", "axle with ring", {{0, 2}, {1, 1}, {2, 4}});
  plan.definitions[4] = this->Assembly("CAR", "car", {{3, 2}, {0, 3}});

  const auto result = this->Import(plan);

  EXPECT_THAT(this->OutcomesOf(result), ElementsAre(Outcome::kUnchanged, Outcome::kUnchanged, Outcome::kAdded,
                                                    Outcome::kRevised, Outcome::kUnchanged));
  EXPECT_THAT(this->StructureOf(this->Newest("AXLE")), ElementsAre("BOLT A x2", "NUT A x1", "RING A x4"));
}

TYPED_TEST(VaultImport, LeavesAnAssemblyWhoseFileWasWrittenAnewWithTheSameChildren) {
  this->Import(this->Car());
  const auto plan = this->Car();
  this->WriteSplit("AXLE.ZVAProduct", "axle, written anew");
  AssemblyImportOptions options;
  std::vector<std::string> asked;
  options.sameChildren = [&](const std::string& stored, const std::string& fresh) {
    asked = {stored, fresh};
    return true;
  };
  this->Remember();

  EXPECT_THAT(this->OutcomesOf(this->Import(plan, options)), Each(Outcome::kUnchanged));
  EXPECT_THAT(asked, ElementsAre("axle", "axle, written anew"));
  this->ExpectNothingChanged();
}

TYPED_TEST(VaultImport, AsksAboutChildrenOnlyWhereAnAssemblysBytesDiffer) {
  this->Import(this->Car());
  const auto plan = this->Car();
  this->WriteSplit("BOLT.stp", "a longer bolt");
  AssemblyImportOptions options;
  options.sameChildren = [](const std::string&, const std::string&) -> bool { throw Failure(failure::kInternal); };

  EXPECT_THAT(this->OutcomesOf(this->Import(plan, options)),
              ElementsAre(Outcome::kRevised, Outcome::kUnchanged, Outcome::kUnchanged, Outcome::kUnchanged));
}

TYPED_TEST(VaultImport, RevisesAnAssemblyThatTheVaultLinksOtherwise) {
  this->Import(this->Car());
  const auto axle = this->Newest("AXLE");
  this->CheckOut(axle);
  this->vault->SetStructure(axle, {{this->Newest("BOLT"), 2}});
  this->CheckIn(axle);

  const auto result = this->Import(this->Car());

  EXPECT_THAT(this->OutcomesOf(result),
              ElementsAre(Outcome::kUnchanged, Outcome::kUnchanged, Outcome::kRevised, Outcome::kUnchanged));
  EXPECT_THAT(this->StructureOf(this->Newest("AXLE")), ElementsAre("BOLT A x2", "NUT A x1"));
}

TYPED_TEST(VaultImport, RevisesAnAssemblyWithAnotherNumberOfInstances) {
  this->Import(this->Car());
  auto plan = this->Car();
  plan.definitions[this->kCar].children[0].quantity = 3;

  this->Import(plan);

  EXPECT_THAT(this->StructureOf(this->Newest("CAR")), ElementsAre("AXLE A x3", "BOLT A x3"));
  EXPECT_EQ(this->RevisionOf("CAR"), "B");
}

TYPED_TEST(VaultImport, RevisesWhatHasTheNameOfAnotherFile) {
  this->AddPart("BOLT", "bolt");
  const auto old = this->Newest("BOLT");
  old->Record()->ValuateFromString("CAD_REF_FILE_NAME", "screw.stp");
  old->Update(this->Behavior());
  this->CheckIn(old);

  EXPECT_EQ(this->Import(this->Car())[this->kBolt].outcome, Outcome::kRevised);
  EXPECT_EQ(this->TextOf(this->Newest("BOLT"), "CAD_REF_FILE_NAME"), "BOLT.stp");
}

TYPED_TEST(VaultImport, RevisesWhatHasNoFileYet) {
  this->CheckIn(this->AddPart("BOLT"));

  EXPECT_EQ(this->Import(this->Car())[this->kBolt].outcome, Outcome::kRevised);
  EXPECT_EQ(this->vault->FileOf(this->Newest("BOLT")), "bolt");
}

TYPED_TEST(VaultImport, CarriesDocumentsOverToTheNextRevision) {
  this->Import(this->Car());
  const auto document = this->AddDocument("CAR Matrix");
  this->Link(this->Newest("CAR"), document, "Document Link");
  const auto plan = this->Car();
  this->WriteSplit("CAR.ZVAProduct", "another car");

  this->Import(plan);

  const auto car = this->Newest("CAR");
  EXPECT_TRUE(this->Store()->LinkObject(this->ClassId("Document Link"), car->ClassId(), car->ObjectId(),
                                        document->ClassId(), document->ObjectId()));
}

TYPED_TEST(VaultImport, AddsAnObjectWhosePartNumberOnlyAnOlderRevisionHad) {
  this->Import({{this->Part("BOLT", "bolt")}});
  const auto next = this->vault->NewRevision(this->Newest("BOLT"));
  next->Record()->ValuateFromString("NM_CN_PART_NUMBER", "SCREW");
  next->Update(this->Behavior());

  const auto result = this->Import({{this->Part("BOLT", "bolt")}});

  EXPECT_EQ(result[0].outcome, Outcome::kAdded);
  EXPECT_NE(this->TextOf(this->Newest("BOLT"), "CN_ID"), this->TextOf(this->Newest("SCREW"), "CN_ID"));
}

TYPED_TEST(VaultImport, CallsItsHookForEachStoredAssemblyJustBeforeItsCheckIn) {
  AssemblyImportOptions options;
  std::vector<std::string> calls;
  options.beforeCheckIn = [&](const Ref<VdObject>& assembly, std::size_t definition) {
    calls.push_back(this->TextOf(assembly, "NM_CN_PART_NUMBER") + " " + std::to_string(definition) + " in state " +
                    std::to_string(this->StateOf(assembly)) + " with " +
                    std::to_string(this->StructureOf(assembly).size()) + " children, " + this->vault->FileOf(assembly));
  };

  this->Import(this->Car(), options);

  EXPECT_THAT(calls, ElementsAre("AXLE 2 in state 0 with 2 children, axle", "CAR 3 in state 0 with 2 children, car"));
}

TYPED_TEST(VaultImport, CallsItsHookForNoUntouchedAssembly) {
  this->Import(this->Car());
  const auto plan = this->Car();
  this->WriteSplit("AXLE.ZVAProduct", "another axle");
  AssemblyImportOptions options;
  std::vector<std::size_t> called;
  options.beforeCheckIn = [&](const Ref<VdObject>&, std::size_t definition) { called.push_back(definition); };

  this->Import(plan, options);

  EXPECT_THAT(called, ElementsAre(this->kAxle));
}

TYPED_TEST(VaultImport, LeavesNothingBehindWhenItsHookFails) {
  AssemblyImportOptions options;
  options.beforeCheckIn = [&](const Ref<VdObject>&, std::size_t definition) {
    this->AddDocument("a matrix");
    if (definition == this->kCar) throw Failure(failure::kInternal, "no matrix");
  };
  this->Remember();

  EXPECT_EQ(FailureOf([&] { this->Import(this->Car(), options); }).Description(), "no matrix");
  this->ExpectNothingChanged();
}

TYPED_TEST(VaultImport, TellsHowFarItIs) {
  AssemblyImportOptions options;
  std::vector<double> fractions;
  std::set<std::string> told;
  options.progress = [&](double fraction, const std::string& what) {
    fractions.push_back(fraction);
    told.insert(what);
  };

  this->Import(this->Car(), options);

  EXPECT_TRUE(std::ranges::is_sorted(fractions));
  EXPECT_EQ(fractions.front(), 0);
  EXPECT_EQ(fractions.back(), 1);
  EXPECT_THAT(told, testing::IsSupersetOf({"Comparing NUT", "Storing NUT", "Storing CAR"}));
}

TYPED_TEST(VaultImport, InterruptedAtAnyMomentLeavesNothingBehind) {
  this->AddPart("BEFORE", "before");
  const auto plan = this->Car();
  this->Remember();
  for (int last = 0; last < 100; ++last) {
    AssemblyImportOptions options;
    int told = 0;
    options.progress = [&](double, const std::string&) {
      if (told++ == last) throw Failure(failure::kInternal, "interrupted");
    };

    const auto failure = FailureOf([&] { this->Import(plan, options); });

    if (failure.Number() == 0) {
      EXPECT_GT(last, 8);
      return;
    }
    this->ExpectNothingChanged("progress " + std::to_string(last));
  }
  ADD_FAILURE() << "the import never came through";
}

TYPED_TEST(VaultImport, IsAllOrNothingWhicheverOperationFails) {
  this->Import(this->Car());
  auto plan = this->Car();
  this->WriteSplit("BOLT.stp", "a longer bolt");
  this->WriteSplit("BOLT.lwt", "a longer light bolt");
  plan.definitions.insert(plan.definitions.begin() + this->kAxle, this->Part("RING", "ring"));
  plan.definitions[3] = this->Assembly("AXLE", "axle with ring", {{0, 2}, {1, 1}, {2, 4}});
  plan.definitions[4].children = {{3, 2}, {0, 3}};
  this->Remember();
  for (int n = 1; n < 300; ++n) {
    this->gate->FailCall(n);
    const auto failure = FailureOf([&] { this->Import(plan); });
    const bool injected = this->gate->HasFailed();
    this->gate->Reset();
    // A call that only tidies up after the work is done may fail without harm.
    if (!injected || failure.Number() == 0) {
      EXPECT_EQ(failure.Number(), 0) << failure.Description();
      EXPECT_GT(n, 20);
      EXPECT_EQ(this->RevisionOf("AXLE"), "B");
      this->AddPart("AFTER");
      EXPECT_THAT(this->vault->Check(), IsEmpty());
      return;
    }
    this->ExpectNothingChanged("call " + std::to_string(n));
  }
  ADD_FAILURE() << "the import never came through";
}

TYPED_TEST(VaultImport, IsPartOfALargerTransaction) {
  const auto plan = this->Car();
  this->Remember();

  EXPECT_NE(FailureOf([&] {
              this->vault->InTransaction([&] {
                this->Import(plan);
                throw Failure(failure::kInternal);
              });
            }).Number(),
            0);

  this->ExpectNothingChanged();
}

TYPED_TEST(VaultImport, PreviewsWhatItWouldDoAndChangesNothing) {
  this->Import(this->Car());
  auto plan = this->Car();
  this->WriteSplit("BOLT.stp", "a longer bolt");
  plan.definitions.push_back(this->Part("RING", "ring"));
  this->Remember();

  const auto preview = this->vault->PreviewImport(plan, {});

  EXPECT_THAT(this->OutcomesOf(preview), ElementsAre(Outcome::kRevised, Outcome::kUnchanged, Outcome::kUnchanged,
                                                     Outcome::kUnchanged, Outcome::kAdded));
  EXPECT_EQ(preview[0].revision, "B");
  EXPECT_EQ(preview[4].revision, "A");
  EXPECT_EQ(preview[4].identity.objectId, 0);
  this->ExpectNothingChanged();
}

TYPED_TEST(VaultImport, TakesAsManyStatementsForAnObjectHoweverManyThereAre) {
  const auto statements = [&](const std::string& prefix, int count) {
    AssemblyPlan plan;
    for (int i = 0; i < count; ++i) {
      const auto number = prefix + std::to_string(i);
      plan.definitions.push_back(this->Part(number, number));
    }
    const auto before = this->vault->StatementCount();
    this->Import(plan);
    return this->vault->StatementCount() - before;
  };
  statements("A", 10);

  const auto few = statements("B", 10);
  const auto more = statements("C", 20);
  const auto most = statements("D", 210);

  EXPECT_EQ((most - few) / 200, (more - few) / 10);
  EXPECT_LT((most - few) / 200, 40);
}

}  // namespace
}  // namespace quintara::test

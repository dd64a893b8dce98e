#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <iostream>

#include "apps/quintara/vault_with_two_roots.h"
#include "base/attempt.h"
#include "quintara/interruption.h"

namespace quintara::test {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::UnorderedElementsAre;

class WipVerb : public VaultWithTwoRoots {
 protected:
  explicit WipVerb(const std::string& matrices = "all") : VaultWithTwoRoots(matrices) {}

  Outcome Wip(std::vector<std::string> options) {
    options.insert(options.begin(), {"wip", "as1"});
    return Run(options);
  }
  // Compared with the positions that the geometry kernel computes itself.
  std::string Compared(const std::string& name) {
    const auto out = Run({"compare", name, "--with", Data("as1-oc-214.stp")}).out;
    const auto end = out.find("; greatest");
    return out.substr(out.rfind('\n', end) + 1, end - out.rfind('\n', end) - 1);
  }
  // "nut light" and so on, in the order in which they stand in it.
  std::vector<std::string> Components(const std::string& name) const {
    std::vector<std::string> components;
    const auto own = std::make_shared<Gate>();
    CadHost host({own, std::make_shared<NativeContents>(own), {}});
    const auto document = host.Application()->Documents()->Open(AdminPath("WIP~~" + name + ".ZVAProduct"));
    const auto children = document->AsProductDocument()->Product()->Products();
    for (int i = 1; i <= children->Count(); ++i) {
      const auto child = children->Item(i);
      const auto type = OrElse(std::string(), [&] { return child->Parameters()->Item("TYPE")->ValueAsString(); });
      components.push_back(child->PartNumber() + (type == "LWT" ? " light" : ""));
    }
    return components;
  }
  std::vector<std::string> Wips() const {
    std::vector<std::string> names;
    if (!std::filesystem::exists(ToPath(AdminPath()))) return names;
    for (const auto& entry : std::filesystem::directory_iterator(ToPath(AdminPath()))) {
      const auto name = FromPath(entry.path().filename());
      if (name.ends_with(".ZVAProduct")) names.push_back(name);
    }
    std::ranges::sort(names);
    return names;
  }
  Outcome WipOfRods() { return Run({"wip", "rod-assembly", "--light", "rod"}); }
};

TEST_F(WipVerb, MakesAndPlacesWhatThePatternsName) {
  const auto outcome = Wip({"--light", "L-BRACKET", "--document", "PLATE", "--all-instances", "--name", "TRIAL"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(outcome.out, HasSubstr("made 'WIP~~TRIAL' with 3 components, '" + AdminPath("WIP~~TRIAL.ZVAProduct")));
  EXPECT_THAT(outcome.errors, HasSubstr("The WIP was created."));
  EXPECT_THAT(Components("TRIAL"), ElementsAre("l-bracket light", "plate", "l-bracket light"));
  EXPECT_EQ(Compared("TRIAL"), "3 of 3 in place");
}

TEST_F(WipVerb, NamesTheWipAfterTheProductOfTheMatrix) {
  EXPECT_EQ(Wip({"--light", "rod"}).exitCode, kDone);

  EXPECT_THAT(Wips(), ElementsAre("WIP~~as1.ZVAProduct"));
}

TEST_F(WipVerb, TellsHowManyNodesItLeaves) {
  const auto outcome = Wip({"--light", "part:*"});

  EXPECT_EQ(outcome.exitCode, kDone);
  EXPECT_THAT(outcome.errors, HasSubstr("the pattern 'part:*' leaves 1 further node of what it marks; --every-node"));
}

TEST_F(WipVerb, TellsHowManyNodesAreKeptByAChoiceAbove) {
  const auto outcome = Wip({"--light", "rod-assembly", "--light", "nut", "--all-instances"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(outcome.errors, HasSubstr("the pattern 'nut' also matches 1 node that the choice above keeps as it is"));
  EXPECT_EQ(Compared("as1"), "7 of 7 in place");
}

// What a part number costs that stands twice: the component behind each. The second one isn't placed.
TEST_F(WipVerb, SaysWhatAPartNumberCostsThatStandsTwice) {
  const auto outcome = Wip({"--light", "part:*", "--every-node", "--name", "TWICE"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(Components("TWICE"), ElementsAre("nut light", "bolt light", "nut light", "plate light"));
  EXPECT_THAT(
      outcome.errors,
      AllOf(HasSubstr("The WIP was created."), HasSubstr("quintara: 'l-bracket' is missing\n"),
            HasSubstr("quintara: 'rod' is missing\n"),
            HasSubstr("quintara: 'nut' (nut.2) is still at the origin, though the matrix places it elsewhere")));
}

TEST_F(WipVerb, MakesTheWholeProductOneComponent) {
  const auto outcome = Wip({"--light", ".", "--name", "WHOLE"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(Components("WHOLE"), ElementsAre("as1 light"));
}

TEST_F(WipVerb, TakesOutWhatItMarkedBefore) {
  EXPECT_EQ(Wip({"--light", "part:*", "--none", "*bolt*", "--none", "nut"}).exitCode, kDone);

  EXPECT_THAT(Components("as1"), UnorderedElementsAre("rod light", "l-bracket light", "plate light"));
}

TEST_F(WipVerb, TakesOutWhatStandsBelowWhatIsLeftOut) {
  EXPECT_EQ(Wip({"--light", "part:*", "--none", "l-bracket-assembly"}).exitCode, kDone);

  EXPECT_THAT(Components("as1"), UnorderedElementsAre("nut light", "rod light", "plate light"));
}

TEST_F(WipVerb, TakesPatternsFromLeftToRight) {
  EXPECT_EQ(Wip({"--none", "nut", "--document", "bolt", "--light", "nut", "--light", "bolt"}).exitCode, kDone);

  EXPECT_THAT(Components("as1"), ElementsAre("nut light", "bolt light"));
}

TEST_F(WipVerb, LeavesTheWholeProductWhereItIs) {
  const auto outcome = Run({"wip", "rod-assembly", "--light", "."});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(Components("as1"), ElementsAre("rod-assembly light"));
}

TEST_F(WipVerb, KeepsWhatItIsBeforeItIsPlaced) {
  const auto file = work.Path("created.ZVAProduct");

  EXPECT_EQ(Wip({"--light", "part:*", "--all-instances", "--as-created", file}).exitCode, kDone);

  EXPECT_THAT(Run({"compare", file, "--with", Data("as1-oc-214.stp")}).out, HasSubstr("0 of 18 in place"));
  EXPECT_EQ(Compared("as1"), "18 of 18 in place");
}

TEST_F(WipVerb, RefusesAPlaceThatCannotHoldItBeforeAnythingIsDone) {
  EXPECT_EQ(Wip({"--light", "nut", "--as-created", work.Path("created.stp")}).exitCode, kWrongUse);
  EXPECT_EQ(Wip({"--light", "nut", "--as-created", work.Path("nowhere/created.ZVAProduct")}).exitCode, kFailed);
  EXPECT_THAT(Wips(), IsEmpty());
}

TEST_F(WipVerb, OnlyTellsWhatItWouldMake) {
  const auto outcome = Wip({"--light", "nut", "--document", "plate", "--dry-run"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(outcome.out, AllOf(HasSubstr("nut        light\n"), HasSubstr("plate      document\n"),
                                 HasSubstr("nothing made, as asked: 2 components\n")));
  EXPECT_THAT(outcome.errors, Not(HasSubstr("was created")));
  EXPECT_THAT(Wips(), IsEmpty());
  EXPECT_FALSE(HasWork("nut.lwt"));
}

TEST_F(WipVerb, NeedsPatternsWhereNobodyCanBeAsked) {
  const auto outcome = Wip({});

  EXPECT_EQ(outcome.exitCode, kWrongUse);
  EXPECT_THAT(outcome.errors, HasSubstr("without a terminal nobody can be asked"));
}

TEST_F(WipVerb, NeedsPatternsWhereNobodyIsToBeAsked) {
  terminal.input = terminal.errors = true;

  EXPECT_EQ(Wip({"--no"}).exitCode, kWrongUse);
}

TEST_F(WipVerb, RefusesAPatternWithoutAMatchBeforeAnythingIsDone) {
  const auto outcome = Wip({"--light", "nut", "--document", "axle", "--name", "TRIAL"});

  EXPECT_EQ(outcome.exitCode, kWrongUse);
  EXPECT_EQ(outcome.errors, "quintara: the pattern 'axle' matches no component of 'as1' (revision A)\n");
  EXPECT_THAT(Wips(), IsEmpty());
}

TEST_F(WipVerb, RefusesTheProductsOwnName) {
  EXPECT_EQ(Wip({"--light", "as1"}).exitCode, kWrongUse);
}

TEST_F(WipVerb, RefusesWhatCannotBeMeant) {
  EXPECT_EQ(Wip({"--light", "part:"}).exitCode, kWrongUse);
  EXPECT_EQ(Wip({"--light", "nut", "--name", "a/b"}).exitCode, kWrongUse);
  EXPECT_EQ(Wip({"--light", "nut", "--active", "nowhere"}).exitCode, kWrongUse);
  EXPECT_EQ(Run({"wip", "gear", "--light", "nut"}).exitCode, kWrongUse);
  EXPECT_EQ(RunBare({"wip", "as1", "--light", "nut", "--work", work.Path()}).exitCode, kWrongUse);
  EXPECT_THAT(Wips(), IsEmpty());
}

TEST_F(WipVerb, LeavesAFileThatIsInTheWay) {
  RunWell({"wip", "as1", "--light", "nut"});
  const auto before = ReadWork("WIP~~as1.ZVAProduct");

  const auto outcome = Wip({"--light", "bolt"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("exists already; --replace replaces it"));
  EXPECT_EQ(ReadWork("WIP~~as1.ZVAProduct"), before);
}

TEST_F(WipVerb, ReplacesAFileWhenToldTo) {
  RunWell({"wip", "as1", "--light", "nut"});

  const auto outcome = Wip({"--light", "bolt", "--replace"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(Components("as1"), ElementsAre("bolt light"));
}

TEST_F(WipVerb, RefusesAProductThatIsCheckedOut) {
  RunWell({"checkout", "as1"});

  const auto outcome = Wip({"--light", "nut"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, AllOf(HasSubstr("as1"), HasSubstr("nothing was made of 'as1' (revision A)")));
}

TEST_F(WipVerb, MakesTheOpenDocumentTheWip) {
  RunWell({"wip", "as1", "--light", "plate", "--name", "FIRST"});

  const auto outcome = Wip({"--light", "rod", "--active", "FIRST", "--name", "SECOND"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(Components("SECOND"), ElementsAre("plate light", "rod light"));
  EXPECT_THAT(Components("FIRST"), ElementsAre("plate light"));
  EXPECT_THAT(Compared("SECOND"), HasSubstr("2 of 2 in place"));
}

TEST_F(WipVerb, GivesUpOnAnOpenDocumentOfTheSameName) {
  RunWell({"wip", "as1", "--light", "plate", "--name", "FIRST"});
  const auto before = ReadWork("WIP~~FIRST.ZVAProduct");

  const auto outcome = Wip({"--light", "rod", "--active", "FIRST", "--name", "FIRST", "--replace"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, AllOf(HasSubstr("A WIP product with the same name already exists in ZORVA."),
                                    HasSubstr("no work in progress was made")));
  EXPECT_EQ(ReadWork("WIP~~FIRST.ZVAProduct"), before);
}

TEST_F(WipVerb, TakesTheMatrixOfTheProductThatHoldsASubAssembly) {
  EXPECT_EQ(WipOfRods().exitCode, kDone);

  EXPECT_EQ(Compared("as1"), "1 of 1 in place");
}

TEST_F(WipVerb, FailsWhereNobodyPicksOneOfSeveralMatrices) {
  AddHall();

  const auto outcome = WipOfRods();

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, AllOf(HasSubstr("MainPanel.cmdCreateWIP_Click"), Not(HasSubstr("was created"))));
  EXPECT_THAT(Wips(), IsEmpty());
}

TEST_F(WipVerb, LetsOneOfSeveralMatricesBePicked) {
  AddHall();
  terminal.input = terminal.errors = true;
  typed = "2\n";

  const auto outcome = WipOfRods();

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(outcome.errors,
              AllOf(HasSubstr("Choose one of them"), HasSubstr("  1  as1 Matrix"), HasSubstr("  2  hall Matrix")));
  EXPECT_THAT(Wips(), ElementsAre("WIP~~hall.ZVAProduct"));
}

// Its name isn't known before.
TEST_F(WipVerb, LeavesAFileThatIsInTheWayOfAPickedMatrix) {
  AddHall();
  std::filesystem::create_directories(ToPath(AdminPath()));
  WriteWork("WIP~~hall.ZVAProduct", "in the way");
  terminal.input = terminal.errors = true;
  typed = "2\n";

  const auto outcome = WipOfRods();

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("exists already; --replace replaces it"));
  EXPECT_EQ(ReadWork("WIP~~hall.ZVAProduct"), "in the way");
}

TEST_F(WipVerb, DismissesTheMatricesWithAnEmptyLine) {
  AddHall();
  terminal.input = terminal.errors = true;
  typed = "\n";

  EXPECT_EQ(WipOfRods().exitCode, kFailed);
  EXPECT_THAT(Wips(), IsEmpty());
}

// What was inserted before a failure stays, and is saved as its user would.
TEST_F(WipVerb, SavesWhatWasMadeBeforeAFailure) {
  gate->FailOperation("Products.AddComponentsFromFiles", 2);

  const auto outcome = Wip({"--light", "part:*", "--name", "PARTIAL"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(Components("PARTIAL"), ElementsAre("nut light"));
  EXPECT_THAT(outcome.errors, HasSubstr("'bolt' is missing"));
}

// Both what was there before and what is asked for count where the places are compared.
TEST_F(WipVerb, AsksForNoInstancesBelowWhatTheOpenDocumentHolds) {
  RunWell({"wip", "as1", "--light", "rod-assembly", "--name", "FIRST"});

  const auto outcome = Wip({"--light", "nut", "--all-instances", "--active", "FIRST", "--name", "SECOND"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_EQ(Compared("SECOND"), "7 of 7 in place");
}

// The newest revision, whichever one the vault links to the product.
TEST_F(WipVerb, IsComparedWithTheMatrixThatPlacedIt) {
  work.Write("as1 Matrix.xml", StoredMatrix("nut-bolt-assembly"));
  {
    const auto vault = Open();
    const auto as1 = ObjectIn(*vault, vault->FindNewest("as1").at(0).identity);
    for (const auto& link : vault->Links(as1)) {
      if (link.isStructure || !link.goesOut) continue;
      const auto matrix = vault->NewRevision(ObjectIn(*vault, link.object.identity));
      vault->StoreFile(matrix, work.Path("as1 Matrix.xml"));
    }
  }

  const auto outcome = Wip({"--light", "rod"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("'rod' (rod.1) is still at the origin, since the matrix has no place for it"));
}

// An interruption that comes while a component is brought in ends the work before the next one.
TEST_F(WipVerb, SavesWhatWasMadeBeforeAnInterruption) {
  // A terminal on which someone presses the key as soon as the second component is told of.
  class Interrupter final : public std::stringbuf {
   public:
    int sync() override {
      if (!pressed_ && str().find("bolt - A") != std::string::npos) std::raise(SIGINT);
      pressed_ = pressed_ || str().find("bolt - A") != std::string::npos;
      return 0;
    }
    ~Interrupter() override { std::cerr << str(); }

   private:
    bool pressed_ = false;
  };
  const auto run = [this] {
    int exitCode = 0;
    {
      std::istringstream in;
      std::ostringstream out;
      Interrupter typist;
      std::ostream errors(&typist);
      CatchInterruptions();
      exitCode = RunQuintara({"wip", "as1", "--light", "part:*", "--name", "CUT", "--vault", Folder()},
                             {in, out, errors, {.errors = true, .columns = 80}, gate, {}});
    }
    // Not by std::exit, which would clean up what the tests of this program share.
    std::_Exit(exitCode);
  };

  EXPECT_EXIT(run(), ::testing::ExitedWithCode(kFailed), "MainPanel.cmdCreateWIP_Click.*interrupted");

  EXPECT_THAT(Components("CUT"), ElementsAre("nut light", "rod light"));
}

class WipVerbWithoutMatrix : public WipVerb {
 protected:
  WipVerbWithoutMatrix() : WipVerb("none") {}
};

TEST_F(WipVerbWithoutMatrix, MakesAWipThatIsNotPlaced) {
  const auto outcome = Wip({"--light", "plate"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("There is no matrix document for this product."));
  EXPECT_THAT(outcome.errors, Not(HasSubstr("quintara: ")));
  EXPECT_THAT(Wips(), ElementsAre("WIP~~.ZVAProduct"));
}

TEST_F(WipVerbWithoutMatrix, LeavesAFileThatIsInTheWayBeforeAnythingIsDone) {
  std::filesystem::create_directories(ToPath(AdminPath()));
  WriteWork("WIP~~.ZVAProduct", "in the way");

  const auto outcome = Wip({"--light", "plate"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, AllOf(HasSubstr("exists already"), Not(HasSubstr("was created"))));
  EXPECT_EQ(ReadWork("WIP~~.ZVAProduct"), "in the way");
}

}  // namespace
}  // namespace quintara::test

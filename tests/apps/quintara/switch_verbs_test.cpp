#include "apps/quintara/vault_with_as1.h"
#include "hosts/native/native_files.h"
#include "quintara/product_tree.h"

namespace quintara::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

// One component of a work in progress, as it stands in its file.
struct Component {
  std::string name;
  std::string file;
  PositionMatrix position{};
  bool isLight = false;

  bool operator==(const Component&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Component& component) {
  return out << component.name << ' ' << component.file << ' ' << ::testing::PrintToString(component.position);
}

// What is told of an open product by another host than the one that made it.
std::vector<Component> ComponentsIn(const std::string& path) {
  const auto gate = std::make_shared<Gate>();
  CadHost host({gate, std::make_shared<NativeContents>(gate), {}});
  const auto root = host.Application()->Documents()->Open(path)->AsProductDocument()->Product();
  std::vector<Component> components;
  for (const auto& node : NodesOf(root)) {
    if (node.depth != 1) continue;
    Component component{node.name, FromPath(ToPath(node.file).filename())};
    component.isLight = node.isLight;
    node.product->Position()->GetComponents(component.position);
    components.push_back(component);
  }
  return components;
}

std::vector<std::string> FilesOf(const std::vector<Component>& components) {
  std::vector<std::string> files;
  for (const auto& component : components) files.push_back(component.file);
  return files;
}

// The assemblies and the plate of as1, light, in a work in progress.
class SwitchVerbs : public VaultWithAs1 {
 protected:
  SwitchVerbs() {
    RunWell({"wip", "as1", "--name", "TRIAL", "--light", "l-bracket-assembly", "--light", "rod-assembly", "--light",
             "plate"});
    light = Files();
  }

  std::vector<Component> Components() const { return ComponentsIn(AdminPath("WIP~~TRIAL.ZVAProduct")); }
  std::vector<std::string> Files() const { return FilesOf(Components()); }
  std::string Bytes() const { return ReadWork("WIP~~TRIAL.ZVAProduct"); }

  std::vector<std::string> light;
};

TEST_F(SwitchVerbs, SwitchWhatMatchesAndSaveIt) {
  const auto outcome = Run({"switch-to-product", "TRIAL", "--select", "PLATE"});

  EXPECT_EQ(outcome.exitCode, kDone);
  EXPECT_THAT(outcome.errors, IsEmpty());
  EXPECT_THAT(outcome.out, HasSubstr("saved '" + AdminPath("WIP~~TRIAL.ZVAProduct")));
  EXPECT_THAT(Files(), ElementsAre("rod-assembly.lwt", "l-bracket-assembly.lwt", "plate.stp"));
}

TEST_F(SwitchVerbs, ReadWhatTheOneBeforeStamped) {
  RunWell({"switch-to-product", "TRIAL", "--select", "plate"});

  const auto back = Run({"switch-to-lwt", "TRIAL", "--select", "plate"});
  EXPECT_EQ(back.exitCode, kDone) << back.errors;
  EXPECT_EQ(Files(), light);

  const auto again = Run({"switch-to-product", "TRIAL", "--select", "plate"});
  EXPECT_EQ(again.exitCode, kDone) << again.errors;
  EXPECT_THAT(Files(), ElementsAre("rod-assembly.lwt", "l-bracket-assembly.lwt", "plate.stp"));
}

TEST_F(SwitchVerbs, TakeTheTreesOrderWhateverThatOfThePatterns) {
  RunWell({"switch-to-product", "TRIAL", "--select", "plate"});

  const auto outcome = Run({"switch-to-product", "TRIAL", "--select", "plate", "--select", "rod-assembly"});

  // The one before it in the tree is switched, though its pattern stands behind.
  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(Files(), ElementsAre("rod-assembly.ZVAProduct", "l-bracket-assembly.lwt", "plate.stp"));
}

TEST_F(SwitchVerbs, SaveWhatWasSwitchedBeforeAFailure) {
  RunWell({"switch-to-product", "TRIAL", "--select", "rod-assembly"});

  const auto outcome = Run({"switch-to-lwt", "TRIAL", "--select", "*"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("is loaded as \"LWT\" already"));
  EXPECT_THAT(outcome.out, HasSubstr("saved '"));
  EXPECT_EQ(Files(), light);
}

TEST_F(SwitchVerbs, SwitchAnAssemblyWithAllThatItHolds) {
  RunWell({"switch-to-product", "TRIAL", "--select", "*"});
  EXPECT_THAT(Files(), ElementsAre("rod-assembly.ZVAProduct", "l-bracket-assembly.ZVAProduct", "plate.stp"));
  EXPECT_THAT(Run({"tree", AdminPath("WIP~~TRIAL.ZVAProduct")}).out, HasSubstr("nut.stp"));

  const auto outcome = Run({"switch-to-lwt", "TRIAL", "--select", "nut", "--select", "*assembly*"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(Files(), ElementsAre("rod-assembly.lwt", "l-bracket-assembly.lwt", "plate.stp"));
}

TEST_F(SwitchVerbs, TellALightAssemblyFromALightPart) {
  RunWell({"switch-to-product", "TRIAL", "--select", "product:*"});
  EXPECT_THAT(Files(), ElementsAre("rod-assembly.ZVAProduct", "l-bracket-assembly.ZVAProduct", "plate.lwt"));
  RunWell({"switch-to-lwt", "TRIAL", "--select", "product:*assembly"});
  EXPECT_EQ(Files(), light);

  RunWell({"switch-to-product", "TRIAL", "--select", "part:*"});

  EXPECT_THAT(Files(), ElementsAre("rod-assembly.lwt", "l-bracket-assembly.lwt", "plate.stp"));
}

TEST_F(SwitchVerbs, SendTheUserToTheParentOfADeeperComponent) {
  RunWell({"switch-to-product", "TRIAL", "--select", "*assembly"});
  const auto before = Files();

  const auto outcome = Run({"switch-to-lwt", "TRIAL", "--select", "nut"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("ZORVA can not replace the component with a lwt. Try with the parent..."));
  EXPECT_EQ(Files(), before);
}

TEST_F(SwitchVerbs, PassOverAnObjectThatIsCheckedOut) {
  RunWell({"checkout", "rod-assembly"});

  const auto outcome = Run({"switch-to-product", "TRIAL", "--select", "*"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("\"as1\\rod-assembly_1\" must be checked in or released"));
  EXPECT_THAT(Files(), ElementsAre("rod-assembly.lwt", "l-bracket-assembly.ZVAProduct", "plate.stp"));
}

TEST_F(SwitchVerbs, SaveNothingWhenTheyOnlyTell) {
  const auto before = Bytes();

  const auto outcome = Run({"switch-to-product", "TRIAL", "--select", "*", "--dry-run"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(outcome.out, HasSubstr("nothing saved, as asked"));
  EXPECT_EQ(Bytes(), before);
}

TEST_F(SwitchVerbs, RefuseAPatternWithoutAMatchBeforeAnythingIsChanged) {
  const auto before = Bytes();

  for (const auto* verb : {"switch-to-lwt", "switch-to-product"}) {
    const auto outcome = Run({verb, "TRIAL", "--select", "plate", "--select", "nowhere"});

    EXPECT_EQ(outcome.exitCode, kWrongUse);
    EXPECT_THAT(outcome.errors, HasSubstr("'nowhere' matches no component"));
  }
  EXPECT_EQ(Bytes(), before);
  EXPECT_FALSE(HasWork("plate.stp"));
}

TEST_F(SwitchVerbs, DoNotSelectTheWipItself) {
  EXPECT_EQ(Run({"switch-to-lwt", "TRIAL", "--select", "WIP~~TRIAL"}).exitCode, kWrongUse);
}

TEST_F(SwitchVerbs, NeedAPattern) {
  EXPECT_EQ(Run({"switch-to-lwt", "TRIAL"}).exitCode, kWrongUse);
  EXPECT_EQ(Run({"switch-to-product", "TRIAL", "--select", ""}).exitCode, kWrongUse);
}

TEST_F(SwitchVerbs, NeedAWip) {
  RunWell({"checkout", "as1"});

  EXPECT_EQ(Run({"switch-to-lwt", AdminPath("as1.ZVAProduct"), "--select", "*"}).exitCode, kWrongUse);
  EXPECT_EQ(Run({"switch-to-product", "nowhere", "--select", "*"}).exitCode, kWrongUse);
}

TEST_F(SwitchVerbs, NeedAVault) {
  EXPECT_EQ(RunBare({"switch-to-lwt", "TRIAL", "--select", "*", "--work", AdminPath()}).exitCode, kWrongUse);
}

struct RealAssembly {
  std::string file;
  std::string partNumber;
};

std::ostream& operator<<(std::ostream& out, const RealAssembly& assembly) {
  return out << assembly.file;
}

// Every component of a light work in progress in full, and back.
class ASwitchedAssembly : public VaultCli, public ::testing::WithParamInterface<RealAssembly> {
 protected:
  ASwitchedAssembly() {
    RunWell({"import", Data(GetParam().file)});
    RunWell({"wip", GetParam().partNumber, "--name", "TRIAL", "--light", "part:*", "--all-instances"});
  }
  void RunWell(const std::vector<std::string>& arguments) {
    const auto outcome = Run(arguments);
    EXPECT_EQ(outcome.exitCode, kDone) << arguments[0] << ": " << outcome.errors;
  }
  std::vector<Component> Components() const { return ComponentsIn(AdminPath("WIP~~TRIAL.ZVAProduct")); }
  std::string Compared() { return Run({"compare", "TRIAL", "--with", Data(GetParam().file)}).out; }
};

TEST_P(ASwitchedAssembly, KeepsEachComponentInItsPlace) {
  const auto before = Components();
  ASSERT_THAT(before, Not(IsEmpty()));
  EXPECT_THAT(before, Each(::testing::Field(&Component::isLight, true)));
  const auto compared = Compared();

  RunWell({"switch-to-product", "TRIAL", "--select", "*"});

  const auto full = Components();
  ASSERT_EQ(full.size(), before.size());
  for (std::size_t i = 0; i < full.size(); ++i) {
    EXPECT_EQ(full[i].name, before[i].name);
    EXPECT_EQ(full[i].position, before[i].position);
    EXPECT_FALSE(full[i].isLight) << full[i].file;
  }
  EXPECT_THAT(Compared(), Not(HasSubstr("out of place")));

  RunWell({"switch-to-lwt", "TRIAL", "--select", "*"});

  EXPECT_EQ(Components(), before);
  EXPECT_EQ(Compared(), compared);
}

INSTANTIATE_TEST_SUITE_P(Exchanged, ASwitchedAssembly,
                         ::testing::Values(RealAssembly{"as1-oc-214.stp", "as1"}, RealAssembly{"as1-tu-203.stp", "as1"},
                                           RealAssembly{"as1_pe_203.stp", "AS1_PE_ASM"},
                                           RealAssembly{"dm1-id-214.stp", "dm1"},
                                           RealAssembly{"dm1-oc-214.stp", "l-bracket assembly"},
                                           RealAssembly{"dm1-pe-214.stp", "DM1_PE_ASM"},
                                           RealAssembly{"s1-c5-214/s1-c5-214.stp", "_MASTER"},
                                           RealAssembly{"s1-tu-203/s1-tu-203.stp", "s1"},
                                           RealAssembly{"s1_pe_214/s1_pe_214.stp", "S1_PE_TOP"}));

}  // namespace
}  // namespace quintara::test

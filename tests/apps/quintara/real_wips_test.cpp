#include "apps/quintara/vault_cli_fixture.h"

namespace quintara::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

struct RealAssembly {
  std::string file;
  std::string partNumber;
  int instances;
  int parts;
};

std::ostream& operator<<(std::ostream& out, const RealAssembly& assembly) {
  return out << assembly.file;
}

// The main job on what different CAD systems write: into the vault, reviewed, made, placed by the matrix, and compared
// with the positions that the geometry kernel computes itself.
class RealWip : public VaultCli {
 protected:
  RealWip(const std::string& file, std::string partNumber) : file_(Data(file)), partNumber_(std::move(partNumber)) {
    const auto imported = Run({"import", file_});
    if (imported.exitCode != kDone) throw std::runtime_error(imported.errors);
  }
  void Make(const std::string& name, std::vector<std::string> options) {
    options.insert(options.begin(), {"wip", partNumber_, "--name", name});
    const auto outcome = Run(options);
    EXPECT_EQ(outcome.exitCode, kDone) << outcome.out << outcome.errors;
    EXPECT_THAT(outcome.errors, HasSubstr("The WIP was created."));
  }
  Outcome Compare(const std::string& name) { return Run({"compare", name, "--with", file_}); }

 private:
  std::string file_;
  std::string partNumber_;
};

class ARealAssemblyInTheVault : public RealWip, public ::testing::WithParamInterface<RealAssembly> {
 protected:
  ARealAssemblyInTheVault() : RealWip(GetParam().file, GetParam().partNumber) {}

  std::string All() const {
    const auto count = std::to_string(GetParam().instances);
    return count + " of " + count + " in place; ";
  }
};

TEST_P(ARealAssemblyInTheVault, IsMadeOfLightPartsInPlace) {
  Make("LIGHT", {"--light", "part:*", "--all-instances"});

  EXPECT_THAT(Compare("LIGHT").out, AllOf(HasSubstr(All()), Not(HasSubstr(" document "))));
}

TEST_P(ARealAssemblyInTheVault, IsMadeOfDocumentsInPlace) {
  Make("DOCUMENTS", {"--document", "part:*", "--all-instances"});

  EXPECT_THAT(Compare("DOCUMENTS").out, AllOf(HasSubstr(All()), Not(HasSubstr(" light "))));
}

TEST_P(ARealAssemblyInTheVault, IsMadeOfOneInstanceOfEachPart) {
  Make("ONE", {"--light", "part:*"});

  const auto compared = Compare("ONE").out;

  const auto& [file, partNumber, instances, parts] = GetParam();
  EXPECT_THAT(compared, HasSubstr(std::to_string(parts) + " of " + std::to_string(instances) + " in place"));
  EXPECT_THAT(compared, Not(HasSubstr("out of place")));
  EXPECT_THAT(compared, Not(HasSubstr("surplus")));
}

TEST_P(ARealAssemblyInTheVault, IsPutBackInPlace) {
  Make("MOVED", {"--light", "part:*", "--all-instances"});
  Run({"scatter", "MOVED"});

  const auto outcome = Run({"retrieve", "MOVED"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(Compare("MOVED").out, HasSubstr(All()));
}

INSTANTIATE_TEST_SUITE_P(Exchanged, ARealAssemblyInTheVault,
                         ::testing::Values(RealAssembly{"as1-oc-214.stp", "as1", 18, 5},
                                           RealAssembly{"as1-tu-203.stp", "as1", 18, 5},
                                           RealAssembly{"as1_pe_203.stp", "AS1_PE_ASM", 18, 5},
                                           RealAssembly{"dm1-id-214.stp", "dm1", 7, 3},
                                           RealAssembly{"dm1-oc-214.stp", "l-bracket assembly", 7, 3},
                                           RealAssembly{"dm1-pe-214.stp", "DM1_PE_ASM", 7, 3},
                                           RealAssembly{"s1-c5-214/s1-c5-214.stp", "_MASTER", 11, 8},
                                           RealAssembly{"s1-tu-203/s1-tu-203.stp", "s1", 11, 8},
                                           RealAssembly{"s1_pe_214/s1_pe_214.stp", "S1_PE_TOP", 11, 8}));

struct NestedPart {
  std::string file;
  std::string partNumber;
  std::string subAssembly;
  std::string part;  ///< stands in the sub-assembly twice, and six times elsewhere
};

std::ostream& operator<<(std::ostream& out, const NestedPart& nested) {
  return out << nested.file;
}

// What stands inside of a sub-assembly that is loaded is in place with it, and only what stands elsewhere is placed.
class ASubAssemblyAndAPartOfIt : public RealWip, public ::testing::WithParamInterface<NestedPart> {
 protected:
  ASubAssemblyAndAPartOfIt() : RealWip(GetParam().file, GetParam().partNumber) {}
};

TEST_P(ASubAssemblyAndAPartOfIt, AreInPlaceWithAllInstances) {
  Make("ALL", {"--document", GetParam().subAssembly, "--light", GetParam().part, "--all-instances"});

  EXPECT_THAT(Compare("ALL").out, AllOf(HasSubstr("7 of 7 in place; "), HasSubstr(" document "), HasSubstr(" light ")));
}

TEST_P(ASubAssemblyAndAPartOfIt, AreInPlaceWithOneInstanceOfEach) {
  Make("ONE", {"--light", GetParam().subAssembly, "--light", GetParam().part});

  EXPECT_THAT(Compare("ONE").out, AllOf(HasSubstr("2 of 7 in place, 5 missing; "), Not(HasSubstr(" document "))));
}

INSTANTIATE_TEST_SUITE_P(Exchanged, ASubAssemblyAndAPartOfIt,
                         ::testing::Values(NestedPart{"as1-oc-214.stp", "as1", "rod-assembly", "nut"},
                                           NestedPart{"as1-tu-203.stp", "as1", "rod-assembly", "nut"},
                                           NestedPart{"as1_pe_203.stp", "AS1_PE_ASM", "ROD_ASM", "NUT"}));

}  // namespace
}  // namespace quintara::test

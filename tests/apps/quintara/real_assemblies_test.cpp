#include "apps/quintara/cli_fixture.h"

namespace quintara::test {
namespace {

using ::testing::HasSubstr;

struct RealAssembly {
  std::string file;
  std::string partNumber;
  std::string instances;
};

std::ostream& operator<<(std::ostream& out, const RealAssembly& assembly) {
  return out << assembly.file;
}

// The whole road, from the STEP file to a flat product in place, for what different CAD systems write.
class ARealAssembly : public Cli, public ::testing::WithParamInterface<RealAssembly> {
 protected:
  void MustGoWell(const std::vector<std::string>& arguments, const std::string& result) {
    const auto outcome = Run(arguments);
    EXPECT_EQ(outcome.exitCode, kDone) << outcome.out << outcome.errors;
    EXPECT_THAT(outcome.out, HasSubstr(result));
  }
};

TEST_P(ARealAssembly, IsRebuiltFlatWithEachInstanceInPlace) {
  const auto& [file, partNumber, instances] = GetParam();
  const auto matrix = partNumber + " Matrix.xml";

  MustGoWell({"import", Data(file)}, "imported '" + partNumber + "'");
  MustGoWell({"matrix", partNumber}, matrix);
  MustGoWell({"flatten", partNumber}, "made 'WIP~~" + partNumber + "'");
  MustGoWell({"position", partNumber, "--matrix", matrix, "--all-instances"}, "placed " + instances + " components");
  MustGoWell({"scatter", partNumber}, "scattered " + instances);
  MustGoWell({"position", partNumber, "--matrix", matrix}, "placed " + instances);

  MustGoWell({"compare", partNumber, "--with", Data(file)}, instances + " of " + instances + " in place; ");
}

INSTANTIATE_TEST_SUITE_P(Exchanged, ARealAssembly,
                         ::testing::Values(RealAssembly{"as1-oc-214.stp", "as1", "18"},
                                           RealAssembly{"as1-tu-203.stp", "as1", "18"},
                                           RealAssembly{"as1_pe_203.stp", "AS1_PE_ASM", "18"},
                                           RealAssembly{"dm1-id-214.stp", "dm1", "7"},
                                           RealAssembly{"dm1-oc-214.stp", "l-bracket assembly", "7"},
                                           RealAssembly{"dm1-pe-214.stp", "DM1_PE_ASM", "7"},
                                           RealAssembly{"s1-c5-214/s1-c5-214.stp", "_MASTER", "11"},
                                           RealAssembly{"s1-tu-203/s1-tu-203.stp", "s1", "11"},
                                           RealAssembly{"s1_pe_214/s1_pe_214.stp", "S1_PE_TOP", "11"}));

}  // namespace
}  // namespace quintara::test

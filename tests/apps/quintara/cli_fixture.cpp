#include "apps/quintara/cli_fixture.h"

#include <filesystem>
#include <stdexcept>

#include "base/text.h"

namespace quintara::test {
namespace {

Outcome RunIn(const std::vector<std::string>& arguments, const std::string& typed, const Terminal& terminal,
              const std::shared_ptr<Gate>& gate, const std::map<std::string, std::string>& variables = {}) {
  std::istringstream in(typed);
  std::ostringstream out;
  std::ostringstream errors;
  const auto environment = [&](const std::string& name) {
    const auto found = variables.find(name);
    return found == variables.end() ? std::string() : found->second;
  };
  const int exitCode = RunQuintara(arguments, {in, out, errors, terminal, gate, environment});
  return {exitCode, out.str(), errors.str()};
}

void Demand(const Outcome& outcome) {
  if (outcome.exitCode != kDone) throw std::runtime_error("preparing the files failed: " + outcome.errors);
}

}  // namespace

Outcome Cli::Run(std::vector<std::string> arguments) {
  arguments.push_back("--work");
  arguments.push_back(work.Path());
  return RunBare(arguments);
}

Outcome Cli::RunBare(const std::vector<std::string>& arguments) {
  return RunIn(arguments, typed, terminal, gate, variables);
}

std::string Cli::Data(const std::string& name) {
  return QUINTARA_TEST_DATA "/" + name;
}

std::unique_ptr<TemporaryFolder> CliWithAs1::imported_;

void CliWithAs1::SetUpTestSuite() {
  imported_ = std::make_unique<TemporaryFolder>();
  const auto folder = imported_->Path();
  const auto gate = std::make_shared<Gate>();
  Demand(RunIn({"import", Data("as1-oc-214.stp"), "--work", folder}, {}, {}, gate));
  Demand(RunIn({"matrix", "as1", "--work", folder}, {}, {}, gate));
  Demand(RunIn({"flatten", "as1", "--document", "part:*", "--light", "nut", "--light", "bolt", "--work", folder}, {},
               {}, gate));
}

void CliWithAs1::TearDownTestSuite() {
  imported_.reset();
}

CliWithAs1::CliWithAs1() {
  std::filesystem::copy(ToPath(imported_->Path()), ToPath(work.Path()));
}

void CliWithAs1::Position() {
  const auto outcome = Run({"position", "as1", "--matrix", kMatrix, "--all-instances"});
  ASSERT_EQ(outcome.exitCode, kDone) << outcome.errors;
}

}  // namespace quintara::test

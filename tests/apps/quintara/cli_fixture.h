#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "hosts/gate/gate.h"
#include "quintara/run_quintara.h"
#include "support/test_platform.h"

namespace quintara::test {

/// What a run of the program left behind.
struct Outcome {
  int exitCode;
  std::string out;
  std::string errors;
};

/// Runs the program in this process, on a work directory of its own.
class Cli : public ::testing::Test {
 protected:
  /// Runs a verb in `work`.
  Outcome Run(std::vector<std::string> arguments);
  /// The same with nothing added.
  Outcome RunBare(const std::vector<std::string>& arguments);

  /// The path of a fetched STEP file.
  static std::string Data(const std::string& name);

  TemporaryFolder work;
  TemporaryFolder elsewhere;
  Terminal terminal;
  std::string typed;
  std::map<std::string, std::string> variables;  ///< the environment
  std::shared_ptr<Gate> gate = std::make_shared<Gate>();
};

/// The same with `as1-oc-214.stp` imported into the work directory, its matrix written, and a flat
/// product of it made: five components, not placed yet. The files are made once and then copied.
class CliWithAs1 : public Cli {
 protected:
  static void SetUpTestSuite();
  static void TearDownTestSuite();

  CliWithAs1();

  /// Places all instances, which must go well.
  void Position();

  static constexpr auto kWip = "WIP~~as1.ZVAProduct";
  static constexpr auto kMatrix = "as1 Matrix.xml";

 private:
  static std::unique_ptr<TemporaryFolder> imported_;
};

}  // namespace quintara::test

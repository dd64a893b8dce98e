#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "access/access_fixture.h"
#include "access/host_mocks.h"
#include "access/utils/Cls_Utils.h"
#include "hosts/cad/cad_host.h"
#include "hosts/native/native_files.h"
#include "support/tiny_files.h"

namespace quintara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::NiceMock;
using ::testing::Return;

class Properties : public ::testing::Test, protected AccessBench {
 protected:
  Properties() {
    AssemblyStructure structure{};
    structure.definitions.push_back({"BOLT", false, {}});
    structure.definitions.push_back({"ROOT", true, {{"BOLT.1", 0, kIdentityPosition}}});
    structure.root = 1;
    document = host.Build(structure);
    root = document->Product();
    component = root->Products()->Item(1);
    Process().gZorva = host.Application();
  }

  void GivenProperty(const std::string& name, const std::string& value) {
    component->UserProperties()->CreateString(name, value);
  }
  std::string ValueOf(const std::string& name) { return component->Parameters()->Item(name)->ValueAsString(); }
  // A component whose only parameter is there and isn't.
  Ref<zorva::Product> WithoutTheParameterItCounts() {
    const auto parameters = MakeRef<NiceMock<MockParameters>>();
    ON_CALL(*parameters, Count).WillByDefault(Return(1));
    const auto product = MakeRef<NiceMock<MockProduct>>();
    ON_CALL(*product, Parameters).WillByDefault(Return(Ref<zorva::Parameters>(parameters)));
    return product;
  }

  Gate& gate = *platform.TheGate();
  CadHost host{{platform.TheGate(), std::make_shared<NativeContents>(platform.TheGate()), {}}};
  Ref<zorva::ProductDocument> document;
  Ref<zorva::Product> root, component;
  Cls_Utils utils;
};

TEST_F(Properties, AreReadFromTheParameters) {
  GivenProperty("TYPE", "LWT");
  gate.StartRecording();

  EXPECT_EQ(utils.ReadStringProperty(component, "TYPE", "String"), "LWT");

  EXPECT_THAT(gate.Record(), ElementsAre("Product.Parameters", "Parameters.Count", "Parameters.Item(TYPE)",
                                         "Parameter.ValueAsString"));
}

TEST_F(Properties, OfTheReferenceAreReadThroughTheInstance) {
  component->Reference()->UserProperties()->CreateString("OBJECT_ID", "7");

  EXPECT_EQ(utils.ReadStringProperty(component, "OBJECT_ID"), "7");
}

TEST_F(Properties, OfAProductWithoutAnyAreNotAskedForByName) {
  gate.StartRecording();

  EXPECT_EQ(utils.ReadStringProperty(component, "TYPE", "Integer"), "-1");

  EXPECT_THAT(gate.Record(), ElementsAre("Product.Parameters", "Parameters.Count"));
}

TEST_F(Properties, ThatAreNotThereReadAsWhatTheTypeAsksFor) {
  GivenProperty("OTHER", "x");

  EXPECT_EQ(utils.ReadStringProperty(component, "TYPE", "Integer"), "-1");
  EXPECT_EQ(utils.ReadStringProperty(component, "TYPE", "String"), "");
  EXPECT_EQ(utils.ReadStringProperty(component, "TYPE", "integer"), "");
  EXPECT_EQ(utils.ReadStringProperty(component, "TYPE"), "");
}

TEST_F(Properties, ThatAreThereReadTheSameForEachType) {
  GivenProperty("TYPE", "LWT");

  for (const auto* type : {"Integer", "String", ""}) {
    EXPECT_EQ(utils.ReadStringProperty(component, "TYPE", type), "LWT") << type;
  }
}

TEST_F(Properties, OfNothingReadAsMissing) {
  EXPECT_EQ(utils.ReadStringProperty(nullptr, "TYPE", "Integer"), "-1");
  EXPECT_EQ(utils.ReadStringProperty(nullptr, "TYPE", "String"), "");
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(Properties, ReadAsMissingWhicheverStepFails) {
  GivenProperty("TYPE", "LWT");
  for (int n = 1; n <= 4; ++n) {
    gate.FailCall(n);
    EXPECT_EQ(utils.ReadStringProperty(component, "TYPE", "Integer"), "-1") << n;
    EXPECT_TRUE(gate.HasFailed()) << n;
    gate.Reset();
  }

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(Properties, ReadAsMissingWhereTheHostGivesNothing) {
  EXPECT_EQ(utils.ReadStringProperty(WithoutTheParameterItCounts(), "TYPE", "Integer"), "-1");
}

TEST_F(Properties, AreWrittenWhereTheyStand) {
  GivenProperty("TYPE", "LWT");
  gate.StartRecording();

  EXPECT_TRUE(utils.WriteStringProperty(component, "TYPE", "3D"));

  EXPECT_THAT(gate.Record(), ElementsAre("Product.Parameters", "Parameters.Count", "Parameters.Item(TYPE)",
                                         "Parameter.ValuateFromString(3D)"));
  EXPECT_EQ(ValueOf("TYPE"), "3D");
}

TEST_F(Properties, AreMadeOnAProductWithoutAnyWithoutAskingForThem) {
  gate.StartRecording();

  EXPECT_TRUE(utils.WriteStringProperty(component, "TYPE", "LWT"));

  EXPECT_THAT(gate.Record(), ElementsAre("Product.Parameters", "Parameters.Count", "Product.UserProperties",
                                         "Parameters.CreateString(TYPE, LWT)"));
  EXPECT_EQ(ValueOf("TYPE"), "LWT");
}

TEST_F(Properties, AreMadeBesideOthers) {
  GivenProperty("OTHER", "x");
  gate.StartRecording();

  EXPECT_TRUE(utils.WriteStringProperty(component, "TYPE", "LWT"));

  EXPECT_THAT(gate.Record(), ElementsAre("Product.Parameters", "Parameters.Count", "Parameters.Item(TYPE)",
                                         "Product.UserProperties", "Parameters.CreateString(TYPE, LWT)"));
  EXPECT_EQ(ValueOf("TYPE"), "LWT");
  EXPECT_EQ(ValueOf("OTHER"), "x");
}

TEST_F(Properties, AreMadeWhenTheSearchForThemFails) {
  for (int n = 1; n <= 2; ++n) {
    const auto name = "TYPE" + std::to_string(n);
    gate.FailCall(n);

    EXPECT_TRUE(utils.WriteStringProperty(component, name, "LWT")) << n;

    EXPECT_TRUE(gate.HasFailed());
    gate.Reset();
    EXPECT_EQ(ValueOf(name), "LWT") << n;
  }
}

TEST_F(Properties, AreNotWrittenWhenTheSearchForOneThatIsThereFails) {
  GivenProperty("TYPE", "LWT");
  for (int n = 1; n <= 3; ++n) {
    gate.FailCall(n);

    EXPECT_FALSE(utils.WriteStringProperty(component, "TYPE", "3D")) << n;

    gate.Reset();
    EXPECT_EQ(ValueOf("TYPE"), "LWT") << n;
  }
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(Properties, CountAsWrittenWhenTheWritingOfOneThatIsThereFails) {
  GivenProperty("TYPE", "LWT");
  gate.FailOperation("Parameter.ValuateFromString");

  EXPECT_TRUE(utils.WriteStringProperty(component, "TYPE", "3D"));

  EXPECT_EQ(ValueOf("TYPE"), "LWT");
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(Properties, AreNotWrittenWhenTheyCannotBeMade) {
  for (const auto* operation : {"Product.UserProperties", "Parameters.CreateString"}) {
    gate.FailOperation(operation);

    EXPECT_FALSE(utils.WriteStringProperty(component, "TYPE", "LWT")) << operation;

    gate.Reset();
    EXPECT_EQ(component->Parameters()->Count(), 0) << operation;
  }
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(Properties, AreMadeWhereTheHostGivesNothing) {
  const auto product = WithoutTheParameterItCounts();
  const auto created = MakeRef<NiceMock<MockParameters>>();
  EXPECT_CALL(*created, CreateString("TYPE", "LWT"));
  EXPECT_CALL(static_cast<MockProduct&>(*product), UserProperties).WillOnce(Return(Ref<zorva::Parameters>(created)));

  EXPECT_TRUE(utils.WriteStringProperty(product, "TYPE", "LWT"));
}

TEST_F(Properties, OfNothingAreNotWritten) {
  EXPECT_FALSE(utils.WriteStringProperty(nullptr, "TYPE", "LWT"));
}

TEST_F(Properties, WithoutANameAreNotWritten) {
  EXPECT_FALSE(utils.WriteStringProperty(component, "", "LWT"));
}

TEST_F(Properties, MayHoldAnyText) {
  const std::string text = "ENT REP1 \xC3\xA9\xF0\x9F\x94\xA9";

  utils.WriteStringProperty(component, "TYPE", text);

  EXPECT_EQ(utils.ReadStringProperty(component, "TYPE"), text);
}

using WorkInProgress = Properties;

TEST_F(WorkInProgress, IsWhatBearsTheMark) {
  utils.WriteStringProperty(root, "WIP", "TRUE");

  EXPECT_TRUE(utils.TestWIP(root));
  EXPECT_FALSE(utils.TestWIP(component));
}

TEST_F(WorkInProgress, IsNothingThatBearsAnotherMark) {
  for (const auto* mark : {"", "True", "true", "FALSE", "TRUE "}) {
    utils.WriteStringProperty(root, "WIP", mark);
    EXPECT_FALSE(utils.TestWIP(root)) << mark;
  }
}

TEST_F(WorkInProgress, IsNothingThatCannotBeRead) {
  utils.WriteStringProperty(root, "WIP", "TRUE");
  gate.FailOperation("Parameter.ValueAsString");

  EXPECT_FALSE(utils.TestWIP(root));
  EXPECT_FALSE(utils.TestWIP(nullptr));
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(WorkInProgress, IsAnActiveDocumentWithTheMarkOnItsRoot) {
  utils.WriteStringProperty(root, "WIP", "TRUE");
  gate.StartRecording();

  EXPECT_TRUE(utils.IsAWIP());

  const auto& record = gate.Record();
  EXPECT_EQ(record.front(), "Application.ActiveDocument");
  EXPECT_EQ(record.back(), "Parameter.ValueAsString");
}

TEST_F(WorkInProgress, IsNoDocumentWithoutTheMark) {
  EXPECT_FALSE(utils.IsAWIP());
}

TEST_F(WorkInProgress, IsNotTheOneThatIsOpenButNotActive) {
  utils.WriteStringProperty(root, "WIP", "TRUE");
  host.Application()->Documents()->Add("ZVAProduct");

  EXPECT_FALSE(utils.IsAWIP());
}

TEST_F(WorkInProgress, IsNotThereWithoutADocument) {
  document->Close();

  EXPECT_FALSE(utils.IsAWIP());
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(WorkInProgress, IsNoDocumentOfAnotherKind) {
  TemporaryFolder folder;
  folder.Write("BOLT.stp", TinyStep("BOLT"));
  host.Application()->Documents()->Open(folder.Path("BOLT.stp"));

  EXPECT_FALSE(utils.IsAWIP());
}

TEST_F(WorkInProgress, IsNotThereWithoutTheCadHost) {
  Process().gZorva = nullptr;

  EXPECT_FALSE(utils.IsAWIP());
}

TEST_F(WorkInProgress, IsNotThereWhicheverStepFails) {
  utils.WriteStringProperty(root, "WIP", "TRUE");
  gate.StartRecording();
  utils.IsAWIP();
  const int calls = gate.Calls();
  for (int n = 1; n <= calls; ++n) {
    gate.FailCall(n);
    EXPECT_FALSE(utils.IsAWIP()) << n;
    gate.Reset();
  }

  EXPECT_THAT(Boxes(), IsEmpty());
}

}  // namespace
}  // namespace quintara::test

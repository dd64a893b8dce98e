#include "hosts/desk/split_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "base/failure.h"
#include "base/text.h"
#include "hosts/native/native_files.h"
#include "support/test_platform.h"
#include "support/tiny_files.h"

namespace quintara::test {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// What an import wrote: a car with a body and four wheels on two axles.
class TheFilesOfASplitAssembly : public testing::Test {
 protected:
  TheFilesOfASplitAssembly() {
    WriteProduct("CAR", {"AXLE.ZVAProduct", "BODY.stp", "AXLE.ZVAProduct"});
    WriteProduct("AXLE", {"WHEEL.stp", "WHEEL.stp"});
    WritePart("BODY");
    WritePart("WHEEL");
  }

  void WriteProduct(const std::string& partNumber, const std::vector<std::string>& components) const {
    std::string text = "<ZVAProduct partNumber=\"" + partNumber + "\">";
    int number = 0;
    for (const auto& file : components) {
      text += "<Component name=\"C." + std::to_string(++number) + "\" file=\"" + file +
              "\" position=\"1 0 0 0 1 0 0 0 1 0 0 0\"/>";
    }
    folder.Write(partNumber + ".ZVAProduct", text + "</ZVAProduct>");
  }
  void WritePart(const std::string& partNumber) const { folder.Write(partNumber + ".stp", TinyStep(partNumber)); }
  AssemblyPlan Plan(const std::string& name = {}) { return PlanOfFiles(folder.Path(name), files); }
  std::string Refusal(const std::string& name = {}) {
    try {
      Plan(name);
    } catch (const Failure& failure) {
      return failure.Description();
    }
    return {};
  }
  static std::string TextOf(const AssemblyPlan& plan) {
    std::string text;
    for (const auto& definition : plan.definitions) {
      text += definition.partNumber + (definition.isAssembly ? "[" : "");
      for (const auto& child : definition.children)
        text += " " + std::to_string(child.quantity) + " " + plan.definitions[child.definition].partNumber;
      text += definition.isAssembly ? " ] " : " ";
    }
    return text;
  }

  TemporaryFolder folder;
  NativeContents files{std::make_shared<Gate>()};
};

TEST_F(TheFilesOfASplitAssembly, AreATreeWithEachDefinitionOnceAndChildrenFirst) {
  EXPECT_EQ(TextOf(Plan("CAR.ZVAProduct")), "WHEEL AXLE[ 2 WHEEL ] BODY CAR[ 2 AXLE 1 BODY ] ");
}

TEST_F(TheFilesOfASplitAssembly, AreFoundByTheirFolder) {
  EXPECT_EQ(TextOf(Plan()), TextOf(Plan("CAR.ZVAProduct")));
}

TEST_F(TheFilesOfASplitAssembly, MayBeOnePart) {
  EXPECT_EQ(TextOf(Plan("BODY.stp")), "BODY ");
}

TEST_F(TheFilesOfASplitAssembly, BringTheLightFilesThatAreThere) {
  folder.Write("BODY.lwt", TinyLight("BODY"));
  folder.Write("WHEEL.stp.lwt", TinyLight("WHEEL"));

  const auto plan = Plan("CAR.ZVAProduct");

  EXPECT_THAT(plan.definitions[0].lightFile, HasSubstr("WHEEL.stp.lwt"));
  EXPECT_THAT(plan.definitions[1].lightFile, IsEmpty());
  EXPECT_THAT(plan.definitions[2].lightFile, HasSubstr("BODY.lwt"));
}

TEST_F(TheFilesOfASplitAssembly, MayStandInOtherFolders) {
  std::filesystem::create_directory(ToPath(folder.Path("parts")));
  folder.Write("parts/BODY.stp", TinyStep("BODY"));
  WriteProduct("CAR", {"parts/BODY.stp", "./parts/../parts/BODY.stp"});

  EXPECT_EQ(TextOf(Plan("CAR.ZVAProduct")), "BODY CAR[ 2 BODY ] ");
}

TEST_F(TheFilesOfASplitAssembly, MustAllBeThere) {
  std::filesystem::remove(ToPath(folder.Path("WHEEL.stp")));

  EXPECT_THAT(Refusal("CAR.ZVAProduct"), HasSubstr("WHEEL.stp' isn't there"));
  EXPECT_THAT(Refusal("absent.ZVAProduct"), HasSubstr("absent.ZVAProduct' isn't there"));
}

TEST_F(TheFilesOfASplitAssembly, MustNotHoldThemselves) {
  WriteProduct("AXLE", {"CAR.ZVAProduct"});

  EXPECT_THAT(Refusal("CAR.ZVAProduct"), HasSubstr("CAR.ZVAProduct' holds itself"));
  EXPECT_THAT(Refusal(), HasSubstr("held by no other"));
}

TEST_F(TheFilesOfASplitAssembly, MustHaveAPartNumberEach) {
  folder.Write("OTHER.stp", TinyStep("body"));
  WriteProduct("CAR", {"BODY.stp", "OTHER.stp"});

  EXPECT_THAT(Refusal("CAR.ZVAProduct"), AllOf(HasSubstr("OTHER.stp'"), HasSubstr("'body'")));
}

TEST_F(TheFilesOfASplitAssembly, AreNoStepAssembly) {
  folder.Write("BODY.stp", TinyStep("BODY") + "#9=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#1,#2,$);");

  EXPECT_THAT(Refusal("CAR.ZVAProduct"), HasSubstr("BODY.stp' is a STEP assembly"));
}

TEST_F(TheFilesOfASplitAssembly, HoldNoLightComponents) {
  folder.Write("BODY.lwt", TinyLight("BODY"));
  WriteProduct("CAR", {"BODY.lwt"});

  EXPECT_THAT(Refusal("CAR.ZVAProduct"), HasSubstr("BODY.lwt' is a light file"));
}

TEST_F(TheFilesOfASplitAssembly, AreReadableFilesOfTheCadHost) {
  folder.Write("notes.txt", "text");
  folder.Write("AXLE.ZVAProduct", "<broken");

  EXPECT_THAT(Refusal("notes.txt"), HasSubstr("neither a product document nor a part file"));
  EXPECT_THAT(Refusal("CAR.ZVAProduct"), HasSubstr("AXLE.ZVAProduct"));
}

TEST_F(TheFilesOfASplitAssembly, AreOneTreeInTheirFolder) {
  WriteProduct("BUS", {"WHEEL.stp"});

  EXPECT_THAT(Refusal(), AllOf(HasSubstr("BUS.ZVAProduct"), HasSubstr("CAR.ZVAProduct")));
}

TEST_F(TheFilesOfASplitAssembly, MayBeNestedDeeply) {
  constexpr int kDepth = 2000;
  WriteProduct("A0", {"BODY.stp"});
  for (int i = 1; i <= kDepth; ++i)
    WriteProduct("A" + std::to_string(i), {"A" + std::to_string(i - 1) + ".ZVAProduct"});

  EXPECT_EQ(Plan("A" + std::to_string(kDepth) + ".ZVAProduct").definitions.size(), kDepth + 2u);
}

}  // namespace
}  // namespace quintara::test

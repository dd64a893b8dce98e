#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "access/utils/Cls_Utils.h"
#include "hosts/cad/cad_host.h"
#include "hosts/native/native_files.h"

namespace quintara::test {
namespace {

using ::testing::ElementsAre;

class PartNumber : public ::testing::Test {
 protected:
  PartNumber() {
    AssemblyStructure structure{};
    structure.definitions.push_back({"BOLT", false, {}});
    structure.definitions.push_back({"ROOT", true, {{"BOLT.1", 0, kIdentityPosition}}});
    structure.root = 1;
    document = host.Build(structure);
    component = document->Product()->Products()->Item(1);
  }
  void GivenForm(ComponentForm form) {
    host.SetForm(component, form);
    gate->StartRecording();
  }

  std::shared_ptr<Gate> gate = std::make_shared<Gate>();
  CadHost host{{gate, std::make_shared<NativeContents>(gate), {}}};
  Ref<zorva::ProductDocument> document;
  Ref<zorva::Product> component;
  Cls_Utils utils;
};

TEST_F(PartNumber, IsReadOnceMoreAfterTheTestOfTheDesignForm) {
  GivenForm(ComponentForm::kDesign);

  EXPECT_TRUE(utils.IsInDesignMode(component));
  EXPECT_EQ(utils.GetThePartNumber(component), "BOLT");

  EXPECT_THAT(gate->Record(), ElementsAre("Product.PartNumber", "Product.PartNumber", "Product.PartNumber"));
}

TEST_F(PartNumber, OfAComponentWithoutDesignFormIsReadInModeZeroAndSetBack) {
  GivenForm(ComponentForm::kWithoutDesign);

  EXPECT_EQ(utils.GetThePartNumber(component), "BOLT");

  EXPECT_THAT(gate->Record(), ElementsAre("Product.PartNumber", "Product.SetWorkMode(0)", "Product.PartNumber",
                                          "Product.SetWorkMode(1)"));
  EXPECT_FALSE(utils.IsInDesignMode(component));
}

TEST_F(PartNumber, OfAComponentThatIsNotLoadedIsEmpty) {
  GivenForm(ComponentForm::kUnloaded);

  EXPECT_FALSE(utils.IsInDesignMode(component));
  EXPECT_EQ(utils.GetThePartNumber(component), "");

  EXPECT_THAT(gate->Record(), ElementsAre("Product.PartNumber", "Product.PartNumber", "Product.SetWorkMode(0)"));
}

TEST_F(PartNumber, OfNothingIsEmpty) {
  EXPECT_FALSE(utils.IsInDesignMode(nullptr));
  EXPECT_EQ(utils.GetThePartNumber(nullptr), "");
}

TEST_F(PartNumber, IsEmptyAndTheComponentStaysInModeZeroWhenTheReadingFails) {
  GivenForm(ComponentForm::kWithoutDesign);
  gate->FailCall(3);

  EXPECT_EQ(utils.GetThePartNumber(component), "");

  EXPECT_TRUE(utils.IsInDesignMode(component));
}

TEST_F(PartNumber, IsEmptyWhenTheComponentCannotBeSetBack) {
  GivenForm(ComponentForm::kWithoutDesign);
  gate->FailCall(4);

  EXPECT_EQ(utils.GetThePartNumber(component), "");

  EXPECT_TRUE(utils.IsInDesignMode(component));
}

TEST_F(PartNumber, OfAComponentInDesignFormIsReadThroughModeZeroWhenTheTestFails) {
  GivenForm(ComponentForm::kDesign);
  gate->FailCall(1);

  EXPECT_EQ(utils.GetThePartNumber(component), "BOLT");

  EXPECT_THAT(gate->Record(), ElementsAre("Product.PartNumber", "Product.SetWorkMode(0)", "Product.PartNumber",
                                          "Product.SetWorkMode(1)"));
  EXPECT_FALSE(utils.IsInDesignMode(component));
}

TEST_F(PartNumber, OfAComponentInDesignFormIsEmptyWhenTheReadingFails) {
  GivenForm(ComponentForm::kDesign);
  gate->FailCall(2);

  EXPECT_EQ(utils.GetThePartNumber(component), "");

  EXPECT_THAT(gate->Record(), ElementsAre("Product.PartNumber", "Product.PartNumber"));
}

TEST_F(PartNumber, IsEmptyWhenModeZeroIsRefused) {
  GivenForm(ComponentForm::kWithoutDesign);
  gate->FailCall(2);

  EXPECT_EQ(utils.GetThePartNumber(component), "");

  EXPECT_THAT(gate->Record(), ElementsAre("Product.PartNumber", "Product.SetWorkMode(0)"));
}

}  // namespace
}  // namespace quintara::test

#include "access/session/process.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "access/utils/Cls_Utils.h"
#include "support/test_platform.h"

namespace quintara::test {
namespace {

TEST(TheProcess, IsFreshAfterAReset) {
  auto& globals = Process();
  globals.gWorkDirectory = "work";
  globals.gMatrixType = MatrixType::XML;
  globals.gFontSize = 12;
  globals.gTreeViewAttributes = {"A", "B"};
  globals.OBJECT_ID = "OBJECT_ID";
  globals.texts.QD_WIP_CAPTION.text = "WIP";
  globals.gClsUtils = std::make_shared<Cls_Utils>();

  ResetProcess();

  EXPECT_EQ(globals.gWorkDirectory, "");
  EXPECT_EQ(globals.gMatrixType, MatrixType::Excel);
  EXPECT_EQ(globals.gFontSize, -1);
  EXPECT_TRUE(globals.gTreeViewAttributes.empty());
  EXPECT_EQ(globals.OBJECT_ID, "");
  EXPECT_EQ(globals.texts.QD_WIP_CAPTION.text, "");
  EXPECT_EQ(globals.gClsUtils, nullptr);
}

TEST(TheProcess, IsFreshBeforeAndAfterATestsPlatform) {
  Process().gLanguage = "DE";
  {
    TestPlatform platform;
    EXPECT_EQ(Process().gLanguage, "");
    Process().gLanguage = "FR";
  }

  EXPECT_EQ(Process().gLanguage, "");
}

TEST(TheProcess, MakesItsUtilsAtTheFirstUseAndKeepsThem) {
  ResetProcess();

  auto& utils = Utils();

  EXPECT_EQ(&utils, Process().gClsUtils.get());
  EXPECT_EQ(&Utils(), &utils);
  ResetProcess();
}

TEST(TheProcess, MakesItsUtilsAnewOnceTheyWereDropped) {
  ResetProcess();
  Utils();
  Process().gClsUtils.reset();

  auto& utils = Utils();

  EXPECT_EQ(&utils, Process().gClsUtils.get());
  ResetProcess();
}

TEST(TheTexts, AreReadCaptionsFirst) {
  Texts texts;
  std::vector<std::string> keys;
  ForEachText(texts, [&](std::string& text, const TextKey& key) {
    text = key.key;
    keys.emplace_back(key.key);
  });

  EXPECT_EQ(keys.front(), "QD.WIP_CAPTION");
  EXPECT_EQ(keys[28], "QD.WAITING_LBL");
  EXPECT_EQ(keys[29], "COMMON.UNEXPECTED_ERROR");
  EXPECT_EQ(keys.back(), "QD.UTILS.UTILS_ERROR_IN_ZORVA_SCRIPT");
  EXPECT_EQ(texts.QD_WAITING_LBL.text, "QD.WAITING_LBL");
}

}  // namespace
}  // namespace quintara::test

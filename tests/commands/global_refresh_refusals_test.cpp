#include "commands/refresh_bench.h"
#include "hosts/vault/database.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// What keeps it from starting.

class RefusedRefresh : public RefreshTest {
 protected:
  void ExpectUntouched() {
    EXPECT_THAT(Calls("VdConfig."), IsEmpty());
    EXPECT_EQ(Settings(), OldValues());
    EXPECT_THAT(Calls("Application.DisplayFileAlerts"), IsEmpty());
    EXPECT_THAT(Calls("VdSession.UserLogoff"), IsEmpty());
    EXPECT_THAT(Calls("HIXEngine.CheckOutDocument"), IsEmpty());
    EXPECT_FALSE(IsWaiting());
  }
  void Bring(const Ref<VdObject>& object, int state) {
    if (state == 2) CheckOut(object);
    if (state >= 3) Release(object);
    if (state == 4) Util()->Obsolete(object, nullptr, false);
    ASSERT_EQ(StateOf(object), state);
  }
};

TEST_F(RefusedRefresh, OfTwoObjects) {
  EXPECT_THAT(Refresh(SelectionOf({Of("CAR"), Of("FRAME")})),
              ElementsAre(TextBox("QD.GLOBALREFRESH.SELECT_ONE_OBJECT", kInformationModal)));

  ExpectUntouched();
  EXPECT_EQ(desk.Made("frmWaiting"), 0);
  EXPECT_EQ(DisplaysRefreshed(), 1U);
}

TEST_F(RefusedRefresh, OfNothing) {
  EXPECT_THAT(Refresh(SelectionOf({})), ElementsAre(TextBox("QD.GLOBALREFRESH.SELECT_ONE_OBJECT", kInformationModal)));

  ExpectUntouched();
  EXPECT_EQ(DisplaysRefreshed(), 1U);
}

TEST_F(RefusedRefresh, TellsWhyBeforeItRefreshesTheDisplay) {
  gate->FailOperation("Application.RefreshDisplay=");

  EXPECT_THAT(Refresh(SelectionOf({})),
              ElementsAre(TextBox("QD.GLOBALREFRESH.SELECT_ONE_OBJECT", kInformationModal), RunReport(kInjected)));

  ExpectUntouched();
  EXPECT_EQ(DisplaysRefreshed(), 2U);
}

TEST_F(RefusedRefresh, OfWhatIsNoSelectionIsReported) {
  EXPECT_THAT(Refresh(nullptr), ElementsAre(RunReport("Object variable or With block variable not set")));

  ExpectUntouched();
  EXPECT_EQ(DisplaysRefreshed(), 1U);
}

TEST_F(RefusedRefresh, OfAProductInWork) {
  Bring(Of("CAR"), 2);

  EXPECT_THAT(Refresh(),
              ElementsAre(TextBox("QD.APPLICATION.MUST_BE_CHECKIN_OR_RELEASED", kInformationModal, {"CAR"})));

  ExpectUntouched();
  EXPECT_EQ(desk.Made("frmWaiting"), 0);
}

TEST_F(RefusedRefresh, OfAProductInWorkDoesNotRefreshTheDisplay) {
  Bring(Of("CAR"), 2);

  Refresh();

  EXPECT_EQ(DisplaysRefreshed(), 0U);
  EXPECT_EQ(yields, 0);
}

TEST_F(RefusedRefresh, OfANewAndOfAnObsoleteProduct) {
  const auto fresh = AddProduct("FRESH");
  EXPECT_THAT(Refresh(SelectionOf({fresh})),
              ElementsAre(TextBox("QD.APPLICATION.MUST_BE_CHECKIN_OR_RELEASED", kInformationModal, {"FRESH"})));
  Process().texts.QD_APPLICATION_MUST_BE_CHECKIN_OR_RELEASED.text = "obsolete: REP1";
  Bring(Of("CAR"), 4);
  EXPECT_THAT(Refresh(), ElementsAre(Box{"obsolete: CAR", kInformationModal, "Quintara"}));

  ExpectUntouched();
}

TEST_F(RefusedRefresh, ReadsTheStateAnew) {
  const auto selection = SelectionOf({Of("CAR")});
  const auto another = OpenAnother(Options());
  const auto session = another->Application()->Engine()->Sessions(0);
  const auto other = session->ObjectStore()->ObjectById(Of("CAR")->ClassId(), Of("CAR")->ObjectId());
  session->GetService("VdUtil.VdSessionUtil")->AsVdSessionUtil()->CheckOut(other, nullptr, false);

  EXPECT_THAT(Refresh(selection),
              ElementsAre(TextBox("QD.APPLICATION.MUST_BE_CHECKIN_OR_RELEASED", kInformationModal, {"CAR"})));
}

TEST_F(RefusedRefresh, OfAChildInWork) {
  for (const auto state : {2, 4}) {
    SCOPED_TRACE(state);
    const auto child = state == 2 ? Of("FRAME") : Of("NUT");
    Bring(child, state);

    EXPECT_THAT(Refresh(),
                ElementsAre(TextBox("QD.GLOBALREFRESH.CHILDREN_MUST_BE_IN_CHECKIN_OR_RELEASED", kInformationModal)));

    ExpectUntouched();
    EXPECT_EQ(desk.Made("frmWaiting"), 0);
    EXPECT_EQ(DisplaysRefreshed(), 1U);
    if (state == 2) CheckIn(child);
  }
}

TEST_F(RefusedRefresh, OfAChildInWorkFurtherDown) {
  Bring(Of("BOLT"), 4);

  EXPECT_THAT(Refresh(),
              ElementsAre(TextBox("QD.GLOBALREFRESH.CHILDREN_MUST_BE_IN_CHECKIN_OR_RELEASED", kInformationModal)));
}

// What stands in the structure counts, not what will.
TEST_F(RefusedRefresh, IsNotThatOfAChildWhoseNextRevisionIsInWork) {
  vault->NewRevision(Of("NUT"));

  EXPECT_THAT(Refresh(), ElementsAre(Successful()));

  EXPECT_THAT(Holds("CAR"), ElementsAre("FRAME A", "NUT B"));
}

TEST_F(RefusedRefresh, WithoutAStartIsSilentButForTheStartItself) {
  engine->Disconnect();

  EXPECT_THAT(Refresh(), ElementsAre(TextBox("QD.INIT.ZORVA_INTEGRATION_NOT_CONNECTED", kCritical)));

  ExpectUntouched();
  EXPECT_EQ(DisplaysRefreshed(), 0U);
  EXPECT_EQ(yields, 0);
}

TEST_F(RefusedRefresh, OfAProductWhoseFileHasNoPlainNameIsReported) {
  for (const auto* name : {"..", "../CAR.ZVAProduct", "..\\CAR.ZVAProduct", "C:CAR.ZVAProduct"}) {
    vault::Database(vault->Folder().connection)
        .Execute("UPDATE \"ZORVA_PRODUCT\" SET \"CAD_REF_FILE_NAME\" = ?", {std::string(name)});
    Process().texts.COMMON_UNEXPECTED_ERROR.text = "REP1: REP2";

    EXPECT_THAT(Refresh(),
                ElementsAre(Box{"Cls_GlobalRefreshVD.Run: \"" + std::string(name) + "\" can't be the name of a file",
                                kCritical, "Quintara"}));

    ExpectUntouched();
    EXPECT_EQ(desk.Made("frmWaiting"), 0);
    EXPECT_EQ(DisplaysRefreshed(), 1U);
  }
}

TEST_F(RefusedRefresh, WithoutAUserInterfaceIsReported) {
  platform.Native().SetViewMaker({});

  EXPECT_THAT(Refresh(), ElementsAre(RunReport("No user interface to show \"frmWaiting\"")));

  ExpectUntouched();
  EXPECT_EQ(yields, 1);
  EXPECT_EQ(DisplaysRefreshed(), 1U);
}

TEST_F(RefusedRefresh, ClosesADialogThatCannotBeShown) {
  gate->FailOperation("View.ShowOnTop");

  EXPECT_THAT(Refresh(), ElementsAre(RunReport(kInjected)));

  ExpectUntouched();
  EXPECT_EQ(desk.Made("frmWaiting"), 1);
  EXPECT_EQ(yields, 1);
  EXPECT_EQ(DisplaysRefreshed(), 1U);
}

TEST_F(RefusedRefresh, WithoutALinkedVersionTouchesNoSetting) {
  gate->FailOperation("VdObject.LinkedVersion");

  EXPECT_THAT(Refresh(), ElementsAre(RunReport(kInjected)));

  ExpectUntouched();
  EXPECT_EQ(desk.Made("frmWaiting"), 1);
}

}  // namespace
}  // namespace quintara::test

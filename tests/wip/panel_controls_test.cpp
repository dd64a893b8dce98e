#include <algorithm>

#include "wip/panel_bench.h"

namespace quintara::test {
namespace {

class PanelControls : public PanelTest {
 protected:
  PanelControls() { GivenPanel(MakeRef<PaperObject>(PaperOf(1, "PLANT", std::vector<Paper>{}))); }

  int TopOf(const std::string& control) { return desk.Last("MainPanel").Of(control).box.top; }
};

TEST_F(PanelControls, HasTheControlsInTheOrderInWhichTheyAreMade) {
  panel->Load();

  std::vector<std::string> names;
  for (const auto& control : desk.Last("MainPanel").MadeFrom().controls) names.push_back(control.name);
  EXPECT_THAT(
      names, testing::ElementsAre("Timer1", "FrameInstances", "GetAllInstances(0)", "GetAllInstances(1)", "FrameLegend",
                                  "lblNoSelection", "lblLightRepresentation", "lblDocument", "img_none", "img_3d",
                                  "img_lwt", "Image2", "cmdFind", "cmdCollapse", "cmdExpand", "cmdShow", "lblWIPName",
                                  "txtWIPName", "cmdCancel", "cmdCreateWIP", "FrameReview", "Tree1"));
}

TEST_F(PanelControls, HasAKeyForAllThatIsPressed) {
  panel->Load();

  std::vector<std::pair<std::string, std::string>> keys;
  for (const auto& control : desk.Last("MainPanel").MadeFrom().controls) {
    if (!control.shortcut.empty()) keys.emplace_back(control.shortcut, control.name);
  }
  EXPECT_THAT(keys, testing::ElementsAre(testing::Pair("a", "GetAllInstances(0)"),
                                         testing::Pair("a", "GetAllInstances(1)"), testing::Pair("/", "cmdFind"),
                                         testing::Pair("c", "cmdCollapse"), testing::Pair("e", "cmdExpand"),
                                         testing::Pair("i", "cmdShow"), testing::Pair("n", "txtWIPName"),
                                         testing::Pair("Esc", "cmdCancel"), testing::Pair("Enter", "cmdCreateWIP")));
}

TEST_F(PanelControls, ExplainsTheStatesFromTopToBottom) {
  panel->Load();

  const auto& view = desk.Last("MainPanel");
  const std::vector<std::pair<std::string, std::string>> lines = {{"lblNoSelection", "img_none"},
                                                                  {"lblNoSelection", "Image2"},
                                                                  {"lblLightRepresentation", "img_lwt"},
                                                                  {"lblDocument", "img_3d"}};
  for (const auto& [label, sample] : lines) EXPECT_EQ(TopOf(label), TopOf(sample)) << sample;
  EXPECT_LT(TopOf("lblNoSelection"), TopOf("lblLightRepresentation"));
  EXPECT_LT(TopOf("lblLightRepresentation"), TopOf("lblDocument"));
  EXPECT_EQ(view.Of("img_lwt").made.picture, "part lwt");
  EXPECT_EQ(view.Of("img_3d").made.picture, "part doc");
  EXPECT_THAT(view.MadeFrom().pictures, testing::UnorderedElementsAre("part none", "part lwt", "part doc",
                                                                      "product none", "product lwt", "product doc"));
}

TEST_F(PanelControls, HasOneInstanceOfEachChosenAtFirst) {
  panel->Load();

  const auto& view = desk.Last("MainPanel");
  EXPECT_FALSE(view.Of("GetAllInstances(0)").isChecked);
  EXPECT_TRUE(view.Of("GetAllInstances(1)").isChecked);
}

TEST_F(PanelControls, TakesEachCaptionFromTheCatalogue) {
  panel->Load();

  const auto& view = desk.Last("MainPanel");
  const std::vector<std::pair<std::string, std::string>> captions = {
      {"", "QD.WIP_CAPTION"},
      {"FrameInstances", "QD.WIP_FRAMEINSTANCES_CAPTION"},
      {"GetAllInstances(0)", "QD.WIP_FRAMEINSTANCES_RADIOBUTTON_YES"},
      {"GetAllInstances(1)", "QD.WIP_FRAMEINSTANCES_RADIOBUTTON_NO"},
      {"FrameLegend", "QD.WIP_FRAMELEGEND_CAPTION"},
      {"lblNoSelection", "QD.WIP_FRAMELEGEND_LBLNOSELECTION"},
      {"lblLightRepresentation", "QD.WIP_FRAMELEGEND_LBLLIGHTREPRESENTATION"},
      {"lblDocument", "QD.WIP_FRAMELEGEND_LBLDOCUMENT"},
      {"cmdFind", "QD.WIP_CMDFIND"},
      {"cmdCollapse", "QD.WIP_CMDCOLLAPSE"},
      {"cmdExpand", "QD.WIP_CMDEXPAND"},
      {"cmdShow", "QD.WIP_CMDSHOW"},
      {"lblWIPName", "QD.WIP_LBLWIPNAME"},
      {"cmdCancel", "QD.WIP_CMDCANCEL"},
      {"cmdCreateWIP", "QD.WIP_CMDCREATEWIP"},
      {"FrameReview", "QD.WIP_FRAMEREVIEW_CAPTION"}};
  for (const auto& [control, key] : captions) EXPECT_EQ(view.Of(control).text, "EN " + key);
  EXPECT_EQ(view.Of("txtWIPName").text, "");
}

TEST_F(PanelControls, IsShownInTheFontOfTheSettings) {
  Process().gFontName = "Verdana";
  Process().gFontSize = 11;

  panel->Load();

  const auto& view = desk.Last("MainPanel");
  EXPECT_EQ(view.Of("").font.name, "Verdana");
  EXPECT_EQ(view.Of("Tree1").font.size, 11);
  EXPECT_EQ(view.Of("cmdShow").font.name, "Verdana");
}

// It is arranged; then it gets its tree, looking at its geometry once more between the root and what is below it; then
// its texts and its font.
TEST_F(PanelControls, IsLoadedInThisOrder) {
  Process().gFontName = "Verdana";
  GivenPanel(AddProduct("PLANT", {AddPart("BOLT")}));
  gate->StartRecording();

  panel->Load();

  gate->StopRecording();
  const std::vector<std::string> awaited = {"View.SetBox(",          "View.SetTree(",
                                            "VdObject.ObjectId",     "VdClass.Attributes",
                                            "View.BoxOf(MainPanel)", "VdObject.Children",
                                            "VdObject.Retrieve",     "View.TreeChanged(",
                                            "View.SetText(",         "View.SetFont(MainPanel, cmdShow"};
  std::vector<std::string> found;
  for (const auto& call : gate->Record()) {
    if (found.size() < awaited.size() && call.starts_with(awaited[found.size()]))
      found.push_back(awaited[found.size()]);
  }
  EXPECT_EQ(found, awaited);
  const auto last = [&](const std::string& name) {
    const auto is = [&](const auto& call) { return call.starts_with(name); };
    return gate->Record().rend() - std::find_if(gate->Record().rbegin(), gate->Record().rend(), is);
  };
  EXPECT_LT(last("View.SetBox("), last("View.SetTree("));
  EXPECT_LT(last("Vd"), last("View.TreeChanged("));
  EXPECT_LT(last("View.SetText("), last("View.SetFont("));
}

}  // namespace
}  // namespace quintara::test

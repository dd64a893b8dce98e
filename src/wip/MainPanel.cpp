#include "wip/MainPanel.h"

#include <memory>

#include "access/session/process.h"
#include "wip/frmFind.h"
#include "wip/node_tags.h"

namespace quintara {

MainPanel::MainPanel() : nodes_(node_tag::All(), "xxx") {}

// The file name is asked for as soon as the object is there, and nothing is made of it.
void MainPanel::SetData(const Ref<veldora::VdObject>& object) {
  RootObject = object;
  RootObject->Record()->ValueAsString(Process().CAD_REF_FILE_NAME);
}

void MainPanel::OnLoad() {
  ArrangeControls();
  TheView().SetTree("Tree1", &nodes_);
  AddRoot();
  StoreGeometry();
  BuildTree(RootObject, 1);
  TheView().TreeChanged("Tree1");
  ApplyCaptions();
  ApplyFonts();
}

void MainPanel::ApplyCaptions() {
  auto& view = TheView();
  const auto& texts = Process().texts;
  view.SetText("", texts.QD_WIP_CAPTION.text);
  view.SetText("FrameInstances", texts.QD_WIP_FRAMEINSTANCES_CAPTION.text);
  view.SetText("GetAllInstances(0)", texts.QD_WIP_FRAMEINSTANCES_RADIOBUTTON_YES.text);
  view.SetText("GetAllInstances(1)", texts.QD_WIP_FRAMEINSTANCES_RADIOBUTTON_NO.text);
  view.SetText("FrameLegend", texts.QD_WIP_FRAMELEGEND_CAPTION.text);
  view.SetText("lblNoSelection", texts.QD_WIP_FRAMELEGEND_LBLNOSELECTION.text);
  view.SetText("lblLightRepresentation", texts.QD_WIP_FRAMELEGEND_LBLLIGHTREPRESENTATION.text);
  view.SetText("lblDocument", texts.QD_WIP_FRAMELEGEND_LBLDOCUMENT.text);
  view.SetText("cmdFind", texts.QD_WIP_CMDFIND.text);
  view.SetText("cmdCollapse", texts.QD_WIP_CMDCOLLAPSE.text);
  view.SetText("cmdExpand", texts.QD_WIP_CMDEXPAND.text);
  view.SetText("cmdShow", texts.QD_WIP_CMDSHOW.text);
  view.SetText("lblWIPName", texts.QD_WIP_LBLWIPNAME.text);
  view.SetText("cmdCancel", texts.QD_WIP_CMDCANCEL.text);
  view.SetText("cmdCreateWIP", texts.QD_WIP_CMDCREATEWIP.text);
  view.SetText("FrameReview", texts.QD_WIP_FRAMEREVIEW_CAPTION.text);
}

void MainPanel::OnClick(const std::string& control) {
  if (control == "cmdCreateWIP") {
    cmdCreateWIP_Click();
  } else if (control == "cmdCancel") {
    cmdCancel_Click();
  } else if (control == "cmdFind") {
    cmdFind_Click();
  } else if (control == "cmdExpand") {
    ExpandAll(true);
  } else if (control == "cmdCollapse") {
    ExpandAll(false);
  } else if (control == "cmdShow") {
    cmdShow_Click();
  }
}

void MainPanel::cmdCancel_Click() {
  Process().gWIPCancelled = true;
  Unload();
}

void MainPanel::cmdFind_Click() {
  auto& globals = Process();
  if (globals.FoundNode != 0) globals.PreviousFoundNode = globals.FoundNode;
  std::make_shared<frmFind>(nodes_, TheView(), "Tree1")->ShowModal();
}

}  // namespace quintara

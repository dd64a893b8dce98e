#include "wip/panel_bench.h"

#include <utility>

namespace quintara::test {

std::vector<std::string> LinesOf(const TreeModel& nodes) {
  std::vector<std::string> lines;
  for (int node = 1; node <= nodes.Count(); ++node) {
    std::string line;
    for (int at = nodes.Parent(node); at != 0; at = nodes.Parent(at)) line += "  ";
    line += nodes.Text(node) + ": " + nodes.Tag(node);
    if (nodes.Picture(node) != nodes.Tag(node)) line += " with the picture " + nodes.Picture(node);
    lines.push_back(line);
  }
  return lines;
}

PanelBench::PanelBench() {
  RunVault();
  RunZorva();
  EXPECT_TRUE(Init());
}

MainPanel& PanelBench::GivenPanel(const Ref<veldora::VdObject>& object) {
  panel = std::make_shared<MainPanel>();
  panel->SetData(object);
  return *panel;
}

void PanelBench::ShowPanel(const UserScript& script) {
  desk.WhenShown("MainPanel", [&](ScriptedView& view) {
    if (script) script(view);
    view.Press("cmdCancel");
  });
  panel->ShowModal();
}

std::vector<std::string> PanelBench::TreeOf(const Ref<veldora::VdObject>& object) {
  GivenPanel(object).Load();
  auto lines = LinesOf(Nodes());
  panel->Unload();
  return lines;
}

void PanelBench::RunOn(const std::vector<Ref<veldora::VdObject>>& selected) {
  const auto objects = Store()->NewObjects();
  for (const auto& object : selected) objects->Add(object);
  Cls_Application().Run(objects->Records());
}

std::vector<Box> PanelBench::NewBoxes() {
  const auto& all = platform.Boxes();
  std::vector<Box> boxes(all.begin() + boxesSeen_, all.end());
  boxesSeen_ = static_cast<std::ptrdiff_t>(all.size());
  return boxes;
}

Paper PanelBench::PaperOf(std::int32_t objectId, const std::string& partNumber, const std::string& className) {
  Paper paper;
  paper.objectId = objectId;
  paper.info = Session()->MetaInfo()->ClassByName(className);
  paper.classId = paper.info->ClassId();
  paper.values = {{"NM_CN_PART_NUMBER", partNumber}, {"REVISION", "A"}, {"CAD_REF_FILE_NAME", ""}};
  paper.calls = paperCalls;
  return paper;
}

Paper PanelBench::PaperOf(std::int32_t objectId, const std::string& partNumber, const std::vector<Paper>& children) {
  auto paper = PaperOf(objectId, partNumber, "ZORVA Product");
  paper.children = [children] { return ListOf(children); };
  return paper;
}

}  // namespace quintara::test

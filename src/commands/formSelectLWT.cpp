#include "commands/formSelectLWT.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "access/session/process.h"
#include "access/session/the_platform.h"
#include "access/utils/messages.h"
#include "base/counter16.h"
#include "base/failure.h"
#include "base/text.h"
#include "commands/light_component.h"

namespace quintara {
namespace {

using veldora::VdObject;
using zorva::Product;

constexpr auto kTreeName = "Tree1";
constexpr auto kProductDocument = "product doc";
constexpr auto kUnticked = "no";
constexpr auto kTicked = "yes";
constexpr int kRoot = 1;

std::vector<std::string> Pictures() {
  return {"part doc",    "part lwt no", "part lwt yes",    "product lwt no",
          "product doc", "product lwt", "product lwt yes", "part lwt"};
}

// The lists are searched as they stand, so that a class whose name is a piece of another one's is in that one's list.
std::string KindOf(const Ref<VdObject>& object) {
  const auto& globals = Process();
  const auto name = Capitals(globals.gSession->MetaInfo()->ClassById(object->ClassId())->ClassName());
  if (Capitals(globals.gClassProducts).find(name) != std::string::npos) return "product";
  if (Capitals(globals.gClassParts).find(name) != std::string::npos) return "part";
  return {};
}

bool Contains(const std::string& text, const std::string& word) {
  return text.find(word) != std::string::npos;
}

std::string WithEvery(std::string text, const std::string& word, const std::string& other) {
  for (auto at = text.find(word); at != std::string::npos; at = text.find(word, at + other.size())) {
    text.replace(at, word.size(), other);
  }
  return text;
}

}  // namespace

formSelectLWT::formSelectLWT(Ref<Product> root) : root_(std::move(root)), nodes_(Pictures()) {}

dialog::Layout formSelectLWT::MakeLayout() const {
  using enum dialog::Kind;
  dialog::Layout layout;
  layout.name = "formSelectLWT";
  layout.box = {0, 0, 6420, 7680};
  layout.pictures = Pictures();
  layout.controls = {
      {.name = "FrameReview", .kind = kFrame, .box = {120, 120, 5940, 6330}},
      {.name = kTreeName, .kind = kTree, .box = {250, 360, 5440, 5730}, .container = "FrameReview", .clicksTick = true},
      {.name = "cmdOK", .kind = kButton, .box = {2450, 6705, 1680, 375}, .shortcut = "Enter"},
      {.name = "cmdCancel", .kind = kButton, .box = {4380, 6705, 1680, 375}, .shortcut = "Esc"},
  };
  return layout;
}

void formSelectLWT::OnLoad() {
  nodes_.Clear();
  TheView().SetTree(kTreeName, &nodes_);
  AddRoot();
  LoadTreeBefore(root_);
  TheView().TreeChanged(kTreeName);
  ApplyCaptions();
  ApplyFonts();
}

void formSelectLWT::AddRoot() {
  auto& globals = Process();
  nodes_.Add(0, root_->Name(), root_->PartNumber());
  nodes_.SetExpanded(kRoot, true);
  SetState(kRoot, kProductDocument);
  globals.ReplaceCandidateCount = 1;
  globals.ReplaceCandidates.assign(1, {root_->Name(), root_});
}

// The text names a form of another time, and stays so.
void formSelectLWT::LoadTreeBefore(const Ref<Product>& root) {
  const auto report = [](const ErrorState& failure) {
    ThePlatform().ShowBox("Error in frmViewChanges::LoadTreeBefore : " + failure.description, box::kCritical,
                          "Quintara");
  };
  OrReport(false, report, [&] {
    const auto children = root->Products();
    for (const int i : Counting(1, children->Count())) AddChild(children->Item(i), root);
    return true;
  });
}

// A picture that isn't there fails behind the node, which stays then.
void formSelectLWT::AddChild(const Ref<Product>& child, const Ref<Product>& root) {
  auto& globals = Process();
  const auto& session = globals.gSession;
  const bool isLight = IsLight(child);
  const auto object =
      isLight ? Utils().RetrieveVDObject_FromLWT(session, child) : Utils().RetrieveVDObject(session, child, true);
  auto state = KindOf(object);
  const auto fullName = Utils().BuildFullName(child, root);
  const auto rootName = Utils().BuildFullName(root, root);
  if (!isLight) return;

  state += " lwt";
  if (rootName != nodes_.Key(kRoot)) throw Failure(failure::kElementNotFound);
  const int node = nodes_.Add(kRoot, fullName, child->Name());
  std::string revision;
  if (HasNewerRevision(child, revision)) {
    nodes_.Add(node, fullName + "|" + revision, "-->Revision: " + revision);
    state += std::string(" ") + kUnticked;
  }
  SetState(node, state);
  ++globals.ReplaceCandidateCount;
  globals.ReplaceCandidates.push_back({fullName, child});
}

bool formSelectLWT::HasNewerRevision(const Ref<Product>& child, std::string& revision) {
  const auto latest = LatestRevisionOf(Utils().RetrieveVDObject_FromLWT(Process().gSession, child));
  if (latest.isNew) revision = latest.revision;
  return latest.isNew;
}

void formSelectLWT::SetState(int node, const std::string& state) {
  nodes_.SetPicture(node, state);
  nodes_.SetTag(node, state);
}

void formSelectLWT::ApplyCaptions() {
  auto& view = TheView();
  const auto& texts = Process().texts;
  view.SetText("", texts.QD_SELECTLWT_CAPTION.text);
  view.SetText("FrameReview", texts.QD_SELECTLWT_FRAMEREVIEW_CAPTION.text);
  view.SetText("cmdOK", texts.QD_SELECTLWT_CMDREPLACE.text);
  view.SetText("cmdCancel", texts.QD_SELECTLWT_CMDCANCEL.text);
}

void formSelectLWT::OnNodeClick(const std::string& control, int node) {
  if (control == kTreeName) Tree1_NodeClick(node);
}

void formSelectLWT::Tree1_NodeClick(int node) {
  const auto tag = nodes_.Tag(node);
  if (Contains(tag, kUnticked)) {
    SetState(node, WithEvery(tag, kUnticked, kTicked));
  } else if (Contains(tag, kTicked)) {
    SetState(node, WithEvery(tag, kTicked, kUnticked));
  }
  TheView().TreeChanged(kTreeName);
}

void formSelectLWT::OnClick(const std::string& control) {
  if (control == "cmdOK") {
    cmdOK_Click();
  } else if (control == "cmdCancel") {
    cmdCancel_Click();
  }
}

void formSelectLWT::cmdOK_Click() {
  MarkChosenComponents();
  Unload();
}

void formSelectLWT::cmdCancel_Click() {
  Unload();
}

void formSelectLWT::MarkChosenComponents() {
  auto& candidates = Process().ReplaceCandidates;
  for (const int node : Counting(1, nodes_.Count())) {
    if (!Contains(nodes_.Tag(node), kTicked)) continue;
    const auto found = std::ranges::find(candidates, nodes_.Key(node), &ReplaceCandidate::Key);
    if (found != candidates.end()) found->Replace = true;
  }
}

}  // namespace quintara

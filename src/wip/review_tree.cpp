#include <utility>

#include "access/session/process.h"
#include "base/arrays.h"
#include "base/attempt.h"
#include "base/counter16.h"
#include "base/text.h"
#include "base/variant.h"
#include "wip/MainPanel.h"
#include "wip/node_tags.h"

namespace quintara {
namespace {

// The lists are searched as they stand, so that a class whose name is a piece of another one's is in that one's list.
const char* FirstTagOf(const std::string& className) {
  const auto& globals = Process();
  const auto name = Capitals(className);
  const auto isIn = [&](const std::string& classes) { return Capitals(classes).rfind(name) != std::string::npos; };
  if (isIn(globals.gClassProducts)) return node_tag::kProductNone;
  if (isIn(globals.gClassParts)) return node_tag::kPartNone;
  return nullptr;
}

std::string AttributeText(const Ref<veldora::VdObject>& object, const std::string& attribute) {
  if (!object->ClassInfo()->Attributes()->Find(attribute)) return "<EMPTY>";
  return object->Record()->ValueAsString(attribute);
}

// Nothing for a leaf, and where the vault can't tell.
Ref<veldora::VdObjects> ChildrenOf(const Ref<veldora::VdObject>& object) {
  return OrElse(Ref<veldora::VdObjects>(), [&] { return object->Children(nullptr); });
}

}  // namespace

struct MainPanel::Level {
  Level(Ref<veldora::VdObjects> objects, int parent)
      : children(std::move(objects)), node(parent), last(children->Count() - 1) {}

  Ref<veldora::VdObjects> children;
  int node;
  Counter16 last;  ///< the last child's index
  int next = 0;    ///< that of the child to add next
};

std::string MainPanel::GetNodeKey(const Ref<veldora::VdObject>& object) {
  auto key = std::to_string(object->ObjectId()) + "_";
  return key += std::to_string(object->ClassId());
}

// The last piece of the key alone tells the object.
void MainPanel::SplitNodeKey(int node, std::string& objectId, std::string& classId) const {
  if (node == 0) throw Failure(failure::kObjectNotSet);
  const auto pieces = Split(nodes_.Piece(node), '_');
  objectId = ElementAt(pieces, 0);
  classId = ElementAt(pieces, 1);
}

MainPanel::Identity MainPanel::IdentityOf(int node) const {
  std::string objectId;
  std::string classId;
  SplitNodeKey(node, objectId, classId);
  return {Variant(classId).ToInteger16(), Variant(objectId).ToInteger32()};
}

std::string MainPanel::GetNodeText(const Ref<veldora::VdObject>& object) {
  if (!object) return "<OBJECT NOT FOUND>";
  const auto& globals = Process();
  if (globals.gTreeView.empty()) return {};
  std::string text;
  for (const auto& attribute : globals.gTreeViewAttributes) {
    if (!text.empty()) text += globals.gTreeViewSeparator;
    text += AttributeText(object, attribute);
  }
  return text;
}

// The root is a product that isn't loaded, whatever its class is.
void MainPanel::AddRoot() {
  nodes_.Clear();
  const auto key = GetNodeKey(RootObject);
  const int root = nodes_.Add(0, key, GetNodeText(RootObject));
  nodes_.SetExpanded(root, true);
  SetState(root, node_tag::kProductNone);
}

void MainPanel::BuildTree(const Ref<veldora::VdObject>& object, int node) {
  std::vector<Level> levels;
  const auto goBelow = [&](const Ref<veldora::VdObject>& parent, int parentNode) {
    if (auto children = ChildrenOf(parent)) levels.emplace_back(std::move(children), parentNode);
  };
  goBelow(object, node);
  while (!levels.empty()) {
    auto& level = levels.back();
    if (level.next > level.last) {
      levels.pop_back();
      continue;
    }
    const auto child = level.children->Item(level.next++)->Clone();
    child->Retrieve();
    if (const int added = AddChild(child, level.node); added != 0) goBelow(child, added);
  }
}

// 0 for an object of a class in neither list: it isn't shown, nor what is below it.
int MainPanel::AddChild(const Ref<veldora::VdObject>& child, int parent) {
  const auto key = GetNodeKey(child);
  const auto text = GetNodeText(child);
  const auto* tag = FirstTagOf(Process().gSession->MetaInfo()->ClassById(child->ClassId())->ClassName());
  if (tag == nullptr) return 0;
  const int node = nodes_.Add(parent, key, text);
  nodes_.SetExpanded(node, true);
  SetState(node, tag);
  return node;
}

void MainPanel::ExpandAll(bool expanded) {
  for (const int node : Counting(1, nodes_.Count())) nodes_.SetExpanded(node, expanded);
  nodes_.SetExpanded(1, true);
  TheView().TreeChanged("Tree1");
}

void MainPanel::cmdShow_Click() {
  const auto id = IdentityOf(TheView().SelectedNode("Tree1"));
  const auto& session = Process().gSession;
  const auto object = session->ObjectStore()->ObjectById(id.classId, id.objectId);
  object->Retrieve();
  ShowObjectInformation(session, object);
}

}  // namespace quintara

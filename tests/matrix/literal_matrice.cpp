#include "matrix/literal_matrice.h"

#include "access/session/the_platform.h"
#include "base/attempt.h"
#include "base/numbers.h"
#include "matrix/matrix_fixture.h"

namespace quintara::test {
namespace {

void Show(const std::string& text) {
  ThePlatform().ShowBox(text, 16, "QNTR");
}

bool Guarded(const std::string& name, const std::function<bool()>& body) {
  try {
    return body();
  } catch (const std::exception& error) {
    Show("Unexpected error in function Cls_Matrice." + name + " : " + StateOf(error).description);
    return false;
  }
}

void Collect(XmlNode node, std::vector<XmlNode>& elements) {
  for (const auto child : node.children()) {
    if (child.type() != pugi::node_element) continue;
    elements.push_back(child);
    Collect(child, elements);
  }
}

PositionMatrix ToMatrix(const XMLElement& e) {
  return {e.XX, e.XY, e.XZ, e.YX, e.YY, e.YZ, e.ZX, e.ZY, e.ZZ, e.XO, e.YO, e.ZO};
}

}  // namespace

std::vector<XmlNode> LiteralMatrice::AllElements(XmlNode document) {
  std::vector<XmlNode> elements;
  Collect(document, elements);
  return elements;
}

bool LiteralMatrice::Convert(XmlNode node, XMLElement& element) {
  return Guarded("ConvertNodeToXMLElement", [&] {
    element = {};
    for (const auto attribute : node.attributes()) {
      const std::string name(BaseName(attribute.name()));
      const char* const value = attribute.value();
      if (name == "PART_NUMBER") element.PartNumber = value;
      if (name == "INSTANCE_NAME") element.InstanceName = value;
      if (name == "FULL_INSTANCE_NAME") element.FullInstanceName = value;
      if (name == "XX") element.XX = ToDouble(value);
      if (name == "XY") element.XY = ToDouble(value);
      if (name == "XZ") element.XZ = ToDouble(value);
      if (name == "YX") element.YX = ToDouble(value);
      if (name == "YY") element.YY = ToDouble(value);
      if (name == "YZ") element.YZ = ToDouble(value);
      if (name == "ZX") element.ZX = ToDouble(value);
      if (name == "ZY") element.ZY = ToDouble(value);
      if (name == "ZZ") element.ZZ = ToDouble(value);
      if (name == "XO") element.XO = ToDouble(value);
      if (name == "YO") element.YO = ToDouble(value);
      if (name == "ZO") element.ZO = ToDouble(value);
    }
    return true;
  });
}

bool LiteralMatrice::CheckPN(const std::string& partNumber, const Texts& children, bool& found) {
  for (const auto& child : children) {
    if (child == partNumber) {
      found = true;
      break;
    }
  }
  return true;
}

bool LiteralMatrice::CheckIfParentsAreUsed(XmlNode node, const Texts& children, bool& used) {
  const XmlNode parent = node.parent();
  if (BaseName(parent.name()).empty()) {
    used = false;
    return true;
  }
  bool found = false;
  for (const auto attribute : parent.attributes()) {
    if (BaseName(attribute.name()) != "PART_NUMBER") continue;
    if (!CheckPN(attribute.value(), children, found)) return false;
    break;
  }
  if (found) {
    used = true;
    return true;
  }
  return CheckIfParentsAreUsed(parent, children, used);
}

bool LiteralMatrice::GetInstancesFromPN(XmlNode document, const std::string& partNumber, const Texts& children,
                                        Elements& instances) {
  return Guarded("GetInstancesFromPN", [&] {
    instances.clear();
    for (const auto element : AllElements(document)) {
      for (const auto attribute : element.attributes()) {
        if (BaseName(attribute.name()) != "PART_NUMBER") continue;
        if (attribute.value() == partNumber) {
          bool used = false;
          if (!CheckIfParentsAreUsed(element, children, used)) return false;
          if (!used) {
            XMLElement record;
            if (!Convert(element, record)) return false;
            instances.push_back(record);
          }
        }
        break;
      }
    }
    return true;
  });
}

bool LiteralMatrice::PositionnerXML(XmlNode document, const XMLElement& element, const PositionMatrix& matrix,
                                    XmlNode node, PositionMatrix& out) {
  return Guarded("PositionnerXML", [&] {
    PositionMatrix current = matrix;
    if (!node) {
      current = ToMatrix(element);
      bool isFound = false;
      for (const auto candidate : AllElements(document)) {
        node = candidate;
        for (const auto attribute : candidate.attributes()) {
          if (BaseName(attribute.name()) != "FULL_INSTANCE_NAME") continue;
          isFound = attribute.value() == element.FullInstanceName;
          break;
        }
        if (isFound) break;
      }
    }
    const XmlNode parent = node.parent();
    if (BaseName(parent.name()).empty()) {
      out = current;
      return true;
    }
    XMLElement parentElement;
    if (!Convert(parent, parentElement)) return false;
    return PositionnerXML(document, parentElement, WrittenOut(current, ToMatrix(parentElement)), parent, out);
  });
}

bool LiteralMatrice::WithDocument(const std::string& path, const std::function<bool(XmlNode)>& body) {
  const auto document = makeDocument_();
  if (!document->Load(path)) {
    Show("Error in loading XML file \"" + path + "\" : " + document->ParseError().reason);
    return false;
  }
  return body(document->Node());
}

bool LiteralMatrice::ProcessXMLFile(const Ref<zorva::Product>& root, const std::string& path) {
  return Guarded("ProcessXMLFile",
                 [&] { return WithDocument(path, [&](XmlNode document) { return Process(root, document); }); });
}

bool LiteralMatrice::PositionAllInstances(const Ref<zorva::Product>& root, const std::string& path, bool allInstances,
                                          const Ref<zorva::Selection>& selection) {
  return Guarded("PositionAllInstances", [&] {
    return WithDocument(path, [&](XmlNode document) { return PositionAll(root, document, allInstances, selection); });
  });
}

bool LiteralMatrice::Process(const Ref<zorva::Product>& root, XmlNode document) {
  const auto products = root->Products();
  const int count = products->Count();
  if (count <= 0) return true;
  Texts children;
  for (int i = 1; i <= count; ++i) children.push_back(utils_.GetThePartNumber(products->Item(i)));
  std::vector<PNInstances> cache;
  XMLElement working;
  for (int i = 1; i <= count; ++i) {
    const auto child = products->Item(i);
    const auto partNumber = utils_.GetThePartNumber(child);
    Elements current;
    std::size_t at = 0;
    while (at < cache.size() && cache[at].PartNumber != partNumber) ++at;
    if (at < cache.size()) {
      current = cache[at].Instances;
    } else {
      if (!GetInstancesFromPN(document, partNumber, children, current)) return false;
      cache.push_back({partNumber, current});
    }
    if (current.empty()) throw Failure(failure::kSubscriptOutOfRange);
    for (std::size_t record = 0; record <= current.size() - 1; ++record) {
      if (current[record].Used) continue;
      working = current[record];
      current[record].Used = true;
      cache[at].Instances = current;
      break;
    }
    if (working.PartNumber.empty()) continue;
    PositionMatrix out{};
    if (!PositionnerXML(document, working, {}, {}, out)) return false;
    child->Position()->SetComponents(out);
  }
  return true;
}

bool LiteralMatrice::PositionAll(const Ref<zorva::Product>& root, XmlNode document, bool allInstances,
                                 const Ref<zorva::Selection>& selection) {
  const auto products = root->Products();
  int count = products->Count();
  if (count <= 0) return true;
  Texts children;
  for (int i = 1; i <= count; ++i) children.push_back(utils_.GetThePartNumber(products->Item(i)));
  for (int i = 1;;) {
    const auto partNumber = utils_.GetThePartNumber(products->Item(i));
    int equal = 0;
    for (const auto& child : children) equal += child == partNumber ? 1 : 0;
    if (equal > 1) {
      products->Remove(i + 1);
      --count;
    }
    if (i == count) break;
    ++i;
  }
  std::vector<PNInstances> cache;
  int last = count;
  for (int i = 1; i <= count; ++i) {
    const auto item = products->Item(i);
    const auto partNumber = utils_.GetThePartNumber(item);
    bool isDealtWith = false;
    for (const auto& entry : cache) isDealtWith = isDealtWith || entry.PartNumber == partNumber;
    if (isDealtWith) continue;
    Elements records;
    if (!GetInstancesFromPN(document, partNumber, children, records)) return false;
    cache.push_back({partNumber, records});
    PositionMatrix out{};
    if (allInstances && records.size() >= 2) {
      for (std::size_t k = 1; k <= records.size(); ++k) {
        const auto& record = records[k - 1];
        if (!PositionnerXML(document, record, {}, {}, out)) return false;
        auto inHand = item;
        if (k == 1) {
          selection->Clear();
          selection->Add(item);
          selection->Copy();
          selection->Clear();
          item->SetName(std::string(record.FullInstanceName));
        } else {
          selection->Add(root->Products());
          selection->Paste();
          selection->Clear();
          ++last;
          inHand = products->Item(last);
          inHand->SetName(std::string(record.FullInstanceName));
        }
        inHand->Position()->SetComponents(out);
      }
      continue;
    }
    if (records.empty()) throw Failure(failure::kSubscriptOutOfRange);
    if (!PositionnerXML(document, records[0], {}, {}, out)) return false;
    item->SetName(std::string(records[0].FullInstanceName));
    item->Position()->SetComponents(out);
  }
  return true;
}

}  // namespace quintara::test

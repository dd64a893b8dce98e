#include <string>

#include "access/session/process.h"
#include "access/utils/behaviors.h"
#include "base/counter16.h"
#include "base/failure.h"
#include "base/xml_faults.h"
#include "matrix/Cls_Matrice.h"
#include "matrix/guarded.h"
#include "matrix/product_element.h"
#include "matrix/vault_part.h"

namespace quintara {
namespace {

void RequireOnlyRoot(XmlNode element) {
  if (element.previous_sibling().type() == pugi::node_element) {
    throw Failure(failure::kInvalidCall, "Only one top level element is allowed in an XML document");
  }
}

// The attribute that counts is the first of that name, whatever stands before a colon.
XmlAttribute FullNameOf(XmlNode element) {
  Counter16 passed;
  for (auto attribute : element.attributes()) {
    if (BaseName(attribute.name()) == "FULL_INSTANCE_NAME") return attribute;
    ++passed;
  }
  return {};
}

void PrefixFullNames(XmlNode document, const std::string& prefix) {
  Counter16 elements;
  std::string fullName;
  for (auto node = document.first_child(); node; node = xml::NextInDocumentOrder(node, document)) {
    if (node.type() != pugi::node_element) continue;
    ++elements;
    auto attribute = FullNameOf(node);
    if (!attribute) continue;
    fullName.assign(prefix).append("\\").append(attribute.value());
    attribute.set_value(fullName.c_str());
  }
}

// The root stands behind the processing instruction, and nothing else is looked for.
XmlNode RootBehindInstruction(XmlNode document, const std::string& path) {
  const auto root = document.first_child().next_sibling();
  if (root.type() == pugi::node_element) return root;
  throw Failure(failure::kInvalidFormat, "The matrix \"" + path + "\" has no root element behind its first node");
}

}  // namespace

bool Cls_Matrice::ParseZORVATreeForMerging(const Ref<zorva::Product>& Product, XmlNode Document, XmlNode ParentElement,
                                           const std::string& ParentFullName) {
  return Guarded("Cls_Matrice.ParseZORVATreeForMerging", [&] {
    return ParentFullName.empty() ? MergeRoot(Product, Document) : MergeChild(Product, ParentElement, ParentFullName);
  });
}

// A child of a root without a name comes here too, and fails at the second root element.
bool Cls_Matrice::MergeRoot(const Ref<zorva::Product>& root, XmlNode document) {
  const auto partNumber = utils_->GetThePartNumber(root);
  const auto written = WriteProduct(document, {}, partNumber, root);
  RequireOnlyRoot(written.element);
  for (const int i : Counting(1, written.count)) {
    if (!ParseZORVATreeForMerging(written.children->Item(i), document, written.element, written.fullName)) return false;
  }
  return true;
}

bool Cls_Matrice::MergeChild(const Ref<zorva::Product>& child, XmlNode parent, const std::string& parentFullName) {
  const auto session = Process().gSession;
  const auto object = utils_->RetrieveVDObject(session, child);
  if (!object) return false;
  if (!IsVaultPart(session, object)) return GraftMatrixOf(object, parent, parentFullName);
  const auto partNumber = utils_->GetThePartNumber(child);
  const auto instanceName = child->Name();
  AppendElement(parent, kPartTag, {partNumber, instanceName, FullNameUnder(parentFullName, instanceName)}, child);
  return true;
}

// The grafted root keeps its own name and position: those of the instance aren't looked at.
bool Cls_Matrice::GraftMatrixOf(const Ref<veldora::VdObject>& assembly, XmlNode parent,
                                const std::string& parentFullName) {
  const auto session = Process().gSession;
  const auto behavior = StructureBehavior(session);
  const auto matrix = utils_->GetDocumentMatrixFromObject(session, assembly, behavior, MatrixType::XML);
  if (!matrix) return false;
  const auto path = utils_->CopyVeldoraObjectToWork(matrix);
  const auto document = LoadDocument(path);
  if (!document) return false;
  PrefixFullNames(document->Node(), parentFullName);
  parent.append_copy(RootBehindInstruction(document->Node(), path));
  return true;
}

}  // namespace quintara

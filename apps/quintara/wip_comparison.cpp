#include "quintara/wip_comparison.h"

#include <optional>

#include "access/session/process.h"
#include "access/utils/Cls_Utils.h"
#include "base/attempt.h"
#include "base/failure.h"
#include "base/file_names.h"
#include "base/variant.h"
#include "positioning/opened_workbook.h"
#include "quintara/command_context.h"
#include "quintara/product_tree.h"
#include "quintara/vault_objects.h"
#include "quintara/wip_check.h"

namespace quintara {
namespace {

using veldora::VdObject;

std::vector<WipComponent> ComponentsOf(const Ref<zorva::Product>& root) {
  std::vector<WipComponent> components;
  const auto products = root->Products();
  for (int i = 1, count = products->Count(); i <= count; ++i) {
    const auto product = products->Item(i);
    WipComponent component{Utils().GetThePartNumber(product), product->Name()};
    product->Position()->GetComponents(component.position);
    components.push_back(std::move(component));
  }
  return components;
}

// The document that a product remembers as its matrix; nothing for none.
Ref<VdObject> MatrixNamed(EmbeddedVault& vault, const Ref<zorva::Product>& root, const std::string& kind) {
  const auto classId = StringProperty(root, "Doc" + kind + "CID");
  const auto objectId = StringProperty(root, "Doc" + kind + "OID");
  if (classId.empty() || objectId.empty() || objectId == "0") return nullptr;
  return ObjectOf(vault, {Variant(classId).ToInteger16(), Variant(objectId).ToInteger32()});
}

std::vector<MatrixInstance> InstancesInFile(const SoughtInstances& sought, const std::string& path) {
  OpenedWorkbook workbook;
  ErrorState failure;
  std::vector<MatrixInstance> instances;
  Attempt(failure, [&] {
    workbook.StartApplication();
    workbook.Open(path);
    instances = InstancesInWorkbook(sought, workbook.Sheets());
  });
  workbook.Abandon();
  if (failure) throw Failure(failure.number, failure.description);
  return instances;
}

// A workbook is read where it was brought to be placed from. Nothing without a matrix.
std::optional<std::vector<MatrixInstance>> InstancesIn(CommandContext& context, const Ref<zorva::Product>& root,
                                                       const SoughtInstances& sought) {
  auto& vault = context.RequireVault();
  if (const auto document = MatrixNamed(vault, root, "XML")) return InstancesInXml(sought, vault.FileOf(document));
  const auto document = MatrixNamed(vault, root, "Excel");
  if (!document) return std::nullopt;
  const auto name = document->Record()->ValueAsString(Process().gAttrDescription) + ".xls";
  return InstancesInFile(sought, PathIn(Process().gWorkDirectory, name));
}

// The whole product as one component isn't placed.
bool IsWhole(const std::vector<AskedComponent>& asked, const Ref<VdObject>& object) {
  return asked.size() == 1 && asked.front().identity.classId == object->ClassId() &&
         asked.front().identity.objectId == object->ObjectId();
}

}  // namespace

void CompareWithAsked(CommandContext& context, const Ref<zorva::Product>& root,
                      const std::vector<AskedComponent>& asked, bool allInstances, const Ref<VdObject>& object) {
  const auto components = ComponentsOf(root);
  std::optional<std::vector<MatrixInstance>> instances;
  ErrorState unread;
  if (!IsWhole(asked, object)) {
    Attempt(unread, [&] { instances = InstancesIn(context, root, SoughtFor(asked, components)); });
  }
  if (unread) context.Complain("the places can't be compared with the matrix: " + unread.description);
  for (const auto& line : Shortcomings(asked, allInstances, components, instances)) context.Complain(line);
}

}  // namespace quintara

#include "automation/dispatch/served_kind.h"

#include <algorithm>

#include "automation/dispatch/kinds.h"
#include "automation/dispatch/kinds_excel.h"
#include "automation/dispatch/kinds_vault_objects.h"
#include "automation/dispatch/kinds_vault_session.h"
#include "automation/dispatch/kinds_zorva.h"
#include "base/text.h"

namespace quintara::automation {
namespace {

constexpr std::string_view kItem = "ITEM";
constexpr std::string_view kValue = "VALUE";
constexpr DISPID kFirstId = 1;

}  // namespace

ServedKind::ServedKind(std::string_view name, bool isOpen, std::vector<ServedOperation> operations)
    : name_(name), isOpen_(isOpen), operations_(std::move(operations)) {
  for (const auto& operation : operations_) {
    auto capitals = Capitals(operation.name);
    if (std::ranges::find(names_, capitals) == names_.end()) names_.push_back(std::move(capitals));
  }
  isCollection_ = std::ranges::find(names_, kItem) != names_.end();
  for (const auto& operation : operations_) ids_.push_back(IdOf(operation.name));
}

DISPID ServedKind::IdAt(std::size_t index) const {
  const auto value = isCollection_ ? kItem : kValue;
  return names_[index] == value ? DISPID_VALUE : kFirstId + static_cast<DISPID>(index);
}

DISPID ServedKind::IdOf(std::string_view name) const {
  const auto found = std::ranges::find(names_, Capitals(name));
  return found == names_.end() ? DISPID_UNKNOWN : IdAt(static_cast<std::size_t>(found - names_.begin()));
}

const ServedOperation* ServedKind::Find(DISPID id, bool isPut, std::size_t arguments, bool& isKnown) const {
  isKnown = false;
  for (std::size_t i = 0; i < operations_.size(); ++i) {
    if (ids_[i] != id) continue;
    isKnown = true;
    const auto& operation = operations_[i];
    if ((operation.use == Use::kPut) == isPut && operation.arity == arguments) return &operation;
  }
  return nullptr;
}

const ServedOperation* ServedKind::FindGiver(DISPID id, bool isPut, std::size_t arguments) const {
  for (std::size_t i = 0; i < operations_.size(); ++i) {
    const auto& operation = operations_[i];
    if (ids_[i] != id || !operation.gives || operation.arity >= arguments) continue;
    // One with arguments of its own may do more than to give: only where a value is written is its purpose sure.
    if (!isPut && operation.arity > 0) continue;
    bool isKnown = false;
    if (operation.gives().Find(DISPID_VALUE, isPut, arguments - operation.arity, isKnown)) return &operation;
  }
  return nullptr;
}

const ServedKind& KindOf(AnyObject& object, const ServedKind& known) {
  if (!known.IsOpen()) return known;
  if (object.AsProductDocument()) return KindServed<zorva::ProductDocument>();
  if (object.AsDocument()) return KindServed<zorva::Document>();
  if (object.AsProduct()) return KindServed<zorva::Product>();
  if (object.AsProducts()) return KindServed<zorva::Products>();
  if (object.AsApplication()) return KindServed<zorva::Application>();
  if (object.AsFileSystemObject()) return KindServed<FileSystemObject>();
  if (object.AsSpreadsheetApplication()) return KindServed<excel::Application>();
  if (object.AsWorksheet()) return KindServed<excel::Worksheet>();
  if (object.AsHIXEngine()) return KindServed<veldora::HIXEngine>();
  if (object.AsVdAliasResults()) return KindServed<veldora::VdAliasResults>();
  if (object.AsVdApplication()) return KindServed<veldora::VdApplication>();
  if (object.AsVdClientContext()) return KindServed<veldora::VdClientContext>();
  if (object.AsVdClientContextService()) return KindServed<veldora::VdClientContextService>();
  if (object.AsVdCommonGUI()) return KindServed<veldora::VdCommonGUI>();
  if (object.AsVdGUIServices()) return KindServed<veldora::VdGUIServices>();
  if (object.AsVdObject()) return KindServed<veldora::VdObject>();
  if (object.AsVdObjects()) return KindServed<veldora::VdObjects>();
  if (object.AsVdRecList()) return KindServed<veldora::VdRecList>();
  if (object.AsVdSession()) return KindServed<veldora::VdSession>();
  if (object.AsVdSessionUtil()) return KindServed<veldora::VdSessionUtil>();
  if (object.AsVdTranslator()) return KindServed<veldora::VdTranslator>();
  return known;
}

}  // namespace quintara::automation

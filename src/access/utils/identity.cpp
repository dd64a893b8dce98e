#include <algorithm>
#include <optional>
#include <string_view>

#include "access/contracts/hix_engine.h"
#include "access/contracts/platform.h"
#include "access/contracts/veldora.h"
#include "access/session/process.h"
#include "access/utils/Cls_Utils.h"
#include "access/utils/messages.h"
#include "base/counter16.h"
#include "base/numbers.h"
#include "base/text.h"
#include "base/trimmed.h"

namespace quintara {
namespace {

using veldora::VdObject;

constexpr std::int16_t kAnyClass = 0;

// The numbers that a property may hold: a finite decimal with an optional sign, and blanks around it.
std::optional<double> NumberIn(std::string_view text) {
  text = Trimmed(text);
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  return TryToDouble(text);
}

bool IsOfProductClass(Cls_Utils& utils, const Ref<veldora::VdSession>& session, const Ref<veldora::VdRecord>& record) {
  const auto& globals = Process();
  const auto classId = Variant(record->ValueAsInteger(globals.CLASS_ID)).ToInteger16();
  return utils.IsCorrectClassID(session, globals.gClassProducts, classId);
}

Ref<veldora::VdObject> ObjectBehind(const Ref<veldora::VdSession>& session, const std::string& fullName) {
  const auto& engine = Process().gHIX;
  const auto handle = engine->DocumentInfo(fullName);
  if (!handle) return nullptr;
  const auto classId = engine->DocumentClassId(handle);
  const auto objectId = engine->DocumentObjectId(handle);
  const auto object = session->ObjectStore()->ObjectById(classId, objectId)->Clone();
  if (!object) return nullptr;
  object->Retrieve();
  return object->Clone();
}

}  // namespace

bool Cls_Utils::IsCorrectClassID(const Ref<veldora::VdSession>& Session, const std::string& Settings,
                                 std::int16_t ClassID) {
  return std::ranges::any_of(Split(Settings, ','), [&](const std::string& name) {
    return Session->MetaInfo()->ClassByName(name)->ClassId() == ClassID;
  });
}

bool Cls_Utils::IsTheRoot(const Ref<veldora::VdSession>& Session, const Ref<VdObject>& ZORVAProduct,
                          const Ref<veldora::VdBehavior>& Behavior) {
  // The label names another class than this one; users know it so.
  return Reported("Cls_Init.IsTheRoot", box::kCritical, false, [&] {
    const auto definition = Session->ObjectStore()->NewQuery()->Definition();
    definition->From()->Add(kAnyClass, "S");
    const auto parents = ZORVAProduct->Parents(definition, Behavior);
    const int count = parents->Count();
    if (count == 0) return true;
    const auto records = parents->Records();
    for (const int row : Counting(0, count - 1)) {
      if (IsOfProductClass(*this, Session, records->GetRecord(row))) return false;
    }
    return true;
  });
}

std::int16_t Cls_Utils::IndiceClasse(const Ref<veldora::VdSession>& Session, const std::string& NomClasse) {
  return OrElse(std::int16_t{0}, [&] { return Session->MetaInfo()->ClassByName(NomClasse)->ClassId(); });
}

std::int16_t Cls_Utils::IndiceFileType(const Ref<veldora::VdSession>& Session, const std::string& NomType) {
  return OrElse(std::int16_t{0}, [&] {
    const auto& globals = Process();
    // The class of the file types bears the name of the attribute that holds one.
    const auto classId = IndiceClasse(Session, globals.FILE_TYPE);
    const auto query = Session->ObjectStore()->NewQuery();
    const auto definition = query->Definition();
    definition->From()->Add(classId, "F");
    definition->Select()->Add(globals.OBJECT_ID, "F", true);
    definition->Where()->Add("", "TDM_NAME", "=", NomType, 0, "F");
    query->RunClassQuery();
    return Variant(query->Result()->GetRecord(0)->ValueAsInteger(globals.OBJECT_ID)).ToInteger16();
  });
}

Ref<VdObject> Cls_Utils::RetrieveVDObject_FromLWT(const Ref<veldora::VdSession>& Session,
                                                  const Ref<zorva::Product>& ZVAProduct) {
  auto& texts = Process().texts;
  const auto warned = [&](auto& text) {
    Show(text, box::kWarning, ZVAProduct->Name());
    return Ref<VdObject>();
  };
  const auto report = [&](const ErrorState& /*failure*/) {
    warned(texts.QD_UTILS_UNABLE_TO_RETRIEVE_OBJECT_NOT_EXIST);
  };
  return OrReport(Ref<VdObject>(), report, [&] {
    const auto classText = ReadStringProperty(ZVAProduct, "CLASS_ID", "String");
    const auto objectText = ReadStringProperty(ZVAProduct, "OBJECT_ID", "String");
    if (classText.empty() || objectText.empty()) return warned(texts.QD_UTILS_UNABLE_TO_RETRIEVE_OBJECT_EMPTY);
    const auto classNumber = NumberIn(classText);
    const auto objectNumber = NumberIn(objectText);
    if (!classNumber || !objectNumber) return warned(texts.QD_UTILS_UNABLE_TO_RETRIEVE_OBJECT_NON_NUMERIC);
    const auto classId = Variant(*classNumber).ToInteger16();
    const auto objectId = Variant(*objectNumber).ToInteger32();
    const auto object = Session->ObjectStore()->ObjectById(classId, objectId);
    return object ? object->Clone() : warned(texts.QD_UTILS_UNABLE_TO_RETRIEVE_OBJECT_NOT_EXIST);
  });
}

Ref<VdObject> Cls_Utils::RetrieveVDObject(const Ref<veldora::VdSession>& CurrentSession,
                                          const Ref<zorva::Product>& ZORVAObject, bool DisplayError) {
  const auto fullName =
      OrElse(std::string(), [&] { return ZORVAObject->Reference()->Parent()->AsDocument()->FullName(); });
  if (fullName.empty()) return nullptr;
  const auto retrieve = [&] { return ObjectBehind(CurrentSession, fullName); };
  if (!DisplayError) return OrElse(Ref<VdObject>(), retrieve);
  return Reported("Cls_Utils.RetrieveVDObject", box::kCritical, Ref<VdObject>(), retrieve);
}

std::string Cls_Utils::GetIdSequence(const Ref<veldora::VdSession>& Session, const std::string& ClassName,
                                     const std::string& AttributID) {
  const auto report = [&](const ErrorState& /*failure*/) {
    Show(Process().texts.QD_UTILS_UNABLE_TO_GET_NEXT_ID_SEQUENCE, box::kCriticalModal, AttributID);
  };
  return OrReport(std::string(), report, [&] {
    const auto attribute = Session->MetaInfo()->ClassByName(ClassName)->Attributes()->ItemByName(AttributID);
    return Session->ObjectStore()->Masks()->MaskOf(attribute)->NextValue();
  });
}

bool Cls_Utils::WriteStringProperty(const Ref<zorva::Product>& ZORVAObject, const std::string& PropertyName,
                                    const std::string& PropertyValue) {
  ErrorState ignored;
  Ref<zorva::Parameter> parameter;
  Attempt(ignored, [&] {
    const auto parameters = ZORVAObject->Parameters();
    if (parameters->Count() >= 1) parameter = parameters->Item(PropertyName);
  });
  if (parameter) {
    Attempt(ignored, [&] { parameter->ValuateFromString(PropertyValue); });
    return true;
  }
  return OrElse(false, [&] {
    ZORVAObject->UserProperties()->CreateString(PropertyName, PropertyValue);
    return true;
  });
}

std::string Cls_Utils::ReadStringProperty(const Ref<zorva::Product>& ZORVAObject, const std::string& PropertyName,
                                          const std::string& ReturnType) {
  const std::string without = ReturnType == "Integer" ? "-1" : "";
  return OrElse(without, [&] {
    const auto parameters = ZORVAObject->Parameters();
    if (parameters->Count() < 1) return without;
    return parameters->Item(PropertyName)->ValueAsString();
  });
}

bool Cls_Utils::TestWIP(const Ref<zorva::Product>& ZORVAObject) {
  return ReadStringProperty(ZORVAObject, "WIP", "String") == "TRUE";
}

bool Cls_Utils::IsAWIP() {
  return OrElse(false, [&] { return TestWIP(Process().gZorva->ActiveDocument()->AsProductDocument()->Product()); });
}

bool Cls_Utils::CheckClassName(const Ref<veldora::VdSession>& VdSession, const std::string& ClassName) {
  return Reported("Cls_Utils.CheckClassName", box::kCritical, false, [&] {
    if (VdSession->MetaInfo()->Classes()->Find(ClassName)) return true;
    Show(Process().texts.QD_UTILS_UNABLE_TO_RETRIEVE_OBJECT_EMPTY_2, box::kCriticalModal, ClassName);
    return false;
  });
}

}  // namespace quintara

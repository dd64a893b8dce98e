#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "access/contracts/platform.h"
#include "access/contracts/veldora.h"
#include "access/session/process.h"
#include "access/utils/Cls_Utils.h"
#include "access/utils/messages.h"
#include "base/counter16.h"
#include "base/failure.h"

namespace quintara {
namespace {

using veldora::VdObjects;
using veldora::VdSessionUtil;
using veldora::version::kLast;
using veldora::version::kTraversal;

constexpr int kUnknownOperation = 1;
constexpr std::string_view kBetweenKeys = ", ";

struct LifeCycleStep {
  std::string_view name;
  const char* vaultOperation;
  unsigned states;  ///< those it may start from, a bit each
  void (*run)(VdSessionUtil& util, const Ref<veldora::VdObject>& object, bool invokeScripts);
};

template <auto Call>
void Run(VdSessionUtil& util, const Ref<veldora::VdObject>& object, bool invokeScripts) {
  (util.*Call)(object, nullptr, invokeScripts);
}

constexpr unsigned Bit(int state) {
  return 1U << static_cast<unsigned>(state);
}
constexpr auto kNew = Bit(veldora::state::kNew);
constexpr auto kCheckedIn = Bit(veldora::state::kCheckedIn);
constexpr auto kCheckedOut = Bit(veldora::state::kCheckedOut);
constexpr auto kReleased = Bit(veldora::state::kReleased);

constexpr std::array kSteps = {
    LifeCycleStep{"CHECKIN", "CHECKIN", kNew | kCheckedOut, Run<&VdSessionUtil::CheckIn>},
    LifeCycleStep{"RELEASE", "APPROVE", kNew | kCheckedIn | kCheckedOut, Run<&VdSessionUtil::Release>},
    LifeCycleStep{"OBSOLETE", "FREEZE", kReleased, Run<&VdSessionUtil::Obsolete>},
    LifeCycleStep{"CHECKOUT", "CHECKOUT", kCheckedIn, Run<&VdSessionUtil::CheckOut>},
    LifeCycleStep{"NEWRELEASE", "NEWRELEASE", kReleased, Run<&VdSessionUtil::NewRelease>},
};

const LifeCycleStep& StepNamed(const std::string& name) {
  const auto* const step = std::ranges::find(kSteps, name, &LifeCycleStep::name);
  if (step == kSteps.end()) throw Failure(kUnknownOperation);
  return *step;
}

bool MayStartFrom(const LifeCycleStep& step, std::int16_t state) {
  return state >= veldora::state::kNew && state <= veldora::state::kObsolete && (step.states & Bit(state)) != 0;
}

// Built up in `text`, so that a failure on the way leaves what was there.
void TellRefusal(const Ref<veldora::VdObject>& object, std::string& text) {
  const auto keys = object->ClassInfo()->KeyAttributes();
  const int count = keys->Count();
  for (const int i : Counting(0, count - 1)) {
    text += object->Record()->ValueAsString(keys->Item(std::int16_t(i))->Name());
    text += kBetweenKeys;
  }
  if (text.size() < kBetweenKeys.size()) throw Failure(failure::kInvalidCall);
  text.resize(text.size() - kBetweenKeys.size());
  text.insert(0, Process().texts.QD_UTILS_UNCORRECT_STATE_FOR_LIFECYCLE.text + " ");
}

// Nothing where the session has no such service, which fails only where it is used.
Ref<VdSessionUtil> SessionUtilOf(const Ref<veldora::VdSession>& session, const char* programName) {
  const auto service = session->GetService(programName);
  return service ? service->AsVdSessionUtil() : nullptr;
}

void RunNamed(const Ref<veldora::VdSession>& session, const Ref<veldora::VdObject>& object, const char* operation) {
  ErrorState ignored;
  Attempt(ignored, [&] {
    const auto util = SessionUtilOf(session, "Vdutil.VdSessionUtil");
    const auto found = session->MetaInfo()->OperationByName(operation);
    util->RunOperation(object, found, true, nullptr, nullptr);
  });
}

}  // namespace

bool Cls_Utils::LifeCycleOperation(const Ref<veldora::VdSession>& VdSession, const Ref<veldora::VdObject>& VdObject,
                                   const std::string& OperationName, bool InvokeScripts) {
  std::string refusal;
  // A failure is told in the words of a refusal too.
  const auto refuse = [&](const ErrorState& /*failure*/) {
    Show(Process().texts.COMMON_UNEXPECTED_ERROR, box::kCritical, "Cls_Utils.LifeCycleOperation", refusal);
  };
  return OrReport(false, refuse, [&] {
    const auto util = SessionUtilOf(VdSession, "VdUtil.VdSessionUtil");
    VdObject->InitData();
    const auto state = VdObject->Record()->Value("STATE").ToInteger16();
    TellRefusal(VdObject, refusal);
    const auto& step = StepNamed(OperationName);
    if (!MayStartFrom(step, state)) {
      refuse({});
      return false;
    }
    if (!VdSession->MetaInfo()->OperationByName(step.vaultOperation)) throw Failure(failure::kObjectNotSet);
    step.run(*util, VdObject, InvokeScripts);
    return true;
  });
}

void Cls_Utils::CheckInObject(const Ref<veldora::VdSession>& oVdSession, const Ref<veldora::VdObject>& Object) {
  RunNamed(oVdSession, Object, "CHECKIN");
}

void Cls_Utils::ReleaseObject(const Ref<veldora::VdSession>& oVdSession, const Ref<veldora::VdObject>& Object) {
  RunNamed(oVdSession, Object, "APPROVE");
}

void Cls_Utils::PopulateObjectMasks(const Ref<veldora::VdSession>& oVdSession,
                                    const Ref<veldora::VdObject>& objVdObject) {
  const auto masks = oVdSession->ObjectStore()->Masks();
  const auto attributes = objVdObject->ClassInfo()->Attributes();
  const int count = attributes->Count();
  for (const int i : Counting(0, count - 1)) {
    const auto attribute = attributes->Item(std::int16_t(i));
    const auto mask = masks->MaskOf(attribute);
    if (!mask) continue;
    const auto name = attribute->Name();
    const auto value = name == "REVISION" ? mask->FirstRevision() : mask->NextValue();
    objVdObject->Record()->ValuateFromString(name, value);
  }
}

Ref<veldora::VdObject> Cls_Utils::LastVersion(const Ref<veldora::VdObject>& Object) {
  return OrElse(Object, [&] {
    Object->Retrieve();
    auto version = Object->GetVersion(kLast);
    version->Retrieve();
    return version;
  });
}

bool Cls_Utils::AcceptGlobalRefresh(const Ref<VdObjects>& WorkObjects) {
  return Reported("Cls_Utils.AcceptGlobalRefresh", box::kCritical, true, [&] {
    const int count = WorkObjects->Count();
    for (const int i : Counting(0, count - 1)) {
      const auto object = WorkObjects->Item(i);
      if (!object) return false;
      const auto state = object->Record()->Value("STATE").ToInteger32();
      if (state != veldora::state::kCheckedIn && state != veldora::state::kReleased) return false;
    }
    return true;
  });
}

bool Cls_Utils::GetAllChildren(const Ref<veldora::VdSession>& VdSession, const Ref<veldora::VdObject>& VdObject,
                               Ref<VdObjects>& VdAllChildren, const Ref<veldora::VdBehavior>& VdBehavior,
                               const std::string& AttributeNames) {
  return Reported("Cls_Utils.GetAllChildren", box::kCritical, false, [&] {
    const auto store = VdSession->ObjectStore();
    VdAllChildren = store->NewObjects();
    const auto work = store->NewObjects();
    work->Add(VdObject);
    const auto definition = store->NewQueryDefinition();
    definition->From()->Add(VdObject->ClassInfo()->QueryClassId(), "F");
    const auto keys = VdObject->ClassInfo()->KeyAttributes();
    const int keyCount = keys->Count();
    for (const int i : Counting(0, keyCount - 1)) {
      definition->Select()->Add(keys->Item(std::int16_t(i))->Name(), "F", false);
    }
    while (work->Count() > 0) {
      const auto current = work->Item(0);
      const auto children =
          VdBehavior ? current->ChildrenWithBehavior(definition, VdBehavior) : current->Children(definition);
      const int count = children ? children->Count() : 0;
      for (const int i : Counting(0, count - 1)) {
        const auto child = children->Item(i)->GetVersion(kTraversal);
        VdAllChildren->Add(child);
        work->Add(child);
      }
      work->Remove(0);
    }
    if (VdAllChildren->Count() > 0 && !AttributeNames.empty()) {
      VdAllChildren->SetAttributeNames(AttributeNames);
      VdAllChildren->RetrieveAll();
    }
    return true;
  });
}

std::string Cls_Utils::GetTheRootName(const Ref<veldora::VdObject>& DocumentObject) {
  return OrElse(std::string(), [&] {
    const auto description = DocumentObject->Record()->ValueAsString(Process().gAttrDescription);
    const auto lastBlank = description.rfind(' ');
    return lastBlank == description.npos ? std::string() : description.substr(0, lastBlank);
  });
}

bool Cls_Utils::RetrieveAllObjectsLinked(const Ref<veldora::VdSession>& Session, const Ref<veldora::VdObject>& VDObject,
                                         const std::string& LinkedObjectsClassName, const std::string& LinkClassName,
                                         Ref<VdObjects>& ObjectsLinked) {
  return Reported("Cls_Utils.RetrieveAllObjectsLinked", box::kCritical, false, [&] {
    const auto& objectId = Process().OBJECT_ID;
    ObjectsLinked = nullptr;
    const auto linkedClass = Session->MetaInfo()->ClassByName(LinkedObjectsClassName)->ClassId();
    const auto linkClass = Session->MetaInfo()->ClassByName(LinkClassName)->ClassId();
    const auto store = Session->ObjectStore();
    const auto query = store->NewQuery();
    const auto definition = query->Definition();
    const auto from = definition->From();
    from->Add(VDObject->ClassId(), "F");
    from->Add(linkClass, "L");
    from->Add(linkedClass, "S");
    definition->Select()->Add(objectId, "S", false);
    definition->Where()->Add("", objectId, "=", VDObject->ObjectId(), 0, "F");
    const auto behavior = store->DefaultBehavior()->Clone();
    behavior->SetOptionD(true);
    behavior->SetOptionA(0);
    query->RunWithBehavior(behavior);
    const auto rows = query->Result();
    const int count = rows->RecordCount();
    for (const int row : Counting(0, count - 1)) {
      const auto id = rows->GetRecord(row)->ValueAsInteger("S." + objectId);
      if (!AddObjectToObjects(Session, store->ObjectById(linkedClass, id), ObjectsLinked)) return false;
    }
    return true;
  });
}

bool Cls_Utils::AddObjectToObjects(const Ref<veldora::VdSession>& Session, const Ref<veldora::VdObject>& Object,
                                   Ref<VdObjects>& Objects) {
  return Reported("Cls_Utils.AddObjectToObjects", box::kCritical, false, [&] {
    if (!Object) return true;
    if (!Objects) Objects = Session->ObjectStore()->NewObjects();
    bool isSame = false;
    const int count = Objects->Count();
    for (const int i : Counting(0, count - 1)) {
      if (!CompareObjects(Objects->Item(i), Object, isSame) || isSame) break;
    }
    if (!isSame) Objects->Add(Object);
    return true;
  });
}

bool Cls_Utils::CompareObjects(const Ref<veldora::VdObject>& Object1, const Ref<veldora::VdObject>& Object2,
                               bool& Same) {
  return Reported("Cls_Utils.CompareObjects", box::kCritical, false, [&] {
    Same = Object1->ClassId() == Object2->ClassId() && Object1->ObjectId() == Object2->ObjectId();
    return true;
  });
}

bool Cls_Utils::RemoveLogicalLink(const Ref<veldora::VdSession>& Session, const Ref<veldora::VdObject>& VDObject1,
                                  const Ref<veldora::VdObject>& VDObject2, const std::string& LinkName) {
  return Reported("Cls_Utils.RemoveLogicalLink", box::kCritical, false, [&] {
    const auto linkClass = Session->MetaInfo()->ClassByName(LinkName)->ClassId();
    const auto store = Session->ObjectStore();
    const auto link = store->LinkObject(linkClass, VDObject1->ClassId(), VDObject1->ObjectId(), VDObject2->ClassId(),
                                        VDObject2->ObjectId());
    if (!link) return true;
    const auto behavior = store->DefaultBehavior()->Clone();
    behavior->SetOptionD(true);
    behavior->SetOptionA(0);
    behavior->SetOptionC(2);
    link->RemoveLink(behavior);
    return true;
  });
}

}  // namespace quintara

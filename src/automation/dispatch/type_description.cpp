#include "automation/dispatch/type_description.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "automation/dispatch/served_kind.h"
#include "automation/dispatch/text16.h"

namespace quintara::automation {
namespace {

constexpr SYSKIND kSystem = sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32;

// One member under one use, whatever the numbers of arguments with which it can be asked.
struct Member {
  std::string_view name;
  DISPID id;
  bool isPut;
  bool gives;
  std::size_t fewest;
  std::size_t most;

  INVOKEKIND Kind() const {
    if (isPut) return INVOKE_PROPERTYPUT;
    return gives && fewest == 0 ? INVOKE_PROPERTYGET : INVOKE_FUNC;
  }
};

std::vector<Member> MembersOf(const ServedKind& kind) {
  std::vector<Member> members;
  for (const auto& operation : kind.Operations()) {
    const bool isPut = operation.use == Use::kPut;
    const auto id = kind.IdOf(operation.name);
    const auto same = [&](const Member& member) { return member.id == id && member.isPut == isPut; };
    if (const auto known = std::ranges::find_if(members, same); known != members.end()) {
      known->fewest = std::min(known->fewest, operation.arity);
      known->most = std::max(known->most, operation.arity);
    } else {
      members.push_back({operation.name, id, isPut, operation.givesValue, operation.arity, operation.arity});
    }
  }
  return members;
}

HRESULT AddMember(ICreateTypeInfo& description, UINT index, const Member& member) {
  std::vector<ELEMDESC> arguments(member.most);
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    arguments[i].tdesc.vt = VT_VARIANT;
    arguments[i].paramdesc.wParamFlags = i < member.fewest ? PARAMFLAG_FIN : PARAMFLAG_FIN | PARAMFLAG_FOPT;
  }
  FUNCDESC function{};
  function.memid = member.id;
  function.funckind = FUNC_DISPATCH;
  function.invkind = member.Kind();
  function.callconv = CC_STDCALL;
  function.cParams = static_cast<SHORT>(arguments.size());
  function.cParamsOpt = static_cast<SHORT>(member.most - member.fewest);
  function.lprgelemdescParam = arguments.data();
  function.elemdescFunc.tdesc.vt = member.gives ? VT_VARIANT : VT_VOID;
  if (const auto added = description.AddFuncDesc(index, &function); FAILED(added)) return added;
  auto name = Wide(member.name);
  auto* text = name.data();
  return description.SetFuncAndParamNames(index, &text, 1);
}

ComPtr<ITypeInfo> Describe(const ServedKind& kind) {
  ComPtr<ICreateTypeLib2> library;
  ComPtr<ICreateTypeInfo> making;
  auto name = Wide(kind.Name());
  if (FAILED(CreateTypeLib2(kSystem, L"Quintara", &library))) return nullptr;
  if (FAILED(library->CreateTypeInfo(name.data(), TKIND_DISPATCH, &making))) return nullptr;
  UINT index = 0;
  for (const auto& member : MembersOf(kind)) {
    if (FAILED(AddMember(*making.Get(), index++, member))) return nullptr;
  }
  ComPtr<ITypeInfo> made;
  if (FAILED(making->LayOut()) || FAILED(making.As(&made))) return nullptr;
  return made;
}

}  // namespace

ComPtr<ITypeInfo> DescriptionOf(const ServedKind& kind) {
  static std::mutex mutex;
  // Never freed: at the end of the process the system that made them may be gone.
  static auto* const all = new std::map<const ServedKind*, ComPtr<ITypeInfo>>;
  const std::lock_guard lock(mutex);
  if (const auto known = all->find(&kind); known != all->end()) return known->second;
  return (*all)[&kind] = Describe(kind);
}

}  // namespace quintara::automation

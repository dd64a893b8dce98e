#include "automation/server/methods.h"

#include <algorithm>
#include <array>
#include <utility>

#include "automation/dispatch/failures.h"
#include "automation/server/module.h"

namespace quintara::automation {
namespace {

void Require(HRESULT result, std::string_view what) {
  EXCEPINFO none{};
  if (FAILED(result)) throw FailureOf(result, none, what);
}

bool IsSameName(std::wstring_view left, std::wstring_view right) {
  return CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(), static_cast<int>(right.size()),
                              TRUE) == CSTR_EQUAL;
}

// What an enumeration or a record is, as a value.
VARTYPE NamedType(ITypeInfo& info, HREFTYPE reference) {
  ComPtr<ITypeInfo> named;
  Require(info.GetRefTypeInfo(reference, &named), "ITypeInfo.GetRefTypeInfo");
  TYPEATTR* attributes = nullptr;
  Require(named->GetTypeAttr(&attributes), "ITypeInfo.GetTypeAttr");
  const auto kind = attributes->typekind;
  named->ReleaseTypeAttr(attributes);
  return kind == TKIND_ENUM ? VT_I4 : VT_RECORD;
}

// An argument refers to its value, an object by one reference more.
Parameter ParameterOf(ITypeInfo& info, const ELEMDESC& element) {
  const auto flags = element.paramdesc.wParamFlags;
  const auto* type = element.tdesc.lptdesc;
  const bool isArray = type->vt == VT_SAFEARRAY;
  if (isArray) type = type->lptdesc;
  return {.name = {},
          .type = type->vt == VT_USERDEFINED ? NamedType(info, type->hreftype) : type->vt,
          .isArray = isArray,
          .isIn = (flags & PARAMFLAG_FIN) != 0,
          .isOut = (flags & PARAMFLAG_FOUT) != 0,
          .isOptional = (flags & PARAMFLAG_FOPT) != 0};
}

std::vector<std::wstring> NamesOf(ITypeInfo& info, const FUNCDESC& function) {
  std::vector<BSTR> texts(static_cast<std::size_t>(function.cParams) + 1);
  UINT count = 0;
  Require(info.GetNames(function.memid, texts.data(), static_cast<UINT>(texts.size()), &count), "ITypeInfo.GetNames");
  std::vector<std::wstring> names(texts.size());
  for (UINT i = 0; i < count; ++i) {
    names[i] = texts[i];
    SysFreeString(texts[i]);
  }
  return names;
}

Method MethodOf(ITypeInfo& info, const FUNCDESC& function) {
  auto names = NamesOf(info, function);
  Method method{function.memid, std::move(names[0]), static_cast<std::size_t>(function.oVft), {}, VT_EMPTY};
  for (std::size_t i = 0; i < static_cast<std::size_t>(function.cParams); ++i) {
    const auto& element = function.lprgelemdescParam[i];
    auto parameter = ParameterOf(info, element);
    if (element.paramdesc.wParamFlags & PARAMFLAG_FRETVAL) {
      method.result = static_cast<VARTYPE>(parameter.isArray ? parameter.type | VT_ARRAY : parameter.type);
    } else {
      parameter.name = std::move(names[i + 1]);
      method.parameters.push_back(std::move(parameter));
    }
  }
  return method;
}

}  // namespace

ComPtr<ITypeLib> TypeLibrary() {
  ComPtr<ITypeLib> library;
  Require(LoadTypeLibEx(ModulePath().c_str(), REGKIND_NONE, &library), "LoadTypeLibEx");
  return library;
}

ComPtr<ITypeInfo> TypeOf(REFGUID id) {
  ComPtr<ITypeInfo> type;
  Require(TypeLibrary()->GetTypeInfoOfGuid(id, &type), "ITypeLib.GetTypeInfoOfGuid");
  return type;
}

Methods::Methods(REFIID interfaceId) {
  // A dual interface has two descriptions; only the one of its table of methods tells where each stands in it.
  const auto dual = TypeOf(interfaceId);
  HREFTYPE reference = 0;
  ComPtr<ITypeInfo> info;
  Require(dual->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference), "ITypeInfo.GetRefTypeOfImplType");
  Require(dual->GetRefTypeInfo(reference, &info), "ITypeInfo.GetRefTypeInfo");
  for (UINT i = 0;; ++i) {
    FUNCDESC* function = nullptr;
    const auto result = info->GetFuncDesc(i, &function);
    if (result == TYPE_E_ELEMENTNOTFOUND) break;
    Require(result, "ITypeInfo.GetFuncDesc");
    all_.push_back(MethodOf(*info.Get(), *function));
    info->ReleaseFuncDesc(function);
  }
}

const Method* Methods::Find(DISPID id) const {
  const auto found = std::ranges::find(all_, id, &Method::id);
  return found == all_.end() ? nullptr : &*found;
}

HRESULT Methods::IdsOf(LPOLESTR* names, UINT count, DISPID* ids) const {
  std::fill_n(ids, count, DISPID_UNKNOWN);
  const auto method = std::ranges::find_if(all_, [&](const Method& known) { return IsSameName(known.name, names[0]); });
  if (method == all_.end()) return DISP_E_UNKNOWNNAME;
  ids[0] = method->id;
  auto result = S_OK;
  for (UINT i = 1; i < count; ++i) {
    const auto& all = method->parameters;
    const auto found =
        std::ranges::find_if(all, [&](const Parameter& known) { return IsSameName(known.name, names[i]); });
    if (found == all.end()) {
      result = DISP_E_UNKNOWNNAME;
    } else {
      ids[i] = static_cast<DISPID>(found - all.begin());
    }
  }
  return result;
}

}  // namespace quintara::automation

#include <gmock/gmock.h>

#include <algorithm>
#include <map>

#include "automation/dispatch/text16.h"
#include "automation/server/declared_methods.h"
#include "automation/server/interface.h"
#include "automation/server/methods.h"
#include "automation/server/public_classes.h"

namespace quintara::test {
namespace {

using automation::ComPtr;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::UnorderedElementsAreArray;

std::string Taken(BSTR text) {
  auto told = automation::FromBstr(text);
  SysFreeString(text);
  return told;
}

/// A type of the library, as a browser of types shows it.
class Type {
 public:
  explicit Type(ComPtr<ITypeInfo> info) : info_(std::move(info)) {
    info_->GetTypeAttr(&attributes_);
    BSTR name = nullptr;
    BSTR help = nullptr;
    info_->GetDocumentation(MEMBERID_NIL, &name, &help, nullptr, nullptr);
    name_ = Taken(name);
    help_ = Taken(help);
  }
  ~Type() { info_->ReleaseTypeAttr(attributes_); }
  Type(const Type&) = delete;
  Type& operator=(const Type&) = delete;

  const std::string& Name() const { return name_; }
  const std::string& Help() const { return help_; }
  TYPEKIND Kind() const { return attributes_->typekind; }
  WORD Flags() const { return attributes_->wTypeFlags; }
  GUID Id() const { return attributes_->guid; }
  ComPtr<ITypeInfo> Implemented() const {
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> info;
    info_->GetRefTypeOfImplType(0, &reference);
    info_->GetRefTypeInfo(reference, &info);
    return info;
  }
  std::vector<std::string> Variables() const {
    std::vector<std::string> texts;
    for (UINT i = 0; i < attributes_->cVars; ++i) {
      VARDESC* variable = nullptr;
      info_->GetVarDesc(i, &variable);
      texts.push_back(TextOf(*variable));
      info_->ReleaseVarDesc(variable);
    }
    return texts;
  }
  std::vector<std::string> HelpOfMethods() const {
    std::vector<std::string> texts;
    // A dual interface inherits seven methods.
    for (UINT i = 7; i < attributes_->cFuncs; ++i) {
      FUNCDESC* function = nullptr;
      info_->GetFuncDesc(i, &function);
      BSTR help = nullptr;
      info_->GetDocumentation(function->memid, nullptr, &help, nullptr, nullptr);
      texts.push_back(Taken(help));
      info_->ReleaseFuncDesc(function);
    }
    return texts;
  }

 private:
  std::string TextOf(const VARDESC& variable) const {
    BSTR name = nullptr;
    UINT count = 0;
    info_->GetNames(variable.memid, &name, 1, &count);
    const auto text = Taken(name);
    if (variable.varkind == VAR_CONST) return text + " = " + std::to_string(variable.lpvarValue->lVal);
    return text + " As " + (variable.elemdescVar.tdesc.vt == VT_BSTR ? "String" : "Integer");
  }

  ComPtr<ITypeInfo> info_;
  TYPEATTR* attributes_ = nullptr;
  std::string name_;
  std::string help_;
};

std::string TypeText(VARTYPE type, const std::string& record) {
  switch (type & VT_TYPEMASK) {
    case VT_I2: return "Integer";
    case VT_I4: return "Long";
    case VT_BOOL: return "Boolean";
    case VT_BSTR: return "String";
    case VT_DISPATCH: return "Object";
    case VT_VARIANT: return "Variant";
    case VT_UI1: return "Byte";
    case VT_RECORD: return record;
    default: return "?" + std::to_string(type);
  }
}

// Read with the library's own words, not with the server's reading of it.
std::string DeclaredType(ITypeInfo& info, const TYPEDESC& type) {
  if (type.vt == VT_PTR) return DeclaredType(info, *type.lptdesc);
  if (type.vt == VT_SAFEARRAY) return DeclaredType(info, *type.lptdesc) + "()";
  if (type.vt != VT_USERDEFINED) return TypeText(type.vt, {});
  ComPtr<ITypeInfo> named;
  info.GetRefTypeInfo(type.hreftype, &named);
  return Type(named).Name();
}

std::string ModeText(USHORT flags) {
  const std::string optional = flags & PARAMFLAG_FOPT ? "Optional " : "";
  switch (flags & (PARAMFLAG_FIN | PARAMFLAG_FOUT)) {
    case PARAMFLAG_FIN: return optional + "In ";
    case PARAMFLAG_FOUT: return optional + "Out ";
    case PARAMFLAG_FIN | PARAMFLAG_FOUT: return optional + "InOut ";
    default: return "no mode ";
  }
}

std::string DeclarationOf(ITypeInfo& info, const FUNCDESC& function) {
  std::vector<BSTR> texts(static_cast<std::size_t>(function.cParams) + 1);
  UINT count = 0;
  info.GetNames(function.memid, texts.data(), static_cast<UINT>(texts.size()), &count);
  std::vector<std::string> names;
  for (auto* const text : texts) names.push_back(Taken(text));
  auto declaration = names[0] + "(";
  std::string result;
  for (std::size_t i = 0; i < static_cast<std::size_t>(function.cParams); ++i) {
    const auto& element = function.lprgelemdescParam[i];
    const auto type = DeclaredType(info, element.tdesc);
    if (element.paramdesc.wParamFlags & PARAMFLAG_FRETVAL) {
      result = " As " + type;
      continue;
    }
    declaration += (i == 0 ? "" : ", ") + ModeText(element.paramdesc.wParamFlags) + names[i + 1] + " As " + type;
    // A reference, of which an object is one itself.
    EXPECT_EQ(element.tdesc.vt, VT_PTR) << names[0] << " " << names[i + 1];
  }
  return declaration + ")" + result;
}

std::vector<std::string> DeclarationsOf(REFIID interfaceId) {
  const auto dual = automation::TypeOf(interfaceId);
  HREFTYPE reference = 0;
  ComPtr<ITypeInfo> info;
  dual->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference);
  dual->GetRefTypeInfo(reference, &info);
  std::vector<std::string> all;
  FUNCDESC* function = nullptr;
  for (UINT i = 0; SUCCEEDED(info->GetFuncDesc(i, &function)); ++i) {
    all.push_back(DeclarationOf(*info.Get(), *function));
    info->ReleaseFuncDesc(function);
  }
  return all;
}

void ReplaceAll(std::string& text, const std::string& from, const std::string& to) {
  for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
}

class ThePublicClass : public testing::TestWithParam<DeclaredClass> {
 protected:
  const automation::PublicClass& Served() const {
    const auto& all = automation::PublicClasses();
    return *std::ranges::find(all, Wide(GetParam().name), &automation::PublicClass::name);
  }
};

TEST_P(ThePublicClass, IsServed) {
  const auto& all = automation::PublicClasses();

  EXPECT_EQ(std::ranges::count(all, Wide(GetParam().name), &automation::PublicClass::name), 1);
}

TEST_P(ThePublicClass, HasExactlyTheMethodsThatAreDeclared) {
  auto expected = GetParam().methods;
  // A type library has one spelling of a name, that of its first use.
  for (auto& method : expected) ReplaceAll(method, " VDObject ", " VdObject ");

  EXPECT_THAT(DeclarationsOf(Served().interfaceId), ElementsAreArray(expected));
}

TEST_P(ThePublicClass, IsMadeByItsNameAndHasOneInterface) {
  const Type coclass(automation::TypeOf(Served().classId));

  EXPECT_EQ(coclass.Name(), GetParam().name);
  EXPECT_EQ(coclass.Kind(), TKIND_COCLASS);
  EXPECT_TRUE(coclass.Flags() & TYPEFLAG_FCANCREATE);
  EXPECT_EQ(Type(coclass.Implemented()).Id(), Served().interfaceId);
}

TEST_P(ThePublicClass, CanBeCalledByTableAndByName) {
  const Type dual(automation::TypeOf(Served().interfaceId));

  EXPECT_EQ(dual.Name(), "_" + GetParam().name);
  EXPECT_EQ(dual.Kind(), TKIND_DISPATCH);
  EXPECT_TRUE(dual.Flags() & TYPEFLAG_FDUAL);
}

TEST_P(ThePublicClass, IsExplainedWithAllItsMethods) {
  const Type dual(automation::TypeOf(Served().interfaceId));

  EXPECT_NE(dual.Help(), "");
  EXPECT_EQ(dual.HelpOfMethods().size(), GetParam().methods.size());
  EXPECT_THAT(dual.HelpOfMethods(), testing::Each(testing::EndsWith(".")));
}

INSTANTIATE_TEST_SUITE_P(Each, ThePublicClass, testing::ValuesIn(kDeclaredClasses),
                         [](const auto& named) { return named.param.name; });

class TheTypeLibrary : public testing::Test {
 protected:
  ComPtr<ITypeLib> library = automation::TypeLibrary();

  ComPtr<ITypeInfo> Named(const std::wstring& name) const {
    auto text = name;
    ComPtr<ITypeInfo> found;
    MEMBERID member = 0;
    USHORT count = 1;
    library->FindName(text.data(), 0, &found, &member, &count);
    return found;
  }
};

TEST_F(TheTypeLibrary, HoldsNothingButTheClassesTheEnumerationAndTheRecords) {
  std::vector<std::string> expected{"MatrixType", "PN_IN_Couple", "HashElementType"};
  for (const auto& known : kDeclaredClasses) {
    expected.push_back(known.name);
    expected.push_back("_" + known.name);
  }

  std::vector<std::string> found;
  for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
    ComPtr<ITypeInfo> info;
    library->GetTypeInfo(i, &info);
    found.push_back(Type(info).Name());
  }

  EXPECT_THAT(found, UnorderedElementsAreArray(expected));
}

TEST_F(TheTypeLibrary, TellsTheFormsOfAMatrix) {
  EXPECT_THAT(Type(Named(L"MatrixType")).Variables(), ElementsAre("Excel = 0", "XML = 1"));
}

TEST_F(TheTypeLibrary, TellsTheFieldsOfTheRecords) {
  EXPECT_THAT(Type(Named(L"PN_IN_Couple")).Variables(),
              ElementsAre("PartNumber As String", "InstanceName As String", "Row As Integer"));
  EXPECT_THAT(Type(Named(L"HashElementType")).Variables(),
              ElementsAre("PartNumber As String", "InstanceName As String", "Row As Integer", "NextIndex As Integer"));
}

TEST_F(TheTypeLibrary, IsCalledQuintara) {
  BSTR name = nullptr;
  library->GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr);

  EXPECT_EQ(Taken(name), "Quintara");
}

}  // namespace
}  // namespace quintara::test

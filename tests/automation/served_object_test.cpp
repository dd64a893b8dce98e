#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "access/contracts/spreadsheet.h"
#include "access/contracts/veldora.h"
#include "automation/dispatch/late_bound.h"
#include "automation/dispatch/served_kind.h"
#include "automation/dispatch/text16.h"
#include "automation/dispatch/type_description.h"
#include "automation/host_thread.h"
#include "matrix/paper_spreadsheet.h"

namespace quintara::test {
namespace {

using automation::ComPtr;
using automation::Outgoing;
using automation::Value;
using testing::ElementsAre;

/// An object as scripts use it, by the names of its members.
class Scripted {
 public:
  explicit Scripted(ComPtr<IDispatch> object) : object_(std::move(object)) {}

  template <class... Arguments>
  Value Get(const char* member, Arguments... arguments) {
    return Invoke(IdOf(member), DISPATCH_METHOD | DISPATCH_PROPERTYGET, Values(arguments...));
  }
  template <class... Arguments>
  void Put(const char* member, Arguments... arguments) {
    Invoke(IdOf(member), DISPATCH_PROPERTYPUT, Values(arguments...));
  }
  template <class... Arguments>
  Scripted Object(const char* member, Arguments... arguments) {
    return Scripted(automation::ObjectIn(Get(member, arguments...).Raw()));
  }
  /// The object's own value, which a script asks for without a name.
  template <class... Arguments>
  Value Itself(Arguments... arguments) {
    return Invoke(DISPID_VALUE, DISPATCH_METHOD | DISPATCH_PROPERTYGET, Values(arguments...));
  }

  DISPID IdOf(const char* member) {
    auto name = Wide(member);
    auto* text = name.data();
    DISPID id = DISPID_UNKNOWN;
    object_->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id);
    return id;
  }
  const ComPtr<IDispatch>& Raw() const { return object_; }

  HRESULT result = S_OK;  ///< of the last call
  HRESULT told = S_OK;    ///< what it tells of its failure

 private:
  template <class... Arguments>
  static std::vector<Value> Values(Arguments... arguments) {
    std::vector<Value> values;
    (values.push_back(Value(arguments)), ...);
    return values;
  }
  Value Invoke(DISPID id, int flags, std::vector<Value> values) {
    std::vector<VARIANT> reversed;
    for (auto value = values.rbegin(); value != values.rend(); ++value) reversed.push_back(value->Raw());
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    if (flags & DISPATCH_PROPERTYPUT) {
      parameters.rgdispidNamedArgs = &put;
      parameters.cNamedArgs = 1;
    }
    Value given;
    EXCEPINFO details{};
    result = object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, static_cast<WORD>(flags), &parameters, &given.Raw(),
                             &details, nullptr);
    told = details.scode;
    for (auto* const text : {details.bstrSource, details.bstrDescription}) SysFreeString(text);
    return given;
  }

  ComPtr<IDispatch> object_;
};

constexpr std::int16_t kFirst = 1;
constexpr std::int16_t kSecond = 2;

class AServedObject : public testing::Test {
 protected:
  AServedObject() {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    paper.Shared()->sheetsInNewWorkbook = 2;
    workbook = paper->Workbooks()->Add();
    workbook->Worksheets()->Item(2)->Cells(3, 4)->SetValue(std::string("here"));
    paper->done.clear();
  }
  ~AServedObject() override { CoUninitialize(); }

  Ref<PaperSpreadsheet> paper = MakeRef<PaperSpreadsheet>();
  Ref<excel::Workbook> workbook;
};

TEST_F(AServedObject, GivesAnItemOfItsCollectionByTheCollectionsNameAlone) {
  Scripted book(Outgoing(workbook));

  auto sheet = book.Object("Worksheets", kSecond);

  EXPECT_EQ(automation::ToVariant(sheet.Object("Cells", std::int16_t{3}, std::int16_t{4}).Get("Value").Raw(), nullptr),
            Variant("here"));
}

TEST_F(AServedObject, FailsAsTheCollectionDoesForAnItemThatIsNotThere) {
  Scripted book(Outgoing(workbook));

  book.Get("Worksheets", std::int16_t{3});

  EXPECT_EQ(book.result, DISP_E_EXCEPTION);
  EXPECT_EQ(static_cast<unsigned>(book.told), 0x800A0000U + failure::kSubscriptOutOfRange);
}

TEST_F(AServedObject, FailsForAnItemThatIsNoIndex) {
  Scripted book(Outgoing(workbook));

  book.Get("Worksheets", std::string("second"));

  EXPECT_EQ(book.result, DISP_E_EXCEPTION);
  EXPECT_EQ(static_cast<unsigned>(book.told), 0x800A0000U + failure::kTypeMismatch);
}

TEST_F(AServedObject, FailsForMoreArgumentsThanTheItemTakes) {
  Scripted book(Outgoing(workbook));

  book.Get("Worksheets", kFirst, kFirst);

  EXPECT_EQ(book.result, DISP_E_BADPARAMCOUNT);
}

TEST_F(AServedObject, DoesNothingForArgumentsThatAMemberDoesNotTake) {
  Scripted books(Outgoing(paper->Workbooks()));

  books.Get("Add", std::string("template.xls"));

  EXPECT_EQ(books.result, DISP_E_BADPARAMCOUNT);
  EXPECT_THAT(paper->done, ElementsAre());
}

TEST_F(AServedObject, GivesACellByRowAndColumnAndItsValueWithoutAName) {
  auto cell = Scripted(Outgoing(workbook->Worksheets()->Item(2))).Object("Cells", std::int16_t{3}, std::int16_t{4});

  EXPECT_EQ(automation::ToVariant(cell.Itself().Raw(), nullptr), Variant("here"));
}

TEST_F(AServedObject, WritesTheValueOfWhatAMemberGives) {
  Scripted sheet(Outgoing(workbook->Worksheets()->Item(1)));

  sheet.Put("Cells", kFirst, kSecond, std::string("written"));
  sheet.Put("Range", std::string("C1"), std::string("too"));

  EXPECT_THAT(paper->done, ElementsAre("1!B1=written", "1!C1=too"));
}

TEST_F(AServedObject, WritesNothingWhereTheMemberGivesWhatHasNoValue) {
  Scripted book(Outgoing(workbook));

  book.Put("Worksheets", kFirst, std::string("written"));

  EXPECT_EQ(book.result, DISP_E_BADPARAMCOUNT);
  EXPECT_THAT(paper->done, ElementsAre());
}

/// Tells of what it was asked for.
class CountedResults final : public veldora::VdAliasResults {
 public:
  Ref<veldora::VdObjects> ObjectsOf(const std::string& alias) override {
    asked.push_back(alias);
    return nullptr;
  }
  std::vector<std::string> asked;
};

TEST_F(AServedObject, DoesNotAskAMemberWithArgumentsOfItsOwnForWhatItGives) {
  const auto results = MakeRef<CountedResults>();
  Scripted served(Outgoing(Ref<veldora::VdAliasResults>(results)));

  served.Get("ObjectsOf", std::string("S"), kFirst);

  EXPECT_EQ(served.result, DISP_E_BADPARAMCOUNT);
  EXPECT_THAT(results->asked, ElementsAre());
}

/// A host that has no collection to give.
class NoWorkbooks final : public excel::Application {
 public:
  bool Visible() override { return false; }
  void SetVisible(bool /*visible*/) override {}
  int SheetsInNewWorkbook() override { return 1; }
  void SetSheetsInNewWorkbook(int /*count*/) override {}
  Ref<excel::Workbooks> Workbooks() override { return nullptr; }
  Ref<excel::Workbook> ActiveWorkbook() override { throw Failure(failure::kRefused, "no"); }
  void Quit() override {}
};

TEST_F(AServedObject, FailsWith91ForAnItemOfACollectionThatIsNothing) {
  Scripted application(Outgoing(Ref<excel::Application>(MakeRef<NoWorkbooks>())));

  application.Get("Workbooks", kFirst);

  EXPECT_EQ(application.result, DISP_E_EXCEPTION);
  EXPECT_EQ(static_cast<unsigned>(application.told), 0x800A0000U + failure::kObjectNotSet);
}

TEST_F(AServedObject, ForwardsForAnotherApartmentToo) {
  auto& thread = HostThread::Shared();
  const auto served = thread.Served<excel::Application>([&]() -> Ref<excel::Application> {
    const auto own = MakeRef<PaperSpreadsheet>();
    own->Workbooks()->Add()->Worksheets()->Item(1)->Cells(1, 1)->SetValue(std::string("there"));
    return own;
  });
  Scripted application(Outgoing(served));

  auto sheet = application.Object("Workbooks", kFirst).Object("Worksheets", kFirst);

  EXPECT_EQ(automation::ToVariant(sheet.Object("Cells", kFirst, kFirst).Itself().Raw(), nullptr), Variant("there"));
}

std::string TypeNameOf(const ComPtr<IDispatch>& object) {
  ComPtr<ITypeInfo> info;
  BSTR name = nullptr;
  if (FAILED(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, &info))) return "none";
  if (FAILED(info->GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr))) return "nameless";
  const auto text = automation::FromBstr(name);
  SysFreeString(name);
  return text;
}

TEST_F(AServedObject, TellsTheNameOfItsType) {
  UINT count = 0;

  EXPECT_EQ(Outgoing(workbook)->GetTypeInfoCount(&count), S_OK);

  EXPECT_EQ(count, 1U);
  EXPECT_EQ(TypeNameOf(Outgoing(workbook)), "Workbook");
  EXPECT_EQ(TypeNameOf(Outgoing(workbook->Worksheets())), "Worksheets");
}

TEST_F(AServedObject, TellsTheNameOfItsTypeToAnotherApartment) {
  const auto served = HostThread::Shared().Served<excel::Application>(
      []() -> Ref<excel::Application> { return MakeRef<PaperSpreadsheet>(); });

  EXPECT_EQ(TypeNameOf(Outgoing(served)), "Application");
}

TEST_F(AServedObject, HasOneDescriptionOnly) {
  ComPtr<ITypeInfo> info;

  EXPECT_EQ(Outgoing(workbook)->GetTypeInfo(1, LOCALE_USER_DEFAULT, &info), DISP_E_BADINDEX);
}

struct Described {
  INVOKEKIND use = INVOKE_FUNC;
  int arguments = -1;
  int optional = -1;

  bool operator==(const Described&) const = default;
};

Described MemberDescribed(const ComPtr<IDispatch>& object, DISPID id, bool isPut) {
  ComPtr<ITypeInfo> info;
  object->GetTypeInfo(0, LOCALE_USER_DEFAULT, &info);
  FUNCDESC* function = nullptr;
  for (UINT i = 0; SUCCEEDED(info->GetFuncDesc(i, &function)); ++i) {
    const Described found{function->invkind, function->cParams, function->cParamsOpt};
    const bool isIt = function->memid == id && (function->invkind == INVOKE_PROPERTYPUT) == isPut;
    info->ReleaseFuncDesc(function);
    if (isIt) return found;
  }
  return {};
}

TEST_F(AServedObject, DescribesItsMembersUnderTheIdsThatItAnswers) {
  Scripted sheet(Outgoing(workbook->Worksheets()->Item(1)));
  Scripted application(Outgoing(Ref<excel::Application>(paper)));

  EXPECT_EQ(MemberDescribed(sheet.Raw(), sheet.IdOf("Cells"), false), (Described{INVOKE_PROPERTYGET, 2, 2}));
  EXPECT_EQ(MemberDescribed(sheet.Raw(), sheet.IdOf("Range"), false), (Described{INVOKE_FUNC, 1, 0}));
  EXPECT_EQ(MemberDescribed(application.Raw(), application.IdOf("Visible"), false),
            (Described{INVOKE_PROPERTYGET, 0, 0}));
  EXPECT_EQ(MemberDescribed(application.Raw(), application.IdOf("Visible"), true),
            (Described{INVOKE_PROPERTYPUT, 1, 0}));
  EXPECT_EQ(MemberDescribed(application.Raw(), application.IdOf("Quit"), false), (Described{INVOKE_FUNC, 0, 0}));
}

/// Every kind of object that goes out.
template <class... Contracts>
std::vector<ComPtr<ITypeInfo>> Descriptions() {
  return {automation::DescriptionOf(automation::KindServed<Contracts>())...};
}

TEST_F(AServedObject, OfWhateverKindCanBeDescribed) {
  const auto all =
      Descriptions<AnyObject, FileSystemObject, zorva::Application, zorva::Documents, zorva::ProductDocument,
                   zorva::Product, zorva::Products, zorva::Position, zorva::Parameters, zorva::Selection, excel::Range,
                   veldora::VdApplication, veldora::VdEngine, veldora::VdSession, veldora::VdObject, veldora::VdObjects,
                   veldora::VdRecord, veldora::VdRecList, veldora::VdBehavior, veldora::VdQuery, veldora::VdTranslator,
                   veldora::HIXEngine>();

  for (const auto& description : all) EXPECT_TRUE(description);
}

}  // namespace
}  // namespace quintara::test

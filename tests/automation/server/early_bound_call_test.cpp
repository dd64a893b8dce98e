#include <gmock/gmock.h>

#include "automation/dispatch/late_bound.h"
#include "automation/dispatch/text16.h"
#include "automation/server/client.h"
#include "automation/server/methods.h"
#include "matrix/hash_records.h"
#include "matrix/paper_spreadsheet.h"
#include "support/test_platform.h"

namespace quintara::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::StartsWith;

/// A text that a client owns.
class OwnText {
 public:
  explicit OwnText(const std::string& text) : text_(automation::NewBstr(text)) {}
  ~OwnText() { SysFreeString(text_); }
  OwnText(const OwnText&) = delete;
  OwnText& operator=(const OwnText&) = delete;

  BSTR* operator&() noexcept { return &text_; }
  std::string Held() const { return automation::FromBstr(text_); }

 private:
  BSTR text_;
};

/// Calls through the table of methods, as compiled clients make them.
class AnEarlyBoundCall : public testing::Test {
 protected:
  TestPlatform platform;
  ComPtr<::_Cls_Utils> utils = Client("Cls_Utils").As<::_Cls_Utils>();
};

TEST_F(AnEarlyBoundCall, GivesItsResult) {
  OwnText path("a.b");
  OwnText result("");

  EXPECT_EQ(utils->StripFileExtension(&path, &result), S_OK);

  EXPECT_EQ(result.Held(), "a");
}

TEST_F(AnEarlyBoundCall, FillsTheTextOfAMessageInPlace) {
  OwnText message("REP1");
  LONG style = 64;
  auto parameters = Array("one");
  Value answer;

  EXPECT_EQ(utils->ShowMessage(&message, &style, &parameters.Raw().parray, &answer.Raw()), S_OK);

  EXPECT_EQ(message.Held(), "one");
  EXPECT_EQ(answer.Raw().vt, VT_I4);
  EXPECT_EQ(answer.Raw().lVal, answer::kOk);
}

TEST_F(AnEarlyBoundCall, LeavesTheTextOfGetMessage) {
  OwnText message("REP1");
  auto parameters = Array("one");
  OwnText result("");

  utils->GetMessage(&message, &parameters.Raw().parray, &result);

  EXPECT_EQ(message.Held(), "REP1");
  EXPECT_EQ(result.Held(), "one");
}

TEST_F(AnEarlyBoundCall, TellsItsFailure) {
  IDispatch* nothing = nullptr;
  OwnText names("Rack");
  short id = 1;
  VARIANT_BOOL result = VARIANT_FALSE;

  EXPECT_EQ(utils->IsCorrectClassID(&nothing, &names, &id, &result), RunTimeError(91));

  ComPtr<IErrorInfo> error;
  ASSERT_EQ(GetErrorInfo(0, &error), S_OK);
  OwnText source("");
  OwnText description("");
  GUID where{};
  error->GetSource(&source);
  error->GetDescription(&description);
  error->GetGUID(&where);
  EXPECT_EQ(source.Held(), "Quintara.Cls_Utils");
  EXPECT_EQ(description.Held(), Failure(91).Description());
  EXPECT_EQ(where, __uuidof(::_Cls_Utils));
}

TEST_F(AnEarlyBoundCall, SaysThatItTellsFailures) {
  ComPtr<ISupportErrorInfo> support;
  ASSERT_EQ(utils.As(&support), S_OK);

  EXPECT_EQ(support->InterfaceSupportsErrorInfo(__uuidof(::_Cls_Utils)), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(__uuidof(::_Cls_Matrice)), S_FALSE);
}

TEST_F(AnEarlyBoundCall, SetsAnObjectThatIsNotWrittenToNothing) {
  IDispatch* nothing = nullptr;
  VARIANT_BOOL exists = VARIANT_TRUE;
  VARIANT_BOOL toUpdate = VARIANT_TRUE;
  // A result, whose value on entry may be anything.
  auto* matrix = reinterpret_cast<IDispatch*>(std::uintptr_t{8});
  ::MatrixType type = ::XML;
  VARIANT_BOOL result = VARIANT_FALSE;

  EXPECT_EQ(utils->IsMatrixAlreadyExist(&nothing, &nothing, &exists, &toUpdate, &matrix, &type, nullptr, &result),
            RunTimeError(91));

  EXPECT_EQ(matrix, nullptr);
}

TEST_F(AnEarlyBoundCall, TakesAMissingReferenceForTheNeutralValue) {
  OwnText result("old");

  EXPECT_EQ(utils->StripFileExtension(nullptr, &result), S_OK);

  EXPECT_EQ(result.Held(), "");
}

TEST_F(AnEarlyBoundCall, MayHaveNoUseForTheResult) {
  OwnText path("a.b");

  EXPECT_EQ(utils->StripFileExtension(&path, nullptr), S_OK);
}

TEST_F(AnEarlyBoundCall, KnowsNoForeignInterface) {
  EXPECT_FALSE(Client("Cls_Utils").As<::_Cls_Matrice>());
}

TEST_F(AnEarlyBoundCall, ReachesTheDescriptionOfItsClass) {
  UINT count = 0;
  ComPtr<ITypeInfo> info;
  TYPEATTR* attributes = nullptr;

  EXPECT_EQ(utils->GetTypeInfoCount(&count), S_OK);
  ASSERT_EQ(utils->GetTypeInfo(0, 0, &info), S_OK);
  info->GetTypeAttr(&attributes);

  EXPECT_EQ(count, 1U);
  EXPECT_EQ(attributes->guid, __uuidof(::_Cls_Utils));
  info->ReleaseTypeAttr(attributes);
  EXPECT_EQ(utils->GetTypeInfo(1, 0, &info), DISP_E_BADINDEX);
}

/// An array of the library's own records.
class Records {
 public:
  explicit Records(const std::vector<PN_IN_Couple>& couples) {
    ComPtr<IRecordInfo> info;
    GetRecordInfoFromTypeInfo(RecordType().Get(), &info);
    SAFEARRAYBOUND bound{static_cast<ULONG>(couples.size()), 0};
    array_ = SafeArrayCreateEx(VT_RECORD, 1, &bound, info.Get());
    auto* const records = static_cast<::PN_IN_Couple*>(array_->pvData);
    for (std::size_t i = 0; i < couples.size(); ++i) {
      records[i].PartNumber = automation::NewBstr(couples[i].PartNumber);
      records[i].InstanceName = automation::NewBstr(couples[i].InstanceName);
      records[i].Row = static_cast<short>(int{couples[i].Row});
    }
  }
  ~Records() { SafeArrayDestroy(array_); }
  Records(const Records&) = delete;
  Records& operator=(const Records&) = delete;

  SAFEARRAY** operator&() noexcept { return &array_; }
  std::vector<std::string> InstanceNames() const {
    const auto* const records = static_cast<const ::PN_IN_Couple*>(array_->pvData);
    std::vector<std::string> names;
    for (ULONG i = 0; i < array_->rgsabound[0].cElements; ++i) {
      names.push_back(automation::FromBstr(records[i].InstanceName));
    }
    return names;
  }

 private:
  static ComPtr<ITypeInfo> RecordType() {
    std::wstring name = L"PN_IN_Couple";
    ComPtr<ITypeInfo> type;
    MEMBERID member = 0;
    USHORT count = 1;
    automation::TypeLibrary()->FindName(name.data(), 0, &type, &member, &count);
    return type;
  }

  SAFEARRAY* array_ = nullptr;
};

class RecordsOfAWorkbook : public testing::Test {
 protected:
  RecordsOfAWorkbook() { application->Workbooks()->Add(); }

  HRESULT Rename(VARIANT_BOOL& result) {
    auto excel = automation::Outgoing(Ref<excel::Application>(application));
    auto* object = excel.Get();
    LONG count = 2;
    return Client("Cls_HashTable")
        .As<::_Cls_HashTable>()
        ->RenameDoublesWithHashTable(&records, &count, &object, &result);
  }

  TestPlatform platform;
  Ref<PaperSpreadsheet> application = MakeRef<PaperSpreadsheet>();
  Records records{{{"BOLT", "BOLT.1", 5}, {"BOLT", "BOLT.1", 6}}};
};

TEST_F(RecordsOfAWorkbook, AreRenamedWhereTheyAreDoubled) {
  VARIANT_BOOL result = VARIANT_FALSE;

  EXPECT_EQ(Rename(result), S_OK);

  EXPECT_EQ(result, VARIANT_TRUE);
  EXPECT_THAT(application->done, Contains(StartsWith("2!D6=BOLT.1")));
}

TEST_F(RecordsOfAWorkbook, ComeBackAsTheyWentIn) {
  VARIANT_BOOL result = VARIANT_FALSE;

  Rename(result);

  EXPECT_THAT(records.InstanceNames(), ElementsAre("BOLT.1", "BOLT.1"));
}

TEST_F(RecordsOfAWorkbook, ComeInALateBoundCallToo) {
  Value array;
  array.Raw().vt = VT_BYREF | VT_ARRAY | VT_RECORD;
  array.Raw().pparray = &records;

  const auto outcome = Client("Cls_HashTable")
                           .Call("RenameDoublesWithHashTable", std::move(array), 2,
                                 automation::Outgoing(Ref<excel::Application>(application)));

  EXPECT_EQ(outcome.Given(), Variant(true));
  EXPECT_THAT(application->done, Contains(StartsWith("2!D6=BOLT.1")));
}

}  // namespace
}  // namespace quintara::test

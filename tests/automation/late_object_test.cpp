#include "automation/dispatch/late_object.h"

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

#include "access/contracts/zorva.h"
#include "automation/dispatch/failures.h"
#include "automation/dispatch/late_bound.h"
#include "automation/dispatch/text16.h"

namespace quintara::automation {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// An object of some other program, which does what a test says.
class Foreign final : public IDispatch {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID kind, void** given) override {
    const bool isKnown = kind == IID_IUnknown || kind == IID_IDispatch;
    *given = isKnown ? static_cast<IDispatch*>(this) : nullptr;
    if (isKnown) AddRef();
    return isKnown ? S_OK : E_NOINTERFACE;
  }
  // It stands on the test's stack.
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
  ULONG STDMETHODCALLTYPE Release() override { return --references; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* /*count*/) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** /*info*/) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT /*count*/, LCID /*locale*/,
                                          DISPID* ids) override {
    asked.push_back(Narrow(std::wstring_view(names[0])));
    if (asked.back() == absent) return DISP_E_UNKNOWNNAME;
    ids[0] = 7;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID /*reserved*/, LCID /*locale*/, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* details, UINT* /*faulty*/) override {
    invoked.push_back(id);
    usedFlags = flags;
    return answer(parameters, result, details);
  }

  std::string absent;
  std::vector<std::string> asked;
  std::vector<DISPID> invoked;
  WORD usedFlags = 0;
  ULONG references = 1;
  std::function<HRESULT(DISPPARAMS*, VARIANT*, EXCEPINFO*)> answer = [](DISPPARAMS*, VARIANT*, EXCEPINFO*) {
    return S_OK;
  };
};

class ALateObject : public testing::Test {
 protected:
  LateObject Of(Foreign& which, const char* kind = "Product", bool sharesIds = true) {
    return LateObject(ComPtr<IDispatch>(&which), connection, kind, sharesIds);
  }
  template <class... Arguments>
  Value Invoke(Use use, Arguments... arguments) {
    std::array<Value, sizeof...(Arguments)> values{Value(arguments)...};
    return Of(foreign).Invoke("Member", use, values);
  }
  Failure FailureOf(HRESULT result, std::function<void(EXCEPINFO&)> fill = {}) {
    foreign.answer = [=](DISPPARAMS*, VARIANT*, EXCEPINFO* details) {
      if (fill) fill(*details);
      return result;
    };
    try {
      Invoke(Use::kCall);
    } catch (const Failure& failure) {
      return failure;
    }
    ADD_FAILURE() << "no failure";
    return Failure(0, "none");
  }

  Foreign foreign;
  std::shared_ptr<Connection> connection = std::make_shared<Connection>();
};

TEST_F(ALateObject, GetsItsArgumentsTheLastOneFirst) {
  std::vector<long> seen;
  foreign.answer = [&](DISPPARAMS* parameters, VARIANT*, EXCEPINFO*) {
    for (UINT i = 0; i < parameters->cArgs; ++i) seen.push_back(parameters->rgvarg[i].lVal);
    return S_OK;
  };

  Invoke(Use::kCall, std::int32_t{1}, std::int32_t{2}, std::int32_t{3});

  EXPECT_THAT(seen, ElementsAre(3, 2, 1));
}

TEST_F(ALateObject, IsWrittenToByTheNameOfTheValue) {
  DISPID named = 0;
  foreign.answer = [&](DISPPARAMS* parameters, VARIANT*, EXCEPINFO*) {
    if (parameters->cNamedArgs == 1) named = parameters->rgdispidNamedArgs[0];
    return S_OK;
  };

  Invoke(Use::kPut, true);

  EXPECT_EQ(named, DISPID_PROPERTYPUT);
  EXPECT_EQ(foreign.usedFlags, DISPATCH_PROPERTYPUT);
}

TEST_F(ALateObject, SetsAnObjectByReferenceToo) {
  Invoke(Use::kPut, ComPtr<IDispatch>(&foreign));

  EXPECT_EQ(foreign.usedFlags, DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF);
}

TEST_F(ALateObject, GivesWhatIsGiven) {
  foreign.answer = [](DISPPARAMS*, VARIANT* result, EXCEPINFO*) {
    *result = Value(2.5).Release();
    return S_OK;
  };

  EXPECT_EQ(ToVariant(Invoke(Use::kCall).Raw(), nullptr), Variant(2.5));
}

TEST_F(ALateObject, AsksForAnIdOnceForAllOfItsKind) {
  Foreign second;

  Of(foreign).Invoke("Member", Use::kCall, {});
  Of(second).Invoke("Member", Use::kCall, {});

  EXPECT_EQ(foreign.asked.size() + second.asked.size(), 1U);
  EXPECT_THAT(second.invoked, ElementsAre(7));
}

TEST_F(ALateObject, AsksForItselfWhereAKindIsNone) {
  Foreign second;

  Of(foreign, "AnyObject", false).Invoke("Member", Use::kCall, {});
  Of(second, "AnyObject", false).Invoke("Member", Use::kCall, {});

  EXPECT_EQ(second.asked.size(), 1U);
}

TEST_F(ALateObject, LetsGoOfTheObject) {
  { Of(foreign).Invoke("Member", Use::kCall, {}); }

  EXPECT_EQ(foreign.references, 1U);
}

TEST_F(ALateObject, FailsWithTheNumberAndTextOfItsProgram) {
  const auto failure = FailureOf(DISP_E_EXCEPTION, [](EXCEPINFO& details) {
    details.scode = static_cast<SCODE>(0x800A0035U);
    details.bstrDescription = NewBstr("no such file");
  });

  EXPECT_EQ(failure.Number(), 53);
  EXPECT_EQ(failure.Description(), "Product.Member: no such file");
}

TEST_F(ALateObject, FailsWithTheCodeWhereThereIsNoResult) {
  const auto failure = FailureOf(DISP_E_EXCEPTION, [](EXCEPINFO& details) { details.wCode = 1004; });

  EXPECT_EQ(failure.Number(), 1004);
}

TEST_F(ALateObject, FailsWithAResultOfItsProgramUnchanged) {
  const auto own = static_cast<HRESULT>(0x80041234U);

  const auto failure = FailureOf(DISP_E_EXCEPTION, [&](EXCEPINFO& details) { details.scode = own; });

  EXPECT_EQ(failure.Number(), own);
  EXPECT_THAT(failure.Description(), HasSubstr("Product.Member: "));
  EXPECT_EQ(ResultOf(failure), own);
}

TEST_F(ALateObject, FailsWithTextsThatComeWhenTheyAreAskedFor) {
  const auto failure = FailureOf(DISP_E_EXCEPTION, [](EXCEPINFO& details) {
    details.pfnDeferredFillIn = [](EXCEPINFO* deferred) {
      deferred->bstrDescription = NewBstr("told late");
      deferred->scode = static_cast<SCODE>(0x800A0005U);
      return S_OK;
    };
  });

  EXPECT_EQ(failure.Number(), 5);
  EXPECT_EQ(failure.Description(), "Product.Member: told late");
}

TEST_F(ALateObject, FailsWith462WhenItsProgramIsGone) {
  for (const auto result : {HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE), HRESULT_FROM_WIN32(RPC_S_CALL_FAILED),
                            HRESULT(RPC_E_DISCONNECTED)}) {
    EXPECT_EQ(FailureOf(result).Number(), failure::kServerGone);
  }
}

TEST_F(ALateObject, FailsWith438WithoutTheMember) {
  foreign.absent = "Member";

  const auto failure = FailureOf(S_OK);

  EXPECT_EQ(failure.Number(), failure::kNoSuchMember);
  EXPECT_THAT(failure.Description(), HasSubstr("Product.Member"));
  EXPECT_THAT(foreign.invoked, testing::IsEmpty());
}

TEST(AResult, IsTheNumberOfARunTimeErrorInItsPlace) {
  EXPECT_EQ(ResultOf(Failure(91)), static_cast<HRESULT>(0x800A005BU));
  EXPECT_EQ(ResultOf(std::runtime_error("anything else")), E_FAIL);
}

TEST(AnAdapter, IsAnotherKindOnlyWhereItHasWhatTellsIt) {
  Foreign foreign;
  foreign.absent = "PartNumber";
  const auto object = Incoming(ComPtr<IDispatch>(&foreign), nullptr);

  EXPECT_FALSE(object->AsProduct());
  EXPECT_TRUE(object->AsProducts());
}

TEST(AnAdapter, IsOneForAnObjectOfAKind) {
  Foreign foreign;
  const auto connection = std::make_shared<Connection>();
  const auto first = Adapt<zorva::Product>(ComPtr<IDispatch>(&foreign), connection);

  const auto second = Adapt<zorva::Product>(ComPtr<IDispatch>(&foreign), connection);
  const auto other = Adapt<zorva::Products>(ComPtr<IDispatch>(&foreign), connection);

  EXPECT_EQ(first, second);
  EXPECT_NE(static_cast<AnyObject*>(&*first), static_cast<AnyObject*>(&*other));
}

TEST(AnAdapter, OfAnObjectThatWasLetGoIsMadeAnew) {
  Foreign foreign;
  const auto connection = std::make_shared<Connection>();
  Adapt<zorva::Product>(ComPtr<IDispatch>(&foreign), connection);

  EXPECT_TRUE(Adapt<zorva::Product>(ComPtr<IDispatch>(&foreign), connection));

  EXPECT_EQ(foreign.references, 1U);
}

TEST(AnAdapter, GoesOutAsTheObjectBehindIt) {
  Foreign foreign;
  const auto object = Incoming(ComPtr<IDispatch>(&foreign), nullptr);

  EXPECT_EQ(Outgoing(object).Get(), &foreign);
}

TEST(AnAdapter, OfAPositionTakesAnArrayThatWasPutInThePlaceOfItsOwn) {
  Foreign foreign;
  foreign.answer = [](DISPPARAMS* parameters, VARIANT*, EXCEPINFO*) {
    auto& place = *parameters->rgvarg[0].pparray;
    SafeArrayDestroy(place);
    place = SafeArrayCreateVector(VT_R8, 1, 12);
    static_cast<double*>(place->pvData)[9] = 42;
    return S_OK;
  };
  std::array<double, 12> components{};

  Adapt<zorva::Position>(ComPtr<IDispatch>(&foreign), nullptr)->GetComponents(components);

  EXPECT_EQ(components[9], 42);
}

TEST(AnAdapter, OfAPositionTakesAnArrayThatIsTheResult) {
  Foreign foreign;
  foreign.answer = [](DISPPARAMS*, VARIANT* result, EXCEPINFO*) {
    std::array<double, 12> given{};
    given[3] = 7;
    *result = Value(std::span<const double>(given)).Release();
    return S_OK;
  };
  std::array<double, 12> components{};

  Adapt<zorva::Position>(ComPtr<IDispatch>(&foreign), nullptr)->GetComponents(components);

  EXPECT_EQ(components[3], 7);
}

}  // namespace
}  // namespace quintara::automation

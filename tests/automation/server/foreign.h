#pragma once

#include <atomic>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "automation/dispatch/com.h"
#include "automation/dispatch/text16.h"
#include "automation/server/client.h"

namespace quintara::test {

/// An object of some other program, whose members do what a test says.
class Foreign final : public IDispatch {
 public:
  /// Does what `member` is for; `result` takes what that gives, `details` what went wrong.
  using Answer =
      std::function<HRESULT(const std::string& member, DISPPARAMS& given, VARIANT& result, EXCEPINFO& details)>;

  static ComPtr<Foreign> New(Answer answer) { return new Foreign(std::move(answer)); }
  /// One that has every member, each of which gives `value`.
  static ComPtr<Foreign> Giving(const std::string& value) {
    return New([value](const std::string&, DISPPARAMS&, VARIANT& result, EXCEPINFO&) {
      result = Value(value).Release();
      return S_OK;
    });
  }
  /// One whose members fail with an error of its own.
  static ComPtr<Foreign> Failing(HRESULT code, const std::string& description) {
    return New([=](const std::string&, DISPPARAMS&, VARIANT&, EXCEPINFO& details) {
      details.scode = code;
      details.bstrDescription = automation::NewBstr(description);
      return DISP_E_EXCEPTION;
    });
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID kind, void** given) override {
    const bool isKnown = kind == IID_IUnknown || kind == IID_IDispatch;
    *given = isKnown ? static_cast<IDispatch*>(this) : nullptr;
    if (isKnown) AddRef();
    return isKnown ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const auto left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** /*info*/) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT /*count*/, LCID /*locale*/,
                                          DISPID* ids) override {
    names_.push_back(Narrow(std::wstring_view(names[0])));
    ids[0] = static_cast<DISPID>(names_.size());
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID /*reserved*/, LCID /*locale*/, WORD /*flags*/, DISPPARAMS* given,
                                   VARIANT* result, EXCEPINFO* details, UINT* /*faulty*/) override {
    const auto member = names_[static_cast<std::size_t>(id) - 1];
    calls.push_back(member);
    Value unwanted;
    EXCEPINFO untold{};
    return answer_(member, *given, result ? *result : unwanted.Raw(), details ? *details : untold);
  }

  std::vector<std::string> calls;

 private:
  explicit Foreign(Answer answer) : answer_(std::move(answer)) {}
  ~Foreign() = default;

  Answer answer_;
  std::vector<std::string> names_;
  std::atomic<ULONG> references_ = 0;
};

inline Value Passed(const ComPtr<Foreign>& object) {
  return Value(ComPtr<IDispatch>(object));
}

}  // namespace quintara::test

#pragma once

#include <algorithm>
#include <atomic>
#include <exception>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include "automation/dispatch/operation.h"
#include "automation/server/argument.h"
#include "automation/server/errors.h"
#include "automation/server/interface.h"
#include "automation/server/invocation.h"
#include "automation/server/methods.h"
#include "automation/server/module.h"
#include "automation/server/running_command.h"

namespace quintara::automation {

/// An object of the public class `ClassName`: its dual interface over an object of `Logic`. A class derives from it
/// with a line for each method. Whatever a method throws goes to its caller, with the class's program name as source.
template <Literal ClassName, class Interface, class Logic>
class PublicObject : public Interface, public ISupportErrorInfo {
 public:
  PublicObject() = default;
  PublicObject(const PublicObject&) = delete;
  PublicObject& operator=(const PublicObject&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID asked, void** given) override {
    if (!given) return E_POINTER;
    *given = nullptr;
    if (asked == IID_IUnknown || asked == IID_IDispatch || asked == __uuidof(Interface)) {
      *given = static_cast<Interface*>(this);
    } else if (asked == IID_ISupportErrorInfo) {
      *given = static_cast<ISupportErrorInfo*>(this);
    } else {
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const auto left = --references_;
    if (left == 0) delete this;
    return left;
  }

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    if (!count) return E_POINTER;
    *count = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID /*locale*/, ITypeInfo** info) override {
    if (!info) return E_POINTER;
    *info = nullptr;
    if (index != 0) return DISP_E_BADINDEX;
    return Guarded([&] { *info = TypeOf(__uuidof(Interface)).Detach(); });
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT count, LCID /*locale*/,
                                          DISPID* ids) override {
    if (count == 0) return S_OK;
    if (!names || !ids) return E_POINTER;
    auto result = E_FAIL;
    const auto guarded = Guarded([&] { result = AllMethods().IdsOf(names, count, ids); });
    return FAILED(guarded) ? guarded : result;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID /*reserved*/, LCID /*locale*/, WORD flags, DISPPARAMS* given,
                                   VARIANT* result, EXCEPINFO* details, UINT* faulty) override {
    if (!given) return E_POINTER;
    auto called = E_FAIL;
    const auto guarded = Guarded([&] {
      called = InvokeMethod(static_cast<Interface*>(this), AllMethods(), id, flags, *given, result, details, faulty);
    });
    return FAILED(guarded) ? guarded : called;
  }

  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID asked) override {
    return asked == __uuidof(Interface) ? S_OK : S_FALSE;
  }

 protected:
  virtual ~PublicObject() = default;

  /// Calls a method of the class behind with the caller's references.
  template <auto Member, class... Given>
  HRESULT Do(Given... given) noexcept {
    return Guarded([&] { Call(Member, given...); });
  }
  /// The same for a method that gives a result.
  template <auto Member, class Result, class... Given>
  HRESULT Answer(Result* result, Given... given) noexcept {
    return Guarded([&] { Give(result, Call(Member, given...)); });
  }
  /// The same for a command, which fails, and does nothing, while another one runs.
  template <auto Member, class... Given>
  HRESULT Command(Given... given) noexcept {
    return Guarded([&] {
      const RunningCommand running(kProgramName);
      Call(Member, given...);
    });
  }

 private:
  static constexpr auto kProgramText = [] {
    constexpr std::string_view server = "Quintara.";
    std::array<char, server.size() + sizeof ClassName.text> text{};
    std::ranges::copy(ClassName.text, std::ranges::copy(server, text.begin()).out);
    return text;
  }();
  static constexpr std::string_view kProgramName{kProgramText.data()};

  static const Methods& AllMethods() {
    static const Methods methods(__uuidof(Interface));
    return methods;
  }

  // Its caller may let it go in the midst of a call.
  template <class Body>
  HRESULT Guarded(Body&& body) noexcept {
    const ComPtr<IDispatch> kept(static_cast<Interface*>(this));
    try {
      body();
      return S_OK;
    } catch (const std::exception& error) {
      return LeaveError(error, kProgramName, __uuidof(Interface));
    } catch (...) {
      return LeaveError(std::runtime_error("Unknown error"), kProgramName, __uuidof(Interface));
    }
  }

  template <class Class, class Result, class... Taken, class... Given>
  Result Call(Result (Class::*member)(Taken...), Given... given) {
    std::tuple<Argument<Taken>...> arguments(given...);
    return std::apply([&](auto&... taken) -> Result { return (logic_.*member)(taken.Get()...); }, arguments);
  }
  template <class Class, class Result, class... Taken, class... Given>
  Result Call(Result (Class::*member)(Taken...) const, Given... given) {
    std::tuple<Argument<Taken>...> arguments(given...);
    return std::apply([&](auto&... taken) -> Result { return (logic_.*member)(taken.Get()...); }, arguments);
  }

  ModuleUse use_;
  std::atomic<ULONG> references_ = 0;
  Logic logic_;
};

}  // namespace quintara::automation

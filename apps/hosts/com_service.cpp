#include "hosts/com_service.h"

#include <array>
#include <atomic>
#include <exception>
#include <string>
#include <utility>

#include "automation/dispatch/failures.h"

namespace quintara::hosts {
namespace {

using automation::ComPtr;

void Require(HRESULT result, const ServedName& name, const char* what) {
  if (SUCCEEDED(result)) return;
  std::array<char, 16> digits{};
  std::snprintf(digits.data(), digits.size(), "0x%08X", static_cast<unsigned>(result));
  throw Failure(failure::kInternal,
                std::string("\"") + name.programName + "\" can't be " + what + ": error " + digits.data());
}

}  // namespace

class ComService::Factory final : public IClassFactory {
 public:
  Factory(ComService& service, Maker make) : service_(service), make_(std::move(make)) {}
  Factory(const Factory&) = delete;
  Factory& operator=(const Factory&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID asked, void** given) override {
    if (!given) return E_POINTER;
    *given = nullptr;
    if (asked != IID_IUnknown && asked != IID_IClassFactory) return E_NOINTERFACE;
    *given = static_cast<IClassFactory*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const auto left = --references_;
    if (left == 0) delete this;
    return left;
  }

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID asked, void** given) override {
    if (!given) return E_POINTER;
    *given = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    if (service_.calls_.IsBusy()) return RPC_E_SERVERCALL_RETRYLATER;
    try {
      ++service_.created_;
      return make_()->QueryInterface(asked, given);
    } catch (const std::exception& error) {
      return automation::ResultOf(error);
    }
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
    service_.locks_ += lock ? 1 : -1;
    return S_OK;
  }

 private:
  ~Factory() = default;

  ComService& service_;
  Maker make_;
  std::atomic<ULONG> references_ = 0;
};

ComService::~ComService() {
  Withdraw();
  for (const auto& [name, running] : running_) RevokeActiveObject(running.cookie, nullptr);
}

void ComService::Withdraw() {
  for (const auto cookie : std::exchange(offered_, {})) CoRevokeClassObject(cookie);
}

void ComService::Publish(const ServedName& name, ComPtr<IDispatch> object) {
  DWORD cookie = 0;
  if (const auto before = running_.find(&name); before != running_.end()) {
    RevokeActiveObject(before->second.cookie, nullptr);
    running_.erase(before);
  }
  Require(RegisterActiveObject(object.Get(), name.clsid, ACTIVEOBJECT_STRONG, &cookie), name, "made a running object");
  running_[&name] = {std::move(object), cookie};
}

void ComService::Offer(const ServedName& name, Maker make) {
  const ComPtr<IClassFactory> factory(new Factory(*this, std::move(make)));
  DWORD cookie = 0;
  Require(CoRegisterClassObject(name.clsid, factory.Get(), CLSCTX_LOCAL_SERVER, REGCLS_MULTIPLEUSE, &cookie), name,
          "offered");
  offered_.push_back(cookie);
}

bool IsRunningElsewhere(const ServedName& name) {
  ComPtr<IUnknown> found;
  if (FAILED(GetActiveObject(name.clsid, nullptr, &found)) || !found) return false;
  // What a process that has died left behind doesn't answer.
  ComPtr<IDispatch> object;
  return SUCCEEDED(found.As(&object));
}

}  // namespace quintara::hosts

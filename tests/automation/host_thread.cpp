#include "automation/host_thread.h"

#include <objbase.h>

#include <stdexcept>

namespace quintara::test {
namespace {

using automation::ComPtr;
using Task = std::packaged_task<void()>;

constexpr UINT kRun = WM_APP;

void Require(HRESULT result, const char* what) {
  if (FAILED(result)) throw std::runtime_error(what);
}

}  // namespace

HostThread& HostThread::Shared() {
  static auto* const thread = new HostThread;
  return *thread;
}

HostThread::HostThread() {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  thread_ = std::thread([this] {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    MSG message;
    PeekMessageW(&message, nullptr, WM_USER, WM_USER, PM_NOREMOVE);  // makes the queue
    started_.set_value(GetCurrentThreadId());
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
      if (message.hwnd == nullptr && message.message == kRun) {
        (*reinterpret_cast<Task*>(message.lParam))();
      } else {
        DispatchMessageW(&message);
      }
    }
  });
  thread_.detach();
  id_ = started_.get_future().get();
}

void HostThread::Run(const std::function<void()>& body) {
  Task task(body);
  auto done = task.get_future();
  PostThreadMessageW(id_, kRun, 0, reinterpret_cast<LPARAM>(&task));
  done.get();
}

void HostThread::RunWith(const Ref<AnyObject>& adapter, const std::function<void(const Ref<AnyObject>&)>& body) {
  auto way = SentOut(automation::Outgoing(adapter));
  Run([&] { body(automation::OwnObject(Received(way))); });
}

ComPtr<IStream> HostThread::SentOut(const ComPtr<IDispatch>& object) {
  ComPtr<IStream> way;
  Require(CoMarshalInterThreadInterfaceInStream(IID_IDispatch, object.Get(), &way), "an object can't be sent out");
  return way;
}

ComPtr<IDispatch> HostThread::Received(ComPtr<IStream>& way) {
  ComPtr<IDispatch> object;
  Require(CoGetInterfaceAndReleaseStream(way.Detach(), IID_PPV_ARGS(&object)), "an object can't be received");
  return object;
}

}  // namespace quintara::test

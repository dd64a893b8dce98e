#pragma once

#include <functional>
#include <future>
#include <memory>
#include <thread>

#include "access/contracts/any_object.h"
#include "automation/dispatch/com.h"
#include "automation/dispatch/late_bound.h"

namespace quintara::test {

/// A thread that objects belong to, so that another thread reaches them as those of another program: through the
/// operating system, by late binding.
class HostThread {
 public:
  /// The one thread of the program, which lasts as long: some systems serve no more than 63 of them in its life.
  static HostThread& Shared();

  HostThread(const HostThread&) = delete;
  HostThread& operator=(const HostThread&) = delete;

  /// Runs `body` on the thread and waits for it. What it throws comes out.
  void Run(const std::function<void()>& body);
  /// The object that `make` gives on the thread, as another program sees it.
  template <class Contract>
  Ref<Contract> Served(const std::function<Ref<Contract>()>& make) {
    automation::ComPtr<IStream> way;
    Run([&] { way = SentOut(automation::Outgoing(make())); });
    return automation::Adapt<Contract>(Received(way), nullptr);
  }
  /// Runs `body` on the thread with the object behind an adapter.
  void RunWith(const Ref<AnyObject>& adapter, const std::function<void(const Ref<AnyObject>&)>& body);

 private:
  HostThread();

  static automation::ComPtr<IStream> SentOut(const automation::ComPtr<IDispatch>& object);
  static automation::ComPtr<IDispatch> Received(automation::ComPtr<IStream>& way);

  std::promise<DWORD> started_;
  std::thread thread_;
  DWORD id_ = 0;
};

}  // namespace quintara::test

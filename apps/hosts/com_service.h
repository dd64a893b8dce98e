#pragma once

#include <functional>
#include <map>
#include <vector>

#include "automation/dispatch/com.h"
#include "base/ref.h"
#include "hosts/call_counter.h"
#include "hosts/served_names.h"

namespace quintara::hosts {

/// What the process offers to others: running objects and makers of objects, until it goes. On the thread that it was
/// made on.
class ComService {
 public:
  using Maker = std::function<automation::ComPtr<IDispatch>()>;

  explicit ComService(const CallCounter& calls) : calls_(calls) {}
  ~ComService();
  ComService(const ComService&) = delete;
  ComService& operator=(const ComService&) = delete;

  /// Makes `object` the running one of a name, in place of what it published before.
  void Publish(const ServedName& name, automation::ComPtr<IDispatch> object);
  /// Lets others create objects under a name.
  void Offer(const ServedName& name, Maker make);
  /// Offers no making any more.
  void Withdraw();

  /// How many objects others have created so far.
  long Created() const noexcept { return created_; }
  /// How often others have asked to keep the process alive, more than they have let it go.
  long Locks() const noexcept { return locks_; }
  /// How many objects it holds in the table of running objects.
  std::size_t Published() const noexcept { return running_.size(); }

 private:
  class Factory;

  struct Running {
    automation::ComPtr<IDispatch> object;
    DWORD cookie;
  };

  const CallCounter& calls_;
  std::map<const ServedName*, Running> running_;
  std::vector<DWORD> offered_;
  long created_ = 0;
  long locks_ = 0;
};

/// Whether another process has a running object of that name.
bool IsRunningElsewhere(const ServedName& name);

}  // namespace quintara::hosts

#pragma once

#include <sstream>
#include <string>

#include "access/contracts/any_object.h"
#include "automation/calls/request_counter.h"

namespace quintara::bench {

/// Counts the requests to the thread that it is made on, from its last renaming on. Its name tells them.
class CounterItem final : public AnyObject {
 public:
  std::string Name() override {
    std::ostringstream told;
    const auto& counts = counter_.Counted();
    told << counts.invocations << ' ' << counts.names << ' ' << counts.others;
    return told.str();
  }
  void SetName(const std::string& /*name*/) override { counter_.Reset(); }

 private:
  test::RequestCounter counter_;
};

/// The other side of one: what `work` takes.
template <class Work>
test::RequestCounter::Counts RequestsOf(const Ref<AnyObject>& counter, Work&& work) {
  const auto read = [&] {
    std::istringstream told(counter->Name());
    test::RequestCounter::Counts counts;
    told >> counts.invocations >> counts.names >> counts.others;
    return counts;
  };
  counter->SetName("from here on");
  const auto ofReading = read();
  counter->SetName("from here on");
  work();
  auto counts = read();
  counts.invocations -= ofReading.invocations;
  counts.names -= ofReading.names;
  counts.others -= ofReading.others;
  return counts;
}

}  // namespace quintara::bench

#pragma once

#include <string>
#include <vector>

#include "hosts/vault/contract/fixture.h"

namespace quintara::test {

/// A test whose vault has parts in each state, and that asks in which of them something is refused.
template <class Base>
class WithStates : public Base {
 protected:
  Ref<VdObject> PartIn(int state) {
    const auto part = this->AddPart("PART" + std::to_string(++number_));
    if (state == 1 || state == 2) this->CheckIn(part);
    if (state == 2) this->CheckOut(part);
    if (state == 3 || state == 4) this->Release(part);
    if (state == 4) this->Util()->Obsolete(part, nullptr, false);
    EXPECT_EQ(this->StateOf(part), state);
    return part;
  }
  /// The states in which `operation` is refused, each time with the object left as it was.
  template <class Operation>
  std::vector<int> RefusedIn(Operation&& operation) {
    std::vector<int> refused;
    for (int state = 0; state <= 4; ++state) {
      const auto part = PartIn(state);
      const auto before = this->Dump();
      if (FailureOf([&] { operation(part); }).Number() == 0) continue;
      refused.push_back(state);
      EXPECT_EQ(this->Dump(), before);
    }
    return refused;
  }

 private:
  int number_ = 0;
};

}  // namespace quintara::test

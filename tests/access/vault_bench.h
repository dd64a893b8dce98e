#pragma once

#include "access/access_fixture.h"
#include "access/utils/Cls_Utils.h"
#include "hosts/vault/vault_fixture.h"

namespace quintara::test {

/// A vault with two further classes, "Rack" and "Cabinet", whose session is that of the process.
template <class Maker>
class VaultOn : public testing::Test, protected AccessBench, public VaultBase {
 protected:
  VaultOn() : VaultBase(Maker::NewConnection()) {
    auto plan = Plan();
    plan.furtherClasses = {"Rack", "Cabinet"};
    InitVault(plan, *files);
    Open();
    session = Session();
    Process().gSession = session;
  }

  // Runs `body` with each of its calls failing once, as often as it has calls; gives that number.
  template <class Body>
  int FailingEachCall(Body&& body) {
    gate->StartRecording();
    body(0);
    const int calls = gate->Calls();
    gate->Reset();
    for (int n = 1; n <= calls; ++n) {
      gate->FailCall(n);
      body(n);
      EXPECT_TRUE(gate->HasFailed()) << n;
      gate->Reset();
    }
    return calls;
  }

  Ref<veldora::VdSession> session;
  Cls_Utils utils;
};

using WithVault = VaultOn<OnSqlite>;

}  // namespace quintara::test

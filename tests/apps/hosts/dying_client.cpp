#include "apps/hosts/hosts_process.h"

// A program that uses the CAD host and dies, with objects of it in its hands.
int main() {
  using namespace quintara;
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  const auto cad = test::HostsProcess::Attach<zorva::Application>("ZORVA.Application");
  const auto product = cad->Documents()->Add("ZVAProduct")->AsProductDocument()->Product();
  TerminateProcess(GetCurrentProcess(), product->PartNumber() == "Product1" ? 7 : 1);
  return 0;
}

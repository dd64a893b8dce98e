#include "hosts/served_names.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "base/text16_windows.h"

namespace quintara::hosts {
namespace {

constexpr std::array kNames = {
    ServedName{"Veldora.VdApplication",
               "the vault",
               {0x88c797d7, 0xbada, 0x4e80, {0x92, 0x13, 0xfc, 0xc1, 0x9b, 0x23, 0xab, 0x0b}},
               Host::kVault,
               true,
               false,
               false},
    ServedName{"Veldora.VdClientContext",
               "the vault's configuration",
               {0xd54c1362, 0xb649, 0x4783, {0xa0, 0x7d, 0xe4, 0x92, 0x09, 0x41, 0x2b, 0xbe}},
               Host::kVault,
               false,
               true,
               true},
    ServedName{"Veldora.VdTranslator",
               "the vault's texts",
               {0x1d80186b, 0xbdf1, 0x4b98, {0xac, 0x67, 0x74, 0x45, 0x7b, 0x64, 0xa6, 0x28}},
               Host::kVault,
               false,
               true,
               true},
    ServedName{"ZORVA.Application",
               "the CAD host",
               {0xe06aaf06, 0xfea1, 0x4728, {0xac, 0x89, 0x65, 0xe1, 0x50, 0x90, 0xfb, 0x5f}},
               Host::kCad,
               true,
               true,
               true},
    ServedName{"Excel.Application",
               "workbooks in memory",
               {0xc6c15e4b, 0xa3b9, 0x4342, {0x8f, 0xad, 0x34, 0x0e, 0x5d, 0xc7, 0x9d, 0x4d}},
               Host::kExcel,
               false,
               true,
               true},
    ServedName{"QuintaraHosts.Control",
               "the control of these hosts",
               {0x519b45d3, 0xcddf, 0x459c, {0x98, 0x78, 0x87, 0x55, 0xb1, 0x49, 0x78, 0x65}},
               Host::kControl,
               true,
               true,
               false}};

}  // namespace

std::span<const ServedName> ServedNames() {
  return kNames;
}

const ServedName* FindServedName(std::string_view programName) {
  const auto wanted = Capitals(programName);
  const auto found =
      std::ranges::find_if(kNames, [&](const ServedName& name) { return Capitals(name.programName) == wanted; });
  return found == kNames.end() ? nullptr : &*found;
}

std::string TextOf(const CLSID& clsid) {
  std::array<wchar_t, 40> text{};
  StringFromGUID2(clsid, text.data(), static_cast<int>(text.size()));
  return Narrow(text.data());
}

}  // namespace quintara::hosts

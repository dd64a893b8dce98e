#pragma once

#include <span>
#include <string>
#include <string_view>

#include "automation/dispatch/com.h"

namespace quintara::hosts {

/// The hosts that a process may serve.
enum class Host { kVault, kCad, kExcel, kControl };

/// One program name under which objects of the hosts are found.
struct ServedName {
  const char* programName;
  const char* title;  ///< what a person reads of it
  CLSID clsid;
  Host host;
  bool isRunning;  ///< one object for all, in the table of running objects
  bool isCreated;  ///< others can create objects under it, or get the running one so
  bool isStarted;  ///< a local server, which automation starts where none runs
};

/// All of them.
std::span<const ServedName> ServedNames();
/// The one of a program name, without regard to case; null for none.
const ServedName* FindServedName(std::string_view programName);

/// "{0F0F...}".
std::string TextOf(const CLSID& clsid);

}  // namespace quintara::hosts

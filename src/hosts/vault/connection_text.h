#pragma once

#include <string>

namespace quintara::vault {

/// The password that a connection text of PostgreSQL names; empty without one.
std::string PasswordIn(const std::string& connection);
/// The connection text without it.
std::string WithoutPassword(const std::string& connection);

}  // namespace quintara::vault

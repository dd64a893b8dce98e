#pragma once

#include <string>

namespace quintara::vault {

/// What begins with "postgresql://" and goes on either as "KEY=VALUE ..." or as an address,
/// "USER:PASSWORD@HOST/DATABASE?KEY=VALUE&...". Anything else has no password.

/// Whether pairs stand behind the scheme, or nothing.
bool HoldsPairs(const std::string& connection);
/// The password that a connection text names, as the server is given it; empty without one.
std::string PasswordIn(const std::string& connection);
/// The connection text without it, and without that of a key.
std::string WithoutPassword(const std::string& connection);
/// A message about a connection, in which no password of the connection's text stands.
std::string WithoutSecretsOf(const std::string& connection, std::string message);

}  // namespace quintara::vault

#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace soci {
class session;
}

namespace quintara::vault {

/// A session with the PostgreSQL server of `connection`, which begins with `prefix`. Failures of the server come out as
/// 57, without the secrets of the connection. Fails with 5 where this program was built without such servers.
std::unique_ptr<soci::session> ConnectedToServer(const std::string& connection, std::string_view prefix);

}  // namespace quintara::vault

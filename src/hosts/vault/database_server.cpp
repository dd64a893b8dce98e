#include "hosts/vault/database_server.h"

#include <soci/soci.h>

#include "base/failure.h"
#include "hosts/vault/connection_text.h"
#include "hosts/vault/database_message.h"

extern "C" const soci::backend_factory* factory_postgresql();

namespace quintara::vault {

// Messages of the server's library may repeat pieces of the connection.
std::unique_ptr<soci::session> ConnectedToServer(const std::string& connection, std::string_view prefix) {
  const auto target = HoldsPairs(connection) ? connection.substr(prefix.size()) : connection;
  try {
    return std::make_unique<soci::session>(*factory_postgresql(), target);
  } catch (const soci::soci_error& error) {
    throw Failure(failure::kDeviceError, "The vault's database: " + WithoutSecretsOf(connection, MessageOf(error)));
  }
}

}  // namespace quintara::vault

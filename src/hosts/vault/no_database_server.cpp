#include <soci/soci.h>

#include "base/failure.h"
#include "hosts/vault/database_server.h"

namespace quintara::vault {

std::unique_ptr<soci::session> ConnectedToServer(const std::string& /*connection*/, std::string_view /*prefix*/) {
  throw Failure(failure::kInvalidCall, "Vaults on a database server can't be opened by this program");
}

}  // namespace quintara::vault

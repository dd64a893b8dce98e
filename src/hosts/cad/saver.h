#pragma once

#include <string>

#include "hosts/cad/session.h"

namespace quintara::cad {

/// Writes the document of `definition` as a product file and gives it that name. Fails, and
/// changes nothing, for what can't be saved.
void SaveProduct(Session& session, Definition& definition, const std::string& path);

}  // namespace quintara::cad

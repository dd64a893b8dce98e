#pragma once

#include <optional>
#include <string>

#include "access/contracts/integration.h"
#include "access/contracts/veldora.h"

namespace quintara {

/// The newest revision of the matrix document of a product. Two are equal where nothing was written between.
struct StoredMatrix {
  IntegrationVault::Identity identity;
  std::string description;
  std::string revision;
  int state = 0;
  std::string directory;  ///< names the content

  bool operator==(const StoredMatrix&) const = default;
};

/// What the newest revision of `product` has; nothing where it has none. It needs a session.
std::optional<StoredMatrix> FindStoredMatrix(const Ref<veldora::VdObject>& product);

/// "'as1 Matrix' (revision A, checked in)".
std::string Called(const StoredMatrix& matrix);
/// What became of it: "created", "updated", "unchanged", "none"; "not written" where it was taken to be
/// changed and is still so.
std::string ChangeText(const std::optional<StoredMatrix>& before, const std::optional<StoredMatrix>& after);

}  // namespace quintara

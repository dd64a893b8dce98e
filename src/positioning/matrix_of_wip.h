#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "access/contracts/platform.h"
#include "access/contracts/zorva.h"
#include "access/session/matrix_type.h"
#include "base/ref.h"

namespace quintara {

/// The matrix document of a work in progress.
struct MatrixIds {
  std::int16_t classId;
  std::int32_t objectId;
  MatrixType type;
};

/// The document that the root of a work in progress remembers, an XML file before a workbook; nothing, after a
/// message, where it remembers none. Failures go to the caller, 13 for an id that is no number.
std::optional<MatrixIds> MatrixIdsOf(const Ref<zorva::Product>& root);

/// Brings the file of the document's newest revision into the work directory and gives its path; nothing, after a
/// message, where that isn't possible. A document that isn't there is told in `styleWithoutDocument`. Failures go to
/// the caller.
std::optional<std::string> BringMatrix(const MatrixIds& ids, int styleWithoutDocument);

}  // namespace quintara

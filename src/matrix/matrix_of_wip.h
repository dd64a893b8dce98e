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

/// What the root of a work in progress remembers of its document of one form, -1 for an id that it lacks. Failures go
/// to the caller, 13 for an id that is no number.
MatrixIds MatrixIdsOf(const Ref<zorva::Product>& root, MatrixType type);

/// The document that the root of a work in progress remembers, an XML file before a workbook; nothing, after a
/// message, where it remembers none. Failures as above.
std::optional<MatrixIds> MatrixIdsOf(const Ref<zorva::Product>& root);

/// How a document is asked for what it holds.
enum class Reading { kAnew, kAsItIs };

/// Brings the file of the document's newest revision into the work directory and gives its path; nothing, after a
/// message, where that isn't possible. A document that isn't there is told in `styleWithoutDocument`. Failures go to
/// the caller.
std::optional<std::string> BringMatrix(const MatrixIds& ids, int styleWithoutDocument,
                                       Reading reading = Reading::kAnew);

}  // namespace quintara

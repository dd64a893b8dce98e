#include "geometry/part_file.h"

#include "base/text.h"
#include "geometry/light_file.h"
#include "geometry/step_file.h"

namespace quintara {

bool IsLightFile(const std::string& path) {
  return MatchesPattern("*.lwt", path);
}

PartShape LoadPartFile(const std::string& path, const Progress& progress) {
  if (IsLightFile(path)) return ReadLightFile(path, progress);
  if (!MatchesPattern("*.stp", path) && !MatchesPattern("*.step", path)) {
    throw Failure(failure::kInvalidFormat, path + ": is neither a STEP file nor a light file");
  }
  const Document document;
  ReadStep(path, document, progress);
  return PartShapeOf(document);
}

}  // namespace quintara

#include "base/failure.h"
#include "base/glb.h"
#include "hosts/cad/file_kind.h"

namespace quintara::cad {

std::string LightPartNumber(const std::string& bytes, const std::string& path) try {
  return PartNumberInGlb(bytes);
} catch (const Failure& failure) {
  ThrowUnreadable(path, failure.Description());
}

}  // namespace quintara::cad

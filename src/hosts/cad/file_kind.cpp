#include "hosts/cad/file_kind.h"

#include "base/failure.h"
#include "base/text.h"
#include "hosts/cad/cad_host.h"
#include "hosts/cad/product_file.h"

namespace quintara {
namespace cad {

void ThrowUnreadable(const std::string& path, const std::string& why) {
  throw Failure(failure::kInvalidFormat, "\"" + path + "\" can't be read: " + why);
}

std::optional<FileKind> KnownKind(const std::string& path) {
  if (path.find('\0') != path.npos || !IsUtf8(path)) return {};
  const auto extension = Capitals(FromPath(ToPath(path).extension()));
  if (extension == ".ZVAPRODUCT") return FileKind::kProduct;
  if (extension == ".STP" || extension == ".STEP") return FileKind::kStep;
  if (extension == ".LWT") return FileKind::kLight;
  return {};
}

FileKind KindOf(const std::string& path) {
  if (path.empty()) throw Failure(failure::kFileNotFound, "File not found: the path is empty");
  const auto kind = KnownKind(path);
  if (!kind) ThrowUnreadable(path, "it is no .ZVAProduct, .stp, .step or .lwt file");
  return *kind;
}

}  // namespace cad

std::string PartNumberOfFile(const std::string& path, FileContents& files) {
  const auto kind = cad::KindOf(path);
  const auto bytes = files.Read(path);
  if (kind == cad::FileKind::kStep) return cad::StepPartNumber(bytes, path);
  if (kind == cad::FileKind::kLight) return cad::LightPartNumber(bytes, path);
  return cad::ParseProductFile(bytes, path).partNumber;
}

}  // namespace quintara

#include "base/failure.h"
#include "hosts/vault/object_storage.h"
#include "hosts/vault/sequences.h"

namespace quintara::vault {
namespace {

const MaskInfo& MaskOf(const ClassInfo& info, const std::string& attribute) {
  const auto mask = info.masks.find(attribute);
  if (mask != info.masks.end()) return mask->second;
  throw Failure(failure::kInvalidCall,
                "The attribute " + attribute + " of the class \"" + info.name + "\" has no mask");
}

}  // namespace

bool IsIdentityTaken(Core& core, const ClassInfo& info, const std::string& identity) {
  return IntegerOf(core.Data().QueryOne(ColumnType::kInteger,
                                        "SELECT COUNT(*) FROM vd_object WHERE class_id = ? AND identity = ?",
                                        {std::int64_t{info.id}, identity})) != 0;
}

std::string NextMaskValue(Core& core, const ClassInfo& info, const std::string& name) {
  const auto& mask = MaskOf(info, name);
  if (mask.sequence.empty()) {
    throw Failure(failure::kInvalidCall,
                  "The attribute " + name + " of the class \"" + info.name + "\" has no sequence");
  }
  for (;;) {
    auto value = Padded(NextNumber(core.Data(), mask.sequence), mask.width);
    const bool isIdentity = info.IsVersioned() && name == attribute::kIdentity;
    if (!isIdentity || !IsIdentityTaken(core, info, value)) return value;
  }
}

std::string FirstMaskRevision(const ClassInfo& info, const std::string& attribute) {
  const auto& first = MaskOf(info, attribute).firstRevision;
  if (!first.empty()) return first;
  throw Failure(failure::kInvalidCall,
                "The attribute " + attribute + " of the class \"" + info.name + "\" is no revision");
}

}  // namespace quintara::vault

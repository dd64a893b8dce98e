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

std::string NextMaskValue(Core& core, const ClassInfo& info, const std::string& attribute) {
  const auto& mask = MaskOf(info, attribute);
  if (mask.sequence.empty()) {
    throw Failure(failure::kInvalidCall,
                  "The attribute " + attribute + " of the class \"" + info.name + "\" has no sequence");
  }
  return Padded(NextNumber(core.Data(), mask.sequence), mask.width);
}

std::string FirstMaskRevision(const ClassInfo& info, const std::string& attribute) {
  const auto& first = MaskOf(info, attribute).firstRevision;
  if (!first.empty()) return first;
  throw Failure(failure::kInvalidCall,
                "The attribute " + attribute + " of the class \"" + info.name + "\" is no revision");
}

}  // namespace quintara::vault

#include <utility>

#include "base/failure.h"
#include "hosts/vault/object_storage.h"
#include "hosts/vault/sequences.h"

namespace quintara::vault {
namespace {

SqlRow MaskRow(Core& core, const ClassInfo& info, const std::string& attribute) {
  auto rows = core.Data().Query("tit", "SELECT sequence_name, width, first_revision FROM vd_mask WHERE class_id = ? AND attribute = ?",
                                {std::int64_t{info.id}, attribute});
  if (!rows.empty()) return std::move(rows.front());
  throw Failure(failure::kInvalidCall, "The attribute " + attribute + " of the class \"" + info.name + "\" has no mask");
}

}  // namespace

bool HasMask(Core& core, const ClassInfo& info, const std::string& attribute) {
  return IntegerOf(core.Data().QueryOne(ColumnType::kInteger, "SELECT COUNT(*) FROM vd_mask WHERE class_id = ? AND attribute = ?",
                                        {std::int64_t{info.id}, attribute})) != 0;
}

std::string NextMaskValue(Core& core, const ClassInfo& info, const std::string& attribute) {
  const auto mask = MaskRow(core, info, attribute);
  const auto sequence = TextOf(mask[0]);
  if (sequence.empty()) {
    throw Failure(failure::kInvalidCall, "The attribute " + attribute + " of the class \"" + info.name + "\" has no sequence");
  }
  std::int32_t number = 0;
  core.InTransaction([&] { number = NextNumber(core.Data(), sequence); });
  return Padded(number, static_cast<int>(IntegerOf(mask[1])));
}

std::string FirstMaskRevision(Core& core, const ClassInfo& info, const std::string& attribute) {
  const auto first = TextOf(MaskRow(core, info, attribute)[2]);
  if (!first.empty()) return first;
  throw Failure(failure::kInvalidCall, "The attribute " + attribute + " of the class \"" + info.name + "\" is no revision");
}

}  // namespace quintara::vault

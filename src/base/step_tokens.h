#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace quintara {

/// The words of the first and of the last statement of a STEP file.
inline constexpr std::string_view kStepBegin = "ISO-10303-21";
inline constexpr std::string_view kStepEnd = "END-ISO-10303-21";

/// The number of an entity of a STEP file.
using StepId = std::uint64_t;

/// `bytes` without the byte order mark that some writers put in front.
std::string_view WithoutByteOrderMark(std::string_view bytes);

/// Takes the blanks and comments at the front of `rest` away; a comment without an end is all of it.
void SkipStepBlanks(std::string_view& rest);

/// Takes the text at the front of `rest` away, which begins with its quote, and gives what stands
/// between the quotes, doubled quotes included. A text without an end is all of `rest`.
std::string_view TakeStepText(std::string_view& rest);

/// Takes "#12" at the front of `rest` away; nothing, and nothing taken, when something else stands there.
std::optional<StepId> TakeStepReference(std::string_view& rest);

/// One parameter of an entity. A list, a number and the like are neither text nor reference.
struct StepParameter {
  std::optional<std::string_view> text;  ///< what stands between the quotes
  std::optional<StepId> reference;
};

/// One statement of a STEP file: `#12=NAME(...);`, or anything else, which has no `id`.
struct StepStatement {
  std::optional<StepId> id;
  std::string_view keyword;
  std::string_view parameters;  ///< what stands behind the keyword, the brackets included
};

/// Cuts the bytes of a STEP file into statements. Works in one pass whatever the bytes are.
class StepStatements {
 public:
  explicit StepStatements(std::string_view bytes) : rest_(bytes) {}

  /// False at the end, and where the file breaks off in the middle of a statement.
  bool Next(StepStatement& statement);

 private:
  std::string_view rest_;
};

/// The parameters of a statement, those of inner lists left out; as many as can be read.
std::vector<StepParameter> ParametersOf(const StepStatement& statement);

}  // namespace quintara

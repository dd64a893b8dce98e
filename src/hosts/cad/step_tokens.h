#pragma once

#include <string_view>
#include <vector>

namespace quintara::cad {

/// One parameter of an entity. A list, a number and the like are neither text nor reference.
struct StepParameter {
  enum class Kind { kOther, kText, kReference };

  Kind kind = Kind::kOther;
  std::string_view text;  ///< of a text what stands between the quotes, of a reference its digits
};

/// One statement of a STEP file: `#12=NAME(...);`, or anything else, whose `id` is empty.
struct StepStatement {
  std::string_view id;
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

}  // namespace quintara::cad

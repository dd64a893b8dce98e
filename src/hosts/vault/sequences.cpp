#include "hosts/vault/sequences.h"

#include <algorithm>
#include <limits>

#include "base/failure.h"

namespace quintara::vault {
namespace {

// Counts up in the digits from `first` to `last`; `carry` is put in front when all of them wrap.
std::string CountedUp(std::string text, char first, char last, char carry) {
  for (auto digit = text.rbegin(); digit != text.rend(); ++digit) {
    if (*digit != last) {
      ++*digit;
      return text;
    }
    *digit = first;
  }
  return carry + text;
}

bool IsMadeOf(const std::string& text, char first, char last) {
  return !text.empty() && std::ranges::all_of(text, [&](char one) { return one >= first && one <= last; });
}

}  // namespace

std::int32_t NextNumber(Database& database, const std::string& sequence) {
  const auto next = IntegerOf(database.QueryOne(
      ColumnType::kInteger, "UPDATE vd_sequence SET next_value = next_value + 1 WHERE name = ? RETURNING next_value",
      {sequence}));
  if (next == 0) throw Failure(failure::kInternal, "The vault has no sequence \"" + sequence + "\"");
  if (next > std::numeric_limits<std::int32_t>::max()) {
    throw Failure(failure::kOverflow, "The sequence \"" + sequence + "\" is used up");
  }
  return static_cast<std::int32_t>(next - 1);
}

std::string Padded(std::int64_t number, int width) {
  auto text = std::to_string(number);
  const auto size = static_cast<std::size_t>(width);
  return text.size() < size ? std::string(size - text.size(), '0') + text : text;
}

std::string NextRevision(const std::string& revision) {
  if (IsMadeOf(revision, 'A', 'Z')) return CountedUp(revision, 'A', 'Z', 'A');
  if (IsMadeOf(revision, '0', '9')) return CountedUp(revision, '0', '9', '1');
  throw Failure(failure::kInvalidCall, "There is no revision after \"" + revision + "\"");
}

}  // namespace quintara::vault

#include <algorithm>
#include <cmath>

#include "access/session/the_platform.h"
#include "base/failure.h"
#include "matrix/Cls_HashTable.h"
#include "matrix/guarded.h"

namespace quintara {
namespace {

constexpr std::size_t kKeyCharacters = 20;
constexpr std::size_t kLongestCharacter = 4;  // in bytes
constexpr int kDivisionByZero = 11;

}  // namespace

bool Cls_HashTable::ConvertToKey(std::string_view Text, std::int32_t& Key) {
  return Guarded("Cls_HashTable.ConvertToKey", [&] {
    // What stands behind the characters that count isn't converted at all.
    const auto codes = ThePlatform().ToCodePage(Text.substr(0, kKeyCharacters * kLongestCharacter));
    const auto count = std::min(codes.size(), kKeyCharacters);
    Key = 0;
    for (std::size_t i = 0; i < count; ++i) Key += (1 << i) * static_cast<unsigned char>(codes[i]);
    return true;
  });
}

bool Cls_HashTable::GetHashTableIndex(std::int32_t Key, std::int32_t Size, std::int32_t& Index) {
  return Guarded("Cls_HashTable.GetHashTableIndex", [&] {
    if (Size == 0) throw Failure(kDivisionByZero, "Division by zero");
    Index = Key % Size;
    return true;
  });
}

bool Cls_HashTable::HashFunction(std::string_view Text, std::int32_t Size, std::int32_t& Index) {
  return Guarded("Cls_HashTable.HashFunction", [&] {
    std::int32_t key = 0;
    return ConvertToKey(Text, key) && GetHashTableIndex(key, Size, Index);
  });
}

bool Cls_HashTable::GetPrimeNumber(std::int32_t Number, std::int32_t& Prime) {
  return Guarded("Cls_HashTable.GetPrimeNumber", [&] {
    Prime = Number;
    for (bool isPrime = false;; ++Prime) {  // ends at the largest number at the latest: it is a prime
      if (!IsPrimeNumber(Prime, isPrime)) return false;
      if (isPrime) return true;
    }
  });
}

bool Cls_HashTable::IsPrimeNumber(std::int32_t Number, bool& IsPrime) {
  return Guarded("Cls_HashTable.IsPrimeNumber", [&] {
    if (Number < 0) throw Failure(failure::kInvalidCall);  // it has no square root
    IsPrime = Number >= 2;
    if (Number <= 2) return true;
    const auto limit = static_cast<std::int32_t>(std::sqrt(Number)) + 1;
    for (std::int32_t divisor = 2; divisor <= limit && IsPrime; ++divisor) IsPrime = Number % divisor != 0;
    return true;
  });
}

}  // namespace quintara

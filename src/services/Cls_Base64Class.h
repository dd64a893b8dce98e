#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace quintara {

/// Bytes and texts as Base64 and back, in lines of 76 characters parted by carriage return and line
/// feed. A text's bytes are those of the platform's 8-bit code page, one for each UTF-16 unit. Failures go to
/// the caller.
class Cls_Base64Class {
 public:
  Cls_Base64Class();

  /// Encodes the bytes of `Text` and one zero byte behind them.
  std::string EncodeString(const std::string& Text) const;
  /// Failure 9 without any bytes.
  std::string EncodeByteArray(const std::vector<std::uint8_t>& Data) const;

  /// The characters of the decoded bytes. The zero byte that `EncodeString` adds comes back as a
  /// character of code 0.
  std::string DecodeToString(const std::string& EncodedText) const;
  /// Takes anything: line breaks of both characters and every "=" are left out, and whatever is none of
  /// the 64 letters counts as the first of them. Failure 9 when no byte comes out.
  std::vector<std::uint8_t> DecodeToByteArray(const std::string& EncodedText) const;

 private:
  std::array<char, 64> letters_;
  std::array<std::uint8_t, 256> values_;
};

}  // namespace quintara

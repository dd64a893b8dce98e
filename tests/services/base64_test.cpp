#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "base/failure.h"
#include "services/Cls_Base64Class.h"
#include "support/test_platform.h"

namespace quintara::test {
namespace {

using ::testing::ElementsAre;
using Bytes = std::vector<std::uint8_t>;

constexpr auto kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

int NumberOf(const auto& body) {
  try {
    body();
  } catch (const Failure& failure) {
    return failure.Number();
  }
  return 0;
}

class Base64 : public ::testing::Test {
 protected:
  std::string Encoded(const Bytes& data) const { return codec.EncodeByteArray(data); }
  Bytes Decoded(const std::string& text) const { return codec.DecodeToByteArray(text); }
  Bytes Random(std::size_t size) {
    Bytes data(size);
    for (auto& byte : data) byte = static_cast<std::uint8_t>(chance());
    return data;
  }
  // Written out, without lines, to hold the codec against.
  static std::string InOneLine(const Bytes& data) {
    std::string text;
    unsigned bits = 0;
    int held = 0;
    for (const auto byte : data) {
      bits = bits << 8U | byte;
      for (held += 8; held >= 6; held -= 6) text += kLetters[bits >> (held - 6) & 63U];
      bits &= (1U << held) - 1U;
    }
    if (held != 0) text += kLetters[bits << (6 - held) & 63U];
    while (text.size() % 4 != 0) text += '=';
    return text;
  }

  TestPlatform platform;
  std::mt19937 chance{20261121};
  const Cls_Base64Class codec;
};

TEST_F(Base64, WritesThreeBytesAsFourLetters) {
  EXPECT_EQ(Encoded({'M', 'a', 'n'}), "TWFu");
  EXPECT_EQ(Encoded({0, 0, 0}), "AAAA");
  EXPECT_EQ(Encoded({255, 255, 255}), "////");
}

TEST_F(Base64, PadsWhatIsLeftOver) {
  EXPECT_EQ(Encoded({'M', 'a'}), "TWE=");
  EXPECT_EQ(Encoded({'M'}), "TQ==");
}

TEST_F(Base64, UsesTheLettersInTheirOrder) {
  Bytes data;
  for (unsigned i = 0; i < 64; i += 4) {
    const unsigned bits = i << 18U | (i + 1) << 12U | (i + 2) << 6U | (i + 3);
    for (const unsigned shift : {16U, 8U, 0U}) data.push_back(static_cast<std::uint8_t>(bits >> shift));
  }

  EXPECT_EQ(Encoded(data), kLetters);
  EXPECT_EQ(Decoded(kLetters), data);
}

TEST_F(Base64, WritesAFullLineWithoutABreak) {
  EXPECT_EQ(Encoded(Bytes(57)), std::string(76, 'A'));
  EXPECT_EQ(Encoded(Bytes(56)), std::string(75, 'A') + "=");
  EXPECT_EQ(Encoded(Bytes(55)), std::string(74, 'A') + "==");
}

TEST_F(Base64, BreaksTheLineBeforeWhatComesBehindAFullOne) {
  EXPECT_EQ(Encoded(Bytes(58)), std::string(76, 'A') + "\r\nAA==");
  EXPECT_EQ(Encoded(Bytes(60)), std::string(76, 'A') + "\r\nAAAA");
}

TEST_F(Base64, WritesTwoFullLinesWithOneBreakBetween) {
  const std::string line(76, 'A');

  EXPECT_EQ(Encoded(Bytes(114)), line + "\r\n" + line);
  EXPECT_EQ(Encoded(Bytes(113)), line + "\r\n" + line.substr(1) + "=");
  EXPECT_EQ(Encoded(Bytes(115)), line + "\r\n" + line + "\r\nAA==");
}

TEST_F(Base64, WritesEverySizeInLinesAsTheFormulaTells) {
  for (std::size_t size = 1; size <= 400; ++size) {
    const auto data = Random(size);
    const auto text = Encoded(data);
    const auto letters = size / 3 * 4 + (size % 3 != 0 ? 4 : 0);
    const auto total = letters + letters / 76 * 2;
    ASSERT_EQ(text.size(), total % 78 == 0 ? total - 2 : total) << size;
    std::string line = InOneLine(data);
    for (std::size_t at = 76; at < line.size(); at += 78) line.insert(at, "\r\n");
    ASSERT_EQ(text, line) << size;
  }
}

TEST_F(Base64, GivesRandomBytesBack) {
  for (std::size_t size = 1; size <= 400; ++size) {
    const auto data = Random(size);
    ASSERT_EQ(Decoded(Encoded(data)), data) << size;
  }
  const auto large = Random(1000003);
  EXPECT_TRUE(Decoded(Encoded(large)) == large);
}

TEST_F(Base64, CannotEncodeAnArrayWithoutBounds) {
  EXPECT_EQ(NumberOf([&] { Encoded({}); }), failure::kSubscriptOutOfRange);
}

TEST_F(Base64, CannotDecodeWhatLeavesNoBytes) {
  for (const auto* text : {"", "=", "====", "\r\n", "\r\n=\r\n", "Q", "Q===", "\n"}) {
    EXPECT_EQ(NumberOf([&] { Decoded(text); }), failure::kSubscriptOutOfRange) << text;
    EXPECT_EQ(NumberOf([&] { codec.DecodeToString(text); }), failure::kSubscriptOutOfRange) << text;
  }
}

TEST_F(Base64, EncodesATextWithAZeroByteBehindIt) {
  EXPECT_EQ(codec.EncodeString("A"), "QQA=");
  EXPECT_EQ(codec.EncodeString("AB"), "QUIA");
  EXPECT_EQ(codec.EncodeString(""), "AA==");
}

TEST_F(Base64, GivesATextBackWithACharacterOfCodeZero) {
  for (const std::string text : {"", "A", "Quintara", "one\r\ntwo=three"}) {
    EXPECT_EQ(codec.DecodeToString(codec.EncodeString(text)), text + '\0');
  }
}

TEST_F(Base64, TakesTextsInTheCodePageOneByteForEachCharacter) {
  EXPECT_EQ(Decoded(codec.EncodeString("\xC3\xA9\xE2\x82\xAC")), (Bytes{0xE9, 0x80, 0}));
  EXPECT_EQ(codec.DecodeToString("6YA="), "\xC3\xA9\xE2\x82\xAC");
}

// A system whose page holds a single letter beyond ASCII.
class PolishPlatform : public NativePlatform {
 public:
  PolishPlatform() : NativePlatform(std::make_shared<Gate>(), nullptr) {}

  std::string ToCodePage(std::string_view utf8) override { return utf8 == kLetter ? "\xB3" : std::string(utf8); }
  std::string FromCodePage(std::string_view bytes) override { return bytes == "\xB3" ? kLetter : std::string(bytes); }

  static constexpr auto kLetter = "\xC5\x82";
};

TEST_F(Base64, TakesTextsInTheCodePageOfTheSystem) {
  const auto before = InstallPlatform(std::make_shared<PolishPlatform>());

  EXPECT_EQ(codec.EncodeString(PolishPlatform::kLetter), "swA=");
  EXPECT_EQ(codec.DecodeToString("sw=="), PolishPlatform::kLetter);

  InstallPlatform(before);
}

TEST_F(Base64, WritesQuestionMarksForWhatTheCodePageLacks) {
  EXPECT_EQ(codec.DecodeToString(codec.EncodeString("\xD0\x96|\xF0\x9F\x94\xA9")), std::string("?|??\0", 5));
}

TEST_F(Base64, GivesEveryByteBackAsItsCharacter) {
  for (int byte = 0; byte < 256; ++byte) {
    const auto text = codec.DecodeToString(Encoded({static_cast<std::uint8_t>(byte)}));
    EXPECT_EQ(Decoded(codec.EncodeString(text)), (Bytes{static_cast<std::uint8_t>(byte), 0})) << byte;
  }
}

TEST_F(Base64, LeavesLineBreaksAndPadsOutWhereverTheyStand) {
  EXPECT_EQ(Decoded("\r\nT\r\nW=F=u\r\n=="), (Bytes{'M', 'a', 'n'}));
}

TEST_F(Base64, CountsALineFeedAloneAsTheFirstLetter) {
  EXPECT_EQ(Decoded("TWFu\nTWFu"), (Bytes{'M', 'a', 'n', 0x01, 0x35, 0x85}));
  EXPECT_EQ(Decoded("TWFu\nTWF"), Decoded("TWFuATWF"));
}

TEST_F(Base64, CountsACarriageReturnAloneAsTheFirstLetter) {
  EXPECT_EQ(Decoded("TW\rFu"), Decoded("TWAFu"));
}

TEST_F(Base64, KeepsALineBreakThatFormsOnlyWhereSomethingWasLeftOut) {
  EXPECT_EQ(Decoded("T\r=\nW"), Decoded("TAAW"));
  EXPECT_EQ(Decoded("T\r\r\n\nW"), Decoded("TAAW"));
}

TEST_F(Base64, CountsEveryForeignCharacterAsTheFirstLetter) {
  EXPECT_EQ(Decoded("T*-_"), Decoded("TAAA"));
  EXPECT_EQ(Decoded("T\xC3\xA9\xE2\x82\xAC "), Decoded("TAAA"));
  EXPECT_EQ(Decoded("TW\xF0\x9F\x94\xA9"), Decoded("TWAA"));
  EXPECT_EQ(Decoded(std::string("T\0\0\0", 4)), Decoded("TAAA"));
}

TEST_F(Base64, DecodesByTheNumberOfLettersWhateverThePads) {
  EXPECT_EQ(Decoded("TWE"), (Bytes{'M', 'a'}));
  EXPECT_EQ(Decoded("TQ"), (Bytes{'M'}));
  EXPECT_EQ(Decoded("TWFuT"), (Bytes{'M', 'a', 'n'}));
  EXPECT_EQ(Decoded("TWFuTQ=="), (Bytes{'M', 'a', 'n', 'M'}));
}

}  // namespace
}  // namespace quintara::test

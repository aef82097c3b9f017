#include "text/encoding_judge.h"

#include <gtest/gtest.h>

#include <string>

namespace kx {
namespace {

Bytes B(std::string_view s) {
  return Bytes(s.begin(), s.end());
}

Bytes Repeat(std::string_view s, std::size_t times) {
  Bytes out;
  for (std::size_t i = 0; i < times; ++i) out.insert(out.end(), s.begin(), s.end());
  return out;
}

Bytes Concat(Bytes a, const Bytes& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

struct JudgeCase {
  const char* what;
  Bytes bytes;
  std::string_view expected;
};

class JudgeCodeAnswers : public ::testing::TestWithParam<JudgeCase> {};

TEST_P(JudgeCodeAnswers, TheEncodingOfTheBuffer) {
  EXPECT_EQ(JudgeCode(GetParam().bytes), GetParam().expected) << GetParam().what;
}

// "あいう漢字" in each encoding, with a line end.
const std::string kSjis = "\x82\xA0\x82\xA2\x82\xA4\x8A\xBF\x8E\x9A\r\n";
const std::string kEuc = "\xA4\xA2\xA4\xA4\xA4\xA6\xB4\xC1\xBB\xFA\r\n";
const std::string kUtf8 = "\xE3\x81\x82\xE3\x81\x84\xE3\x81\x86\xE6\xBC\xA2\xE5\xAD\x97\r\n";
const std::string kUtf16 =
    std::string("\x42\x30\x44\x30\x46\x30\x22\x6F\x57\x5B\x0D\x00\x0A\x00", 14);
const std::string kJis = "\x1B$B$\"$$$&4A;z\x1B(B\r\n";
const std::string kUtf7 = "+MEIwRDBGbyJbVw-\r\n";
const std::string kFewUtf8 = "loop 3\r\nLCtrl Down\r\nkey \xE2\x86\x91\xEF\xBC\xBC_\r\n250\r\n";
const std::string kFewSjis = "loop 3\r\nLCtrl Down\r\nkey \x81\xAA\x81\x5F_\r\n250\r\n";
const std::string kFewEuc = "loop 3\r\nLCtrl Down\r\nkey \xA2\xAC\xA1\xC0_\r\n250\r\n";
const std::string kFewJis = "loop 3\r\nLCtrl Down\r\nkey \x1B$B\"\x2C!@\x1B(B_\r\n250\r\n";

INSTANTIATE_TEST_SUITE_P(
    EachEncoding, JudgeCodeAnswers,
    ::testing::Values(
        JudgeCase{"empty buffer", {}, "SJIS"},
        JudgeCase{"plain ASCII ties and goes to SJIS", B("loop 3\r\nLCtrl Down\r\n250\r\n"),
                  "SJIS"},
        JudgeCase{"Shift_JIS text", Repeat(kSjis, 5), "SJIS"},
        JudgeCase{"EUC-JP text", Repeat(kEuc, 5), "EUC"},
        JudgeCase{"UTF-8 text without a mark", Repeat(kUtf8, 5), "UTF8"},
        JudgeCase{"UTF-8 text with its mark", Concat(B("\xEF\xBB\xBF"), B("abc")), "UTF8"},
        JudgeCase{"UTF-16 text with its mark", Concat(B("\xFF\xFE"), B("A")), "UNICODE"},
        JudgeCase{"UTF-16 text without a mark", Repeat(kUtf16, 5), "UNICODE"},
        JudgeCase{"ISO-2022-JP text", Repeat(kJis, 5), "JIS"},
        JudgeCase{"UTF-7 text", Repeat(kUtf7, 5), "UTF7"},
        JudgeCase{"a leading UTF-8 mark wins over an escape",
                  B("\xEF\xBB\xBF"
                    "abc\x1B(B"),
                  "UTF8"},
        JudgeCase{"a leading UTF-16 mark wins over an escape",
                  B("\xFF\xFE"
                    "a\x00\x1B\x00(\x00B\x00"),
                  "UNICODE"},
        JudgeCase{"an escape wins over a UTF-8 mark that does not lead",
                  B("abc\xEF\xBB\xBF"
                    "abc\x1B$B\x82"),
                  "JIS"},
        JudgeCase{"an escape at the thousandth byte is seen", Concat(Repeat("a", 999), B("\x1B(B")),
                  "JIS"},
        JudgeCase{"an escape at the thousand-and-first byte is not",
                  Concat(Repeat("a", 1000), B("\x1B(B")), "SJIS"},
        JudgeCase{"an escape anywhere in the window decides",
                  Concat(Repeat(kSjis, 40), B("\x1B$B")), "JIS"},
        JudgeCase{"a UTF-8 mark later in the buffer decides", Concat(B("abc"), B("\xEF\xBB\xBF")),
                  "UTF8"},
        JudgeCase{"an escape after byte 999 is never seen",
                  Concat(Repeat(kSjis, 100), B("\x1B$B$\"\x1B(B")), "SJIS"},
        JudgeCase{"a UTF-8 mark after byte 999 is never seen",
                  Concat(Repeat("a", 1000), B("\xEF\xBB\xBF\x82\xA0")), "SJIS"},
        // A mostly-ASCII macro with "key ↑＼_" in it, as each encoding saves it.
        JudgeCase{"mostly ASCII in UTF-8 without a mark", B(kFewUtf8), "UTF8"},
        JudgeCase{"mostly ASCII in Shift_JIS", B(kFewSjis), "SJIS"},
        JudgeCase{"mostly ASCII in EUC-JP", B(kFewEuc), "EUC"},
        JudgeCase{"mostly ASCII in ISO-2022-JP", B(kFewJis), "JIS"},
        JudgeCase{"valid UTF-8 after byte 999 still counts", Concat(Repeat("a", 1200), B(kUtf8)),
                  "UTF8"},
        JudgeCase{"UTF-8 broken at the end is left to the scorers",
                  Concat(Repeat(kUtf8, 5), B("\xE3\x81")), "UTF8"}));

TEST(JudgeCode, LooksAtTheFirstThousandBytesOnly) {
  // EUC text up to byte 999, then UTF-8 text that would outscore it.
  Bytes bytes = Repeat("\xA4\xA2", 500);
  EXPECT_EQ(JudgeCode(bytes), "EUC");
  const Bytes tail = Repeat(kUtf8, 200);
  bytes.insert(bytes.end(), tail.begin(), tail.end());
  EXPECT_EQ(JudgeCode(bytes), "EUC");
}

TEST(JudgeCode, GivesEqualScoresToTheEarlierName) {
  const Bytes ascii = B("abc def\r\n");
  const int last = static_cast<int>(ascii.size()) - 1;
  const auto sjis = ScoreSjis(ascii, last, true);
  EXPECT_EQ(ScoreJis(ascii, last, true), sjis);
  EXPECT_EQ(ScoreUtf8(ascii, last, true), sjis);
  EXPECT_EQ(ScoreEuc(ascii, last, true), sjis);
  EXPECT_EQ(JudgeCode(ascii), "SJIS");
}

struct ScoreCase {
  const char* what;
  std::int16_t (*scorer)(const Bytes&, int, bool);
  Bytes bytes;
  bool early;
  std::int16_t expected;
};

class Scorers : public ::testing::TestWithParam<ScoreCase> {};

TEST_P(Scorers, CountPointsPerTwoBytesInPercent) {
  const auto& c = GetParam();
  const int last = static_cast<int>(std::min<std::size_t>(c.bytes.size(), 1000)) - 1;
  EXPECT_EQ(c.scorer(c.bytes, last, c.early), c.expected) << c.what;
}

// 100 bytes that score nothing for EUC-JP, with the first ones made ASCII.
Bytes EucWithAscii(std::size_t ascii) {
  Bytes bytes(100, 0x80);
  for (std::size_t i = 0; i < ascii; ++i) bytes[i * 2] = 'a';
  return bytes;
}

INSTANTIATE_TEST_SUITE_P(
    EachRule, Scorers,
    ::testing::Values(
        ScoreCase{"two ASCII bytes: 2 x 100 / 4", ScoreSjis, B("ab"), true, 50},
        ScoreCase{"one Shift_JIS character: 4 x 100 / 4", ScoreSjis, B("\x82\xA0"), true, 100},
        ScoreCase{"NUL at an odd offset counts nothing", ScoreSjis, B(std::string("a\0", 2)), true,
                  25},
        ScoreCase{"NUL at an even offset counts", ScoreSjis, B(std::string("\0a", 2)), true, 50},
        ScoreCase{"a lead byte without its trail counts nothing", ScoreSjis, B("\x82"), true, 0},
        ScoreCase{"half a point rounds down to even", ScoreEuc, EucWithAscii(1), true, 0},
        ScoreCase{"one and a half round up to even", ScoreEuc, EucWithAscii(3), true, 2},
        ScoreCase{"two and a half round down to even", ScoreEuc, EucWithAscii(5), true, 2},
        ScoreCase{"EUC half-width katakana", ScoreEuc, B("\x8E\xB1"), true, 100},
        ScoreCase{"EUC supplementary kanji", ScoreEuc, B("\x8F\xB0\xA1"), true, 100},
        ScoreCase{"UTF-16 scores are halved", ScoreUnicode, B(std::string("a\0b\0", 4)), true, 50},
        ScoreCase{"a UTF-16 high byte of 0x40 stops the scan", ScoreUnicode, B("a\x40"), true, 0},
        ScoreCase{"FF FE is certain with the early flag", ScoreUnicode, B("ab\xFF\xFE"), true,
                  9999},
        ScoreCase{"FF FE at an odd offset is no mark", ScoreUnicode,
                  B(std::string("a\xFF\xFE\x00", 4)), true, 50},
        ScoreCase{"FF FE only scores without the early flag", ScoreUnicode, B("\xFF\xFE"), false,
                  50},
        ScoreCase{"a three-byte UTF-8 character", ScoreUtf8, B("\xE3\x81\x82"), true, 100},
        ScoreCase{"a UTF-8 lead byte without continuation", ScoreUtf8,
                  B("\xE3"
                    "ab"),
                  true, 33},
        ScoreCase{"the UTF-8 mark is certain", ScoreUtf8, B("\xEF\xBB\xBF"), true, 9999},
        ScoreCase{"the UTF-8 mark scores without the flag", ScoreUtf8, B("\xEF\xBB\xBF"), false,
                  100},
        ScoreCase{"an escape is certain", ScoreJis, B("\x1B(B"), true, 9999},
        ScoreCase{"escape and two-byte text without the flag", ScoreJis, B("\x1B$B$\""), false,
                  100},
        ScoreCase{"half-width katakana in JIS", ScoreJis, B("\x1B(I16"), false, 80},
        ScoreCase{"an escaped plus in UTF-7", ScoreUtf7, B("+-"), true, 100},
        ScoreCase{"a closed UTF-7 run with zero spare bits", ScoreUtf7, B("+MEI-"), true, 100},
        ScoreCase{"spare bits that are not zero score nothing", ScoreUtf7, B("+MEJ-"), true, 0},
        ScoreCase{"a run ended by another byte scores nothing", ScoreUtf7, B("+MEI\r"), true, 0},
        ScoreCase{"UTF-7 never answers for certain", ScoreUtf7, B("+MEI-"), false, 100}));

TEST(Scorers, AnswerZeroForAnEmptyBuffer) {
  const Bytes none;
  for (auto scorer : {ScoreJis, ScoreUnicode, ScoreUtf8, ScoreUtf7, ScoreSjis, ScoreEuc})
    EXPECT_EQ(scorer(none, -1, true), 0);
}

}  // namespace
}  // namespace kx

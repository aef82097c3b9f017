#include "text/charset.h"

#include <gtest/gtest.h>

#include "text/jis_transform.h"

namespace kx {
namespace {

Bytes B(std::string_view s) {
  return Bytes(s.begin(), s.end());
}

// Kana, kanji, half-width katakana and symbols, with CR LF line ends.
constexpr std::string_view kJapanese =
    "あいうえお カタカナ\r\n漢字のテスト ★○→×※\r\nｶﾀｶﾅ 123 ABC\r\n";

class EachCharset : public ::testing::TestWithParam<std::string_view> {};

TEST_P(EachCharset, RoundTripsJapaneseText) {
  const Bytes encoded = EncodeText(GetParam(), kJapanese);
  ASSERT_FALSE(encoded.empty());
  EXPECT_EQ(DecodeBytes(GetParam(), encoded), kJapanese);
}

INSTANTIATE_TEST_SUITE_P(Japanese, EachCharset,
                         ::testing::Values(kCharsetIso2022Jp, kCharsetEucJp, kCharsetUtf7,
                                           kCharsetUtf8, kCharsetUtf16Le, kCharsetShiftJis));

struct KnownBytes {
  std::string_view charset;
  std::string_view text;
  std::string_view bytes;
};

class KnownEncodings : public ::testing::TestWithParam<KnownBytes> {};

TEST_P(KnownEncodings, MatchTheStandardBytes) {
  const auto& c = GetParam();
  EXPECT_EQ(EncodeText(c.charset, c.text), B(c.bytes)) << c.charset;
  EXPECT_EQ(DecodeBytes(c.charset, B(c.bytes)),
            c.text.starts_with("\xEF\xBB\xBF") ? c.text.substr(3) : c.text)
      << c.charset;
}

INSTANTIATE_TEST_SUITE_P(Hiragana, KnownEncodings,
                         ::testing::Values(KnownBytes{kCharsetShiftJis, "あ", "\x82\xA0"},
                                           KnownBytes{kCharsetShiftJis, "ｱ", "\xB1"},
                                           KnownBytes{kCharsetEucJp, "あ", "\xA4\xA2"},
                                           KnownBytes{kCharsetEucJp, "ｱ", "\x8E\xB1"},
                                           KnownBytes{kCharsetIso2022Jp, "あa", "\x1B$B$\"\x1B(Ba"},
                                           KnownBytes{kCharsetIso2022Jp, "ｱ", "\x1B(I1\x1B(B"},
                                           KnownBytes{kCharsetUtf8, "あ",
                                                      "\xEF\xBB\xBF\xE3\x81\x82"},
                                           KnownBytes{kCharsetUtf16Le, "あ", "\x42\x30"}));

TEST(DecodeBytes, DropsTheUtf8MarkButKeepsTheText) {
  EXPECT_EQ(DecodeBytes(kCharsetUtf8, B("\xEF\xBB\xBF"
                                        "abc")),
            "abc");
  EXPECT_EQ(DecodeBytes(kCharsetUtf8, B("abc")), "abc");
}

TEST(DecodeBytes, ReadsUtf7WithTheEscapedPlus) {
  EXPECT_EQ(DecodeBytes(kCharsetUtf7, B("1+-1 +MEIwRA-")), "1+1 あい");
}

TEST(DecodeBytes, GivesAnEmptyTextForAnUnknownCharset) {
  EXPECT_EQ(DecodeBytes("KOI8-R", B("abc")), "");
}

TEST(DecodeBytes, ReplacesBytesThatAreNoCharacterAndKeepsTheRest) {
  for (std::string_view charset : {kCharsetShiftJis, kCharsetEucJp, kCharsetUtf8}) {
    const std::string text = DecodeBytes(charset, B("ab\xFF\xFF"
                                                    "cd"));
    EXPECT_TRUE(text.starts_with("ab")) << charset;
    EXPECT_TRUE(text.ends_with("cd")) << charset;
    EXPECT_GT(text.size(), 4u) << charset;
  }
}

TEST(DecodeBytes, ReadsAShiftJisLeadByteCutOffAtTheEnd) {
  const std::string text = DecodeAnsi(B("abc\x82"));
  EXPECT_TRUE(text.starts_with("abc"));
}

TEST(EncodeText, WritesCharactersTheCodePageLacksAsQuestionMarks) {
  EXPECT_EQ(EncodeText(kCharsetShiftJis, "a\xEA\xB0\x80z"), B("a?z"));  // Hangul
  const Bytes emoji = EncodeText(kCharsetShiftJis, "a\xF0\x9F\x98\x80z");
  ASSERT_GE(emoji.size(), 3u);
  EXPECT_EQ(emoji.front(), 'a');
  EXPECT_EQ(emoji.back(), 'z');
  for (std::size_t i = 1; i + 1 < emoji.size(); ++i) EXPECT_EQ(emoji[i], '?');
}

TEST(JisTransform, TurnsEscapesIntoEucBytesAndBack) {
  const Bytes jis = B("a\x1B$B$\"\x1B(I1\x1B$(D0!\x1B(Bz");
  const Bytes euc = B("a\xA4\xA2\x8E\xB1\x8F\xB0\xA1z");
  EXPECT_EQ(Iso2022JpToEucJp(jis), euc);
  EXPECT_EQ(EucJpToIso2022Jp(euc), jis);
}

TEST(JisTransform, ReadsShiftOutAsHalfWidthKatakana) {
  EXPECT_EQ(Iso2022JpToEucJp(B("a\x0E"
                               "1\x0F"
                               "b")),
            B("a\x8E\xB1"
              "b"));
}

TEST(JisTransform, KeepsATruncatedEscapeAsBytes) {
  EXPECT_EQ(Iso2022JpToEucJp(B("ab\x1B$")), B("ab\x1B$"));
}

}  // namespace
}  // namespace kx

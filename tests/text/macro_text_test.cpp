#include "text/macro_text.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "text/charset.h"
#include "text/encoding_judge.h"
#include "text/memory_files.h"

namespace kx {
namespace {

using testing::MemoryFiles;

Bytes B(std::string_view s) {
  return Bytes(s.begin(), s.end());
}

Bytes DataFile(const std::string& name) {
  std::ifstream in(std::string(KX_TEST_DATA) + "/text/" + name, std::ios::binary);
  return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

constexpr std::string_view kJapanese =
    "あいうえお カタカナ\r\n漢字のテスト ★○→×※\r\nｶﾀｶﾅ 123 ABC\r\n";

struct FileCase {
  const char* file;
  std::string_view encoding;
};

class MacroFilesFromOtherEditors : public ::testing::TestWithParam<FileCase> {};

TEST_P(MacroFilesFromOtherEditors, AreDetectedReadSavedAndReadAgain) {
  MemoryFiles files;
  const Bytes original = DataFile(GetParam().file);
  ASSERT_FALSE(original.empty()) << GetParam().file;
  files.files["a.ksx"] = original;
  EXPECT_EQ(JudgeCode(original), GetParam().encoding);

  const std::string text = sReadText(files, "a.ksx");
  EXPECT_EQ(text, kJapanese);

  ASSERT_TRUE(sWriteText(files, "a.ksx", text));
  const Bytes saved = files.files["a.ksx"];
  EXPECT_EQ(Bytes(saved.begin(), saved.begin() + 3), B("\xEF\xBB\xBF"));
  EXPECT_EQ(JudgeCode(saved), "UTF8");
  EXPECT_EQ(sReadText(files, "a.ksx"), kJapanese);
}

INSTANTIATE_TEST_SUITE_P(EachEncoding, MacroFilesFromOtherEditors,
                         ::testing::Values(FileCase{"japanese.sjis.txt", "SJIS"},
                                           FileCase{"japanese.euc.txt", "EUC"},
                                           FileCase{"japanese.jis.txt", "JIS"},
                                           FileCase{"japanese.utf7.txt", "UTF7"},
                                           FileCase{"japanese.utf8.txt", "UTF8"},
                                           FileCase{"japanese.utf8-mark.txt", "UTF8"},
                                           FileCase{"japanese.utf16.txt", "UNICODE"},
                                           FileCase{"japanese.utf16-nomark.txt", "UNICODE"},
                                           FileCase{"japanese.lf.sjis.txt", "SJIS"}));

class MacroFilesWrittenByTheProgram : public ::testing::TestWithParam<std::string_view> {};

TEST_P(MacroFilesWrittenByTheProgram, ReadBackTheSameText) {
  MemoryFiles files;
  files.files["m.txt"] = EncodeText(GetParam(), kJapanese);
  EXPECT_EQ(sReadText(files, "m.txt"), kJapanese) << GetParam();
}

INSTANTIATE_TEST_SUITE_P(EachCharset, MacroFilesWrittenByTheProgram,
                         ::testing::Values(kCharsetIso2022Jp, kCharsetEucJp, kCharsetUtf8,
                                           kCharsetUtf16Le, kCharsetShiftJis));

struct LineEndCase {
  std::string_view in;
  std::string_view out;
};

class LineEnds : public ::testing::TestWithParam<LineEndCase> {};

TEST_P(LineEnds, AreReadAsCrLf) {
  EXPECT_EQ(DecodeMacroBytes(B(GetParam().in)), GetParam().out);
}

INSTANTIATE_TEST_SUITE_P(
    EachStyle, LineEnds,
    ::testing::Values(LineEndCase{"a\r\nb\r\n", "a\r\nb\r\n"}, LineEndCase{"a\nb\n", "a\r\nb\r\n"},
                      LineEndCase{"a\rb\r", "a\r\nb\r\n"}, LineEndCase{"a\n\nb", "a\r\n\r\nb"},
                      LineEndCase{"a\r\rb", "a\r\n\r\nb"}, LineEndCase{"a\n\r\nb", "a\r\n\r\nb"},
                      LineEndCase{"", ""}));

TEST(sReadText, DropsTheUtf16MarkButKeepsEveryCharacterWithoutIt) {
  MemoryFiles files;
  files.files["marked"] =
      B(std::string("\xFF\xFE"
                    "a\0b\0",
                    6));
  files.files["plain"] = B(std::string("a\0b\0", 4));
  EXPECT_EQ(sReadText(files, "marked"), "ab");
  EXPECT_EQ(sReadText(files, "plain"), "ab");
}

TEST(sReadText, ReadsAnAsciiShiftJisFileThroughTheAnsiCodePage) {
  MemoryFiles files;
  files.files["a.txt"] = B("loop 2\r\nLCtrl Down\r\n");
  EXPECT_EQ(JudgeCode(files.files["a.txt"]), "SJIS");
  EXPECT_EQ(sReadText(files, "a.txt"), "loop 2\r\nLCtrl Down\r\n");
}

TEST(sReadText, GivesAnEmptyTextForAMissingOrEmptyFile) {
  MemoryFiles files;
  files.files["empty"] = {};
  EXPECT_EQ(sReadText(files, "missing"), "");
  EXPECT_EQ(sReadText(files, "empty"), "");
  EXPECT_EQ(ReadMacroFile(files, "missing"), std::nullopt);
}

TEST(sReadText, ReadsABinaryFileAsSomeText) {
  MemoryFiles files;
  Bytes binary(4096);
  for (std::size_t i = 0; i < binary.size(); ++i)
    binary[i] = static_cast<std::uint8_t>((i * 7919 + 13) % 256);
  files.files["bin"] = binary;
  EXPECT_FALSE(sReadText(files, "bin").empty());
}

TEST(sReadText, ReadsAHugeFileWhole) {
  MemoryFiles files;
  const std::string line = "\x82\xA0\x82\xA2 abc\r\n";  // "あい abc" in Shift_JIS
  Bytes huge;
  huge.reserve(50u << 20);
  while (huge.size() + line.size() <= (50u << 20))
    huge.insert(huge.end(), line.begin(), line.end());
  files.files["huge"] = huge;
  const std::string text = sReadText(files, "huge");
  const std::size_t lines = huge.size() / line.size();
  EXPECT_EQ(text.size(), lines * std::string_view("あい abc\r\n").size());
  EXPECT_TRUE(text.ends_with("あい abc\r\n"));
}

TEST(sWriteText, SavesUtf8WithAMarkWhateverTheTextWasReadFrom) {
  MemoryFiles files;
  ASSERT_TRUE(sWriteText(files, "out.ksx", "あ\r\n"));
  EXPECT_EQ(files.files["out.ksx"], B("\xEF\xBB\xBF\xE3\x81\x82\r\n"));
}

TEST(sWriteText, LeavesTheOldFileWhenTheWriteFails) {
  MemoryFiles files;
  files.files["out.ksx"] = B("old");
  files.failWrites = true;
  EXPECT_FALSE(sWriteText(files, "out.ksx", "new"));
  EXPECT_EQ(files.files["out.ksx"], B("old"));
}

}  // namespace
}  // namespace kx

#include "settings/settings_lists.h"

#include <gtest/gtest.h>

namespace kx {
namespace {

TEST(HotkeyList, ParsesEntriesAndFields) {
  const auto hotkeys = ParseHotkeyList("112|2|Ctrl + F1|C:\\Macro\\a.ksx||113|0|F2|C:\\b c.txt");
  ASSERT_EQ(hotkeys.size(), 2u);
  EXPECT_EQ(hotkeys[0], (ScriptHotkey{512, 112, 2, "Ctrl + F1", "C:\\Macro\\a.ksx"}));
  EXPECT_EQ(hotkeys[1], (ScriptHotkey{513, 113, 0, "F2", "C:\\b c.txt"}));
}

TEST(HotkeyList, SkipsEmptyEntriesButCountsThemForTheIds) {
  const auto hotkeys = ParseHotkeyList("||112|0|F1|a.ksx||||113|0|F2|b.ksx||");
  ASSERT_EQ(hotkeys.size(), 2u);
  EXPECT_EQ(hotkeys[0].id, 513);
  EXPECT_EQ(hotkeys[1].id, 515);
}

TEST(HotkeyList, ReadsMissingFieldsAsEmptyAndBadNumbersAsZero) {
  const auto hotkeys = ParseHotkeyList("abc|x");
  ASSERT_EQ(hotkeys.size(), 1u);
  EXPECT_EQ(hotkeys[0], (ScriptHotkey{512, 0, 0, "", ""}));
  EXPECT_TRUE(ParseHotkeyList("").empty());
}

TEST(HotkeyList, RoundTripsThroughItsTextEvenWithEmptyFields) {
  const std::vector<ScriptHotkey> hotkeys = {{512, 112, 2, "Ctrl + F1", "C:\\マクロ\\朝.ksx"},
                                             {513, 65, 2, "Ctrl + A", ""},
                                             {514, 0, 0, "", "D:\\y.txt"},
                                             {515, 65, 5, "Shift + Alt + A", "D:\\x.txt"}};
  const std::string text = FormatHotkeyList(hotkeys);
  EXPECT_EQ(text,
            "112|2|Ctrl + F1|C:\\マクロ\\朝.ksx||65|2|Ctrl + A|||0|0||D:\\y.txt||"
            "65|5|Shift + Alt + A|D:\\x.txt");
  EXPECT_EQ(ParseHotkeyList(text), hotkeys);
  EXPECT_EQ(FormatHotkeyList(ParseHotkeyList(text)), text);
}

TEST(AutoList, ParsesRecordsAndFields) {
  const auto runs = ParseAutoList("毎日,08:30:00,C:\\a.ksx|インターバル,00:10:00,C:\\b.ksx");
  ASSERT_EQ(runs.size(), 2u);
  EXPECT_EQ(runs[0], (ScheduledRun{"毎日", "08:30:00", "C:\\a.ksx"}));
  EXPECT_EQ(runs[1], (ScheduledRun{"インターバル", "00:10:00", "C:\\b.ksx"}));
}

TEST(AutoList, KeepsACommaInThePathAndSkipsEmptyRecords) {
  const auto runs = ParseAutoList("|起動後,00:00:05,C:\\a,b.ksx||停止");
  ASSERT_EQ(runs.size(), 2u);
  EXPECT_EQ(runs[0], (ScheduledRun{"起動後", "00:00:05", "C:\\a,b.ksx"}));
  EXPECT_EQ(runs[1], (ScheduledRun{"停止", "", ""}));
  EXPECT_TRUE(ParseAutoList("").empty());
}

TEST(AutoList, RoundTripsWithoutASeparatorAfterTheLastRecord) {
  const std::vector<ScheduledRun> runs = {{"停止", "01:02:03", "C:\\x.ksx"},
                                          {"毎日", "23:59:59", "C:\\マクロ\\夜.txt"}};
  const std::string text = FormatAutoList(runs);
  EXPECT_EQ(text, "停止,01:02:03,C:\\x.ksx|毎日,23:59:59,C:\\マクロ\\夜.txt");
  EXPECT_EQ(ParseAutoList(text), runs);
}

}  // namespace
}  // namespace kx

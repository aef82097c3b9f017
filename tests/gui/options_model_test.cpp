// The options dialog's logic: settings into controls and back, the order of
// the writes, the two lists and the file association on the simulated
// registry.
#include "gui/options_model.h"

#include <gtest/gtest.h>

#include "gui/file_association.h"
#include "sim/sim_system.h"

namespace kx::gui {
namespace {

// Records every write, in order.
class RecordingStore final : public SettingsStore {
 public:
  int ReadInt(std::string_view, std::string_view, int d) override { return d; }
  std::string ReadString(std::string_view, std::string_view) override { return ""; }
  void Write(std::string_view, std::string_view key, std::string_view value) override {
    writes.emplace_back(std::string(key) + "=" + std::string(value));
  }
  void Delete(std::string_view, std::string_view) override {}
  std::vector<std::string> writes;
};

Settings Sample() {
  Settings s;
  s.hotkeyV = 122;
  s.hotkeyVMod = 1;
  s.hotkeyPlay = 119;
  s.hotkeyPlayMod = 2;
  s.hotkeyStop = 120;
  s.recKeyMouse = 17;
  s.recKeyClick = 16;
  s.hotkey = "65|2|Ctrl + A|C:\\m\\a.ksx||||66|6|Shift + Ctrl + B|C:\\m\\b.ksx";
  s.autoRuns = "起動後,0:00:05,C:\\m\\a.ksx|毎日,9:30:00,C:\\m\\b.ksx";
  s.endNotifer = 2;
  s.up = true;
  s.hits = 250;
  s.fontSize = 14;
  s.textMode = 1;
  s.defMacro = "C:\\m\\start.ksx";
  s.linkage = 8;
  s.browser = "C:\\Program Files\\ブラウザ\\chrome.exe";
  s.devToolsPort = 9333;
  return s;
}

TEST(OptionsValues, SettingsIntoControlsAndBackUnchanged) {
  const Settings settings = Sample();
  const OptionsValues v = OptionsFromSettings(settings);
  EXPECT_EQ(v.showHide, (HotkeyChoice{122, 1}));
  EXPECT_EQ(v.play, (HotkeyChoice{119, 2}));
  EXPECT_EQ(v.pause, (HotkeyChoice{120, 0}));
  EXPECT_EQ(v.recKeyMouse, 17);
  // One row per non-empty entry; the tag is the entry as stored.
  ASSERT_EQ(v.hotkeys.size(), 2u);
  EXPECT_EQ(v.hotkeys[1],
            (HotkeyRow{"Shift + Ctrl + B", "C:\\m\\b.ksx", "66|6|Shift + Ctrl + B|C:\\m\\b.ksx"}));
  ASSERT_EQ(v.schedule.size(), 2u);
  EXPECT_EQ(v.schedule[1], (ScheduledRun{"毎日", "9:30:00", "C:\\m\\b.ksx"}));
  EXPECT_EQ(v.endNotifer, 2);
  EXPECT_TRUE(v.up);
  EXPECT_EQ(v.hits, "250");
  EXPECT_EQ(v.fontSize, 14);
  EXPECT_TRUE(v.editorShown);
  EXPECT_EQ(v.displayMode, 1);
  EXPECT_EQ(v.linkage, 8);

  Settings back = Settings();
  ApplyOptions(v, back);
  RecordingStore original, applied;
  WriteOptions(original, settings);
  WriteOptions(applied, back);
  // The empty entry is not written back: the dialog never writes one.
  EXPECT_EQ(back.hotkey, "65|2|Ctrl + A|C:\\m\\a.ksx||66|6|Shift + Ctrl + B|C:\\m\\b.ksx");
  back.hotkey = settings.hotkey;
  RecordingStore again;
  WriteOptions(again, back);
  EXPECT_EQ(again.writes, original.writes);
}

TEST(OptionsValues, TextModeHiddenHitsAndLinkage) {
  Settings s;
  s.textMode = 3;
  s.linkage = 5;  // neither 8 nor 9: the removal is what holds
  OptionsValues v = OptionsFromSettings(s);
  EXPECT_FALSE(v.editorShown);
  EXPECT_EQ(v.displayMode, 0);
  EXPECT_EQ(v.linkage, 9);
  v.editorShown = true;
  v.displayMode = 2;
  v.hits = " 40 ";
  ApplyOptions(v, s);
  EXPECT_EQ(s.textMode, 2);
  EXPECT_EQ(s.hits, 40);
  for (const auto& [typed, stored] : std::vector<std::pair<std::string, int>>{
           {"", 40}, {"abc", 40}, {"12x", 40}, {"0", 1}, {"123456", 9999}, {"-5", 1}}) {
    v.hits = typed;
    ApplyOptions(v, s);
    EXPECT_EQ(s.hits, stored) << typed;
  }
  v.editorShown = false;
  ApplyOptions(v, s);
  EXPECT_EQ(s.textMode, 3);
}

TEST(OptionsValues, BrowserLosesItsQuotesAndAPortMustBeOneTcpAllows) {
  Settings s;
  OptionsValues v = OptionsFromSettings(s);
  EXPECT_EQ(v.devToolsPort, "9222");
  EXPECT_EQ(v.browser, "");
  v.browser = " \"C:\\a b\\msedge.exe\" ";
  v.devToolsPort = " 9333 ";
  ApplyOptions(v, s);
  EXPECT_EQ(s.browser, "C:\\a b\\msedge.exe");
  EXPECT_EQ(s.devToolsPort, 9333);
  for (const char* typed : {"", "0", "65536", "-1", "92x2", "ポート"}) {
    v.devToolsPort = typed;
    ApplyOptions(v, s);
    EXPECT_EQ(s.devToolsPort, 9333) << typed;
  }
}

TEST(OptionsValues, AConfirmWritesEveryKeyInItsOrder) {
  RecordingStore store;
  WriteOptions(store, Sample());
  const std::vector<std::string> expected = {
      "DefMacro=C:\\m\\start.ksx",
      "Hits=250",
      "FontSize=14",
      "Up=1",
      "HotkeyV=122",
      "HotkeyVMod=1",
      "HotkeyRec=122",
      "HotkeyRecMod=0",
      "HotkeyPlay=119",
      "HotkeyPlayMod=2",
      "HotkeyStop=120",
      "HotkeyStopMod=0",
      "RecKeyMouse=17",
      "RecKeyClick=16",
      "EndNotifer=2",
      "TextMode=1",
      "Hotkey=65|2|Ctrl + A|C:\\m\\a.ksx||||66|6|Shift + Ctrl + B|C:\\m\\b.ksx",
      "Auto=起動後,0:00:05,C:\\m\\a.ksx|毎日,9:30:00,C:\\m\\b.ksx",
      "Linkage=8",
      "Browser=C:\\Program Files\\ブラウザ\\chrome.exe",
      "DevToolsPort=9333",
  };
  EXPECT_EQ(store.writes, expected);
}

class OptionsDialogTest : public ::testing::Test {
 protected:
  std::vector<std::string> Events(std::string_view kind) {
    std::vector<std::string> out;
    for (const auto& e : sim.trace().OfKind(kind))
      out.push_back(e.fields["key"].get<std::string>() +
                    (e.fields.contains("value") ? "=" + e.fields["value"].get<std::string>() : "") +
                    (e.fields["ok"].get<bool>() ? "" : " (failed)"));
    return out;
  }
  sim::SimSystem sim;
  std::vector<OptionsValues> confirmed;
  OptionsDialog dialog{Settings(), sim, "C:\\kx\\macro", "C:\\kx\\Kestrelix.exe",
                       [this](const OptionsValues& v) { confirmed.push_back(v); }};
};

TEST_F(OptionsDialogTest, HotkeyListRefusesADisplayTextAnotherRowShowsAndAMissingFile) {
  EXPECT_EQ(dialog.AddHotkey({65, 2}, "Ctrl + A", "a.ksx"), ListEdit::kDone);
  EXPECT_EQ(dialog.AddHotkey({66, 2}, "Ctrl + B", "b.ksx"), ListEdit::kDone);
  EXPECT_EQ(dialog.AddHotkey({65, 2}, "Ctrl + A", "other.ksx"), ListEdit::kDuplicate);
  // The comparison is by text only: a different chord showing the same text
  // is refused, the same chord with another text is taken.
  EXPECT_EQ(dialog.AddHotkey({97, 2}, "Ctrl + B", "c.ksx"), ListEdit::kDuplicate);
  EXPECT_EQ(dialog.AddHotkey({0, 0}, "", "none.ksx"), ListEdit::kNothing);
  EXPECT_EQ(dialog.AddHotkey({67, 2}, "Ctrl + C", ""), ListEdit::kNoMacro);
  EXPECT_EQ(dialog.AddHotkey({67, 2}, "Ctrl + C", "  "), ListEdit::kNoMacro);
  ASSERT_EQ(dialog.values.hotkeys.size(), 2u);
  EXPECT_EQ(dialog.values.hotkeys[0].tag, "65|2|Ctrl + A|a.ksx");

  // Changing a row to its own text is no duplicate; to another row's is.
  EXPECT_EQ(dialog.ChangeHotkey(0, {65, 2}, "Ctrl + A", "a2.ksx"), ListEdit::kDone);
  EXPECT_EQ(dialog.ChangeHotkey(0, {66, 2}, "Ctrl + B", "a2.ksx"), ListEdit::kDuplicate);
  EXPECT_EQ(dialog.ChangeHotkey(0, {65, 2}, "Ctrl + A", ""), ListEdit::kNoMacro);
  EXPECT_EQ(dialog.ChangeHotkey(1, {116, 9}, "Win + Alt + F5", "b2.ksx"), ListEdit::kDone);
  EXPECT_EQ(dialog.ChangeHotkey(2, {67, 0}, "C", "x"), ListEdit::kNothing);
  EXPECT_EQ(dialog.ChangeHotkey(-1, {67, 0}, "C", "x"), ListEdit::kNothing);
  EXPECT_EQ(dialog.values.hotkeys[0].path, "a2.ksx");
  EXPECT_EQ(dialog.values.hotkeys[1].tag, "116|9|Win + Alt + F5|b2.ksx");

  EXPECT_EQ(dialog.DeleteHotkey(0), ListEdit::kDone);
  EXPECT_EQ(dialog.DeleteHotkey(5), ListEdit::kNothing);
  ASSERT_EQ(dialog.values.hotkeys.size(), 1u);
  EXPECT_EQ(dialog.values.hotkeys[0].display, "Win + Alt + F5");

  Settings s;
  ApplyOptions(dialog.values, s);
  EXPECT_EQ(s.hotkey, "116|9|Win + Alt + F5|b2.ksx");
}

TEST_F(OptionsDialogTest, ScheduleListKindsInButtonOrder) {
  EXPECT_EQ(dialog.AddSchedule(std::nullopt, "0:00:04", "a.ksx"), ListEdit::kNothing);
  EXPECT_EQ(dialog.AddSchedule(2, "0:00:04", "a.ksx"), ListEdit::kDone);
  EXPECT_EQ(dialog.AddSchedule(0, "1:00:00", "stopped.ksx"), ListEdit::kDone);
  EXPECT_EQ(dialog.AddSchedule(1, "0:00:05", "b.ksx"), ListEdit::kDone);
  EXPECT_EQ(dialog.AddSchedule(4, "0:00:05", "b.ksx"), ListEdit::kNothing);
  EXPECT_EQ(dialog.ChangeSchedule(2, 3, "9:30:00", "c.ksx"), ListEdit::kDone);
  EXPECT_EQ(dialog.ChangeSchedule(3, 3, "9:30:00", "c.ksx"), ListEdit::kNothing);
  EXPECT_EQ(dialog.ChangeSchedule(0, std::nullopt, "9:30:00", "c.ksx"), ListEdit::kNothing);
  Settings s;
  ApplyOptions(dialog.values, s);
  EXPECT_EQ(s.autoRuns, "インターバル,0:00:04,a.ksx|停止,1:00:00,stopped.ksx|毎日,9:30:00,c.ksx");
  EXPECT_EQ(dialog.DeleteSchedule(1), ListEdit::kDone);
  EXPECT_EQ(dialog.DeleteSchedule(2), ListEdit::kNothing);
  ApplyOptions(dialog.values, s);
  EXPECT_EQ(s.autoRuns, "インターバル,0:00:04,a.ksx|毎日,9:30:00,c.ksx");

  dialog.Confirm();
  ASSERT_EQ(confirmed.size(), 1u);
  EXPECT_EQ(confirmed[0], dialog.values);
}

TEST_F(OptionsDialogTest, BrowseDialogsStartInTheMacroFolder) {
  const FileDialogRequest startUp = dialog.BrowseRequest(BrowseTarget::kStartUpMacro);
  EXPECT_EQ(startUp.title, "起動時に読み込むマクロファイルを選択");
  EXPECT_EQ(startUp.folder, "C:\\kx\\macro");
  ASSERT_EQ(startUp.filters.size(), 1u);
  EXPECT_EQ(startUp.filters[0].description, "すべてのファイル(*.*)");
  EXPECT_EQ(dialog.BrowseRequest(BrowseTarget::kScheduleMacro).title, "マクロファイルを選択");
  EXPECT_EQ(dialog.BrowseRequest(BrowseTarget::kHotkeyMacro).title, "マクロファイルを選択");
  const FileDialogRequest browser = dialog.BrowseRequest(BrowseTarget::kBrowser);
  EXPECT_EQ(browser.title, "自動操作に使うブラウザを選択");
  ASSERT_EQ(browser.filters.size(), 2u);
  EXPECT_EQ(browser.filters[0].pattern, "*.exe;*.cmd;*.bat");
}

TEST_F(OptionsDialogTest, AssociationWritesItsKeysInOrderAndRemovesThemDeepestFirst) {
  EXPECT_TRUE(dialog.AssociateEnabled());
  EXPECT_FALSE(dialog.RemoveEnabled());
  dialog.Associate();
  const std::vector<std::string> written = {
      ".ksx=ksx_auto_file",
      "ksx_auto_file=Kestrelix マクロファイル",
      "ksx_auto_file\\DefaultIcon=C:\\kx\\Kestrelix.exe,0",
      "ksx_auto_file\\Shell\\open\\command=C:\\kx\\Kestrelix.exe \"%1\"",
  };
  EXPECT_EQ(Events("class-key-set"), written);
  EXPECT_EQ(sim.trace().OfKind("association-changed").size(), 1u);
  EXPECT_EQ(dialog.values.linkage, 8);
  EXPECT_FALSE(dialog.AssociateEnabled());
  EXPECT_TRUE(dialog.RemoveEnabled());

  // Twice rewrites the same values and leaves one association.
  const auto keys = sim.ClassKeys();
  dialog.Associate();
  EXPECT_EQ(sim.ClassKeys(), keys);

  dialog.RemoveAssociation();
  const std::vector<std::string> deleted = {
      "ksx_auto_file\\Shell\\open\\command",
      "ksx_auto_file\\Shell\\open",
      "ksx_auto_file\\Shell",
      "ksx_auto_file\\DefaultIcon",
      "ksx_auto_file",
      ".ksx",
  };
  EXPECT_EQ(Events("class-key-delete"), deleted);  // every delete succeeded
  EXPECT_TRUE(sim.ClassKeys().empty());
  EXPECT_EQ(dialog.values.linkage, 9);
  EXPECT_TRUE(dialog.AssociateEnabled());

  // Removing when there is nothing: nothing changes, Linkage is still 9.
  dialog.RemoveAssociation();
  EXPECT_TRUE(sim.ClassKeys().empty());
  EXPECT_EQ(dialog.values.linkage, 9);
}

TEST_F(OptionsDialogTest, AssociationStopsWhenTheExtensionKeyCannotBeWritten) {
  sim.RefuseClassKey(".ksx");
  dialog.Associate();
  EXPECT_EQ(Events("class-key-set"), std::vector<std::string>{".ksx=ksx_auto_file (failed)"});
  EXPECT_TRUE(sim.ClassKeys().empty());
  EXPECT_EQ(dialog.values.linkage, 9);
  EXPECT_TRUE(dialog.AssociateEnabled());
}

TEST_F(OptionsDialogTest, LaterKeysAreWrittenWhateverBecomesOfEach) {
  sim.RefuseClassKey("ksx_auto_file\\DefaultIcon");
  dialog.Associate();
  EXPECT_EQ(Events("class-key-set").size(), 4u);
  EXPECT_EQ(sim.ClassKeys().at("ksx_auto_file\\Shell\\open\\command"),
            "C:\\kx\\Kestrelix.exe \"%1\"");
  EXPECT_EQ(dialog.values.linkage, 8);
}

TEST(AssociationClassName, LowerCasedWithoutTheDot) {
  EXPECT_EQ(AssociationClassName("ksx"), "ksx_auto_file");
  EXPECT_EQ(AssociationClassName(".KSX"), "ksx_auto_file");
  EXPECT_EQ(AssociationClassName(""), "_auto_file");
}

}  // namespace
}  // namespace kx::gui

// The settings stores on real files: the portable INI store everywhere and,
// in the Windows build, the private-profile store, with the same tests.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>

#include "settings/ini_store.h"
#include "settings/settings.h"
#include "sys/local_files.h"
#include "text/memory_files.h"
#ifdef _WIN32
#include "settings/win32/settings_store_win32.h"
#endif

namespace kx {
namespace {

namespace fs = std::filesystem;

using StoreFactory = std::function<std::unique_ptr<SettingsStore>(FilePort&, const std::string&)>;

struct StoreKind {
  const char* name;
  StoreFactory make;
};

class SettingsStoreTest : public ::testing::TestWithParam<StoreKind> {
 protected:
  void SetUp() override {
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    std::string name = std::string("kx_settings_") + info->name();
    for (char& c : name)
      if (c == '/') c = '_';
    folder_ = fs::temp_directory_path() / name;
    fs::remove_all(folder_);
    fs::create_directories(folder_);
    const std::u8string folder = folder_.u8string();
    path_ = std::string(folder.begin(), folder.end()) + files_.Separator() + "setting.ini";
    store_ = GetParam().make(files_, path_);
  }
  void TearDown() override {
    std::error_code ignored;
    fs::permissions(folder_ / "setting.ini", fs::perms::owner_all, ignored);
    fs::remove_all(folder_, ignored);
  }
  void PutFile(std::string_view bytes) {
    std::ofstream out(folder_ / "setting.ini", std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  }
  std::string FileBytes() const {
    std::ifstream in(folder_ / "setting.ini", std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }
  static std::string Utf16(std::string_view ascii) {
    std::string out = "\xFF\xFE";
    for (const char c : ascii) out += std::string{c, '\0'};
    return out;
  }

  LocalFiles files_;
  fs::path folder_;
  std::string path_;
  std::unique_ptr<SettingsStore> store_;
};

TEST_P(SettingsStoreTest, GivesEveryDefaultWithoutAFile) {
  EXPECT_EQ(store_->ReadInt("Macro", "HotkeyPlay", 19), 19);
  EXPECT_EQ(store_->ReadString("Macro", "DefMacro"), "");
  const Settings settings = ReadSettings(*store_);
  EXPECT_EQ(settings.hotkeyPlay, 19);
  EXPECT_TRUE(settings.mouse);
  EXPECT_EQ(settings.w, 5200);
  EXPECT_FALSE(fs::exists(folder_ / "setting.ini"));
}

TEST_P(SettingsStoreTest, CreatesANewFileAsUtf16WithAMark) {
  store_->Write("Macro", "Auto", "毎日,08:30:00,C:\\マクロ\\朝.ksx");
  EXPECT_TRUE(FileBytes().starts_with("\xFF\xFE"));
  EXPECT_EQ(store_->ReadString("Macro", "Auto"), "毎日,08:30:00,C:\\マクロ\\朝.ksx");
}

TEST_P(SettingsStoreTest, WritesReadsOverwritesAndDeletes) {
  store_->Write("Macro", "Hits", "250");
  store_->Write("Macro", "Tray", "-1");
  store_->Write("Macro", "Hits", "300");
  EXPECT_EQ(store_->ReadInt("Macro", "Hits", 100), 300);
  EXPECT_EQ(store_->ReadInt("Macro", "Tray", 0), -1);
  store_->Delete("Macro", "Hits");
  EXPECT_EQ(store_->ReadInt("Macro", "Hits", 100), 100);
  EXPECT_EQ(store_->ReadInt("Macro", "Tray", 0), -1);
}

TEST_P(SettingsStoreTest, RoundTripsEverySetting) {
  Settings settings;
  settings.hotkeyPlay = 120;
  settings.stamp = true;
  settings.mouse = false;
  settings.up = true;
  settings.loop = true;
  settings.loopCnt = 42;
  settings.defMacro = "C:\\Kestrelix\\Macro\\起動.ksx";
  settings.hotkey = "112|2|Ctrl + F1|C:\\a.ksx";
  settings.autoRuns = "毎日,08:30:00,C:\\a.ksx";
  settings.endNotifer = 3;
  settings.h = 7000;
  for (const SettingKey& key : SettingKeys()) WriteSetting(*store_, settings, key.name);
  const Settings back = ReadSettings(*store_);
  for (const SettingKey& key : SettingKeys())
    EXPECT_EQ(SettingText(back, key), SettingText(settings, key)) << key.name;
}

TEST_P(SettingsStoreTest, SeesAnEditMadeWithATextEditor) {
  store_->Write("Macro", "FontSize", "9");
  PutFile(Utf16("[Macro]\r\nFontSize=14\r\n"));
  EXPECT_EQ(store_->ReadInt("Macro", "FontSize", 9), 14);
  PutFile("[Macro]\r\nFontSize=16\r\n");
  EXPECT_EQ(store_->ReadInt("Macro", "FontSize", 9), 16);
}

TEST_P(SettingsStoreTest, ReadsAUtf8FileWithJapaneseText) {
  PutFile("\xEF\xBB\xBF[Macro]\r\nAuto=毎日,01:00:00,C:\\a.ksx\r\n");
  EXPECT_EQ(store_->ReadString("Macro", "Auto"), "毎日,01:00:00,C:\\a.ksx");
}

struct IntCase {
  std::string_view stored;
  int expected;
};

TEST_P(SettingsStoreTest, ReadsIntegersAsTheProfileFunctionsDo) {
  const IntCase cases[] = {{"12", 12}, {"-1", -1},   {"abc", 0}, {"12abc", 12},
                           {" 7 ", 7}, {"0x10", 16}, {"", 55},   {"+3", 3}};
  for (const IntCase& c : cases) {
    PutFile("[Macro]\r\nN=" + std::string(c.stored) + "\r\n");
    EXPECT_EQ(store_->ReadInt("Macro", "N", 55), c.expected) << "N=" << c.stored;
  }
}

TEST_P(SettingsStoreTest, CutsAStringAtTheFirstNul) {
  static constexpr char kWithNul[] = "[Macro]\r\nDefMacro=C:\\a.ksx\0junk\r\n";
  PutFile(std::string_view(kWithNul, sizeof kWithNul - 1));
  EXPECT_EQ(store_->ReadString("Macro", "DefMacro"), "C:\\a.ksx");
}

TEST_P(SettingsStoreTest, MatchesSectionsAndKeysWithoutRegardToCase) {
  PutFile("[other]\r\nHits=1\r\n[MACRO]\r\nhits=2\r\n");
  EXPECT_EQ(store_->ReadInt("Macro", "Hits", 100), 2);
}

TEST_P(SettingsStoreTest, KeepsOtherSectionsWhenWriting) {
  PutFile("[Other]\r\nA=1\r\n");
  store_->Write("Macro", "Hits", "5");
  EXPECT_EQ(store_->ReadInt("Other", "A", 0), 1);
  EXPECT_EQ(store_->ReadInt("Macro", "Hits", 100), 5);
}

TEST_P(SettingsStoreTest, FallsBackToDefaultsForABinaryFile) {
  std::string binary;
  for (int i = 0; i < 5000; ++i) binary += static_cast<char>((i * 7919 + 13) % 256);
  PutFile(binary);
  const Settings settings = ReadSettings(*store_);
  EXPECT_EQ(settings.hotkeyPlay, 19);
  EXPECT_EQ(settings.linkage, 9);
  EXPECT_EQ(settings.defMacro, "");
}

TEST_P(SettingsStoreTest, FallsBackToDefaultsForATruncatedFile) {
  PutFile("[Macro]\r\nHits=");
  EXPECT_EQ(store_->ReadInt("Macro", "Hits", 100), 100);
  PutFile("[Mac");
  EXPECT_EQ(ReadSettings(*store_).w, 5200);
  PutFile("\xFF\xFE[\0M\0");
  EXPECT_EQ(ReadSettings(*store_).h, 6000);
}

TEST_P(SettingsStoreTest, WritesToAMissingFolderFailSilently) {
  auto store = GetParam().make(files_, path_ + "-missing" + files_.Separator() + "setting.ini");
  store->Write("Macro", "Hits", "5");
  EXPECT_EQ(store->ReadInt("Macro", "Hits", 100), 100);
}

std::vector<StoreKind> Stores() {
  std::vector<StoreKind> kinds = {{"IniStore", [](FilePort& files, const std::string& path) {
                                     return std::make_unique<IniStore>(files, path);
                                   }}};
#ifdef _WIN32
  kinds.push_back({"ProfileStore", [](FilePort&, const std::string& path) {
                     return std::make_unique<ProfileSettingsStore>(path);
                   }});
#endif
  return kinds;
}

INSTANTIATE_TEST_SUITE_P(EachStore, SettingsStoreTest, ::testing::ValuesIn(Stores()),
                         [](const auto& param) { return std::string(param.param.name); });

TEST(SettingsPath, IsTheIniFileBesideTheProgram) {
  testing::MemoryFiles files;
  EXPECT_EQ(SettingsPath(files), "C:\\Kestrelix\\setting.ini");
}

TEST(ParseProfileInt, ReadsSignsPrefixesAndStopsAtTheFirstOtherCharacter) {
  EXPECT_EQ(ParseProfileInt("-1"), -1);
  EXPECT_EQ(ParseProfileInt("0b101"), 5);
  EXPECT_EQ(ParseProfileInt("0o17"), 15);
  EXPECT_EQ(ParseProfileInt("1e3"), 1);
  EXPECT_EQ(ParseProfileInt("x"), 0);
}

}  // namespace
}  // namespace kx

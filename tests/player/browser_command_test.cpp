#include <gtest/gtest.h>

#include <functional>

#include "player/play_fixture.h"

namespace kx::test {
namespace {

constexpr int kPort = 9222;
constexpr std::string_view kArguments =
    R"(--remote-debugging-port=9222 --user-data-dir="/kestrelix/BrowserProfile" )"
    "--no-first-run --no-default-browser-check ";

sim::SimPage LoginPage() {
  return sim::MakeSimPage({{{"input", "text", "user", "", false}, 0},
                           {{"input", "password", "pass", "", false}, 0},
                           {{"textarea", "", "note", "", false}, 0}},
                          1);
}

// A browser installed where App Paths say, which starts on the port it is
// given when launched.
void InstallBrowser(sim::SimSystem& sim, std::string exe, std::string path) {
  sim.AddFile(path, "");
  sim.browsers().AddBrowserProgram(path);
  sim.browsers().RegisterAppPath(std::move(exe), std::move(path));
}

struct BrowserCase {
  std::string name;
  std::function<void(PlayFixture&)> setUp;
  std::string line;
  bool loaded;
  std::string status;                 // the status bar's text begins so
  std::vector<std::string> launches;  // each launch's program and arguments
  std::vector<std::string> tabs;      // addresses opened as new tabs
  std::int64_t endsBeforeMs;          // the play's end on the virtual clock
};

const std::string kNever = "https://example.com/never";

void NeverLoads(PlayFixture& f) {
  sim::SimPage page;
  page.loadingReads = 1 << 30;
  f.sim.browsers().AddWebPage(kNever, page);
}

// Every way a browser line ends: the value it leaves, what the status bar
// says, what it started or opened, and that it ended within its wait.
const std::vector<BrowserCase> kCases = {
    {"StartsEdgeFromAppPaths",
     [](PlayFixture& f) {
       InstallBrowser(f.sim, "msedge.exe", "/edge/msedge.exe");
       InstallBrowser(f.sim, "chrome.exe", "/chrome/chrome.exe");
     },
     "browser https://example.com/ログイン ページ?a=1&b=\"2\"",
     true,
     "ページを読み込みました: https://example.com/ログイン ページ?a=1&b=\"2\"",
     {"/edge/msedge.exe " + std::string(kArguments) +
      "https://example.com/ログイン%20ページ?a=1&b=%222%22"},
     {},
     1000},
    {"StartsChromeWhenEdgeIsMissing",
     [](PlayFixture& f) {
       f.sim.browsers().RegisterAppPath("msedge.exe", "/edge/gone.exe");
       InstallBrowser(f.sim, "chrome.exe", "/chrome/chrome.exe");
     },
     "Browser C:\\pages\\a b.html",
     true,
     "ページを読み込みました",
     {"/chrome/chrome.exe " + std::string(kArguments) + "file:///C:/pages/a%20b.html"},
     {},
     1000},
    {"TheSettingBrowserComesFirst",
     [](PlayFixture& f) {
       InstallBrowser(f.sim, "msedge.exe", "/edge/msedge.exe");
       f.sim.AddFile("/apps/chromium.cmd", "");
       f.sim.browsers().AddBrowserProgram("/apps/chromium.cmd");
       f.player.Options().browser = "/apps/chromium.cmd";
     },
     "browser file:///tmp/login.html",
     true,
     "ページを読み込みました",
     {"/apps/chromium.cmd " + std::string(kArguments) + "file:///tmp/login.html"},
     {},
     1000},
    {"NoBrowserInstalled",
     [](PlayFixture&) {},
     "browser https://example.com/",
     false,
     "browser: ブラウザが見つかりません: Microsoft Edge / Google Chrome",
     {},
     {},
     200},
    {"TheSettingBrowserNamesAMissingFile",
     [](PlayFixture& f) {
       InstallBrowser(f.sim, "msedge.exe", "/edge/msedge.exe");
       f.player.Options().browser = "/nowhere/browser.exe";
     },
     "browser https://example.com/",
     false,
     "browser: ブラウザが見つかりません: /nowhere/browser.exe",
     {},
     {},
     200},
    {"ThePortBelongsToAnotherProgram",
     [](PlayFixture& f) {
       InstallBrowser(f.sim, "msedge.exe", "/edge/msedge.exe");
       f.sim.browsers().OccupyPort(kPort);
     },
     "browser https://example.com/",
     false,
     "browser: ポート9222はブラウザ以外のプログラムが使っています",
     {},
     {},
     200},
    {"ARunningBrowserGetsANewTab",
     [](PlayFixture& f) {
       InstallBrowser(f.sim, "msedge.exe", "/edge/msedge.exe");
       f.sim.AddDevToolsPage(kPort);
     },
     "browser https://example.com/検索 結果",
     true,
     "ページを読み込みました",
     {},
     {"https://example.com/検索 結果"},
     1000},
    {"APageThatNeverFinishesLoadingTimesOut",
     [](PlayFixture& f) {
       f.sim.AddDevToolsPage(kPort);
       NeverLoads(f);
       f.player.Options().browserWaitMs = 3000;
     },
     "browser " + kNever,
     false,
     "browser: ページが3000ミリ秒以内に読み込まれませんでした",
     {},
     {kNever},
     3300},
    {"AStartedProgramThatNeverAnswersTimesOut",
     [](PlayFixture& f) {
       f.sim.AddFile("/apps/notepad.exe", "");
       f.player.Options().browser = "/apps/notepad.exe";
       f.player.Options().browserWaitMs = 2000;
     },
     "browser https://example.com/",
     false,
     "browser: ブラウザがポート9222で2000ミリ秒以内に応答しませんでした",
     {"/apps/notepad.exe " + std::string(kArguments) + "https://example.com/"},
     {},
     2300},
    {"TheBrowserClosesWhileThePageLoads",
     [](PlayFixture& f) {
       f.sim.AddDevToolsPage(kPort);
       NeverLoads(f);
       f.sim.SetPumpHook(
           [&f] {
             if (f.sim.NowMs() >= 500) f.sim.browsers().CloseBrowser(kPort);
           },
           500'000);
     },
     "browser " + kNever,
     false,
     "browser: ブラウザが閉じられました",
     {},
     {kNever},
     800},
    {"TextThatIsNotAnAddressOpensNothing",
     [](PlayFixture& f) { InstallBrowser(f.sim, "msedge.exe", "/edge/msedge.exe"); },
     "browser www.example.com",
     false,
     "browser: アドレスではありません: www.example.com",
     {},
     {},
     200},
    {"ALineWithoutAnAddressOpensNothing",
     [](PlayFixture& f) { InstallBrowser(f.sim, "msedge.exe", "/edge/msedge.exe"); },
     "BROWSER",
     false,
     "browser: アドレスではありません",
     {},
     {},
     200},
    {"TheStopHotkeyEndsTheWaitAtOnce",
     [](PlayFixture& f) {
       f.sim.AddDevToolsPage(kPort);
       NeverLoads(f);
       f.sim.ScheduleHotkey(700, kHotkeyPlay);
     },
     "browser " + kNever,
     false,
     "browser: 再生が止められたので待つのをやめました",
     {},
     {kNever},
     720},
    {"ThePauseHotkeyEndsTheWaitAtOnce",
     [](PlayFixture& f) {
       f.sim.AddDevToolsPage(kPort);
       NeverLoads(f);
       f.sim.ScheduleHotkey(900, kHotkeyPause);
     },
     "browser " + kNever,
     false,
     "browser: 再生が止められたので待つのをやめました",
     {},
     {kNever},
     920},
};

class BrowserLine : public testing::TestWithParam<BrowserCase> {};

TEST_P(BrowserLine, EndsWithItsValueItsMessageAndWithinItsWait) {
  const BrowserCase& c = GetParam();
  PlayFixture f;
  c.setUp(f);
  f.Play({"getloop", c.line});
  EXPECT_EQ(f.player.Value().ToText(), c.loaded ? "True" : "False");
  EXPECT_TRUE(f.sim.LastStatus().starts_with(c.status)) << f.sim.LastStatus();
  std::vector<std::string> launches, tabs;
  for (const auto& e : f.sim.trace().OfKind("launch"))
    launches.push_back(e.fields["program"].get<std::string>() + " " +
                       e.fields["arguments"].get<std::string>());
  for (const auto& e : f.sim.trace().OfKind("open_tab"))
    tabs.push_back(e.fields["url"].get<std::string>());
  EXPECT_EQ(launches, c.launches);
  EXPECT_EQ(tabs, c.tabs);
  EXPECT_LT(f.sim.NowMs(), c.endsBeforeMs);
  EXPECT_FALSE(f.player.Playing());
}

INSTANTIATE_TEST_SUITE_P(AllOutcomes, BrowserLine, testing::ValuesIn(kCases),
                         [](const auto& param) { return param.param.name; });

TEST(BrowserLine, ChromePathsActOnTheTabTheLastBrowserLineOpened) {
  PlayFixture f;
  InstallBrowser(f.sim, "msedge.exe", "/edge/msedge.exe");
  sim::SimPage& first = f.sim.AddDevToolsPage(kPort, LoginPage());  // tab-1
  f.sim.browsers().AddWebPage("file:///b.html", LoginPage());
  f.sim.browsers().AddWebPage("file:///c.html", LoginPage());
  // Once both tabs are open, the user opens another one, which becomes the
  // browser's most recently active tab.
  sim::SimPage* users = nullptr;
  f.sim.SetPumpHook(
      [&] {
        if (!users && f.sim.trace().OfKind("open_tab").size() == 2)
          users = &f.sim.AddDevToolsPage(kPort, LoginPage());
      },
      -1);
  f.Play({"browser file:///b.html", "browser file:///c.html", "<switch>", "<case True>",
          "pw ユーザー 1,秘密 の,chrome", "ip note=日本語\\n二行,0,chrome", "waitweb",
          "</switch>"});
  const sim::SimTab* b = f.sim.browsers().Tab(kPort, "tab-2");
  const sim::SimTab* c = f.sim.browsers().Tab(kPort, "tab-3");
  ASSERT_TRUE(b && c && users);
  EXPECT_EQ(c->page.elements[0].element.value, "ユーザー 1");
  EXPECT_EQ(c->page.elements[1].element.value, "秘密 の");
  EXPECT_EQ(c->page.elements[2].element.value, "日本語\r\n二行");
  EXPECT_EQ(b->page.elements[0].element.value, "");
  EXPECT_EQ(first.elements[0].element.value, "");
  EXPECT_EQ(users->elements[0].element.value, "");
  for (const auto& request : f.sim.DocumentRequests())
    EXPECT_EQ(request, R"({"port":9222,"tab":"tab-3"})");

  // A new play has opened no tab: "chrome" is the browser's most recently
  // active one, the user's.
  f.sim.SetPumpHook(nullptr, -1);
  f.Play({"pw 次,の,chrome"});
  EXPECT_EQ(users->elements[0].element.value, "次");
  EXPECT_EQ(f.sim.DocumentRequests().back(), R"({"port":9222})");
}

}  // namespace
}  // namespace kx::test

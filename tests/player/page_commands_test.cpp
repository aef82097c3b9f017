#include <gtest/gtest.h>

#include "player/play_fixture.h"

namespace kx::test {
namespace {

std::string H(WindowHandle h) {
  return std::to_string(h);
}

// Notepad with two edit boxes, and a dialog with two buttons.
struct Desktop : PlayFixture {
  WindowHandle notepad = Add("Notepad", "memo", 0, {0, 0, 640, 480});
  WindowHandle edit1 = Add("Edit", "one", notepad, {100, 100, 300, 200});
  WindowHandle edit2 = Add("Edit", "two", notepad, {100, 200, 300, 300});
  WindowHandle dialog = Add("#32770", "確認");
  WindowHandle ok = Add("Button", "OK", dialog);
  WindowHandle cancel = Add("Button", "キャンセル", dialog);

  WindowHandle Add(std::string cls, std::string title, WindowHandle parent = 0,
                   Rect rect = {2000, 2000, 2100, 2100}) {
    sim::SimWindow w;
    w.className = std::move(cls);
    w.title = std::move(title);
    w.parent = parent;
    w.rect = rect;
    return sim.AddWindow(w);
  }
  std::string Text(WindowHandle w) { return sim.Title(w); }
};

TEST(WindowTextCommands, StSetsAndAdAppendsTheTextOfThePathsWindow) {
  Desktop d;
  d.Play({"ST Hello,,Notepad+memo,Edit*2"});
  EXPECT_EQ(d.Text(d.edit2), "Hello");
  // A value cannot hold a comma: " World" is the second field and the path
  // starts at the empty third.
  d.Play({"ST Hello, World,,Notepad+memo,Edit*2"});
  EXPECT_TRUE(d.Effects("settext").empty());
  d.Play({"st 日本語,,notepad,edit", "AD  と追加,,Notepad,Edit*1", "ad ,,Notepad,Edit"});
  // The argument is trimmed: the blank before the value goes.
  EXPECT_EQ(d.Text(d.edit1), "日本語と追加");
  EXPECT_EQ(d.Effects("settext"),
            (std::vector<std::string>{
                R"({"ev":"settext","hwnd":)" + H(d.edit1) + R"(,"text":"日本語"})",
                R"({"ev":"settext","hwnd":)" + H(d.edit1) + R"(,"text":"日本語と追加"})",
                R"({"ev":"settext","hwnd":)" + H(d.edit1) + R"(,"text":"日本語と追加"})"}));
}

TEST(WindowTextCommands, NoWindowNoPathOrTooFewFieldsEndQuietly) {
  Desktop d;
  const auto effects = d.Play({"st x,,Notepad,Edit*3", "st x,,Nothing", "st x", "ad x,y",
                               "gt Nothing", "cc 1,2,Nothing", "kk enter,,Nothing", "bc 12345",
                               "ts 12345,x", "bc", "ts", "cc", "kk", "gt", "beep"});
  EXPECT_EQ(effects, std::vector<std::string>{R"({"ev":"beep"})"});
  EXPECT_EQ(d.player.Value().ToText(), "");
}

TEST(WindowTextCommands, GtReadsByPathPointOrHandleIntoTheCurrentValue) {
  Desktop d;
  d.Play({"gt Notepad+memo,Edit*2", "<debug>"});
  EXPECT_EQ(d.Effects("msgbox"),
            std::vector<std::string>{R"({"ev":"msgbox","title":"現在の値","text":"two"})"});
  d.Play({"GT(150,150)", "<debug>"});
  EXPECT_EQ(d.player.Value().ToText(), "one");
  d.Play({"gt " + H(d.cancel), "<debug>"});
  EXPECT_EQ(d.player.Value().ToText(), "キャンセル");
  // Nothing at the point: the desktop's text, which is empty.
  d.Play({"gt (5000,5000)", "<debug>"});
  EXPECT_EQ(d.Effects("msgbox"),
            std::vector<std::string>{R"({"ev":"msgbox","title":"現在の値","text":""})"});
  // A path that finds nothing leaves the value as it was.
  d.Play({"getloop", "gt Nothing,Edit", "<debug>"});
  EXPECT_EQ(d.player.Value().ToText(), "1");
}

TEST(WindowTextCommands, TsRenamesAndBcPressesByHandle) {
  Desktop d;
  d.Play({"ts " + H(d.notepad) + ",新しい, 名前", "bc " + H(d.ok)});
  EXPECT_EQ(d.Text(d.notepad), "新しい, 名前");
  EXPECT_EQ(d.Effects("button_click"),
            std::vector<std::string>{R"({"ev":"button_click","hwnd":)" + H(d.ok) + "}"});
}

TEST(WindowTextCommands, CcSendsAClickAtAClientPointWithoutMovingThePointer) {
  Desktop d;
  d.sim.SetCursorPos({7, 9});
  d.sim.SetForegroundWindow(d.notepad);
  d.sim.trace().Clear();
  d.Play({"CC 10,20,#32770+確認,Button*2"});
  EXPECT_EQ(d.Effects(), std::vector<std::string>{R"({"ev":"sent_click","hwnd":)" + H(d.cancel) +
                                                  R"(,"x":10,"y":20})"});
  EXPECT_EQ(d.sim.GetCursorPos(), (Point{7, 9}));
  EXPECT_EQ(d.sim.Foreground(), d.notepad);
  d.Play({"cc x,20,#32770+確認,Button*2"});
  EXPECT_TRUE(d.Effects("sent_click").empty());
}

TEST(WindowTextCommands, KkPostsAKeyByWordOrNumber) {
  Desktop d;
  d.Play({"kk Enter,,Notepad,Edit", "kk 65,,Notepad,Edit*2", "kk a,,Notepad,Edit",
          "kk lshift down,,Notepad,Edit", "kk 300,,Notepad,Edit"});
  EXPECT_EQ(
      d.Effects("posted_key"),
      (std::vector<std::string>{R"({"ev":"posted_key","hwnd":)" + H(d.edit1) + R"(,"vk":13})",
                                R"({"ev":"posted_key","hwnd":)" + H(d.edit2) + R"(,"vk":65})",
                                R"({"ev":"posted_key","hwnd":)" + H(d.edit1) + R"(,"vk":65})"}));
  EXPECT_TRUE(d.Effects("keys").empty());
}

// An Internet Explorer engine window with a login page.
struct Browser : Desktop {
  WindowHandle frame = Add("IEFrame", "Internet Explorer");
  WindowHandle server = Chain();
  sim::SimPage& page =
      sim.AddPage(server, sim::MakeSimPage({{{"INPUT", "text", "user", "", false}, 0},
                                            {{"INPUT", "password", "pass", "", false}, 0},
                                            {{"TEXTAREA", "", "note", "", false}, 0},
                                            {{"INPUT", "hidden", "token", "t", false}, 0}},
                                           1));
  WindowHandle Chain() {
    WindowHandle w = frame;
    for (const char* cls : {"Frame Tab", "TabWindowClass", "Shell DocObject View"})
      w = Add(cls, "", w);
    return Add("Internet Explorer_Server", "", w);
  }
  const PageElement& At(std::size_t i) { return page.elements[i].element; }
};

constexpr const char* kIePath =
    "IEFrame,Frame Tab,TabWindowClass,Shell DocObject View,"
    "Internet Explorer_Server";

TEST(PageCommands, IpFillsTwoFieldsAndSubmitsTheForm) {
  Browser b;
  b.page.loadingReads = 3;
  b.Play({std::string("IP user=abc / pass=xyz / note=a\\nb / token=x,0,") + kIePath});
  EXPECT_EQ(b.At(0).value, "abc");
  EXPECT_EQ(b.At(1).value, "xyz");
  EXPECT_EQ(b.At(2).value, "a\r\nb");
  EXPECT_EQ(b.At(3).value, "t");
  EXPECT_EQ(b.page.submitted, std::vector<int>{0});
  EXPECT_GE(b.Times("page_value").front(), 100 + 30);  // after the page loaded
}

TEST(PageCommands, PwLogsInWithTheBoxesCaseKept) {
  Browser b;
  b.Play({std::string("pw Me,S3cret,") + kIePath});
  EXPECT_EQ(b.At(0).value, "Me");
  EXPECT_EQ(b.At(1).value, "S3cret");
  EXPECT_EQ(b.page.submitted, std::vector<int>{0});
}

TEST(PageCommands, NoDocumentOrNoWindowEndsQuietly) {
  Browser b;
  b.page.gone = true;
  EXPECT_EQ(b.Play({std::string("ip user=abc,0,") + kIePath, "pw a,b,Nothing", "ip a=b", "beep"}),
            std::vector<std::string>{R"({"ev":"beep"})"});
}

TEST(PageCommands, ChromeKeywordAndChromiumFramesGoToTheDevToolsPort) {
  Browser b;
  const auto chrome = b.Add("Chrome_WidgetWin_1", "Login - Chromium");
  b.Add("Chrome_RenderWidgetHostHWND", "", chrome);
  auto& remote =
      b.sim.AddDevToolsPage(9333, sim::MakeSimPage({{{"input", "text", "user", "", false}, 0},
                                                    {{"input", "password", "pass", "", false}, 0}},
                                                   1));
  b.player.Options().devToolsPort = 9333;
  b.Play({"ip user=kw,,Chrome", "pw id,pw,Chrome_WidgetWin_1,Chrome_RenderWidgetHostHWND",
          std::string("ip user=ie,,") + kIePath});
  EXPECT_EQ(remote.elements[0].element.value, "id");
  EXPECT_EQ(remote.elements[1].element.value, "pw");
  EXPECT_EQ(remote.submitted, std::vector<int>{0});
  EXPECT_EQ(b.At(0).value, "ie");
  EXPECT_EQ(b.sim.DocumentRequests(),
            (std::vector<std::string>{R"({"port":9333})", R"({"port":9333})",
                                      R"({"hwnd":)" + H(b.server) + "}"}));
  // The same path on the default port finds no browser there.
  b.player.Options().devToolsPort = 9222;
  EXPECT_EQ(b.Play({"ip user=x,,chrome", "beep"}), std::vector<std::string>{R"({"ev":"beep"})"});
}

TEST(PageCommands, WaitwebWaitsItsTimeScaledByTheSpeedThenForThePage) {
  Browser b;
  b.Play({"waitweb", "beep"});
  // 100 ms before the first line, 1500 ms, the line pause.
  EXPECT_GE(b.Times("beep")[0], 100 + 1500 + 8);
  EXPECT_LE(b.Times("beep")[0], 100 + 1500 + 8 + 2);
  b.player.Options().speedFactor = 2;
  b.page.loadingReads = 10;
  b.Play({"waitweb", "beep"});
  EXPECT_GE(b.Times("beep")[0], 100 + 3000 + 100);
  EXPECT_LE(b.Times("beep")[0], 100 + 3000 + 100 + 30);
  EXPECT_EQ(b.sim.DocumentRequests().back(), R"({"hwnd":)" + H(b.server) + "}");
}

TEST(PageCommands, WaitwebWithoutAnInternetExplorerWindowWaitsForTheDevToolsPage) {
  Desktop d;
  d.sim.AddDevToolsPage(9222, sim::MakeSimPage({}, 0)).loadingReads = 50;
  d.Play({"waitweb", "beep"});
  EXPECT_EQ(d.sim.DocumentRequests(), std::vector<std::string>{R"({"port":9222})"});
  // 50 reads 10 ms apart after the 1500 ms.
  EXPECT_GE(d.Times("beep")[0], 100 + 1500 + 500);
}

TEST(PageCommands, AStopDuringWaitwebsWaitEndsItAtOnce) {
  Browser b;
  b.sim.ScheduleHotkey(700, kHotkeyPlay);
  b.Play({"waitweb", "beep"});
  EXPECT_LE(b.sim.NowMs(), 710);
  EXPECT_TRUE(b.Effects("beep").empty());
  EXPECT_TRUE(b.sim.DocumentRequests().empty());

  // A page that never finishes loading: the stop ends the wait for it too.
  b.page.loadingReads = 1000000;
  b.sim.ScheduleHotkey(5000, kHotkeyPlay);
  b.Play({"waitweb", "beep"});
  EXPECT_LE(b.sim.NowMs(), 5020);
  EXPECT_TRUE(b.Effects("beep").empty());
}

}  // namespace
}  // namespace kx::test

#include "page/window_path.h"

#include <gtest/gtest.h>

#include <initializer_list>

#include "sim/sim_system.h"

namespace kx {
namespace {

// A top-level window and its children, added in the order the system lists
// them.
struct Tree {
  sim::SimSystem sim;
  WindowHandle Add(std::string cls, std::string title = "", WindowHandle parent = 0) {
    sim::SimWindow w;
    w.className = std::move(cls);
    w.title = std::move(title);
    w.parent = parent;
    return sim.AddWindow(w);
  }
  // A chain of first children below `top`, one of each class; the last.
  WindowHandle Chain(WindowHandle top, std::initializer_list<const char*> classes) {
    WindowHandle w = top;
    for (const char* cls : classes) w = Add(cls, "", w);
    return w;
  }
  WindowHandle Find(std::string_view path) { return FindDocumentWindow(sim, path); }
};

TEST(WindowPath, ClassAndTitleThenChildStepsByClassCountAndTitle) {
  Tree t;
  t.Add("Notepad", "other");
  const auto notepad = t.Add("Notepad", "memo.txt");
  const auto edit1 = t.Add("Edit", "", notepad);
  const auto edit2 = t.Add("Edit", "", notepad);
  const auto status = t.Add("msctls_statusbar32", "ready", notepad);
  EXPECT_EQ(t.Find("Notepad+memo.txt"), notepad);
  EXPECT_EQ(t.Find("Notepad+memo.txt,Edit"), edit1);
  EXPECT_EQ(t.Find("Notepad+memo.txt,Edit*1"), edit1);
  EXPECT_EQ(t.Find("Notepad+memo.txt,Edit*2"), edit2);
  EXPECT_EQ(t.Find("Notepad+memo.txt,Edit*3"), 0u);
  EXPECT_EQ(t.Find("Notepad+memo.txt,msctls_statusbar32+ready"), status);
  EXPECT_EQ(t.Find("Notepad+memo.txt,msctls_statusbar32+busy"), 0u);
}

TEST(WindowPath, TopLevelByCountOrBareClassAndAMissingTitleFallsBackToTheCount) {
  Tree t;
  const auto first = t.Add("Notepad", "a");
  t.Add("Edit", "", first);
  const auto second = t.Add("Notepad", "b");
  const auto secondEdit = t.Add("Edit", "", second);
  EXPECT_EQ(t.Find("Notepad"), first);
  EXPECT_EQ(t.Find("Notepad*2"), second);
  EXPECT_EQ(t.Find("Notepad*2,Edit"), secondEdit);
  EXPECT_EQ(t.Find("Notepad*3"), 0u);
  // No window has that title: the first of the class, or the n-th.
  EXPECT_EQ(t.Find("Notepad+gone"), first);
  EXPECT_EQ(t.Find("Notepad*2+gone"), second);
  // Child steps have no such fall-back.
  EXPECT_EQ(t.Find("Notepad,Edit+gone"), 0u);
}

TEST(WindowPath, ADialogsButtonsAreToldApartByCount) {
  Tree t;
  const auto dialog = t.Add("#32770", "保存の確認");
  const auto yes = t.Add("Button", "はい(&Y)", dialog);
  const auto no = t.Add("Button", "いいえ(&N)", dialog);
  EXPECT_EQ(t.Find("#32770+保存の確認,Button*1"), yes);
  EXPECT_EQ(t.Find("#32770+保存の確認,Button*2"), no);
  EXPECT_EQ(t.Find("#32770+保存の確認,Button+いいえ(&N)"), no);
}

TEST(WindowPath, ChildStepsSearchOnlyUnderTheWindowBefore) {
  Tree t;
  const auto frame = t.Add("Frame");
  const auto pane = t.Add("Pane", "", frame);
  t.Add("Edit", "", frame);  // a sibling of the pane, not under it
  const auto inner = t.Add("Edit", "", pane);
  EXPECT_EQ(t.Find("Frame,Pane,Edit"), inner);
  EXPECT_EQ(t.Find("Frame,Pane,Edit*2"), 0u);
  EXPECT_EQ(t.Find("Edit"), 0u);  // never a top-level window
}

TEST(WindowPath, BrowserKeywordsFollowTheirChainsInAnyCase) {
  Tree t;
  t.Add("Unrelated");
  const auto frame = t.Add("SleipnirFrame");
  const auto server = t.Chain(frame, {"MDIClient", "AfxFrameOrView42", "Shell Embedding",
                                      "Shell DocObject View", "Internet Explorer_Server"});
  EXPECT_EQ(t.Find("sleipnir"), server);
  EXPECT_EQ(t.Find("Sleipnir"), server);
  EXPECT_EQ(t.Find("SLEIPNIR"), server);
  EXPECT_EQ(t.Find("sleipnir2"), 0u);  // the second generation's chain differs
  const auto match = WalkWindowPath(t.sim, std::vector<std::string>{"sleipnir"});
  EXPECT_EQ(match.topLevel, frame);

  const auto server2 =
      t.Chain(t.Add("Sleipnir2Frame"), {"MDIClient", "IEBrowserFrame", "Shell Embedding",
                                        "Shell DocObject View", "Internet Explorer_Server"});
  EXPECT_EQ(t.Find("sleipnir2"), server2);

  EXPECT_EQ(t.Find("firefox"), 0u);
  const auto firefox = t.Add("MozillaWindowClass", "Mozilla Firefox");
  const auto content = t.Add("MozillaContentWindowClass", "", firefox);
  EXPECT_EQ(t.Find("FireFox"), firefox);
  EXPECT_EQ(t.Find("firefox,MozillaContentWindowClass"), content);
}

TEST(WindowPath, TheInternetExplorerPathOfWaitweb) {
  Tree t;
  const auto server =
      t.Chain(t.Add("IEFrame", "Internet Explorer"),
              {"Frame Tab", "TabWindowClass", "Shell DocObject View", "Internet Explorer_Server"});
  EXPECT_EQ(t.Find(kInternetExplorerPath), server);
}

TEST(WindowPath, EmptyOrMalformedPathsFindNothing) {
  Tree t;
  const auto notepad = t.Add("Notepad", "memo");
  t.Add("Edit", "", notepad);
  EXPECT_EQ(t.Find(""), 0u);
  EXPECT_EQ(t.Find(","), 0u);
  EXPECT_EQ(t.Find("Notepad,"), 0u);
  EXPECT_EQ(t.Find("Notepad*0"), 0u);
  EXPECT_EQ(t.Find("Notepad*x"), 0u);
  EXPECT_EQ(t.Find("Notepad*-1"), 0u);
  EXPECT_EQ(t.Find("Notepad*99999999999"), 0u);
  EXPECT_EQ(t.Find("+memo"), 0u);
  EXPECT_EQ(t.Find("Notepad,Edit*1e9"), 0u);
}

}  // namespace
}  // namespace kx

#include "page/page_fields.h"

#include <gtest/gtest.h>

#include "sim/sim_system.h"

namespace kx {
namespace {

sim::SimPageElement Input(std::string type, std::string name, std::string value = "",
                          int form = 0) {
  return {{"INPUT", std::move(type), std::move(name), std::move(value), false}, form};
}
sim::SimPageElement Tag(std::string tag, std::string name, std::string value = "", int form = 0) {
  return {{std::move(tag), "", std::move(name), std::move(value), false}, form};
}

// A page on a simulated window, read and written through the document port.
struct Page {
  sim::SimSystem sim;
  WindowHandle window = sim.AddWindow({});
  sim::SimPage& page;
  std::unique_ptr<PageDocument> document;
  explicit Page(std::vector<sim::SimPageElement> elements, int forms = 1)
      : page(sim.AddPage(window, sim::MakeSimPage(std::move(elements), forms))),
        document(sim.FromWindow(window)) {}
  const PageElement& At(std::size_t i) const { return page.elements[i].element; }
};

TEST(PagePairs, SplitOnSpacedSlashesElseOnSlashes) {
  EXPECT_EQ(SplitPagePairs("user=abc / pass=xyz"),
            (std::vector<std::string>{"user=abc", "pass=xyz"}));
  EXPECT_EQ(SplitPagePairs("user=abc/pass=xyz"),
            (std::vector<std::string>{"user=abc", "pass=xyz"}));
  // Spaced slashes win: a plain slash inside a value stays.
  EXPECT_EQ(SplitPagePairs("url=a/b / q=1"), (std::vector<std::string>{"url=a/b", "q=1"}));
  EXPECT_EQ(SplitPagePairs("one=1"), std::vector<std::string>{"one=1"});
}

TEST(PagePairs, CheckboxValuesReadAsBooleans) {
  EXPECT_EQ(PageBoolean("True"), true);
  EXPECT_EQ(PageBoolean("FALSE"), false);
  EXPECT_EQ(PageBoolean("-1"), true);
  EXPECT_EQ(PageBoolean("0"), false);
  EXPECT_EQ(PageBoolean("yes"), std::nullopt);
  EXPECT_EQ(PageBoolean(""), std::nullopt);
}

TEST(FillPageFields, TwoFieldsAndASubmit) {
  Page p({Input("text", "user"), Input("password", "pass"), Input("submit", "go")});
  FillPageFields(*p.document, "user=abc / pass=xyz", "0");
  EXPECT_EQ(p.At(0).value, "abc");
  EXPECT_EQ(p.At(1).value, "xyz");
  EXPECT_EQ(p.page.submitted, std::vector<int>{0});
}

TEST(FillPageFields, BackslashNBecomesALineBreakAndValuesKeepTheirEqualsSigns) {
  Page p({Tag("TEXTAREA", "note"), Input("text", "expr")});
  FillPageFields(*p.document, "note=a\\nb/expr=x=1", "");
  EXPECT_EQ(p.At(0).value, "a\r\nb");
  EXPECT_EQ(p.At(1).value, "x=1");
  EXPECT_TRUE(p.page.submitted.empty());
}

TEST(FillPageFields, HiddenFieldsAreLeftAndEveryFieldOfTheNameIsFilled) {
  Page p({Input("hidden", "token", "t0"), Input("HIDDEN", "user", "u0")});
  FillPageFields(*p.document, "token=x / user=y", "");
  EXPECT_EQ(p.At(0).value, "t0");
  EXPECT_EQ(p.At(1).value, "u0");
  EXPECT_TRUE(p.sim.trace().Events().empty());

  Page twice({Input("text", "q"), Input("", "q"), Input("hidden", "q", "h")});
  FillPageFields(*twice.document, "q=both", "");
  EXPECT_EQ(twice.At(0).value, "both");
  EXPECT_EQ(twice.At(1).value, "both");
  EXPECT_EQ(twice.At(2).value, "h");
}

TEST(FillPageFields, CheckboxesTakeBooleansAndOtherValuesAreSwallowed) {
  Page p({Input("checkbox", "keep"), Input("checkbox", "mail"), Input("text", "after")});
  p.page.elements[1].element.checked = true;
  FillPageFields(*p.document, "keep=True / mail=perhaps / after=done", "");
  EXPECT_TRUE(p.At(0).checked);
  EXPECT_TRUE(p.At(1).checked);  // unchanged
  EXPECT_EQ(p.At(2).value, "done");
  FillPageFields(*p.document, "keep=0", "");
  EXPECT_FALSE(p.At(0).checked);
}

TEST(FillPageFields, UnknownNamesPairsWithoutEqualsAndMissingFormsDoNothing) {
  Page p({Input("text", "user")});
  FillPageFields(*p.document, "nobody=1 / broken / user=ok", "7");
  EXPECT_EQ(p.At(0).value, "ok");
  EXPECT_TRUE(p.page.submitted.empty());
  FillPageFields(*p.document, "", "x");
  EXPECT_TRUE(p.page.submitted.empty());
}

TEST(AutoLogin, FillsTheBoxBeforeThePasswordAndSendsItsForm) {
  Page p({Input("text", "q", "", 0), Input("text", "id", "", 1), Input("password", "pw", "", 1),
          Input("submit", "login", "", 1)},
         2);
  AutoLogin(*p.document, "me", "secret");
  EXPECT_EQ(p.At(0).value, "");
  EXPECT_EQ(p.At(1).value, "me");
  EXPECT_EQ(p.At(2).value, "secret");
  EXPECT_EQ(p.page.submitted, std::vector<int>{1});
}

TEST(AutoLogin, EmptyFieldsAreLeftAndAPageWithoutPasswordIsUntouched) {
  Page p({Input("text", "id", "old"), Input("password", "pw", "kept")});
  AutoLogin(*p.document, "", "");
  EXPECT_EQ(p.At(0).value, "old");
  EXPECT_EQ(p.At(1).value, "kept");
  EXPECT_EQ(p.page.submitted, std::vector<int>{0});

  Page none({Input("text", "id"), Tag("DIV", "")});
  AutoLogin(*none.document, "me", "secret");
  EXPECT_EQ(none.At(0).value, "");
  EXPECT_TRUE(none.sim.trace().Events().empty());
}

TEST(WaitPageComplete, ReadsEveryTenMillisecondsUntilCompleteOrStopped) {
  Page p({});
  p.page.loadingReads = 5;
  bool playing = true;
  EXPECT_TRUE(WaitPageComplete(*p.document, p.sim, playing));
  EXPECT_EQ(p.sim.NowMs(), 50);

  p.page.loadingReads = 1000000;
  p.sim.ResetClock();
  p.sim.SetPumpHook([&] { playing = p.sim.NowMs() < 200; }, -1);
  EXPECT_FALSE(WaitPageComplete(*p.document, p.sim, playing));
  EXPECT_LE(p.sim.NowMs(), 210);

  playing = true;
  p.sim.SetPumpHook({}, -1);
  p.page.gone = true;
  EXPECT_FALSE(WaitPageComplete(*p.document, p.sim, playing));
}

TEST(CapturePageFields, NamedFieldsOfTheCapturedKindsJoinedBySpacedSlashes) {
  Page p({Input("text", "user", "abc"), Input("password", "pass", "xyz"),
          Input("hidden", "token", "t"), Input("checkbox", "keep"), Input("submit", "go", "Go"),
          Input("text", "", "nameless"), Tag("SELECT", "lang", "ja"),
          Tag("TEXTAREA", "note", "a\r\nb\nc"), Tag("DIV", "box", "x"), Input("", "plain", "p")});
  p.page.elements[3].element.checked = true;
  EXPECT_EQ(CapturePageFields(*p.document),
            "user=abc / pass=xyz / keep=True / lang=ja / note=a\\nb\\nc / plain=p");
}

TEST(CapturePageFields, NothingForAPageWithoutFieldsOrAGonePage) {
  Page p({Input("hidden", "token", "t"), Tag("DIV", "x")});
  EXPECT_EQ(CapturePageFields(*p.document), std::nullopt);
  p.page.elements.push_back(Input("checkbox", "c"));
  EXPECT_EQ(CapturePageFields(*p.document), "c=False");
  p.page.gone = true;
  EXPECT_EQ(CapturePageFields(*p.document), std::nullopt);
}

TEST(CapturePageFields, ACapturedListFillsTheSamePageBack) {
  Page source(
      {Input("text", "user", "abc"), Input("checkbox", "keep"), Tag("TEXTAREA", "note", "a\r\nb")});
  source.page.elements[1].element.checked = true;
  const auto pairs = CapturePageFields(*source.document);
  ASSERT_TRUE(pairs);
  Page target({Input("text", "user"), Input("checkbox", "keep"), Tag("TEXTAREA", "note")});
  FillPageFields(*target.document, *pairs, "");
  EXPECT_EQ(target.At(0).value, "abc");
  EXPECT_TRUE(target.At(1).checked);
  EXPECT_EQ(target.At(2).value, "a\r\nb");
}

}  // namespace
}  // namespace kx

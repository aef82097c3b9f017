#include <gtest/gtest.h>

#include "player/play_fixture.h"

namespace kx::test {
namespace {

using F = PlayFixture;

TEST(KeyLines, ModifierWordsHoldAndReleaseTheGenericKeys) {
  F f;
  f.Play({"LSHIFT DOWN", "lshift down", "Shift Down", "rwin down", "rctrl up"});
  EXPECT_EQ(f.Effects("keys"),
            (std::vector<std::string>{F::Keys(R"([16,"down"])"), F::Keys(R"([16,"down"])"),
                                      F::Keys(R"([16,"down"])"), F::Keys(R"([91,"down"])"),
                                      F::Keys(R"([17,"up"])")}));
}

TEST(KeyLines, PrintScreenPressesTheSnapshotKeyAndWaits) {
  F f;
  f.Play({"PrintScreen", "beep"});
  EXPECT_EQ(f.Effects("keys"), std::vector<std::string>{F::Press(44)});
  EXPECT_GE(f.Times("beep")[0] - f.Times("keys")[0], 100);
}

TEST(KeyLines, CodesNeedingShiftAndUnknownWordsPressNothing) {
  F f;
  f.Play({"=", "あ", "numpad12", "f12"});
  EXPECT_EQ(f.Effects("keys"), (std::vector<std::string>{F::Press(98), F::Press(123)}));
}

TEST(KeysLine, PressesInOrderAndReleasesInReverseInOneBatch) {
  F f;
  f.Play({"keys ctrl+c", "KEYS Ctrl + Shift + Esc", "keys ctrl+nothing+=+v"});
  EXPECT_EQ(f.Effects("keys"),
            (std::vector<std::string>{
                F::Keys(R"([17,"down"],[67,"down"],[67,"up"],[17,"up"])"),
                F::Keys(R"([17,"down"],[16,"down"],[27,"down"],[27,"up"],[16,"up"],[17,"up"])"),
                // "nothing" is the layout's N; "=" needs Shift and is skipped.
                F::Keys(R"([17,"down"],[78,"down"],[86,"down"],[86,"up"],[78,"up"],[17,"up"])"),
            }));
}

TEST(KeyLine, TypesEachCharacterAsItsOwnBatch) {
  F f;
  f.Play({"key aA=1"});
  EXPECT_EQ(f.Effects("keys"), (std::vector<std::string>{
                                   F::Press(65),
                                   F::Keys(R"([16,"down"],[65,"down"],[65,"up"],[16,"up"])"),
                                   F::Keys(R"([16,"down"],[189,"down"],[189,"up"],[16,"up"])"),
                                   F::Press(49),
                               }));
  const auto t = f.Times("keys");
  EXPECT_EQ(t.front(), t.back());  // no pause between characters
}

TEST(KeyLine, CharactersWithoutAKeyTypeNothing) {
  F f;
  f.Play({"key 日本a"});
  EXPECT_EQ(f.Effects("keys"), std::vector<std::string>{F::Press(65)});
}

TEST(LockKeys, OnAndOffPressOnlyWhenTheStateDiffers) {
  F f;
  f.Play({"capslock on", "capslock on", "numlock off", "capslock off", "capslock maybe"});
  EXPECT_EQ(f.Effects("keys"), (std::vector<std::string>{F::Press(20), F::Press(20)}));
  EXPECT_EQ(f.sim.GetKeyState(20), 0);
}

TEST(LockKeys, TheBareWordTogglesAsAKeyLine) {
  F f;
  f.Play({"capslock", "numlock"});
  EXPECT_EQ(f.Effects("keys"), (std::vector<std::string>{F::Press(20), F::Press(144)}));
}

TEST(MouseLines, ButtonsMoveFirstThenClickInOneBatch) {
  F f;
  f.Play({"LMouse Down (10,20)", "LMouse Up (10,20)", "lmouse double (10,20)", "RMouse Down",
          "RMouse Up", "MMouse Down", "MMouse Up"});
  EXPECT_EQ(f.Effects(), (std::vector<std::string>{
                             R"({"ev":"cursor","x":10,"y":20})",
                             R"({"ev":"mouse","buttons":["ldown"]})",
                             R"({"ev":"cursor","x":10,"y":20})",
                             R"({"ev":"mouse","buttons":["lup"]})",
                             R"({"ev":"cursor","x":10,"y":20})",
                             R"({"ev":"mouse","buttons":["ldown","lup","ldown","lup"]})",
                             R"({"ev":"mouse","buttons":["rdown"]})",
                             R"({"ev":"mouse","buttons":["rup"]})",
                             R"({"ev":"mouse","buttons":["mdown"]})",
                             R"({"ev":"mouse","buttons":["mup"]})",
                         }));
}

TEST(MouseLines, ClientFormsAreRelativeToTheForegroundWindow) {
  F f;
  const auto w = f.sim.AddWindow({0, "Target", "t", {100, 200, 600, 700}, {8, 31}, false});
  f.sim.SetForegroundWindow(w);
  f.Play({"LMouCl Down (5,6)", "MouClPos(1,2)"});
  EXPECT_EQ(f.Effects("cursor"), (std::vector<std::string>{R"({"ev":"cursor","x":113,"y":237})",
                                                           R"({"ev":"cursor","x":109,"y":233})"}));
}

TEST(MouseLines, UnknownWordsAndBadCoordinatesDoNothing) {
  F f;
  f.Play({"lmouse click (1,2)", "lmouxx down (1,2)", "MousePos(a,b)", "MousePos(1,2"});
  EXPECT_TRUE(f.Effects().empty());
}

TEST(PointerLines, CentreStartAndCoordinates) {
  F f;
  f.sim.SetCursorPos({7, 8});
  f.Play({"mousepos c", "MousePos(30,40)", "mousepos 50,60", "mousepos s"});
  EXPECT_EQ(f.Effects(), (std::vector<std::string>{
                             R"({"ev":"cursor","x":960,"y":540})",
                             R"({"ev":"cursor","x":30,"y":40})",
                             R"({"ev":"cursor","x":50,"y":60})",
                             R"({"ev":"cursor","x":7,"y":8})",
                         }));
}

TEST(WheelLines, WholeNotchesThenTheRemainderInTheSameDirection) {
  const std::pair<const char*, std::vector<std::string>> cases[] = {
      {"wheel 300", {"120", "120", "60"}},
      {"wheel -240", {"-120", "-120", "0"}},
      {"wheel 60", {"60"}},
      {"wheel 0", {}},
      {"wheel x", {}},
      {"Wheel 120", {"120", "0"}},
  };
  for (const auto& [line, deltas] : cases) {
    F f;
    f.Play({line});
    std::vector<std::string> expected;
    for (const auto& d : deltas) expected.push_back(R"({"ev":"wheel","delta":)" + d + "}");
    EXPECT_EQ(f.Effects("wheel"), expected) << line;
  }
}

}  // namespace
}  // namespace kx::test

namespace kx {
namespace {

using F = test::PlayFixture;

TEST(Wheel, AHugeAmountEndsAtTheStopHotkey) {
  F f;
  f.sim.ScheduleHotkey(150, kHotkeyPlay);  // the play starts at 100 ms
  f.Play({"wheel 2147483647", "beep"});
  const auto turns = f.Effects("wheel").size();
  EXPECT_GT(turns, 10u);
  EXPECT_LT(turns, 100u);
  EXPECT_TRUE(f.Effects("beep").empty());
  EXPECT_EQ(f.player.LastEnd(), PlayEnd::kStopped);
}

TEST(MouseLines, CoordinatesAtTheEdgeOfTheRangeStayThere) {
  F f;
  const auto w = f.sim.AddWindow({0, "Target", "t", {100, 200, 600, 700}, {8, 31}, false});
  f.sim.SetForegroundWindow(w);
  f.Play({"mouclpos(2147483647,0)", "mouclpos(-2147483648,0)"});
  EXPECT_EQ(f.Effects("cursor"),
            (std::vector<std::string>{R"({"ev":"cursor","x":2147483647,"y":231})",
                                      R"({"ev":"cursor","x":-2147483540,"y":231})"}));
}

}  // namespace
}  // namespace kx

namespace kx {
namespace {

TEST(TypedText, UntypeableCharactersAreSkippedUnlessUnicodeKeysIsOn) {
  test::PlayFixture f;
  f.Play({"key aあ"});
  EXPECT_EQ(f.Effects("keys"), std::vector<std::string>{test::PlayFixture::Press(65)});

  f.player.Options().unicodeKeys = true;
  f.Play({"key aあ漢😀Ａ"});
  EXPECT_EQ(f.Effects("keys"),
            (std::vector<std::string>{
                test::PlayFixture::Press(65),
                test::PlayFixture::Keys(R"(["U+3042","down"],["U+3042","up"])"),
                test::PlayFixture::Keys(R"(["U+6F22","down"],["U+6F22","up"])"),
                test::PlayFixture::Keys(
                    R"(["U+D83D","down"],["U+DE00","down"],["U+D83D","up"],["U+DE00","up"])"),
                test::PlayFixture::Keys(R"(["U+FF21","down"],["U+FF21","up"])"),
            }));
}

}  // namespace
}  // namespace kx

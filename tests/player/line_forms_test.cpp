#include <gtest/gtest.h>

#include "player/macro_line.h"
#include "sim/sim_system.h"

namespace kx {
namespace {

struct FormCase {
  const char* key;
  LineForm form;
};

// One key per form, and the keys that the order of the forms decides.
const FormCase kFormCases[] = {
    {"w notepad", LineForm::kWindow},
    {"lock", LineForm::kLock},
    {"unlock", LineForm::kLock},
    {"mf sub.ksx", LineForm::kMacroFile},
    {"10", LineForm::kWait},
    {"-50", LineForm::kWait},
    {"1.5", LineForm::kWait},
    {"1e3", LineForm::kWait},
    {"/files/readme.txt", LineForm::kFile},
    {"http://example.com/", LineForm::kHttp},
    {"move 0,0,800,600", LineForm::kMove},
    {"beep", LineForm::kBeep},
    {"rand 3", LineForm::kRand},
    {"getclip", LineForm::kGetClip},
    {"getloop", LineForm::kGetLoop},
    {"<r 3>", LineForm::kPartialLoop},
    {"</r>", LineForm::kPartialLoop},
    {"<pause>", LineForm::kPause},
    {"'comment", LineForm::kComment},
    {"copy abc", LineForm::kCopy},
    {"copyall", LineForm::kCopy},
    {"paste abc", LineForm::kPaste},
    {"@abc", LineForm::kPasteKeep},
    {"^abc", LineForm::kPasteRestore},
    {"logoff", LineForm::kPower},
    {"monitoroff", LineForm::kPower},
    {"delete temp", LineForm::kDelete},
    {"waitweb", LineForm::kPage},
    {"st", LineForm::kPage},
    {"bc x", LineForm::kPage},
    {"keys ctrl+c", LineForm::kKeys},
    {"key hello", LineForm::kKey},
    {"keyboard", LineForm::kKey},
    {"goto 3", LineForm::kGoto},
    {"<debug>", LineForm::kDebug},
    {"msgbox hi", LineForm::kMsgBox},
    {"hkey_current_user\\software", LineForm::kRegistry},
    {"capslock on", LineForm::kCapsLock},
    {"numlock on", LineForm::kNumLock},
    {"mousepos c", LineForm::kPointer},
    {"mouclpos(1,2)", LineForm::kPointer},
    {"lmouse down (1,2)", LineForm::kMouseButton},
    {"wheel 120", LineForm::kWheel},
    // Falling through to the key line:
    {"5", LineForm::kKeyLine},
    {"'", LineForm::kKeyLine},
    {"beep x", LineForm::kKeyLine},
    {"capslock", LineForm::kKeyLine},
    {"numlock", LineForm::kKeyLine},
    {"w", LineForm::kKeyLine},
    {"enter", LineForm::kKeyLine},
    {"stx", LineForm::kKeyLine},
};

TEST(LineForms, EachKeyIsTakenByTheFirstFormThatAcceptsIt) {
  sim::SimSystem sim;
  sim.AddFile("/files/readme.txt", "x");
  for (const auto& c : kFormCases) EXPECT_EQ(Classify(c.key, sim), c.form) << "key: " << c.key;
}

TEST(LineForms, RawLineDropsLeadingTabsThenBlanksButNotATabAfterABlank) {
  EXPECT_EQ(RawLine("\t\t  beep"), "beep");
  EXPECT_EQ(RawLine("   \t\tbeep"), "\t\tbeep");
  EXPECT_EQ(KeyOf(RawLine("   \t\tbeep")), "\t\tbeep");
}

TEST(LineForms, KeyIsTrimmedOfBlanksAndLowerCased) {
  EXPECT_EQ(KeyOf("  BEEP  "), "beep");
  EXPECT_EQ(KeyOf("LCtrl Down"), "lctrl down");
  EXPECT_EQ(KeyOf("ＡＢＣ"), "ａｂｃ");
}

TEST(LineForms, WaitNeedsANumberOfAtLeastTwoCharacters) {
  EXPECT_TRUE(IsWaitKey("05"));
  EXPECT_TRUE(IsWaitKey("10"));
  EXPECT_FALSE(IsWaitKey("5"));
  EXPECT_FALSE(IsWaitKey("1x"));
  EXPECT_FALSE(IsWaitKey(""));
}

TEST(LineForms, AssignmentNeedsAHashFirstAndAnEqualsSign) {
  EXPECT_TRUE(IsAssignment("#a = 1"));
  EXPECT_TRUE(IsAssignment("#a=1"));
  EXPECT_FALSE(IsAssignment("#a"));
  EXPECT_FALSE(IsAssignment("a = 1"));
}

TEST(LineForms, VariablesAreSubstitutedInTheOrderOfFirstAssignment) {
  VariableTable vars;
  vars.Set("#a", "1");
  vars.Set("#ab", "2");
  EXPECT_EQ(SubstituteVariables("key #ab", vars), "key 1b");
  VariableTable reversed;
  reversed.Set("#ab", "2");
  reversed.Set("#a", "1");
  EXPECT_EQ(SubstituteVariables("key #ab #a", reversed), "key 2 1");
  EXPECT_EQ(SubstituteVariables("#A", vars), "#A");
}

TEST(LineForms, BlockConstructsAreRecognisedByTheirOwnTests) {
  EXPECT_EQ(ClassifyBlock("<switch>"), BlockForm::kSwitch);
  EXPECT_EQ(ClassifyBlock("<switch abc>"), BlockForm::kSwitchValue);
  EXPECT_EQ(ClassifyBlock("</switch>"), BlockForm::kEndSwitch);
  EXPECT_EQ(ClassifyBlock("<case 1>"), BlockForm::kCase);
  EXPECT_EQ(ClassifyBlock("<default>"), BlockForm::kDefault);
  EXPECT_EQ(ClassifyBlock("<default x>"), BlockForm::kNone);
  EXPECT_EQ(ClassifyBlock("beep"), BlockForm::kNone);
}

}  // namespace
}  // namespace kx

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
    {"browser https://example.com", LineForm::kBrowser},
    {"browser", LineForm::kBrowser},
    // Falling through to the key line:
    {"browsers", LineForm::kKeyLine},
    {"5", LineForm::kKeyLine},
    {"'", LineForm::kKeyLine},
    {"beep x", LineForm::kKeyLine},
    {"capslock", LineForm::kKeyLine},
    {"numlock", LineForm::kKeyLine},
    // The length limits at their edges: capslock needs 10 characters, numlock 9,
    // a comment, "@" and "^" two.
    {"capslock o", LineForm::kCapsLock},
    {"capslockx", LineForm::kKeyLine},
    {"numlock o", LineForm::kNumLock},
    {"numlockx", LineForm::kKeyLine},
    {"''", LineForm::kComment},
    {"@x", LineForm::kPasteKeep},
    {"^x", LineForm::kPasteRestore},
    {"@", LineForm::kKeyLine},
    {"00", LineForm::kWait},
    {"w", LineForm::kKeyLine},
    {"enter", LineForm::kKeyLine},
    // Every page command is known by its first two characters, "st" and "gt"
    // as much as the others.
    {"stx", LineForm::kPage},
    {"st value,,edit", LineForm::kPage},
    {"gt edit", LineForm::kPage},
    {"gt(10,10)", LineForm::kPage},
    {"ad ,,edit", LineForm::kPage},
    {"kk enter,,edit", LineForm::kPage},
    {"waitwebx", LineForm::kKeyLine},
    // The screen waits: the word alone or followed by a blank.
    {"waitpixel 1,2,ff0000", LineForm::kWaitPixel},
    {"waitimage a.png", LineForm::kWaitImage},
    {"waitimage", LineForm::kWaitImage},
    {"waitimagex", LineForm::kKeyLine},
    {"waitpixels 1,2,ff0000", LineForm::kKeyLine},
    {"s", LineForm::kKeyLine},
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

namespace kx {
namespace {

struct ArgumentCase {
  const char* line;  // the substituted line, leading blanks already gone
  LineForm form;
  const char* argument;
};

// Each form's argument: from the key (lower-cased) or from the line (case
// kept), after the command word, trimmed as the form takes it.
const ArgumentCase kArgumentCases[] = {
    {"w Notepad, Title ,500", LineForm::kWindow, "notepad, title ,500"},
    {"Unlock", LineForm::kLock, "unlock"},
    {"mf  Sub.ksx ", LineForm::kMacroFile, "sub.ksx"},
    {"1e3", LineForm::kWait, "1e3"},
    {"http://Example.com/ ", LineForm::kHttp, "http://Example.com/"},
    {"move 1,2,3,4", LineForm::kMove, "1,2,3,4"},
    {"beep", LineForm::kBeep, ""},
    {"rand  6", LineForm::kRand, "6"},
    {"<R 3>", LineForm::kPartialLoop, " 3>"},
    {"' Note ", LineForm::kComment, "Note"},
    {"copy  Some Text ", LineForm::kCopy, "Some Text "},
    {"copyAll", LineForm::kCopy, "All"},
    {"paste  A\\nB", LineForm::kPaste, "A\\nB"},
    {"@ Kept", LineForm::kPasteKeep, " Kept"},
    {"^Back", LineForm::kPasteRestore, "Back"},
    {"delete  Temp", LineForm::kDelete, "temp"},
    {"keys  Ctrl+C ", LineForm::kKeys, "Ctrl+C"},
    {"key  Hello ", LineForm::kKey, "Hello"},
    {"keyboard", LineForm::kKey, "board"},
    {"goto  12", LineForm::kGoto, "12"},
    {"msgbox  Hi There ", LineForm::kMsgBox, "Hi There"},
    {"HKEY_USERS\\X", LineForm::kRegistry, "hkey_users\\x"},
    {"CapsLock On", LineForm::kCapsLock, "on"},
    {"NumLock Off", LineForm::kNumLock, "off"},
    {"MousePos(1,2)", LineForm::kPointer, "(1,2)"},
    {"mouclpos 3,4", LineForm::kPointer, "3,4"},
    {"LMouse Down (1,2)", LineForm::kMouseButton, "lmouse down (1,2)"},
    {"Wheel  -120", LineForm::kWheel, " -120"},
    {"Enter", LineForm::kKeyLine, "enter"},
    {"ST Hello World,,Edit", LineForm::kPage, "Hello World,,Edit"},
    {"GT  Edit*2 ", LineForm::kPage, "Edit*2"},
    {"gt(10,10)", LineForm::kPage, "(10,10)"},
    {"Browser  file:///C:/My Pages/ログイン.html ", LineForm::kBrowser,
     "file:///C:/My Pages/ログイン.html"},
};

TEST(LineForms, TheClassifierCutsEachFormsArgument) {
  sim::SimSystem sim;
  for (const auto& c : kArgumentCases) {
    const ClassifiedLine command = ClassifyLine(c.line, KeyOf(c.line), sim);
    EXPECT_EQ(command.form, c.form) << c.line;
    EXPECT_EQ(command.argument, c.argument) << c.line;
  }
}

TEST(LineForms, SwitchAndCaseValuesLoseTheirClosingBracket) {
  EXPECT_EQ(ClassifyBlockLine("<Switch AbC >", "<switch abc >").argument, "AbC");
  EXPECT_EQ(ClassifyBlockLine("<case x>", "<case x>").argument, "x");
  EXPECT_EQ(ClassifyBlockLine("<case", "<case").argument, std::nullopt);
  EXPECT_EQ(ClassifyBlockLine("<default>", "<default>").argument, std::nullopt);
}

}  // namespace
}  // namespace kx

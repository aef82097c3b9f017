#include "player/line_runner.h"

#include <algorithm>
#include <iterator>

#include "eval/evaluator.h"
#include "util/basic_text.h"

namespace kx {

namespace {

// Commands that wait on purpose: for a window, a program, the clipboard, a
// page, the user. Their time is no lateness of the player, so the timeline
// starts again where they end and the next wait keeps its full length.
constexpr LineForm kWaitingForms[] = {
    LineForm::kWindow,   LineForm::kMacroFile, LineForm::kFile,         LineForm::kHttp,
    LineForm::kPaste,    LineForm::kPasteKeep, LineForm::kPasteRestore, LineForm::kPower,
    LineForm::kDelete,   LineForm::kPage,      LineForm::kDebug,        LineForm::kMsgBox,
    LineForm::kRegistry,
};

bool WaitsOnPurpose(LineForm form) {
  return std::find(std::begin(kWaitingForms), std::end(kWaitingForms), form) !=
         std::end(kWaitingForms);
}

}  // namespace

std::string LineRunner::Run(std::string_view line) {
  const std::string_view raw = RawLine(line);
  if (IsAssignment(raw)) {
    if (!SkippingSwitchRegion()) Assign(raw);
    return KeyOf(raw);
  }
  const std::string substituted = SubstituteVariables(raw, p_.variables_);
  const std::string key = KeyOf(substituted);
  if (key.empty()) return key;
  if (const ClassifiedBlock block = ClassifyBlockLine(substituted, key);
      block.form != BlockForm::kNone) {
    RunBlock(block);
    return key;
  }
  if (SkippingSwitchRegion()) return key;
  const ClassifiedLine command = ClassifyLine(substituted, key, sys_.files);
  RunForm(command, key);
  if (WaitsOnPurpose(command.form)) p_.timeline_.Restart();
  return key;
}

bool LineRunner::Runs(std::string_view line) const {
  const std::string_view raw = RawLine(line);
  if (IsAssignment(raw)) return !SkippingSwitchRegion();
  const std::string key = KeyOf(SubstituteVariables(raw, p_.variables_));
  if (key.empty()) return false;
  return ClassifyBlock(key) != BlockForm::kNone || !SkippingSwitchRegion();
}

void LineRunner::Assign(std::string_view raw) {
  const auto eq = raw.find('=');
  const std::string name(basic::Trim(raw.substr(0, eq)));
  const std::string_view expression = basic::Trim(raw.substr(eq + 1));
  std::string value = EvaluateAssignment(expression, EvalEnv{p_.variables_, sys_, &p_.found_});
  p_.view_.OnAssigned(name, value);
  if (p_.variables_.Set(name, std::move(value))) p_.view_.VariablesChanged();
}

void LineRunner::RunBlock(const ClassifiedBlock& block) {
  // A value too short to lose its ">" fails the line, but only once it is
  // looked at.
  auto argument = [&]() -> const std::string& {
    if (!block.argument) throw ScriptFailure{};
    return *block.argument;
  };
  switch (block.form) {
    case BlockForm::kSwitch:
      ++p_.switchDepth_;
      p_.switchState_ = 0;
      break;
    case BlockForm::kSwitchValue:
      ++p_.switchDepth_;
      p_.switchState_ = 0;
      p_.currentValue_ = CurrentValue::Text(argument());
      break;
    case BlockForm::kCase:
      if (p_.switchDepth_ < 1) break;
      if (p_.switchState_ == 1) {
        p_.switchState_ = 2;
      } else if (argument() == p_.currentValue_.ToText()) {
        p_.switchState_ = 1;
      }
      break;
    case BlockForm::kDefault:
      if (p_.switchDepth_ > 0) p_.switchState_ = p_.switchState_ == 0 ? 1 : 0;
      break;
    case BlockForm::kEndSwitch:
      --p_.switchDepth_;
      // Closing a nested switch leaves the enclosing one executing, even
      // when it sat in a case that did not match.
      p_.switchState_ = p_.switchDepth_ < 1 ? 0 : 1;
      break;
    case BlockForm::kNone:
      break;
  }
}

void LineRunner::RunForm(const ClassifiedLine& command, std::string_view key) {
  const std::string_view argument = command.argument;
  switch (command.form) {
    case LineForm::kWindow:
      ActivateWindow(argument);
      break;
    case LineForm::kLock:
      p_.hotkeysLocked_ = argument == "lock";
      break;
    case LineForm::kMacroFile:
      RunMacroFile(argument);
      break;
    case LineForm::kWait:
      p_.timeline_.Wait(basic::RoundHalfEven(*basic::ToDouble(argument) * p_.options_.speedFactor),
                        p_.playing_);
      break;
    case LineForm::kFile:
    case LineForm::kHttp:
      OpenWithShell(argument);
      break;
    case LineForm::kMove:
      MoveWindow(argument);
      break;
    case LineForm::kBeep:
      sys_.notify.Beep();
      break;
    case LineForm::kRand:
      Rand(argument);
      break;
    case LineForm::kGetClip:
      p_.currentValue_ = CurrentValue::Text(sys_.clipboard.GetText().value_or(""));
      break;
    case LineForm::kGetLoop:
      p_.currentValue_ = CurrentValue::Long(p_.cyclesLeft_);
      break;
    case LineForm::kPartialLoop:
      PartialLoop(key, argument);
      break;
    case LineForm::kPause:
      Pause();
      break;
    case LineForm::kComment:
      Comment(argument);
      break;
    case LineForm::kCopy:
      sys_.clipboard.SetText(argument);
      break;
    case LineForm::kPaste:
      Paste(argument, 9, 10);
      break;
    case LineForm::kPasteKeep:
      PasteKeep(argument);
      break;
    case LineForm::kPasteRestore:
      PasteRestore(argument);
      break;
    case LineForm::kPower:
      Power(argument);
      break;
    case LineForm::kDelete:
      Delete(argument);
      break;
    case LineForm::kPage:
      PageCommand(key, argument);
      break;
    case LineForm::kWaitPixel:
      WaitPixel(argument);
      break;
    case LineForm::kWaitImage:
      WaitImage(argument);
      break;
    case LineForm::kKeys:
      input_.PressKeys(argument);
      break;
    case LineForm::kKey:
      input_.TypeText(argument);
      break;
    case LineForm::kGoto:
      Goto(argument);
      break;
    case LineForm::kDebug:
      sys_.dialogs.MessageBox(p_.view_.MainWindow(), p_.currentValue_.ToText(), "現在の値");
      break;
    case LineForm::kMsgBox:
      MessageBox(argument);
      break;
    case LineForm::kRegistry:
      RegistryJump(argument);
      break;
    case LineForm::kCapsLock:
      input_.SetLockKey(20, argument);
      break;
    case LineForm::kNumLock:
      input_.SetLockKey(144, argument);
      break;
    case LineForm::kPointer:
      Pointer(key, argument);
      break;
    case LineForm::kMouseButton:
      input_.PlayMouseLine(argument);
      break;
    case LineForm::kWheel:
      input_.Wheel(argument, p_.playing_);
      break;
    case LineForm::kBrowser:
      OpenBrowser(argument);
      break;
    case LineForm::kKeyLine:
      KeyLine(argument);
      break;
  }
}

void LineRunner::KeyLine(std::string_view key) {
  // The first line may carry the loop count.
  if (p_.currentLine_ == 0 && key.starts_with("loop")) return;
  // Anything else is first offered to the shell: a line naming a program or
  // document opens it. "/", "\" and "." are never offered.
  if (key != "/" && key != "\\" && key != "." && OpenWithShell(key)) {
    p_.timeline_.Restart();
    return;
  }
  input_.PressKey(KeyCodeFromWord(key, sys_.input));
}

void LineRunner::Pointer(std::string_view key, std::string_view argument) {
  std::string where(argument);
  // "mousepos 10,20" is accepted as well as the recorded "MousePos(10,20)".
  if (where.find('(') == std::string::npos) where = "(" + where + ")";
  if (key.starts_with("mouclpos")) {
    input_.MoveClient(where);
  } else if (where == "(c)") {
    input_.MoveToScreenCentre();
  } else if (where == "(s)") {
    sys_.input.SetCursorPos(p_.cursorAtStart_);
  } else {
    input_.MoveScreen(where);
  }
}

void LineRunner::Comment(std::string_view text) {
  if (!p_.options_.balloon) return;
  sys_.notify.Balloon(p_.options_.appTitle, text);
}

}  // namespace kx

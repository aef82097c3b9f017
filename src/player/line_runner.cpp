#include "player/line_runner.h"

#include "eval/evaluator.h"
#include "util/basic_text.h"

namespace kx {

std::string LineRunner::Run(std::string_view line) {
  const std::string_view raw = RawLine(line);
  if (IsAssignment(raw)) {
    if (!SkippingSwitchRegion()) Assign(raw);
    return KeyOf(raw);
  }
  const std::string substituted = SubstituteVariables(raw, p_.variables_);
  const std::string key = KeyOf(substituted);
  if (key.empty()) return key;
  if (const BlockForm block = ClassifyBlock(key); block != BlockForm::kNone) {
    RunBlock(block, substituted);
    return key;
  }
  if (SkippingSwitchRegion()) return key;
  RunForm(Classify(key, sys_.files), substituted, key);
  return key;
}

void LineRunner::Assign(std::string_view raw) {
  const auto eq = raw.find('=');
  const std::string name(basic::Trim(raw.substr(0, eq)));
  const std::string_view expression = basic::Trim(raw.substr(eq + 1));
  std::string value = EvaluateAssignment(expression, EvalEnv{p_.variables_, sys_});
  p_.view_.OnAssigned(name, value);
  if (p_.variables_.Set(name, std::move(value))) p_.view_.VariablesChanged();
}

void LineRunner::RunBlock(BlockForm form, std::string_view substituted) {
  // The value of "<switch v>" and "<case v>": the trimmed line from the
  // given character, without its last character (the ">"), trimmed again.
  auto argument = [&](std::size_t from) {
    const auto inner = basic::DropLast(basic::Mid(basic::Trim(substituted), from));
    if (!inner) throw ScriptFailure{};
    return std::string(basic::Trim(*inner));
  };
  switch (form) {
    case BlockForm::kSwitch:
      ++p_.switchDepth_;
      p_.switchState_ = 0;
      break;
    case BlockForm::kSwitchValue:
      ++p_.switchDepth_;
      p_.switchState_ = 0;
      p_.currentValue_ = CurrentValue::Text(argument(8));
      break;
    case BlockForm::kCase:
      if (p_.switchDepth_ < 1) break;
      if (p_.switchState_ == 1) {
        p_.switchState_ = 2;
      } else if (argument(6) == p_.currentValue_.ToText()) {
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

void LineRunner::RunForm(LineForm form, std::string_view line, std::string_view key) {
  switch (form) {
    case LineForm::kWindow:
      ActivateWindow(key);
      break;
    case LineForm::kLock:
      p_.hotkeysLocked_ = key == "lock";
      break;
    case LineForm::kMacroFile:
      RunMacroFile(key);
      break;
    case LineForm::kWait:
      p_.timeline_.Wait(basic::RoundHalfEven(*basic::ToDouble(key) * p_.options_.speedFactor),
                        p_.playing_);
      break;
    case LineForm::kFile:
      OpenWithShell(key);
      break;
    case LineForm::kHttp:
      OpenWithShell(basic::Trim(line));
      break;
    case LineForm::kMove:
      MoveWindow(key);
      break;
    case LineForm::kBeep:
      sys_.notify.Beep();
      break;
    case LineForm::kRand:
      Rand(key);
      break;
    case LineForm::kGetClip:
      p_.currentValue_ = CurrentValue::Text(sys_.clipboard.GetText().value_or(""));
      break;
    case LineForm::kGetLoop:
      p_.currentValue_ = CurrentValue::Long(p_.cyclesLeft_);
      break;
    case LineForm::kPartialLoop:
      PartialLoop(key);
      break;
    case LineForm::kPause:
      Pause();
      break;
    case LineForm::kComment:
      Comment(line);
      break;
    case LineForm::kCopy:
      Copy(line);
      break;
    case LineForm::kPaste:
      Paste(line, 9, 10);
      break;
    case LineForm::kPasteKeep:
      PasteKeep(line);
      break;
    case LineForm::kPasteRestore:
      PasteRestore(line);
      break;
    case LineForm::kPower:
      Power(key);
      break;
    case LineForm::kDelete:
      Delete(key);
      break;
    case LineForm::kPage:
      break;  // browser page commands: recognised, no effect here
    case LineForm::kKeys:
      input_.PressKeys(basic::Mid(line, 5));
      break;
    case LineForm::kKey:
      input_.TypeText(basic::Trim(basic::Mid(line, 4)));
      break;
    case LineForm::kGoto:
      Goto(line);
      break;
    case LineForm::kDebug:
      sys_.dialogs.MessageBox(p_.view_.MainWindow(), p_.currentValue_.ToText(), "現在の値");
      break;
    case LineForm::kMsgBox:
      MessageBox(line);
      break;
    case LineForm::kRegistry:
      RegistryJump(key);
      break;
    case LineForm::kCapsLock:
      input_.SetLockKey(20, basic::Trim(basic::Mid(key, 9)));
      break;
    case LineForm::kNumLock:
      input_.SetLockKey(144, basic::Trim(basic::Mid(key, 8)));
      break;
    case LineForm::kPointer:
      Pointer(key);
      break;
    case LineForm::kMouseButton:
      input_.PlayMouseLine(key);
      break;
    case LineForm::kWheel:
      input_.Wheel(basic::Mid(key, 7));
      break;
    case LineForm::kKeyLine:
      KeyLine(key);
      break;
  }
}

void LineRunner::KeyLine(std::string_view key) {
  // The first line may carry the loop count.
  if (p_.currentLine_ == 0 && key.starts_with("loop")) return;
  // Anything else is first offered to the shell: a line naming a program or
  // document opens it. "/", "\" and "." are never offered.
  if (key != "/" && key != "\\" && key != "." && OpenWithShell(key)) return;
  input_.PressKey(KeyCodeFromWord(key, sys_.input));
}

void LineRunner::Pointer(std::string_view key) {
  std::string where(basic::Trim(basic::Mid(key, 9)));
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

void LineRunner::Comment(std::string_view line) {
  if (!p_.options_.balloon) return;
  sys_.notify.Balloon(p_.options_.appTitle, basic::Trim(basic::Mid(basic::Trim(line), 2)));
}

}  // namespace kx

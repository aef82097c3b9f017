// copy, paste, "@" and "^": text through the clipboard.
#include "input/key_codes.h"
#include "player/line_runner.h"
#include "util/basic_text.h"

namespace kx {

namespace {

constexpr int kCtrl = kVkControl;
constexpr int kV = kVkV;

// "\n" written in a line stands for a line break.
std::string WithLineBreaks(std::string_view text) {
  return basic::ReplaceAll(text, "\\n", "\r\n");
}

}  // namespace

void LineRunner::Paste(std::string_view text, int attempts, int sleepMs) {
  const std::string withBreaks = WithLineBreaks(text);
  // Another program may hold the clipboard for a moment: place the text until
  // it reads back.
  for (int i = 0; i < attempts; ++i) {
    sys_.clipboard.SetText(withBreaks);
    sys_.clock.PumpMessages();
    sys_.clock.Sleep(sleepMs);
    if (sys_.clipboard.GetText() == withBreaks) break;
  }
  p_.input_.PressChord(kCtrl, kV);
}

void LineRunner::PasteKeep(std::string_view text) {
  Paste(text, 10, 25);
  sys_.clock.PumpMessages();
  sys_.clock.Sleep(100);
}

void LineRunner::PasteRestore(std::string_view text) {
  const auto old = sys_.clipboard.GetText();
  Paste(text, 16, 20);
  sys_.clock.Sleep(250);
  sys_.clipboard.SetText(old.value_or(""));
}

}  // namespace kx

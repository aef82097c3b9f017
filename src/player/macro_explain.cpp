#include "player/macro_explain.h"

#include "input/key_names.h"
#include "page/browser_open.h"
#include "player/macro_line.h"
#include "player/wait.h"
#include "screen/screen_lines.h"
#include "util/basic_text.h"

namespace kx {

namespace {

constexpr int kPrintScreen = 42;
constexpr int kSnapshotKey = 44;
constexpr int kPrintScreenPauseMs = 100;

// The key a pseudo code acts on, by code -1 to -8.
constexpr int kModifierKeys[] = {16, 16, 17, 17, 18, 18, 91, 91};

std::string KeyLineDetail(std::string_view key, InputPort& layout) {
  // "/", "\" and "." are never offered to the shell.
  const bool shellFirst = key != "/" && key != "\\" && key != ".";
  const KeyCode code = KeyCodeFromWord(key, layout);
  std::string press;
  if (code < 0 && code >= kWinUp) {
    press = "key " + std::to_string(kModifierKeys[-code - 1]) + (code % 2 ? " down" : " up");
  } else if (code == kPrintScreen) {
    press = "key " + std::to_string(kSnapshotKey) + ", then " +
            std::to_string(kPrintScreenPauseMs) + " ms";
  } else if (code >= 1 && code <= 255) {
    press = "key " + std::to_string(code);
  } else {
    press = "no key";
  }
  return shellFirst ? "opens it with the shell if it can, else " + press : press;
}

std::string KeysDetail(std::string_view names, InputPort& layout) {
  std::string codes;
  for (const auto& part : basic::Split(basic::LCase(basic::Trim(names)), "+")) {
    const KeyCode code = KeyCodeFromWord(basic::Trim(part), layout);
    if (code < 1 || code > 255) continue;
    codes += (codes.empty() ? "" : "+") + std::to_string(code);
  }
  return codes.empty() ? "no key" : "keys " + codes;
}

std::string TypedDetail(std::string_view text, InputPort& layout) {
  std::string chords;
  for (std::string_view rest = text; !rest.empty(); rest = basic::Mid(rest, 2)) {
    const CharKey key = KeyCodeFromChar(basic::FirstChar(rest), layout);
    if (!chords.empty()) chords += ' ';
    if (key.code < 1 || key.code > 255)
      chords += '-';
    else
      chords += (key.shift ? "16+" : "") + std::to_string(key.code);
  }
  return "keys " + chords;
}

std::string WaitDetail(std::string_view key) {
  const auto ms = basic::ToDouble(key);
  if (!ms) return "";
  return std::to_string(WaitLengthMs(*ms)) + " ms";
}

std::string Milliseconds(double ms) {
  return std::to_string(WaitLengthMs(ms)) + " ms";
}

std::string WaitPixelDetail(std::string_view argument) {
  const auto parsed = ParseWaitPixel(argument);
  if (!parsed.args) return "False at once";
  const WaitPixelArgs& a = *parsed.args;
  return "colour " + ColourText(a.colour) + " at " + std::to_string(a.at.x) + "," +
         std::to_string(a.at.y) + " within " + std::to_string(a.variation) + ", up to " +
         Milliseconds(a.timeoutMs);
}

std::string WaitImageDetail(std::string_view argument) {
  const auto parsed = ParseWaitImage(argument);
  if (!parsed.args) return "False at once";
  const WaitImageArgs& a = *parsed.args;
  std::string out = "image " + a.file + " within " + std::to_string(a.variation) + ", up to " +
                    Milliseconds(a.timeoutMs);
  if (a.area)
    out += ", inside " + std::to_string(a.area->left) + "," + std::to_string(a.area->top) + "," +
           std::to_string(a.area->right) + "," + std::to_string(a.area->bottom);
  return out;
}

}  // namespace

std::vector<ExplainedLine> ExplainMacro(std::string_view text, FilePort& files, InputPort& layout) {
  std::vector<ExplainedLine> out;
  const auto lines = basic::Split(text, "\r\n");
  for (size_t i = 0; i < lines.size(); ++i) {
    ExplainedLine e;
    e.line = static_cast<int>(i) + 1;
    const std::string_view raw = RawLine(lines[i]);
    const std::string key = KeyOf(raw);
    if (IsAssignment(raw)) {
      e.form = "assignment";
      e.argument = std::string(raw);
    } else if (key.empty()) {
      e.form = "empty";
    } else if (const auto block = ClassifyBlockLine(raw, key); block.form != BlockForm::kNone) {
      e.form = BlockFormName(block.form);
      e.argument = block.argument.value_or("");
    } else {
      const ClassifiedLine command = ClassifyLine(raw, key, files);
      e.form = LineFormName(command.form);
      e.argument = command.argument;
      switch (command.form) {
        case LineForm::kWait:
          e.detail = WaitDetail(key);
          break;
        case LineForm::kKeys:
          e.detail = KeysDetail(command.argument, layout);
          break;
        case LineForm::kKey:
          e.detail = TypedDetail(command.argument, layout);
          break;
        case LineForm::kBrowser:
          e.detail = BrowserAddress(command.argument).value_or("not an address");
          break;
        case LineForm::kWaitPixel:
          e.detail = WaitPixelDetail(command.argument);
          break;
        case LineForm::kWaitImage:
          e.detail = WaitImageDetail(command.argument);
          break;
        case LineForm::kKeyLine:
          if (i == 0 && key.starts_with("loop")) {
            e.form = "loop-count";
            e.detail = std::to_string(basic::ToLong(basic::Mid(key, 5)).value_or(0)) + " cycles";
          } else {
            e.detail = KeyLineDetail(key, layout);
          }
          break;
        default:
          break;
      }
    }
    out.push_back(std::move(e));
  }
  return out;
}

std::string FormatExplained(const ExplainedLine& line) {
  std::string out = std::to_string(line.line) + ": " + line.form;
  if (!line.argument.empty()) out += " \"" + line.argument + "\"";
  if (!line.detail.empty()) out += " -> " + line.detail;
  return out;
}

}  // namespace kx

#include "player/macro_line.h"

#include <array>

#include "util/basic_text.h"

namespace kx {

namespace {

bool Is(std::string_view key, std::string_view word) {
  return key == word;
}
bool Starts(std::string_view key, std::string_view prefix) {
  return key.starts_with(prefix);
}
// A command word alone or followed by a blank: "waitpixelx" stays a key line.
bool IsWord(std::string_view key, std::string_view word) {
  return key == word || (key.starts_with(word) && key[word.size()] == ' ');
}
bool IsAnyOf(std::string_view key, std::initializer_list<std::string_view> words) {
  for (auto w : words)
    if (key == w) return true;
  return false;
}

// Where a form's argument comes from: the key, the substituted line as
// written, or that line trimmed; which character it starts at (counted from
// 1), and how it is trimmed.
enum class From { kNothing, kKey, kLine, kTrimmedLine };
enum class TrimArg { kNone, kBoth, kLeft };
struct ArgumentRule {
  From from = From::kNothing;
  std::size_t start = 1;
  TrimArg trim = TrimArg::kNone;
};

struct FormTest {
  LineForm form;
  std::string_view name;
  bool (*test)(std::string_view key, FilePort& files);
  ArgumentRule argument;
};

constexpr ArgumentRule kWholeKey{From::kKey};
constexpr std::string_view kPageCommandWords[] = {"bc", "ts", "ad", "pw", "ip",
                                                  "cc", "kk", "st", "gt"};
constexpr ArgumentRule kNoArgument{};
constexpr ArgumentRule KeyFrom(std::size_t start, TrimArg trim = TrimArg::kBoth) {
  return {From::kKey, start, trim};
}
constexpr ArgumentRule LineFrom(std::size_t start, TrimArg trim = TrimArg::kBoth) {
  return {From::kLine, start, trim};
}

// Tried in this order; the first test that passes decides. The order is the
// language: "keyboard" is a key line typing "board" because "key" comes before
// the key-name fallback, "copyall" copies "all".
constexpr std::array kForms = {
    FormTest{LineForm::kWindow, "window", [](auto k, auto&) { return Starts(k, "w "); },
             KeyFrom(3, TrimArg::kNone)},
    FormTest{LineForm::kLock, "lock",
             [](auto k, auto&) {
               return IsAnyOf(k, {"lock", "unlock"});
             },
             kWholeKey},
    FormTest{LineForm::kMacroFile, "mf", [](auto k, auto&) { return Starts(k, "mf"); },
             KeyFrom(3)},
    FormTest{LineForm::kWait, "wait", [](auto k, auto&) { return IsWaitKey(k); }, kWholeKey},
    FormTest{LineForm::kFile, "file", [](auto k, FilePort& files) { return files.IsFile(k); },
             kWholeKey},
    FormTest{LineForm::kHttp, "http", [](auto k, auto&) { return Starts(k, "http"); },
             LineFrom(1)},
    FormTest{LineForm::kMove, "move", [](auto k, auto&) { return Starts(k, "move"); },
             KeyFrom(5)},
    FormTest{LineForm::kBeep, "beep", [](auto k, auto&) { return Is(k, "beep"); }, kNoArgument},
    FormTest{LineForm::kRand, "rand", [](auto k, auto&) { return Starts(k, "rand"); },
             KeyFrom(6)},
    FormTest{LineForm::kGetClip, "getclip", [](auto k, auto&) { return Is(k, "getclip"); },
             kNoArgument},
    FormTest{LineForm::kGetLoop, "getloop", [](auto k, auto&) { return Is(k, "getloop"); },
             kNoArgument},
    // "<r n>" keeps its closing ">" in the argument; "</r>" is told apart by
    // its key.
    FormTest{LineForm::kPartialLoop, "partial-loop",
             [](auto k, auto&) { return Starts(k, "<r") || Is(k, "</r>"); },
             KeyFrom(3, TrimArg::kNone)},
    FormTest{LineForm::kPause, "pause", [](auto k, auto&) { return Is(k, "<pause>"); },
             kNoArgument},
    FormTest{LineForm::kComment, "comment",
             [](auto k, auto&) { return Starts(k, "'") && basic::Length(k) >= 2; },
             {From::kTrimmedLine, 2, TrimArg::kBoth}},
    FormTest{LineForm::kCopy, "copy", [](auto k, auto&) { return Starts(k, "copy"); },
             LineFrom(5, TrimArg::kLeft)},
    FormTest{LineForm::kPaste, "paste", [](auto k, auto&) { return Starts(k, "paste"); },
             LineFrom(6, TrimArg::kLeft)},
    FormTest{LineForm::kPasteKeep, "paste-keep",
             [](auto k, auto&) { return Starts(k, "@") && basic::Length(k) >= 2; },
             LineFrom(2, TrimArg::kNone)},
    FormTest{LineForm::kPasteRestore, "paste-restore",
             [](auto k, auto&) { return Starts(k, "^") && basic::Length(k) >= 2; },
             LineFrom(2, TrimArg::kNone)},
    FormTest{LineForm::kPower, "power",
             [](auto k, auto&) {
               return IsAnyOf(k, {"logoff", "shutdown", "standby", "hibernate", "reboot",
                                  "monitoron", "monitoroff"});
             },
             kWholeKey},
    FormTest{LineForm::kDelete, "delete", [](auto k, auto&) { return Starts(k, "delete "); },
             KeyFrom(8)},
    // Page and window-text commands: "waitweb" as a whole, the others by
    // their first two characters; the runner tells them apart by the key.
    FormTest{LineForm::kPage, "page",
             [](auto k, auto&) {
               if (Is(k, "waitweb")) return true;
               for (auto p : kPageCommandWords)
                 if (Starts(k, p)) return true;
               return false;
             },
             LineFrom(3)},
    // Screen waits: the colour is read from the key, the image's file name
    // keeps its case.
    FormTest{LineForm::kWaitPixel, "waitpixel",
             [](auto k, auto&) { return IsWord(k, "waitpixel"); }, KeyFrom(10)},
    FormTest{LineForm::kWaitImage, "waitimage",
             [](auto k, auto&) { return IsWord(k, "waitimage"); }, LineFrom(10)},
    FormTest{LineForm::kKeys, "keys", [](auto k, auto&) { return Starts(k, "keys"); },
             LineFrom(5)},
    FormTest{LineForm::kKey, "key", [](auto k, auto&) { return Starts(k, "key"); }, LineFrom(4)},
    FormTest{LineForm::kGoto, "goto", [](auto k, auto&) { return Starts(k, "goto"); },
             LineFrom(5)},
    FormTest{LineForm::kDebug, "debug", [](auto k, auto&) { return Is(k, "<debug>"); },
             kNoArgument},
    FormTest{LineForm::kMsgBox, "msgbox", [](auto k, auto&) { return Starts(k, "msgbox"); },
             LineFrom(7)},
    FormTest{LineForm::kRegistry, "registry",
             [](auto k, auto&) {
               const std::string upper = basic::UCase(k);
               for (auto root : {"HKEY_CURRENT_CONFIG", "HKEY_LOCAL_MACHINE", "HKEY_CURRENT_USER",
                                 "HKEY_CLASSES_ROOT", "HKEY_USERS"})
                 if (upper.starts_with(root)) return true;
               return false;
             },
             kWholeKey},
    FormTest{LineForm::kCapsLock, "capslock",
             [](auto k, auto&) { return Starts(k, "capslock") && basic::Length(k) > 9; },
             KeyFrom(9)},
    FormTest{LineForm::kNumLock, "numlock",
             [](auto k, auto&) { return Starts(k, "numlock") && basic::Length(k) >= 9; },
             KeyFrom(8)},
    FormTest{LineForm::kPointer, "pointer",
             [](auto k, auto&) { return Starts(k, "mousepos") || Starts(k, "mouclpos"); },
             KeyFrom(9)},
    FormTest{
        LineForm::kMouseButton, "mouse-button",
        [](auto k, auto&) { return Starts(k, "lmou") || Starts(k, "rmou") || Starts(k, "mmou"); },
        kWholeKey},
    FormTest{LineForm::kWheel, "wheel", [](auto k, auto&) { return Starts(k, "wheel"); },
             KeyFrom(7, TrimArg::kNone)},
    // Last before the key line, so that it takes only lines that named no
    // key and opened nothing; the address keeps its case.
    FormTest{LineForm::kBrowser, "browser",
             [](auto k, auto&) { return Is(k, "browser") || Starts(k, "browser "); },
             LineFrom(9)},
};

constexpr std::string_view kKeyLineName = "key-line";

std::string CutArgument(const ArgumentRule& rule, std::string_view substituted,
                        std::string_view key) {
  std::string_view source;
  switch (rule.from) {
    case From::kNothing:
      return "";
    case From::kKey:
      source = key;
      break;
    case From::kLine:
      source = substituted;
      break;
    case From::kTrimmedLine:
      source = basic::Trim(substituted);
      break;
  }
  const std::string_view rest = basic::Mid(source, rule.start);
  switch (rule.trim) {
    case TrimArg::kBoth:
      return std::string(basic::Trim(rest));
    case TrimArg::kLeft:
      return std::string(basic::TrimLeft(rest));
    case TrimArg::kNone:
      break;
  }
  return std::string(rest);
}

struct BlockName {
  BlockForm form;
  std::string_view name;
  std::size_t argumentStart;  // 0: no argument
};

constexpr BlockName kBlockNames[] = {
    {BlockForm::kNone, "", 0},
    {BlockForm::kSwitch, "switch", 0},
    {BlockForm::kSwitchValue, "switch-value", 8},
    {BlockForm::kEndSwitch, "end-switch", 0},
    {BlockForm::kCase, "case", 6},
    {BlockForm::kDefault, "default", 0},
};

static_assert(kForms.size() == static_cast<size_t>(LineForm::kKeyLine));
static_assert([] {
  for (size_t i = 0; i < kForms.size(); ++i)
    if (static_cast<size_t>(kForms[i].form) != i) return false;
  for (size_t i = 0; i < std::size(kBlockNames); ++i)
    if (static_cast<size_t>(kBlockNames[i].form) != i) return false;
  return true;
}());

}  // namespace

std::string_view RawLine(std::string_view line) {
  while (!line.empty() && line.front() == '\t') line.remove_prefix(1);
  return basic::TrimLeft(line);
}

std::string SubstituteVariables(std::string_view raw, const VariableTable& variables) {
  std::string line(raw);
  for (const auto& v : variables.Entries()) line = basic::ReplaceAll(line, v.name, v.value);
  return line;
}

std::string KeyOf(std::string_view substituted) {
  return basic::LCase(basic::Trim(substituted));
}

bool IsAssignment(std::string_view raw) {
  return KeyOf(raw).starts_with("#") && raw.find('=') != std::string_view::npos;
}

bool IsWaitKey(std::string_view key) {
  return key.size() >= 2 && basic::IsNumeric(key);
}

BlockForm ClassifyBlock(std::string_view key) {
  if (key == "<switch>") return BlockForm::kSwitch;
  if (key.starts_with("<switch")) return BlockForm::kSwitchValue;
  if (key == "</switch>") return BlockForm::kEndSwitch;
  if (key.starts_with("<case")) return BlockForm::kCase;
  if (key == "<default>") return BlockForm::kDefault;
  return BlockForm::kNone;
}

ClassifiedBlock ClassifyBlockLine(std::string_view substituted, std::string_view key) {
  ClassifiedBlock out;
  out.form = ClassifyBlock(key);
  const std::size_t start = kBlockNames[static_cast<size_t>(out.form)].argumentStart;
  if (start == 0) return out;
  if (const auto inner = basic::DropLast(basic::Mid(basic::Trim(substituted), start)))
    out.argument = std::string(basic::Trim(*inner));
  return out;
}

std::string_view BlockFormName(BlockForm form) {
  return kBlockNames[static_cast<size_t>(form)].name;
}

ClassifiedLine ClassifyLine(std::string_view substituted, std::string_view key, FilePort& files) {
  // "</r>" ends a loop and carries nothing.
  if (key == "</r>") return {LineForm::kPartialLoop, ""};
  for (const auto& f : kForms)
    if (f.test(key, files)) return {f.form, CutArgument(f.argument, substituted, key)};
  return {LineForm::kKeyLine, std::string(key)};
}

LineForm Classify(std::string_view key, FilePort& files) {
  return ClassifyLine(key, key, files).form;
}

std::string_view LineFormName(LineForm form) {
  if (form == LineForm::kKeyLine) return kKeyLineName;
  return kForms[static_cast<size_t>(form)].name;
}

}  // namespace kx

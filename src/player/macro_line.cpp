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
bool IsAnyOf(std::string_view key, std::initializer_list<std::string_view> words) {
  for (auto w : words)
    if (key == w) return true;
  return false;
}

struct FormTest {
  LineForm form;
  bool (*test)(std::string_view key, FilePort& files);
};

// Tried in this order; the first test that passes decides. The order is the
// language: "keyboard" is a key line typing "board" because "key" comes before
// the key-name fallback, "copyall" copies "all".
constexpr std::array kForms = {
    FormTest{LineForm::kWindow, [](auto k, auto&) { return Starts(k, "w "); }},
    FormTest{LineForm::kLock,
             [](auto k, auto&) {
               return IsAnyOf(k, {"lock", "unlock"});
             }},
    FormTest{LineForm::kMacroFile, [](auto k, auto&) { return Starts(k, "mf"); }},
    FormTest{LineForm::kWait, [](auto k, auto&) { return IsWaitKey(k); }},
    FormTest{LineForm::kFile, [](auto k, FilePort& files) { return files.IsFile(k); }},
    FormTest{LineForm::kHttp, [](auto k, auto&) { return Starts(k, "http"); }},
    FormTest{LineForm::kMove, [](auto k, auto&) { return Starts(k, "move"); }},
    FormTest{LineForm::kBeep, [](auto k, auto&) { return Is(k, "beep"); }},
    FormTest{LineForm::kRand, [](auto k, auto&) { return Starts(k, "rand"); }},
    FormTest{LineForm::kGetClip, [](auto k, auto&) { return Is(k, "getclip"); }},
    FormTest{LineForm::kGetLoop, [](auto k, auto&) { return Is(k, "getloop"); }},
    FormTest{LineForm::kPartialLoop,
             [](auto k, auto&) { return Starts(k, "<r") || Is(k, "</r>"); }},
    FormTest{LineForm::kPause, [](auto k, auto&) { return Is(k, "<pause>"); }},
    FormTest{LineForm::kComment,
             [](auto k, auto&) { return Starts(k, "'") && basic::Length(k) >= 2; }},
    FormTest{LineForm::kCopy, [](auto k, auto&) { return Starts(k, "copy"); }},
    FormTest{LineForm::kPaste, [](auto k, auto&) { return Starts(k, "paste"); }},
    FormTest{LineForm::kPasteKeep,
             [](auto k, auto&) { return Starts(k, "@") && basic::Length(k) >= 2; }},
    FormTest{LineForm::kPasteRestore,
             [](auto k, auto&) { return Starts(k, "^") && basic::Length(k) >= 2; }},
    FormTest{LineForm::kPower,
             [](auto k, auto&) {
               return IsAnyOf(k, {"logoff", "shutdown", "standby", "hibernate", "reboot",
                                  "monitoron", "monitoroff"});
             }},
    FormTest{LineForm::kDelete, [](auto k, auto&) { return Starts(k, "delete "); }},
    FormTest{LineForm::kPage,
             [](auto k, auto&) {
               if (Is(k, "waitweb") || Is(k, "st") || Is(k, "gt")) return true;
               for (auto p : {"bc", "ts", "ad", "pw", "ip", "cc", "kk"})
                 if (Starts(k, p)) return true;
               return false;
             }},
    FormTest{LineForm::kKeys, [](auto k, auto&) { return Starts(k, "keys"); }},
    FormTest{LineForm::kKey, [](auto k, auto&) { return Starts(k, "key"); }},
    FormTest{LineForm::kGoto, [](auto k, auto&) { return Starts(k, "goto"); }},
    FormTest{LineForm::kDebug, [](auto k, auto&) { return Is(k, "<debug>"); }},
    FormTest{LineForm::kMsgBox, [](auto k, auto&) { return Starts(k, "msgbox"); }},
    FormTest{LineForm::kRegistry,
             [](auto k, auto&) {
               const std::string upper = basic::UCase(k);
               for (auto root : {"HKEY_CURRENT_CONFIG", "HKEY_LOCAL_MACHINE", "HKEY_CURRENT_USER",
                                 "HKEY_CLASSES_ROOT", "HKEY_USERS"})
                 if (upper.starts_with(root)) return true;
               return false;
             }},
    FormTest{LineForm::kCapsLock,
             [](auto k, auto&) { return Starts(k, "capslock") && basic::Length(k) > 9; }},
    FormTest{LineForm::kNumLock,
             [](auto k, auto&) { return Starts(k, "numlock") && basic::Length(k) >= 9; }},
    FormTest{LineForm::kPointer,
             [](auto k, auto&) { return Starts(k, "mousepos") || Starts(k, "mouclpos"); }},
    FormTest{
        LineForm::kMouseButton,
        [](auto k, auto&) { return Starts(k, "lmou") || Starts(k, "rmou") || Starts(k, "mmou"); }},
    FormTest{LineForm::kWheel, [](auto k, auto&) { return Starts(k, "wheel"); }},
};

static_assert(kForms.size() == static_cast<size_t>(LineForm::kKeyLine));

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

LineForm Classify(std::string_view key, FilePort& files) {
  for (const auto& f : kForms)
    if (f.test(key, files)) return f.form;
  return LineForm::kKeyLine;
}

}  // namespace kx

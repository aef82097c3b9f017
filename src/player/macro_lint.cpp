#include "player/macro_lint.h"

#include <algorithm>
#include <array>

#include "eval/eval_error.h"
#include "eval/prepare.h"
#include "eval/scanner.h"
#include "input/key_names.h"
#include "page/browser_open.h"
#include "player/macro_line.h"
#include "screen/image_file.h"
#include "screen/screen_lines.h"
#include "util/basic_text.h"

namespace kx {

namespace {

// Words that are a command only when they are the whole line: with more text
// after them they fall through to the key line.
using namespace std::string_view_literals;
constexpr std::array kExactWords = {
    "beep"sv,      "getclip"sv,  "getloop"sv,   "lock"sv,       "unlock"sv,
    "<pause>"sv,   "<debug>"sv,  "logoff"sv,    "shutdown"sv,   "standby"sv,
    "hibernate"sv, "reboot"sv,   "monitoron"sv, "monitoroff"sv, "waitweb"sv,
    "<default>"sv, "<switch>"sv, "</switch>"sv, "</r>"sv,
};

// The first word of the lines that hold or release a modifier.
constexpr std::array kModifierWords = {
    "shift"sv, "lshift"sv, "rshift"sv, "ctrl"sv, "lctrl"sv, "rctrl"sv,
    "alt"sv,   "lalt"sv,   "ralt"sv,   "win"sv,  "lwin"sv,  "rwin"sv,
};

template <size_t N>
bool IsOneOf(std::string_view word, const std::array<std::string_view, N>& words) {
  for (auto w : words)
    if (w == word) return true;
  return false;
}

// What a screen wait with bad arguments does when it runs.
constexpr const char* kFalseAtOnce = ": 再生するとすぐに False になります";

std::string Quoted(std::string_view text) {
  return "\"" + std::string(text) + "\"";
}

// Quotes close and parentheses balance outside quoted text.
bool Balanced(std::string_view text) {
  int depth = 0;
  bool quoted = false;
  for (char c : text) {
    if (c == '"') quoted = !quoted;
    if (quoted) continue;
    if (c == '(') ++depth;
    if (c == ')' && --depth < 0) return false;
  }
  return depth == 0 && !quoted;
}

class Linter {
 public:
  Linter(std::string_view text, const LintContext& context)
      : lines_(basic::Split(text, "\r\n")), context_(context) {}

  std::vector<LintWarning> Run() {
    for (size_t i = 0; i < lines_.size(); ++i) {
      number_ = static_cast<int>(i) + 1;
      Line(lines_[i]);
    }
    for (int open : openLoops_)
      Warn(open, "<r> に対応する </r> がありません: ブロックは1回だけ実行され、ループは閉じません");
    for (int open : openSwitches_)
      Warn(open,
           "<switch> に対応する </switch> がありません: 以降の行はすべてその case に属します");
    std::stable_sort(warnings_.begin(), warnings_.end(),
                     [](const auto& a, const auto& b) { return a.line < b.line; });
    return std::move(warnings_);
  }

 private:
  void Warn(int line, std::string text) { warnings_.push_back({line, std::move(text)}); }
  void Warn(std::string text) { Warn(number_, std::move(text)); }

  void Line(std::string_view line) {
    const std::string_view raw = RawLine(line);
    if (IsAssignment(raw)) {
      const auto expression = basic::Trim(raw.substr(raw.find('=') + 1));
      if (!ExpressionParses(expression))
        Warn("式 " + Quoted(expression) + " を解釈できません: 代入は失敗します");
      return;
    }
    const std::string key = KeyOf(raw);
    if (key.empty()) return;
    const ClassifiedBlock block = ClassifyBlockLine(raw, key);
    if (block.form != BlockForm::kNone) return Block(block.form);
    const ClassifiedLine command = ClassifyLine(raw, key, context_.files);
    switch (command.form) {
      case LineForm::kPartialLoop:
        return PartialLoop(key);
      case LineForm::kGoto:
        return Goto(command.argument);
      case LineForm::kMacroFile:
        return MacroFile(command.argument);
      case LineForm::kKey:
        return TypedText(command.argument);
      case LineForm::kKeys:
        return KeysLine(command.argument);
      case LineForm::kKeyLine:
        return KeyLine(key);
      case LineForm::kBrowser:
        if (!BrowserAddress(command.argument))
          Warn("browser: " + Quoted(command.argument) +
               " はアドレスではありません: http://、https://、file:/// などで始めてください "
               "(この行は何も開かず、現在の値は False になります)");
        return;
      case LineForm::kWaitPixel:
        return WaitPixelLine(command.argument);
      case LineForm::kWaitImage:
        return WaitImageLine(command.argument);
      default:
        return;
    }
  }

  void Block(BlockForm form) {
    switch (form) {
      case BlockForm::kSwitch:
      case BlockForm::kSwitchValue:
        if (!openSwitches_.empty())
          Warn(
              "入れ子の <switch>: 閉じたあと、外側の case "
              "は一致したかどうかに関わらず残りが実行されます");
        openSwitches_.push_back(number_);
        break;
      case BlockForm::kEndSwitch:
        if (openSwitches_.empty())
          Warn("</switch> に対応する <switch> がありません");
        else
          openSwitches_.pop_back();
        break;
      case BlockForm::kCase:
      case BlockForm::kDefault:
        if (openSwitches_.empty())
          Warn(std::string(form == BlockForm::kCase ? "<case>" : "<default>") +
               " は <switch> の外では何もしません");
        break;
      case BlockForm::kNone:
        break;
    }
  }

  void PartialLoop(std::string_view key) {
    if (key != "</r>") {
      openLoops_.push_back(number_);
    } else if (openLoops_.empty()) {
      Warn("</r> に対応する <r> がありません");
    } else {
      openLoops_.pop_back();
    }
  }

  void Goto(std::string_view argument) {
    const auto target = basic::ToLong(argument);
    if (!target)
      return Warn("goto " + Quoted(argument) + " は行番号ではありません: 再生はそこで失敗します");
    // One past the last line ends the pass normally; further is a failure.
    const auto lastTarget = static_cast<std::int64_t>(lines_.size()) + 1;
    if (*target < 1 || *target > lastTarget)
      Warn("goto " + std::to_string(*target) + " はマクロの範囲外です (マクロは" +
           std::to_string(lines_.size()) + "行): 再生はそこで失敗します");
  }

  void MacroFile(std::string_view name) {
    FilePort& files = context_.files;
    if (!name.empty() &&
        (files.IsFile(name) || files.IsFile(JoinPath(files, context_.macroFolder, name)) ||
         files.IsFile(JoinPath(files, context_.macroLibrary, name))))
      return;
    Warn("mf: ファイル " + Quoted(name) +
         " がマクロと同じフォルダにもMacroフォルダにもありません: " + "この行は何もしません");
  }

  void WaitPixelLine(std::string_view argument) {
    const auto parsed = ParseWaitPixel(argument);
    if (!parsed.args) Warn(parsed.error + kFalseAtOnce);
  }

  // The image is looked for as the player looks: as written, beside the
  // macro, in the Macro folder.
  void WaitImageLine(std::string_view argument) {
    const auto parsed = ParseWaitImage(argument);
    if (!parsed.args) return Warn(parsed.error + kFalseAtOnce);
    FilePort& files = context_.files;
    const std::string& name = parsed.args->file;
    std::optional<std::string> path;
    for (const std::string& p : {name, JoinPath(files, context_.macroFolder, name),
                                 JoinPath(files, context_.macroLibrary, name)})
      if (!path && files.IsFile(p)) path = p;
    if (!path)
      return Warn("waitimage: 画像ファイル " + Quoted(name) +
                  " がマクロと同じフォルダにもMacroフォルダにもありません" + kFalseAtOnce);
    const auto bytes = files.ReadAll(*path);
    if (!bytes || !DecodeImage(*bytes))
      Warn("waitimage: " + Quoted(name) + " はPNGかBMPの画像として読めません" + kFalseAtOnce);
  }

  void TypedText(std::string_view text) {
    if (context_.unicodeKeys) return;
    std::string untypeable;
    for (std::string_view rest = text; !rest.empty(); rest = basic::Mid(rest, 2)) {
      const CharKey key = KeyCodeFromChar(basic::FirstChar(rest), context_.layout);
      if (key.code < 1 || key.code > 255) untypeable += basic::Left(rest, 1);
    }
    if (!untypeable.empty())
      Warn("key: 日本語キーボード配列では " + Quoted(untypeable) +
           " を入力できません: これらの文字は飛ばされます");
  }

  void KeysLine(std::string_view names) {
    for (const auto& part : basic::Split(basic::LCase(basic::Trim(names)), "+")) {
      const std::string_view word = basic::Trim(part);
      const KeyCode code = KeyCodeFromWord(word, context_.layout);
      if (word.empty() || !IsKeyWord(word) || code < 1 || code > 255)
        Warn("keys: 不明なキー名 " + Quoted(word) + " は組み合わせから外されます");
    }
  }

  void KeyLine(std::string_view key) {
    // The first line may carry the loop count.
    if (number_ == 1 && key.starts_with("loop")) return;
    if (key.size() == 1 && key[0] >= '0' && key[0] <= '9')
      return Warn(Quoted(key) + " はキー " + std::string(key) +
                  " を押す行で、待ち時間ではありません: 待ち時間は2文字以上です (例 \"0" +
                  std::string(key) + "\")");
    const std::string_view first = key.substr(0, key.find(' '));
    if (first.size() < key.size() && IsOneOf(first, kExactWords))
      return Warn(Quoted(first) + " の後ろには何も書けません: " + Quoted(key) +
                  " はその命令ではなくキーの行になります");
    if (IsKeyWord(key)) {
      if (KeyCodeFromWord(key, context_.layout) == 0)
        Warn("不明なキー名 " + Quoted(key) + ": この行は何も押しません");
      return;
    }
    if (first.size() < key.size() && IsOneOf(first, kModifierWords))
      return Warn("不明なキー名 " + Quoted(key) + ": 修飾キーの行は \"" + std::string(first) +
                  " down\" か \"" + std::string(first) + " up\" です");
    Warn(Quoted(key) +
         " はキー名ではありません: この行はまずシェルに渡され、同じ名前のプログラムや文書を"
         "開くことがあります。開けなければ最初の文字のキーだけが押されます");
  }

  std::vector<std::string> lines_;
  const LintContext& context_;
  int number_ = 0;
  std::vector<int> openLoops_;
  std::vector<int> openSwitches_;
  std::vector<LintWarning> warnings_;
};

}  // namespace

bool ExpressionParses(std::string_view expression) {
  if (basic::Trim(expression).empty() || !Balanced(expression)) return false;
  try {
    const ScanResult scan = Scan(Prepare(expression));
    if (scan.operands.size() != scan.ops.size() + 1) return false;
    for (const auto& operand : scan.operands) {
      const std::string_view o = basic::Trim(operand);
      if (o.empty() && !scan.ops.empty()) return false;
      // A parenthesised group is an expression of its own.
      if (o.size() >= 2 && o.front() == '(' && o.back() == ')' &&
          !ExpressionParses(o.substr(1, o.size() - 2)))
        return false;
    }
  } catch (const EvalError&) {
    return false;
  }
  return true;
}

std::vector<LintWarning> LintMacro(std::string_view text, const LintContext& context) {
  return Linter(text, context).Run();
}

}  // namespace kx

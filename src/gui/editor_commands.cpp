// Menu commands that write lines into the editor.
#include <algorithm>
#include <cstdint>
#include <iterator>

#include "gui/main_controller.h"
#include "player/macro_line.h"
#include "player/macro_lint.h"
#include "recorder/tidy.h"
#include "util/basic_text.h"

namespace kx::gui {

namespace {

// A size as a person reads it: "512 バイト", "1.5 KB", "230.0 MB".
std::string ByteSizeText(std::int64_t bytes) {
  constexpr std::int64_t kStep = 1024;
  constexpr std::string_view kUnits[] = {"KB", "MB", "GB", "TB"};
  if (bytes < kStep) return std::to_string(std::max<std::int64_t>(bytes, 0)) + " バイト";
  std::size_t unit = 0;
  std::int64_t scale = kStep;
  while (unit + 1 < std::size(kUnits) && bytes >= scale * kStep) {
    scale *= kStep;
    ++unit;
  }
  const std::int64_t tenths = (bytes * 10 + scale / 2) / scale;
  return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + " " +
         std::string(kUnits[unit]);
}

}  // namespace

void MainController::Insert(const MenuEntry& entry) {
  view_.InsertAtCaret(InsertedText(entry));
}

void MainController::PartialLoop() {
  const auto answer =
      ports_.system.dialogs.InputBox("ループ回数を入力してください", "部分ループ", "");
  if (!answer || !basic::IsNumeric(*answer)) return;
  const std::string open = "<r " + std::string(basic::Trim(*answer)) + ">";
  const auto range = view_.SelectedLines();
  if (!range) {
    view_.InsertAtCaret(open + "\r\n</r>");
    return;
  }
  std::vector<std::string> lines = basic::Split(view_.EditorText(), "\r\n");
  const int count = static_cast<int>(lines.size());
  if (range->first < 0 || range->first >= count) return;
  const int last = std::min(range->last, count - 1);
  lines.insert(lines.begin() + last + 1, "</r>");
  lines.insert(lines.begin() + range->first, open);
  std::string text;
  for (std::size_t i = 0; i < lines.size(); ++i) text += (i ? "\r\n" : "") + lines[i];
  view_.SetEditorText(text);
}

void MainController::InsertFileLine(bool macroCall) {
  FileDialogRequest request = OpenDialogRequest();
  request.title = macroCall ? "マクロファイルを実行" : "ファイルを開く";
  const auto path = view_.AskOpenPath(request);
  if (!path) return;
  view_.InsertAtCaret((macroCall ? "mf " : "") + *path + "\r\n");
}

void MainController::InsertFolderLine() {
  if (const auto folder = view_.AskFolder("フォルダを開く")) view_.InsertAtCaret(*folder + "\r\n");
}

// Removes every wait line (a number of two or more digits), so that a
// recorded macro replays as fast as its line pauses allow.
void MainController::DeleteWaits() {
  const std::vector<std::string> lines = basic::Split(view_.EditorText(), "\r\n");
  std::string text;
  int removed = 0;
  bool first = true;
  for (const std::string& line : lines) {
    if (IsWaitKey(basic::LCase(basic::Trim(line)))) {
      ++removed;
      continue;
    }
    text += (first ? "" : "\r\n") + line;
    first = false;
  }
  if (removed == 0) return;
  view_.ReplaceEditorText(text);
  ShowStatus(std::to_string(removed) + "行の待ち時間を削除しました");
}

// Tidies a recorded macro: the same keys, clicks and play time in fewer lines.
// Refused while playing, as every editing command is: the play reads the
// editor's lines as it goes.
void MainController::TidyRecording() {
  const std::string before = view_.EditorText();
  const TidyResult tidied = TidyMacro(before, ports_.system.input, ports_.system.files);
  if (tidied.text == before) {
    ShowStatus("整理できる行はありませんでした");
    return;
  }
  auto count = [](const std::string& text) {
    return std::to_string(basic::Split(text, "\r\n").size());
  };
  view_.ReplaceEditorText(tidied.text);
  ShowStatus("記録を整理しました (" + count(before) + "行 → " + count(tidied.text) + "行)");
}

// The program asks once, with what the bin holds, and the system is told not
// to ask again; an empty bin asks nothing.
void MainController::EmptyRecycleBin() {
  const RecycleBinContents contents = ports_.system.power.QueryRecycleBin();
  if (contents.items <= 0) return;
  const std::string question = "ごみ箱を空にしますか？\r\n\r\nファイル総数 " +
                               std::to_string(contents.items) + "個 (" +
                               ByteSizeText(contents.bytes) + ")";
  const auto answer = ports_.system.dialogs.MessageBox(mainWindow_, question, "ファイル削除の確認",
                                                       MessageStyle::kOkCancelQuestion);
  if (answer == MessageResult::kOk) ports_.system.power.EmptyRecycleBinUnasked();
}

std::vector<LintWarning> MainController::Lint() {
  std::string folder = macroFolder_;
  if (const auto slash = currentPath_.find_last_of("\\/"); slash != std::string::npos)
    folder = currentPath_.substr(0, slash);
  const LintContext context{folder, macroFolder_, ports_.system.files, ports_.system.input,
                            settings_.unicodeKeys != 0};
  return kx::LintMacro(view_.EditorText(), context);
}

// The warnings in a message box, at most a screenful of them.
void MainController::LintMacro() {
  const std::vector<LintWarning> warnings = Lint();
  if (warnings.empty()) {
    ShowStatus("マクロに注意の必要な行は見つかりませんでした");
    return;
  }
  constexpr std::size_t kShown = 20;
  std::string text = std::to_string(warnings.size()) + "件の注意があります。\r\n";
  for (std::size_t i = 0; i < std::min(warnings.size(), kShown); ++i)
    text += "\r\n" + std::to_string(warnings[i].line) + "行目: " + warnings[i].text;
  if (warnings.size() > kShown) text += "\r\n…";
  ports_.system.dialogs.MessageBox(mainWindow_, text, "マクロのチェック");
}

}  // namespace kx::gui

// Opening and saving macros, the macro tree's actions and the help files.
#include "gui/main_controller.h"
#include "text/macro_text.h"

namespace kx::gui {

FileDialogRequest MainController::OpenDialogRequest() const {
  return {"ファイルを開く",
          {{"全てのファイル(*.*)", "*.*"},
           {"テキストファイル(*.txt)", "*.txt"},
           {"Kestrelixファイル(*.ksx)", "*.ksx"}},
          "",
          macroFolder_};
}

// The two lists name the .ksx type differently on purpose.
FileDialogRequest MainController::SaveDialogRequest() const {
  if (settings_.linkage == kLinkageAssociated)
    return {"名前を付けて保存",
            {{"Kestrelix マクロファイル(*.ksx)", "*.ksx"}, {"テキストファイル(*.txt)", "*.txt"}},
            "ksx",
            macroFolder_};
  return {"名前を付けて保存",
          {{"テキストファイル(*.txt)", "*.txt"}, {"Kestrelixファイル(*.ksx)", "*.ksx"}},
          "txt",
          macroFolder_};
}

void MainController::Open() {
  if (const auto path = view_.AskOpenPath(OpenDialogRequest())) LoadFile(*path);
}

// A loaded macro is checked at once; the status bar says when it has lines
// that deserve a look.
void MainController::LoadFile(const std::string& path) {
  view_.SetEditorText(sReadText(ports_.system.files, path));
  debug_.TextReplaced();
  currentPath_ = path;
  UpdateCaption();
  if (const auto warnings = Lint(); !warnings.empty())
    ShowStatus(std::to_string(warnings.size()) + "件の注意があります (設定 - マクロのチェック)");
}

void MainController::SaveAs() {
  const auto path = view_.AskSavePath(SaveDialogRequest());
  if (!path || !WriteFile(*path)) return;
  currentPath_ = *path;
  UpdateCaption();
  RefreshTree();
}

void MainController::Save() {
  if (currentPath_.empty()) {
    SaveAs();
    return;
  }
  const auto answer = ports_.system.dialogs.MessageBox(
      mainWindow_, currentPath_ + "\r\n上書き保存しますか？", kAppTitle, MessageStyle::kOkCancel);
  if (answer == MessageResult::kOk) WriteFile(currentPath_);
}

// Saves are atomic: a failed one leaves the old file whole, and says so.
bool MainController::WriteFile(const std::string& path) {
  if (sWriteText(ports_.system.files, path, view_.EditorText())) return true;
  ports_.system.dialogs.MessageBox(mainWindow_, path + "\r\nに保存できませんでした。", kAppTitle);
  return false;
}

void MainController::UpdateCaption() {
  view_.SetCaption(IdleCaption() + RapidTitleSuffix());
}

void MainController::OnTreeOpen(const std::string& path) {
  if (player_.Playing()) return;
  const std::string full = JoinPath(ports_.system.files, macroFolder_, path);
  if (ports_.system.files.IsFile(full)) LoadFile(full);
}

void MainController::OnTreeDelete(const std::string& path) {
  if (player_.Playing() || path.empty()) return;
  const std::string full = JoinPath(ports_.system.files, macroFolder_, path);
  const auto answer = ports_.system.dialogs.MessageBox(mainWindow_, full + "\r\nを削除しますか？",
                                                       kAppTitle, MessageStyle::kOkCancelQuestion);
  if (answer != MessageResult::kOk) return;
  ports_.folders.DeleteFile(full);
  RefreshTree();
}

void MainController::OnTreeCopyPath(const std::string& path) {
  ports_.system.clipboard.SetText(path.empty() ? macroFolder_
                                               : JoinPath(ports_.system.files, macroFolder_, path));
}

void MainController::OnOpenMacroFolder() {
  const char separator = ports_.system.files.Separator();
  view_.RunCommandLine("explorer.exe " + macroFolder_ + separator + ",/e");
}

void MainController::OnFileDropped(const std::string& path) {
  if (!player_.Playing() && ports_.system.files.IsFile(path)) LoadFile(path);
}

void MainController::OpenHelpFile(std::string_view name) {
  FilePort& files = ports_.system.files;
  const std::string path = JoinPath(files, files.AppFolder(), name);
  if (!files.IsFile(path) || !ports_.system.shell.Open(path, files.AppFolder()))
    ports_.system.dialogs.MessageBox(mainWindow_, path + "\r\nが見つかりません。", kAppTitle);
}

}  // namespace kx::gui

#include "gui/command_table.h"

#include <algorithm>
#include <array>

namespace kx::gui {

namespace {

constexpr int kVkF1 = 0x70;
constexpr int kVkF24 = 0x87;

using enum MenuKind;
using enum Command;

constexpr MenuEntry Popup(std::string_view caption) {
  return {kPopup, caption, {}};
}
// A popup shown by right-clicking a control, not on the menu bar.
constexpr MenuEntry ContextPopup(std::string_view caption, std::string_view which) {
  return {kPopup, caption, {}, kNone, which};
}
constexpr MenuEntry End() {
  return {kPopupEnd, {}, {}};
}
constexpr MenuEntry Separator() {
  return {kSeparator, {}, {}};
}
constexpr MenuEntry Item(std::string_view caption, std::string_view help, Command command,
                         std::string_view argument = {}, bool whilePlaying = false) {
  return {kItem, caption, help, command, argument, 0, whilePlaying};
}
constexpr MenuEntry Line(std::string_view caption, std::string_view help) {
  return Item(caption, help, kInsertLine);
}
constexpr MenuEntry Word(std::string_view caption, std::string_view help) {
  return Item(caption, help, kInsertWord);
}
constexpr MenuEntry Text(std::string_view caption, std::string_view help, std::string_view text) {
  return Item(caption, help, kInsertText, text);
}
// A check item of 設定 mirroring the boolean setting of that name.
constexpr MenuEntry Option(std::string_view caption, std::string_view help,
                           std::string_view setting) {
  return Item(caption, help, kToggleOption, setting, true);
}
// A debugger item: each works while playing (it decides how the play goes
// on at its next line).
constexpr MenuEntry Debug(std::string_view caption, std::string_view help, Command command,
                          Shortcut shortcut = {}) {
  return {kItem, caption, help, command, {}, 0, true, shortcut};
}
constexpr MenuEntry Speed(std::string_view caption, std::string_view help, int rate) {
  return {kItem, caption, help, kSpeed, {}, rate, true};
}

// The menu bar, top to bottom. Captions of insert items hold the inserted
// word, blanks and a description.
constexpr auto kMenu = std::to_array<MenuEntry>({
    Popup("ファイル(&F)"),
    Item("クリア(&C)", "マクロをクリア", kClear),
    Item("マクロの保存(&V)...", "マクロの保存", kSaveAs),
    Item("マクロの読み込み(&O)...", "マクロの読み込み", kOpen),
    Separator(),
    Item("マクロの上書き保存(&S)...", "マクロの上書き保存", kSave),
    Separator(),
    Item("終了(&X)", "Kestrelixを終了します", kExit, {}, true),
    End(),

    Popup("連打機能(&R)"),
    Item("キー連打(&Start/Stop)", "キー連打機能のON/OFF", kKeyRapid),
    Item("マウス連打(S&tart/Stop)", "マウス連打機能のON/OFF", kMouseRapid),
    Item("マウス連打(&Push)", "マウス連打機能のON/OFF(押してる間だけ連打)", kMousePush),
    End(),

    Popup("キー操作(&K)"),
    Line("Shift Down    ShiftキーDown", "Shiftキーを押したままにします"),
    Line("Shift Up        ShiftキーUp", "Shiftキーを離します"),
    Line("Ctrl Down      CtrlキーDown", "Ctrlキーを押したままにします"),
    Line("Ctrl Up          CtrlキーUp", "Ctrlキーを離します"),
    Line("Alt Down        AltキーDown", "Altキーを押したままにします"),
    Line("Alt Up            AltキーUp", "Altキーを離します"),
    Separator(),
    Line("↑                  上矢印キー", "上矢印キーを押します"),
    Line("↓                  下矢印キー", "下矢印キーを押します"),
    Line("←                  左矢印キー", "左矢印キーを押します"),
    Line("→                  右矢印キー", "右矢印キーを押します"),
    Separator(),
    Line("&Application    アプリケーションキー", "アプリケーションキーを押します"),
    Line("&BackSlash      ＼キー", "＼キー(ろ)を押します"),
    Line("&LWin              左Windowsキー", "左Windowsキーを押します"),
    Line("&RWin              右Windowsキー", "右Windowsキーを押します"),
    Separator(),
    Line(".                    テンキーの .", "テンキーの . を押します"),
    Line("*                    テンキーの *", "テンキーの * を押します"),
    Line("+                    テンキーの +", "テンキーの + を押します"),
    Line("-                    テンキーの -", "テンキーの - を押します"),
    Line("/                    テンキーの /", "テンキーの / を押します"),
    Separator(),
    Line("半角/全角        半角/全角キー", "半角/全角キーを押します"),
    Line("無変換            無変換キー", "無変換キーを押します"),
    Line("変換                変換キー", "変換キーを押します"),
    Line("カタカナ          カタカナキー", "カタカナキーを押します"),
    End(),

    Popup("マウス操作(&M)"),
    Word("&LMouse Down    左クリックDown", "左ボタンを押します(スクリーン座標)"),
    Word("LMouse Up        左クリックUp", "左ボタンを離します(スクリーン座標)"),
    Word("LMouse Double  左ダブルクリック", "左ダブルクリック(スクリーン座標)"),
    Word("&RMouse Down    右クリックDown", "右ボタンを押します(スクリーン座標)"),
    Word("RMouse Up        右クリックUp", "右ボタンを離します(スクリーン座標)"),
    Word("RMouse Double  右ダブルクリック", "右ダブルクリック(スクリーン座標)"),
    Word("&MMouse Down    中クリックDown", "中ボタンを押します(スクリーン座標)"),
    Word("MMouse Up        中クリックUp", "中ボタンを離します(スクリーン座標)"),
    Word("MMouse Double  中ダブルクリック", "中ダブルクリック(スクリーン座標)"),
    Separator(),
    Word("LMouCl Down    左クリックDown(クライアント座標)", "左ボタンを押します(クライアント座標)"),
    Word("LMouCl Up        左クリックUp(クライアント座標)", "左ボタンを離します(クライアント座標)"),
    Word("LMouCl Double  左ダブルクリック(クライアント座標)", "左ダブルクリック(クライアント座標)"),
    Word("RMouCl Down    右クリックDown(クライアント座標)", "右ボタンを押します(クライアント座標)"),
    Word("RMouCl Up        右クリックUp(クライアント座標)", "右ボタンを離します(クライアント座標)"),
    Word("RMouCl Double  右ダブルクリック(クライアント座標)", "右ダブルクリック(クライアント座標)"),
    Word("MMouCl Down    中クリックDown(クライアント座標)", "中ボタンを押します(クライアント座標)"),
    Word("MMouCl Up        中クリックUp(クライアント座標)", "中ボタンを離します(クライアント座標)"),
    Word("MMouCl Double  中ダブルクリック(クライアント座標)", "中ダブルクリック(クライアント座標)"),
    Separator(),
    Word("&Wheel              ホイール回転(120=上回転、-120=下回転)", "ホイールを回転します"),
    Word("Mouse&Pos         マウス位置変更", "マウスの位置を変更します(スクリーン座標)"),
    Word("MouCl&Pos         マウス位置の変更(クライアント座標)",
         "マウスの位置を変更します(クライアント座標)"),
    End(),

    Popup("システム(&S)"),
    Line("LogOff            ログオフ", "ログオフ命令を作成"),
    Line("ShutDown        シャットダウン", "シャットダウン命令を作成"),
    Line("Reboot            再起動", "再起動命令を作成"),
    Line("StandBy          スタンバイ", "スタンバイ命令を作成"),
    Line("Hibernate        休止状態", "休止状態命令を作成"),
    Line("MonitorOn       モニタの電源ON", "モニタの電源を入れる命令を作成"),
    Line("MonitorOff       モニタの電源OFF", "モニタの電源を切る命令を作成"),
    Separator(),
    Line("Delete Cookie    クッキーの削除", "クッキーを削除する命令を作成"),
    Line("Delete Cache     インターネット一時ファイルの削除",
         "インターネット一時ファイルを削除する命令を作成"),
    Line("Delete History   履歴の削除", "閲覧履歴を削除する命令を作成"),
    Line("Delete Recent    最近使ったファイルの削除", "最近使ったファイルの一覧を消す命令を作成"),
    Line("Delete Temp      一時ファイルの削除", "一時フォルダのファイルを削除する命令を作成"),
    Line("Delete Recycle   ごみ箱を空にする", "ごみ箱を空にする命令を作成"),
    Separator(),
    Item("ごみ箱を空にする(&E)", "今すぐごみ箱を空にします", kEmptyRecycleBin),
    End(),

    Popup("命令(&C)"),
    Item("指定回数ループ(&R)...", "<r>命令を作成", kPartialLoop),
    Text("Switch命令(&I)", "Switch命令を作成", "<Switch>\r\n  <Case >\r\n</Switch>\r\n"),
    Text("Default命令(&E)", "Default命令を作成", "<Default>\r\n"),
    Text("一時停止(&P)", "Pause命令を作成", "<Pause>\r\n"),
    Text("現在の値を表示(&V)", "Debug命令を作成", "<Debug>\r\n"),
    Text("ホットキーのロック(&K)", "Lock命令を作成", "Lock\r\n"),
    Text("ホットキーのロック解除(&U)", "Unlock命令を作成", "Unlock\r\n"),
    Separator(),
    Item("ファイルを開く(&F)...", "ファイルを開く命令を作成", kInsertFile),
    Item("フォルダを開く(&O)...", "フォルダを開く命令を作成", kInsertFolder),
    Item("マクロファイルを実行(&M)...", "MF命令を作成", kInsertMacroFile),
    Separator(),
    Item("指定ウィンドウを操作(&W)...", "W命令を作成", kCapture, "w"),
    Item("指定テキストの文字を取得(&Ｇ)...", "GT命令を作成", kCapture, "gt"),
    Item("指定テキストに文字を設定(&S)...", "ST命令を作成", kCapture, "st"),
    Item("指定テキストに文字を追加(&A)...", "AD命令を作成", kCapture, "ad"),
    Item("指定のボタンを押す(&B)...", "BC命令を作成", kCapture, "bc"),
    Item("バックグラウンドクリック(&C)...", "CC命令を作成", kCapture, "cc"),
    Item("自動ログイン(&L)...", "PW命令を作成", kCapture, "pw"),
    Text("ブラウザでページを開く(&N)", "Browser命令を作成", "Browser https://\r\n"),
    Separator(),
    Item("画面の色を待つ(&X)...", "WaitPixel命令を作成 (Alt+左クリックした点の色)", kCapture,
         "waitpixel"),
    Item("画像が出るまで待つ(&Y)...", "WaitImage命令を作成 (Alt+左クリックした所の画像)", kCapture,
         "waitimage"),
    Separator(),
    Item("待ち時間の削除(&D)", "マクロから待ち時間の行を削除します", kDeleteWaits),
    Item("記録の整理", "記録したマクロの不要な行をまとめます", kTidyRecording),
    End(),

    Popup("再生(&P)"),
    Item("記録(&R)", "操作記録の開始/終了", kRecord),
    Item("再生(&P)", "操作記録を再生/停止", kPlay, {}, true),
    Separator(),
    Speed("標準(&S)", "再生速度 - 標準", 0),
    Speed("2倍速", "再生速度 - 2倍速", 1),
    Speed("4倍速", "再生速度 - 4倍速", 2),
    Speed("1/2倍速", "再生速度 - 1/2倍速", 3),
    Speed("1/4倍速", "再生速度 - 1/4倍速", 4),
    Speed("1/8倍速", "再生速度 - 1/8倍速", 5),
    Separator(),
    Debug("ブレークポイントの設定/解除(&B)",
          "カーソル行のブレークポイントを設定/解除します。エディタのマクロの再生だけが止まります"
          "(mfで実行するファイル、マクロごとのホットキーとスケジュールの再生は止まりません)",
          kToggleBreakpoint, {kVkF9}),
    Debug("すべてのブレークポイントを解除", "すべてのブレークポイントを解除します",
          kClearBreakpoints),
    Debug("ステップ実行(&T)", "一時停止中の行を実行し、次に実行される行で一時停止します", kStep,
          {kVkF10}),
    Debug("続行(&C)", "次のブレークポイントまで、または最後まで再生します", kContinue, {kVkF5}),
    Debug("カーソル行まで実行", "カーソルのある行の手前まで再生して一時停止します", kRunToCursor,
          {kVkF10, true}),
    Debug("変数ウォッチ(&W)", "変数、現在の値、残りサイクルとループの回数を表示します", kWatch),
    End(),

    Popup("設定(&O)"),
    Option("時間記録(&N)", "操作の時間間隔を記録します", "Time"),
    Option("記録時はテキストエリアを非表示(&H)", "記録中はテキストエリアを隠します", "Hide"),
    Option("マウスクリック記録(&C)", "マウスクリック操作を記録します", "Mouse"),
    Option("マウス移動記録(&M)", "マウスの移動を記録します", "Move"),
    Option("相対位置でマウス記録(&R)", "マウス位置をアクティブウィンドウからの相対位置で記録します",
           "MouCl"),
    Option("アクティブウィンドウ記録(&A)", "アクティブウィンドウの切り替えを記録します", "RecAct"),
    Option("タイムスタンプ(&S)", "操作時の年月日をコメントで記録します", "Stamp"),
    Option("高精度記録(&P)", "キーとマウスの操作をもれなく順番どおりに記録します", "PreciseRec"),
    Option("コメント行をバルーンヘルプで表示(&B)", "再生中はコメント行をバルーンヘルプで表示します",
           "Balloon"),
    Option("タスクトレイに表示(&T)", "タスクトレイにアイコンを表示します", "Tray"),
    Option("マクロリストにアイコン表示(&I)", "マクロリストにアイコンを表示します", "TreeIcon"),
    Option("ループ回数設定を保存(&L)", "ループ回数を保存して次回起動時に復元します", "Loop"),
    Option("再生行表示(&P)", "再生中は実行されている行に色が付きます", "Trace"),
    Option("常に手前に表示(&F)", "ウィンドウを常に手前に表示します", "Top"),
    Separator(),
    Item("マクロのチェック(&K)", "マクロの誤りやすい行を調べます", kLintMacro),
    Item("オプション画面表示(&O)...", "オプション画面を表示", kOptionsDialog),
    End(),

    Popup("ヘルプ(&H)"),
    Item("ReadMeを開く(&R)...", "ReadMe.txtを開きます", kReadMe, {}, true),
    Item("操作記録名一覧を開く(&T)...", "操作記録名一覧.txtを開きます", kKeyList, {}, true),
    Item("Kestrelixのホームページ(&W)...", "Kestrelixのホームページを開きます", kHomePage, {},
         true),
    Separator(),
    Item("バージョン情報(&V)...", "バージョン情報を表示", kAbout, {}, true),
    End(),

    ContextPopup("マクロファイル", kTreeFileMenu),
    Item("ファイルの削除(&D)", "選択したマクロファイルを削除します", kTreeDelete),
    Item("Macroフォルダを開く(&O)", "Macroフォルダをエクスプローラで開きます", kTreeOpenFolder),
    Item("Macroフォルダの指定(&F)", "マクロリストに表示するフォルダを指定します",
         kTreeChooseFolder),
    End(),
    ContextPopup("マクロフォルダ", kTreeMenu),
    Item("フルパスをコピー(&C)", "選択した項目のフルパスをコピーします", kTreeCopyPath),
    Item("Macroフォルダを開く(&O)", "Macroフォルダをエクスプローラで開きます", kTreeOpenFolder),
    End(),
});

constexpr std::size_t ItemCount() {
  std::size_t n = 0;
  for (const MenuEntry& e : kMenu) n += e.kind == kItem ? 1 : 0;
  return n;
}
static_assert(ItemCount() <= kMaxMenuHelp, "the help table holds at most 150 texts");

constexpr bool PopupsBalance() {
  int depth = 0;
  for (const MenuEntry& e : kMenu) {
    if (e.kind == kPopup) ++depth;
    if (e.kind == kPopupEnd && --depth < 0) return false;
  }
  return depth == 0;
}
static_assert(PopupsBalance(), "every submenu of the menu bar is closed");

constexpr bool ItemsHaveHelp() {
  for (const MenuEntry& e : kMenu)
    if (e.kind == kItem && (e.help.empty() || e.caption.empty() || e.command == kNone))
      return false;
  return true;
}
static_assert(ItemsHaveHelp(), "every item has a caption, a help text and a command");

}  // namespace

std::span<const MenuEntry> MenuEntries() {
  return kMenu;
}

const MenuEntry* MenuEntryById(int id) {
  const int index = id - kFirstMenuId;
  if (index < 0 || index >= static_cast<int>(kMenu.size())) return nullptr;
  return &kMenu[static_cast<std::size_t>(index)];
}

std::optional<int> MenuIdFor(Command command, std::string_view argument) {
  for (std::size_t i = 0; i < kMenu.size(); ++i)
    if (kMenu[i].kind == kItem && kMenu[i].command == command && kMenu[i].argument == argument)
      return MenuIdOf(i);
  return std::nullopt;
}

std::optional<int> SpeedMenuId(int rate) {
  for (std::size_t i = 0; i < kMenu.size(); ++i)
    if (kMenu[i].command == kSpeed && kMenu[i].value == rate) return MenuIdOf(i);
  return std::nullopt;
}

std::string_view MenuHelp(int id) {
  const MenuEntry* entry = MenuEntryById(id);
  return entry ? entry->help : std::string_view{};
}

std::string ShortcutText(Shortcut shortcut) {
  if (shortcut.virtualKey < kVkF1 || shortcut.virtualKey > kVkF24) return "";
  return std::string(shortcut.ctrl ? "Ctrl+" : "") + "F" +
         std::to_string(shortcut.virtualKey - kVkF1 + 1);
}

std::string InsertedText(const MenuEntry& entry) {
  if (entry.command == kInsertText) return std::string(entry.argument);
  const std::string_view caption = entry.caption;
  const std::string_view word = caption.substr(0, caption.find("  "));
  std::string text;
  for (const char c : word)
    if (c != '&') text += c;
  if (entry.command == kInsertLine) text += "\r\n";
  return text;
}

}  // namespace kx::gui

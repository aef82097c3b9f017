#include "gui/win32/options_layout.h"

namespace kx::win32 {

namespace {

using K = OptionsControlKind;

constexpr std::string_view kFileTip = "マクロファイルを指定してください";
constexpr std::string_view kBrowseTip = "ファイル参照ダイアログを表示";
constexpr std::string_view kAddTip = "設定を新規登録";
constexpr std::string_view kChangeTip = "選択している設定を入力した内容に変更";
constexpr std::string_view kDeleteTip = "選択している設定を削除";

// Rows of the pages, in DIPs.
constexpr int kRow = 24;
constexpr int kButtonHeight = 28;

constexpr OptionsControl kControls[] = {
    // --- ホットキー ---
    {K::kGroup, kOptStatic, 0, 20, 40, 560, 124, "ホットキー", ""},
    {K::kLabel, kOptStatic, 0, 32, 66, 110, kRow, "表示/非表示", ""},
    {K::kHotkeyBox, kOptShowHide, 0, 146, 62, 140, kRow, "",
     "メイン画面の表示/非表示を切り替えるキー"},
    {K::kLabel, kOptStatic, 0, 304, 66, 116, kRow, "記録開始/終了", ""},
    {K::kHotkeyBox, kOptRecord, 0, 424, 62, 144, kRow, "", "記録を開始/終了するキー"},
    {K::kLabel, kOptStatic, 0, 32, 98, 110, kRow, "再生/停止", ""},
    {K::kHotkeyBox, kOptPlay, 0, 146, 94, 140, kRow, "", "マクロを再生/停止するキー"},
    {K::kLabel, kOptStatic, 0, 304, 98, 116, kRow, "一時停止/再開", ""},
    {K::kHotkeyBox, kOptPause, 0, 424, 94, 144, kRow, "", "再生を一時停止/再開するキー"},
    {K::kLabel, kOptStatic, 0, 32, 130, 110, kRow, "クリック記録", ""},
    {K::kKeyBox, kOptRecKeyClick, 0, 146, 126, 140, kRow, "",
     "押している間はマウスクリックを記録するキー"},
    {K::kLabel, kOptStatic, 0, 304, 130, 116, kRow, "マウス移動記録", ""},
    {K::kKeyBox, kOptRecKeyMouse, 0, 424, 126, 144, kRow, "",
     "押している間はマウス移動を記録するキー"},

    {K::kGroup, kOptStatic, 0, 20, 172, 560, 272, "マクロ別ホットキー", ""},
    {K::kList, kOptHotkeyList, 0, 32, 194, 536, 130, "", ""},
    {K::kLabel, kOptStatic, 0, 32, 338, 90, kRow, "ホットキー", ""},
    {K::kHotkeyBox, kOptHotkeyBox, 0, 126, 334, 220, kRow, "", "マクロを再生するキー"},
    {K::kLabel, kOptStatic, 0, 32, 370, 90, kRow, "マクロファイル", ""},
    {K::kEdit, kOptHotkeyFile, 0, 126, 366, 400, kRow, "", kFileTip},
    {K::kButton, kOptHotkeyBrowse, 0, 530, 366, 38, kRow, "...", kBrowseTip},
    {K::kButton, kOptHotkeyAdd, 0, 300, 404, 84, kButtonHeight, "追加", kAddTip},
    {K::kButton, kOptHotkeyChange, 0, 392, 404, 84, kButtonHeight, "編集", kChangeTip},
    {K::kButton, kOptHotkeyDelete, 0, 484, 404, 84, kButtonHeight, "削除", kDeleteTip},

    // --- マクロ起動設定 ---
    {K::kGroup, kOptStatic, 1, 20, 40, 560, 404, "マクロ起動設定", ""},
    {K::kList, kOptAutoList, 1, 32, 62, 536, 196, "", ""},
    {K::kRadioFirst, kOptAutoAfterStart, 1, 32, 268, 90, kRow, "起動後",
     "Kestrelix起動から指定時間後にマクロを実行します(起動何分後とか)"},
    {K::kRadio, kOptAutoInterval, 1, 126, 268, 110, kRow, "インターバル",
     "指定時間毎にマクロを実行します(何分毎とか)"},
    {K::kRadio, kOptAutoDaily, 1, 240, 268, 80, kRow, "毎日",
     "毎日指定した時間にマクロを実行します(毎日何時何分とか)"},
    {K::kRadio, kOptAutoStopped, 1, 324, 268, 80, kRow, "停止", "自動実行を停止します"},
    {K::kLabel, kOptStatic, 1, 32, 306, 90, kRow, "時間指定", ""},
    {K::kTimePicker, kOptAutoTime, 1, 126, 302, 120, kRow, "", ""},
    {K::kButton, kOptAutoClear, 1, 252, 302, 70, kRow, "クリア", "時間指定をクリア"},
    {K::kLabel, kOptStatic, 1, 32, 338, 90, kRow, "マクロファイル", ""},
    {K::kEdit, kOptAutoFile, 1, 126, 334, 400, kRow, "", kFileTip},
    {K::kButton, kOptAutoBrowse, 1, 530, 334, 38, kRow, "...", kBrowseTip},
    {K::kButton, kOptAutoAdd, 1, 300, 372, 84, kButtonHeight, "追加", kAddTip},
    {K::kButton, kOptAutoChange, 1, 392, 372, 84, kButtonHeight, "編集", kChangeTip},
    {K::kButton, kOptAutoDelete, 1, 484, 372, 84, kButtonHeight, "削除", kDeleteTip},

    // --- その他 ---
    {K::kGroup, kOptStatic, 2, 20, 40, 560, 56, "再生終了時の通知", ""},
    {K::kRadioFirst, kOptNotifyNone, 2, 32, 62, 80, kRow, "なし", ""},
    {K::kRadio, kOptNotifySound, 2, 120, 62, 70, kRow, "音", ""},
    {K::kRadio, kOptNotifyDialog, 2, 200, 62, 100, kRow, "ダイアログ", ""},
    {K::kRadio, kOptNotifyFlash, 2, 310, 62, 130, kRow, "タイトル点滅", ""},
    {K::kCheck, kOptUp, 2, 24, 104, 552, kRow, "再生終了時にCtrl、Shift、AltキーをUPにする",
     "再生終了してもキーが押しっぱなしになるのを防ぎます"},
    {K::kLabel, kOptStatic, 2, 24, 138, 260, kRow, "連打機能の連打間隔(1～9999ms)", ""},
    {K::kNumberEdit, kOptHits, 2, 288, 134, 80, kRow, "", ""},
    // The check box sits on the frame's caption, whose leading blanks make
    // room for it; its own caption is only its tool tip.
    {K::kGroup, kOptStatic, 2, 20, 166, 560, 96, "    テキストボックスの表示", ""},
    {K::kCheck, kOptEditorShown, 2, 26, 166, 14, 16, "", "テキストボックスの表示/非表示"},
    {K::kRadioFirst, kOptModeRuler, 2, 32, 190, 130, kRow, "行数+ルーラー", ""},
    {K::kRadio, kOptModeNumbers, 2, 170, 190, 80, kRow, "行数", ""},
    {K::kRadio, kOptModePlain, 2, 256, 190, 80, kRow, "なし", ""},
    {K::kLabel, kOptStatic, 2, 32, 228, 300, kRow, "記録を行うテキストボックスのフォントサイズ",
     ""},
    {K::kCombo, kOptFontSize, 2, 336, 224, 80, 240, "", ""},
    {K::kGroup, kOptStatic, 2, 20, 270, 560, 60, "起動マクロ", ""},
    {K::kEdit, kOptDefMacro, 2, 32, 292, 490, kRow, "",
     "起動時に読み込んでおくマクロファイルを指定してください"},
    {K::kButton, kOptDefMacroBrowse, 2, 530, 292, 38, kRow, "...", kBrowseTip},
    {K::kGroup, kOptStatic, 2, 20, 338, 560, 68, "拡張子設定", ""},
    {K::kButton, kOptAssociate, 2, 32, 362, 300, kButtonHeight,
     "マクロファイルを.ksxで保存＆関連付け",
     "マクロファイルの拡張子を.ksxで保存。.ksxファイルをKestrelixに関連付けします"},
    {K::kButton, kOptRemoveAssociation, 2, 340, 362, 150, kButtonHeight, "関連付け解除",
     ".ksxファイルの関連付けを解除し、保存も.txtで保存します。"},
    {K::kGroup, kOptStatic, 2, 20, 414, 560, 92, "自動操作ブラウザ (browser命令)", ""},
    {K::kLabel, kOptStatic, 2, 32, 440, 90, kRow, "ブラウザ", ""},
    {K::kEdit, kOptBrowser, 2, 126, 436, 400, kRow, "",
     "空欄ならMicrosoft Edge、なければGoogle Chromeを使います"},
    {K::kButton, kOptBrowserBrowse, 2, 530, 436, 38, kRow, "...", kBrowseTip},
    {K::kLabel, kOptStatic, 2, 32, 472, 90, kRow, "DevToolsPort", ""},
    {K::kNumberEdit, kOptDevToolsPort, 2, 126, 468, 80, kRow, "",
     "ブラウザを操作するポート(127.0.0.1だけで使います)"},

    // --- the bottom row ---
    {K::kButton, kOptOk, kAllPages, 324, 522, 84, kButtonHeight, "OK", ""},
    {K::kButton, kOptCancel, kAllPages, 416, 522, 84, kButtonHeight, "キャンセル", ""},
    {K::kButton, kOptApply, kAllPages, 508, 522, 84, kButtonHeight, "適用", ""},
};

}  // namespace

std::span<const OptionsControl> OptionsControls() {
  return kControls;
}

}  // namespace kx::win32

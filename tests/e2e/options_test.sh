#!/usr/bin/env bash
# The options dialog: it opens with its title, pages and controls; キャンセル
# leaves setting.ini byte for byte; a new Play hotkey (F8) plays after 適用;
# the .ksx association writes its keys for the current user, stores
# Linkage=8 and a started .ksx file plays, and its removal deletes them and
# stores Linkage=9; scheduled runs play at their interval and once after the
# start.
. "$(dirname "$0")/lib.sh"

main=(--class KestrelixMainWindow)
title="Kestrelix オプション"
dialog=(--title "$title")
app=$WORK/app
classes='HKCU\Software\Classes'

fresh_app() {
  rm -rf "$app"
  mkdir -p "$app/Macro"
  cp "$BIN/Kestrelix.exe" "$app/"
}

# setting.ini as the program keeps it: UTF-16 with a byte-order mark.
write_ini() {
  { printf '\xff\xfe'; printf '[Macro]\r\n%s' "$1" | iconv -f UTF-8 -t UTF-16LE; } >"$app/setting.ini"
}
ini_text() { iconv -f UTF-16 -t UTF-8 "$app/setting.ini" | tr -d '\r'; }

# Opens the dialog from the menu: 設定(&O), オプション画面表示(&O)... The keys
# reach the window only once Wine has taken the focus change: a try that
# left the menu shut is repeated.
open_options() {
  local window
  window=$(xdotool search --onlyvisible --name '^Kestrelix$' | head -n1)
  for _ in 1 2 3; do
    # A real click on the window's caption area gives Wine the focus change.
    xdotool mousemove --window "$window" 60 5 click 1
    xdotool windowfocus --sync "$window"
    xdotool key alt+o o
    robot wait "${dialog[@]}" --timeout 5 >/dev/null && return 0
    xdotool key Escape Escape
  done
  fail "the options dialog did not open"
}

close_options() {
  robot click "${dialog[@]}" --ctl-text "$1" >/dev/null
  robot_await_gone "the options dialog" "${dialog[@]}"
}

# How many times the target saw a key go down.
downs() { key_messages "$WORK/target.log" | tr ' ' '\n' | grep -c "^DOWN:$1\$" || true; }

# Waits up to SEC seconds for the count of downs of VK to reach N.
await_downs() {
  local vk=$1 n=$2 sec=$3
  for _ in $(seq $((sec * 10))); do
    [ "$(downs "$vk")" -ge "$n" ] && return 0
    sleep 0.1
  done
  fail "key $vk went down $(downs "$vk") times, not $n"
}

start_target "$WORK/target.log"
target=$(xdotool search --onlyvisible --name '^KxTarget$' | head -n1)
write_macro "$WORK/shift.ksx" "w kxtarget" "keys shift"
write_macro "$WORK/ctrl.ksx" "w kxtarget" "keys ctrl"

# --- the dialog, and キャンセル ------------------------------------------------
fresh_app
write_ini $'Hotkey=65|2|Ctrl + A|C:\\m\\a.ksx\r\nAuto=停止,0:00:04,C:\\m\\a.ksx\r\n'
start_app
open_options
controls=$(robot controls "${dialog[@]}")
for text in "Alt + F11" "F11" "Pause" "ホットキー" "マクロ別ホットキー" "追加" "編集" "削除" \
  "マクロ起動設定" "起動後" "インターバル" "毎日" "停止" "クリア" "再生終了時の通知" "タイトル点滅" \
  "再生終了時にCtrl、Shift、AltキーをUPにする" "連打機能の連打間隔(1～9999ms)" \
  "    テキストボックスの表示" "行数+ルーラー" "起動マクロ" "拡張子設定" \
  "マクロファイルを.ksxで保存＆関連付け" "関連付け解除" "自動操作ブラウザ (browser命令)" "ブラウザ" \
  "DevToolsPort" "9222" "OK" "キャンセル" "適用"; do
  grep -qF $'\ttext='"$text"$'\t' <<<"$controls" || fail "no control [$text]"
done
for class in SysTabControl32 SysListView32 SysDateTimePick32 ComboBox; do
  grep -q "class=$class" <<<"$controls" || fail "no $class"
done
pages=$(robot items "${dialog[@]}" --ctl-class SysTabControl32 | sed -E 's/.*\ttext=([^\t]*).*/\1/' | tr '\n' ' ')
expect_eq "the pages" "$pages" "ホットキー マクロ起動設定 その他 "
hotkeys=$(robot items "${dialog[@]}" --ctl-class SysListView32 --ctl-nth 0 | grep -c 'Ctrl + A' || true)
expect_eq "the per-macro hotkey row" "$hotkeys" 1
tips=$(robot tooltips "${dialog[@]}")
for tip in "設定を新規登録" "ファイル参照ダイアログを表示" "自動実行を停止します" "時間指定をクリア" \
  "再生終了してもキーが押しっぱなしになるのを防ぎます"; do
  grep -qF "text=$tip" <<<"$tips" || fail "no tool tip [$tip]"
done
shot options_hotkeys
robot select "${dialog[@]}" --ctl-class SysTabControl32 -- "その他" >/dev/null
shot options_other
before=$(md5sum <"$app/setting.ini")
close_options "キャンセル"
expect_eq "setting.ini after キャンセル" "$(md5sum <"$app/setting.ini")" "$before"

# --- F8 as the Play hotkey, by 適用 ----------------------------------------------
open_options
robot focus "${dialog[@]}" --ctl-class Edit --ctl-text Pause >/dev/null
xdotool windowfocus --sync "$(xdotool search --onlyvisible --name "^$title\$" | head -n1)"
# System keys are captured too: F10 opens no menu and Alt+F4 closes nothing.
xdotool key F10
robot wait "${dialog[@]}" --ctl-class Edit --ctl-text F10 >/dev/null || fail "F10 not captured"
xdotool key alt+F4
robot wait "${dialog[@]}" --ctl-class Edit --ctl-text "Alt + F4" >/dev/null || fail "Alt+F4 not captured"
xdotool type abc
robot wait "${dialog[@]}" --ctl-class Edit --ctl-text C >/dev/null || fail "typed text: $(robot controls "${dialog[@]}" --ctl-class Edit)"
xdotool key F8
robot wait "${dialog[@]}" --ctl-class Edit --ctl-text F8 >/dev/null || fail "F8 not captured"
robot click "${dialog[@]}" --ctl-text "適用" >/dev/null
# 適用 leaves the dialog open: wait for the last key it writes.
for _ in $(seq 150); do grep -qx 'Linkage=9' <<<"$(ini_text 2>/dev/null)" && break; sleep 0.1; done
grep -qx 'HotkeyPlay=119' <<<"$(ini_text)" || fail "HotkeyPlay after 適用: $(ini_text)"
grep -qx 'DevToolsPort=9222' <<<"$(ini_text)" || fail "DevToolsPort after 適用: $(ini_text)"
# The automation browser's path and port, typed into the その他 page.
robot select "${dialog[@]}" --ctl-class SysTabControl32 -- "その他" >/dev/null
robot set-text "${dialog[@]}" --ctl-class Edit --ctl-id 144 -- 'C:\Program Files\ブラウザ\msedge.exe' >/dev/null
robot set-text "${dialog[@]}" --ctl-class Edit --ctl-id 146 -- 9333 >/dev/null
robot click "${dialog[@]}" --ctl-text "適用" >/dev/null
for _ in $(seq 150); do grep -qx 'DevToolsPort=9333' <<<"$(ini_text 2>/dev/null)" && break; sleep 0.1; done
grep -qx 'Browser=C:\\Program Files\\ブラウザ\\msedge.exe' <<<"$(ini_text)" || fail "Browser after 適用: $(ini_text)"
grep -qx 'DevToolsPort=9333' <<<"$(ini_text)" || fail "DevToolsPort after 適用: $(ini_text)"
close_options "キャンセル"
robot set-text "${main[@]}" --ctl-class Edit --ctl-id 1 -- $'w kxtarget\r\nkeys shift' >/dev/null
xdotool windowfocus --sync "$target"
xdotool key F8
await_downs 16 1 10

# --- the association ---------------------------------------------------------
open_options
robot select "${dialog[@]}" --ctl-class SysTabControl32 -- "その他" >/dev/null
robot click "${dialog[@]}" --ctl-text "マクロファイルを.ksxで保存＆関連付け" >/dev/null
for _ in $(seq 50); do wine reg query "$classes\\ksx_auto_file\\Shell\\open\\command" >/dev/null 2>&1 && break; sleep 0.1; done
reg=$(wine reg query "$classes\\.ksx" /ve 2>/dev/null | iconv -f CP932 -t UTF-8 | tr -d '\r')
grep -q 'ksx_auto_file' <<<"$reg" || fail ".ksx key: $reg"
reg=$(wine reg query "$classes\\ksx_auto_file" /ve 2>/dev/null | iconv -f CP932 -t UTF-8 | tr -d '\r')
grep -q 'Kestrelix マクロファイル' <<<"$reg" || fail "class key: $reg"
reg=$(wine reg query "$classes\\ksx_auto_file\\DefaultIcon" /ve 2>/dev/null | iconv -f CP932 -t UTF-8 | tr -d '\r')
grep -qF "$(winpath "$app")\\Kestrelix.exe,0" <<<"$reg" || fail "icon key: $reg"
reg=$(wine reg query "$classes\\ksx_auto_file\\Shell\\open\\command" /ve 2>/dev/null | iconv -f CP932 -t UTF-8 | tr -d '\r')
grep -qF "$(winpath "$app")\\Kestrelix.exe \"%1\"" <<<"$reg" || fail "open command: $reg"
close_options "OK"
grep -qx 'Linkage=8' <<<"$(ini_text)" || fail "Linkage after OK: $(ini_text)"
cp "$WORK/ctrl.ksx" "$WORK/started.ksx"
# Windows shows the per-user classes under HKEY_CLASSES_ROOT; Wine 8 does
# not merge them, so the test puts the two keys the shell reads there itself,
# with the values the program wrote.
reg_value() { wine reg query "$1" /ve 2>/dev/null | iconv -f CP932 -t UTF-8 | tr -d '\r' | sed -n 's/.*REG_SZ *//p'; }
ext_value=$(reg_value "$classes\\.ksx")
open_value=$(reg_value "$classes\\ksx_auto_file\\Shell\\open\\command")
wine reg add 'HKCR\.ksx' /ve /d "$ext_value" /f >/dev/null 2>&1
wine reg add 'HKCR\ksx_auto_file\Shell\open\command' /ve /d "$open_value" /f >/dev/null 2>&1
# start.exe waits on a message box when it finds no program for the file.
timeout 30 wine start /unix "$WORK/started.ksx" >/dev/null 2>&1 &
E2E_PIDS+=($!)
await_downs 17 1 30

open_options
robot select "${dialog[@]}" --ctl-class SysTabControl32 -- "その他" >/dev/null
robot click "${dialog[@]}" --ctl-text "関連付け解除" >/dev/null
for _ in $(seq 50); do wine reg query "$classes\\.ksx" >/dev/null 2>&1 || break; sleep 0.1; done
! wine reg query "$classes\\.ksx" >/dev/null 2>&1 || fail ".ksx is still there"
! wine reg query "$classes\\ksx_auto_file" >/dev/null 2>&1 || fail "ksx_auto_file is still there"
close_options "OK"
grep -qx 'Linkage=9' <<<"$(ini_text)" || fail "Linkage after removal: $(ini_text)"
wine reg delete 'HKCR\.ksx' /f >/dev/null 2>&1
wine reg delete 'HKCR\ksx_auto_file' /f >/dev/null 2>&1
close_app

# --- scheduled runs ----------------------------------------------------------
fresh_app
write_ini "Auto=インターバル,0:00:04,$(winpath "$WORK/shift.ksx")|起動後,0:00:05,$(winpath "$WORK/ctrl.ksx")"$'\r\n'
shifts=$(downs 16)
ctrls=$(downs 17)
start_app
await_downs 16 $((shifts + 1)) 20
first=$(date +%s%N)
await_downs 16 $((shifts + 3)) 20
third=$(date +%s%N)
gap=$(((third - first) / 1000000))
echo "interval runs: the third came ${gap} ms after the first"
[ "$gap" -gt 6500 ] && [ "$gap" -lt 9500 ] || fail "two intervals of 4 s took $gap ms"
expect_eq "runs after the start" "$(downs 17)" "$((ctrls + 1))"
close_app

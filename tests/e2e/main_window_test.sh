#!/usr/bin/env bash
# The main window as a user first meets it: a fresh start in an empty folder,
# settings written by hand, "/m" and "/h", menu help, a キー操作 item and the
# play-speed items; closing writes setting.ini as a fresh install has it.
. "$(dirname "$0")/lib.sh"

main=(--class KestrelixMainWindow)
app=$WORK/app

# A copy of the program in its own folder, with a Macro folder of files.
fresh_app() {
  rm -rf "$app"
  mkdir -p "$app/Macro/sub"
  cp "$BIN/Kestrelix.exe" "$app/"
  printf 'beep' >"$app/Macro/b.ksx"
  printf 'beep' >"$app/Macro/サンプル.txt"
  printf 'beep' >"$app/Macro/sub/c.ksx"
}

# Starts the copy with the given switches and waits for its window (shown,
# unless it starts hidden).
start_app() {
  (cd "$app" && wine Kestrelix.exe "$@" >/dev/null 2>&1) &
  E2E_PIDS+=($!)
  local shown=()
  [ "${1:-}" = /h ] && shown=(--all)
  robot_await "the main window" "${shown[@]}" "${main[@]}" --timeout 30 >/dev/null
}

close_app() {
  robot close --all "${main[@]}" >/dev/null
  robot_await_gone "the main window" --all "${main[@]}" --timeout 30
  for _ in $(seq 100); do
    pgrep -f 'Kestrelix.exe' >/dev/null || break
    sleep 0.1
  done
}

# --- a fresh start -----------------------------------------------------------
fresh_app
start_app
controls=$(robot controls "${main[@]}")
buttons=$(awk -F'\t' '$5 == "class=Button" { sub("text=", "", $7); printf "%s ", $7 }' <<<"$controls")
expect_eq "the command buttons, in order" "$buttons" "記録 再生 クリア 保存 読込 "
grep -q $'class=Edit\tid=1004\ttext=1\t' <<<"$controls" || fail "loop-count box with 1: $controls"
grep -q 'class=msctls_updown32' <<<"$controls" || fail "no up-down control"
grep -q 'class=msctls_statusbar32' <<<"$controls" || fail "no status bar"
tree=$(robot items "${main[@]}" --ctl-class SysTreeView32 | sed -E 's/.*\tpath=([^\t]*)\t.*/\1/' | tr '\n' ' ')
expect_eq "the macro tree" "$tree" "sub sub/c.ksx b.ksx サンプル.txt "
tips=$(robot tooltips "${main[@]}" | sed 's/.*text=//' | tr '\n' '|')
expect_eq "tool tips" "$tips" "操作記録の開始/終了|操作記録を再生|操作記録をクリア|マクロの保存。右クリックで上書き保存|マクロの読み込み|ループ再生する回数(0～9999)|"
shot fresh
close_app
expected_fresh="[Macro]
Bundle2=1
Mouse=-1
MouCl=0
Move=-1
RecAct=0
Time=0
Stamp=0
Balloon=0
Tray=0
TreeIcon=-1
Loop=0
Hide=0
Trace=0
Top=0
Split=1335
WinState=0
X=0
Y=0
H=6000
W=5200
rate=0"
expect_eq "setting.ini after a fresh start and close" "$(ini_text "$app/setting.ini")" "$expected_fresh"

# --- menu help, a key item and the play speed ---------------------------------
start_app
hwnd=$(robot find "${main[@]}" | robot_field handle)
xdotool windowfocus --sync "$(xdotool search --name '^Kestrelix$' | head -n1)"
xdotool key alt+f
robot_expect_text "help of クリア" "マクロをクリア" "${main[@]}" --ctl-class msctls_statusbar32
xdotool key Down
robot_expect_text "help of マクロの保存" "マクロの保存" "${main[@]}" --ctl-class msctls_statusbar32
shot menu_help
xdotool key Escape Escape
robot_expect_text "help reset when the menu closes" "" "${main[@]}" --ctl-class msctls_statusbar32
xdotool key alt+k Return
robot_expect_text "a キー操作 item's line" $'Shift Down\r\n' "${main[@]}" --ctl-class Edit --ctl-id 1
# 再生(&P) opens on 記録; then 再生, 標準 and 2倍速 (separators are skipped).
xdotool key alt+p Down Down Down
robot_expect_text "help of 2倍速" "再生速度 - 2倍速" "${main[@]}" --ctl-class msctls_statusbar32
xdotool key Return
close_app
grep -qx 'rate=1' <<<"$(ini_text "$app/setting.ini")" || fail "rate after choosing 2倍速: $(ini_text "$app/setting.ini")"

# --- settings written by hand -------------------------------------------------
fresh_app
printf 'start' >"$app/start.ksx"
printf '[Macro]\r\nX=1500\r\nY=750\r\nW=6000\r\nH=6750\r\nLoop=-1\r\nLoopCnt=7\r\nTop=-1\r\nTray=-1\r\nTextMode=2\r\nDefMacro=%s\r\n' \
  "$(winpath "$app/start.ksx")" >"$app/setting.ini"
start_app
rect=$(robot find "${main[@]}" | robot_field rect)
expect_eq "window placed from X Y W H (twips at 96 dpi)" "$rect" "100,50,500,500"
robot_expect_text "loop count from LoopCnt" "7" "${main[@]}" --ctl-class Edit --ctl-id 1004
# Tray on: the window is owned (by a hidden window), so it has no task-bar
# button beside the tray icon.
owner=$(robot find "${main[@]}" | robot_field owner)
[ "$owner" != 0x00000000 ] || fail "Tray on and the main window is not owned"
robot_expect_text "the start-up macro" "start" "${main[@]}" --ctl-class Edit --ctl-id 1
# TextMode 2: a plain box, without line numbers beside it.
editor=$(robot controls "${main[@]}" --ctl-class KestrelixTextEditor | robot_field client)
inner=$(robot controls "${main[@]}" --ctl-class Edit --ctl-id 1 | robot_field client)
expect_eq "plain editor starts where its frame starts" "${inner%%,*}" "${editor%%,*}"
shot by_hand
close_app
ini=$(ini_text "$app/setting.ini")
for line in X=1500 Y=750 W=6000 H=6750 LoopCnt=7 Top=-1 Tray=-1; do
  grep -qx "$line" <<<"$ini" || fail "$line kept: $ini"
done

# --- "/m" and "/h" leave the stored position alone ----------------------------
for switch in /m /h; do
  start_app "$switch"
  state=$(robot find --all "${main[@]}" | robot_field state)
  visible=$(robot find --all "${main[@]}" | robot_field visible)
  case $switch in
    /m) expect_eq "state with /m" "$state" "minimized" ;;
    /h) expect_eq "visible with /h" "$visible" "0" ;;
  esac
  close_app
  ini=$(ini_text "$app/setting.ini")
  for line in X=1500 Y=750 W=6000 H=6750; do
    grep -qx "$line" <<<"$ini" || fail "$switch changed the stored position: $ini"
  done
done

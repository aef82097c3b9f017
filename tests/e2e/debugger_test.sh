#!/usr/bin/env bash
# The debugger as a user drives it: F9 on the caret's line sets a breakpoint
# on line 3 of a macro that types into the target; 再生 runs lines 1-2 and
# pauses with the status bar saying so, F10 runs line 3 alone, F5 the rest;
# the variable watch lists #a = 5. Screenshots of the gutter and the watch at
# 100% and 200%.
. "$(dirname "$0")/lib.sh"

main=(--class KestrelixMainWindow)
editor=("${main[@]}" --ctl-class Edit --ctl-id 1)
status=("${main[@]}" --ctl-class msctls_statusbar32)
watch=(--class KestrelixWatchWindow)
app=$WORK/app
mkdir -p "$app/Macro"
cp "$BIN/Kestrelix.exe" "$app/"

# The DPI is the prefix's: put back 96 however the test ends.
set_dpi() { wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1" /f >/dev/null 2>&1; }
trap 'status=$?; set_dpi 96; (exit $status); e2e_finish' EXIT

# Keys given in the main window, as a user presses them there.
press_in_main() {
  robot focus "${editor[@]}" >/dev/null
  xdotool windowfocus --sync "$(xdotool search --onlyvisible --name '^Kestrelix' | head -n1)"
  xdotool key "$@"
}
typed() { key_messages "$WORK/target.log"; }
# Sets the editor's text, again while a window still busy starting (or a
# loaded machine) lets the robot's message time out.
set_editor() {
  for _ in $(seq 20); do
    robot set-text "${editor[@]}" -- "$1" >/dev/null 2>&1 && return 0
    sleep 0.5
  done
  fail "the editor did not take the text"
}
pause_text() { printf 'ブレークポイントで一時停止: %s 行目 (F5 続行 / F10 ステップ実行)' "$1"; }

start_target "$WORK/target.log"
start_app
macro=$'w kxtarget\r\n#a = 2+3\r\nkeys a\r\nkeys b'
set_editor "$macro"
# The caret at the start of line 3 (EM_SETSEL): "w kxtarget\r\n#a = 2+3\r\n" is 22
# characters.
robot send "${editor[@]}" 177 22 22 >/dev/null
press_in_main F9
# 再生(&P), 変数ウォッチ(&W).
press_in_main alt+p w
robot_await "the watch window" "${watch[@]}" >/dev/null
shot gutter_and_watch_100

robot click "${main[@]}" --ctl-text 再生 >/dev/null
robot_expect_text "the status bar at the breakpoint" "$(pause_text 3)" "${status[@]}"
expect_eq "lines 1-2 typed nothing" "$(typed)" ""
robot items "${watch[@]}" --ctl-class SysListView32 | grep -q $'#a\t.*5' ||
  robot items "${watch[@]}" --ctl-class SysListView32 | grep -F '#a' | grep -qF '5' ||
  fail "the watch does not list #a = 5: $(robot items "${watch[@]}" --ctl-class SysListView32)"
shot paused_100

press_in_main F10
await_eq "F10 runs line 3 alone" "DOWN:65 UP:65" typed
robot_expect_text "the status bar after the step" "$(pause_text 4)" "${status[@]}"
press_in_main F5
await_eq "F5 runs the rest" "DOWN:65 UP:65 DOWN:66 UP:66" typed
robot_expect_text "the caption after the play" "Kestrelix" "${main[@]}"

# --- the open watch does not slow a play: 150 lines of assignments, timed from
# 再生 to the caption's return, with the watch open and then closed ----------
# クリア takes the breakpoints with the text.
robot click "${main[@]}" --ctl-text クリア >/dev/null
set_editor $'#a = 0\r\n<r 50>\r\n#a = #a + 1\r\n#b = #a * 2\r\n</r>'
timed_play() {
  local start end
  start=$(date +%s%N)
  robot click "${main[@]}" --ctl-text 再生 >/dev/null
  robot wait-text --contains "残り" "${main[@]}" >/dev/null || fail "the timed play did not start"
  robot wait-text --equals "Kestrelix" --timeout 60 "${main[@]}" >/dev/null || fail "the timed play did not end"
  end=$(date +%s%N)
  echo $(((end - start) / 1000000))
}
open_ms=$(timed_play)
robot items "${watch[@]}" --ctl-class SysListView32 | grep -F '#b' | grep -qF '100' ||
  fail "the watch after the timed play: $(robot items "${watch[@]}" --ctl-class SysListView32)"
robot close "${watch[@]}" >/dev/null
robot wait-gone "${watch[@]}" >/dev/null || fail "the watch did not close"
closed_ms=$(timed_play)
echo "150 lines with the watch open: $open_ms ms, closed: $closed_ms ms"
close_app
tr -d '\0\r' <"$app/setting.ini" | grep -q '^WatchW=[1-9]' ||
  fail "the watch's placement was not kept: $(tr -d '\0' <"$app/setting.ini")"

# --- 200%: the dot and the watch scale with the DPI ------------------------------
set_dpi 192
start_app
set_editor "$macro"
robot send "${editor[@]}" 177 22 22 >/dev/null
press_in_main F9
press_in_main alt+p w
robot_await "the watch window at 200%" "${watch[@]}" >/dev/null
robot click "${main[@]}" --ctl-text 再生 >/dev/null
robot_expect_text "the status bar at 200%" "$(pause_text 3)" "${status[@]}"
shot paused_200
# 再生 while paused stops the play: nothing more is typed.
robot click "${main[@]}" --ctl-text 再生 >/dev/null
for _ in $(seq 50); do
  robot get-text "${status[@]}" | grep -q 'ブレークポイント' || break
  sleep 0.1
done
robot get-text "${status[@]}" | grep -q 'ブレークポイント' && fail "still paused after 再生"
# (The first window's close let go of Shift, Ctrl and Alt in the target.)
expect_eq "nothing typed after the stop" "$(typed | sed 's/ UP:1[678]//g')" "DOWN:65 UP:65 DOWN:66 UP:66"
close_app

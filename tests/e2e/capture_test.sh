#!/usr/bin/env bash
# The capture tool opened from its 命令 menu items: Alt + left click on the
# target's edit box, on its second edit box and on a button inside a dialog
# writes one line each at the editor's caret, with the window's path, and
# the captured lines play back onto the same windows.
. "$(dirname "$0")/lib.sh"

main=(--class KestrelixMainWindow)
tool=(--class KestrelixCaptureWindow)
editor=("${main[@]}" --ctl-class Edit --ctl-id 1)
app=$WORK/app

start_target "$WORK/target.log" /capture
robot_await "the target's dialog" --class '#32770' --title 取得テスト >/dev/null

# The main window beside the target, clear of what the test points at.
mkdir -p "$app/Macro"
cp "$BIN/Kestrelix.exe" "$app/"
printf '[Macro]\r\nX=10500\r\nY=1500\r\nW=6000\r\nH=6000\r\n' >"$app/setting.ini"
(cd "$app" && wine Kestrelix.exe >/dev/null 2>&1) &
E2E_PIDS+=($!)
robot_await "the main window" "${main[@]}" --timeout 30 >/dev/null
main_x=$(xdotool search --onlyvisible --name '^Kestrelix$' | head -n1)

# Opens the tool from the 命令 menu by the item's mnemonic.
open_tool() {
  xdotool windowfocus --sync "$main_x"
  xdotool key alt+c
  sleep 0.3
  xdotool key "$1"
  robot_await "the capture tool" "${tool[@]}" >/dev/null
}

# The centre of a control on the screen, as "X Y".
centre_of() {
  robot find "$@" | robot_field rect | awk -F, '{ printf "%d %d", ($1 + $3) / 2, ($2 + $4) / 2 }'
}

# Alt + left click at a point, both held ~120 ms: the tool polls the key state.
alt_click() {
  xdotool mousemove --sync "$1" "$2"
  sleep 0.15
  xdotool keydown alt
  sleep 0.05
  xdotool mousedown 1
  sleep 0.12
  xdotool mouseup 1
  sleep 0.05
  xdotool keyup alt
  sleep 0.15
}

edit1=$(centre_of --class KxTargetWindow --ctl-class Edit --ctl-nth 0)
edit2=$(centre_of --class KxTargetWindow --ctl-class Edit --ctl-nth 1)
button=$(centre_of --class '#32770' --title 取得テスト --ctl-class Button)

# 指定テキストに文字を追加(&A), then Alt + click on three windows. The menu is
# driven once: without a window manager, Wine leaves the target active after
# the click, so later keys of the X focus window do not reach the main window.
open_tool a
robot_expect_text "the running label" "Alt+左クリックで取得します(Escで停止)" "${tool[@]}" --ctl-id 100
# shellcheck disable=SC2086
alt_click $edit1
line1=$'AD ,,KxTargetWindow*1,Edit*1\r\n'
robot_expect_text "the line for the first edit box (held: one line)" "$line1" "${editor[@]}"
robot_expect_text "the class shown" "Edit" "${tool[@]}" --ctl-id 123
shot tool_fields

# shellcheck disable=SC2086
alt_click $edit2
line2=$'AD ,,KxTargetWindow*1,Edit*2\r\n'
robot_expect_text "the line for the second edit box" "$line1$line2" "${editor[@]}"

# The button inside the dialog: its path starts with the dialog.
# shellcheck disable=SC2086
alt_click $button
line3=$'AD ,,#32770+取得テスト,Button*1\r\n'
robot_expect_text "the line for the dialog's button" "$line1$line2$line3" "${editor[@]}"
robot_expect_text "the path shown" "#32770+取得テスト,Button*1" "${tool[@]}" --ctl-id 121
shot tool_dialog

# Esc stops the tool and Enter resumes it, wherever the keys go: the tool
# polls their state. Stopped, an Alt + click writes nothing.
hold_key() {
  xdotool keydown "$1"
  sleep 0.12
  xdotool keyup "$1"
}
hold_key Escape
robot_expect_text "the stopped label" "停止(Enterで再開)" "${tool[@]}" --ctl-id 100
# shellcheck disable=SC2086
alt_click $edit2
hold_key Return
robot_expect_text "the running label again" "Alt+左クリックで取得します(Escで停止)" "${tool[@]}" --ctl-id 100
robot_expect_text "nothing written while stopped" "$line1$line2$line3" "${editor[@]}"
# shellcheck disable=SC2086
alt_click $edit1
robot_expect_text "written again after Enter" "$line1$line2$line3$line1" "${editor[@]}"

# Closing the tool: it goes, and a later Alt + click writes nothing.
robot close "${tool[@]}" >/dev/null
robot_await_gone "the capture tool" "${tool[@]}"
# shellcheck disable=SC2086
alt_click $edit1
sleep 0.3
robot_expect_text "nothing written after closing" "$line1$line2$line3$line1" "${editor[@]}"

# The captured paths play back: the AD lines, each given a text to add,
# extend the boxes they were captured on.
played="${line1/AD ,,/AD 一つ目,,}${line2/AD ,,/AD 追加,,}"
robot set-text "${editor[@]}" -- "$played" >/dev/null
robot click "${main[@]}" --ctl-text 再生 >/dev/null
robot_expect_text "the first box, by its captured path" "一つ目" \
  --class KxTargetWindow --ctl-class Edit --ctl-nth 0
robot_expect_text "the second box, by its captured path" "second追加" \
  --class KxTargetWindow --ctl-class Edit --ctl-nth 1

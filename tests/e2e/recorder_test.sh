#!/usr/bin/env bash
# Recording with the F11 hotkey: keys, a Ctrl chord, a click and a wheel turn
# in the target become the expected lines, in screen or client coordinates,
# with the active-window line; the recording played back gives the target
# the same messages; "/rec" saves the recording when the program closes.
. "$(dirname "$0")/lib.sh"

main=(--class KestrelixMainWindow)
editor=("${main[@]}" --ctl-class Edit --ctl-id 1)
record_button=("${main[@]}" --ctl-class Button --ctl-nth 0)
app=$WORK/app
pid=""

# A copy of the program with an empty Macro folder and the given settings.
app_with_settings() {
  rm -rf "$app"
  mkdir -p "$app/Macro"
  cp "$BIN/Kestrelix.exe" "$app/"
  printf '[Macro]\r\n%s' "$1" >"$app/setting.ini"
}

launch() {
  (cd "$app" && exec wine Kestrelix.exe "$@" >/dev/null 2>&1) &
  pid=$!
  E2E_PIDS+=($pid)
  robot_await "the main window" "${main[@]}" --timeout 30 >/dev/null
}

# Posts WM_CLOSE and waits for the program to end.
close_and_await_exit() {
  robot close --all "${main[@]}" >/dev/null
  for _ in $(seq 300); do
    kill -0 "$pid" 2>/dev/null || return 0
    sleep 0.1
  done
  fail "Kestrelix.exe did not end after WM_CLOSE"
}

# Polled key state misses short taps: each key is held 120 ms, then 120 ms
# pass before the next one.
hold() {
  xdotool keydown "$1"
  sleep 0.12
  xdotool keyup "$1"
  sleep 0.12
}

# The user's work in the target, the pointer already on (cx,cy) of its
# client area.
work_in_target() {
  hold a
  hold b
  xdotool keydown Control_L
  sleep 0.12
  hold c
  xdotool keyup Control_L
  sleep 0.12
  xdotool mousedown 1
  sleep 0.12
  xdotool mouseup 1
  sleep 0.12
  xdotool click 5
}

editor_text() { robot get-text "${editor[@]}" | tr -d '\r'; }

button_messages() {
  grep -E 'msg=WM_(L|R|M)BUTTON|msg=WM_MOUSEWHEEL' |
    sed -E 's/.*msg=WM_([A-Z]+)\tx=(-?[0-9]+)\ty=(-?[0-9]+)\tdelta=(-?[0-9]+)/\1@\2,\3\/\4/' |
    tr '\n' ' ' | sed 's/ $//'
}

start_target "$WORK/target.log"
target=$(xdotool search --onlyvisible --name '^KxTarget$' | head -n1)
# A blank spot of the target's client area, clear of the main window.
cx=430
cy=300
px=$((TARGET_X + cx))
py=$((TARGET_Y + cy))

# The target in front with the keyboard focus, for Wine and for X.
# Without a window manager X focus alone does not make Wine activate the
# window; the robot's SetForegroundWindow does, though it reports that the
# window did not come up, as Wine's foreground check lags behind.
focus_target() {
  robot focus --class KxTargetWindow >/dev/null 2>&1 || true
  xdotool windowfocus --sync "$target"
}

# --- F11 records in screen coordinates ------------------------------------------
app_with_settings $'Move=0\r\n'
launch
xdotool mousemove "$px" "$py"
focus_target
xdotool key F11
robot_expect_text "the record button while recording" "終了" "${record_button[@]}"
robot_expect_text "the pointer in the status bar" "${px}x${py}" "${main[@]}" --ctl-class msctls_statusbar32
shot recording
work_in_target
robot_expect_text_contains "the wheel line" "Wheel -120" "${editor[@]}"
xdotool key F11
robot_expect_text "the record button after recording" "記録" "${record_button[@]}"
shot screen_coordinates
expect_eq "lines recorded in screen coordinates" "$(editor_text)" "A
B
LCtrl Down
C
LCtrl Up
LMouse Down ($px,$py)
LMouse Up ($px,$py)
Wheel -120"
close_and_await_exit
[ ! -e "$app/Macro/Rec.txt" ] || fail "a recording without /rec was saved"

# --- "/rec" with MouCl and RecAct, saved as Rec.ksx (Linkage 8) -----------------
app_with_settings $'Move=0\r\nMouCl=-1\r\nRecAct=-1\r\nLinkage=8\r\n'
launch /rec
robot_expect_text "the record button after /rec" "終了" "${record_button[@]}"
mark=$(wc -l <"$WORK/target.log")
focus_target
robot_expect_text "the active window line" $'W KxTargetWindow,KxTarget\r\n' "${editor[@]}"
work_in_target
robot_expect_text_contains "the wheel line" "Wheel -120" "${editor[@]}"
xdotool key F11
robot_expect_text "the record button after recording" "記録" "${record_button[@]}"
recorded="W KxTargetWindow,KxTarget
A
B
LCtrl Down
C
LCtrl Up
LMouCl Down ($cx,$cy)
LMouCl Up ($cx,$cy)
Wheel -120"
expect_eq "lines recorded in client coordinates" "$(editor_text)" "$recorded"
# What the target got while it was being recorded (closing the program
# releases Shift, Ctrl and Alt afterwards).
recording_phase=$(sed -n "$((mark + 1)),\$p" "$WORK/target.log")
close_and_await_exit
[ -f "$app/Macro/Rec.ksx" ] || fail "no Macro/Rec.ksx after /rec and close"
expect_eq "Rec.ksx starts with the UTF-8 mark" "$(head -c3 "$app/Macro/Rec.ksx" | od -An -tx1 | tr -d ' ')" "efbbbf"
expect_eq "Rec.ksx holds the recording" "$(tail -c +4 "$app/Macro/Rec.ksx" | tr -d '\r')" "$recorded"

# --- the round trip: the recording played back into the target ----------------
mark=$(wc -l <"$WORK/target.log")
xdotool mousemove 5 5
run_kestrelix 60 "$(winpath "$app/Macro/Rec.ksx")"
await_eq "the wheel played back" 1 \
  bash -c "tail -n +$((mark + 1)) '$WORK/target.log' | grep -c 'msg=WM_MOUSEWHEEL.*delta=-120'"
play_phase=$(tail -n +"$((mark + 1))" "$WORK/target.log")
# F11's release reaches the target (the hotkey took its press).
expect_eq "key messages played back" "$(key_messages <(echo "$play_phase"))" \
  "$(key_messages <(echo "$recording_phase") | sed 's/ UP:122//g; s/^UP:122 //')"
# A wheel line ends with the part of a notch left over: 0 for whole notches.
expect_eq "button and wheel messages played back" \
  "$(button_messages <<<"$play_phase" | sed 's| MOUSEWHEEL@[0-9,-]*/0||')" \
  "$(button_messages <<<"$recording_phase")"

# --- "/rec" saves Rec.txt without the association -------------------------------
app_with_settings $'Move=0\r\n'
launch /rec
robot_expect_text "the record button after /rec" "終了" "${record_button[@]}"
focus_target
hold x
robot_expect_text "the key line" $'X\r\n' "${editor[@]}"
close_and_await_exit
expect_eq "Rec.txt: the mark and the recording" "$(od -An -tx1 "$app/Macro/Rec.txt" | tr -d ' \n')" "efbbbf580d0a"
[ ! -e "$app/Macro/Rec.ksx" ] || fail "Rec.ksx written without Linkage 8"

#!/usr/bin/env bash
# With PreciseRec on (and 時間記録, so that the recording keeps the user's
# pace), text typed 10 ms a key into Notepad and clicks of 5 ms in the target
# are recorded so that playing the recording gives Notepad the same text and
# the target the same clicks at the same places. The text has
# Shift characters and keys the vocabulary names after the Japanese layout
# ("`" is the key 192, written "@"; ";" and "=" are 186 and 187, written ":"
# and ";"). F11, which ends the recording, is not in it.
. "$(dirname "$0")/lib.sh"

main=(--class KestrelixMainWindow)
editor=("${main[@]}" --ctl-class Edit --ctl-id 1)
record_button=("${main[@]}" --ctl-class Button --ctl-nth 0)
notepad_edit=(--class Notepad --ctl-class Edit)
text='Hello, World! 123 `;=@:[]^_~'
app=$WORK/app
mkdir -p "$app/Macro"
cp "$BIN/Kestrelix.exe" "$app/"
printf '[Macro]\r\nPreciseRec=-1\r\nTime=-1\r\nMove=0\r\n' >"$app/setting.ini"

start_target "$WORK/target.log"
(cd "$app" && exec wine Kestrelix.exe >/dev/null 2>&1) &
E2E_PIDS+=($!)
robot_await "the main window" "${main[@]}" --timeout 90 >/dev/null
wine notepad >/dev/null 2>&1 &
E2E_PIDS+=($!)
robot_await "Notepad" --class Notepad --timeout 90 >/dev/null
notepad=$(xdotool search --onlyvisible --classname notepad.exe | head -n1)
# Notepad clear of the target's client area and of the main window.
xdotool windowmove "$notepad" 700 500

# The clicks' messages of a part of the target's log: "LBUTTONDOWN@x,y ...".
clicks() {
  grep -E 'msg=WM_(L|R)BUTTON' |
    sed -E 's/.*msg=WM_([A-Z]+)\tx=(-?[0-9]+)\ty=(-?[0-9]+).*/\1@\2,\3/' | tr '\n' ' ' | sed 's/ $//'
}
# The clicks the target got since the mark, and how many button messages.
clicks_since_mark() { tail -n +"$((mark + 1))" "$WORK/target.log" | clicks; }
buttons_since_mark() { tail -n +"$((mark + 1))" "$WORK/target.log" | grep -cE 'msg=WM_(L|R)BUTTON(DOWN|UP)' || true; }
# A 5 ms press of a button at a point of the target's client area.
short_click() {
  xdotool mousemove $((TARGET_X + $2)) $((TARGET_Y + $3))
  xdotool mousedown "$1"
  sleep 0.005
  xdotool mouseup "$1"
}

# --- recording -------------------------------------------------------------
# Notepad in front with the keyboard focus: a click in it makes Wine activate
# it, and X gives it the focus.
xdotool mousemove 900 700 click 1
xdotool windowfocus --sync "$notepad"
xdotool key F11
robot_expect_text "the record button while recording" "終了" "${record_button[@]}"
mark=$(wc -l <"$WORK/target.log")
xdotool type --delay 10 "$text"
robot_expect_text "Notepad while recording" "$text" "${notepad_edit[@]}" --timeout 60
short_click 1 420 300
short_click 1 450 330
short_click 3 470 350
await_eq "the clicks reached the target" 6 buttons_since_mark
recorded_clicks=$(clicks_since_mark)
xdotool key F11
robot_expect_text "the record button after recording" "記録" "${record_button[@]}"
recording=$(robot get-text "${editor[@]}" | tr -d '\r')
printf '%s\n' "$recording" >"$WORK/recording.txt"
shot recorded
[ -n "$recording" ] || fail "nothing was recorded"
if grep -qx 'F11' <<<"$recording"; then fail "F11 was recorded"; fi
# Without the waits (numbers of two digits or more; a single digit is a key).
expect_eq "the last lines: the clicks where they were" \
  "$(grep -vE '^[0-9]{2,}$' <<<"$recording" | tail -n 6)" \
  "LMouse Down ($((TARGET_X + 420)),$((TARGET_Y + 300)))
LMouse Up ($((TARGET_X + 420)),$((TARGET_Y + 300)))
LMouse Down ($((TARGET_X + 450)),$((TARGET_Y + 330)))
LMouse Up ($((TARGET_X + 450)),$((TARGET_Y + 330)))
RMouse Down ($((TARGET_X + 470)),$((TARGET_Y + 350)))
RMouse Up ($((TARGET_X + 470)),$((TARGET_Y + 350)))"

# --- playing it back -------------------------------------------------------
mark=$(wc -l <"$WORK/target.log")
{
  printf 'w notepad\r\n300\r\n'
  printf '%s\r\n' "$recording"
} >"$WORK/playback.ksx"
run_kestrelix 60 "$(winpath "$WORK/playback.ksx")"
robot_expect_text "Notepad after the play" "$text$text" "${notepad_edit[@]}" --timeout 60
await_eq "the clicks played back" "$recorded_clicks" clicks_since_mark

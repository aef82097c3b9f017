#!/usr/bin/env bash
# setting.ini beside the program reaches a command-line play: the end dialog
# and another Play hotkey, but not the remembered loop count (applied later
# in the start-up than the run); the run writes nothing back to the file.
. "$(dirname "$0")/lib.sh"

app=$WORK/app
mkdir -p "$app"
cp "$BIN/Kestrelix.exe" "$app/"
printf '[Macro]\r\nEndNotifer=2\r\nLoop=-1\r\nLoopCnt=2\r\nHotkeyPlayMod=0\r\nHotkeyPlay=119\r\n' >"$app/setting.ini"
cp "$app/setting.ini" "$WORK/setting.before"

start_target "$WORK/target.log"
write_macro "$WORK/twice.ksx" "w kxtarget" "keys shift"
wine "$app/Kestrelix.exe" "$(winpath "$WORK/twice.ksx")" >/dev/null 2>&1 &
kx=$!
E2E_PIDS+=($kx)

box=$(await_window '^Kestrelix$')
[ -n "$box" ] || fail "no end dialog"
shot end_dialog
await_eq "one cycle" "DOWN:16 UP:16" key_messages "$WORK/target.log"
dismiss_and_await_exit "$box" "$kx" || fail "Kestrelix.exe still runs after the end dialog was closed"
expect_eq "one cycle, the box's own count" "$(key_messages "$WORK/target.log")" "DOWN:16 UP:16"
cmp -s "$app/setting.ini" "$WORK/setting.before" || fail "the command-line run changed setting.ini"

# F8 is the Play hotkey now: it stops a long play (the end dialog follows,
# as after any stop by the user).
write_macro "$WORK/long.ksx" "w kxtarget" "keys shift" "60000" "keys ctrl"
wine "$app/Kestrelix.exe" "$(winpath "$WORK/long.ksx")" >/dev/null 2>&1 &
kx=$!
E2E_PIDS+=($kx)
# The second Shift shows the play (and so its hotkey) running.
for _ in $(seq 300); do
  [ "$(grep -c $'msg=WM_KEYDOWN\tvk=16\t' "$WORK/target.log")" -ge 2 ] && break
  sleep 0.1
done
target=$(xdotool search --onlyvisible --name '^KxTarget$' | head -n1)
xdotool windowfocus --sync "$target"
xdotool key F8
box=$(await_window '^Kestrelix$')
[ -n "$box" ] || fail "F8 did not stop the play"
dismiss_and_await_exit "$box" "$kx" || fail "Kestrelix.exe still runs after the stop"
key_messages "$WORK/target.log" | grep -q "DOWN:17" && fail "the line after the wait ran"
true

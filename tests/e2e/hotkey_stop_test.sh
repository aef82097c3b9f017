#!/usr/bin/env bash
# The Play hotkey (Pause) pressed during a long command-line play stops it at
# once: the 60-second wait ends, the line after it never runs and the program
# ends.
. "$(dirname "$0")/lib.sh"

start_target "$WORK/target.log"
write_macro "$WORK/long.ksx" \
  "w kxtarget" \
  "keys shift" \
  "60000" \
  "keys shift"
wine "$BIN/Kestrelix.exe" "$(winpath "$WORK/long.ksx")" >/dev/null 2>&1 &
kx=$!
E2E_PIDS+=($kx)
for _ in $(seq 200); do
  [ "$(key_messages "$WORK/target.log")" = "DOWN:16 UP:16" ] && break
  sleep 0.1
done
expect_eq "keys before the wait" "$(key_messages "$WORK/target.log")" "DOWN:16 UP:16"

# Wine sees X keys only while one of its windows has the X focus.
target=$(xdotool search --onlyvisible --name '^KxTarget$' | head -n1)
xdotool windowfocus --sync "$target"
start=$(date +%s%N)
xdotool key Pause
for _ in $(seq 300); do
  kill -0 "$kx" 2>/dev/null || break
  sleep 0.01
done
end=$(date +%s%N)
! kill -0 "$kx" 2>/dev/null || fail "the play did not stop"
wait "$kx" || fail "Kestrelix.exe ended with an error"
echo "stopped and exited $(((end - start) / 1000000)) ms after the hotkey"
[ $(((end - start) / 1000000)) -lt 3000 ] || fail "stop took too long"
# The hotkey takes the Pause key press; its release still reaches the target.
expect_eq "keys after the stop" "$(key_messages "$WORK/target.log" | sed "s/ UP:19//")" "DOWN:16 UP:16"

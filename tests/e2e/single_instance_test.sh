#!/usr/bin/env bash
# A second start without a file hands over to the first instance and ends;
# a second start with a file plays it even while the first runs.
. "$(dirname "$0")/lib.sh"

wine "$BIN/Kestrelix.exe" >/dev/null 2>&1 &
first=$!
E2E_PIDS+=($first)
main=$(await_window '^Kestrelix$')
[ -n "$main" ] || fail "the first instance shows no window"

run_kestrelix 30
kill -0 "$first" 2>/dev/null || fail "the first instance ended"
count=$(xdotool search --onlyvisible --name '^Kestrelix$' 2>/dev/null | wc -l)
expect_eq "main windows" "$count" "1"
shot first_raised

start_target "$WORK/target.log"
write_macro "$WORK/m.ksx" "w kxtarget" "key ok"
run_kestrelix 30 "$(winpath "$WORK/m.ksx")"
await_eq "played by the second start" "DOWN:79 UP:79 DOWN:75 UP:75" key_messages "$WORK/target.log"
kill -0 "$first" 2>/dev/null || fail "the first instance ended"

#!/usr/bin/env bash
# kx tidy: a recording in fewer lines, printed as UTF-8, that the dry run
# plays with the same keys and clicks in the same time; its exit codes.
# Usage: tidy.sh EMULATOR KX  (EMULATOR is empty natively)
. "$(dirname "$0")/lib/common.sh"
cd "$dir" || exit 1

# Recorded with moves and waits, saved in Shift_JIS with a Japanese comment.
printf "'\x83\x81\x83\x82\r\nMousePos(10,10)\r\n15\r\nMousePos(20,20)\r\nMousePos(30,30)\r\n12\r\nLMouse Down (30,30)\r\n80\r\nLMouse Up (30,30)\r\n300\r\nLShift Down\r\n90\r\nH\r\n70\r\nLShift Up\r\n150\r\nI\r\n200\r\nEnter" >rec.txt
$emu "$kx" tidy rec.txt >tidy.txt 2>err.txt; check "exit" 0 $?
check "tidied" "'メモ
MousePos(30,30)
35
LMouse Down (30,30)
80
LMouse Up (30,30)
300
key Hi
510
Enter" "$(tr -d '\r' <tidy.txt)"
check "CR LF line ends" 9 "$(grep -c $'\r$' tidy.txt)"
check "nothing left out" "" "$(cat err.txt)"

# The dry run of both: the same key and button events, the same end time.
# Keys are compared one event at a time: the tidied macro batches them
# differently.
events() {
  $emu "$kx" run --dry "$1" | tr -d '\r' | grep -E '"ev":"(keys|mouse)"' |
    grep -oE '\[[0-9]+,"(down|up)"\]|"buttons":\[[^]]*\]'
}
end_time() { $emu "$kx" run --dry "$1" | tr -d '\r' | grep '"ev":"end"' | sed 's/.*"t":\([0-9]*\).*/\1/'; }
check "events" "$(events rec.txt)" "$(events tidy.txt)"
check "events seen" 10 "$(events rec.txt | grep -c .)"
check "play time" "$(end_time rec.txt)" "$(end_time tidy.txt)"

$emu "$kx" tidy --keep-moves rec.txt >moves.txt; check "keep moves exit" 0 $?
check "keep moves" "MousePos(10,10)
15
MousePos(20,20)
MousePos(30,30)
12" "$(tr -d '\r' <moves.txt | sed -n 2,6p)"

# --min-wait leaves the 35 ms wait out and says so on standard error only.
$emu "$kx" tidy rec.txt --min-wait 50 >short.txt 2>err.txt; check "min-wait exit" 0 $?
check "min-wait lines" 9 "$(tr -d '\r' <short.txt | grep -c .)"
check "min-wait said" "kx tidy: left out 1 wait(s) shorter than 50 ms; the play is shorter" \
  "$(tr -d '\r' <err.txt)"

$emu "$kx" tidy none.txt >/dev/null 2>&1; check "unreadable exit" 2 $?
$emu "$kx" tidy >/dev/null 2>&1; check "usage exit" 2 $?
$emu "$kx" tidy rec.txt --min-wait x >/dev/null 2>&1; check "bad number exit" 2 $?
$emu "$kx" tidy rec.txt other.txt >/dev/null 2>&1; check "two files exit" 2 $?

[ $fail -eq 0 ] && echo "tidy: all passed"
exit $fail

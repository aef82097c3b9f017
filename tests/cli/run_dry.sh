#!/usr/bin/env bash
# kx run --dry: the trace of a small macro, a stop, and bad input.
# Usage: run_dry.sh EMULATOR KX  (EMULATOR is empty natively)
. "$(dirname "$0")/lib/common.sh"
run() { $emu "$kx" "$@" 2>/dev/null | tr -d '\r'; }

printf 'key A\r\nkeys ctrl+c\r\n10\r\nbeep' > "$dir/m.ksx"
out=$(run run --dry "$dir/m.ksx")
check "trace" '{"t":100,"ev":"caption","text":"残り1回"}
{"t":100,"ev":"keys","keys":[[16,"down"],[65,"down"],[65,"up"],[16,"up"]]}
{"t":108,"ev":"keys","keys":[[17,"down"],[67,"down"],[67,"up"],[17,"up"]]}
{"t":118,"ev":"beep"}
{"t":118,"ev":"caption","text":"Kestrelix"}
{"t":118,"ev":"end","reason":"completed","current_line":0,"cycles_left":0}' "$out"

out=$(run run --dry --speed 8 --loops 2 "$dir/m.ksx" | grep -c '"ev":"beep"')
check "loops" "2" "$out"

printf '60000\r\nbeep' > "$dir/long.ksx"
out=$(run run --dry --stop-at 250 "$dir/long.ksx" | tail -1)
check "stop" '{"t":250,"ev":"end","reason":"stopped","current_line":0,"cycles_left":1}' "$out"

# A stopped play lets go of what the macro held, unless told to keep it.
printf 'LCtrl Down\r\nLMouse Down (5,5)\r\n60000\r\nLCtrl Up' > "$dir/held.ksx"
out=$(run run --dry --stop-at 250 "$dir/held.ksx" | grep -E '"ev":"(keys|mouse)"' | tail -2 | tr -d '\n')
check "released" '{"t":250,"ev":"keys","keys":[[17,"up"]]}{"t":250,"ev":"mouse","buttons":["lup"]}' "$out"
out=$(run run --dry --keep-held --stop-at 250 "$dir/held.ksx" | grep -cE '"(up|lup)"' || true)
check "kept held" "0" "$out"

printf 'a\r\n<pause>\r\nb' > "$dir/pause.ksx"
out=$(run run --dry "$dir/pause.ksx" | tail -1 | sed 's/"t":[0-9]*,//')
check "pause" '{"ev":"end","reason":"paused","current_line":2,"cycles_left":1}' "$out"

# Breakpoints of a dry run trace what the watch would show, once per pass,
# and the play goes on; a bad list is refused.
printf '#a = 2+3\r\n<r 2>\r\nrand 1\r\nbeep\r\n</r>\r\nb' > "$dir/break.ksx"
out=$(run run --dry --break 4,1 "$dir/break.ksx" | grep -E '"(break|end)"' | sed 's/"t":[0-9]*,//')
check "break" '{"ev":"break","line":1,"vars":{},"current":"","cycles_left":1}
{"ev":"break","line":4,"vars":{"#a":"5"},"current":"1","cycles_left":1}
{"ev":"break","line":4,"vars":{"#a":"5"},"current":"1","cycles_left":1}
{"ev":"end","reason":"completed","current_line":0,"cycles_left":0}' "$out"
$emu "$kx" run --dry --break 0 "$dir/break.ksx" >/dev/null 2>&1 && { echo "FAIL: line 0 accepted"; fail=1; }

printf -- '-50\r\ngoto 1' > "$dir/endless.ksx"
out=$(run run --dry --max-lines 1000 "$dir/endless.ksx" | tail -1 | sed 's/.*"reason":"\([a-z]*\)".*/\1/')
check "limit" 'limit' "$out"

# Waits, wheels and window searches beyond any sensible length end at the
# bounds of the dry run, checked inside the command as well as between lines.
printf '1e16\r\nbeep' > "$dir/huge_wait.ksx"
out=$(run run --dry --max-ms 5000 "$dir/huge_wait.ksx" | tail -1)
check "huge wait" '{"t":5001,"ev":"end","reason":"limit","current_line":1,"cycles_left":1}' "$out"
printf 'w nothing,,1e12\r\nbeep' > "$dir/window_wait.ksx"
out=$(run run --dry --max-ms 5000 "$dir/window_wait.ksx" | tail -1 | sed 's/"t":[0-9]*,//')
check "window wait" '{"ev":"end","reason":"limit","current_line":1,"cycles_left":1}' "$out"
printf 'wheel 2147483647\r\nbeep' > "$dir/wheel.ksx"
out=$(run run --dry --max-events 1000 "$dir/wheel.ksx" | grep -c '"ev":"wheel"')
check "wheel bound" "1000" "$out"
out=$(run run --dry --stop-at 150 "$dir/wheel.ksx" | tail -1)
check "wheel stop" '{"t":158,"ev":"end","reason":"stopped","current_line":0,"cycles_left":1}' "$out"

out=$(run run --dry --refuse-input "$dir/m.ksx" | grep '"error"' | sed 's/"t":[0-9]*,//')
check "refused input" '{"ev":"error","line":1,"reason":"input-blocked"}' "$out"

printf 'goto 7\r\nbeep' > "$dir/bad.ksx"
out=$(run run --dry "$dir/bad.ksx" | grep '"error"' | sed 's/"t":[0-9]*,//')
check "error" '{"ev":"error","line":7}' "$out"

# Japanese names for the file, the called file and the text typed.
mkdir -p "$dir/マクロ"
printf 'key a\r\nmf 子.ksx' > "$dir/マクロ/親.ksx"
printf 'msgbox 日本語' > "$dir/マクロ/子.ksx"
out=$(cd "$dir/マクロ" && run run --dry 親.ksx | grep -E '"keys"|"msgbox"' | sed 's/"t":[0-9]*,//')
check "japanese names" '{"ev":"keys","keys":[[65,"down"],[65,"up"]]}
{"ev":"msgbox","title":"Kestrelix","text":"日本語"}' "$out"

# "st" and "gt" are page commands by their first two characters: the value
# goes to the window and <debug> shows it; nothing is opened or typed.
printf 'ST value,,Edit\r\ngt Edit\r\n<debug>\r\nst x,,Missing' > "$dir/page.ksx"
out=$(run run --dry --window Edit,old "$dir/page.ksx" | grep -E '"(settext|msgbox|open|keys)"' | sed 's/"t":[0-9]*,//')
check "page commands" '{"ev":"settext","hwnd":65568,"text":"value"}
{"ev":"msgbox","title":"現在の値","text":"value"}' "$out"

head -c 20000 /dev/urandom > "$dir/binary.ksx"
run run --dry --max-lines 100000 "$dir/binary.ksx" | tail -1 | grep -q '"ev":"end"' || { echo "FAIL: binary file"; fail=1; }

$emu "$kx" run --dry "$dir/none.ksx" >/dev/null 2>&1 && { echo "FAIL: missing file accepted"; fail=1; }
$emu "$kx" run "$dir/m.ksx" >/dev/null 2>&1 && { echo "FAIL: run without --dry accepted"; fail=1; }

[ $fail -eq 0 ] && echo "run_dry: all passed"
exit $fail

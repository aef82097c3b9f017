#!/usr/bin/env bash
# kx lint and kx explain: warnings in the editors' form with their exit
# codes, and one line of explanation per macro line.
# Usage: lint.sh EMULATOR KX  (EMULATOR is empty natively)
. "$(dirname "$0")/lib/common.sh"
cd "$dir" || exit 1
mkdir -p Macro
printf 'beep' > Macro/sub.ksx

# A recorded macro: clean, exit 0, nothing printed.
printf 'LCtrl Down\r\nA\r\nLCtrl Up\r\n250\r\nLMouse Down (10,20)\r\nLMouse Up (10,20)\r\nkey abc\r\nmf sub.ksx' > Macro/clean.ksx
out=$($emu "$kx" lint Macro/clean.ksx 2>&1 | tr -d "\r")
check "clean output" "" "$out"
$emu "$kx" lint Macro/clean.ksx >/dev/null 2>&1; check "clean exit" 0 $?

# Every trap, one per line; saved with the byte-order mark as the program saves.
printf '\xef\xbb\xbf5\r\nbeep x\r\n<r 2>\r\ngoto 40\r\nmf none.ksx\r\nkey 漢字\r\n#a = (1 +\r\nkeys ctrl+shfit\r\n<case 1>' > Macro/traps.ksx
out=$($emu "$kx" lint Macro/traps.ksx 2>/dev/null | tr -d '\r' | cut -d: -f1-3)
check "trap lines" 'Macro/traps.ksx:1: warning
Macro/traps.ksx:2: warning
Macro/traps.ksx:3: warning
Macro/traps.ksx:4: warning
Macro/traps.ksx:5: warning
Macro/traps.ksx:6: warning
Macro/traps.ksx:7: warning
Macro/traps.ksx:8: warning
Macro/traps.ksx:9: warning' "$out"
$emu "$kx" lint Macro/traps.ksx >/dev/null 2>&1; check "warnings exit" 1 $?
# With --unicode-keys the kanji line is typed, so its warning goes.
out=$($emu "$kx" lint --unicode-keys Macro/traps.ksx 2>/dev/null | tr -d '\r' | cut -d: -f2 | tr '\n' ' ')
check "unicode keys" '1 2 3 4 5 7 8 9 ' "$out"
$emu "$kx" lint Macro/none.ksx >/dev/null 2>&1; check "unreadable exit" 2 $?
$emu "$kx" lint >/dev/null 2>&1; check "usage exit" 2 $?

out=$($emu "$kx" explain Macro/traps.ksx 2>/dev/null | tr -d '\r' | head -2)
check "explain" '1: key-line "5" -> opens it with the shell if it can, else key 53
2: key-line "beep x" -> opens it with the shell if it can, else key 66' "$out"
$emu "$kx" explain Macro/none.ksx >/dev/null 2>&1; check "explain unreadable" 2 $?

[ $fail -eq 0 ] && echo "lint: all passed"
exit $fail

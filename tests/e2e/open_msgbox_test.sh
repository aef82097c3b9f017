#!/usr/bin/env bash
# A macro named by a quoted path with a blank is run; its line "notepad"
# starts Notepad and its msgbox line shows a message box, which is found and
# closed with a key, after which the program ends.
. "$(dirname "$0")/lib.sh"

mkdir -p "$WORK/my macros"
write_macro "$WORK/my macros/open test.ksx" \
  "notepad" \
  "msgbox テストが終わりました"
# Saved as the program saves macros: UTF-8 with a byte-order mark.
{ printf '\xef\xbb\xbf'; cat "$WORK/my macros/open test.ksx"; } >"$WORK/bom.ksx"
mv "$WORK/bom.ksx" "$WORK/my macros/open test.ksx"
wine "$BIN/Kestrelix.exe" "$(winpath "$WORK/my macros/open test.ksx")" >/dev/null 2>&1 &
kx=$!
E2E_PIDS+=($kx)

box=$(await_window '^Kestrelix$')
[ -n "$box" ] || fail "no message box titled Kestrelix"
xdotool search --onlyvisible --classname notepad.exe >/dev/null || fail "notepad did not start"
shot msgbox
dismiss_and_await_exit "$box" "$kx" || fail "Kestrelix.exe still runs after the message box was closed"
wait "$kx" || fail "Kestrelix.exe ended with an error"

#!/usr/bin/env bash
# paste and ^ put text into Wine's Notepad through the clipboard, and ^ puts
# the previous clipboard text back afterwards.
. "$(dirname "$0")/lib.sh"

write_macro "$WORK/paste.ksx" \
  "notepad" \
  "w notepad,,5000" \
  "paste hello\nworld" \
  "300" \
  "copy before" \
  "^ カタカナ!" \
  "300"
run_kestrelix 90 "$(winpath "$WORK/paste.ksx")"
sleep 0.3
shot paste
expect_eq "clipboard after ^" "$(clip)" "before"

copy_notepad_text
sleep 0.3
expect_eq "notepad text" "$(clip)" "hello
world カタカナ!"

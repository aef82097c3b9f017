#!/usr/bin/env bash
# With UnicodeKeys=1 in setting.ini, a key line types Japanese text that no
# key of the layout produces into Wine's Notepad as Unicode key events; the
# ASCII part is still typed with its keys.
. "$(dirname "$0")/lib.sh"

app=$WORK/app
mkdir -p "$app"
cp "$BIN/Kestrelix.exe" "$app/"
printf '[Macro]\r\nUnicodeKeys=1\r\n' >"$app/setting.ini"

write_macro "$WORK/type.ksx" \
  "notepad" \
  "w notepad,,5000" \
  "key Kana かなカナ 漢字 OK" \
  "300"
timeout 90 wine "$app/Kestrelix.exe" "$(winpath "$WORK/type.ksx")" >/dev/null 2>&1 ||
  fail "Kestrelix.exe did not end well"
shot typed

copy_notepad_text
await_eq "notepad text" "Kana かなカナ 漢字 OK" clip

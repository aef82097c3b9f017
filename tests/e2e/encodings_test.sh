#!/usr/bin/env bash
# A macro plays the same in every encoding a macro file may have: its w line
# names the target by a Japanese title, which only matches when the file was
# decoded correctly.
. "$(dirname "$0")/lib.sh"

start_target "$WORK/target.log" "KxTarget 標的"
wine "$BIN/kx_target.exe" "$(winpath "$WORK/decoy.log")" KxDecoy >/dev/null 2>&1 &
E2E_PIDS+=($!)
for _ in $(seq 100); do grep -q '^ready' "$WORK/decoy.log" 2>/dev/null && break; sleep 0.1; done
write_macro "$WORK/decoy.ksx" "w kxdecoy"

encodings="${KX_ENCODINGS:-shift_jis euc_jp iso2022_jp utf-8 utf-8-sig utf-16 utf-7}"
for enc in $encodings; do
  python3 - "$WORK/$enc.ksx" "$enc" <<'PY'
import sys
text = "' これは日本語のマクロです。漢字、ひらがな、カタカナ\r\nw kxtarget 標的\r\nkeys shift"
data = text.encode(sys.argv[2])
if sys.argv[2] == "utf-7":
    # Every encoded run closed with "-", as Windows writes UTF-7.
    import re
    data = re.sub(rb"(\+[A-Za-z0-9+/]+)(?!-)", rb"\1-", data)
open(sys.argv[1], "wb").write(data)
PY
done
expected=""
for enc in $encodings; do
  run_kestrelix 60 "$(winpath "$WORK/decoy.ksx")"
  run_kestrelix 60 "$(winpath "$WORK/$enc.ksx")"
  sleep 0.2
  expected="$expected DOWN:16 UP:16"
  await_eq "target keys after $enc" "${expected# }" key_messages "$WORK/target.log"
done
expect_eq "keys reaching the decoy" "$(key_messages "$WORK/decoy.log")" ""

#!/usr/bin/env bash
# A command-line run activates the target with a w line and types key text,
# key words, chords and held modifiers; the target sees exactly those key
# messages in order, with the line pause between lines and the wait honoured.
. "$(dirname "$0")/lib.sh"

start_target "$WORK/target.log"
wine "$BIN/kx_target.exe" "$(winpath "$WORK/decoy.log")" KxDecoy >/dev/null 2>&1 &
E2E_PIDS+=($!)
for _ in $(seq 100); do grep -q '^ready' "$WORK/decoy.log" 2>/dev/null && break; sleep 0.1; done

write_macro "$WORK/keys.ksx" \
  "w kxtarget" \
  "key Ab" \
  "keys ctrl+a" \
  "lshift down" \
  "c" \
  "lshift up" \
  "250" \
  "keys shift" \
  "keys shift"
run_kestrelix 60 "$(winpath "$WORK/keys.ksx")"
sleep 0.3
shot keys

await_eq "key messages" \
  "DOWN:16 DOWN:65 UP:65 UP:16 DOWN:66 UP:66 DOWN:17 DOWN:65 UP:65 UP:17 DOWN:16 DOWN:67 UP:67 UP:16 DOWN:16 UP:16 DOWN:16 UP:16" \
  key_messages "$WORK/target.log"
expect_eq "keys reaching the decoy" "$(key_messages "$WORK/decoy.log")" ""
# Every synthesized letter carries the extended flag and its layout scan code.
grep -E 'msg=WM_KEYDOWN	vk=65	' "$WORK/target.log" | grep -q 'scan=30	ext=1' || fail "A without scan 30 / extended flag"

# Times from the messages' own stamps (when the input was queued).
python3 - "$WORK/target.log" <<'PY'
import sys
ev = []
for line in open(sys.argv[1]):
    f = dict(x.split("=", 1) for x in line.strip().split("\t") if "=" in x)
    if f.get("msg") in ("WM_KEYDOWN", "WM_KEYUP"):
        ev.append((f["msg"][3:], int(f["vk"]), int(f["mt"]), int(f["t"])))
def fail(m):
    print("FAIL:", m, file=sys.stderr); sys.exit(1)
# 0-3 key Ab, 4-5 b, 6-9 ctrl+a, 10 lshift down, 11-12 c, 13 lshift up, 14-15 and 16-17 keys shift
gap = lambda a, b: ev[b][2] - ev[a][2]
if gap(5, 6) < 7: fail(f"line pause between key and keys lines: {gap(5, 6)} ms")
if gap(9, 10) < 7: fail(f"line pause before lshift down: {gap(9, 10)} ms")
# A play running late makes up for it in its next wait, by less than 20 ms.
if not 229 <= gap(13, 14) <= 400: fail(f"250 ms wait took {gap(13, 14)} ms")
if gap(15, 16) < 7: fail(f"line pause between keys lines: {gap(15, 16)} ms")
print("gaps ok:", gap(5, 6), gap(9, 10), gap(13, 14), gap(15, 16))
PY

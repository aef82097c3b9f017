#!/usr/bin/env bash
# The figures of kx tidy on a real recording, by hand (not a pass/fail test):
#   scripts/wine-env bash tests/bench/tidy_recording.sh BIN_DIR KX [OUT_DIR]
# Kestrelix.exe records with waits and pointer moves on ("/rec", saved to
# Macro/Rec.txt when it closes) while xdotool moves the pointer along paths
# across the target's window, clicks there and types into it. Prints the line
# counts before and after tidying and compares the dry runs of both: the key
# and button events, in order, and the play time. KX_ROUNDS (default 24)
# pointer paths with a click each make the session; 14 gave 724 lines.
set -euo pipefail
kx=$(realpath "$2")
. "$(dirname "${BASH_SOURCE[0]}")/../e2e/lib.sh" "$1" "${3:-$KX_ROOT/build/bench}"
RANDOM=22
app=$WORK/app
mkdir -p "$app/Macro"
cp "$BIN/Kestrelix.exe" "$app/"
printf '[Macro]\r\nTime=-1\r\nMove=-1\r\nMouse=-1\r\n' >"$app/setting.ini"

start_target "$WORK/target.log"
(cd "$app" && exec wine Kestrelix.exe /rec >/dev/null 2>&1) &
pid=$!
E2E_PIDS+=($pid)
robot_await "the main window" --class KestrelixMainWindow --timeout 30 >/dev/null
robot focus --class KxTargetWindow >/dev/null 2>&1 || true
xdotool windowfocus --sync "$(xdotool search --onlyvisible --name '^KxTarget$' | head -n1)"

# Polled key state misses short taps: keys and buttons are held 80 ms.
hold() {
  xdotool keydown "$1"
  sleep 0.08
  xdotool keyup "$1"
}
type_word() {
  local ch
  for ch in $(echo "$1" | grep -o .); do
    case $ch in
      [A-Z]) xdotool keydown Shift_L; sleep 0.06; hold "${ch,,}"; xdotool keyup Shift_L ;;
      _) hold space ;;
      *) hold "$ch" ;;
    esac
    sleep 0.0$((RANDOM % 9 + 1))
  done
}
x=$((TARGET_X + 200))
y=$((TARGET_Y + 150))
for round in $(seq "${KX_ROUNDS:-24}"); do
  tx=$((TARGET_X + 20 + RANDOM % 360))
  ty=$((TARGET_Y + 20 + RANDOM % 220))
  steps=$((40 + RANDOM % 30))
  for i in $(seq "$steps"); do
    xdotool mousemove $((x + (tx - x) * i / steps)) $((y + (ty - y) * i / steps))
    sleep 0.0$((RANDOM % 3 + 1))
  done
  x=$tx
  y=$ty
  xdotool mousedown 1
  sleep 0.08
  xdotool mouseup 1
  sleep 0.1
  if [ $((round % 3)) -eq 0 ]; then type_word "Hello_World_$round"; fi
  sleep 0.$((RANDOM % 5 + 1))
done
xdotool key F11
robot_expect_text "the record button after recording" "記録" --class KestrelixMainWindow \
  --ctl-class Button --ctl-nth 0
robot close --all --class KestrelixMainWindow >/dev/null
for _ in $(seq 300); do
  kill -0 "$pid" 2>/dev/null || break
  sleep 0.1
done
recording=$(ls "$app"/Macro/Rec.* 2>/dev/null | head -n1)
[ -n "$recording" ] || fail "no recording was saved"
"$kx" tidy "$recording" >"$WORK/tidied.txt"
"$kx" tidy --keep-moves "$recording" >"$WORK/tidied-moves.txt"
lines() { "$kx" decode "$1" | awk 'END { print NR }'; }
events() {
  "$kx" run --dry "$1" | grep -E '"ev":"(keys|mouse)"' |
    grep -oE '\[[0-9]+,"(down|up)"\]|"buttons":\[[^]]*\]'
}
end_time() { "$kx" run --dry "$1" | grep '"ev":"end"' | sed 's/.*"t":\([0-9]*\).*/\1/'; }
echo "recorded: $(lines "$recording") lines, $(events "$recording" | wc -l) key and button events, $(end_time "$recording") ms"
for f in tidied tidied-moves; do
  same=no
  [ "$(events "$recording")" = "$(events "$WORK/$f.txt")" ] && same=yes
  echo "$f: $(lines "$WORK/$f.txt") lines, same events: $same, $(end_time "$WORK/$f.txt") ms"
done
cp "$recording" "$WORK/recording.txt"

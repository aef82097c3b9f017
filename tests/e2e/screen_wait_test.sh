#!/usr/bin/env bash
# waitimage on Wine's real screen: a picture shown by ImageMagick is found and
# its place clicked through FoundX/FoundY; a picture that appears 1.5 s into
# the wait ends it within 150 ms; an absent one gives False at the time-out.
. "$(dirname "$0")/lib.sh"

start_target "$WORK/target.log"
sx() { echo $((TARGET_X + $1)); }
sy() { echo $((TARGET_Y + $1)); }
now_us() { date +%s%6N; }

convert -seed 5 -size 40x40 plasma: -depth 8 png24:"$WORK/button.png"
convert -seed 6 -size 40x40 plasma: -depth 8 png24:"$WORK/late.png"
convert -seed 7 -size 40x40 plasma: -depth 8 png24:"$WORK/absent.png"

# Shows a picture with ImageMagick right of the target window and waits
# until the X server shows it; sets SHOWN_X, SHOWN_Y (its top-left corner on
# the screen) and SHOWN_AT (the wall time it was first seen, in us).
show() {
  local file=$1 x=$2 y=$3 info=""
  display -borderwidth 0 -geometry "+$x+$y" "$file" &
  E2E_PIDS+=($!)
  local until=$((SECONDS + 30))
  while [ $SECONDS -lt $until ]; do
    info=$(xwininfo -name "ImageMagick: $(basename "$file")" 2>/dev/null || true)
    grep -q 'IsViewable' <<<"$info" && break
    sleep 0.005
  done
  SHOWN_AT=$(now_us)
  grep -q 'IsViewable' <<<"$info" || fail "ImageMagick did not show $file"
  SHOWN_X=$(sed -n 's/.*Absolute upper-left X: *//p' <<<"$info")
  SHOWN_Y=$(sed -n 's/.*Absolute upper-left Y: *//p' <<<"$info")
}

# The wall time (us) of the target's left-button press at client x,y; empty
# while there is none.
press_at() {
  grep -P "msg=WM_LBUTTONDOWN\tx=$1\ty=$2\t" "$WORK/target.log" 2>/dev/null | head -n1 |
    sed -E 's/.*wall=([0-9]+).*/\1/'
}
# Waits up to 60 s (Kestrelix starts slowly on a busy machine).
await_press() {
  local until=$((SECONDS + 60))
  while [ $SECONDS -lt $until ]; do
    [ -n "$(press_at "$1" "$2")" ] && break
    sleep 0.02
  done
  [ -n "$(press_at "$1" "$2")" ] || fail "no click at $1,$2 in the target"
  press_at "$1" "$2"
}

show "$WORK/button.png" 900 600
# The click lands where the found centre says, moved onto the target.
dx=$((SHOWN_X + 20 - $(sx 250)))
dy=$((SHOWN_Y + 20 - $(sy 320)))
click() { printf '%s\n' "LMouse Down ($1,$2)" "LMouse Up ($1,$2)"; }
mapfile -t lines < <(
  click "$(sx 50)" "$(sy 60)"
  printf '%s\n' "WaitImage $(winpath "$WORK/button.png"),0,5000" "<Switch>" "<Case True>" \
    "#cx = FoundX - ($dx)" "#cy = FoundY - ($dy)"
  click "#cx" "#cy"
  printf '%s\n' "</Switch>"
  click "$(sx 400)" "$(sy 300)"
  printf '%s\n' "WaitImage $(winpath "$WORK/late.png"),0,10000" "<Switch>" "<Case True>"
  click "$(sx 420)" "$(sy 330)"
  printf '%s\n' "</Switch>" "WaitImage $(winpath "$WORK/absent.png"),0,1000" "<Switch>" "<Case False>"
  click "$(sx 200)" "$(sy 310)"
  printf '%s\n' "</Switch>"
)
write_macro "$WORK/wait.ksx" "${lines[@]}"
wine "$BIN/Kestrelix.exe" "$(winpath "$WORK/wait.ksx")" >/dev/null 2>&1 &
E2E_PIDS+=($!)

await_press 250 320 >/dev/null
started=$(await_press 400 300)
# The late picture shows 1.5 s after its wait began.
python3 -c "import time; time.sleep(max(0, ($started + 1500000) / 1e6 - time.time()))"
show "$WORK/late.png" 1000 700
found=$(await_press 420 330)
shot late
latency=$(( (found - SHOWN_AT) / 1000 ))
echo "late picture: shown $(( (SHOWN_AT - started) / 1000 )) ms into the wait, found after $latency ms"
[ $((found - started)) -ge 1500000 ] || fail "the wait ended before the picture showed"
[ "$latency" -lt 150 ] || fail "the wait ended $latency ms after the picture showed (limit 150)"

timed_out=$(await_press 200 310)
waited=$(( (timed_out - found) / 1000 ))
echo "absent picture: False after $waited ms"
[ "$waited" -ge 1000 ] && [ "$waited" -lt 2000 ] || fail "the absent picture's wait took $waited ms (time-out 1000)"

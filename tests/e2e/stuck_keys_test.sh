#!/usr/bin/env bash
# No key or button is left down by plays cut short: 200 plays of a macro that
# holds Ctrl, Shift and the left button across waits, each stopped by the
# play hotkey at a random moment. Afterwards the system has nothing down and
# the target saw every down followed by its up. With ReleaseHeld=0 the same
# stop does leave keys down, which shows that the check can see them.
. "$(dirname "$0")/lib.sh"

main=(--class KestrelixMainWindow)
editor=("${main[@]}" --ctl-class Edit --ctl-id 1)
app=$WORK/app
plays=${KX_STUCK_PLAYS:-200}
mkdir -p "$app"
cp "$BIN/Kestrelix.exe" "$app/"
start_target "$WORK/target.log"
target=$(xdotool search --onlyvisible --name '^KxTarget$' | head -n1)
x=$((TARGET_X + 450))
y=$((TARGET_Y + 300))
crlf() { local IFS=$'\n'; sed 's/$/\r/' <<<"$*" | head -c -2; }
drag=$(crlf "loop 1000000" "LCtrl Down" "15" "LShift Down" "15" "LMouse Down ($x,$y)" "40" \
  "LMouse Up ($x,$y)" "10" "LShift Up" "10" "LCtrl Up" "10")

start_app() {
  printf '[Macro]\r\n%s' "$1" >"$app/setting.ini"
  (cd "$app" && wine Kestrelix.exe >/dev/null 2>&1) &
  E2E_PIDS+=($!)
  robot_await "the main window" "${main[@]}" --timeout 30 >/dev/null
  robot set-text "${editor[@]}" -- "$drag" >/dev/null
  # The macro's keys go to Wine's foreground window: a click makes it the
  # target (the macro's own clicks keep it so).
  xdotool windowfocus --sync "$target"
  xdotool mousemove "$x" "$y"
  xdotool click 1
}

close_app() {
  robot close "${main[@]}" >/dev/null
  robot_await_gone "the main window" --all "${main[@]}" --timeout 30
}

# Keys and buttons whose last message in the target's log is a down.
held_in_target() {
  awk -F'\t' '
    $4 ~ /^msg=WM_(SYS)?KEYDOWN$/ { held["vk" substr($5, 4)] = 1 }
    $4 ~ /^msg=WM_(SYS)?KEYUP$/ { delete held["vk" substr($5, 4)] }
    $4 ~ /^msg=WM_LBUTTON(DOWN|DBLCLK)$/ { held["left"] = 1 }
    $4 == "msg=WM_LBUTTONUP" { delete held["left"] }
    END { for (k in held) printf "%s ", k }' "$WORK/target.log"
}

# --- without the ledger, a stop leaves keys down -------------------------------
start_app "ReleaseHeld=0"$'\r\n'
robot hotkey-plays "${main[@]}" 3 60 60 >/dev/null || fail "the plays did not start and stop"
[ -n "$(robot keys-down)" ] || fail "with ReleaseHeld=0 a stopped play left nothing down"
echo "with ReleaseHeld=0, down after a stop: vk $(robot keys-down | sed 's/.*vk=//' | tr '\n' ' ')"
# Let go by hand, as the macro's end would.
robot set-text "${editor[@]}" -- "$(crlf "LMouse Up ($x,$y)" "LShift Up" "LCtrl Up")" >/dev/null
robot post "${main[@]}" WM_HOTKEY 258 >/dev/null
for _ in $(seq 100); do
  [ -z "$(robot keys-down)" ] && break
  sleep 0.1
done
expect_eq "keys down after letting go" "$(robot keys-down)" ""
close_app

# --- with it (the default), nothing stays down --------------------------------
start_app ""
start=$SECONDS
robot hotkey-plays "${main[@]}" "$plays" 0 250 || fail "not every play started and stopped"
echo "$plays plays stopped at random moments in $((SECONDS - start)) s"
expect_eq "keys and buttons down afterwards (GetAsyncKeyState)" "$(robot keys-down)" ""
await_eq "keys and buttons held in the target" "" held_in_target
downs=$(grep -cE $'msg=WM_LBUTTON(DOWN|DBLCLK)\t' "$WORK/target.log")
echo "the target saw $downs presses of the left button, each with its release"
[ "$downs" -gt $((plays / 4)) ] || fail "too few plays got as far as pressing the button"
close_app

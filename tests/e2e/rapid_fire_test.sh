#!/usr/bin/env bash
# Rapid fire into another program at Hits=100: key start/stop repeats a key
# until it is pressed again, mouse start/stop clicks from Alt+F1 until Shift,
# and push mode clicks while Alt+F1 is held. Each mode is chosen from the
# menu of a fresh start, since the menu's own keys would feed a running mode.
. "$(dirname "$0")/lib.sh"

main=(--class KestrelixMainWindow)
editor=("${main[@]}" --ctl-class Edit --ctl-id 1)
app=$WORK/app
mkdir -p "$app"
cp "$BIN/Kestrelix.exe" "$app/"
start_target "$WORK/target.log"
target=$(xdotool search --onlyvisible --name '^KxTarget$' | head -n1)

# Starts the program and chooses the rapid-fire item with the given access
# key (s, t or p) from 連打機能(&R); waits for the title that names the mode.
start_mode() {
  printf '[Macro]\r\nHits=100\r\n' >"$app/setting.ini"
  (cd "$app" && wine Kestrelix.exe >/dev/null 2>&1) &
  E2E_PIDS+=($!)
  robot_await "the main window" "${main[@]}" --timeout 30 >/dev/null
  xdotool windowfocus --sync "$(xdotool search --onlyvisible --name '^Kestrelix$' | head -n1)"
  xdotool key alt+r "$1"
  robot_expect_text "the title" "Kestrelix - $2" "${main[@]}"
  # Keys go to Wine's foreground window, which the X focus alone does not
  # set: a click on the target (clear of the main window) makes it so.
  local ups
  ups=$(count WM_LBUTTONUP)
  xdotool windowfocus --sync "$target"
  xdotool mousemove $((TARGET_X + 450)) $((TARGET_Y + 300))
  xdotool click 1
  await "the target's focus click" at_least WM_LBUTTONUP $((ups + 1))
}

close_app() {
  robot close "${main[@]}" >/dev/null
  robot_await_gone "the main window" --all "${main[@]}" --timeout 30
}

# Holds KEYS for SECONDS (about 120 ms, where the timers poll them) until the
# command after "--" succeeds within 2 s, at most three times: the key state
# is polled, so a busy machine can miss a press, and a person then presses
# again. A press hidden by a repeat's own key-up is missed the same way.
press_until() {
  local what=$1 seconds=$2 keys=() reversed=()
  shift 2
  while [ "$1" != -- ]; do
    keys+=("$1")
    reversed=("$1" "${reversed[@]}")
    shift
  done
  shift
  for try in 1 2 3; do
    xdotool keydown "${keys[@]}"
    sleep "$seconds"
    xdotool keyup "${reversed[@]}"
    for _ in $(seq 20); do
      if "$@"; then
        echo "$what: at press $try"
        return 0
      fi
      sleep 0.1
    done
  done
  fail "$what"
}
editor_is() { [ "$(robot get-text "${editor[@]}")" = "$1" ]; }

# The target's messages MSG (and, for keys, of vk VK).
messages() {
  local tab=$'\t'
  grep -F "msg=$1$tab${2:+vk=$2$tab}" "$WORK/target.log" || true
}
count() { messages "$@" | grep -c . || true; }
# Presses of the left button: a quick second click arrives as a double click.
presses() { echo $(($(count WM_LBUTTONDOWN) + $(count WM_LBUTTONDBLCLK))); }
expect_all_let_go() { expect_eq "every click is let go" "$(count WM_LBUTTONUP)" "$(presses)"; }
at_least() { [ "$(count "$1" "${3:-}")" -ge "$2" ]; }
await() {
  local what=$1
  shift
  for _ in $(seq 100); do
    "$@" && return 0
    sleep 0.1
  done
  fail "$what"
}

# The median time between consecutive messages MSG from the Nth on, in ms.
median_gap() {
  messages "$1" "${3:-}" | tail -n +"$2" | sed -E 's/^t=([0-9]+).*/\1/' |
    awk 'NR > 1 { print int(($1 - last) / 1000) } { last = $1 }' | sort -n |
    awk '{ a[NR] = $1 } END { print (NR ? a[int((NR + 1) / 2)] : -1) }'
}

# Nothing more arrives for a while after a stop.
expect_quiet() {
  local before
  before=$(count "$@")
  sleep 0.8
  expect_eq "$1 after the stop" "$(count "$@")" "$before"
}

expect_rate() {
  local gap
  gap=$(median_gap "$@")
  echo "$1: median gap ${gap} ms at Hits=100"
  [ "$gap" -ge 70 ] && [ "$gap" -le 200 ] || fail "$1 repeats every $gap ms, not about 100"
}

# --- key start/stop ---------------------------------------------------------------
start_mode s "キー連打(Start/Stop)"
press_until "the key repeat starts" 0.12 a -- at_least WM_KEYDOWN 3 65
await "the key repeats" at_least WM_KEYDOWN 12 65
robot_expect_text "the editor names the key" "A" "${editor[@]}"
expect_rate WM_KEYDOWN 2 65
shot key_repeat
press_until "the key repeat stops" 0.12 a -- editor_is ""
expect_quiet WM_KEYDOWN 65
close_app

# --- mouse start/stop -------------------------------------------------------------
start_mode t "マウス連打(Start/Stop)"
before=$(count WM_LBUTTONUP)
# F1 goes down before Alt and up after it: a sampling tick that sees Alt
# alone toggles the clicking with no button chosen, as the mode's rule says.
press_until "the clicks start" 0.12 F1 alt -- at_least WM_LBUTTONUP $((before + 2))
await "the left button clicks" at_least WM_LBUTTONUP $((before + 10))
robot_expect_text "the editor names the button" "左クリック" "${editor[@]}"
expect_rate WM_LBUTTONUP $((before + 1))
press_until "the clicks stop at Shift" 0.12 shift -- editor_is ""
expect_quiet WM_LBUTTONUP
expect_all_let_go
close_app

# --- push -------------------------------------------------------------------------
start_mode p "マウス連打(Push)"
before=$(count WM_LBUTTONUP)
xdotool keydown alt F1
await "clicks while Alt+F1 is held" at_least WM_LBUTTONUP $((before + 6))
robot_expect_text "the editor while held" "左クリック" "${editor[@]}"
xdotool keyup F1 alt
robot_expect_text "the editor after the release" "" "${editor[@]}"
expect_quiet WM_LBUTTONUP
expect_rate WM_LBUTTONUP $((before + 1))
expect_all_let_go
close_app

#!/usr/bin/env bash
# The global hotkeys from another program's window: Alt+F11 hides and shows
# the main window, Pause plays the editor's macro and stops it, a per-macro
# hotkey plays its file and gives the editor its text back, and a macro's
# "lock" makes the play hotkeys do nothing until it ends.
. "$(dirname "$0")/lib.sh"

main=(--class KestrelixMainWindow)
editor=("${main[@]}" --ctl-class Edit --ctl-id 1)
app=$WORK/app
mkdir -p "$app/Macro"
cp "$BIN/Kestrelix.exe" "$app/"
write_macro "$app/Macro/per.ksx" "w kxtarget" "keys b"
printf '[Macro]\r\nHotkey=120|0|F9|%s\r\n' "$(winpath "$app/Macro/per.ksx")" >"$app/setting.ini"

start_target "$WORK/target.log"
(cd "$app" && wine Kestrelix.exe >/dev/null 2>&1) &
E2E_PIDS+=($!)
robot_await "the main window" "${main[@]}" --timeout 30 >/dev/null
target=$(xdotool search --onlyvisible --name '^KxTarget$' | head -n1)

# Taps a hotkey while the target has the focus, as a user working in another
# program would.
hotkey() {
  xdotool windowfocus --sync "$target"
  xdotool key "$1"
}
# The target's key messages without the hotkeys' own keys, whose presses the
# hotkeys take (F9, Pause, F11, Alt).
typed() { key_messages "$WORK/target.log" | tr ' ' '\n' | grep -vE ':(120|19|122|18)$' | tr '\n' ' ' | sed 's/ $//'; }
count() { key_messages "$WORK/target.log" | tr ' ' '\n' | grep -c "^$1\$" || true; }

# --- show and hide --------------------------------------------------------------
hotkey alt+F11
robot_await_gone "the shown main window after Alt+F11" "${main[@]}"
hotkey alt+F11
robot_await "the main window after Alt+F11 again" "${main[@]}" >/dev/null
shot shown_again

# --- Pause plays and stops ------------------------------------------------------
robot set-text "${editor[@]}" -- $'w kxtarget\r\nkeys shift\r\n60000\r\nkeys a' >/dev/null
hotkey Pause
await_eq "the play's first key" "DOWN:16 UP:16" typed
robot wait-text --contains "残り1回" "${main[@]}" >/dev/null || fail "no play running"
hotkey Pause
robot_expect_text "the caption after the stop" "Kestrelix" "${main[@]}"
expect_eq "keys after the stop" "$(typed)" "DOWN:16 UP:16"

# --- a per-macro hotkey ---------------------------------------------------------
robot set-text "${editor[@]}" -- "mine" >/dev/null
hotkey F9
await_eq "the per-macro hotkey's file played" "DOWN:16 UP:16 DOWN:66 UP:66" typed
robot_expect_text "the editor's own text after the per-macro play" "mine" "${editor[@]}"

# --- lock -----------------------------------------------------------------------
robot set-text "${editor[@]}" -- $'lock\r\nw kxtarget\r\nkeys shift\r\n2000\r\nkeys c' >/dev/null
hotkey Pause
await_eq "the locked play's first key" "DOWN:16 UP:16 DOWN:66 UP:66 DOWN:16 UP:16" typed
hotkey Pause
hotkey F9
await_eq "the locked play ran to its end" "DOWN:16 UP:16 DOWN:66 UP:66 DOWN:16 UP:16 DOWN:67 UP:67" typed
robot_expect_text "the caption after the locked play" "Kestrelix" "${main[@]}"
expect_eq "F9 did nothing during the lock" "$(count DOWN:66)" 1
# The lock ends with the play: the hotkeys work again.
hotkey F9
await_eq "F9 after the lock" "2" count DOWN:66

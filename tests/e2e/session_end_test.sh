#!/usr/bin/env bash
# Log-off and shut-down lose nothing: when Windows ends the session
# (wineboot --end-session) during a play or a "/rec" recording, setting.ini
# gets the close's keys, the recording is saved and the program ends.
. "$(dirname "$0")/lib.sh"

main=(--class KestrelixMainWindow)
app=$WORK/app

# A copy of the program in its own folder, with the given setting.ini lines.
fresh_app() {
  rm -rf "$app"
  mkdir -p "$app/Macro"
  cp "$BIN/Kestrelix.exe" "$app/"
  printf '[Macro]\r\n%s' "$1" >"$app/setting.ini"
}

start_app() {
  (cd "$app" && wine Kestrelix.exe "$@" >/dev/null 2>&1) &
  E2E_PIDS+=($!)
  robot_await "the main window" "${main[@]}" --timeout 30 >/dev/null
}

# Ends the session and waits for the program to write its last key and end.
end_session() {
  wine wineboot --end-session >"$WORK/wineboot.log" 2>&1 || true
  for _ in $(seq 300); do
    ini_text "$app/setting.ini" | grep -q '^rate=' && break
    sleep 0.1
  done
  robot_await_gone "the main window after the session ended" --all "${main[@]}" --timeout 30
}

expect_ini_has() {
  ini_text "$app/setting.ini" | grep -qx "$1" || fail "setting.ini has no $1: $(ini_text "$app/setting.ini" | tr '\n' ' ')"
}

# --- a play running ------------------------------------------------------------
write_macro "$WORK/long.ksx" "beep" "60000" "beep"
fresh_app "Loop=-1"$'\r\n'"LoopCnt=3"$'\r\n'"rate=2"$'\r\n'"DefMacro=$(winpath "$WORK/long.ksx")"$'\r\n'
start_app
robot click "${main[@]}" --ctl-text 再生 >/dev/null
robot_await "the playing caption" "${main[@]}" --title-re '残り3回' >/dev/null
shot playing
end_session
for key in Mouse=-1 Move=-1 Tray=0 Loop=-1 LoopCnt=3 Split=1335 WinState=0 rate=2; do
  expect_ini_has "$key"
done

# --- a recording started with "/rec" --------------------------------------------
fresh_app ""
start_app /rec
robot_expect_text "the record button after /rec" "終了" "${main[@]}" --ctl-class Button --ctl-nth 0
end_session
[ -f "$app/Macro/Rec.txt" ] || fail "no Macro/Rec.txt after the session ended"
for key in Mouse=-1 TreeIcon=-1 Split=1335 rate=0; do
  expect_ini_has "$key"
done

#!/usr/bin/env bash
# The downloaded archive unpacked into a folder whose name holds a blank and
# Japanese characters: the program starts there, ヘルプ → ReadMeを開く shows
# the guide in Notepad, a sample from its Macro folder plays into the target,
# and closing the program writes setting.ini beside it.
. "$(dirname "$0")/lib.sh"

main=(--class KestrelixMainWindow)
editor=("${main[@]}" --ctl-class Edit --ctl-id 1)

archive=$("$KX_ROOT/scripts/package" --no-build --out "$WORK/dist" 2>"$WORK/package.log" | tail -n1)
[ -f "$archive" ] || fail "scripts/package made no archive: $(cat "$WORK/package.log")"
app="$WORK/テスト 用"
mkdir -p "$app"
unzip -q "$archive" -d "$app"
[ -f "$app/Kestrelix.exe" ] || fail "the archive did not unpack: $(ls "$app")"
[ ! -e "$app/setting.ini" ] || fail "the archive holds a setting.ini"

# Windows opens .txt files with Notepad; Wine 8's fresh prefix has the
# txtfile class but no .txt entry pointing at it.
wine reg add 'HKCR\.txt' /ve /d txtfile /f >/dev/null 2>&1 || fail "could not associate .txt"
# Notepad in a Japanese font, as on Japanese Windows, for the screenshot.
wine reg add 'HKCU\Software\Microsoft\Notepad' /v lfFaceName /d 'Noto Sans Mono CJK JP' /f >/dev/null 2>&1 || true

(cd "$app" && wine Kestrelix.exe >/dev/null 2>&1) &
E2E_PIDS+=($!)
robot_await "the main window" "${main[@]}" --timeout 30 >/dev/null

# --- ヘルプ → ReadMeを開く by keyboard: Notepad shows the guide --------------
window=$(await_window '^Kestrelix')
[ -n "$window" ] || fail "no X window for the main window"
xdotool windowfocus --sync "$window"
xdotool key alt+h
robot_await "the ヘルプ menu" --class '#32768' --timeout 10 >/dev/null
xdotool key r
notepad=(--title-re 'ReadMe')
robot_await "Notepad with the ReadMe" "${notepad[@]}" --timeout 30 >/dev/null
robot_expect_text_contains "the guide in Notepad" "キーボードとマウスの操作を記録して再生する" \
  "${notepad[@]}" --ctl-class Edit
shot readme
robot close "${notepad[@]}" >/dev/null
robot_await_gone "Notepad" "${notepad[@]}" --timeout 20

# --- a sample from the Macro folder beside the program plays into the target --
start_target "$WORK/target.log"
robot set-text "${editor[@]}" -- $'w kxtarget\r\nmf 1_記録した操作.txt' >/dev/null
robot click "${main[@]}" --ctl-text 再生 >/dev/null
typed="DOWN:16 DOWN:75 UP:75 UP:16 DOWN:69 UP:69 DOWN:83 UP:83 DOWN:84 UP:84 DOWN:82 UP:82"
typed+=" DOWN:69 UP:69 DOWN:76 UP:76 DOWN:73 UP:73 DOWN:88 UP:88 DOWN:13 UP:13"
for _ in $(seq 300); do
  [ "$(key_messages "$WORK/target.log")" = "$typed" ] && break
  sleep 0.1
done
expect_eq "the sample's keys in the target" "$(key_messages "$WORK/target.log")" "$typed"

# --- closing writes setting.ini beside the program ----------------------------
robot close "${main[@]}" >/dev/null
robot_await_gone "the main window" --all "${main[@]}" --timeout 30
for _ in $(seq 100); do
  [ -f "$app/setting.ini" ] && break
  sleep 0.1
done
[ -f "$app/setting.ini" ] || fail "no setting.ini beside the program: $(ls "$app")"

#!/usr/bin/env bash
# Opening, saving and playing macros from the main window: the open dialog
# reads every encoding alike, 保存 saves under a new name as UTF-8 with a
# mark, the overwrite prompt's Cancel leaves the file as it was, 再生 plays
# the editor for the loop count, and the running line is highlighted.
. "$(dirname "$0")/lib.sh"

main=(--class KestrelixMainWindow)
editor=("${main[@]}" --ctl-class Edit --ctl-id 1)
app=$WORK/app
mkdir -p "$app/Macro"
cp "$BIN/Kestrelix.exe" "$app/"
# Beside the target window, so that the highlight shows in the screenshots.
printf '[Macro]\r\nTrace=-1\r\nX=10500\r\nW=7500\r\n' >"$app/setting.ini"

(cd "$app" && wine Kestrelix.exe >/dev/null 2>&1) &
E2E_PIDS+=($!)
robot_await "the main window" "${main[@]}" --timeout 30 >/dev/null

# Answers a file dialog: types the name and presses its OK button.
answer_file_dialog() {
  local title=$1 name=$2
  robot_await "the dialog $title" --title "$title" --timeout 20 >/dev/null
  robot set-text --title "$title" --ctl-class Edit -- "$name" || fail "name not typed into $title"
  robot command 1 --title "$title" >/dev/null  # IDOK to the dialog itself
  robot_await_gone "the dialog $title" --title "$title" --timeout 20
}

# --- 読込: every encoding shows the same text --------------------------------
text=$'\' これは日本語のマクロです。漢字、ひらがな、カタカナ\r\nkey ok'
for enc in shift_jis euc_jp iso2022_jp utf-8-sig utf-16; do
  python3 -c 'import sys; open(sys.argv[1], "wb").write(sys.argv[3].encode(sys.argv[2]))' \
    "$app/Macro/$enc.ksx" "$enc" "$text"
  robot click "${main[@]}" --ctl-text 読込 >/dev/null
  answer_file_dialog "ファイルを開く" "$(winpath "$app/Macro/$enc.ksx")"
  robot_expect_text "the editor after opening $enc" "$text" "${editor[@]}"
  robot_expect_text "the caption after opening $enc" "Kestrelix - $enc.ksx" "${main[@]}"
done

# --- 保存: a new name gets the .txt extension and UTF-8 with a mark -----------
robot set-text "${editor[@]}" -- $'key 新しい\r\nbeep' >/dev/null
robot click "${main[@]}" --ctl-text 保存 >/dev/null
answer_file_dialog "名前を付けて保存" "新規"
saved=$app/Macro/新規.txt
for _ in $(seq 100); do [ -f "$saved" ] && break; sleep 0.1; done
[ -f "$saved" ] || fail "保存 wrote no 新規.txt: $(ls "$app/Macro")"
expect_eq "saved bytes" "$(od -An -tx1 "$saved" | tr -d ' \n')" \
  "$(printf '\xef\xbb\xbfkey 新しい\r\nbeep' | od -An -tx1 | tr -d ' \n')"
robot_expect_text "the caption after saving" "Kestrelix - 新規.txt" "${main[@]}"
robot items "${main[@]}" --ctl-class SysTreeView32 | grep -q 'path=新規.txt' || fail "the tree lacks the new file"

# --- the overwrite prompt: Cancel leaves the file, OK writes it ---------------
cp "$saved" "$WORK/before"
robot set-text "${editor[@]}" -- "changed" >/dev/null
robot rclick "${main[@]}" --ctl-text 保存 >/dev/null
prompt=(--class '#32770' --title Kestrelix)
robot_await "the overwrite prompt" "${prompt[@]}" --timeout 20 >/dev/null
robot controls "${prompt[@]}" | grep -q '上書き保存しますか？' || fail "the prompt's text: $(robot controls "${prompt[@]}")"
shot overwrite_prompt
robot click "${prompt[@]}" --ctl-id 2 >/dev/null
robot_await_gone "the overwrite prompt" "${prompt[@]}"
cmp -s "$saved" "$WORK/before" || fail "Cancel changed the file"
robot rclick "${main[@]}" --ctl-text 保存 >/dev/null
robot_await "the overwrite prompt" "${prompt[@]}" --timeout 20 >/dev/null
robot click "${prompt[@]}" --ctl-id 1 >/dev/null
robot_await_gone "the overwrite prompt" "${prompt[@]}"
for _ in $(seq 100); do cmp -s "$saved" <(printf '\xef\xbb\xbfchanged') && break; sleep 0.1; done
cmp -s "$saved" <(printf '\xef\xbb\xbfchanged') || fail "OK did not overwrite the file"

# --- 再生: the loop count is honoured ------------------------------------------
start_target "$WORK/target.log"
robot set-text "${editor[@]}" -- $'w kxtarget\r\nkey ok' >/dev/null
robot set-text "${main[@]}" --ctl-class Edit --ctl-id 1004 -- 2 >/dev/null
robot click "${main[@]}" --ctl-text 再生 >/dev/null
await_eq "two cycles into the target" "DOWN:79 UP:79 DOWN:75 UP:75 DOWN:79 UP:79 DOWN:75 UP:75" \
  key_messages "$WORK/target.log"

# --- the running line is highlighted while the macro plays ---------------------
robot set-text "${main[@]}" --ctl-class Edit --ctl-id 1004 -- 1 >/dev/null
robot set-text "${editor[@]}" -- $'w kxtarget\r\nkey a\r\n1500\r\nkey b\r\n1500\r\nkey c' >/dev/null
robot click "${main[@]}" --ctl-text 再生 >/dev/null
# EM_GETSEL: the selection's start in the low word of the result.
selection_start() { echo $(($(robot send 0x00B0 0 0 "${editor[@]}" | tr -dc '0-9') & 0xFFFF)); }
# The keys a and b (65, 66) have not been typed before: each marks a wait.
typed() { grep -aq "vk=$1" "$WORK/target.log" && echo yes; }
await_eq "the first wait reached" "yes" typed 65
first=$(selection_start)
shot trace_first
await_eq "the second wait reached" "yes" typed 66
second=$(selection_start)
shot trace_second
[ "$first" -lt "$second" ] || fail "the highlight did not move down: $first then $second"

robot close "${main[@]}" >/dev/null
robot_await_gone "the main window" --all "${main[@]}" --timeout 30

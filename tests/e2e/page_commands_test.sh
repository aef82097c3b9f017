#!/usr/bin/env bash
# Window-text commands against Wine's Notepad and the test target: st and ad
# set and extend an edit box's text, gt reads a second edit box into the value
# that <debug> shows under "現在の値", ts renames the target, bc presses its OK
# button, cc clicks into it without moving the pointer, kk posts a key.
. "$(dirname "$0")/lib.sh"

start_target "$WORK/target.log" ページ試験
target=$(sed -n 's/^ready\thwnd=\([0-9]*\).*/\1/p' "$WORK/target.log")
ok=$(robot find --hwnd "$target" --ctl-class Button --ctl-text OK | robot_field handle)
[ -n "$ok" ] || fail "no OK button on the target"
wine notepad >/dev/null 2>&1 &
E2E_PIDS+=($!)
robot_await "Notepad" --class Notepad --timeout 30 >/dev/null

pointer_before=$(xdotool getmouselocation)
write_macro "$WORK/page.ksx" \
  "st 最初,,Notepad,Edit" \
  "AD と追加,,notepad,Edit*1" \
  "st 二番目,,KxTargetWindow+ページ試験,Edit*2" \
  "gt KxTargetWindow+ページ試験,Edit*2" \
  "<debug>" \
  "ts $target,改名済み" \
  "bc $ok" \
  "cc 40,330,KxTargetWindow+改名済み" \
  "kk a,,KxTargetWindow,Edit" \
  "kk 13,,KxTargetWindow,Edit*2" \
  "st 無視,,NoSuchWindow,Edit"
wine "$BIN/Kestrelix.exe" "$(winpath "$WORK/page.ksx")" >/dev/null 2>&1 &
kx=$!
E2E_PIDS+=($kx)

# <debug> shows gt's text in the "現在の値" box.
robot_await "the 現在の値 box" --title 現在の値 --timeout 30 >/dev/null
robot_expect_text "the 現在の値 box" "二番目" --title 現在の値 --ctl-class Static --ctl-text 二番目
shot debug
robot_expect_text "notepad's text" "最初と追加" --class Notepad --ctl-class Edit
box=$(await_window '^現在の値$')
[ -n "$box" ] || fail "the 現在の値 box is not visible"
dismiss_and_await_exit "$box" "$kx" || fail "Kestrelix.exe still runs after the box was closed"
wait "$kx" || fail "Kestrelix.exe ended with an error"

expect_eq "target's title after ts" "$(robot find --hwnd "$target" | robot_field title)" "改名済み"
await_eq "bc pressed the OK button" "1" grep -c $'^clicked\ttext=OK$' "$WORK/target.log"
sent() { grep '^sent' "$WORK/target.log" | cut -f2,4,5 | tr '\t\n' ' |'; }
await_eq "cc sent a click at the client point" \
  "msg=WM_LBUTTONDOWN x=40 y=330|msg=WM_LBUTTONUP x=40 y=330|" sent
expect_eq "the pointer did not move" "$(xdotool getmouselocation)" "$pointer_before"
posted() { grep -E 'msg=WM_KEYDOWN' "$WORK/target.log" | sed -E 's/.*vk=([0-9]+).*/\1/' | tr '\n' ' '; }
await_eq "kk posted the keys" "65 13 " posted
robot_expect_text "the second edit box" "二番目" --hwnd "$target" --ctl-class Edit --ctl-nth 1

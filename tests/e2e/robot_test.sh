#!/usr/bin/env bash
# kx_robot.exe finds, reads and drives the windows of other programs: the
# target program's controls, Wine's Notepad and its Open dialog, and the
# registry editor's tree view, list view, status bar and context menu.
. "$(dirname "$0")/lib.sh"

# The checked state of the target's check box, as the robot reports it.
check_state() { robot find --hwnd "$1" --ctl-class Button --ctl-text Check | robot_field checked; }
# The target's log lines of one mouse message, as "x,y" words.
clicks() { grep -P "msg=$2\t" "$1" | sed -E 's/.*\tx=([0-9-]+)\ty=([0-9-]+).*/\1,\2/' | tr '\n' ' ' | sed 's/ $//'; }

# --- The target program: its window, controls and messages.
start_target "$WORK/target.log" ロボット試験
record=$(robot_await "the target window" --class KxTargetWindow --title ロボット試験)
target=$(robot_field hwnd <<<"$record")
expect_eq "handle in decimal" "$(robot_field handle <<<"$record")" \
  "$(sed -n 's/^ready\thwnd=\([0-9]*\).*/\1/p' "$WORK/target.log")"
expect_eq "target found by its process's file name" \
  "$(robot windows --exe kx_target.exe | robot_field title)" "ロボット試験"
expect_eq "target found by a title pattern" "$(robot find --title-re '^ロボット' | robot_field hwnd)" \
  "$target"
robot controls --hwnd "$target" >"$WORK/target_controls.txt"
expect_eq "controls of the target" "$(cut -f1,5,6 "$WORK/target_controls.txt" | sort | tr '\t\n' ' |')" \
  "control class=Button id=0|control class=Button id=0|control class=Edit id=0|control class=Edit id=0|control class=ListBox id=0|"
grep -qP '\tclass=Button\tid=0\ttext=OK\tvisible=1\tenabled=1\tchecked=0\t' "$WORK/target_controls.txt" ||
  fail "the OK button's record: $(grep OK "$WORK/target_controls.txt")"

# The tool is the OK button, named by its handle under the main window.
ok_button=$(robot find --hwnd "$target" --ctl-class Button --ctl-text OK | robot_field handle)
expect_eq "tooltip of the OK button" "$(robot tooltips --hwnd "$target" | cut -f3-5)" \
  "tool=$target	id=$ok_button	text=OK ボタンのヒント"

text=$'日本語のテキスト\tタブ付き'
robot set-text --hwnd "$target" --ctl-class Edit "$text"
robot_expect_text "edit text" "$text" --hwnd "$target" --ctl-class Edit
expect_eq "edit text in its record" \
  "$(robot find --hwnd "$target" --ctl-class Edit | robot_field text)" '日本語のテキスト\tタブ付き'

expect_eq "check box before the click" "$(check_state "$target")" 0
robot click --hwnd "$target" --ctl-class Button --ctl-text Check
await_eq "check box after the click" 1 check_state "$target"

robot select --hwnd "$target" --ctl-class ListBox two
expect_eq "list box items" "$(robot items --hwnd "$target" --ctl-class ListBox | cut -f3,4 | tr '\t\n' ' |')" \
  "text=one selected=0|text=two selected=1|"

robot lclick --hwnd "$target" --at 420,300
robot rclick --hwnd "$target" --at 40,330
await_eq "left click in the client area" "420,300" clicks "$WORK/target.log" WM_LBUTTONUP
await_eq "right click in the client area" "40,330" clicks "$WORK/target.log" WM_RBUTTONUP

robot close --hwnd "$target"
robot_await_gone "the target window" --hwnd "$target"
if robot find --hwnd "$target" 2>/dev/null; then fail "a closed window is still found"; fi

# --- Notepad: its edit control and status bar, and the Open dialog.
printf 'x' >"$WORK/ロボット.txt"
(cd "$WORK" && exec wine notepad >/dev/null 2>&1) &
E2E_PIDS+=($!)
notepad=$(robot_await_hwnd "Notepad" --exe notepad.exe --class Notepad)
robot set-text --hwnd "$notepad" --ctl-class Edit "メモ帳で試す"
robot_expect_text "Notepad's text" "メモ帳で試す" --hwnd "$notepad" --ctl-class Edit
robot status --hwnd "$notepad" --ctl-class msctls_statusbar32 | grep -qP '^part\tindex=0\ttext=\S' ||
  fail "Notepad's status bar: $(robot status --hwnd "$notepad" --ctl-class msctls_statusbar32)"

# The Open dialog through the menu's access keys, as a user opens it.
xwindow=$(await_window 'メモ帳$')
[ -n "$xwindow" ] || fail "Notepad has no X window"
xdotool windowfocus --sync "$xwindow"
xdotool key alt+f
robot_await "Notepad's File menu" --exe notepad.exe --class '#32768' >/dev/null
xdotool key o
dialog=$(robot_await_hwnd "the Open dialog" --exe notepad.exe --class '#32770')
robot controls --hwnd "$dialog" >"$WORK/dialog_controls.txt"
for want in $'class=SysListView32' $'class=Button\tid=1\t' $'class=Button\tid=2\t' $'class=ComboBox\tid=1136\t'; do
  grep -qF "$want" "$WORK/dialog_controls.txt" || fail "the Open dialog has no control with [$want]"
done
robot_await "the file list" --hwnd "$dialog" --ctl-class SysListView32 >/dev/null
for _ in $(seq 50); do
  robot items --hwnd "$dialog" --ctl-class SysListView32 | grep -qP '^row\t.*\tc0=ロボット\.txt\t' && break
  sleep 0.1
done
robot items --hwnd "$dialog" --ctl-class SysListView32 | grep -qP '^row\t.*\tc0=ロボット\.txt\t' ||
  fail "the Open dialog's list: $(robot items --hwnd "$dialog" --ctl-class SysListView32)"
robot click --hwnd "$dialog" --ctl-class Button --ctl-id 2
robot_await_gone "the Open dialog" --hwnd "$dialog"

robot set-text --hwnd "$notepad" --ctl-class Edit ""
robot close --hwnd "$notepad"
robot_await_gone "Notepad" --hwnd "$notepad"

# --- The registry editor: tree view, list view, status bar, context menu.
wine regedit >/dev/null 2>&1 &
E2E_PIDS+=($!)
regedit=$(robot_await_hwnd "the registry editor" --exe regedit.exe --class RegEdit_RegEdit)
tree=(--hwnd "$regedit" --ctl-class SysTreeView32)
robot items "${tree[@]}" | grep -qP '^item\tdepth=1\tpath=[^\t/]+/HKEY_CURRENT_USER\t' ||
  fail "the registry tree: $(robot items "${tree[@]}")"
root=$(robot items "${tree[@]}" | robot_field text)
robot select "${tree[@]}" "$root/HKEY_CURRENT_USER/Software"
robot_expect_text_contains "the registry editor's status bar" 'HKEY_CURRENT_USER\Software' \
  --hwnd "$regedit" --ctl-class msctls_statusbar32 --part 0
expect_eq "selected tree item" "$(robot items "${tree[@]}" | grep -P '\tselected=1\t' | robot_field path)" \
  "$root/HKEY_CURRENT_USER/Software"
robot items --hwnd "$regedit" --ctl-class SysListView32 | grep -qP '^row\tindex=0\t.*\tc1=REG_SZ' ||
  fail "the registry values: $(robot items --hwnd "$regedit" --ctl-class SysListView32)"
if robot select "${tree[@]}" "$root/HKEY_CURRENT_USER/No such key" 2>/dev/null; then
  fail "a missing tree item was selected"
fi

robot rclick --hwnd "$regedit" --ctl-class SysListView32
menu=$(robot_await_hwnd "the context menu" --exe regedit.exe --class '#32768')
robot post --hwnd "$regedit" WM_CANCELMODE
robot_await_gone "the context menu" --hwnd "$menu"
robot close --hwnd "$regedit"
robot_await_gone "the registry editor" --hwnd "$regedit"

# --- Wine's settings: a property sheet's tabs, and a trackbar whose moves
# reach its parent, which shows the value in an edit box (the trackbar steps
# through 96, 120, 144, ... dots per inch).
wine winecfg >/dev/null 2>&1 &
E2E_PIDS+=($!)
winecfg=$(robot_await_hwnd "Wine's settings" --exe winecfg.exe --class '#32770')
tabs=(--hwnd "$winecfg" --ctl-class SysTabControl32)
expect_eq "first tab selected" "$(robot items "${tabs[@]}" | grep -P '\tselected=1$' | robot_field index)" 0
robot select "${tabs[@]}" 画面
expect_eq "tab selected by its caption" \
  "$(robot items "${tabs[@]}" | grep -P '\tselected=1$' | robot_field text)" 画面
robot_await "the trackbar of the screen page" --hwnd "$winecfg" --ctl-class msctls_trackbar32 >/dev/null
robot set-value --hwnd "$winecfg" --ctl-class msctls_trackbar32 1
robot_expect_text "resolution shown by the page" 120 --hwnd "$winecfg" --ctl-class Edit --ctl-id 1108
robot close --hwnd "$winecfg"
robot_await_gone "Wine's settings" --hwnd "$winecfg"

# --- Bad requests have defined outcomes.
status=0
robot wait --class NoSuchClass --timeout 0.3 2>/dev/null || status=$?
expect_eq "time-out status" "$status" 1
status=0
robot frobnicate 2>/dev/null || status=$?
expect_eq "unknown command status" "$status" 2
status=0
robot find --title-re '(' 2>/dev/null || status=$?
expect_eq "bad pattern status" "$status" 2
status=0
robot wait --class NoSuchClass --timeout 1e300 2>/dev/null || status=$?
expect_eq "endless time-out status" "$status" 2
status=0
robot get-text --hwnd "$notepad" surplus 2>/dev/null || status=$?
expect_eq "surplus argument status" "$status" 2
robot --help | grep -q '^Usage: kx_robot' || fail "no usage text"

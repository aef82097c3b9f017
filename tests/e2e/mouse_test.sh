#!/usr/bin/env bash
# Mouse lines in screen and client coordinates, down/up/double, the wheel and
# mousepos reach the target at the right client positions.
. "$(dirname "$0")/lib.sh"

start_target "$WORK/target.log"
sx() { echo $((TARGET_X + $1)); }
sy() { echo $((TARGET_Y + $1)); }
write_macro "$WORK/mouse.ksx" \
  "w kxtarget" \
  "lmouse down ($(sx 50),$(sy 60))" \
  "lmouse up ($(sx 50),$(sy 60))" \
  "rmoucl down (400,300)" \
  "rmoucl up (400,300)" \
  "lmoucl double (200,310)" \
  "mmoucl down (420,330)" \
  "mmoucl up (420,330)" \
  "mousepos($(sx 250),$(sy 320))" \
  "wheel 300" \
  "wheel -240"
run_kestrelix 60 "$(winpath "$WORK/mouse.ksx")"
sleep 0.3
shot mouse

button_messages() {
  grep -E 'msg=WM_(L|R|M)BUTTON|msg=WM_MOUSEWHEEL' "$WORK/target.log" |
    sed -E 's/.*msg=WM_([A-Z]+)\tx=(-?[0-9]+)\ty=(-?[0-9]+)\tdelta=(-?[0-9]+)/\1@\2,\3\/\4/' | tr '\n' ' ' | sed 's/ $//'
}
await_eq "button and wheel messages" \
  "LBUTTONDOWN@50,60/0 LBUTTONUP@50,60/0 RBUTTONDOWN@400,300/0 RBUTTONUP@400,300/0 LBUTTONDOWN@200,310/0 LBUTTONUP@200,310/0 LBUTTONDBLCLK@200,310/0 LBUTTONUP@200,310/0 MBUTTONDOWN@420,330/0 MBUTTONUP@420,330/0 MOUSEWHEEL@250,320/120 MOUSEWHEEL@250,320/120 MOUSEWHEEL@250,320/60 MOUSEWHEEL@250,320/-120 MOUSEWHEEL@250,320/-120 MOUSEWHEEL@250,320/0" \
  button_messages
grep -q 'msg=WM_MOUSEMOVE	x=250	y=320' "$WORK/target.log" || fail "mousepos did not move to client (250,320)"

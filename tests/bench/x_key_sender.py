#!/usr/bin/env python3
"""Taps X keys through the XTest extension, started ahead of time so that a
timed key press carries none of a program's start-up.

An optional argument is how long each key is held, in seconds (default
0.05). Prints "ready" once connected; then for each key name read from stdin (an X
keysym name such as "Pause") taps the key and prints the Unix time of the
press in microseconds.
"""
import ctypes
import sys
import time

x11 = ctypes.CDLL("libX11.so.6")
xtst = ctypes.CDLL("libXtst.so.6")
x11.XOpenDisplay.restype = ctypes.c_void_p
x11.XOpenDisplay.argtypes = [ctypes.c_char_p]
x11.XStringToKeysym.restype = ctypes.c_ulong
x11.XStringToKeysym.argtypes = [ctypes.c_char_p]
x11.XKeysymToKeycode.restype = ctypes.c_ubyte
x11.XKeysymToKeycode.argtypes = [ctypes.c_void_p, ctypes.c_ulong]
x11.XFlush.argtypes = [ctypes.c_void_p]
xtst.XTestFakeKeyEvent.argtypes = [ctypes.c_void_p, ctypes.c_uint, ctypes.c_int, ctypes.c_ulong]

hold = float(sys.argv[1]) if len(sys.argv) > 1 else 0.05
display = x11.XOpenDisplay(None)
if not display:
    sys.exit("x_key_sender: cannot open the display")
print("ready", flush=True)
for line in sys.stdin:
    code = x11.XKeysymToKeycode(display, x11.XStringToKeysym(line.strip().encode()))
    if code == 0:
        print("unknown", flush=True)
        continue
    pressed = time.time_ns() // 1000
    xtst.XTestFakeKeyEvent(display, code, 1, 0)
    x11.XFlush(display)
    time.sleep(hold)
    xtst.XTestFakeKeyEvent(display, code, 0, 0)
    x11.XFlush(display)
    print(pressed, flush=True)

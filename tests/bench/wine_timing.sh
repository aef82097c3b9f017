#!/usr/bin/env bash
# Benchmark of the real waits under Wine, by hand (not a pass/fail test):
#   scripts/wine-env bash tests/bench/wine_timing.sh BIN_DIR [OUT_DIR]
# Measures through the target program's timestamps how far 8 ms line pauses,
# 8 ms and 100 ms wait lines land from their nominal time, the drift after
# 1,000 steps, the time from the Play hotkey to the last injected key, and the
# processor time Kestrelix.exe and the Wine server use during a 10-second wait;
# then the waits as the program itself times them (kx_wait_probe).
# Only processes of this Wine prefix are measured, and the Play hotkey comes
# from a sender started beforehand (x_key_sender.py).
# KX_BUSY=N keeps N busy loops running throughout (N=2: both cores busy).
set -euo pipefail
BIN=$1
OUT=${2:-$KX_ROOT/build/bench}
mkdir -p "$OUT"
winpath() { printf 'Z:%s' "${1//\//\\}"; }
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
macro() { local f=$1; shift; python3 -c 'import sys; open(sys.argv[1],"wb").write("\r\n".join(sys.argv[2:]).encode())' "$f" "$@"; }

. "$here/wine_procs.sh"

wine "$BIN/kx_target.exe" "$(winpath "$OUT/target.log")" >/dev/null 2>&1 &
target=$!
sender=""
busy=()
for _ in $(seq "${KX_BUSY:-0}"); do sh -c 'while :; do :; done' & busy+=($!); done
trap 'kill $target ${sender:-} ${busy[*]} 2>/dev/null || true' EXIT
for _ in $(seq 300); do grep -q '^ready' "$OUT/target.log" 2>/dev/null && break; sleep 0.1; done

run_series() {  # name, lines...
  sleep 1
  local name=$1; shift
  macro "$OUT/$name.ksx" "w kxtarget" "$@"
  : >"$OUT/target.log.mark"
  local before; before=$(wc -l <"$OUT/target.log")
  wine "$BIN/Kestrelix.exe" "$(winpath "$OUT/$name.ksx")" >/dev/null 2>&1
  sleep 0.3
  tail -n +$((before + 1)) "$OUT/target.log" >"$OUT/$name.log"
}
repeat() { local n=$1; shift; for _ in $(seq "$n"); do printf '%s\n' "$@"; done; }

mapfile -t pause < <(repeat 301 "keys shift")
run_series linepause "${pause[@]}"
mapfile -t w8 < <(repeat 1000 "keys shift" "08"; echo "keys shift")
run_series wait8 "${w8[@]}"
mapfile -t w100 < <(repeat 300 "keys shift" "100"; echo "keys shift")
run_series wait100 "${w100[@]}"

# Stop: keys every line pause for a long time, then the Play hotkey.
# F12 rather than Shift: a held modifier would change the hotkey's chord.
mapfile -t long < <(repeat 3000 "keys f12")
macro "$OUT/stop.ksx" "w kxtarget" "${long[@]}"
coproc SENDER { python3 "$here/x_key_sender.py"; }
sender=$SENDER_PID
read -r line <&"${SENDER[0]}"
[ "$line" = ready ] || { echo "the key sender did not start" >&2; exit 1; }
# The stop lands anywhere in a line pause: several plays give its spread.
stops=${KX_STOP_RUNS:-5}
: >"$OUT/stop.times"
for run in $(seq "$stops"); do
  before=$(wc -l <"$OUT/target.log")
  wine "$BIN/Kestrelix.exe" "$(winpath "$OUT/stop.ksx")" >/dev/null 2>&1 &
  kx=$!
  sleep 2.5
  xdotool windowfocus --sync "$(xdotool search --onlyvisible --name '^KxTarget$' | head -n1)"
  sleep 0.$((RANDOM % 9 + 1))
  echo Pause >&"${SENDER[1]}"
  read -r pressed <&"${SENDER[0]}"
  wait $kx || true
  sleep 0.3
  tail -n +$((before + 1)) "$OUT/target.log" >"$OUT/stop$run.log"
  echo "$run $pressed" >>"$OUT/stop.times"
done

# The same waits timed from inside the program, with no receiver.
wine "$BIN/kx_wait_probe.exe" 300 >"$OUT/probe.txt" 2>/dev/null

# Processor time during a 10-second wait.
macro "$OUT/cpu.ksx" "w kxtarget" "keys shift" "13000" "keys shift"
wine "$BIN/Kestrelix.exe" "$(winpath "$OUT/cpu.ksx")" >/dev/null 2>&1 &
kx=$!
sleep 2
# The Windows process of Kestrelix.exe, as Wine started it, and the Wine
# server (wineserver64 on Debian) of this prefix.
kx=$(prefix_pids 'Kestrelix.exe' | tail -n1)
[ -n "$kx" ] || { echo "Kestrelix.exe of this prefix not found" >&2; exit 1; }
server=$(prefix_pids 'wineserver(64)?' | head -n1)
[ -n "$server" ] || { echo "the Wine server of this prefix not found" >&2; exit 1; }
echo "measuring Kestrelix.exe pid $kx and the Wine server pid $server" >&2
k0=$(ticks "$kx"); s0=$(ticks "$server"); t0=$(date +%s%N)
sleep 10
k1=$(ticks "$kx"); s1=$(ticks "$server"); t1=$(date +%s%N)
while kill -0 "$kx" 2>/dev/null; do sleep 0.2; done

python3 - "$OUT" "$((k1 - k0))" "$((s1 - s0))" "$((t1 - t0))" 1000000000 <<'PY'
import sys, statistics
out, kticks, sticks, elapsed_ns, hz = sys.argv[1], int(sys.argv[2]), int(sys.argv[3]), int(sys.argv[4]), int(sys.argv[5])
def downs(name, vk="16"):
    ev = []
    for line in open(f"{out}/{name}.log"):
        f = dict(x.split("=", 1) for x in line.strip().split("\t") if "=" in x)
        if f.get("msg") == "WM_KEYDOWN" and f.get("vk") == vk:
            ev.append((int(f["t"]), int(f["wall"])))
    return ev
def report(name, nominal_ms, limit=None):
    ev = downs(name)[: (limit + 1) if limit else None]
    d = [(b[0] - a[0]) / 1000 - nominal_ms for a, b in zip(ev, ev[1:])]
    if not d:
        print(f"{name:10s} no events (the target was not in the foreground?)")
        return ev
    d.sort()
    p99 = d[min(len(d) - 1, int(len(d) * 0.99))]
    print(f"{name:10s} n={len(d):4d} nominal {nominal_ms:5.0f} ms  late by: median {statistics.median(d):6.3f}  p99 {p99:6.3f}  max {d[-1]:6.3f}  min {d[0]:6.3f} ms")
    return ev
report("linepause", 8)
report("wait8", 8, 300)
report("wait100", 100)
ev = downs("wait8")
steps = len(ev) - 1
print(f"drift after {steps} steps of 8 ms: {(ev[-1][0] - ev[0][0]) / 1000 - steps * 8:.1f} ms ({((ev[-1][0] - ev[0][0]) / 1000 - steps * 8) / steps:.3f} ms per step)")
lat = []
for line in open(f"{out}/stop.times"):
    run, pressed = line.split()
    keys = downs(f"stop{run}", "123")
    if keys:
        lat.append((max(w for _, w in keys) - int(pressed)) / 1000)
lat.sort()
if lat:
    print(f"stop: last injected key after the Pause key was pressed, {len(lat)} plays: median {statistics.median(lat):.1f}  max {lat[-1]:.1f}  min {lat[0]:.1f} ms")
print(f"CPU during a 10 s wait: Kestrelix {kticks / hz * 1000:.1f} ms ({100 * kticks / hz / (elapsed_ns / 1e9):.2f}% of a core), Wine server {sticks / hz * 1000:.1f} ms ({100 * sticks / hz / (elapsed_ns / 1e9):.2f}%)")
PY
sed 's/^/inside: /' "$OUT/probe.txt"

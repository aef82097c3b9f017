#!/usr/bin/env bash
# Benchmark of the recorder under Wine, by hand (not a pass/fail test):
#   scripts/wine-env bash tests/bench/recorder.sh BIN_DIR [OUT_DIR]
# Measures the time from an X key press to the recorded line appearing in the
# editor (KX_KEYS presses, default 20, each held 120 ms), and the processor
# time Kestrelix.exe and the Wine server use in 10 idle seconds, without and
# with a recording running. Key presses come from a sender started
# beforehand (x_key_sender.py), editor changes are timed by kx_editor_watch.
set -euo pipefail
BIN=$1
OUT=${2:-$KX_ROOT/build/bench/recorder}
rm -rf "$OUT"
mkdir -p "$OUT/app/Macro"
winpath() { printf 'Z:%s' "${1//\//\\}"; }
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$here/wine_procs.sh"

cp "$BIN/Kestrelix.exe" "$OUT/app/"
printf '[Macro]\r\nMove=0\r\n' >"$OUT/app/setting.ini"
wine "$BIN/kx_target.exe" "$(winpath "$OUT/target.log")" >/dev/null 2>&1 &
target=$!
(cd "$OUT/app" && exec wine Kestrelix.exe >/dev/null 2>&1) &
kestrelix=$!
sender=""
watcher=""
trap 'kill $target $kestrelix ${sender:-} ${watcher:-} 2>/dev/null || true' EXIT
wine "$BIN/kx_robot.exe" wait --class KestrelixMainWindow --timeout 30 >/dev/null
for _ in $(seq 300); do grep -q '^ready' "$OUT/target.log" 2>/dev/null && break; sleep 0.1; done
# The keys go to the target (see tests/e2e/recorder_test.sh for why both).
wine "$BIN/kx_robot.exe" focus --class KxTargetWindow >/dev/null 2>&1 || true
xdotool windowfocus --sync "$(xdotool search --onlyvisible --name '^KxTarget$' | head -n1)"

coproc SENDER { python3 "$here/x_key_sender.py" 0.12; }
sender=$SENDER_PID
read -r line <&"${SENDER[0]}"
[ "$line" = ready ] || { echo "the key sender did not start" >&2; exit 1; }
tap() {
  echo "$1" >&"${SENDER[1]}"
  read -r pressed <&"${SENDER[0]}"
}

kx=$(prefix_pids 'Kestrelix.exe' | tail -n1)
server=$(prefix_pids 'wineserver(64)?' | head -n1)
[ -n "$kx" ] && [ -n "$server" ] || { echo "Kestrelix.exe or the Wine server not found" >&2; exit 1; }
# Prints "Kestrelix_ns server_ns elapsed_ns" over 10 idle seconds.
measure_idle() {
  sleep 1
  local k0 s0 t0
  k0=$(ticks "$kx"); s0=$(ticks "$server"); t0=$(date +%s%N)
  sleep 10
  echo "$(($(ticks "$kx") - k0)) $(($(ticks "$server") - s0)) $(($(date +%s%N) - t0))"
}
idle=$(measure_idle)
tap F11
wine "$BIN/kx_robot.exe" wait-text --equals 終了 --class KestrelixMainWindow --ctl-class Button --ctl-nth 0 >/dev/null
recording=$(measure_idle)

keys=${KX_KEYS:-20}
coproc WATCHER { wine "$BIN/kx_editor_watch.exe" "$keys"; }
watcher=$WATCHER_PID
read -r line <&"${WATCHER[0]}"
[ "${line%$'\r'}" = ready ] || { echo "the editor watcher did not start" >&2; exit 1; }
: >"$OUT/latency.txt"
letters=(A B C D E F G H I J K L M N O P Q R S T U V W X Y Z)
for i in $(seq 0 $((keys - 1))); do
  letter=${letters[$((i % 26))]}
  tap "${letter,,}"
  if read -r -t 5 changed <&"${WATCHER[0]}"; then
    echo "$letter $(((${changed%$'\r'} - pressed)))" >>"$OUT/latency.txt"
  else
    echo "$letter missed" >>"$OUT/latency.txt"
  fi
  sleep 0.$((RANDOM % 3 + 1))
done
tap F11
wine "$BIN/kx_robot.exe" get-text --class KestrelixMainWindow --ctl-class Edit --ctl-id 1 >"$OUT/recorded.txt"

python3 - "$OUT" $idle $recording <<'PY'
import statistics, sys
out = sys.argv[1]
ik, is_, it, rk, rs, rt = map(int, sys.argv[2:8])
lat, missed = [], 0
for line in open(f"{out}/latency.txt"):
    key, value = line.split()
    if value == "missed":
        missed += 1
    else:
        lat.append(int(value) / 1000)
lat.sort()
if lat:
    print(f"key press to recorded line, {len(lat)} keys ({missed} missed): median {statistics.median(lat):.1f}  "
          f"mean {statistics.mean(lat):.1f}  max {lat[-1]:.1f}  min {lat[0]:.1f} ms")
def cpu(name, k, s, t):
    print(f"CPU, 10 s {name}: Kestrelix {k / 1e6:.1f} ms ({100 * k / t:.2f}% of a core), "
          f"Wine server {s / 1e6:.1f} ms ({100 * s / t:.2f}%)")
cpu("idle, not recording", ik, is_, it)
cpu("idle, recording", rk, rs, rt)
PY

#!/usr/bin/env bash
# Processor time of a waitimage that waits 10 s for a picture that never
# shows, under Wine, by hand (not a pass/fail test):
#   scripts/wine-env bash tests/bench/screen_wait.sh BIN_DIR
# Counts Kestrelix.exe, the Wine server of this prefix and the X server (the
# screen is read through it), and prints how long one look at the whole
# screen takes as the wait's own pacing sees it (looks per second).
set -euo pipefail
BIN=$1
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$here/wine_procs.sh"
winpath() { printf 'Z:%s' "${1//\//\\}"; }
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
convert -seed 9 -size 48x48 plasma: -depth 8 png24:"$dir/absent.png"
python3 -c 'import sys; open(sys.argv[1],"wb").write("\r\n".join(sys.argv[2:]).encode())' \
  "$dir/wait.ksx" "1000" "waitimage $(winpath "$dir/absent.png"),0,12000"
xserver=$(pgrep -P "$PPID" -x Xvfb || true)
wine "$BIN/Kestrelix.exe" "$(winpath "$dir/wait.ksx")" >/dev/null 2>&1 &
sleep 2.5
kx=$(prefix_pids 'Kestrelix.exe' | tail -n1)
server=$(prefix_pids 'wineserver(64)?' | head -n1)
[ -n "$kx" ] && [ -n "$server" ] || { echo "Kestrelix.exe or the Wine server not found" >&2; exit 1; }
sum() { local n=0 p; for p in "$@"; do [ -n "$p" ] && n=$((n + $(ticks "$p"))); done; echo $n; }
k0=$(sum "$kx"); s0=$(sum "$server"); x0=$(sum "$xserver"); t0=$(date +%s%N)
sleep 10
k1=$(sum "$kx"); s1=$(sum "$server"); x1=$(sum "$xserver"); t1=$(date +%s%N)
wait || true
python3 - "$((k1 - k0))" "$((s1 - s0))" "$((x1 - x0))" "$((t1 - t0))" "$(xdpyinfo | sed -n 's/.*dimensions: *\([0-9x]*\).*/\1/p')" <<'PY'
import sys
k, s, x, t = (int(v) for v in sys.argv[1:5])
share = lambda n: 100 * n / t
print(f"10 s waitimage on a {sys.argv[5]} screen: Kestrelix {share(k):.2f}% of a core, "
      f"Wine server {share(s):.2f}%, X server {share(x):.2f}%, together {share(k + s + x):.2f}%")
PY

#!/usr/bin/env bash
# Benchmark of "kx run --dry" by hand (not a pass/fail test):
#   tests/bench/dry_run.sh KX [FILES] [LINES...]
# Plays recorded-style macros of the given line counts (default 10,000,
# 100,000 and 1,000,000) from a folder holding FILES other files (default
# 1,000) and prints the wall time of each run and its time per line.
set -euo pipefail
kx=$(realpath "$1")
files=${2:-1000}
shift $(( $# >= 2 ? 2 : 1 ))
counts=("$@")
[ ${#counts[@]} -gt 0 ] || counts=(10000 100000 1000000)
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
for i in $(seq "$files"); do : >"$dir/file$i.txt"; done
# One recorded second: modifiers, single keys, waits, pointer moves, clicks
# and the wheel, as the recorder writes them.
recorded=("LCtrl Down" "C" "LCtrl Up" "120" "MousePos(640,480)" "LMouse Down (640,480)"
  "LMouse Up (640,480)" "35" "Wheel -120" "A" "Enter" "250" "LShift Down" "B" "LShift Up" "48")
for n in "${counts[@]}"; do
  python3 - "$dir/rec.ksx" "$n" "${recorded[@]}" <<'PY'
import sys
path, n, lines = sys.argv[1], int(sys.argv[2]), sys.argv[3:]
open(path, "wb").write("\r\n".join(lines[i % len(lines)] for i in range(n)).encode())
PY
  start=$(date +%s%N)
  (cd "$dir" && "$kx" run --dry --max-lines $((n + 1)) --max-events $((n * 8)) rec.ksx | tail -n 1 >"$dir/last")
  end=$(date +%s%N)
  ms=$(( (end - start) / 1000000 ))
  printf '%8d lines, %5d files: %7d ms (%.2f us per line)  %s\n' "$n" "$files" "$ms" \
    "$(echo "scale=2; ($end - $start) / 1000 / $n" | bc)" "$(sed 's/.*"reason":"\([a-z]*\)".*/\1/' "$dir/last")"
done

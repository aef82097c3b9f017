#!/usr/bin/env bash
# Benchmark by hand (not a pass/fail test) of Kestrelix.exe's start-up and
# idle memory against the smallest Win32 window program, both under Wine:
#   scripts/wine-env bash tests/bench/startup_memory.sh BIN_DIR [RUNS]
# Start-up is from process creation to a visible window whose thread is idle
# again (the first paint done); memory is the idle process's private resident
# memory as Linux counts it (Wine reports no private bytes to the program).
set -euo pipefail
BIN=$1
RUNS=${2:-10}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
winpath() { printf 'Z:%s' "${1//\//\\}"; }
mkdir -p "$work/app/Macro"
cp "$BIN/Kestrelix.exe" "$work/app/"
x86_64-w64-mingw32-gcc -O2 -s -mwindows "$(dirname "$0")/empty_window.c" -o "$work/empty_window.exe"

measure() {  # label class program
  local label=$1 cls=$2 program=$3 times=() line pid linux_kb
  for _ in $(seq "$RUNS"); do
    # Through a file: the started program inherits the watcher's output, and
    # a pipe would stay open until it ends.
    wine "$BIN/kx_start_watch.exe" "$cls" "$(winpath "$program")" >"$work/watch.txt"
    line=$(tr -d '\r' <"$work/watch.txt")
    times+=("$(sed -E 's/.*startup_ms=([0-9.]+).*/\1/' <<<"$line")")
    # The program's own process: its command line starts with its path (the
    # watcher's names it only as an argument).
    pid=""
    for p in $(pgrep -f "$(basename "$program")"); do
      tr '\0' ' ' <"/proc/$p/cmdline" 2>/dev/null | grep -q "^[^ ]*$(basename "$program")" && pid=$p
    done
    linux_kb=$(awk '/^Private_(Clean|Dirty):/ { s += $2 } END { print s }' "/proc/$pid/smaps_rollup" 2>/dev/null || echo "?")
    wine "$BIN/kx_robot.exe" close --class "$cls" >/dev/null 2>&1 || true
    wine "$BIN/kx_robot.exe" wait-gone --class "$cls" --all --timeout 20 >/dev/null 2>&1 || true
  done
  local median
  median=$(printf '%s\n' "${times[@]}" | sort -n | awk '{ a[NR] = $1 } END { print (NR % 2 ? a[(NR + 1) / 2] : (a[NR / 2] + a[NR / 2 + 1]) / 2) }')
  printf '%s: start-up median %s ms over %s runs (%s); private memory %s KiB\n' \
    "$label" "$median" "$RUNS" "${times[*]}" "$linux_kb"
  echo "$median" >"$work/$label.median"
}

measure empty KxEmptyWindow "$work/empty_window.exe"
measure kestrelix KestrelixMainWindow "$work/app/Kestrelix.exe"
awk -v e="$(cat "$work/empty.median")" -v k="$(cat "$work/kestrelix.median")" \
  'BEGIN { printf "Kestrelix over the empty program: %+.1f ms (ratio %.2f)\n", k - e, k / e }'

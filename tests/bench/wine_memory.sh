#!/usr/bin/env bash
# Benchmark by hand (not a pass/fail test): the idle private memory of a
# program's main window under Wine, next to an empty Win32 window program
# (empty_window.c, built here with mingw-w64):
#   scripts/wine-env bash tests/bench/wine_memory.sh TITLE PROGRAM.exe [ARGS...]
# TITLE is a regular expression for the title of the program's main window.
# Both programs are measured once their window is shown and they have been
# idle for a while, from /proc/PID/smaps_rollup of their Windows process.
set -euo pipefail
title=$1
program=$(realpath "$2")
shift 2
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
out=$(mktemp -d)
idle=${KX_IDLE_SECONDS:-5}
pids=()
trap 'kill "${pids[@]}" 2>/dev/null || true; rm -rf "$out"' EXIT

x86_64-w64-mingw32-gcc -O2 -s -mwindows "$here/empty_window.c" -o "$out/empty_window.exe"

. "$here/wine_procs.sh"

measure() {  # label, window title, exe, args...
  local label=$1 name=$2 exe=$3
  shift 3
  wine "$exe" "$@" >/dev/null 2>&1 &
  pids+=($!)
  local window=""
  for _ in $(seq 300); do
    window=$(xdotool search --onlyvisible --name "$name" 2>/dev/null | head -n1 || true)
    [ -n "$window" ] && break
    sleep 0.1
  done
  [ -n "$window" ] || { echo "$label: no window titled $name" >&2; return 1; }
  sleep "$idle"
  local pid
  pid=$(prefix_pids "$(basename "$exe")" | tail -n1)
  [ -n "$pid" ] || { echo "$label: its process was not found" >&2; return 1; }
  awk -v label="$label" -v size="$(stat -c %s "$exe")" '
    /^Rss:/ {rss = $2} /^Private_Clean:/ {clean = $2} /^Private_Dirty:/ {dirty = $2}
    END {printf "%-22s file %6.2f MB  private %6.1f MB (dirty %6.1f MB, clean %5.1f MB)  resident %6.1f MB\n",
         label, size / 1048576, (clean + dirty) / 1024, dirty / 1024, clean / 1024, rss / 1024}' \
    "/proc/$pid/smaps_rollup"
  kill "$pid" 2>/dev/null || true
  for _ in $(seq 50); do kill -0 "$pid" 2>/dev/null || break; sleep 0.1; done
}

measure "empty Win32 window" '^KxEmptyWindow$' "$out/empty_window.exe"
measure "$(basename "$program")" "$title" "$program" "$@"

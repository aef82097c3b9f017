# Shared helpers of the end-to-end tests. Each test runs inside scripts/wine-env
# (private display and Wine prefix) and is called as:
#   TEST BIN_DIR ARTIFACT_DIR
# BIN_DIR holds Kestrelix.exe and kx_target.exe; the test's files, logs and,
# when it fails, a screenshot of the display go under ARTIFACT_DIR/<test>.
set -euo pipefail

BIN=$1
E2E_NAME=$(basename "$0" .sh)
WORK=$2/$E2E_NAME
rm -rf "$WORK"
mkdir -p "$WORK"
E2E_PIDS=()

e2e_finish() {
  local status=$?
  if [ $status -ne 0 ]; then
    import -window root "$WORK/failure.png" 2>/dev/null || true
    echo "FAILED: $E2E_NAME (screenshot: $WORK/failure.png)" >&2
    for f in "$WORK"/*.log; do
      [ -f "$f" ] && { echo "--- $f" >&2; grep -v MOUSEMOVE "$f" | tail -40 >&2; }
    done
  fi
  for pid in "${E2E_PIDS[@]}"; do kill "$pid" 2>/dev/null || true; done
  exit $status
}
trap e2e_finish EXIT

fail() {
  echo "FAIL: $*" >&2
  exit 1
}

# The Windows form of a path on the Unix side (drive Z: is the root).
winpath() { printf 'Z:%s' "${1//\//\\}"; }

# Writes a macro file with CR LF line ends from its arguments, one per line.
write_macro() {
  local file=$1
  shift
  : >"$file"
  local first=1
  for line in "$@"; do
    [ $first -eq 1 ] || printf '\r\n' >>"$file"
    printf '%s' "$line" >>"$file"
    first=0
  done
}

# Starts the target program, logging to LOG, with an optional window title;
# waits until it is ready and sets TARGET_X, TARGET_Y to its client origin.
start_target() {
  local log=$1
  shift
  rm -f "$log"
  wine "$BIN/kx_target.exe" "$(winpath "$log")" "$@" >/dev/null 2>&1 &
  E2E_PIDS+=($!)
  for _ in $(seq 300); do
    grep -q '^ready' "$log" 2>/dev/null && break
    sleep 0.1
  done
  grep -q '^ready' "$log" 2>/dev/null || fail "target did not start"
  local origin
  origin=$(grep '^ready' "$log" | sed 's/.*client=//')
  TARGET_X=${origin%,*}
  TARGET_Y=${origin#*,}
}

# Runs Kestrelix.exe with the given arguments; fails after the time limit.
run_kestrelix() {
  local limit=$1
  shift
  timeout "$limit" wine "$BIN/Kestrelix.exe" "$@" >/dev/null 2>&1 || fail "Kestrelix.exe $* did not end well ($?)"
}

# The keyboard messages of a target log as "NAME:VK" words, one line.
key_messages() {
  grep -E 'msg=WM_(SYS)?KEY(DOWN|UP)' "$1" | sed -E 's/.*msg=WM_(SYS)?KEY(DOWN|UP)\tvk=([0-9]+).*/\2:\3/' | tr '\n' ' ' | sed 's/ $//'
}

expect_eq() {
  [ "$2" = "$3" ] || fail "$1: expected [$3], got [$2]"
}

# A setting.ini as text: the program creates it as UTF-16, a file written by
# hand stays in the encoding it had.
ini_text() {
  if [ "$(head -c2 "$1" | od -An -tx1 | tr -d ' ')" = fffe ]; then
    iconv -f UTF-16 -t UTF-8 "$1" | tr -d '\r'
  else
    tr -d '\r' <"$1"
  fi
}

shot() { import -window root "$WORK/$1.png" 2>/dev/null || true; }

# Like expect_eq on the output of a command, but waits up to 5 s for it: the
# target logs messages a moment after they were sent, later still under load.
await_eq() {
  local what=$1 expected=$2
  shift 2
  for _ in $(seq 50); do
    [ "$("$@")" = "$expected" ] && return 0
    sleep 0.1
  done
  expect_eq "$what" "$("$@")" "$expected"
}

# Prints the id of the first visible window whose title matches the pattern,
# waiting up to 20 s; prints nothing when none shows.
await_window() {
  local pattern=$1 found=""
  for _ in $(seq 200); do
    found=$(xdotool search --onlyvisible --name "$pattern" 2>/dev/null | head -n1 || true)
    [ -n "$found" ] && break
    sleep 0.1
  done
  printf '%s' "$found"
}

# Presses Return in the given window (a message box) and waits up to 10 s for
# the process to end.
dismiss_and_await_exit() {
  local box=$1 pid=$2
  xdotool windowfocus --sync "$box"
  xdotool key Return
  for _ in $(seq 100); do
    kill -0 "$pid" 2>/dev/null || return 0
    sleep 0.1
  done
  return 1
}

# The system clipboard's text, without carriage returns.
clip() { xclip -selection clipboard -o 2>/dev/null | tr -d '\r'; }

# Copies Notepad's whole text to the clipboard with a run of its own.
copy_notepad_text() {
  write_macro "$WORK/copyout.ksx" \
    "w notepad" \
    "keys ctrl+a" \
    "keys ctrl+c" \
    "300"
  run_kestrelix 60 "$(winpath "$WORK/copyout.ksx")"
}

. "$(dirname "${BASH_SOURCE[0]}")/robot.sh"

# Shell helpers around kx_robot.exe, sourced by lib.sh. Every helper takes the
# robot's own target options (--hwnd H, --class C, --title T, --title-re RE,
# --pid N, --exe NAME, --all, --ctl-class C, --ctl-id N, --ctl-text T,
# --ctl-text-re RE, --ctl-nth N); `robot --help` lists the commands.

# Runs kx_robot.exe with the given arguments; its exit status is the robot's.
robot() { wine "$BIN/kx_robot.exe" "$@"; }

# The value of KEY in the first record read from stdin. It reads all of its
# input, so that the robot never writes into a closed pipe.
robot_field() {
  awk -F'\t' -v key="$1=" 'NR == 1 {
    for (i = 2; i <= NF; i++) if (index($i, key) == 1) { print substr($i, length(key) + 1); break }
  }'
}

# Waits (10 s, or --timeout SEC among the arguments) for a window or control
# and prints its record; fails the test naming WHAT when it does not come.
robot_await() {
  local what=$1
  shift
  robot wait "$@" || fail "$what did not appear"
}

# Like robot_await, but prints only the handle (0x... hex).
robot_await_hwnd() {
  local record
  record=$(robot_await "$@") || exit 1
  robot_field hwnd <<<"$record"
}

# Waits for a window or control to go away; fails the test naming WHAT.
robot_await_gone() {
  local what=$1
  shift
  robot wait-gone "$@" || fail "$what is still there"
}

# Waits for the text of a control (or, with --part N, a status bar part) to
# equal EXPECTED; fails the test with the text it has instead.
robot_expect_text() {
  local what=$1 expected=$2
  shift 2
  robot wait-text --equals "$expected" "$@" >/dev/null ||
    fail "$what: expected [$expected], got [$(robot get-text "$@" 2>/dev/null)]"
}

# Waits for the text to contain PART; fails the test with the text it has.
robot_expect_text_contains() {
  local what=$1 part=$2
  shift 2
  robot wait-text --contains "$part" "$@" >/dev/null ||
    fail "$what: expected text with [$part], got [$(robot get-text "$@" 2>/dev/null)]"
}

# Kestrelix.exe started in the test's program folder $app, and closed again;
# the caller's array `main` holds the robot options that find its window.
start_app() {
  (cd "$app" && wine Kestrelix.exe >/dev/null 2>&1) &
  E2E_PIDS+=($!)
  robot_await "the main window" "${main[@]}" --timeout 30 >/dev/null
}
close_app() {
  robot close --all "${main[@]}" >/dev/null
  robot_await_gone "the main window" --all "${main[@]}" --timeout 30
}

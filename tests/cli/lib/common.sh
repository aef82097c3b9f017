# Shared start of the kx command-line tests, sourced by each:
#   TEST EMULATOR KX  (EMULATOR is empty natively)
# Sets emu, kx, a temporary folder dir removed at exit, fail, and
# check NAME EXPECTED ACTUAL, which reports a difference and sets fail.
set -u
emu=${1:+$(realpath "$1")}
kx=$(realpath "$2")
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
fail=0
check() { # name expected actual
  if [ "$2" != "$3" ]; then
    echo "FAIL: $1"; echo "  expected: $2"; echo "  actual:   $3"; fail=1
  fi
}

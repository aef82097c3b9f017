#!/usr/bin/env bash
# kx page: bad usage exits 2 without touching the network; the browser side
# is in tests/browser/.
source "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"
usage_error() { # name args...
  local name=$1; shift
  $emu "$kx" page "$@" >"$dir/out" 2>/dev/null
  check "$name: exit" 2 $?
  check "$name: no output" "" "$(cat "$dir/out")"
}
usage_error "no port" --dump
usage_error "port not a number" --port 92x2 --dump
usage_error "nothing to do" --port 9222
usage_error "two operations" --port 9222 --dump --ready
usage_error "set without a value" --port 9222 --set 3
usage_error "set with a bad index" --port 9222 --set -1 x
usage_error "check with a bad state" --port 9222 --check 3 yes
usage_error "submit with a bad index" --port 9222 --submit x
usage_error "unknown option" --port 9222 --frobnicate
exit $fail

#!/usr/bin/env bash
# kx --version and kx keynames: the version of the project, and the key-name
# list holding exactly the words of the vocabulary tables.
# Usage: keynames.sh EMULATOR KX  (EMULATOR is empty natively)
set -u
emu=${1:+$(realpath "$1")}
kx=$(realpath "$2")
root=$(cd "$(dirname "$0")/../.." && pwd)
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
fail=0
check() { # name expected actual
  if [ "$2" != "$3" ]; then
    echo "FAIL: $1"; echo "  expected: $2"; echo "  actual:   $3"; fail=1
  fi
}
cd "$dir" || exit 1

version=$(sed -n 's/^project(Kestrelix VERSION \([0-9.]*\) .*/\1/p' "$root/CMakeLists.txt")
check "version" "Kestrelix $version" "$($emu "$kx" --version | tr -d '\r')"

$emu "$kx" keynames list.txt >/dev/null 2>&1; check "keynames exit" 0 $?
python3 "$root/tests/package/package_check.py" "$root" --key-list list.txt || fail=1
$emu "$kx" keynames >/dev/null 2>&1; check "usage exit" 2 $?
$emu "$kx" keynames no/such/folder/list.txt >/dev/null 2>&1; check "unwritable exit" 1 $?

[ $fail -eq 0 ] && echo "keynames: all passed"
exit $fail

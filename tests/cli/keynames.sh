#!/usr/bin/env bash
# kx --version and kx keynames: the version of the project, and the key-name
# list holding exactly the words of the vocabulary tables.
# Usage: keynames.sh EMULATOR KX  (EMULATOR is empty natively)
. "$(dirname "$0")/lib/common.sh"
root=$(cd "$(dirname "$0")/../.." && pwd)
cd "$dir" || exit 1

version=$(sed -n 's/^project(Kestrelix VERSION \([0-9.]*\) .*/\1/p' "$root/CMakeLists.txt")
check "version" "Kestrelix $version" "$($emu "$kx" --version | tr -d '\r')"

$emu "$kx" keynames list.txt >/dev/null 2>&1; check "keynames exit" 0 $?
python3 "$root/tests/package/package_check.py" "$root" --key-list list.txt || fail=1
$emu "$kx" keynames >/dev/null 2>&1; check "usage exit" 2 $?
$emu "$kx" keynames no/such/folder/list.txt >/dev/null 2>&1; check "unwritable exit" 1 $?

[ $fail -eq 0 ] && echo "keynames: all passed"
exit $fail

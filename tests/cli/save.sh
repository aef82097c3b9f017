#!/usr/bin/env bash
# kx save writes UTF-8 with a byte-order mark, which decode reads back.
emulator=$1 kx=$2
data=$(cd "$(dirname "${BASH_SOURCE[0]}")/../data/text" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
status=0
target=$work/saved.ksx
[ -n "$emulator" ] && target=$(winepath -w "$target" 2>/dev/null | tr -d '\r')
printf 'old' >"$work/saved.ksx"
$emulator "$kx" save "$target" <"$data/japanese.utf8.txt" || { echo "save failed"; status=1; }
{ printf '\xEF\xBB\xBF'; cat "$data/japanese.utf8.txt"; } >"$work/expected"
if ! cmp -s "$work/saved.ksx" "$work/expected"; then
  echo "saved file is not UTF-8 with a byte-order mark"
  status=1
fi
got=$($emulator "$kx" detect "$target" | tr -d '\r')
[ "$got" = UTF8 ] || { echo "saved file detected as '$got'"; status=1; }
$emulator "$kx" decode "$target" >"$work/decoded"
cmp -s "$work/decoded" "$data/japanese.utf8.txt" || { echo "saved file reads back differently"; status=1; }
exit $status

#!/usr/bin/env bash
# kx decode prints every sample as the same UTF-8 text with CR LF line ends.
emulator=$1 kx=$2
data=$(cd "$(dirname "${BASH_SOURCE[0]}")/../data/text" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
status=0
for file in japanese.sjis.txt japanese.euc.txt japanese.jis.txt japanese.utf7.txt \
  japanese.utf8.txt japanese.utf8-mark.txt japanese.utf16.txt japanese.utf16-nomark.txt \
  japanese.lf.sjis.txt; do
  $emulator "$kx" decode "$data/$file" >"$work/out" || { echo "decode $file failed"; status=1; }
  if ! cmp -s "$work/out" "$data/japanese.utf8.txt"; then
    echo "decode $file differs from the expected text"
    status=1
  fi
done
exit $status

#!/usr/bin/env bash
# kx detect names the encoding of each sample file.
emulator=$1 kx=$2
data=$(cd "$(dirname "${BASH_SOURCE[0]}")/../data/text" && pwd)
status=0
err=$(mktemp)
trap 'rm -f "$err"' EXIT
detect() { $emulator "$kx" detect "$1" 2>"$err" | tr -d '\r'; }
while read -r file expected; do
  got=$(detect "$data/$file")
  # Under Wine a program started while several others start in the same
  # prefix now and then prints nothing at all; kx always prints an answer
  # for a readable file, so an empty one is asked once more.
  if [ -z "$got" ] && [ -n "$emulator" ]; then
    echo "detect $file: no output under Wine ($(head -c 200 "$err")); once more"
    got=$(detect "$data/$file")
  fi
  if [ "$got" != "$expected" ]; then
    echo "detect $file: expected $expected, got '$got' ($(head -c 200 "$err"))"
    status=1
  fi
done <<'LIST'
japanese.sjis.txt SJIS
japanese.euc.txt EUC
japanese.jis.txt JIS
japanese.utf7.txt UTF7
japanese.utf8.txt UTF8
japanese.utf8-mark.txt UTF8
japanese.utf16.txt UNICODE
japanese.utf16-nomark.txt UNICODE
LIST
if $emulator "$kx" detect "$data/no-such-file" >/dev/null 2>&1; then
  echo "detect of a missing file succeeded"
  status=1
fi
exit $status

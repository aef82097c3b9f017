#!/usr/bin/env bash
# kx eval: the type and stored text of a value, then the status-bar message
# and the last-error code when the evaluator set them.
# Usage: eval.sh EMULATOR KX   (EMULATOR may be empty)
emu=$1
kx=$2
failures=0

# check EXPECTED ARGS...: the output, \r stripped and lines joined by "|".
check() {
  local expected=$1
  shift
  local got
  got=$($emu "$kx" eval "$@" 2>&1 | tr -d '\r' | paste -sd '|' -)
  if [ "$got" != "$expected" ]; then
    echo "FAIL: kx eval $*"
    echo "  expected: $expected"
    echo "  got:      $got"
    failures=$((failures + 1))
  fi
}

tab=$'\t'
check "Double${tab}37" "1+2*3^2"
check "Boolean${tab}False" "1<2 AND 3<4"
check "Double${tab}-1" "REMINDER(7,2)"
check "Double${tab}-0.3" "FP(2.7)"
check "Double${tab}0.00001" "1/100000"
check "String${tab}ab1" '"ab"+1'
check "Double${tab}-6|lasterror${tab}3" "2*-3"
check "Empty${tab}|status${tab}計算中にエラーが発生しました。計算式を確認して下さい|lasterror${tab}2" "1+"
check "Double${tab}42" --var "#a=40" --var "#b=2" "#a+#b"
check "String${tab}2024/03/05" --now "2024/03/05 09:05:03" DATE
check "Date${tab}2031/12/24 23:59:58" --now "2031/12/24 23:59:58" NOW
check "String${tab}copied" --clipboard copied GETCLIP
check "Integer${tab}0" "unknown(3)"

if [ "$failures" -ne 0 ]; then
  echo "$failures kx eval check(s) failed"
  exit 1
fi
echo "kx eval: all checks passed"

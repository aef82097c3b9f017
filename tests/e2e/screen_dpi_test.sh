#!/usr/bin/env bash
# waitimage at 200% display scale: with Wine at 192 DPI, a picture saved at
# 96 DPI and shown at twice its size is found, and FoundX/FoundY give its
# centre in screen pixels. The DPI is changed in a copy of the prefix, so
# that no other test ever sees it.
. "$(dirname "$0")/lib.sh"

cp -a "$WINEPREFIX" "$WORK/prefix"
export WINEPREFIX=$WORK/prefix
trap 'status=$?; wineserver -k >/dev/null 2>&1; wineserver -w >/dev/null 2>&1; (exit $status); e2e_finish' EXIT
wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d 192 /f >/dev/null 2>&1
wine reg add 'HKCC\Software\Fonts' /v LogPixels /t REG_DWORD /d 192 /f >/dev/null 2>&1
wineserver -w

convert -seed 8 -size 40x40 plasma: -depth 8 -units PixelsPerInch -density 96 png24:"$WORK/icon.png"
convert "$WORK/icon.png" -scale 200% png24:"$WORK/icon200.png"
display -borderwidth 0 -geometry +700+400 "$WORK/icon200.png" &
E2E_PIDS+=($!)
info=""
for _ in $(seq 400); do
  info=$(xwininfo -name "ImageMagick: icon200.png" 2>/dev/null || true)
  grep -q 'IsViewable' <<<"$info" && break
  sleep 0.05
done
grep -q 'IsViewable' <<<"$info" || fail "ImageMagick did not show the picture"
x=$(sed -n 's/.*Absolute upper-left X: *//p' <<<"$info")
y=$(sed -n 's/.*Absolute upper-left Y: *//p' <<<"$info")

write_macro "$WORK/dpi.ksx" \
  "WaitImage $(winpath "$WORK/icon.png"),0,5000" \
  "<Switch>" "<Case True>" "#x = FoundX" "#y = FoundY" "copy #x,#y" \
  "<Case False>" "copy none" "</Switch>"
run_kestrelix 60 "$(winpath "$WORK/dpi.ksx")"
shot dpi
await_eq "centre of the picture shown at 200%" "$((x + 40)),$((y + 40))" clip

#!/usr/bin/env bash
# kx findimage and the screens of kx run --dry: a template found on a
# screenshot, at twice its size on a 192-DPI screen, on a monitor left of the
# primary; absent and unreadable images.
# Usage: findimage.sh EMULATOR KX  (EMULATOR is empty natively)
. "$(dirname "$0")/lib/common.sh"
run() { $emu "$kx" "$@" 2>/dev/null | tr -d '\r'; }
status() { $emu "$kx" "$@" >/dev/null 2>&1; echo $?; }

convert -seed 3 -size 200x120 plasma: -depth 8 png24:"$dir/screen.png"
convert -seed 4 -size 200x120 plasma: -depth 8 png24:"$dir/other.png"
convert "$dir/screen.png" -crop 16x16+150+40 +repage png24:"$dir/tpl.png"
convert -seed 5 -size 16x16 plasma: -depth 8 png24:"$dir/absent.png"
# The template at twice its size, as a 200% display shows a 96-DPI picture.
convert "$dir/tpl.png" -scale 200% png24:"$dir/big.png"
convert "$dir/other.png" "$dir/big.png" -geometry +60+30 -composite png24:"$dir/screen2x.png"
printf 'not an image' >"$dir/text.png"

check "found" "158,48" "$(run findimage "$dir/screen.png" "$dir/tpl.png")"
check "absent" "1" "$(status findimage "$dir/screen.png" "$dir/absent.png")"
check "unreadable" "2" "$(status findimage "$dir/screen.png" "$dir/text.png")"
check "missing" "2" "$(status findimage "$dir/screen.png" "$dir/nothing.png")"
check "bad variation" "2" "$(status findimage "$dir/screen.png" "$dir/tpl.png" --variation 300)"
check "scaled by the screen's DPI" "76,46" \
  "$(run findimage "$dir/screen2x.png" "$dir/tpl.png" --screen-dpi 192)"
check "not scaled at 96 DPI" "1" "$(status findimage "$dir/screen2x.png" "$dir/tpl.png")"

# Two monitors: the picture's monitor left of the primary, at negative x.
colour=$(convert "$dir/screen.png" -depth 8 -format '%[hex:u.p{10,10}]' info:)
printf 'waitimage %s,0,0\r\n#x = FoundX\r\n#y = FoundY\r\nwaitpixel -190,10,%s,0,0\r\n<switch>\r\n<case True>\r\n#p = FoundX\r\n</switch>\r\nwaitimage %s,0,0\r\n<switch>\r\n<case False>\r\n#a = 0\r\n</switch>' \
  "$dir/tpl.png" "$colour" "$dir/absent.png" >"$dir/m.ksx"
out=$(run run --dry --screen "$dir/other.png@0,0" --screen "$dir/screen.png@-200,0" "$dir/m.ksx" |
  grep '"ev":"var"' | sed 's/"t":[0-9]*,//' | tr -d '\n')
check "two monitors" '{"ev":"var","name":"#x","value":"-42"}{"ev":"var","name":"#y","value":"48"}{"ev":"var","name":"#p","value":"-190"}{"ev":"var","name":"#a","value":"0"}' "$out"
check "unreadable screen" "1" "$(status run --dry --screen "$dir/text.png@0,0" "$dir/m.ksx")"
exit $fail

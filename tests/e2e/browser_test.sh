#!/usr/bin/env bash
# browser lines against this machine's Chromium, started through a .cmd file
# set as the Browser option (Wine runs Linux programs with "start /unix"):
# the first browser line starts the browser with its port, profile and flags,
# pw logs in on the page it opened and the GET form's result shows both
# values; a second browser line opens a second tab (an address with Japanese
# text and a blank) and ip fills its form with Japanese text there, leaving
# the first tab alone. Then, with no browser on the port and Browser naming a
# missing file, the line gives False at once and the status bar says why.
. "$(dirname "$0")/lib.sh"
# Linux programs the browser's stand-in starts need the whole path.
WORK=$(cd "$WORK" && pwd)

main=(--class KestrelixMainWindow)
editor=("${main[@]}" --ctl-class Edit --ctl-id 1)
status=("${main[@]}" --ctl-class msctls_statusbar32)
app=$WORK/app
pages=$WORK/pages
# Apart from the browser tests' ports, which the system picks.
devtools_port=19731
command -v chromium >/dev/null || fail "chromium is not installed (scripts/setup)"

mkdir -p "$app/Macro" "$pages"
cp "$BIN/Kestrelix.exe" "$app/"
src_pages=$(cd "$(dirname "$0")/../browser/pages" && pwd)
cp "$src_pages"/login.html "$src_pages"/result.html "$pages/"
cp "$src_pages/login.html" "$pages/ページ 二.html"

# The pages of the second tab come from a web server on the loopback address.
http_port=$(python3 -c 'import socket; s=socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])')
python3 -m http.server "$http_port" --bind 127.0.0.1 --directory "$pages" >"$WORK/http.log" 2>&1 &
E2E_PIDS+=($!)

# The stand-in for a Windows browser: logs its arguments, turns the Windows
# profile folder and file address into Linux ones and runs Chromium on the
# virtual display.
cat >"$WORK/chromium.sh" <<SH
#!/usr/bin/env bash
printf '%s\n' "\$@" >>"$WORK/launch.args"
out=()
for a in "\$@"; do
  case \$a in
    --user-data-dir=Z:*) p=\${a#--user-data-dir=Z:}; out+=("--user-data-dir=\${p//\\\\//}") ;;
    file:///Z:/*) out+=("file:///\${a#file:///Z:/}") ;;
    *) out+=("\$a") ;;
  esac
done
echo \$\$ >"$WORK/chromium.pid"
exec chromium --no-sandbox --disable-gpu --password-store=basic --window-position=0,0 \
  --window-size=1000,760 "\${out[@]}" >"$WORK/chromium.log" 2>&1
SH
printf '@start /unix /usr/bin/bash %s %%*\r\n' "$WORK/chromium.sh" >"$app/chromium.cmd"

write_ini() {
  { printf '\xff\xfe'; printf '[Macro]\r\n%s' "$1" | iconv -f UTF-8 -t UTF-16LE; } >"$app/setting.ini"
}
play() { # lines...
  local text="" line
  for line in "$@"; do text+="${text:+$'\r\n'}$line"; done
  robot set-text "${editor[@]}" -- "$text" >/dev/null
  robot click "${main[@]}" --ctl-text 再生 >/dev/null
}
# The message box a macro line shows; dismissed once seen.
await_box() { # text seconds
  robot wait --class '#32770' --ctl-text "$1" --timeout "$2" >/dev/null && return 0
  echo "status bar: $(robot get-text "${status[@]}" 2>/dev/null)" >&2
  echo "boxes: $(robot controls --class '#32770' --all 2>/dev/null | grep -o 'text=[^	]*' | tr '
' ' ')" >&2
  echo "tabs: $(curl -s -m 5 "http://127.0.0.1:$devtools_port/json/list" | grep -E '"(url|type)"' | tr -d ' 
')" >&2
  fail "the message [$1] did not appear"
}
dismiss_box() {
  robot close --class '#32770' --all >/dev/null
  robot_await_gone "the message box" --class '#32770' --all --timeout 10
}
# The query of the first tab whose address begins with PREFIX, as JSON.
tab_query() { # prefix
  python3 - "$devtools_port" "$1" <<'PY'
import json, sys, urllib.parse, urllib.request
tabs = json.load(urllib.request.urlopen(f"http://127.0.0.1:{sys.argv[1]}/json/list", timeout=5))
for t in tabs:
    if t["type"] == "page" and t["url"].startswith(sys.argv[2]):
        q = urllib.parse.parse_qs(urllib.parse.urlsplit(t["url"]).query, keep_blank_values=True)
        print(json.dumps({k: v[0] for k, v in q.items()}, ensure_ascii=False, sort_keys=True))
        break
PY
}
stop_chromium() {
  local pid
  pid=$(cat "$WORK/chromium.pid" 2>/dev/null || true)
  [ -n "$pid" ] || return 0
  kill "$pid" 2>/dev/null || true
  for _ in $(seq 100); do kill -0 "$pid" 2>/dev/null || break; sleep 0.1; done
  kill -KILL "$pid" 2>/dev/null || true
  rm -f "$WORK/chromium.pid"
}
trap 'rc=$?; stop_chromium; (exit $rc) || e2e_finish; e2e_finish' EXIT

# --- logging in and filling forms, as a user's macro does it ----------------
write_ini "Browser=$(winpath "$app/chromium.cmd")"$'\r\n'"DevToolsPort=$devtools_port"$'\r\n'"BrowserWaitMs=90000"$'\r\n'
start_app
login="file:///Z:$pages/login.html"
second="http://127.0.0.1:$http_port/ページ 二.html"
play "'ログインしてフォームに入力する" \
  "browser $login" \
  "<Switch>" \
  "  <Case False>" \
  "    msgbox ログインページを開けませんでした" \
  "    <Pause>" \
  "</Switch>" \
  "pw user,秘密,chrome" \
  "waitweb" \
  "browser $second" \
  "ip user=山田 太郎 / note=日本語の\\n二行,1,chrome" \
  "waitweb" \
  "msgbox 入力しました"
await_box 入力しました 150
shot browser_done
expect_eq "the browser's arguments" "$(tr '\n' ' ' <"$WORK/launch.args")" \
  "--remote-debugging-port=$devtools_port --user-data-dir=$(winpath "$app/BrowserProfile") --no-first-run --no-default-browser-check $login "
[ -d "$app/BrowserProfile" ] || fail "no BrowserProfile beside the program"
expect_eq "pw's login, as the result page's address shows it" \
  "$(tab_query "file:///")" '{"note": "", "pass": "秘密", "token": "t-1", "user": "user"}'
expect_eq "ip's form on the second tab" "$(tab_query "http://127.0.0.1:$http_port/result.html")" \
  '{"note": "日本語の\r\n二行", "pass": "", "token": "t-1", "user": "山田 太郎"}'
grep -q "GET /%E3%83%9A%E3%83%BC%E3%82%B8%20%E4%BA%8C.html" "$WORK/http.log" ||
  fail "the second tab's address did not reach the server: $(cat "$WORK/http.log")"
dismiss_box

# --- no browser on the port, and Browser names a missing file ----------------
stop_chromium
close_app
write_ini "Browser=Z:\\nowhere\\chromium.cmd"$'\r\n'"DevToolsPort=$devtools_port"$'\r\n'
start_app
started=$(date +%s)
play "browser $second" "<Switch>" "<Case False>" "msgbox 開けませんでした" "</Switch>"
# The reason stays five seconds: it is read while the box is on its way.
robot_expect_text_contains "the reason in the status bar" "ブラウザが見つかりません: Z:\\nowhere\\chromium.cmd" "${status[@]}"
shot browser_missing
await_box 開けませんでした 30
[ $(($(date +%s) - started)) -lt 30 ] || fail "the missing browser took $(($(date +%s) - started)) s"
dismiss_box
close_app

#!/usr/bin/env bash
# kx page against a real headless Chromium on the loopback address: fills a
# login form, submits it and reads the submitted values back through the
# DevTools port; then the bad cases (no browser on the port, a page without
# the fields, a hung page, a browser that closes mid-command) each end with a
# failure exit in bounded time.
#   chromium_page.sh EMULATOR KX   (EMULATOR is empty natively)
source "$(dirname "${BASH_SOURCE[0]}")/../cli/lib/common.sh"
set -o pipefail
pages=$(cd "$(dirname "${BASH_SOURCE[0]}")/pages" && pwd)
browsers=()
cleanup() {
  for pid in "${browsers[@]}"; do kill -KILL "$pid" 2>/dev/null; wait "$pid" 2>/dev/null; done
  rm -rf "$dir"
}
trap cleanup EXIT
# A kx call that outlives this many seconds counts as a hang.
hang_limit=30
# Bounds in milliseconds for the bad cases; under an emulator each call also
# pays for starting it. A closed browser must end a call well under the
# call's own 5 s time-out.
no_browser_limit=10000 hung_limit=15000 closed_limit=4000
[ -z "$emu" ] || no_browser_limit=20000 hung_limit=30000 closed_limit=4500
page() { timeout "$hang_limit" $emu "$kx" page --port "$port" "$@" | tr -d '\r'; }
now_ms() { date +%s%3N; }
# Polls COMMAND... every 0.1 s until it succeeds, for at most SECONDS.
wait_for() { # seconds command...
  local end=$(($(date +%s) + $1)); shift
  until "$@"; do
    [ "$(date +%s)" -lt "$end" ] || return 1
    sleep 0.1
  done
}
# The index of the first element with that name in a --dump list on stdin.
index_of() {
  python3 -c 'import json,sys
names=[e["name"] for e in json.load(sys.stdin)]
print(names.index(sys.argv[1]) if sys.argv[1] in names else -1)' "$1"
}
# The value of the first element with that name in a --dump list on stdin.
value_of() {
  python3 -c 'import json,sys
for e in json.load(sys.stdin):
    if e["name"] == sys.argv[1]: print(json.dumps([e["value"], e["checked"]])); break' "$1"
}

command -v chromium >/dev/null || { echo "FAIL: chromium is not installed (scripts/setup)"; exit 1; }
sandbox=()
[ "$(id -u)" -ne 0 ] || sandbox=(--no-sandbox)

# Starts a headless browser on a free loopback port showing URL; sets port
# and browser.
start_browser() { # url
  local profile
  profile=$(mktemp -d "$dir/profile.XXXX")
  chromium --headless "${sandbox[@]}" --disable-gpu --no-first-run --no-default-browser-check \
    --remote-debugging-address=127.0.0.1 --remote-debugging-port=0 --user-data-dir="$profile" \
    "$1" >"$profile.log" 2>&1 &
  browser=$!
  browsers+=("$browser")
  # The browser writes the port it chose once it listens.
  if ! wait_for 60 test -s "$profile/DevToolsActivePort"; then
    echo "FAIL: chromium did not start"; cat "$profile.log"; exit 1
  fi
  port=$(head -n 1 "$profile/DevToolsActivePort")
  wait_for 30 python3 -c "import urllib.request; urllib.request.urlopen('http://127.0.0.1:$port/json/version', timeout=2)" ||
    { echo "FAIL: no DevTools answer on port $port"; exit 1; }
}
ready_on() { # name of a field the page must show
  [ "$(page --ready)" = complete ] && [ "$(page --dump | index_of "$1")" != -1 ]
}

# --- filling and submitting a login form
start_browser "file://$pages/login.html"
wait_for 30 ready_on user || { echo "FAIL: the login page did not load"; exit 1; }
list=$(page --dump)
user=$(index_of user <<<"$list") pass=$(index_of pass <<<"$list")
note=$(index_of note <<<"$list") remember=$(index_of remember <<<"$list")
page --set "$user" abc; check "set user" 0 $?
page --set "$pass" 'x"y z'; check "set pass" 0 $?
page --set "$note" $'a\nb 日本語'; check "set note" 0 $?
page --check "$remember" 1; check "check remember" 0 $?
list=$(page --dump)
check "user read back" '["abc", false]' "$(value_of user <<<"$list")"
check "pass read back" '["x\"y z", false]' "$(value_of pass <<<"$list")"
check "note read back" '["a\nb \u65e5\u672c\u8a9e", false]' "$(value_of note <<<"$list")"
check "remember read back" '["yes", true]' "$(value_of remember <<<"$list")"
check "hidden field untouched" '["t-1", false]' "$(value_of token <<<"$list")"
check "the page saw the input event" '"typed abc"' "$(page --eval document.title)"
page --submit 1; check "submit form 1" 0 $?
wait_for 30 ready_on got_user || { echo "FAIL: the form was not submitted"; exit 1; }
list=$(page --dump)
check "submitted user" '["abc", false]' "$(value_of got_user <<<"$list")"
check "submitted pass" '["x\"y z", false]' "$(value_of got_pass <<<"$list")"
check "submitted note" '["a\nb \u65e5\u672c\u8a9e", false]' "$(value_of got_note <<<"$list")"
check "submitted checkbox" '["yes", false]' "$(value_of got_remember <<<"$list")"
check "submitted hidden field" '["t-1", false]' "$(value_of got_token <<<"$list")"

# --- the form an element belongs to
page --eval "location.replace('login.html')" >/dev/null
wait_for 30 ready_on q || { echo "FAIL: the login page did not load again"; exit 1; }
q=$(page --dump | index_of q)
page --set "$q" kestrel; check "set q" 0 $?
page --submit-of "$q"; check "submit the form of q" 0 $?
wait_for 30 ready_on got_q || { echo "FAIL: the search form was not submitted"; exit 1; }
check "submitted q" '["kestrel", false]' "$(page --dump | value_of got_q)"

# --- a page without the fields: every write fails, nothing changes
page --eval "location.replace('empty.html')" >/dev/null
wait_for 30 ready_on "" || { echo "FAIL: the empty page did not load"; exit 1; }
before=$(page --dump)
page --set 99 x; check "set beyond the elements" 1 $?
page --set 0 x; check "set on the html element" 1 $?
page --check 1 1; check "check on the head element" 1 $?
page --submit 0; check "submit without a form" 1 $?
page --submit-of 2; check "submit-of outside a form" 1 $?
check "the page is unchanged" "$before" "$(page --dump)"

# --- no browser on the port
port=$(python3 -c 'import socket; s=socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])')
t0=$(now_ms)
out=$(page --dump); status=$?
check "no browser: failure exit" 1 $status
check "no browser: no output" "" "$out"
[ $(($(now_ms) - t0)) -lt $no_browser_limit ] || { echo "FAIL: no browser took $(($(now_ms) - t0)) ms"; fail=1; }
port=$(head -n 1 "$dir"/profile.*/DevToolsActivePort)

# --- a page that never answers: the call's time-out ends it
t0=$(now_ms)
page --eval 'while (true) {}' >/dev/null; status=$?
elapsed=$(($(now_ms) - t0))
check "hung page: failure exit" 1 $status
[ $elapsed -lt $hung_limit ] || { echo "FAIL: a hung page took $elapsed ms"; fail=1; }

# --- the browser closes while a command waits for its reply
$emu "$kx" page --port "$port" --eval 'while (true) {}' >/dev/null 2>&1 &
waiting=$!
connected() { ss -Htnp state established "( dport = :$port )" | grep -q "pid=$waiting,"; }
wait_for 10 connected || { echo "FAIL: kx did not connect"; fail=1; }
# (Quiet: the shell would report the browser's death on its error output.)
{
  t0=$(now_ms)
  kill -KILL "$browser"
  wait "$waiting"; status=$?
  elapsed=$(($(now_ms) - t0))
  wait "$browser"
} 2>/dev/null
check "browser closed: failure exit" 1 $status
# Well under the call's time-out: the closed connection ends the wait.
[ $elapsed -lt $closed_limit ] || { echo "FAIL: kx took $elapsed ms after the browser closed"; fail=1; }
exit $fail

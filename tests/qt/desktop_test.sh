#!/usr/bin/env bash
# Starts the desktop client on an X display of its own, makes an export by mouse and keyboard, and looks at
# the exported directory. With "managed" a window manager frames the windows, gives them the focus and stacks
# them, as on a person's screen; without, the client is on its own. Skipped (77) where a tool is missing.
# usage: desktop_test.sh BIN_DIRECTORY EXAMPLE_MODEL [managed]
set -euo pipefail

bin=$1
model=$2
managed=${3:-}
for tool in Xvfb xdotool ${managed:+openbox}; do
  command -v "$tool" >/dev/null || { echo "no $tool here"; exit 77; }
done

work=$(mktemp -d)
pids=()
finish() {
  status=$?
  if [ "$status" -ne 0 ] && command -v import >/dev/null && [ -n "${TESSEL_TEST_PICTURES:-}" ]; then
    import -window root "$TESSEL_TEST_PICTURES/desktop-test.png" || true
  fi
  for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
  wait 2>/dev/null || true
  rm -rf "$work"
  exit "$status"
}
trap finish EXIT

fail() {
  { echo "FAILED: $*"; cat "$work/client.log"; } >&2
  exit 1
}

# The display picks its own number.
mkfifo "$work/display"
Xvfb -displayfd 3 -screen 0 1280x900x24 -nolisten tcp 3>"$work/display" 2>/dev/null &
pids+=($!)
read -r number <"$work/display"
export DISPLAY=":$number" QT_QPA_PLATFORM=xcb QT_SCALE_FACTOR=1 LC_ALL=C.UTF-8
export XDG_CONFIG_HOME=$work/config XDG_DATA_HOME=$work/data XDG_RUNTIME_DIR=$work/run TESSEL_DRIVES=$work/drives
mkdir -m 700 "$XDG_RUNTIME_DIR"
mkdir "$TESSEL_DRIVES"
if [ -n "$managed" ]; then
  openbox >"$work/openbox.log" 2>&1 &
  pids+=($!)
  # Windows that are there before it may be left without a frame on the screen.
  for _ in $(seq 100); do
    xdotool get_desktop >/dev/null 2>&1 && break
    sleep 0.1
  done
fi

"$bin/tessel" host create "$work/company.db" "$model"
"$bin/tessel-client" "$work/company.db" --user ben >"$work/client.log" 2>&1 &
client=$!
pids+=("$client")

# The visible windows of a title; the newest page is the one that was not there before.
windows() { xdotool search --onlyvisible --name "$1" 2>/dev/null || true; }
wait_for() { # title, window that it must not be
  for _ in $(seq 300); do
    for id in $(windows "$1"); do
      [ "$id" = "${2:-}" ] || { echo "$id"; return 0; }
    done
    kill -0 "$client" 2>/dev/null || fail "the client has ended"
    sleep 0.1
  done
  fail "no window $1"
}
key() { sleep 0.3; xdotool key --clearmodifiers "$@"; }
type() { sleep 0.3; xdotool type --delay 20 "$1"; }
# A click into the window at a place in twips, as the pages are designed.
click() { # window, left, top
  sleep 0.3
  xdotool mousemove --window "$1" $(($2 / 15)) $(($3 / 15)) click 1
}

# What has the keyboard, by title; a window manager decides it, without one the test does.
expect_focus() {
  [ -n "$managed" ] || return 0
  for _ in $(seq 50); do
    [ "$(xdotool getactivewindow getwindowname 2>/dev/null || true)" = "$1" ] && return 0
    sleep 0.1
  done
  fail "not $1 has the focus"
}
place() { xdotool getwindowgeometry --shell "$1" | grep -E '^(X|Y|WIDTH|HEIGHT)=' | tr '\n' ' '; }

title='WENDELAU - Pelicore'
main=$(wait_for "$title")
[ -n "$managed" ] || xdotool windowfocus "$main"
expect_focus "$title"
key ctrl+f
type 'A-1000'
key Return
if [ -n "$managed" ]; then
  key alt+o  # the menu of the documents
  key c      # Collect
else
  key F7
fi
key ctrl+f  # the keys of the actions work from the search, too
key F8

start=$(wait_for '^Kestrix$')
expect_focus Kestrix
key Return
mode=$(wait_for '^Kestrix$' "$start")
if [ -n "$managed" ]; then
  xdotool windowmove --sync "$mode" 120 90
  moved=$(place "$mode")
fi
click "$mode" 225 487          # Mail
click "$mode" 5800 4750        # Next
data=$(wait_for '^Kestrix$' "$mode")
if [ -n "$managed" ]; then
  [ "$(place "$data")" = "$moved" ] || fail "the next page is at $(place "$data"), not at $moved"
  click "$data" 600 4750       # Back
  again=$(wait_for '^Kestrix$' "$data")
  [ "$(place "$again")" = "$moved" ] || fail "the page before is at $(place "$again"), not at $moved"
  click "$again" 5800 4750
  data=$(wait_for '^Kestrix$' "$again")
fi
click "$data" 120 4280         # Copy all
click "$data" 5800 4750        # Process
for _ in $(seq 100); do
  copied=$(find "$TESSEL_DRIVES" -path '*@@_ben_*' -type f | wc -l)
  [ "$copied" -ge 14 ] && break
  sleep 0.1
done
[ "$copied" -ge 14 ] || fail "only $copied files were copied"
sleep 1.5                      # the pauses of the copy
key Return
recipients=$(wait_for '^Kestrix$' "$data")
click "$recipients" 900 720    # the first company
click "$recipients" 4200 720   # her first contact person
click "$recipients" 360 3330   # >>
expect_focus Kestrix
click "$recipients" 5800 4750  # Send
mail=$(wait_for '^Kestrix$' "$recipients")
click "$mail" 3000 1350        # Subject
type 'Gearbox'
key Tab
type 'Enclosed'
click "$mail" 5800 4750        # Send

for _ in $(seq 150); do
  exported=$(find "$TESSEL_DRIVES" -type d -name 'Export_ben_*_New')
  [ -n "$exported" ] && break
  sleep 0.1
done
[ -n "$exported" ] || fail "nothing was exported"
report=$(wait_for '^Export - Pelicore$')
[ -n "$managed" ] || xdotool windowfocus "$report"
key Return
for _ in $(seq 50); do
  [ -z "$(windows '^Kestrix$')" ] && break
  sleep 0.1
done
[ -z "$(windows '^Kestrix$')" ] || fail "a page is still open"

files=$(find "$exported" -type f -printf '%f\n' | sort)
echo "$files"
[ "$(echo "$files" | grep -c '\.stp$\|\.pdf$\|\.txt$')" -eq 14 ] || fail "not all documents are there"
for name in Kestrix_Data.xml Kestrix_Structure.xml; do
  echo "$files" | grep -qx "$name" || fail "no $name"
done
grep -q 'Gearbox' "$exported/Kestrix_Data.xml" || fail "the subject is missing"
grep -q 'p.brandt@koernwald.example' "$exported/Kestrix_Data.xml" || fail "the recipient is missing"

sleep 0.5
[ -n "$managed" ] || xdotool windowfocus "$main"
expect_focus "$title"
key ctrl+q
for _ in $(seq 50); do
  kill -0 "$client" 2>/dev/null || break
  sleep 0.1
done
kill -0 "$client" 2>/dev/null && fail "the client does not quit"
grep -q 'company.db' "$XDG_CONFIG_HOME"/tessel/tessel-client.conf || fail "the database was not remembered"
echo "exported by hand: $(echo "$files" | wc -l) files"

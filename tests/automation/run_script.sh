#!/usr/bin/env bash
# run_script.sh BIN SYSTEM TOP NAME: runs NAME.vbs behind checks.vbs and the hooks of docs/windows.md in Wine's script
# engine. Its status is 0 for a script that fails as well, so a script has passed only when it ends with 42 and says
# how many checks it made. A script called planted_... must not pass.
set -uo pipefail
bin=$1 system=$2 top=$3 name=$4
here=$(dirname "$0")
work=$(mktemp -d /tmp/tessel-script-XXXXXX)
# Message boxes are closed as they come.
wine "$bin/page_hand.exe" '{BOXES}' </dev/null >/dev/null 2>&1 &
hand=$!
trap 'kill $hand; rm -rf "$work"' EXIT

# The engine reads the ANSI code page; the scripts are plain ASCII.
{
  cat "$here/checks.vbs"
  sed -n '/^    Function /,/^    End Function/s/^    //p' "$top/docs/windows.md"
  cat "$here/$name.vbs"
} | sed 's/$/\r/' >"$work/script.vbs"
cp -r "$top/examples" "$work/examples"
mkdir "$work/drives"
cd "$work"
TESSEL_DRIVES=$work/drives timeout 120 wine "C:\\windows\\$system\\cscript.exe" //nologo script.vbs \
  "$work" "$bin" </dev/null >"$work/out" 2>&1
status=$?
tr -d '\r' <"$work/out"
passed=0
if [ $status = 42 ] && grep -q '^all of [1-9][0-9]* checks passed' "$work/out"; then passed=1; fi
echo "$name: status $status, passed: $passed"
case $name in
  planted_*) [ $passed = 0 ] ;;
  *) [ $passed = 1 ] ;;
esac

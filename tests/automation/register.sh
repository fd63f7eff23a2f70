#!/usr/bin/env bash
# register.sh BIN SYSTEM on|off: registers the two automation servers of BIN in this Wine, or takes them out again and
# fails when something of them is left in the registry. SYSTEM is system32 or syswow64, for the width.
set -euo pipefail
bin=$1 system=$2 wish=$3
for server in prjTessel pelicore; do
  options=(/s)
  [ "$wish" = on ] || options=(/u /s)
  wine "C:\\windows\\$system\\regsvr32.exe" "${options[@]}" "$bin/$server.dll"
done
left=$(wine reg query 'HKLM\Software\Classes' /s 2>/dev/null | grep -ciE 'prjTessel|pelicore' || true)
case $wish in
  on) [ "$left" != 0 ] || { echo "register.sh: nothing is registered" >&2; exit 1; } ;;
  off) [ "$left" = 0 ] || { echo "register.sh: $left lines are left in the registry" >&2; exit 1; } ;;
esac

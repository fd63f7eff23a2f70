#!/usr/bin/env bash
# A small project that breaks each rule of check-layers ($1) once: every fault has to be named, and nothing else.
set -euo pipefail
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
mkdir -p "$root"/cmake "$root"/src/{low,high} "$root"/tests "$root"/apps/program
cat >"$root"/cmake/layers.txt <<'LAYERS'
low:
high: low
apps/program: high
library soci/*: src/high
LAYERS
echo '#include "high/a.h"' >"$root"/src/low/up.cpp
echo '#include <soci/soci.h>' >"$root"/src/low/sql.h
echo '#include <unistd.h>' >"$root"/src/high/unlisted.h
printf '#include "high/b.h"\n#include <soci/soci.h>\n#include <vector>\n' >"$root"/src/high/a.h
echo '#include "low/sql.h"' >"$root"/src/high/b.h
echo '#include "high/a.h"' >"$root"/src/high/b.cpp
printf '#include "high/b.h"\n#include "low/sql.h"\n' >"$root"/apps/program/main.cpp
echo 'tessel_layer(low SOURCES up.cpp DEPENDS tessel_high)' >"$root"/src/low/CMakeLists.txt
echo 'tessel_layer(high SOURCES b.cpp DEPENDS tessel_low)' >"$root"/src/high/CMakeLists.txt
expected='layers: apps/program/main.cpp: "low/sql.h": apps/program may not see low
layers: circle of files: src/high/b -> src/high/a -> src/high/b
layers: src/high/unlisted.h: <unistd.h> is in no list of cmake/layers.txt
layers: src/low/CMakeLists.txt: low may not link tessel_high
layers: src/low/sql.h: <soci/soci.h> is for src/high alone
layers: src/low/up.cpp: "high/a.h": low may not see high'
if "$1" "$root" >"$root"/out 2>&1; then
  echo "no fault was found"
  exit 1
fi
diff <(echo "$expected") <(LC_ALL=C sort "$root"/out)

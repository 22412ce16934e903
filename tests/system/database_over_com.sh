#!/usr/bin/env bash
# Backup and restore of a real MariaDB server through the registered library, 32- and 64-bit.
set -euo pipefail
root=${KESTRELON_ROOT:-$(git rev-parse --show-toplevel)}
build=${KESTRELON_BUILD:-$root/build}
count=0
for bits in 32 64; do
  program=$build/win$bits/tests/database_over_com.exe
  if [ ! -e "$program" ]; then continue; fi
  # A prefix of its own: other tests restart theirs at will.
  export KESTRELON_PREFIX=$build/wine/prefix$bits-database
  "$root/scripts/wine$bits" regsvr32 /s "$build/win$bits/kestrelon2012.ocx"
  "$build/native/tests/with_mariadb" "$root/scripts/wine$bits" "$program"
  KESTRELON_WINE=server "$root/scripts/wine$bits" -k || true
  count=$((count + 1))
done
[ "$count" != 0 ]

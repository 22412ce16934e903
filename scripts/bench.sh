#!/usr/bin/env bash
# bench.sh: runs the benchmark programs, native ones first, then those that need Windows. Each prints its
# ratios to the peers measured in the same run.
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
# shellcheck source-path=SCRIPTDIR source=environment.sh
. "$here/environment.sh"

count=0
for program in "$build_root"/native-release/bench/*_bench; do
  if [ -x "$program" ]; then
    echo "== ${program##*/}"
    "$program"
    count=$((count + 1))
  fi
done
for program in "$build_root"/win32/bench/*_bench.exe; do
  if [ -e "$program" ]; then
    echo "== ${program##*/}, 32-bit under Wine"
    "$here/wine32" "$program"
    count=$((count + 1))
  fi
done
echo "$count benchmark programs"
[ "$count" != 0 ]

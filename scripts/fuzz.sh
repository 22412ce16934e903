#!/usr/bin/env bash
# fuzz.sh SECONDS: runs every fuzz target of build/native/fuzz for that long. What it learns stays in
# build/fuzz-corpus, an input that breaks something in build/fuzz-findings (copy it to tests/data/corpus/NAME
# with the fix).
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
# shellcheck source-path=SCRIPTDIR source=environment.sh
. "$here/environment.sh"

seconds=$1
failed=()
count=0
for source in "$source_root"/fuzz/*_fuzz.cpp; do
  name=$(basename "$source" _fuzz.cpp)
  seeds=$source_root/tests/data/corpus/$name
  learnt=$build_root/fuzz-corpus/$name
  findings=$build_root/fuzz-findings
  mkdir -p "$learnt" "$findings"
  options=(-max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -artifact_prefix="$findings/$name-")
  if [ -e "${source%.cpp}.dict" ]; then options+=(-dict="${source%.cpp}.dict"); fi
  if [ -d "$seeds" ]; then options+=("$seeds"); fi
  echo "== $name"
  # libFuzzer writes new inputs to the first folder and only reads the others.
  if ! nice "$build_root/native/fuzz/${name}_fuzz" "$learnt" "${options[@]}" >"$findings/$name.log" 2>&1; then
    failed+=("$name")
    tail -n 60 "$findings/$name.log"
  else
    tail -n 1 "$findings/$name.log"
  fi
  count=$((count + 1))
done
echo "$count fuzzed, ${#failed[@]} failed ${failed[*]}"
[ "$count" != 0 ] && [ ${#failed[@]} = 0 ]

#!/usr/bin/env bash
# Registers and unregisters both word sizes with regsvr32 in a scratch prefix; the classes part of the
# registry afterwards equals the one before. Per-user registration (regsvr32 /n /i:user) likewise.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."
build=${KESTRELON_BUILD:-$PWD/build}
failed=0

classes() { # BITS ROOT FILE: a part of the registry as sorted text
  "scripts/wine$1" reg export "$2" "$(winpath "$3")" /y >/dev/null 2>&1 || : >"$3"
  # The head of the file and the root itself are there or not as the system pleases.
  iconv -f UTF-16 -t UTF-8 "$3" 2>/dev/null | tr -d '\r' | grep -vE '^$|^Windows Registry|\\Classes]$' |
    sort >"$3.txt" || true
}

winpath() { echo "Z:${1//\//\\}"; }

for bits in 32 64; do
  library=$build/win$bits/kestrelon2012.ocx
  scratch=$(mktemp -d "$build/registration.XXXXXX")
  export KESTRELON_PREFIX=$scratch/prefix
  roots=(HKLM\\Software\\Classes HKCU\\Software\\Classes)
  for scope in machine user; do
    install=() ; remove=()
    [ "$scope" = machine ] || { install=(/n /i:user); remove=(/n /i:user); }
    for i in 0 1; do classes "$bits" "${roots[$i]}" "$scratch/before$i"; done
    "scripts/wine$bits" regsvr32 /s "${install[@]}" "$(winpath "$library")"
    for i in 0 1; do classes "$bits" "${roots[$i]}" "$scratch/between$i"; done
    "scripts/wine$bits" regsvr32 /s /u "${remove[@]}" "$(winpath "$library")"
    for i in 0 1; do classes "$bits" "${roots[$i]}" "$scratch/after$i"; done
    if ! grep -q 'Kestrelon2012.USCheckBox' "$scratch"/between?.txt; then
      echo "$bits-bit, $scope: nothing was registered"
      failed=1
    fi
    for i in 0 1; do
      if ! diff "$scratch/before$i.txt" "$scratch/after$i.txt"; then
        echo "$bits-bit, $scope: ${roots[$i]} differs after unregistering"
        failed=1
      fi
    done
  done
  KESTRELON_WINE=server "scripts/wine$bits" -k || true
  rm -rf "$scratch"
done
exit $failed

#!/usr/bin/env bash
# prefix.sh 32|64 [DIRECTORY [null|x11]]: makes a clean Wine prefix for programs of that word size, unless a
# current one stands there. Prefixes are copies of a template in the cache, so a scratch one takes a second.
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
# shellcheck source-path=SCRIPTDIR source=environment.sh
. "$here/environment.sh"

bits=$1
graphics=${3:-null}
prefix=$(realpath -m "${2:-$(prefix_path "$bits" "$graphics")}")
key=$({ cat "$here/prefix.sh" "$here/prefix.reg"; wine_version "$bits"; } | cksum | cut -d' ' -f1)
template=$cache_root/prefix$bits-$key
mkdir -p "$cache_root" "$(dirname "$prefix")"
exec 9>"$cache_root/prefix$bits.lock"
flock 9

run() { # run PREFIX PROGRAM...: without a display and without holding the lock
  KESTRELON_PREFIX=$1 KESTRELON_DISPLAY=null "$here/wine$bits" "${@:2}" 9>&-
}

stop() { # stop PREFIX: ends what runs there; the desktop reads its driver at its start, files are written out
  KESTRELON_WINE=server run "$1" -k || true
  KESTRELON_WINE=server run "$1" -w
}

make_template() {
  rm -rf "$template"
  mkdir -p "$template/drive_c/windows/Fonts"
  # Faces that Windows programs name; Wine finds them by the files here, whatever else the machine has.
  cp /usr/share/wine/fonts/*.ttf /usr/share/wine/fonts/*.fon "$template/drive_c/windows/Fonts/"
  touch "$template/.ready"
  run "$template" wineboot -i
  run "$template" regedit /S "$here/prefix.reg"
  stop "$template"
  echo "$key" >"$template/.ready"
}

if [ "$(cat "$prefix/.ready" 2>/dev/null)" = "$key" ]; then
  exit 0
fi
if [ "$(cat "$template/.ready" 2>/dev/null)" != "$key" ]; then
  echo "making the $bits-bit Wine prefix"
  if ! make_template >"$template.log" 2>&1; then
    cat "$template.log" >&2
    echo "$0: no $bits-bit Wine prefix could be made" >&2
    exit 1
  fi
fi
if [ -e "$prefix/.ready" ]; then stop "$prefix"; fi
rm -rf "$prefix"
cp -a --reflink=auto "$template" "$prefix"
if [ "$graphics" != null ]; then
  run "$prefix" reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d "$graphics" /f >/dev/null
  stop "$prefix"
fi

#!/usr/bin/env bash
# prefix.sh 32|64 [DIRECTORY [null|x11]]: makes a Wine prefix for programs of that word size, unless it stands.
# A prefix that stands can be copied with cp -a while nothing runs in it.
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
# shellcheck source=scripts/environment.sh
. "$here/environment.sh"

bits=$1
graphics=${3:-null}
prefix=${2:-$(prefix_path "$bits" "$graphics")}
mkdir -p "$(dirname "$prefix")"
exec 9>"$prefix.lock"
flock 9
if [ -e "$prefix/.ready" ]; then
  exit 0
fi

echo "making the Wine prefix $prefix"
rm -rf "$prefix"
mkdir -p "$prefix/drive_c/windows/Fonts"
# The metric-compatible faces of the platform, found by name whatever else the machine has.
cp /usr/share/wine/fonts/*.ttf /usr/share/wine/fonts/*.fon "$prefix/drive_c/windows/Fonts/"
touch "$prefix/.ready"
export KESTRELON_PREFIX=$prefix KESTRELON_DISPLAY=null
run=$here/wine$bits
"$run" wineboot -i 9>&-
"$run" regedit /S "$here/prefix.reg" 9>&-
if [ "$graphics" != null ]; then
  "$run" reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d "$graphics" /f >/dev/null 9>&-
fi
# The desktop process reads its driver at its start, so it is ended here.
KESTRELON_WINE=server "$run" -k 9>&- || true
KESTRELON_WINE=server "$run" -w 9>&-

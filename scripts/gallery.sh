#!/usr/bin/env bash
# gallery.sh: registers the 32-bit library in the prefix of the display, takes a picture of every page of the
# gallery (build/gallery/*.png) and, on a display, leaves the gallery open.
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
# shellcheck source-path=SCRIPTDIR source=environment.sh
. "$here/environment.sh"

shots=$build_root/gallery
shown=${DISPLAY:-}
if [ -z "$shown" ]; then
  exec 7< <(exec Xvfb -displayfd 1 -screen 0 1600x1200x24 -nolisten tcp 2>/dev/null)
  server=$!
  # What still runs in the prefix would only complain when its display goes.
  trap 'KESTRELON_WINE=server "$here/wine32" -k || true; kill "$server"' EXIT
  if ! read -r -t 30 display <&7; then
    echo "$0: Xvfb does not start" >&2
    exit 1
  fi
  export DISPLAY=:$display
fi
export KESTRELON_DISPLAY=x11

# Text as users' screens show it; the value is read when a program starts.
"$here/wine32" reg add 'HKCU\Control Panel\Desktop' /v FontSmoothingType /t REG_DWORD /d 2 /f >/dev/null
"$here/wine32" regsvr32 /s "$build_root/win32/kestrelon2012.ocx"
rm -rf "$shots"
mkdir -p "$shots"
timeout 300 "$here/wine32" "$build_root/win32/host/gallery.exe" --shot "$shots"
if ! compgen -G "$shots/*.png" >/dev/null; then
  echo "$0: the gallery left no picture in $shots" >&2
  exit 1
fi
printf '%s\n' "$shots"/*.png
if [ -n "$shown" ]; then
  "$here/wine32" "$build_root/win32/host/gallery.exe"
fi

#!/usr/bin/env bash
# Runs a Windows program in a prepared prefix: wine.sh 32|64 PROGRAM [ARGUMENT...]
# (call it as scripts/wine32 or scripts/wine64). Arguments, standard streams and the exit code pass through.
#
#   KESTRELON_PREFIX   a prefix directory of one's own; default build/wine/prefix32 or prefix64, made when missing
#   KESTRELON_DISPLAY  "x11": draw on $DISPLAY, in a prefix beside the default one; otherwise nothing is shown
#   KESTRELON_WINE     "server": runs wineserver with the arguments instead of a program
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
# shellcheck source-path=SCRIPTDIR source=environment.sh
. "$here/environment.sh"

bits=$1
shift
graphics=${KESTRELON_DISPLAY:-null}
prefix=${KESTRELON_PREFIX:-$(prefix_path "$bits" "$graphics")}
if [ "${KESTRELON_WINE:-}" != server ] && [ ! -e "$prefix/.ready" ]; then
  "$here/prefix.sh" "$bits" "$prefix" "$graphics" >&2
fi

export WINEPREFIX=$prefix WINEARCH=win$bits WINEDEBUG=${WINEDEBUG:--all}
# Neither a .NET nor an HTML engine is offered for download; nothing here uses them.
export WINEDLLOVERRIDES=${WINEDLLOVERRIDES:-mscoree,mshtml=}
# Only the fonts named here are seen, so that text measures the same on every machine.
export FONTCONFIG_FILE=$here/fonts.conf
# The user's locale in the prefix follows this: English, with a decimal point.
export LC_ALL=C.UTF-8
if [ "$graphics" = null ]; then
  unset DISPLAY WAYLAND_DISPLAY
fi

# Wine's own programs (regsvr32, cscript) take what begins with a slash for an option.
arguments=("$@")
if [[ ${1:-} != */* ]]; then
  for i in "${!arguments[@]}"; do
    if [[ ${arguments[i]} == /*/* && -e ${arguments[i]} ]]; then
      arguments[i]=Z:${arguments[i]//\//\\}
    fi
  done
fi

program=$(wine_program "$bits" "${KESTRELON_WINE:-loader}")
if [ "$bits" = 32 ] && [ "$(wine32_kind)" = root ]; then
  exec unshare --mount --propagation private -- "$here/in_root.sh" "$wine32_root" "$program" "${arguments[@]}"
fi
exec "$program" "${arguments[@]}"

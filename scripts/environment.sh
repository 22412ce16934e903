# shellcheck shell=bash disable=SC2034
# Where things are; sourced by the other scripts.

source_root=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
build_root=${KESTRELON_BUILD:-$source_root/build}
# Outlives the clone: the private 32-bit root and the templates of Wine prefixes.
if [ "$(id -u)" = 0 ]; then
  cache_root=${KESTRELON_CACHE:-/var/cache/kestrelon}
else
  cache_root=${KESTRELON_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/kestrelon}
fi
wine32_root=$cache_root/wine32

# prefix_path BITS GRAPHICS: the default prefix of that word size.
prefix_path() {
  if [ "$2" = null ]; then
    echo "$build_root/wine/prefix$1"
  else
    echo "$build_root/wine/prefix$1-$2"
  fi
}

# How 32-bit programs run here: "multiarch" (the distribution's i386 packages), "root" (a private i386 root)
# or "none".
wine32_kind() {
  if [ -x /usr/lib/wine/wine ] && [ -e /lib/ld-linux.so.2 ]; then
    echo multiarch
  elif [ -e "$wine32_root/.ready" ]; then
    echo root
  else
    echo none
  fi
}

# wine_program BITS loader|server: the program to start.
wine_program() {
  if [ "$2" = server ]; then
    if [ "$1" = 64 ]; then echo /usr/lib/wine/wineserver64; else echo /usr/lib/wine/wineserver32; fi
  elif [ "$1" = 64 ]; then
    echo /usr/lib/wine/wine64
  elif [ "$(wine32_kind)" = none ]; then
    echo "no 32-bit Wine here: run scripts/setup.sh" >&2
    return 1
  else
    echo /usr/lib/wine/wine
  fi
}

# wine_version BITS: changes with the Wine that runs programs of that word size.
wine_version() {
  local admin=/var/lib/dpkg arch=amd64
  if [ "$1" = 32 ]; then
    arch=i386
    if [ "$(wine32_kind)" = root ]; then admin=$wine32_root/var/lib/dpkg; fi
  fi
  dpkg-query --admindir="$admin" -W -f '${Version}\n' "libwine:$arch"
}

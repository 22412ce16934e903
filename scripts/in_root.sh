#!/usr/bin/env bash
# in_root.sh ROOT PROGRAM [ARGUMENT...]: runs a program of the private i386 root with this machine's files at
# their own paths. Called in a mount namespace of its own, so every mount goes away with the last process.
set -euo pipefail
root=$1
shift

bind() { # bind PATH: the same file or directory inside the root
  if [ "$1" -ef "$root$1" ]; then
    return
  fi
  if ! mount --rbind "$1" "$root$1"; then
    echo "$0: cannot bind $1; the private 32-bit Wine needs the right to mount" >&2
    exit 126
  fi
}

for path in /*; do
  case $path in
    # What makes the root an i386 system stays its own.
    /bin | /boot | /etc | /lib* | /sbin | /usr | /var) ;;
    *)
      if [ -d "$path" ] && [ ! -L "$path" ]; then
        mkdir -p "$root$path"
        bind "$path"
      fi
      ;;
  esac
done
for path in /etc/hosts /etc/resolv.conf; do
  if [ -f "$path" ] && [ -f "$root$path" ]; then bind "$path"; fi
done
# Source, prefix or working directory below one of the folders left out above.
for path in "$(dirname "$(dirname "$(readlink -f "$0")")")" "$WINEPREFIX" "$PWD"; do
  mkdir -p "$root$path"
  bind "$path"
done

# shellcheck disable=SC2016 # the inner shell expands these
exec chroot "$root" /bin/sh -c 'cd "$0" && exec "$@"' "$PWD" "$@"

#!/usr/bin/env bash
# setup.sh [GROUP...]: installs what is missing of the groups in scripts/packages (default: build wine test),
# 32-bit Wine included, and prepares both Wine prefixes. Asks nothing; does nothing where all is there.
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
# shellcheck source-path=SCRIPTDIR source=environment.sh
. "$here/environment.sh"
export DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8
if [ $# = 0 ]; then set -- build wine test; fi

say() { printf 'setup: %s\n' "$*"; }
fail() {
  say "$*" >&2
  exit 1
}

# apt WORDS...: apt-get without questions or upgrades of what is not asked for.
apt() {
  apt-get -qq -y --no-install-recommends -o DPkg::Lock::Timeout=900 -o Acquire::Retries=3 \
    -o Dpkg::Use-Pty=0 -o Dpkg::Options::=--force-confold "$@"
}

need_root() {
  if [ "$(id -u)" != 0 ]; then fail "to install $* this must run as root"; fi
}

# A package that brings a server starts it on installation; none is wanted here.
policy=/usr/sbin/policy-rc.d
forbid_servers() {
  if [ ! -e $policy ]; then
    trap 'rm -f $policy' EXIT
    printf '#!/bin/sh\nexit 101\n' >$policy
    chmod +x $policy
  fi
}

# missing GROUP...: the lines of the list of which no alternative is installed.
missing() {
  dpkg-query -W -f '${db:Status-Abbrev} ${Package}\n' | awk -v groups=" $* " '
    NR == FNR { if ($1 == "ii") have[$2] = 1; next }
    $1 !~ /^#/ && NF && index(groups, " " $1 " ") {
      found = 0
      n = split($2, names, "|")
      for (i = 1; i <= n; i++) if (names[i] in have) found = 1
      if (!found) print $2
    }' - "$here/packages"
}

# available ONE|OTHER: the first alternative that this release has.
available() {
  local name
  for name in ${1//|/ }; do
    if apt-cache show --no-all-versions "$name" >/dev/null 2>&1; then
      echo "$name"
      return
    fi
  done
  fail "no package $1 in this release"
}

install_quietly() {
  if ! apt install "$@" >"$cache_root/apt.log" 2>&1; then
    cat "$cache_root/apt.log" >&2
    fail "not installed: $*"
  fi
}

install_packages() {
  local wanted=() line
  mapfile -t wanted < <(missing "$@")
  if [ ${#wanted[@]} = 0 ]; then return; fi
  need_root "${wanted[*]}"
  say "installing ${wanted[*]}"
  # Lists that could be refreshed only in part still serve; the installation below decides.
  apt update || say "the package lists could not all be refreshed"
  local names=()
  for line in "${wanted[@]}"; do names+=("$(available "$line")"); done
  forbid_servers
  install_quietly "${names[@]}"
}

# The ordinary way to 32-bit Wine. Fails, and leaves the package system as it was, where the i386 packages
# cannot be had in the same versions as ours.
install_multiarch() {
  local added=
  if ! dpkg --print-foreign-architectures | grep -qx i386; then
    dpkg --add-architecture i386
    added=yes
  fi
  if apt update && apt --no-remove --simulate install wine32:i386 >/dev/null &&
    apt --no-remove install wine32:i386; then
    return 0
  fi
  if [ -n "$added" ] && dpkg --remove-architecture i386; then
    apt update || true
  fi
  return 1
}

# A small i386 system with Wine from the mirror that this machine's apt uses.
make_root() {
  local suite mirror partial=$wine32_root.partial
  suite=$(. /etc/os-release && echo "${VERSION_CODENAME:-}")
  # shellcheck disable=SC2016
  mirror=$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' 'Component: main' \
    "Codename: $suite" | awk '/^(https?|file):/ && !found { found = 1; print }')
  if [ -z "$mirror" ]; then fail "the apt sources name no mirror of $suite main"; fi
  if ! command -v debootstrap >/dev/null; then install_quietly debootstrap; fi
  eval "$(apt-config shell http_proxy Acquire::http::Proxy)"
  export http_proxy=${http_proxy:-}
  if grep -q " $partial/" /proc/mounts; then fail "$partial has mounts in it; unmount them first"; fi
  rm -rf --one-file-system "$partial"
  mkdir -p "$partial"
  say "making an i386 root with Wine in $wine32_root (about a minute)"
  if ! debootstrap --arch=i386 --variant=minbase --include=wine32,wine,libwine,fonts-wine,fonts-liberation \
    "$suite" "$partial" "$mirror" >"$cache_root/debootstrap.log" 2>&1; then
    tail -n 20 "$cache_root/debootstrap.log" >&2
    fail "debootstrap failed; its log is $cache_root/debootstrap.log"
  fi
  rm -rf "$partial"/var/cache/apt/archives/*.deb "$partial"/var/lib/apt/lists/*
  rm -rf --one-file-system "$wine32_root"
  mv "$partial" "$wine32_root"
  touch "$wine32_root/.ready"
}

install_wine32() {
  if [ "$(wine32_kind)" = none ]; then
    need_root "32-bit Wine"
    say "installing 32-bit Wine"
    if [ "${KESTRELON_WINE32:-}" = root ] || ! install_multiarch >"$cache_root/multiarch.log" 2>&1; then
      make_root
    fi
  fi
  case $(wine32_kind) in
    multiarch) say "32-bit Wine: the distribution's i386 packages" ;;
    root) say "32-bit Wine: a private i386 root in $wine32_root" ;;
  esac
}

# One set-up at a time; a second one finds everything done.
mkdir -p "$cache_root"
exec 8>"$cache_root/setup.lock"
flock 8

install_packages "$@"
for group in "$@"; do
  if [ "$group" = wine ]; then
    install_wine32
    "$here/prefix.sh" 32 8>&-
    "$here/prefix.sh" 64 8>&-
  fi
done

#!/usr/bin/env bash
# 32-bit Windows programs for a 64-bit Wine. Debian's 64-bit Wine runs them inside itself once it
# finds the Windows half of the i386 packages; installing those packages would drag in a whole
# second system. So the one folder that is needed is fetched and unpacked into the user's cache,
# with package lists of its own: the machine's package configuration stays as it is.
#
# Sourced, it gives use_wine32, which points Wine at that folder when it is there. Run as
# `wine32.sh PREFIX`, it fetches the folder when Wine has no 32-bit half, and proves with a program
# in that Wine prefix that it works; status 1 and a reason on standard error when it does not.

wine32_folder() {
  local cache=${XDG_CACHE_HOME:-~/.cache}
  echo "$cache/tqutil/wine-i386-$(dpkg-query -W -f '${Version}' libwine | tr -c 'A-Za-z0-9.\n' _)"
}

use_wine32() {
  local folder
  folder=$(wine32_folder)
  if [ -d "$folder/i386-windows" ]; then
    export WINEDLLPATH=$folder
  fi
}

fetch_wine32() {
  local folder=$1 work
  work=$(mktemp -d)
  # shellcheck disable=SC2064
  trap "rm -rf '$work'" EXIT
  mkdir -p "$work/state/lists/partial" "$work/cache/archives/partial" "$folder"
  local apt=(apt-get -qq -o APT::Architectures::=amd64 -o APT::Architectures::=i386
    -o Dir::State="$work/state" -o Dir::Cache="$work/cache" -o APT::Sandbox::User=
    -o Dir::State::status=/var/lib/dpkg/status)
  # A list that is out of step on the mirror must not hide the others.
  "${apt[@]}" update >"$work/log" 2>&1 || true
  (cd "$work" && "${apt[@]}" download "libwine:i386=$(dpkg-query -W -f '${Version}' libwine)") \
    >>"$work/log" 2>&1 || { tail -3 "$work/log" >&2; return 1; }
  dpkg-deb -x "$work"/libwine_*.deb "$work/unpacked"
  i686-w64-mingw32-strip --strip-debug "$work"/unpacked/usr/lib/i386-linux-gnu/wine/i386-windows/*
  mv "$work"/unpacked/usr/lib/i386-linux-gnu/wine/i386-windows "$folder/"
}

# Whether the machine's own Wine has the 32-bit half already.
has_wine32() {
  compgen -G '/usr/lib/*/wine/i386-windows/kernel32.dll' >/dev/null
}

# Compiles a program whose status is 42 and runs it: nothing less shows that the parts fit.
probe_wine32() {
  local prefix=$1 work status=0
  work=$(mktemp -d)
  echo 'int main(void) { return 42; }' >"$work/probe.c"
  i686-w64-mingw32-gcc-posix -o "$work/probe.exe" "$work/probe.c"
  "$scripts/wine_run.sh" "$prefix" "$work/probe.exe" || status=$?
  rm -rf "$work"
  [ "$status" = 42 ]
}

main() {
  set -euo pipefail
  scripts=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
  local prefix=$1 folder
  folder=$(wine32_folder)
  if ! has_wine32 && [ ! -d "$folder/i386-windows" ]; then
    fetch_wine32 "$folder" || { echo "the 32-bit half of Wine cannot be fetched" >&2; return 1; }
  fi
  probe_wine32 "$prefix" || { echo "Wine does not run a 32-bit program" >&2; return 1; }
}

if [ "${BASH_SOURCE[0]}" = "$0" ]; then
  main "$@"
fi

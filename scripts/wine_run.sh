#!/usr/bin/env bash
# Runs a Windows program through Wine with code page 932: wine_run.sh PREFIX PROGRAM [ARGUMENTS].
# PREFIX is a folder for Wine's registry and drives; it is made on first use. Programs that start
# together wait for the one that makes it.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$here/wine32.sh"

export WINEPREFIX=$1 WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES=${WINEDLLOVERRIDES:-mscoree,mshtml=}
shift
use_wine32

# Wine's status for a 32-bit program that it cannot load is 0, which would look like a passed test.
is_32bit() {
  local header
  header=$(od -An -tu4 -j60 -N4 "$1")
  [ "$(od -An -tx2 -j$((header + 4)) -N2 "$1" | tr -d ' ')" = 014c ]
}
if is_32bit "$1" && [ -z "${WINEDLLPATH:-}" ] && ! has_wine32; then
  echo "Wine has no 32-bit half here; scripts/wine32.sh $WINEPREFIX fetches it" >&2
  exit 1
fi

# Wine takes the code page from the locale's language, and the names of files on the Linux side from
# its character set: the UTF-8 locale gives 932 and keeps those names whole. Where the machine does
# not have that locale the prefix gets one of its own, from the package "locales".
japanese_wine() { env LC_ALL=ja_JP.UTF-8 wine "$@"; }
if ! locale -a | grep -qix 'ja_JP.utf-\?8'; then export LOCPATH=$WINEPREFIX/locale; fi

make_prefix() {
  if [ -n "${LOCPATH:-}" ]; then
    mkdir -p "$LOCPATH"
    localedef -i ja_JP -f UTF-8 "$LOCPATH/ja_JP.UTF-8"
  fi
  japanese_wine wineboot --update >/dev/null 2>&1
  wineserver --wait || true
  # Wine copies all its libraries with their debug information, more than a gigabyte.
  x86_64-w64-mingw32-strip --strip-debug "$WINEPREFIX"/drive_c/windows/system32/*.dll || true
}

# A prefix made without 32-bit support never gets it later, hence two marks; such a one is made anew.
made=$WINEPREFIX/.made${WINEDLLPATH:+32}
if [ ! -e "$made" ]; then
  mkdir -p "$WINEPREFIX"
  exec 9>"$WINEPREFIX/.lock"
  flock 9
  if [ ! -e "$made" ]; then
    if compgen -G "$WINEPREFIX/.made*" >/dev/null; then
      rm -rf "$WINEPREFIX"/{.made*,.update-timestamp,*.reg,drive_c,dosdevices}
    fi
    # The lock ends with this script, not with Wine's server that outlives it.
    make_prefix 9>&-
    touch "$made"
  fi
  exec 9>&-
fi
japanese_wine "$@"

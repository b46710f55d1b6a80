#!/usr/bin/env bash
# Takes docs/images/dialog-*.png: the 64-bit build of the dialogs under Wine, on a screen of its own, in a
# Japanese font. Debian packages besides those of the win64 build: xvfb x11-apps xdotool imagemagick
# fonts-ipafont-gothic.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/prerequisites.sh

ensure_packages $(packages_for win64) xvfb xauth x11-apps xdotool imagemagick fonts-ipafont-gothic

cmake --preset win64 >/dev/null
cmake --build --preset win64 --target show_dialogs >/dev/null
prefix=$PWD/build/win64/wine-screenshots
program=$PWD/build/win64/tests/show_dialogs.exe
mkdir -p docs/images "$prefix"

# Wine has none of the Japanese faces that Windows ships.
japanese_fonts() {
  local key='HKCU\Software\Wine\Fonts\Replacements' face
  for face in 'ＭＳ Ｐゴシック' 'MS PGothic' 'MS UI Gothic' 'MS Shell Dlg' 'MS Shell Dlg 2' Tahoma; do
    scripts/wine_run.sh "$prefix" reg add "$key" /v "$face" /d IPAPGothic /f >/dev/null 2>&1
  done
}

# Shows one dialog, waits until its window stays as it is, and takes its picture.
shoot() {
  local name=$1 window='' pid
  scripts/wine_run.sh "$prefix" "$program" "$name" >/dev/null 2>&1 &
  pid=$!
  for _ in $(seq 100); do
    sleep 0.2
    window=$(xdotool search --onlyvisible --name '住所録' 2>/dev/null | head -n 1 || true)
    [ -z "$window" ] || break
  done
  [ -n "$window" ] || { echo "$name: no window" >&2; return 1; }
  sleep 1
  xwd -silent -id "$window" | convert xwd:- "docs/images/dialog-$name.png"
  xdotool key --window "$window" Escape
  wait "$pid" || true
  echo "docs/images/dialog-$name.png"
}

main() {
  japanese_fonts
  local name
  for name in notice-convert notice-one notice-both missing progress question error; do shoot "$name"; done
  WINEPREFIX=$prefix wineserver --kill || true
}

if [ -n "${TQUTIL_ON_OWN_SCREEN:-}" ]; then
  main
else
  TQUTIL_ON_OWN_SCREEN=1 exec xvfb-run -a -s '-screen 0 1024x768x24' "${BASH_SOURCE[0]}"
fi

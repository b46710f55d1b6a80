#!/usr/bin/env bash
# Whether every source is laid out as .clang-format says; names those that are not.
# `check_format.sh --fix` lays them out.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
mapfile -t sources < <(git ls-files -- '*.h' '*.cpp' '*.c')
formatter=$(command -v clang-format-14 || command -v clang-format)
if [ "${1:-}" = --fix ]; then
  "$formatter" -i "${sources[@]}"
elif ! "$formatter" --dry-run --Werror "${sources[@]}" 2>&1 | sed -n 's/:[0-9]*:[0-9]*: error: .*//p' | sort -u |
    { ! grep .; }; then
  echo "run scripts/check_format.sh --fix"
  exit 1
fi

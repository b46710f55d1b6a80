#!/usr/bin/env bash
# clang-tidy with .clang-tidy over every source that preset linux compiles, one process a core.
# `check_tidy.sh FILE...` looks at those files only.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
[ -e build/linux/compile_commands.json ] || cmake --preset linux >/dev/null

# The compilers of the builds already turn their warnings into errors; here only the checks speak.
if [ $# -gt 0 ]; then
  printf '%s\0' "$@"
else
  git ls-files -z -- 'src/*.cpp' 'tests/*.cpp' 'tools/*.cpp' ':!src/platform/win32/*' \
    ':!tests/ui/windows_test.cpp'
fi | xargs -0 -r -n 1 -P "$(nproc)" clang-tidy -p build/linux --quiet --extra-arg=-w

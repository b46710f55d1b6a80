#!/usr/bin/env bash
# Installs a build into a folder of its own, moves that folder, runs tqsync from there, and builds and
# runs two hosts against it: plain C through pkg-config, C++ through find_package.
# check_install.sh BUILD-FOLDER
set -euo pipefail
hosts=$(cd "$(dirname "${BASH_SOURCE[0]}")/../tests/install" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$1" --prefix "$work/first" >/dev/null
mv "$work/first" "$work/moved"
libdir=$(dirname "$(find "$work/moved" -name libtqutil.so)")
export TQUTIL_HOME=$work/home
mkdir "$TQUTIL_HOME"
"$work/moved/bin/tqsync" init

export LD_LIBRARY_PATH=$libdir PKG_CONFIG_PATH=$libdir/pkgconfig

# The flags stay unquoted: they are a list of words.
# shellcheck disable=SC2046
cc -std=c11 -Wall -Wextra -Werror -o "$work/consumer_c" "$hosts/consumer.c" \
  $(pkg-config --cflags --libs tqutil)
"$work/consumer_c"

cmake -S "$hosts" -B "$work/build" -G Ninja -DCMAKE_PREFIX_PATH="$work/moved" >/dev/null
cmake --build "$work/build" >/dev/null
"$work/build/consumer"

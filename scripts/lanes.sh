# shellcheck shell=bash
# Sourced by test and .ci/run: builds a preset, runs its tests, and keeps the score. A lane is one
# such build, or one check of the tree; each prints one line.
#
# The caller stands in the top folder and has sourced prerequisites.sh.

passed=0 failed=0 skipped=0

# Compilations that were done before are taken from ccache where it is installed.
if command -v ccache >/dev/null; then
  export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache
fi

# lane PRESET: builds and tests it, prints its line and adds it to the score.
lane() {
  local preset=$1 log=build/$1.log reason counts lane_passed lane_failed lane_skipped
  mkdir -p build
  if ! reason=$(prepare_lane "$preset" 2>&1 >"$log"); then
    skipped=$((skipped + 1))
    printf '%-11s skipped: %s\n' "$preset" "$(tail -n 1 <<<"$reason")"
    return 0
  fi
  if ! build_lane "$preset" >>"$log" 2>&1; then
    failed=$((failed + 1))
    printf '%-11s does not build\n' "$preset"
    grep -E 'error|FAILED' -A 5 "$log" | head -n 60 >&2 || tail -n 40 "$log" >&2
    return 0
  fi
  rm -f "build/$preset/results.xml"
  # Windows' dialogs are driven for real, so they need a screen.
  local screen=()
  [[ $preset == win* && -z ${DISPLAY:-} ]] && screen=(xvfb-run -a)
  "${screen[@]}" ctest --preset "$preset" -j "$(nproc)" --output-junit "$PWD/build/$preset/results.xml" \
    >"build/$preset/tests.log" 2>&1 </dev/null || tail -n 80 "build/$preset/tests.log" >&2
  counts=$(python3 scripts/count_tests.py "build/$preset/results.xml")
  read -r lane_passed lane_failed lane_skipped <<<"$counts"
  passed=$((passed + lane_passed)) failed=$((failed + lane_failed))
  printf '%-11s %d passed, %d failed' "$preset" "$lane_passed" "$lane_failed"
  [ "$lane_skipped" = 0 ] || printf ', %d skipped by themselves' "$lane_skipped"
  printf '\n'
}

# Tools of the preset. What it says on standard error is the reason for skipping.
prepare_lane() {
  mapfile -t names < <(packages_for "$1")
  ensure_packages "${names[@]}" || return 1
  if [ "$1" = win32 ]; then
    scripts/wine32.sh "$PWD/build/win32/wineprefix" || return 1
  fi
}

build_lane() {
  cmake --preset "$1" && cmake --build --preset "$1" -j "$(nproc)"
}

# check_lane NAME COMMAND...: a check that either holds or fails; its output is shown when it fails.
check_lane() {
  local name=$1 log=build/$1.log
  shift
  if "$@" >"$log" 2>&1 </dev/null; then
    passed=$((passed + 1))
    printf '%-11s passed\n' "$name"
  else
    failed=$((failed + 1))
    printf '%-11s failed\n' "$name"
    tail -n 60 "$log" >&2
  fi
}

# The last line of every run; the status says whether all is well.
finish() {
  printf '%d passed, %d failed' "$passed" "$failed"
  [ "$skipped" = 0 ] || printf ', %d skipped' "$skipped"
  printf '\n'
  [ "$failed" = 0 ]
}

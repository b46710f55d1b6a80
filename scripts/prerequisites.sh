# shellcheck shell=bash disable=SC2034
# Sourced by run, test and .ci/run: the Debian packages that each build needs, installed when they
# are missing and quiet when they are not.

packages_linux=(g++ cmake ninja-build python3 pkgconf googletest libcli11-dev)
packages_linux_asan=("${packages_linux[@]}")
packages_linux32=("${packages_linux[@]}" g++-multilib)
# The emulator strips 64-bit libraries in either prefix, hence both binutils.
packages_win64=("${packages_linux[@]}" g++-mingw-w64-x86-64-posix binutils-mingw-w64-i686 wine wine64
  locales xauth xvfb)
packages_win32=("${packages_win64[@]}" g++-mingw-w64-i686-posix)
packages_bench=("${packages_linux[@]}" libbenchmark-dev libicu-dev nkf)
packages_fuzz=("${packages_linux[@]}" clang libclang-rt-14-dev)
packages_checks=("${packages_linux[@]}" git clang-format clang-tidy)

# packages_for PRESET: prints the names of its packages.
packages_for() {
  local -n list="packages_${1//-/_}"
  printf '%s\n' "${list[@]}"
}

# ensure_packages NAME...: installs those that are missing, as root or through sudo. Where neither is
# to be had it prints the one line that does it and returns 1.
ensure_packages() {
  local missing=() name
  for name in "$@"; do
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$name" 2>/dev/null)" = installed ] ||
      missing+=("$name")
  done
  [ "${#missing[@]}" -gt 0 ] || return 0
  local install=(apt-get install -y --no-install-recommends "${missing[@]}") as_root=()
  if [ "$(id -u)" != 0 ]; then
    if ! command -v sudo >/dev/null || ! { sudo -n true 2>/dev/null || [ -t 0 ]; }; then
      echo "missing packages; as root, run: apt-get update && ${install[*]}" >&2
      return 1
    fi
    as_root=(sudo)
  fi
  echo "installing ${missing[*]}" >&2
  if [ -z "${package_lists_fresh:-}" ]; then
    # A repository that cannot be reached need not be the one that holds these packages.
    "${as_root[@]}" apt-get update -qq >&2 || true
    package_lists_fresh=yes
  fi
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive "${install[@]}" -qq >&2
}

#!/bin/sh
# Installs Debian packages: tools/install-packages.sh GROUP...
#   build    compiler, CMake and what the library and the command line need
#   package  what else the Debian packages need
#   test     what the tests need
#   browser  the browser and its driver's language, for tests of the report page
#   interop  the open CAD kernel that reads splits back in tests
#   lint     the formatter and the checker of the sources
#   fuzz     the compiler with the fuzzing engine
#   full     what else tools/full-check.sh needs
set -eu

packages=
for group in "$@"; do
  case $group in
    build) packages="$packages g++ cmake make libcli11-dev nlohmann-json3-dev libarchive-dev" ;;
    package) packages="$packages pybind11-dev python3-dev dpkg-dev file" ;;
    test) packages="$packages libgtest-dev libgmock-dev libicu-dev unicode-data pkg-config python3 binutils
      bash gzip zsh fish groff-base graphviz dpkg-dev file
      pybind11-dev python3-dev python3-pytest mypy parallel rsync xxhash" ;;
    interop) packages="$packages libocct-data-exchange-dev" ;;
    browser) packages="$packages chromium fonts-dejavu-core python3" ;;
    lint) packages="$packages clang-format clang-tidy" ;;
    fuzz) packages="$packages clang-14 libclang-rt-14-dev" ;;
    full) packages="$packages valgrind strace libbenchmark-dev" ;;
    *) echo "unknown group: $group" >&2; exit 2 ;;
  esac
done

missing=
for package in $packages; do
  dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
    missing="$missing $package"
done
[ -z "$missing" ] && exit 0

if [ "$(id -u)" = 0 ]; then as_root=; else as_root=sudo; fi
export DEBIAN_FRONTEND=noninteractive
$as_root apt-get update -q
# Word splitting is wanted: one argument per package.
# shellcheck disable=SC2086
$as_root apt-get install -q -y --no-install-recommends $missing

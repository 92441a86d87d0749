#!/bin/sh
# Checks the format of all sources, and the library and the command line with clang-tidy, which takes
# some seconds a file: tools/lint.sh [--format-only]
set -eu
cd "$(dirname "$0")/.."

git ls-files '*.h' '*.cpp' | xargs clang-format --dry-run -Werror
[ "${1:-}" = --format-only ] && exit 0
# Each source is looked at by itself, so a build that compiles folders would not tell how.
build=build-lint
cmake -S . -B "$build" -DBUILD_TESTING=OFF -DVELKSTEP_UNITY=OFF >/dev/null
cmake --build "$build" --target velkstep_generated >/dev/null
git ls-files 'src/*.cpp' 'apps/*.cpp' |
  xargs -n 4 -P "$(nproc)" clang-tidy --quiet -p "$build" 2>/dev/null

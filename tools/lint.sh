#!/bin/sh
# Checks the format of all sources, and the library and the command line with clang-tidy, which takes
# some seconds a file and needs a configured build folder: tools/lint.sh [BUILD | --format-only]
set -eu
cd "$(dirname "$0")/.."
build=${1:-build}

git ls-files '*.h' '*.cpp' | xargs clang-format --dry-run -Werror
[ "$build" = --format-only ] && exit 0
cmake --build "$build" --target velkstep_generated >/dev/null
git ls-files 'src/*.cpp' 'apps/*.cpp' |
  xargs -n 4 -P "$(nproc)" clang-tidy --quiet -p "$build" 2>/dev/null

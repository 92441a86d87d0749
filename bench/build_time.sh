#!/bin/sh
# Prints what building the command line from nothing costs in processor time, user and system
# together: library and command, release, no tests, no compiler cache. Exits with 1 when the target
# is missed.
#
#     bench/build_time.sh [WORK]
#
# WORK is a folder for the build, which must not exist (without it, a temporary one).
set -eu

AT_MOST=130
BETTER=90

project=$(cd "$(dirname "$0")/.." && pwd)
temporary=$(mktemp -d)
trap 'rm -rf "$temporary"' EXIT
trap 'exit 2' HUP INT TERM
build=${1:-$temporary/build}
if [ -e "$build" ]; then
  echo "build_time.sh: $build is there already" >&2
  exit 2
fi

unset CMAKE_CXX_COMPILER_LAUNCHER CMAKE_C_COMPILER_LAUNCHER
cmake -S "$project" -B "$build" -DCMAKE_BUILD_TYPE=Release -DBUILD_TESTING=OFF \
  -DVELKSTEP_BUILD_BENCH=OFF > "$temporary/log"

# The shell's `times` knows the processor time of its children, which cmake's are as well.
in_seconds() {
  awk -F'[ms ]' 'NR == 2 { printf "%.0f\n", $1 * 60 + $2 + $4 * 60 + $5 }' "$1"
}
times > "$temporary/before"
cmake --build "$build" -j "$(nproc)" > "$temporary/log" 2>&1 || {
  cat "$temporary/log"
  exit 2
}
times > "$temporary/after"
"$build/bin/velkstep" --version

seconds=$(($(in_seconds "$temporary/after") - $(in_seconds "$temporary/before")))
verdict=ok
[ $seconds -le $AT_MOST ] || verdict=MISSED
echo
echo "| build                    | processor seconds | at most | better | verdict |"
echo "|--------------------------|------------------:|--------:|-------:|--------:|"
printf '| to "velkstep --version"  | %17d | %7d | %6d | %7s |\n' $seconds $AT_MOST $BETTER $verdict
[ $verdict = ok ]

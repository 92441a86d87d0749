#!/bin/bash
# What takes too long for every check (.ci/run), and is done before a release and before an issue is
# called resolved: tools/full-check.sh [STEP]...
#   lint         clang-tidy over all sources, each by itself
#   alone        every source compiles by itself, with g++ and with clang-14
#   exhaustive   large real assemblies, in every style, read back by the CAD kernel; the library alone
#   sanitizers   every test, those of the command line too, under GCC's sanitizers
#   random       10,000 random files as the plain splitter splits them, and ten times the usual
#                number of inputs for each test that makes its own
#   fuzz         each fuzzer for VELKSTEP_FUZZ_SECONDS (an hour)
#   valgrind     every test of the library under memcheck
#   bench        the targets of time, memory, instructions and building
# Without a STEP all of them, in this order; the figures at the end of each are worth writing down.
set -euo pipefail
cd "$(dirname "$0")/.."
jobs=$(nproc)

build_release() {
  cmake --preset release -DVELKSTEP_BUILD_BENCH=OFF >/dev/null
  cmake --build --preset release -j "$jobs" >/dev/null
}

lint() { tools/lint.sh; }

alone() {
  for compiler in g++ clang++-14; do
    folder=build-alone-$compiler
    cmake -S . -B "$folder" -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0 \
      -DCMAKE_CXX_COMPILER="$compiler" -DVELKSTEP_UNITY=OFF -DVELKSTEP_TEST_PRECOMPILE=OFF >/dev/null
    cmake --build "$folder" -j "$jobs" >/dev/null
    echo "compiled by itself with $compiler: every source"
  done
}

exhaustive() {
  build_release
  tools/test.sh exhaustive
}

sanitizers() {
  cmake --preset sanitizers-all >/dev/null
  cmake --build --preset sanitizers-all -j "$jobs" >/dev/null
  tools/test.sh sanitizers-all
}

random() {
  build_release
  VELKSTEP_RANDOM_SEEDS=10000 build/bin/pipeline_test --gtest_filter='RandomComparison.*'
  VELKSTEP_EFFORT=10 tools/test.sh release -R '^(encoding|exchange|model|naming|placement|reader|sameness)_test'
}

fuzz() {
  cmake --preset sanitizers -DVELKSTEP_FUZZ_SECONDS="${VELKSTEP_FUZZ_SECONDS:-3600}" >/dev/null
  cmake --build --preset fuzz -j "$jobs" >/dev/null
  ctest --preset fuzz -j 4 --verbose | grep -E 'stat::number_of_executed_units|NOT SO|tests (passed|failed)'
}

# Programs of the library's folders; those that drive other programs would only watch the shell.
valgrind() {
  build_release
  for folder in src/*/; do
    program=build/bin/$(basename "$folder")_test
    [ -x "$program" ] && [ "$program" != build/bin/c_interface_test ] || continue
    command valgrind --quiet --error-exitcode=9 --leak-check=full "$program" --gtest_brief=1
  done
}

bench() { bench/run --check; }

[ $# -gt 0 ] || set -- lint alone exhaustive sanitizers random fuzz valgrind bench
for step in "$@"; do
  case $step in
    lint|alone|exhaustive|sanitizers|random|fuzz|valgrind|bench) ;;
    *) echo "full-check.sh: unknown step: $step" >&2; exit 2 ;;
  esac
done
tools/install-packages.sh build test interop browser lint fuzz full
for step in "$@"; do
  printf '\n== %s\n' "$step"
  "$step"
done

#!/bin/bash
# What was skipped stands in front of ctest's summary, with the reasons: skipped_tests.sh PROJECT
set -euo pipefail
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

mkdir -p "$work/tests/sub" "$work/build"
cat > "$work/tests/CMakeLists.txt" <<'END'
cmake_minimum_required(VERSION 3.25)
project(skipped NONE)
enable_testing()
function(add_case name text)
  add_test(NAME ${name} COMMAND printf ${text})
  set_tests_properties(${name} PROPERTIES
    SKIP_REGULAR_EXPRESSION "^SKIPPED;\\[  SKIPPED \\]")
endfunction()
set(gtest "[ RUN      ] A.B\n/a/b.cpp:35: Skipped\nno folder: /x y\n\n[  SKIPPED ] A.B (3 ms)\n[  SKIPPED ] 1 test, listed below:\n[  SKIPPED ] A.B\n")
add_case(first_test.A.B ${gtest})
add_case(first_test.C.D "[       OK ] C.D (1 ms)\n")
add_case(second_test.A.B ${gtest})
add_case(second_test.E.F ${gtest})
add_case(report.page "SKIPPED: no browser\n")
END
cmake -S "$work/tests" -B "$work/build" > /dev/null
ctest --test-dir "$work/build" > "$work/plain"
ctest --test-dir "$work/build" | awk -f "$1/tools/skipped.awk" > "$work/out"

cat > "$work/expected" <<'END'
Skipped, out of the tests that follow: 4
     3  no folder: /x y (first_test 1, second_test 2)
     1  no browser (report 1)
END
# From ctest's summary on, nothing has changed.
summary() { sed -n '/% tests passed/,$p' "$1" | grep -v 'Total Test time'; }
grep -q '% tests passed' "$work/plain"
sed -n '/^Skipped, /,/% tests passed/p' "$work/out" | sed '$d' |
  diff "$work/expected" - || { echo "FAILED: not the reasons above"; cat "$work/out"; exit 1; }
diff <(summary "$work/plain") <(summary "$work/out")

# Where nothing is skipped, nothing is said.
ctest --test-dir "$work/build" -R C.D | awk -f "$1/tools/skipped.awk" > "$work/out"
! grep -q '^Skipped' "$work/out" && grep -q '^100% tests passed' "$work/out"

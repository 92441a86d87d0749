#!/bin/sh
# Runs the tests of a preset: tools/test.sh PRESET. They write many small files, and some large ones:
# in memory, where there is a folder in memory with room for them, unless TMPDIR says where.
set -eu
cd "$(dirname "$0")/.."

GIGABYTES=6
memory=/dev/shm
free=$(df -k --output=avail "$memory" 2>/dev/null | tail -n 1)
if [ -z "${TMPDIR:-}" ] && [ -w "$memory" ] && [ "${free:-0}" -ge $((GIGABYTES << 20)) ]; then
  TMPDIR=$(mktemp -d "$memory/velkstep-tests-XXXXXX")
  export TMPDIR
  trap 'rm -rf "$TMPDIR"' EXIT
fi
ctest --preset "$1" -j "$(nproc)"

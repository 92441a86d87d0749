#!/bin/bash
# Runs the tests of a preset: tools/test.sh PRESET [CTEST'S OPTION]...
# They write many small files, and some large ones: in memory, where there is a folder in memory with
# room for them, unless TMPDIR says where. However this ends, nothing of it stays there; what a run
# that was killed left, the next one removes. In front of ctest's summary stands what was skipped, and
# why.
set -euo pipefail
cd "$(dirname "$0")/.."
preset=$1
shift

GIGABYTES=6
memory=/dev/shm
folder=

# The folder of a run that goes on is locked.
remove_abandoned() {
  local old
  for old in "$memory"/velkstep-tests-*; do
    [ -d "$old" ] || continue
    (flock --nonblock 8 && rm -rf "$old") 8< "$old" || true
  done
}

if [ -z "${TMPDIR:-}" ] && [ -w "$memory" ]; then
  remove_abandoned
  free=$(df -k --output=avail "$memory" | tail -n 1)
  if [ "$free" -ge $((GIGABYTES << 20)) ]; then
    folder=$(mktemp -d "$memory/velkstep-tests-XXXXXX")
    exec 9< "$folder"
    flock 9
    export TMPDIR=$folder
  fi
fi
trap '[ -z "$folder" ] || rm -rf "$folder"' EXIT

# A signal ends ctest and the tests that it runs, which are one process group, before the folder goes.
end_by() {
  trap '' HUP INT TERM
  for attempt in TERM KILL; do
    kill -s $attempt -- "-$tests" 2> /dev/null || break
    for _ in {1..30}; do
      kill -s 0 -- "-$tests" 2> /dev/null || break 2
      sleep 0.1
    done
  done
  [ -z "$folder" ] || rm -rf "$folder"
  trap - EXIT "$1"
  kill -s "$1" $$
}

set -m
ctest --preset "$preset" -j "$(nproc)" "$@" 9<&- | awk -f tools/skipped.awk 9<&- &
tests=$(jobs -p)
for signal in HUP INT TERM; do
  trap "end_by $signal" $signal
done
wait %1

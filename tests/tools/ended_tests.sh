#!/bin/bash
# However tools/test.sh ends, its folder in memory goes, and so do the tests: ended_tests.sh PROJECT
set -euo pipefail
project=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
unset TMPDIR

# A ctest with a test that goes on writing, also when it is asked to end where $STUBBORN says so.
mkdir "$work/bin"
cat > "$work/bin/ctest" <<'FAKE'
#!/bin/bash
echo "$TMPDIR" > "$WORK/folder.new"
mv "$WORK/folder.new" "$WORK/folder"
[ -z "${ENDS_WITH:-}" ] || exit "$ENDS_WITH"
(
  [ -z "${STUBBORN:-}" ] || trap '' HUP INT TERM
  echo $BASHPID > "$WORK/test"
  while sleep 0.01; do date > "$TMPDIR/$RANDOM"; done 2> /dev/null
) &
wait
FAKE
chmod +x "$work/bin/ctest"
export PATH=$work/bin:$PATH WORK=$work

fail() {
  echo "FAILED: $*"
  exit 1
}
wait_for() {
  for _ in {1..200}; do
    [ ! -s "$1" ] || return 0
    sleep 0.05
  done
  fail "$1 does not come"
}
expect_gone() {
  [ ! -e "$(cat "$work/folder")" ] || fail "$1: $(cat "$work/folder") is still there"
  ! kill -0 "$(cat "$work/test")" 2> /dev/null || fail "$1: the test goes on"
  rm "$work/folder" "$work/test"
}

ENDS_WITH=0 "$project/tools/test.sh" release
case $(cat "$work/folder") in
  /dev/shm/velkstep-tests-*) ;;
  *) echo "SKIPPED: no folder in memory with enough room"; exit 0 ;;
esac
[ ! -e "$(cat "$work/folder")" ] || fail "a run that is done leaves its folder"
code=0
ENDS_WITH=8 "$project/tools/test.sh" release || code=$?
[ $code -eq 8 ] || fail "failed tests are told as $code"
rm "$work/folder"

set -m  # So that the shell does not have its children ignore SIGINT.
for signal in INT TERM HUP; do
  for stubborn in "" yes; do
    STUBBORN=$stubborn "$project/tools/test.sh" release > "$work/out" 2>&1 &
    wait_for "$work/test"
    kill -s $signal $!
    code=0
    wait $! || code=$?
    [ $code -eq $((128 + $(kill -l $signal))) ] || fail "$signal: exit code $code"
    expect_gone "$signal"
  done
done

# Nothing can be done in a run that is killed; the next one tidies up behind it.
"$project/tools/test.sh" release > "$work/out" 2>&1 &
wait_for "$work/test"
left=$(cat "$work/folder")
kill -s KILL $!
wait $! 2> /dev/null || true
[ -d "$left" ] || fail "KILL: the folder is gone already, which proves nothing"
kill -s KILL "$(cat "$work/test")"
rm "$work/folder"
ENDS_WITH=0 "$project/tools/test.sh" release
[ ! -e "$left" ] || fail "KILL: $left is still there"

# A run that goes on keeps its folder.
rm "$work/folder" "$work/test"
"$project/tools/test.sh" release > "$work/out" 2>&1 &
wait_for "$work/test"
other=$(cat "$work/folder")
ENDS_WITH=0 "$project/tools/test.sh" release
[ -d "$other" ] || fail "a run took another's folder"
echo "$other" > "$work/folder"
kill -s TERM $!
wait $! 2> /dev/null || true
expect_gone "TERM beside another run"

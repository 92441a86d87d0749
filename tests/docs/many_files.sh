#!/bin/sh
# Runs the commands of docs/many-files.md as they stand there.
#   many_files.sh PROJECT VELKSTEP
# The velkstep that they find writes down its calls, and fails the first time for "flaky.stp". The
# other hosts are this one: what is called ssh runs the command in a home of the host's own, with the
# shell that a login sets. The scheduler is one that runs all jobs here.
set -eu
project=$1
export REAL_VELKSTEP="$2"
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export scratch
export HOME="$scratch/home"
export PARALLEL_HOME="$scratch/home"
mkdir -p "$scratch/bin" "$scratch/desk/assemblies/a b" "$HOME"
cat > "$scratch/bin/velkstep" << 'END'
#!/bin/sh
for argument; do
  if [ "$argument" = -o ]; then input=$before; fi
  before=$argument
done
echo "$input" >> "$scratch/calls"
printf '%s\t%s\n' "$PWD" "$input" >> "$scratch/folders"
case $input in *flaky.stp)
  if [ ! -e "$scratch/flaky" ]; then : > "$scratch/flaky"; exit 1; fi ;;
esac
exec "$REAL_VELKSTEP" "$@"
END
cat > "$scratch/bin/ssh" << 'END'
#!/bin/sh
while [ "${1#-}" != "$1" ]; do shift; done
echo "$1" >> "$scratch/hosts"
export SHELL=/bin/bash HOME="$scratch/hosts of $1"
shift
[ "$1" != -- ] || shift
mkdir -p "$HOME" && cd "$HOME" && exec "$SHELL" -c "$*"
END
cat > "$scratch/bin/sbatch" << 'END'
#!/bin/sh
for argument; do
  case $argument in
    --array=1-*) last=${argument#--array=1-} last=${last%\%*} ;;
    --*) ;;
    *) script=$argument ;;
  esac
done
log=$(sed -n 's/^#SBATCH --output=//p' "$script")
worst=0
for SLURM_ARRAY_TASK_ID in $(seq "$last"); do
  export SLURM_ARRAY_TASK_ID
  sh "$script" > "$(echo "$log" | sed "s/%a/$SLURM_ARRAY_TASK_ID/")" 2>&1 || worst=1
done
exit $worst
END
chmod +x "$scratch"/bin/*
export PATH="$scratch/bin:$PATH"
cd "$scratch/desk"
cp "$project/examples/desk-lamp.step" assemblies/lamp.step
cp "$project/tests/packaging/host/assembly.stp" "assemblies/a b/joint.stp"
cp "$project/tests/packaging/host/assembly.stp" assemblies/flaky.stp
cp "$project/tests/packaging/host/assembly.stp" assemblies/JOINT.STEP
gzip -c assemblies/lamp.step > assemblies/packed.stpz
gzip -c assemblies/lamp.step > assemblies/zipped.step.gz
echo hello > assemblies/notes.gz  # no STEP file, by its name
echo hello > assemblies/broken.stp

fail() { echo "$1"; exit 1; }

# expect WHAT EXPECTED FOUND
expect() { [ "$2" = "$3" ] || fail "$1: expected
$2
found
$3"; }

# run_block NUMBER: runs the page's block, leaves its exit code in `status`, prints its output.
run_block() {
  awk -v language=sh -v wanted="$1" -f "$project/tests/docs/block.awk" \
    "$project/docs/many-files.md" > "$scratch/block" || fail "the page has no block $1"
  status=0
  sh "$scratch/block" 2> "$scratch/errors" || status=$?
}

inputs_of_results() { sed -n 's/^{"format":1,"input":"\([^"]*\)",.*}$/\1/p' results.jsonl; }

# expect_splits: six inputs are split, each in a folder of its own, and one has failed.
expect_splits() {
  expect "exit code" 1 "$status"
  expect_results
  grep -q '^velkstep: assemblies/broken.stp: The file is no exchange file' "$scratch/errors" ||
    fail "no sentence on the broken file: $(cat "$scratch/errors")"
}

# expect_results: the same, wherever the sentences are.
expect_results() {
  expect "results" "assemblies/JOINT.STEP
assemblies/a b/joint.stp
assemblies/flaky.stp
assemblies/lamp.step
assemblies/packed.stpz
assemblies/zipped.step.gz" "$(inputs_of_results)"
  expect "lines" 6 "$(wc -l < results.jsonl)"
  expect "files" "parts/assemblies/JOINT.STEP/bolt.stp
parts/assemblies/JOINT.STEP/joint.stp
parts/assemblies/JOINT.STEP/nut.stp
parts/assemblies/JOINT.STEP/roots.txt
parts/assemblies/JOINT.STEP/velkstep-split.json
parts/assemblies/a b/joint.stp/bolt.stp
parts/assemblies/a b/joint.stp/joint.stp
parts/assemblies/a b/joint.stp/nut.stp
parts/assemblies/a b/joint.stp/roots.txt
parts/assemblies/a b/joint.stp/velkstep-split.json
parts/assemblies/flaky.stp/bolt.stp
parts/assemblies/flaky.stp/joint.stp
parts/assemblies/flaky.stp/nut.stp
parts/assemblies/flaky.stp/roots.txt
parts/assemblies/flaky.stp/velkstep-split.json" \
    "$(find parts -type f ! -path '*lamp*' ! -path '*packed*' ! -path '*zipped*' | LC_ALL=C sort)"
  for lamp in lamp.step packed.stpz zipped.step.gz; do
    expect "files of the lamp" 16 "$(find parts/assemblies/$lamp -type f | wc -l)"
  done
}

export LC_ALL=C

# By itself, and on a cluster: neither needs parallel.
mkdir -p "$scratch/alone/assemblies"
cd "$scratch/alone"
cp "$scratch/desk/assemblies/lamp.step" assemblies/
cp "$scratch/desk/assemblies/flaky.stp" assemblies/joint.step
echo hello > assemblies/broken.step
run_block 1 > /dev/null
expect "exit code of one command" 1 "$status"
expect "folders of one command" "joint
lamp" "$(ls parts)"
expect "its last line" "$(awk -v language=text -v wanted=1 -f "$project/tests/docs/block.awk" \
  "$project/docs/many-files.md")" "$(tail -n 1 "$scratch/errors")"

cd "$scratch/desk"
: > "$scratch/flaky"
awk -v language=bash -v wanted=1 -f "$project/tests/docs/block.awk" \
  "$project/docs/many-files.md" > split-one.sh
run_block 6
expect "exit code of the array job" 0 "$status"
expect_results
run_block 7 > "$scratch/printed"
expect "the failed one's log" "results/3.log:velkstep: assemblies/broken.stp: The file is no exchange file: it does not begin with \"ISO-10303-21\". Export it from the CAD system as STEP (.stp, .step)." "$(cat "$scratch/printed")"
rm -r parts results results.jsonl inputs.txt split-one.sh "$scratch/flaky" "$scratch/calls" "$scratch/folders"

command -v parallel > /dev/null && command -v rsync > /dev/null || { echo SKIPPED; exit 0; }
run_block 2
expect_splits
expect "calls" "assemblies/JOINT.STEP
assemblies/a b/joint.stp
assemblies/broken.stp
assemblies/broken.stp
assemblies/broken.stp
assemblies/flaky.stp
assemblies/flaky.stp
assemblies/lamp.step
assemblies/packed.stpz
assemblies/zipped.step.gz" "$(sort "$scratch/calls")"
run_block 3 > "$scratch/printed"
expect "the failed ones" \
  "1 velkstep split --json --quiet --force assemblies/broken.stp -o parts/assemblies/broken.stp" \
  "$(cat "$scratch/printed")"

# What was in the way of the broken one is gone: it alone runs again.
cp assemblies/lamp.step assemblies/broken.stp
: > "$scratch/calls"
run_block 4
expect "exit code of the repetition" 0 "$status"
expect "calls of the repetition" "assemblies/broken.stp" "$(cat "$scratch/calls")"
expect "results with the repetition" "assemblies/JOINT.STEP
assemblies/a b/joint.stp
assemblies/flaky.stp
assemblies/lamp.step
assemblies/packed.stpz
assemblies/zipped.step.gz
assemblies/broken.stp" "$(inputs_of_results)"
run_block 3 > "$scratch/printed"
expect "what has failed after it" "" "$(cat "$scratch/printed")"

rm -r parts jobs.log results.jsonl "$scratch/flaky" "$scratch/calls" "$scratch/folders"
echo hello > assemblies/broken.stp
run_block 5
# How often a job was tried is not compared here: parallel also repeats those whose folder on a host
# went away under them when another job's was cleaned up.
expect_splits
expect "hosts" "alpha.example.org
beta.example.org" "$(sort -u "$scratch/hosts")"
expect "jobs in the log that ran elsewhere" "" \
  "$(awk -F '\t' 'NR > 1 && $2 !~ /^(alpha|beta).example.org$/' jobs.log)"
expect "inputs in the hosts' folders" 7 \
  "$(grep "^$scratch/hosts of " "$scratch/folders" | cut -f 2 | sort -u | wc -l)"
expect "folders with more than one input" "" \
  "$(sort -u "$scratch/folders" | cut -f 1 | uniq -d)"
expect "what is left on the hosts" "" "$(find "$scratch/hosts of "* -name '*.st*p*')"
echo DONE

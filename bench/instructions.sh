#!/bin/sh
# Counts the instructions that one split takes, with valgrind's callgrind: unlike times, they repeat
# exactly. The input is a bodies assembly of 10 MB. Then the same for other forms against the
# two-argument form: checked, with the classic reading, without and with a memory limit; checked with
# the standard reading; nested and lean.
#
#     bench/instructions.sh [--check] [--top N] PROGRAMS [WORK]
#
# PROGRAMS is the folder with split_once and generate_assembly (bin/ of a build folder), WORK one
# for the input and the profile, which both stay there (without it, a temporary folder). --top lists
# the N costliest functions, callees included. --check: exits with 1 when the target is missed.
set -eu

PARTS=214
AT_MOST=25.5
CHECKED_AT_MOST=1.03
STANDARD_AT_MOST=1.10
PLACED_AT_MOST=1.15

usage() {
  echo "usage: instructions.sh [--check] [--top N] PROGRAMS [WORK]" >&2
  exit 2
}

check=no
top=0
while [ $# -gt 0 ]; do
  case $1 in
    --check) check=yes ;;
    --top) [ $# -gt 1 ] || usage; top=$2; shift ;;
    -*) usage ;;
    *) break ;;
  esac
  shift
done
[ $# -eq 1 ] || [ $# -eq 2 ] || usage

if ! command -v valgrind > /dev/null; then
  echo "Instructions are not counted: valgrind is missing (Debian package valgrind)."
  exit 0
fi

programs=$(cd "$1" && pwd)
temporary=$(mktemp -d)
trap 'rm -rf "$temporary"' EXIT
if [ $# -eq 2 ]; then
  mkdir -p "$2"
  work=$(cd "$2" && pwd)
else
  work=$temporary
fi

input=$work/bodies-$PARTS.stp
profile=$work/callgrind.out
if [ ! -f "$input" ]; then
  "$programs/generate_assembly" bodies "$PARTS" -o "$input.part"
  mv "$input.part" "$input"  # A run that is broken off leaves no half input.
fi

cd "$temporary"  # A split leaves a file in the working folder.

# Prints the instructions of one split, whose profile is put into the file $1. What follows are
# options of split_once.
count_instructions() {
  profile_of_this=$1
  shift
  valgrind --tool=callgrind --callgrind-out-file="$profile_of_this" --log-file="$temporary/log" \
    "$programs/split_once" "$@" "$input" "$temporary/out" > /dev/null
  rm -r "$temporary/out"
  sed -n 's/.*Collected : \([0-9]*\).*/\1/p' "$temporary/log"
}

count=$(count_instructions "$profile")
bytes=$(wc -c < "$input")

awk -v count="$count" -v bytes="$bytes" -v at_most=$AT_MOST -v check=$check '
  BEGIN {
    reached = count <= at_most * bytes
    print "| shape  |    bytes | instructions | per byte | at most | verdict |"
    print "|--------|---------:|-------------:|---------:|--------:|--------:|"
    printf "| bodies | %8d | %12.0f | %8.2f | %7.1f | %7s |\n",
           bytes, count, count / bytes, at_most, reached ? "ok" : "MISSED"
    if (check == "yes" && !reached) exit 1
  }' || status=$?

# Prints the row of one form: its name, the option of split_once, and the most that it may take.
count_form() {
  of_this=$(count_instructions "$temporary/of_form.out" "$2")
  awk -v form="$1" -v plain="$count" -v count="$of_this" -v at_most="$3" -v check=$check '
    BEGIN {
      reached = count <= at_most * plain
      printf "| %-22s | %12.0f | %5.3f | %7.2f | %7s |\n",
             form, count, count / plain, at_most, reached ? "ok" : "MISSED"
      if (check == "yes" && !reached) exit 1
    }' || status=$?
}

echo
echo "| form on bodies         | instructions | ratio | at most | verdict |"
echo "|------------------------|-------------:|------:|--------:|--------:|"
count_form "checked" --checked $CHECKED_AT_MOST
count_form "checked, memory limit" --limited $CHECKED_AT_MOST
count_form "standard reading" --standard $STANDARD_AT_MOST
count_form "nested" --nested $PLACED_AT_MOST
count_form "lean" --lean $PLACED_AT_MOST

if [ "$top" -gt 0 ]; then
  echo
  callgrind_annotate --inclusive=yes "$profile" | sed -n '/^Ir/,$p' | head -n $((top + 4))
fi
exit "${status:-0}"

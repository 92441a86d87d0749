#!/bin/sh
# Types the commands of pages in one folder that has the examples in it, page after page and in their
# order, as somebody does who reads all of them: none is in the way of another. Compared is nothing here.
#   pages_in_turn.sh PROJECT VELKSTEP PAGE...
# Commands are those behind "$ " in blocks, and lines of their own that name real files: in others words
# in capitals stand for them.
set -eu
project=$1 velkstep=$2
shift 2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mkdir "$scratch/bin" "$scratch/work"
ln -s "$velkstep" "$scratch/bin/velkstep"
export PATH="$scratch/bin:$PATH"
cd "$scratch/work"
cp -r "$project/examples" .
for page; do
  awk '/^\$ / { print substr($0, 3) }
    /^    velkstep / && !/[ []([A-Z]|[A-Z][A-Z]+)(\.\.\.|[] ]|$)/ { print substr($0, 5) }' \
    "$project/$page" > ../commands
  [ -s ../commands ] || { echo "$page has no command"; exit 1; }
  while IFS= read -r command <&3; do
    status=0
    sh -c "$command" > ../printed 2>&1 < /dev/null || status=$?
    case "$status $command" in
      "0 "*) ;;
      "1 velkstep diff "*) ;;  # They differ.
      *) echo "$page: $command: exit code $status"; cat ../printed; exit 1 ;;
    esac
  done 3< ../commands
done

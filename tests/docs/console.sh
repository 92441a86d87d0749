#!/bin/sh
# Types the commands of a page's blocks of language "console" as they stand there, one after the other in
# one folder that has the examples in it, and compares what is printed with the page.
#   console.sh PROJECT PAGE VELKSTEP
set -eu
project=$1 page=$2 velkstep=$3
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mkdir "$scratch/bin" "$scratch/work"
ln -s "$velkstep" "$scratch/bin/velkstep"
export PATH="$scratch/bin:$PATH"
export LC_ALL=C
cd "$scratch/work"
cp -r "$project/examples" .
awk '$0 == "```console" { inside = 1; next } $0 == "```" { inside = 0 } inside' \
  "$project/$page" > ../expected
[ -s ../expected ] || { echo "$page has no block"; exit 1; }
grep '^\$ ' ../expected | sed 's/^\$ //' > ../commands
while IFS= read -r command <&3; do
  printf '$ %s\n' "$command"
  sh -c "$command" 2>&1 < /dev/null || true  # A comparison that finds something, too.
done 3< ../commands > ../printed
diff ../expected ../printed

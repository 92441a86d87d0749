#!/bin/sh
# Runs every block of docs/python-recipes.md in one folder with the examples, all of them twice, and
# compares what each prints with the block of text behind it.
#   recipes.sh PROJECT PYTHON
set -eu
project=$1 python=$2
page=$project/docs/python-recipes.md
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
count=$(grep -c '^```python$' "$page")
[ "$count" -ge 5 ] || { echo "the page has $count recipes"; exit 1; }
mkdir "$scratch/work"
cd "$scratch/work"
cp "$project/examples/bench-vice.step" vice.step
cp "$project/examples/desk-lamp.step" lamp.step
for number in $(seq "$count") $(seq "$count"); do  # Twice, in one folder.
  for language in python text; do
    awk -v language=$language -v wanted="$number" -f "$project/tests/docs/block.awk" "$page" \
      > "../$number.$language"
  done
  "$python" "../$number.python" > "../$number.printed"
  diff "../$number.text" "../$number.printed"
done

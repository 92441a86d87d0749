#!/bin/sh
# Builds and runs one example of docs/using-the-library.md, and compares what it prints with the page.
#   using_the_library.sh PROJECT LANGUAGE NUMBER OUTPUT COMMAND...
# NUMBER counts the page's blocks of the language, OUTPUT those of text. COMMAND gets the example's
# file name behind it, and runs it or makes the program "host" of it.
set -eu
project=$1 language=$2 number=$3 output=$4
shift 4
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"

block() {
  awk -v language="$1" -v wanted="$2" -f "$project/tests/docs/block.awk" \
    "$project/docs/using-the-library.md"
}
block "$language" "$number" > "example.$language"
block text "$output" > expected
cp "$project/examples/desk-lamp.step" lamp.step
"$@" "example.$language" > printed
if [ "$language" != python ]; then ./host > printed; fi
diff expected printed

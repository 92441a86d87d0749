#!/bin/sh
# Stores the inputs that a fuzzer starts from: tools/pack-corpus.sh NAME FOLDER
# FOLDER's files, and nothing else, become tests/fuzz/corpus/NAME.tar.gz. The same files make the
# same archive.
set -eu
archive=$(cd "$(dirname "$0")/.." && pwd)/tests/fuzz/corpus/$1.tar.gz
cd "$2"
find . -maxdepth 1 -type f -printf '%P\0' | LC_ALL=C sort -z |
  tar --null --no-recursion -T - --mtime=@0 --owner=0 --group=0 --numeric-owner --mode=644 -cf - |
  gzip -9n > "$archive.part"
mv "$archive.part" "$archive"

#!/bin/sh
# Installs what is needed, builds the command line and splits the example.
set -eu
cd "$(dirname "$0")/.."

tools/install-packages.sh build
cmake -S . -B build-example -DBUILD_TESTING=OFF >/dev/null
cmake --build build-example -j "$(nproc)"

rm -rf example-out
mkdir example-out
cd example-out
echo
echo "velkstep split examples/desk-lamp.step parts"
../build-example/bin/velkstep split ../examples/desk-lamp.step parts
echo
ls -l parts

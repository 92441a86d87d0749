#!/bin/sh
# Installs what is needed, builds the command line, splits an example, and says how to call it.
set -eu
cd "$(dirname "$0")/.."

tools/install-packages.sh build
cmake -S . -B build-example -DBUILD_TESTING=OFF > /dev/null
cmake --build build-example -j "$(nproc)"

rm -rf example-out
echo
echo "\$ velkstep split examples/bench-vice.step -o example-out"
build-example/bin/velkstep split examples/bench-vice.step -o example-out
echo
echo "\$ velkstep tree examples/bench-vice.step"
build-example/bin/velkstep tree examples/bench-vice.step
echo
echo "To call velkstep in this shell:"
echo "  export PATH=\"$PWD/build-example/bin:\$PATH\""

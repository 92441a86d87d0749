#!/bin/sh
# Installs what is needed, builds everything and runs every test.
set -eu
cd "$(dirname "$0")/.."

tools/install-packages.sh build test interop browser
cmake --preset release -DVELKSTEP_BUILD_BENCH=OFF
cmake --build --preset release -j "$(nproc)"
# In the place of this script, so that what ends it ends the tests.
exec tools/test.sh release

#!/bin/sh
# Installs what is needed, builds, and makes Debian packages in the folder packages.
set -eu
cd "$(dirname "$0")/.."

tools/install-packages.sh build package
cmake -S . -B build-packages -DBUILD_TESTING=OFF -DCMAKE_INSTALL_PREFIX=/usr -DVELKSTEP_PYTHON=ON \
  > /dev/null
cmake --build build-packages -j "$(nproc)"
rm -rf packages
(cd build-packages && cpack -G DEB -B "$PWD/../packages" > /dev/null)
rm -rf packages/_CPack_Packages
ls packages

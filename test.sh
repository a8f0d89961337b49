#!/usr/bin/env bash
# Builds with assertions and sanitizers, the programs by clang as well, runs these under valgrind, and passes
# all tests. The last line is that of ctest.
set -euo pipefail
cd "$(dirname "$0")"
. .ci/packages.sh
need g++ gcc clang cmake ninja-build make pkg-config libgtest-dev diffutils openssl dumpasn1 dpkg-dev file fakeroot lintian python3 valgrind

jobs=$(nproc)
cmake --preset dev
cmake --build build/dev -j "$jobs"
cmake --preset clang
cmake --build --preset clang -j "$jobs"
tests/tools/valgrind.sh build/clang
cd build/dev
exec ctest -j "$jobs" --output-on-failure

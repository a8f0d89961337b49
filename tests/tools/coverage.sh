#!/usr/bin/env bash
# What the tests reach: passes them in a build of its own that counts, and prints the lines and branches of
# the sources in each folder, with the share that ran; of branches also those that nothing but an exception
# takes. A line counts as run if it ran in any program that it was compiled into. Headers are left out.
# usage: tests/tools/coverage.sh [FOLDER ...]   of these folders also each file with its lines that never ran
set -euo pipefail
cd "$(dirname "$0")/../.."
for folder; do
  [ -d "$folder" ] || { echo "coverage.sh: there is no folder $folder; usage: tests/tools/coverage.sh [FOLDER ...]" >&2; exit 1; }
done
. .ci/packages.sh
need g++ gcc cmake ninja-build libgtest-dev diffutils openssl dumpasn1 python3
cmake --preset coverage >/dev/null
cmake --build build/coverage >/dev/null
find build/coverage -name '*.gcda' -delete
# velmo-tool compiles the run-time layer by itself: what it writes beside its objects is kept.
export VELMO_COUNTS=$PWD/build/coverage/tool
rm -rf "$VELMO_COUNTS"
(cd build/coverage && ctest -j "$(nproc)" | tail -3) || true
find build/coverage -name '*.gcda' -print0 | (cd build/coverage && xargs -0 -n 40 sh -c '
  for counts; do gcov --json-format --stdout --branch-probabilities "../../$counts"; done 2>/dev/null' gcov) |
  python3 tests/tools/coverage.py "$@"

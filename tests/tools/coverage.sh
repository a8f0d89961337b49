#!/usr/bin/env bash
# What the tests reach: passes them in a build of its own that counts, and prints the lines and branches of
# the sources in each folder, with the share that ran; of branches also those that nothing but an
# exception takes. Headers are left out.
# usage: tests/tools/coverage.sh
set -euo pipefail
cd "$(dirname "$0")/../.."
. .ci/packages.sh
need g++ gcc cmake ninja-build libgtest-dev diffutils openssl dumpasn1
cmake --preset coverage >/dev/null
cmake --build build/coverage >/dev/null
find build/coverage -name '*.gcda' -delete
(cd build/coverage && ctest -j "$(nproc)" | tail -3) || true

source=$PWD
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
find "$PWD/build/coverage" -path '*/CMakeFiles/velmo*.dir/*' -name '*.gcda' -o \
  -path '*/CMakeFiles/asn*.dir/*' -name '*.gcda' >"$work/counts"
cd "$work"
xargs -r gcov -b -n <"$work/counts" 2>/dev/null | awk -v source="$source/" '
  /^File / {
    name = substr ($0, 7, length ($0) - 7)
    if (index (name, source) == 1) name = substr (name, length (source) + 1)
    while (sub (/^(\.\.\/)+/, "", name)) {}
    known = name ~ /^[a-z]+\/[a-z_0-9]+\.(c|cpp)$/ && !(name in seen)
    if (known) { seen[name] = 1; folder = name; sub (/\/.*/, "", folder) }
  }
  function part(text) { split (text, p, /[:% ]+/); }
  known && /^Lines executed:/ { part($0); lines[folder] += $NF; ran[folder] += p[3] * $NF / 100 }
  known && /^Taken at least once:/ { n = $NF; sub (/.*once:/, ""); sub (/%.*/, ""); branches[folder] += n; taken[folder] += $0 * n / 100; known = 0 }
  END {
    printf "%-10s %8s %7s %9s %7s\n", "folder", "lines", "ran", "branches", "taken"
    for (folder in lines)
      printf "%-10s %8d %6.1f%% %9d %6.1f%%\n", folder, lines[folder], 100 * ran[folder] / lines[folder],
        branches[folder], 100 * taken[folder] / (branches[folder] ? branches[folder] : 1) | "sort"
  }'

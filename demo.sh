#!/usr/bin/env bash
# Builds the tool, runs it on the example modules, and shows what it wrote.
set -euo pipefail
cd "$(dirname "$0")"
. .ci/packages.sh
need g++ cmake ninja-build

cmake --preset release -DVELMO_TESTS=OFF >/dev/null
cmake --build build/release -j "$(nproc)" --target velmo

rm -rf out
mkdir out
echo
echo "== in out/: velmo -S=../examples/stx/ basic stock shop forms value"
(cd out && ../build/release/velmo -S=../examples/stx/ basic stock shop forms value)
echo
echo "== files in out/, with their lines"
wc -l out/*
echo
echo "== the module examples/basic.asn"
sed -n '/^BEGIN/,/^END/p' examples/basic.asn
echo
echo "== its types: out/basic.typ"
cat out/basic.typ

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
echo "== velmo -S=examples/stx/ -C=out/ -H=out/ basics stock shop forms"
build/release/velmo -S=examples/stx/ -C=out/ -H=out/ basics stock shop forms
echo
echo "== files in out/, with their lines"
wc -l out/*
echo
echo "== the module examples/basics.asn"
sed -n '/^BEGIN/,/^END/p' examples/basics.asn
echo
echo "== its types: out/basics.typ"
cat out/basics.typ

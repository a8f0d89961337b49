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
echo "== in out/: velmo -S=../examples/stx/ basic stock shop forms value desk"
(cd out && ../build/release/velmo -S=../examples/stx/ basic stock shop forms value desk)
echo
echo "== files in out/, with their lines"
wc -l out/*
echo
echo "== the module examples/basic.asn"
sed -n '/^BEGIN/,/^END/p' examples/basic.asn
echo
echo "== its types: out/basic.typ"
cat out/basic.typ

echo
echo "== the module examples/operations.asn: what its tables in out/desktab.c tell examples/lookup.c"
cc -std=c99 -Iout -Irts -o out/lookup examples/lookup.c out/desktab.c out/desk{enc,dec}.c rts/*.c -lm
lookup() {
  echo
  echo "lookup $*"
  out/lookup "$@"
}
lookup
lookup 11
lookup 11 300b800212678102008c82011c

# A program that codes values: its main part, and what it prints.
show_orders() {
  echo
  echo "== examples/orders.c encodes, decodes and prints orders with the code of stock and shop"
  sed -n '/^static void receive/,$p' examples/orders.c
  cc -std=c99 -Iout -Irts -o out/orders examples/orders.c out/{stock,shop}{enc,dec,tst}.c rts/*.c -lm
  echo "== out/orders"
  out/orders
}
show_orders

#!/usr/bin/env bash
# Builds the programs, makes a program for messages of an example, goes from the text of the
# example modules to C and on to programs, and shows what comes of each step.
set -euo pipefail
cd "$(dirname "$0")"
. .ci/packages.sh
need g++ cmake ninja-build

cmake --preset release -DVELMO_TESTS=OFF >/dev/null
cmake --build build/release -j "$(nproc)" --target asntree velmo velmo-tool velmo-browse
PATH=$PWD/build/release:$PATH

# run COMMAND: in out/, behind its line.
run() {
  echo
  echo "== in out/: $*"
  (cd out && "$@")
}

rm -rf out
mkdir out

# From modules to a program for their messages.
show_tool() {
  run velmo-tool ../examples/shop.asn -- -A=../examples
  run ./shop-tool list
  cat >out/order.txt <<'TEXT'
Order: {
  number: 5
  ship-to: { street: "North End 4" town: "Bath" }
  lines: {
    { article: { number: '00000001E240'H description: "nut" } amount: 100 unit: kilogram }
  }
  state: sent
}
TEXT
  echo
  echo "== an order: out/order.txt"
  cat out/order.txt
  run ./shop-tool convert --out=hex order.txt | tee out/order.hex
  sed -i '/^[0-9A-F]*$/!d' out/order.hex
  run ./shop-tool decode --tlv order.hex
  run ./shop-tool decode --json order.hex
  sed 's/0201640A/0201FF0A/' out/order.hex >out/wrong.hex
  run ./shop-tool check order.hex wrong.hex || echo "status $?"
}
show_tool

echo
echo "== the module examples/basic.asn"
sed -n '/^BEGIN/,/^END/p' examples/basic.asn
run asntree ../examples/basic.asn
run velmo basic
echo
echo "== its types in C: out/basic.typ"
cat out/basic.typ
echo
echo "== what asntree is told of all examples: examples/examples.opt"
cat examples/examples.opt
run asntree -A=../examples +../examples/examples.opt -L=.
run velmo -VERBOSE=QUIET -TAVI-PREFIX=examples basic stock shop forms value desk
run velmo-browse examples.acd
echo "out/examples.html is a page to go from definitions to their C, and back; any browser shows it"
echo
echo "== files in out/, with their lines"
wc -l out/*.* | grep -v '\.stx$'
echo
echo "== words for one place in examples/forms.asn, what the listing says of them, and the C"
sed -n '/^Placed/,/^}/p' examples/forms.asn
sed -n '/^Placed/,/^$/p' out/forms.lst
sed -n '/t_Placed/,/^}/p' out/forms.typ
echo
echo "== what a mistake gets: asntree faulty.asn"
cat >out/faulty.asn <<'TEXT'
Faulty DEFINITIONS IMPLICIT TAGS ::= BEGIN
Order ::= SEQUENCE { number INTEGER (0..99) DEFAULT 100, article Artikle }
Article ::= OCTET STRING (SIZE (6))
END
TEXT
(cd out && asntree faulty.asn 2>&1) || echo "status $?"

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

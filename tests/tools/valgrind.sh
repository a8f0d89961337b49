#!/usr/bin/env bash
# The examples under valgrind, which sees what the sanitizers don't: memory that is read before anything
# was written to it. Both programs on all modules; then generated code, with all values of the round trips.
# Programs of generated code must give back all memory; the others keep theirs to the end by design.
# Most real numbers are left out: valgrind computes with 64 bits of those that have 80.
# usage: tests/tools/valgrind.sh [BUILD]         with what lies in a build without sanitizers already, in place
#                                               of a build of its own
set -euo pipefail
cd "$(dirname "$0")/../.."
. .ci/packages.sh
if [ $# -gt 0 ]; then
  built=$(cd "$1" && pwd)
else
  need g++ gcc cmake ninja-build libgtest-dev valgrind
  built=$PWD/build/valgrind
  cmake --preset release -B "$built" -DVELMO_TESTS=ON >/dev/null
  cmake --build "$built" --target asntree velmo velmo-show orders roundtrip_definite roundtrip_indefinite \
    roundtrip_homes_indefinite >/dev/null
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0
# check LEAKS COMMAND...
check() {
  local leaks=$1
  shift
  if valgrind -q --error-exitcode=99 --leak-check="$leaks" "$@" >"$work/said.txt" 2>&1; then
    echo "clean: ${*##*/}"
  else
    failures=$((failures + 1))
    echo "FAILED: $*"
    cat "$work/said.txt"
  fi
}
cp tests/roundtrip/*.txt "$work"
sed -i '/^Measured: PLUS/,/^Calculated: 0.15625/ { /0.15625/!d }' "$work/forms.txt"
cd examples
check no "$built/asntree" -S="$work/stx" -L="$work/stx" +examples.opt
check no "$built/asntree" --list "$work/stx/stock.stx"
cd "$work"
modules=()
for tree in stx/*.stx; do
  module=${tree#stx/}
  modules+=("${module%.stx}")
done
check no "$built/velmo" -S=stx/ -TAB=1 -COD=1 -TST=1 -TAVI-PREFIX=p "${modules[@]}"
check full "$built/examples/orders"
check no "$built/velmo-show" -S=stx/ forms
for program in definite indefinite homes_indefinite; do
  program=$built/tests/roundtrip/roundtrip_$program
  [ ! -e "$program" ] || check full "$program" {basic,stock,shop,forms,value,desk,other}.txt
done
[ $failures -eq 0 ]

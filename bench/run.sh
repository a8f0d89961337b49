#!/usr/bin/env bash
# Measures the tool on trees of 1,000, 10,000 and 100,000 types, of as many components, and of 1,000
# and 30,000 information objects in 50 classes: seconds of processor time, peak memory, bytes written
# by it. The last step costs at most 1.2 times what the growth of the tree accounts for. The tree of
# components gets asking and printing functions too. "browser" is the tree of types with a browser tree.
# usage: bench/run.sh [types|components|objects|browser]
set -euo pipefail
cd "$(dirname "$0")/.."
cmake --preset release -DVELMO_TESTS=OFF >/dev/null
cmake --build build/release --target velmo maketree makeobjects measure >/dev/null
built=$PWD/build/release
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# measure SHAPE NUMBERS MAKER [WORD [OPTION]]: a table with a line for each number; MAKER writes the
# trees, WORD tells it the shape, and OPTION is for the tool.
measure() {
  local shape=$1 numbers=$2 maker=$3 last=0 before=0 seconds peak
  printf '%10s %11s %8s %8s %14s\n' "$shape" 'tree bytes' seconds 'peak MB' 'bytes written'
  for number in $numbers; do
    mkdir "$work/out"
    "$built/bench/$maker" $number "$work/large.stx" ${4:-}
    read -r seconds peak < <(cd "$work/out" && "$built/bench/measure" "$built/velmo" -S=../ ${5:-} large)
    printf '%10d %11d %8s %8s %14d\n' $number "$(stat -c %s "$work/large.stx")" "$seconds" "$peak" \
      "$(cat "$work"/out/* /dev/null | wc -c)"
    [ $number != "${numbers##* }" ] ||
      awk -v a="$before" -v b="$seconds" -v m=$last -v n=$number -v s="$shape" 'BEGIN {
        if (a > 0) printf "%d %s take %.1f times the time of %d (%.0f at most)\n",
          n, s, b / a, m, 1.2 * n / m }'
    before=$seconds last=$number
    rm -r "$work/out"
  done
}

types() { measure types '1000 10000 100000' maketree; }
components() { measure components '1000 10000 100000' maketree components; }
objects() { measure objects '1000 30000' makeobjects; }
browser() { measure browser '1000 10000 100000' maketree '' -TAVI-PREFIX=p; }

case ${1:-all} in
types | components | objects | browser) $1 ;;
all)
  types
  components
  objects
  browser
  ;;
*)
  sed -n '6s/^# //p' "$0" >&2
  exit 1
  ;;
esac

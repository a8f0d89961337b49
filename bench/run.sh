#!/usr/bin/env bash
# Measures the tool on trees of 1,000, 10,000 and 100,000 types, and of as many components: seconds
# of processor time, peak memory, bytes written by it. The step from 10,000 to 100,000 costs at most
# 12 times the time. The tree of components gets asking and printing functions too.
# usage: bench/run.sh [types|components]
set -euo pipefail
cd "$(dirname "$0")/.."
cmake --preset release -DVELMO_TESTS=OFF >/dev/null
cmake --build build/release --target velmo maketree measure >/dev/null
built=$PWD/build/release
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# measure SHAPE [WORD]: a table of the three sizes; WORD tells maketree the shape.
measure() {
  local shape=$1 before=0 seconds peak
  printf '%10s %11s %8s %8s %14s\n' "$shape" 'tree bytes' seconds 'peak MB' 'bytes written'
  for number in 1000 10000 100000; do
    mkdir "$work/out"
    "$built/bench/maketree" $number "$work/large.stx" ${2:-}
    read -r seconds peak < <(cd "$work/out" && "$built/bench/measure" "$built/velmo" -S=../ large)
    printf '%10d %11d %8s %8s %14d\n' $number "$(stat -c %s "$work/large.stx")" "$seconds" "$peak" \
      "$(cat "$work"/out/* /dev/null | wc -c)"
    [ $number -lt 100000 ] || awk -v a="$before" -v b="$seconds" -v s="$shape" 'BEGIN {
      if (a > 0) printf "100,000 %s take %.1f times the time of 10,000 (12 at most)\n", s, b / a }'
    before=$seconds
    rm -r "$work/out"
  done
}

case ${1:-both} in
types) measure types ;;
components) measure components components ;;
both)
  measure types
  measure components components
  ;;
*)
  sed -n '5s/^# //p' "$0" >&2
  exit 1
  ;;
esac

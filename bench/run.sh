#!/usr/bin/env bash
# Measures the tool on trees of 1,000, 10,000 and 100,000 types: seconds of processor time, peak
# memory, bytes written by it. The step from 10,000 to 100,000 types costs at most 12 times the time.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake --preset release -DVELMO_TESTS=OFF >/dev/null
cmake --build build/release --target velmo maketree measure >/dev/null
built=$PWD/build/release
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

printf '%8s %11s %8s %8s %14s\n' types 'tree bytes' seconds 'peak MB' 'bytes written'
for types in 1000 10000 100000; do
  mkdir "$work/out"
  "$built/bench/maketree" $types "$work/large.stx"
  read -r seconds peak < <(cd "$work/out" && "$built/bench/measure" "$built/velmo" -S=../ large)
  printf '%8d %11d %8s %8s %14d\n' $types "$(stat -c %s "$work/large.stx")" "$seconds" "$peak" \
    "$(cat "$work"/out/* /dev/null | wc -c)"
  [ $types -lt 100000 ] || awk -v a="$before" -v b="$seconds" 'BEGIN {
    if (a > 0) printf "100,000 types take %.1f times the time of 10,000 (12 at most)\n", b / a }'
  before=$seconds
  rm -r "$work/out"
done

#!/usr/bin/env bash
# A file includes headers of its own room and of rooms above it in the picture of docs/architecture.md,
# and no header leads back to itself. Says what points upwards, or goes in a circle. The drawing is that of
# the sources as they are, and files and functions that pages for developers name are there.
# usage: rooms.sh SOURCE-DIRECTORY
set -euo pipefail
cd "$1"
rooms=$(sed -n '/^## The rooms/,/^A file includes/s/^     \([a-z]*\)\/ .*/\1/p' docs/architecture.md)
[ "$(wc -w <<<"$rooms")" -ge 9 ] || { echo "the picture shows too few rooms: $rooms"; exit 1; }
grep -H '^#include "' $(for room in $rooms; do echo "$room"/*.h "$room"/*.cpp; done) |
  sed 's/^\([^:]*\):#include "\([^"]*\)".*/\1 \2/' |
  awk -v rooms="$(echo $rooms)" '
    BEGIN { n = split(rooms, names, " "); for (i = 1; i <= n; ++i) rank[names[i]] = i }
    function room(file) { return substr(file, 1, index(file, "/") - 1) }
    rank[room($2)] > rank[room($1)] { print $1 " includes " $2 ", which stands below it"; bad = 1 }
    $1 ~ /\.h$/ { to[$1] = to[$1] " " $2 }
    function visit(file, parts, count, i) {
      if (state[file] == 2) return
      if (state[file] == 1) { print file " leads back to itself"; bad = 1; return }
      state[file] = 1
      count = split(to[file], parts, " ")
      for (i = 1; i <= count; ++i) visit(parts[i])
      state[file] = 2
    }
    END { for (file in to) visit(file); exit bad }'

docs/draw-rooms.sh | diff docs/rooms.svg - >/dev/null || { echo "docs/draw-rooms.sh >docs/rooms.svg draws it anew"; exit 1; }

missing=0
for page in docs/architecture.md docs/glossary.md docs/testing.md; do
  for file in $(grep -oE '`[a-z]+/[A-Za-z0-9_/.-]+\.(cpp|h|c|sh|md|cmake)`' "$page" | tr -d '`'); do
    [ -e "$file" ] || { echo "$page names $file"; missing=1; }
  done
done
words=$(cat ./*/*.h ./*/*.cpp rts/*.[ch] | grep -oE '[A-Za-z_][A-Za-z0-9_]*' | sort -u)
for name in $(sed -n '/^## One type/,/^## Current/s/[^`]*`\([^`]*\)`/\1\n/gp' docs/architecture.md |
  grep -xE '[a-z]+[A-Z][A-Za-z0-9]*' | sort -u); do
  grep -qx "$name" <<<"$words" || { echo "docs/architecture.md names $name"; missing=1; }
done
exit $missing

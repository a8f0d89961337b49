#!/usr/bin/env bash
# The files of a module don't depend on who stands on the command line beside it: each module of a case
# alone, and each pair in both orders.
# usage: own.sh BUILD CASE.asn
set -euo pipefail
build=$(cd "$1" && pwd)
case=$(cd "$(dirname "$2")" && pwd)/$(basename "$2")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
read -ra options < <(sed -n 's/^-- asntree: //p' "$case")
read -ra modules < <("$build/asntree" "${options[@]}" -H=now/ -C=now/ "$case" | sed -n '/^velmo /{ s/^velmo //; s/-[^ ]* //g; p; }')
[ ${#modules[@]} -gt 2 ]
mkdir first now
for one in "${modules[@]}"; do
  for other in "${modules[@]}"; do
    rm -f now/*
    "$build/velmo" -PREFIXLEN=32 -VERBOSE=QUIET "$one" $([ "$one" = "$other" ] || echo "$other") >/dev/null
    for file in now/*; do
      sed -i '/^ \* \(Processed\|Syntax file processed\) /d' "$file"
      [ -e "first/${file#*/}" ] || cp "$file" first/
      diff "first/${file#*/}" "$file" || { echo "of $one $other"; exit 1; }
    done
  done
done

#!/usr/bin/env bash
# The modules of a case, a file each, give the same trees and listings in whatever order they are named,
# and where only one is named and the others are found by its imports.
# usage: order.sh ASNTREE CASE.asn [MODULE-THAT-LEADS-TO-ALL]
set -euo pipefail
asntree=$1 first=${3:-}
case=$(cd "$(dirname "$2")" && pwd)/$(basename "$2")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
awk '/ DEFINITIONS / { file = $1 ".asn" } file { print > file } /^END/ { file = "" }' "$case"
files=(*.asn)
reversed=()
for file in "${files[@]}"; do reversed=("$file" "${reversed[@]}"); done
[ ${#files[@]} -gt 1 ]

"$asntree" -S=named -L=named "${files[@]}" >/dev/null
"$asntree" -S=again -L=again "${reversed[@]}" >/dev/null
diff -r named again
if [ -n "$first" ]; then
  "$asntree" -A=. -S=found -L=found "$first" >/dev/null
  diff -r named found
fi

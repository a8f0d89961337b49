#!/usr/bin/env bash
# Makes what the fuzz programs start from: DIRECTORY/NAME for the program fuzz_NAME, and in
# DIRECTORY/NAME.dict the words that its inputs have.
# usage: seeds.sh SOURCE-DIRECTORY TREES ROUNDTRIP-PROGRAM DIRECTORY
set -euo pipefail
source=$1 trees=$2 roundtrip=$3 seeds=$4
rm -rf "$seeds"
mkdir -p "$seeds"/{text,tree,options,decode,ask,values}

# Texts: the examples, the cases, and each section of the texts with their messages.
cp "$source"/examples/*.asn "$source"/tests/cases/*.asn "$source"/tests/asntree/syntax/*.asn "$seeds/text"
for file in "$source"/tests/asntree/*.txt "$source"/tests/asntree/syntax/*.txt; do
  awk -v name="$seeds/text/$(basename "$file" .txt)" \
    '/^== / { out = name "-" ++number ".asn"; next } out && !/^-- expect/ { print > out }' "$file"
done
cp "$trees"/*.stx "$seeds/tree"
cp "$source"/examples/*.opt "$source"/fuzz/*.opt "$seeds/options"
shopt -s extglob
"$roundtrip" -s "$seeds/values" "$source"/tests/roundtrip/!(CMakeLists).txt >/dev/null
mv "$seeds"/values/*.ber "$seeds/decode"
mv "$seeds"/values/*.text "$seeds/ask"
rmdir "$seeds/values"

quoted() { sort -u | sed 's/.*/"&"/'; }
grep -oE '"[A-Z][A-Z-]+"' "$source/asntree/token.cpp" | tr -d '"' | quoted >"$seeds/text.dict"
printf '%s\n' '::=' '[[' ']]' '...' '..' '--@ ' '({' '})' "'01'B" "'0F'H" | quoted >>"$seeds/text.dict"
grep -ohE '\{"[A-Z][A-Z-]+=?"' "$source"/options/optiontable.cpp "$source"/gen/tooloptions.cpp |
  tr -d '{"' | sed 's/^/-/' | quoted >"$seeds/options.dict"
printf '%s\n' TRUE FALSE NULL "'01'B" "'0F'H" ': {' '[0] ' 1e9 '-1' | quoted >"$seeds/ask.dict"
touch "$seeds/made"

#!/usr/bin/env bash
# Makes what the fuzz programs start from: DIRECTORY/NAME for the program fuzz_NAME, and in
# DIRECTORY/NAME.dict the words that its inputs have.
# usage: seeds.sh SOURCE-DIRECTORY TREES ROUNDTRIP-PROGRAM MESSAGE-PROGRAM DIRECTORY
set -euo pipefail
source=$1 trees=$2 roundtrip=$3 message=$4 seeds=$5
rm -rf "$seeds"
mkdir -p "$seeds"/{text,tree,options,decode,ask,message,values}

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

# Messages: every fourth value with a command, in each form in turn.
printf 'check\n' >"$seeds/message/empty"
printf 'encode\n' >"$seeds/message/empty.text"
forms=(binary hex base64 pem text json) number=0
for file in "$seeds"/ask/*.text; do
  number=$((number + 1))
  [ $((number % 4)) = 0 ] || continue
  form=${forms[number / 4 % 6]} other=${forms[number / 24 % 6]}
  type=$(tail -c +2 "$file" | sed -n '1s/:.*//p')
  tail -c +2 "$file" | "$message" convert --in=text --out=$form $type >"$seeds/values/message" 2>/dev/null || continue
  { echo "convert --in=$form --out=$other $type"; cat "$seeds/values/message"; } >"$seeds/message/$number"
  { echo "decode --tlv"; cat "$seeds/values/message"; } >"$seeds/message/$number.tlv"
done

quoted() { sort -u | sed 's/.*/"&"/'; }
grep -oE '"[A-Z][A-Z-]+"' "$source/asntree/token.cpp" | tr -d '"' | quoted >"$seeds/text.dict"
printf '%s\n' '::=' '[[' ']]' '...' '..' '--@ ' '({' '})' "'01'B" "'0F'H" | quoted >>"$seeds/text.dict"
grep -ohE '\{"[A-Z][A-Z-]+=?"' "$source"/options/optiontable.cpp "$source"/gen/tooloptions.cpp |
  tr -d '{"' | sed 's/^/-/' | quoted >"$seeds/options.dict"
printf '%s\n' TRUE FALSE NULL "'01'B" "'0F'H" ': {' '[0] ' 1e9 '-1' | quoted >"$seeds/ask.dict"
rm -r "$seeds/values"
printf '%s\n' check 'decode --json' 'encode --der' --in=json --in=text --in=pem --in=hex --out=tlv --quiet \
  '{"' '": ' '\\u0041' '-----BEGIN X-----' true null '[{' | sed 's/[\"]/\\&/g' | quoted >"$seeds/message.dict"
touch "$seeds/made"

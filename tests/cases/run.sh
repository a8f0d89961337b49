#!/usr/bin/env bash
# A case is ASN.1 text and what comes of it: NAME.asn, NAME.expected beside it, and NAME.c if a program
# with the generated code is to run. The first lines of the text say how:
#     -- asntree: options             of the compiler
#     -- velmo: options               of the generator; a line each for several runs
#     -- modules: prefixes            for the generator, if not NAME alone
#     -- files: names                 more files for the compiler, from this directory
#     -- show: FILE [/from/,/to/]     a generated file, or the lines of it that sed selects so
# or, where two hyphens would end the comment, "/* asntree: options */".
# The expected text has what the programs said, and what was to be shown. All generated C is compiled
# as C99, headers as C++ too, and no warning is let pass.
# usage: run.sh ASNTREE VELMO RTS-LIBRARY CASE.asn [update] [COMPILER-FLAG]
set -uo pipefail
asntree=$1 velmo=$2 rts=$3 case=$4 update=${5:-} flag=${6:-}
source=$(cd "$(dirname "$4")/../.." && pwd)
name=$(basename "$case" .asn)
here=$(cd "$(dirname "$case")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
said=$work/said.txt

header() { sed -nE '\#^(--|/\*)#!q; s#^(--|/\*) '"$1"': *##; T; s# \*/$##; p' "$here/$name.asn"; }
# What ran, and its messages without the names of directories and the figures of time.
section() {
  echo "== $1"
  sed -e "s#$work/##g; s#$here/##g" -e '/^$/d; /^VELMO/d; /^Copyright/d; /^What it generates/d; /^>>>/d'
}

cd "$work" || exit 2
read -ra files <<<"$(header files)"
read -ra options <<<"$(header asntree)"
SOURCE_DATE_EPOCH=0 "$asntree" "${options[@]}" "$here/$name.asn" "${files[@]/#/$here/}" >asntree.txt 2>&1
status=$?
{ grep -v '^velmo ' asntree.txt | section asntree; [ $status = 0 ] || echo "status $status"; } >"$said"

# compile: all generated C, one object each, and the headers by themselves.
compile() {
  local file
  for file in *.c; do
    [ -e "$file" ] || continue
    gcc -std=c99 -Wall -Wextra -pedantic -O0 $flag -I. -I"$source/rts" -c "$file" -o "$file.o" || return
  done
  for file in *.typ *.def *.ext; do # tables are C alone
    [ -e "$file" ] || continue
    printf '#include "%s"\n' "$file" |
      g++ -std=c++17 -Wall -Wextra -pedantic -fsyntax-only -I. -I"$source/rts" -x c++ - || return
  done
}

generate() {
  local options modules
  read -ra options <<<"$1"
  modules=$(header modules)
  rm -f -- *.c *.o *.typ *.def *.tab *.ext
  "$velmo" "${options[@]}" ${modules:-$name} >velmo.txt 2>&1
  status=$?
  { section "velmo $1" <velmo.txt; [ $status = 0 ] || echo "status $status"; } >>"$said"
  compile 2>&1 | section "compiler" | sed '1{/^== compiler$/d}' >>"$said"
}

# shown FILE [SED-RANGE]: without the comment at the head, which holds the time.
shown() {
  local file=$1 range=${2:-}
  if [ -n "$range" ]; then sed -n "${range}p" "$file"; else sed '1,/^$/d' "$file"; fi 2>&1 | section "$file"
}

program() {
  gcc -std=c99 -Wall -Wextra -O0 $flag -I. -I"$source/rts" -o program "$here/$name.c" ./*.c.o "$rts" -lm &&
    ./program
  echo "status $?"
}

if [ $status = 0 ]; then
  if [ -z "$(header velmo)" ]; then
    generate ""
  else
    while read -r line; do generate "$line"; done < <(header velmo)
  fi
  while read -r file range; do
    [ -z "$file" ] || shown "$file" "$range" >>"$said"
  done < <(header show)
  [ ! -e "$here/$name.c" ] || program 2>&1 | section program >>"$said"
fi

if [ "$update" = update ]; then
  cp "$said" "$here/$name.expected"
elif [ ! -e "$here/$name.expected" ]; then
  echo "MISSING: $name.expected"
  cat "$said"
  exit 1
else
  diff -u "$here/$name.expected" "$said"
fi

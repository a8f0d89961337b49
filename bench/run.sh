#!/usr/bin/env bash
# Measures the tool on trees of 1,000, 10,000 and 100,000 types, of as many components, and of 1,000
# and 30,000 information objects in 50 classes, with sets within the rows and beside them: seconds of
# processor time, peak memory, bytes written by it. The last step costs at most 1.2 times what the growth
# of the tree accounts for. Components get asking and printing functions too, "browser" a browser tree.
# "messages" measures generated code instead: coding of the messages in bench/messages.asn, with the code
# that asn1c and esnacc generate beside it where these are installed.
# "text" measures the compiler on modules of 10,000, 100,000 and 1,000,000 lines, and on 10,000 small
# modules that import one another.
# usage: bench/run.sh [types|components|objects|browser|messages|text]
set -euo pipefail
cd "$(dirname "$0")/.."
cmake --preset release -DVELMO_TESTS=OFF >/dev/null
cmake --build build/release --target velmo asntree maketree makeobjects maketext measure >/dev/null
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
objects() {
  measure objects '1000 30000' makeobjects
  measure separate '1000 30000' makeobjects separate
}
browser() { measure browser '1000 10000 100000' maketree '' -TAVI-PREFIX=p; }

# compile NAME OCTETS LINES FILE...: a line of the table for a run of the compiler.
compile() {
  local name=$1 octets=$2 lines=$3 seconds peak
  shift 3
  rm -rf "$work/out"
  mkdir "$work/out"
  read -r seconds peak < <(cd "$work/out" && "$built/bench/measure" "$built/asntree" -S=. "$@")
  awk -v n="$name" -v o="$octets" -v l="$lines" -v s="$seconds" -v p="$peak" 'BEGIN {
    printf "%15s %11d %8s %8s %12.0f %17.1f\n", n, o, s, p, l / (s > 0 ? s : 0.01), p * 1048576 / o }'
}

text() {
  local lines
  printf '%15s %11s %8s %8s %12s %17s\n' lines octets seconds 'peak MB' 'lines/second' 'memory per octet'
  for lines in 10000 100000 1000000; do
    "$built/bench/maketext" $lines "$work/large.asn"
    compile $lines "$(stat -c %s "$work/large.asn")" $lines "$work/large.asn"
  done
  mkdir "$work/modules"
  "$built/bench/maketext" modules 10000 "$work/modules"
  compile '10000 modules' "$(cat "$work"/modules/*.asn | wc -c)" "$(cat "$work"/modules/*.asn | wc -l)" \
    -A="$work/modules" "$work/modules/m9999.asn"
}

# codec NAME PROGRAM: a line for each message and direction of a program made of messages.c.
codec() {
  local type direction octets time allocations instructions
  while read -r type direction octets time allocations; do
    instructions=-
    [ -z "$valgrind" ] ||
      instructions=$(timeout -s KILL 20 "$valgrind" --tool=callgrind --callgrind-out-file=/dev/null \
        --toggle-collect=measured "$2" $type $direction 2>&1 | sed -n 's/.*Collected : //p' || true)
    printf '%-7s %-11s %-7s %7d %11d %13s %12d\n' "$1" $type $direction $octets $time \
      "${instructions:->20 s}" $allocations
  done < <("$2")
}

# build NAME SOURCE... : the program messages with another tool's codec.
build() {
  local name=$1
  shift
  cc -O2 -DNDEBUG -w -o "$work/$name/messages" bench/messages.c bench/${name}codec.c "$@" \
    -Ibench -I"$work/$name" -Wl,--wrap=malloc,--wrap=calloc,--wrap=realloc
}

asn1c() {
  (cd "$work/asn1c" && command asn1c -fcompound-names -fnative-types "$OLDPWD/bench/messages.asn" &&
    rm converter-sample.c) >/dev/null 2>&1
  # Arguments are made for messages of debugging otherwise; numbers of 128 bits are none of its native types.
  build asn1c "$work"/asn1c/*.c '-DASN_DEBUG(...)=' -DWITHOUT_CERTIFICATE
}

# Its types are marked by comments in the text. It knows neither times nor ANY, and the package lacks a
# header that needs not say anything.
esnacc() {
  sed 's/^\(Small\|Numbers\|Chain\|Search\|Level[0-9]*\|Found\|Asked\) ::=/& --snacc isPdu:"TRUE" --/
    /^Certificate ::=/,/^END/ { /^END/!d }' bench/messages.asn >"$work/esnacc/coded.asn"
  : >"$work/esnacc/policy.h"
  (cd "$work/esnacc" && command esnacc -c coded.asn) >/dev/null
  build esnacc "$work/esnacc/coded.c" -DWITHOUT_CERTIFICATE -I/usr/include/c-lib/inc -l:libcasn1.a -lm
}

messages() {
  local tool
  cmake --build build/release --target messages >/dev/null
  valgrind=$(command -v valgrind) || echo 'valgrind is not installed: instructions are not counted'
  printf '%-7s %-11s %-7s %7s %11s %13s %12s\n' code message what octets nanoseconds instructions allocations
  codec velmo "$built/bench/messages"
  for tool in asn1c esnacc; do
    if ! command -v $tool >/dev/null; then
      echo "$tool is not installed: not measured"
      continue
    fi
    mkdir "$work/$tool"
    $tool
    codec $tool "$work/$tool/messages"
  done
}

case ${1:-all} in
types | components | objects | browser | messages | text) $1 ;;
all)
  types
  components
  objects
  browser
  ;;
*)
  sed -n 's/^# \(usage\)/\1/p' "$0" >&2
  exit 1
  ;;
esac

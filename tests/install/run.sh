#!/usr/bin/env bash
# run.sh BUILD SOURCE FLAGS: installs a build somewhere, and lets others use it by pkg-config and by CMake: the
# project beside this file, built with what is installed, and with the sources in it. FLAGS are those that the
# build was compiled with.
set -euo pipefail
flags=$3
source=$(cd "$2" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "$1" --prefix "$work/prefix" >/dev/null
for program in "$work"/prefix/bin/*; do
  [ -s "$work/prefix/share/man/man1/$(basename "$program").1" ] || { echo "no manual for $program"; exit 1; }
done

export PKG_CONFIG_PATH CMAKE_PREFIX_PATH=$work/prefix
PKG_CONFIG_PATH=$(echo "$work"/prefix/lib*/pkgconfig)
mkdir "$work/program"
cd "$work/program"

# A program for messages.
CFLAGS=$flags "$work/prefix/bin/velmo-tool" "$source/examples/basic.asn"
[ "$(echo 3006020105010101 | ./basic-tool convert --out=json Msg | tr -d ' \n')" = '{"id":5,"ok":true}' ]

# The layer goes into shared libraries.
cc $flags -shared -o layer.so -Wl,--whole-archive "$work"/prefix/lib*/libasnrts.a -Wl,--no-whole-archive -lm

# The pages on programs, with their commands.
(
  cc() { command cc $flags "$@"; }
  export flags CC="cc $flags" CXX="c++ $flags"
  export -f cc
  for page in cmake forms generated-code runtime tutorial; do
    "$source/tests/cases/page.sh" "$work/prefix/bin" "$source/docs/$page.md"
  done
)

# project NAME GENERATOR SETTING...: builds a copy, and builds again after changes. What must be done again is
# done, and nothing else.
build() {
  cmake --build "$copy/build" --parallel 2 >"$copy/log" 2>&1 || { cat "$copy/log" >&2; exit 1; }
  ! [ "${1:-}" ] || echo "$1: $(grep -c "Generating the" "$copy/log") generated, $(grep -c Building "$copy/log") compiled"
}
project() {
  copy=$work/$1
  cp -r "$source/tests/install" "$copy"
  cmake -S "$copy" -B "$copy/build" -G "$2" -DCMAKE_C_FLAGS="$flags" -DCMAKE_CXX_FLAGS="$flags" "${@:3}" >"$copy/log" ||
    { cat "$copy/log" >&2; exit 1; }
  {
    build
    "$copy/build/both" && "$copy/build/one"
    build "nothing changed"
    echo "-- the end" >>"$copy/orders.asn"
    build "comment"
    sed -i 's/99/70000/' "$copy/asn/units.asn"
    build "import"
    "$copy/build/both" | head -1 && "$copy/build/one"
    cmake "$copy/build" -DWIDE=ON >/dev/null
    build "option"
    "$copy/build/both" | head -1 && "$copy/build/one"
    build "nothing changed"
  } >"$copy/output"
  diff -u "$source/tests/install/expected.txt" "$copy/output"
}
project installed Ninja
project sources "Unix Makefiles" -DSOURCE="$source" -DVELMO_PROGRAMS="$work/prefix/bin"

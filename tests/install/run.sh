#!/bin/sh
# run.sh BUILD SOURCE FLAGS: installs a build somewhere, and builds and runs the project beside this file
# with what is there alone. FLAGS are those that the build was compiled with.
set -e
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "$1" --prefix "$work/prefix" >/dev/null
cmake -S "$2/tests/install" -B "$work/build" -DCMAKE_PREFIX_PATH="$work/prefix" -DSOURCE="$2" \
  -DCMAKE_C_FLAGS="$3" >/dev/null
cmake --build "$work/build"
[ "$("$work/build/outside")" = 5 ]
for program in velmo asntree velmo-tool; do
  [ -s "$work/prefix/share/man/man1/$program.1" ]
done
cd "$work"
CFLAGS=$3 prefix/bin/velmo-tool "$2/examples/basic.asn"
[ "$(echo 3006020105010101 | ./basic-tool convert --out=json Msg | tr -d ' \n')" = '{"id":5,"ok":true}' ]

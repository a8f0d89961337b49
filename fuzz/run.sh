#!/usr/bin/env bash
# Runs a fuzz program with clang's fuzzer, from the seeds and from what earlier runs kept in
# build/fuzz/corpus/NAME. A finding ends the run with status 1; it lies in build/fuzz/findings/NAME then,
# and is run again by naming it in the place of SECONDS.
# usage: fuzz/run.sh text|tree|options|decode|ask|message [SECONDS|FILE]
set -euo pipefail
cd "$(dirname "$0")/.."
. .ci/packages.sh
need clang cmake ninja-build libgtest-dev
name=${1:?what is to be run: text, tree, options, decode, ask, message} seconds=${2:-60}
fuzz=$PWD/build/fuzz
[ -e "$fuzz/build.ninja" ] || cmake --preset fuzz >/dev/null
cmake --build "$fuzz" --target "fuzz_$name" fuzz_seeds >/dev/null

[ ! -e "$seconds" ] || FUZZ_OPEN=1 exec "$fuzz/fuzz/fuzz_$name" "$seconds"
seeds=$fuzz/fuzz/seeds
words=()
[ ! -e "$seeds/$name.dict" ] || words=("-dict=$seeds/$name.dict")
longest=4096
[ "$name" != tree ] || longest=32768
mkdir -p "$fuzz/corpus/$name" "$fuzz/findings/$name"
exec "$fuzz/fuzz/fuzz_$name" -max_total_time="$seconds" "${words[@]}" -max_len=$longest -timeout=60 \
  -rss_limit_mb=3000 -artifact_prefix="$fuzz/findings/$name/" -reduce_inputs=0 -print_final_stats=1 \
  "$fuzz/corpus/$name" "$seeds/$name"

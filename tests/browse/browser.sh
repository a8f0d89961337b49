#!/usr/bin/env bash
# Tries pages of velmo-browse in a browser, which it installs if the machine lacks it: the page of the examples, one
# of texts that would like to be markup, and one of 10,000 definitions. Uses what ./test.sh has built.
# usage: browser.sh [DIRECTORY-OF-PROGRAMS [PICTURE.png]]
# The picture is that of the page of the examples.
set -euo pipefail
cd "$(dirname "$0")/../.."
. .ci/packages.sh
need chromium chromium-driver fonts-dejavu-core python3
programs=$(cd "${1:-build/dev}" && pwd)
source=$PWD
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

PATH=$programs:$PATH
mkdir "$work"/{shop,hostile,large}
cd "$work/shop"
asntree -A="$source/examples" +"$source/examples/examples.opt" >/dev/null
velmo -VERBOSE=QUIET -TAVI-PREFIX=shop -WRONG=1 basic stock shop forms value desk >velmo.txt 2>&1
echo "$source/examples/shop.asn:9: (W) Option ignored : -WRONG=2" >>shop.acs
velmo-browse shop.acd

cd "$work/hostile"
sed -n '/^```asn/,/^```$/{/^```/!p}' "$source/tests/browse/hostile.md" >x.asn
sed -n 's/^\$ \(printf\)/\1/p' "$source/tests/browse/hostile.md" | head -4 >make.sh
. ./make.sh
velmo-browse p.acd 2>/dev/null || [ $? = 1 ]

cd "$work/large"
for i in $(seq 10000); do
  echo "Type-$i ::= SEQUENCE { number INTEGER (0..$i), before Type-$((i > 1 ? i - 1 : 1)) OPTIONAL }"
done | sed -e '1i Large DEFINITIONS AUTOMATIC TAGS ::= BEGIN' -e '$a END' >large.asn
asntree -ENTRY='*' large.asn >/dev/null
velmo -VERBOSE=QUIET -TAVI-PREFIX=large large
velmo-browse large.acd

exec python3 "$source/tests/browse/browser.py" "$work" "${@:2}"

#!/usr/bin/env bash
# What a page tells is what the programs do. A block whose first line is a comment with nothing but the
# name of a file is that file; of a block of "console", each "$ command" must print what stands below it. Where
# commands name the examples, these lie in their directory.
# usage: page.sh DIRECTORY-OF-PROGRAMS PAGE.md [update]
set -uo pipefail
export LC_ALL=C
page=$(cd "$(dirname "$2")" && pwd)/$(basename "$2")
source=$(cd "$(dirname "$0")/../.." && pwd)
PATH=$(cd "$1" && pwd):$PATH
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/here"
cd "$work/here" || exit 2
grep -q '^\$ .*examples/' "$page" && ln -s "$source/examples" examples
fileLine='^(--|#|/\*) ([A-Za-z0-9_/-]+\.[a-z0-9]+)( \*/)?$'

inside="" first="" file="" commands=0
while IFS= read -r line; do
  if [[ $line == '```'* ]]; then
    [ -n "$inside" ] && inside="" || inside=${line:3}-
    first=$inside file=""
  elif [[ $inside == console* ]]; then
    [[ $line == '$ '* ]] || continue
    echo "$line"
    eval "${line:2}" </dev/null 2>&1
    commands=$((commands + 1))
    continue
  elif [ -n "$first" ]; then
    first=""
    [[ $line =~ $fileLine ]] && file=${BASH_REMATCH[2]} && : >"$file"
  fi
  [ -z "$file" ] || echo "$line" >>"$file"
  echo "$line"
done <"$page" >"$work/page"

[ "$commands" -gt 0 ] || { echo "$page: no command"; exit 1; }
if [ "${3:-}" = update ]; then cp "$work/page" "$page"; else diff -u "$page" "$work/page"; fi

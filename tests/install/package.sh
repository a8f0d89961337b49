#!/usr/bin/env bash
# package.sh BUILD SOURCE: packs a build, installs the Debian package into an empty root, takes the README's
# first steps with what is there, and removes it again.
set -euo pipefail
source=$(cd "$2" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/root/var/lib/dpkg/updates" "$work/root/var/lib/dpkg/info"
: >"$work/root/var/lib/dpkg/status"
for kind in DEB TGZ; do
  cpack --config "$1/CPackConfig.cmake" -G $kind -B "$work" >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }
done
tar -xf "$work"/velmo-*.tar.gz -C "$work"
[ "$("$work"/velmo-*/bin/velmo --version)" = "$("$1/velmo" --version)" ]

# A build with debugging information has it in the library.
lintian --fail-on error --suppress-tags unstripped-static-library "$work"/velmo_*.deb

# What it depends on is that of this machine.
fakeroot dpkg --root="$work/root" --log=/dev/null --force-depends -i "$work"/velmo_*.deb >/dev/null 2>"$work/log" ||
  { cat "$work/log"; exit 1; }
# Programs tell of themselves in one way.
for program in "$work"/root/usr/bin/*; do
  name=$(basename "$program")
  share=$work/root/usr/share
  [[ $("$program" --version) =~ ^"$name 1."[0-9]+(, .*)?$ && $("$program" --help) == Usage:*"  $name "* ]]
  [[ $(zcat "$share/man/man1/$name.1.gz") == *$'\n'"$name \\- "* ]]
  bash -c '. "$0" && COMP_LINE="$1 --h" COMP_POINT=${#COMP_LINE} && _velmo_complete "$1" && [ "$COMPREPLY" = --help ]' \
    "$share/bash-completion/completions/$name" "$program"
done
"$source/tests/cases/page.sh" "$work/root/usr/bin" "$source/README.md"
fakeroot dpkg --root="$work/root" --log=/dev/null -P velmo >/dev/null
left=$(find "$work/root" -mindepth 1 -not -path "$work/root/var*")
[ -z "$left" ] || { echo "left behind: $left"; exit 1; }

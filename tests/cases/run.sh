#!/usr/bin/env bash
# A case is ASN.1 text and what comes of it: NAME.asn, NAME.expected beside it, and NAME.c if a program
# with the generated code of the last run is to be run. The first lines of the text say how, in their order:
#     -- files: names                 more files for the compiler, from this directory
#     -- modules: prefixes            for the generator, if not all that are compiled
#     -- asntree: options             of the compiler, which runs here; without such a line it has none
#     -- bits: Type.comp changes      of records of the tree that ASN.1 can't say (tools/settree.cpp);
#                                     prefix:Type.comp in the tree of another module than the last
#     -- velmo: options               of the generator, which runs here; without such a line it has none
#     -- with: options                both again, with more options of the compiler; bits are set again
#     -- show: FILE [pattern]         a generated file, or the items of it whose first line has a name that
#                                     the pattern is; or the lines that sed selects by /from/,/to/
#     -- diff: FILE [pattern]         how a generated file differs from what the first run of velmo wrote
#     -- tree: Type.comp ...          what velmo-show tells of the last module, or of these parts
#     -- compile: flags               for generated C; "no" where it is none
# or, where two hyphens would end the comment, "/* asntree: options */". FILE may be what follows the prefix of the last module.
# The expected text has what the programs said, and what was to be shown. All generated C is compiled
# as C99, by both compilers, headers as C++ too, each macro is used, and no warning is let pass.
# Headers of the application, NAME....h with "_" for "-", are there.
# usage: run.sh BUILD CASE.asn [update] [COMPILER-FLAG]
set -uo pipefail
build=$(cd "$1" && pwd) case=$2 update=${3:-} flag=${4:-}
source=$(cd "$(dirname "$case")/../.." && pwd)
name=$(basename "$case" .asn)
here=$(cd "$(dirname "$case")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
flags=
compiled=
ran=
files=()
modules=
options=()
bits=()

# What ran, and its messages without the names of directories and the figures of time.
section() {
  echo "== $1"
  sed -e "s#$work/##g; s#$here/##g" -e '/^$/d; /^VELMO/d; /^Copyright/d; /^What it generates/d; /^>>>/d; /^ \* Processed by/d; /^ \* Syntax file/d'
}
# The same, or nothing if nothing was said.
remarks() { section "$1" | sed '1{h; d}; 2{H; g}'; }

compileText() {
  SOURCE_DATE_EPOCH=0 "$build/asntree" "$@" "$here/$name.asn" "${files[@]/#/$here/}" >asntree.txt 2>&1
  status=$?
  grep -vE '^velmo |^[0-9]+ trees? written' asntree.txt | remarks "asntree"
  [ $status = 0 ] || { echo "status $status"; exit; }
  compiled=yes
  all=$(sed -n '/^velmo /{ s/^velmo //; s/-[^ ]* //g; p; }' asntree.txt)
  prefix=${all##* }
}

# Uses every macro of a ".def" file: one that nobody expands compiles whatever stands in it.
usesOf() {
  echo "#include <float.h>
#include <limits.h>
#include \"asnuti.ext\"
#include \"${1%.def}.typ\"
#include \"$1\"
$(ls "${1%.def}.tab" "${1%.def}tab.ext" 2>/dev/null | sed 's/.*/#include "&"/')
void use_each_macro (void *structure, ASNHOME *elem);
void use_each_macro (void *structure, ASNHOME *elem)
{
  (void)elem;
  (void)structure;"
  sed -nE 's/^\/\* accessors for (.*) \*\/$/type \1/p; s/^#define ([A-Za-z_0-9]+)(\([a-z]*\))? .*/\1 \2/p' "$1" |
    while read -r macro parameter; do
      case $macro,$parameter in
        type,[!\(]*) type=$parameter ;;
        *,"(elem)") echo "  (void)$macro (elem);" ;;
        *,"()") echo "  (void)$macro ();" ;;
        *,"(iter)") echo "  (void)$macro (first${macro#next} ());" ;;
        *,"(obj)") ;;
        *,?*) echo "  (void)$macro ((struct t_$type *)structure);" ;;
        *) echo "  (void)($macro);" ;;
      esac
    done
  echo "}"
}

compile() {
  local file c=(-std=c99 -Wall -Wextra -pedantic -I. "-I$source/rts" $flags) sources=(*.c)
  [ "$flags" != no ] || return
  if [ -e "${sources[0]}" ]; then
    gcc "${c[@]}" -O0 $flag -c "${sources[@]}" && clang "${c[@]}" -fsyntax-only "${sources[@]}" || return
  fi
  for file in *.def *.tab; do # tables, which a source of the application includes, are C alone
    [ -e "$file" ] || continue
    { [ "${file##*.}" = def ] && usesOf "$file" || echo "#include \"$file\""; } |
      gcc "${c[@]}" -Wno-unused-variable -fsyntax-only -x c - || return
  done
  for file in *.typ *.def *.ext; do
    [ ! -e "$file" ] || printf '#include "%s"\n' "$file"
  done | g++ -std=c++17 -Wall -Wextra -pedantic -fsyntax-only -I. -I"$source/rts" $flags -x c++ -
}

generate() {
  rm -f -- *.c *.o *.typ *.def *.tab *.ext
  "$build/velmo" -PREFIXLEN=32 "$@" ${modules:-$all} >velmo.txt 2>&1
  status=$?
  if [ $# = 0 ]; then remarks velmo; else section "velmo $*"; fi <velmo.txt
  [ $status = 0 ] || echo "status $status"
  compile 2>&1 | remarks compiler
  [ "$ran" ] || mkdir first
  [ "$ran" ] || cp -- *.c *.typ *.def *.tab *.ext first 2>/dev/null
  ran=yes
}

# items FILE [NAME-PATTERN]: the paragraphs of a generated file behind the comment at its head, which holds
# the time, without what every header has; or those whose first line names what is meant.
items() {
  sed '1,/^$/d' "$1" | awk -v RS= -v what="${2:+(^|[^A-Za-z0-9_])(t_)?($2)([^A-Za-z0-9_]|$)}" '
    { line = $0; sub (/\n.*/, "", line) }
    !/^#(ifn?def|endif)/ && line ~ what { print $0 "\n" }'
}

# place FILE: how it is really called.
place() { if [ -e "$1" ] || [ -e "first/$1" ]; then echo "$1"; else echo "$prefix$1"; fi; }

# show FILE [NAME-PATTERN | SED-RANGE]
show() {
  local file what=${2:-}
  file=$(place "$1")
  case $what in
    /*) sed -nE "${what}p" "$file" | section "$file" ;;
    *) items "$file" "$what" | section "$file${what:+ $what}" ;;
  esac 2>&1
}

# difference FILE [NAME-PATTERN]: with the names of the items in which lines differ.
difference() {
  local file what=${2:-}
  file=$(place "$1")
  diff -N -U0 -F '^[a-zA-Z].*[({]' <(items "first/$file" "$what") <(items "$file" "$what") |
    sed -E '1,2d; s/^@@ [^@]* @@ ?((void|typedef|struct|extern|static|const) )*(t_)?([A-Za-z_0-9]*).*/@@ \4/' |
    awk '/^@@/ { if ($0 == last) next; last = $0 } { print }' |
    section "difference of $file${what:+ $what}"
}

program() {
  gcc -std=c99 -Wall -Wextra -Wno-unused-variable -O0 $flag -I. -I"$source/rts" -o program "$here/$name.c" \
    $(ls ./*.o 2>/dev/null) "$build/rts/libasnrts.a" -lm && ./program
  echo "status $?"
}

# setBits [PREFIX:]PATH CHANGE ...
setBits() {
  local tree=$prefix path=$1
  shift
  case $path in *:*) tree=${path%%:*} path=${path#*:} ;; esac
  "$build/tests/settree" "$tree.stx" "$path" "$@" || exit
}

need() {
  case $1 in asntree | files | modules | compile) return ;; esac
  [ "$compiled" ] || compileText
  case $1 in bits | velmo | with | tree) return ;; esac
  [ "$ran" ] || generate
}

run() {
  local words word change
  while IFS= read -r -u3 line; do
    word=${line%%:*}
    read -ra words <<<"${line#*:}"
    need "$word"
    case $word in
      files) files=("${words[@]}") ;;
      modules) modules=${words[*]} ;;
      compile) flags=${words[*]} ;;
      asntree) options=("${words[@]}"); compileText "${words[@]}" ;;
      bits) bits+=("${words[*]}"); setBits "${words[@]}" ;;
      velmo) generate "${words[@]}" ;;
      tree)
        "$build/velmo-show" -PREFIXLEN=32 "$prefix" "${words[@]}" >show.txt 2>&1
        status=$?
        section "tree${words[*]:+ ${words[*]}}" <show.txt
        [ $status = 0 ] || echo "status $status"
        ran=${ran:-shown} ;;
      with)
        echo "== with ${words[*]}"
        compileText "${options[@]}" "${words[@]}" | sed '/^== /d'
        for change in "${bits[@]}"; do setBits $change; done
        generate ;;
      show) show "${words[0]}" "${words[*]:1}" ;;
      diff) difference "${words[0]}" "${words[*]:1}" ;;
    esac
  done 3< <(sed -nE '\#^(--|/\*)#!q; s#^(--|/\*) ([a-z]+: ?)#\2#; T; s# \*/$##; p' "$here/$name.asn")
  need program
  [ ! -e "$here/$name.c" ] || program 2>&1 | section program
}

cd "$work" || exit 2
cp "$here/${name//-/_}"*.h . 2>/dev/null
(run) >said.txt 2>&1
if [ "$update" = update ]; then
  diff -uN "$here/$name.expected" said.txt || cp said.txt "$here/$name.expected"
elif [ ! -e "$here/$name.expected" ]; then
  echo "MISSING: $name.expected"
  cat said.txt
  exit 1
else
  diff -u "$here/$name.expected" said.txt
fi

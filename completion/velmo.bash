# Completion in bash for asntree, velmo, velmo-browse, velmo-show and velmo-tool. Options are those that --help tells of, and the general ones
# that trees store.

# Values that an option may have, and "/" where it wants a directory or "." for a file.
_velmo_values ()
{
  case ${1^^} in
    -A | -S | -L | -C | -H | -TAVI-DIRECTORY | --KEEP | --ROOT) echo / ;;
    -MD | -LOGFILE | --OUTPUT | --CC) echo . ;;
    --COLOR) echo auto always never ;;
    -UNIQUE) echo YES INCLUDES NO ;;
    -VERBOSE) echo QUIET TERSE VERBOSE ;;
    -EXTERNAL | -STANDARD-VERSION) echo 1990 1994 ;;
    -EXTENSIONS) echo SAVE SKIP ;;
    -ADDITIONS) echo OPTIONAL STRICT ;;
    -EXT-CONSTRAINTS) echo NONE ROOT MARK ;;
    -RECURSION) echo IGNORE WARNING ERROR ;;
    -ENTRYTAG) echo IGNORE WARN ;;
    -ACCESS-ROUTINES) echo NONE MACROS ;;
    -COD | -TST) echo none combined separate ;;
    -GENERATE) echo none entries visibles entries-and-visibles ;;
    -DEFINITELEN) echo indefinite definite definite-indefinitecomps definite-definitecomps ;;
    -DEFINITION-CATEGORY) echo STAND-ALONE MORLA-SERVICE MORLA-PROTOCOL MORLA-IOS OTHER ;;
    -TYP | -DEF | -TAB | -TABF | -TDEFS | -CDEFS | -TABO | -PUSHPATH | -MEMORY | -ZEROHOME | -ANSI-C) echo YES NO ;;
  esac
}

_velmo_options ()
{
  printf '%s\n' --help --version
  "$1" --help 2>/dev/null | grep -E '^ +-' | grep -oE -- '(^|[ ,])-{1,2}[A-Za-z][-A-Za-z]*=?' | tr -d ' ,'
  if [[ ${1##*/} == asntree ]]; then
    printf -- '-%s=\n' TYP DEF TAB TABF COD TST DEFINITION-CATEGORY GENERATE PUSHPATH DEFINITELEN DECIMALS NAMELEN TDEFS \
      CDEFS TABO INT REAL N COMPMASK CHOICE RECURSION ACCESS-ROUTINES {T,CL,V,VS,O,OS,C,F}{PREF,NAME,SUFF,CONV}
  fi
}

# What isn't an option: modules for asntree, trees for velmo and velmo-show, those of projects for velmo-browse.
_velmo_files ()
{
  local name directory=. suffixes="asn asn1 ASN ASN1"
  [[ ${1##*/} == velmo-browse ]] && suffixes=acd
  if [[ ${1##*/} == velmo || ${1##*/} == velmo-show ]]; then
    [[ $2 =~ \ -[Ss]=([^ ]+) ]] && directory=${BASH_REMATCH[1]}
    for name in "$directory"/*.stx; do
      name=${name##*/}
      [[ $name == "$3"*.stx ]] && echo "${name%.stx}"
    done
  else
    compgen -d -- "$3"
    for name in $suffixes; do
      compgen -G "$3*.$name"
    done
  fi
}

_velmo_complete ()
{
  local line=${COMP_LINE:0:COMP_POINT} program=$1 word option values IFS=$' \t\n'
  word=${line##*[[:space:]]}
  option=${word%%=*}
  [[ ${program##*/} == velmo-tool && $line == *" -- "* ]] && program=${program%velmo-tool}asntree
  case $word in
    -*=*)
      values=$(_velmo_values "$option")
      case $values in
        /) values=$(compgen -d -- "${word#*=}") && compopt -o filenames -o nospace 2>/dev/null ;;
        .) values=$(compgen -f -- "${word#*=}") && compopt -o filenames 2>/dev/null ;;
      esac
      IFS=$'\n' COMPREPLY=($(compgen -P "$option=" -W "${values// /$'\n'}" -- "${word#*=}")) ;;
    -*)
      COMPREPLY=($(compgen -W "$(_velmo_options "$program" | sort -u)" -- "$word"))
      [[ ${COMPREPLY[*]} == *= ]] && compopt -o nospace 2>/dev/null ;;
    +*)
      compopt -o filenames 2>/dev/null
      IFS=$'\n' COMPREPLY=($(compgen -P + -f -- "${word#+}")) ;;
    *)
      compopt -o filenames 2>/dev/null
      IFS=$'\n' COMPREPLY=($(_velmo_files "$program" "$line" "$word")) ;;
  esac
  # What stands in front of "=" or ":" is on the line already.
  [[ $word == *[=:]* && $COMP_WORDBREAKS == *=* ]] && COMPREPLY=("${COMPREPLY[@]#"${word%"${word##*[=:]}"}"}")
  return 0
}

complete -F _velmo_complete asntree velmo velmo-browse velmo-show velmo-tool

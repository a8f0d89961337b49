#!/usr/bin/env bash
# Makes a program of the example modules, and takes the values of ../roundtrip through it: the text and
# the encodings that stand there say what it has to give. Then other forms of files, what it says of wrong
# ones, and changed encodings.
# usage: run.sh VELMO-TOOL SOURCE [COMPILER-FLAG]
set -uo pipefail
source=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 2
export CFLAGS="-O0 ${3:-}"
failures=0
fail() {
  echo "FAILED: $*"
  failures=$((failures + 1))
}
# same WHAT EXPECTED ACTUAL
same() { [ "$2" = "$3" ] || fail "$1: expected '$2', got '$3'"; }
# gives WHAT STATUS EXPECTED-PART COMMAND...
gives() {
  local what=$1 status=$2 part=$3 said got
  shift 3
  said=$("$@" 2>&1 </dev/null)
  got=$?
  [ $got = "$status" ] || fail "$what: status $got instead of $status: ${said:0:400}"
  case $said in *"$part"*) ;; *) fail "$what: '$part' isn't in: ${said:0:400}" ;; esac
}

examples=$source/examples
maker=$1
gives "a full disk" 2 "the standard output can't be written" sh -c "'$maker' --help >/dev/full"
cat >rare.asn <<'TEXT'
Rare-Forms DEFINITIONS IMPLICIT TAGS ::= BEGIN
Open ::= SEQUENCE { id INTEGER, ..., [[ last [9] BOOLEAN OPTIONAL ]] }
Group ::= SET { id INTEGER, name [0] BMPString OPTIONAL, pick [1] Pick OPTIONAL, ... }
Pick ::= CHOICE { wide [0] UniversalString, bits [1] BIT STRING { first(0) }, arcs [2] OBJECT IDENTIFIER, ... }
Many ::= SEQUENCE { a [0] NULL OPTIONAL, b [1] NULL OPTIONAL, c [2] NULL OPTIONAL, d [3] NULL OPTIONAL, e [4] NULL OPTIONAL,
  f [5] NULL OPTIONAL, g [6] NULL OPTIONAL, h [7] NULL OPTIONAL, i [8] NULL OPTIONAL, j [10] Open }
Grid ::= SEQUENCE OF SEQUENCE OF SEQUENCE {
  cut IA5String (SIZE (0..9)) --@ limit=2:ignore
}
Whole ::= INTEGER --@ int=octets
Some-Text ::= UTF8String
Truth ::= BOOLEAN (TRUE)
Options ::= SET { a [0] NULL OPTIONAL, b [1] NULL OPTIONAL }
Few ::= INTEGER (MIN..5 | 7..MAX) (ALL EXCEPT 3)
Named ::= SEQUENCE { a NULL } (WITH COMPONENTS { ... })
END
TEXT
"$maker" --output=all-tool ${VELMO_COUNTS:+--keep="$VELMO_COUNTS"} "$examples"/{basic,stock,shop,forms,value,operations}.asn rare.asn -- -A="$examples" \
  -PREFIX=Library-Desk:desk || exit 1
tool=$work/all-tool

# --- values: MODULE.TYPE.txt gets texts, .good their encodings, .other further ones with .same, the encodings
# of the same values, beside them. Each wrong encoding is a file of its own; their errors are in .errors.
split() {
  awk -v module="$1" '
    /^--/ || /^[?+]/ || /^! 06.* VALUE_FAIL/ { next } # arcs may be wider here
    /^[=~!] / { mark = $1; error = $NF; sub (/^[=~!] */, "")
                if (mark == "!") sub (/ *[A-Z_]+$/, "")
                gsub (/ /, "")
                if (mark == "=") { good = $0; print > (name ".good"); print text > (name ".txt") }
                else if (mark == "~" && good) { print > (name ".other"); print good > (name ".same") }
                else if (mark == "!" && $0 != "" && error != "REST_FAIL" && /[1-9A-F]/) { # what follows a message is another one, or fills up
                   print > (name ".bad" ++bad[name]); print error > (name ".errors") }
                next }
    /^[A-Z][A-Za-z0-9-]*:/ { type = $1; sub (/:.*/, "", type); name = module "." type; text = good = "" }
    { text = text $0 "\n" }'
}
splitAll() {
  local pair
  for pair in basic=Basic-Forms stock=Stock-Keeping shop=Shop-Orders forms=All-Forms value=Value-Forms desk=Library-Desk; do
    split "${pair#*=}" <"$source/tests/roundtrip/${pair%=*}.txt"
  done
}

# What a type drops by its form, "check" finds: the text of the values is the same even then.
testOther() {
  local form=--json
  case $("$tool" check "$1" "$1.other") in *DIFFERENT*) form=--out=text ;; esac
  same "$1 in other encodings" "$("$tool" decode $form "$1" "$1.same")" "$("$tool" decode $form "$1" "$1.other")"
  [ $form != --json ] || same "DER of $1" "$("$tool" convert --der --out=hex "$1" "$1.same")" \
    "$("$tool" convert --der --out=hex "$1" "$1.other")"
}

testValues() {
  local type file
  for file in *.good; do
    type=${file%.good}
    same "$type from text" "$(cat "$file")" "$("$tool" encode --out=hex "$type" "$type.txt")"
    same "$type by way of JSON" "$(cat "$file")" "$("$tool" decode --json "$type" "$file" | "$tool" encode --out=hex "$type" --in=json)"
    gives "check $type" 0 ", 0 bad" "$tool" check "$type" "$file"
    gives "tags of $type" 0 "" "$tool" decode --tlv "$type" "$file"
    [ ! -e "$type.other" ] || testOther "$type"
    [ ! -e "$type.errors" ] ||
      same "wrong $type" "$(cat "$type.errors")" \
        "$("$tool" check "$type" --quiet $(ls -v "$type".bad*) | sed -n 's/^[^:]*: message 1 at octet 0: \([A-Z_]*\).*/\1/p')"
  done
}

# Each form of a file, and several messages in one; broken ones are passed over.
testForms() {
  local form
  for form in hex base64 pem json text; do
    "$tool" convert Order --in=hex --out=$form Shop-Orders.Order.good >"order.$form"
    same "Order as $form" "$(cat Shop-Orders.Order.good)" "$("$tool" convert Order --out=hex "order.$form")"
  done
  "$tool" convert Order --out=binary order.pem >order.bin
  gives "a type that fits" 0 "ship-to" "$tool" decode order.bin
  gives "the standard input" 0 '"ship-to"' sh -c "'$tool' decode --json - <order.bin"
  { cat order.bin; printf '\0\0'; cat order.bin; } >two.bin
  gives "messages with octets 0 between them" 0 "good, 2 messages" "$tool" check two.bin
  echo "$(cat Shop-Orders.Order.good) 61 03 02 01 00 $(cat Shop-Orders.Order.good)" | tr -d '\n' >three.hex
  gives "the message behind a broken one" 1 "1 of 3 messages bad" "$tool" check three.hex
  printf '0!\200\0371234567890123456789012345678901' | tr '\037' '\041' >text.bin
  gives "octets that look like a text" 1 "SEQUENCE Msg" "$tool" decode --tlv Msg text.bin
  echo 61830203 >long.hex
  gives "a length beyond the end" 1 "LEN_FAIL" "$tool" check long.hex
  gives "tags of half a message" 1 "ok (1 octet missing)" sh -c "echo 300602010701 01 | '$tool' decode --tlv Msg"
  gives "a broken message's tags" 1 "[APPLICATION 1] Order" "$tool" decode --tlv three.hex
  same "definite lengths" "$(echo 'Msg: { id: 1 ok: TRUE }' | "$tool" encode --out=hex Msg)" \
    "$(echo 3080 020101 0101FF 0000 | "$tool" convert Msg --der --out=hex)"
  same "a SET OF in order" 310602010102010A "$(echo '[ 10, 1 ]' | "$tool" encode --der --out=hex Fields)"
  same "a SET OF nothing" 3100 "$(echo '[]' | "$tool" encode --der --out=hex Fields)"
  same "a long number" '"1208925819614629174706175"' "$(echo 020B00FFFFFFFFFFFFFFFFFFFF | "$tool" decode --json Serial)"
  same "a zero" "0900" "$(echo 0 | "$tool" encode --out=hex Measured --in=json)"
}

# What is wrong, where, and what should be there.
testReports() {
  local order
  order=$(cat Shop-Orders.Order.good)
  echo "${order/020100/0201FF}" >wrong.hex
  gives "a value out of bounds" 1 "at Order.number, octet 2: expected" "$tool" check wrong.hex
  gives "another character" 1 'at Bag.label, octet 5: expected [1] label: IA5String (SIZE (1..8)) (FROM ("a".."z"))' \
    sh -c "echo 310A80010181026142820100 | '$tool' check Bag"
  gives "a size between those that may be" 1 "CONSTRAINT_FAIL at Digest, octet 0: expected OCTET STRING Digest (SIZE (4..16)) (SIZE (4 | 8..16))" \
    sh -c "echo 0405FFFFFFFFFF | '$tool' check Digest"
  gives "the status" 1 "1 message in 1 file, 1 bad" "$tool" check wrong.hex
  gives "an unknown name" 1 "line 2: VALUE_FAIL at Msg: expected one of id, name, ok, each once, not \"di\"" \
    sh -c "printf '{ \"ok\": true,\n \"di\": 5 }' | '$tool' encode Msg"
  gives "a missing name" 1 "MM_FAIL at Msg: expected" sh -c "echo '{}' | '$tool' encode Msg"
  gives "a wrong value" 1 "Msg.id: expected id: INTEGER (0..255)" sh -c "echo '{ \"id\": \"x\", \"ok\": true }' | '$tool' encode Msg"
  gives "a value beyond its range" 1 "CONSTRAINT_FAIL at Msg.id" sh -c "echo '{ \"id\": 256, \"ok\": true }' | '$tool' encode Msg"
  gives "no JSON" 1 "no JSON: " sh -c "echo '{ \"id\" 1 }' | '$tool' encode --in=json Msg"
  gives "a wrong text" 1 "line 2: INPUT_FAIL at Msg.id" sh -c "printf 'Msg: {\nid: x }' | '$tool' encode"
  gives "no file" 1 "No such file" "$tool" decode Msg nowhere.bin
  gives "no type" 2 'did you mean Order?' "$tool" decode Ordr
  gives "several types" 2 "several modules" "$tool" decode Word
  gives "a segment of unused bits alone" 1 "VALUE_FAIL" sh -c "echo 2303030105 | '$tool' decode --tlv Bits"
  gives "a primitive SEQUENCE" 1 "found primitive SEQUENCE" sh -c "echo 1000 | '$tool' check Msg"
  gives "no command" 2 "--help" "$tool"
  gives "a wrong option" 2 "unknown option" "$tool" decode --jsn
  gives "--help" 0 "encode" "$tool" --help
  gives "--version" 0 "Shop-Orders" "$tool" --version
  gives "the list" 0 "Order" "$tool" list
  gives "a wrong command line" 1 "error" "$maker" --nonsense x.asn
  gives "no file" 1 "no file is named" "$maker"
  gives "an empty argument" 1 "an empty argument" "$maker" ""
  gives "a file behind the options" 1 "only options stand behind" "$maker" x.asn -- y.asn
  gives "values in homes" 1 "can't be served" "$maker" x.asn -- -DEFINITION-CATEGORY=MORLA-PROTOCOL
  gives "no place for files" 2 "temporary files" env TMPDIR=/nowhere "$maker" x.asn
  echo 'Empty DEFINITIONS ::= BEGIN END' >empty.asn
  gives "no types" 2 "there are no types" "$maker" --verbose empty.asn
  gives "the commands" 2 "asntree -DEFINITELEN=YES" "$maker" --verbose empty.asn
  gives "a wrong module" 2 "error" "$maker" "$source/CMakeLists.txt"
  gives "a directory of others" 2 "not empty" "$maker" --keep=. "$examples/basic.asn"
}

# Components that a type doesn't know, characters of two units, numbers beyond 64 bits: as JSON and back again.
testRareForms() {
  local type octets json again part
  while IFS='|' read -r type octets json again; do
    same "$type $octets" "$json" "$(echo "$octets" | "$tool" decode --json "Rare-Forms.$type" --in=hex | tr -d ' \n')"
    same "$type $json" "${again:-$octets}" "$(echo "$json" | "$tool" encode --out=hex "Rare-Forms.$type" --in=json)"
  done <<'ROWS'
Open|3006020101850105|{"id":1,"...":["850105"]}
Group|3109850105020101860105|{"id":1,"...":["850105","860105"]}|3109020101850105860105
Group|310D0201018008D83DDE000061D83D|{"id":1,"name":"😀a\uD83D"}
Group|310B0201018006D83D00620063|{"id":1,"name":"\uD83Dbc"}
Pick|80080001F60000000061|{"wide":"😀a"}
Pick|850105|{"...":["850105"]}
Pick|81020284|{"bits":["first",5]}
Whole|0209FF0000000000000000|"-18446744073709551616"
Some-Text|0C06FC8480808080|{"octets":"FC8480808080"}
Some-Text|0C04F09F9880|"😀"
Options|31028100|{"b":null}
ROWS
  while IFS='|' read -r type octets part; do
    gives "$type $octets" 1 "$part" sh -c "echo $octets | '$tool' check Rare-Forms.$type --in=hex"
  done <<'ROWS'
Pick|8200|VALUE_FAIL at Pick.arcs
Many|30048000AB00|[8] i: NULL, or another, but found [11]
Group|3100|expected id: INTEGER, [0] name: BMPString, [1] pick: Pick, or the end of Group
Grid|300E3000300A3003160178300316036162|LEN_FAIL
Grid|30103000300C300316017830051603616263|DIFFERENT at Grid[1][1].cut
ROWS
}

# What is wrong in JSON, and rare forms of files.
testRareInput() {
  local type json part
  while IFS='|' read -r type json part; do
    gives "$type $json" 1 "$part" sh -c "echo '$json' | '$tool' encode Rare-Forms.$type --in=json"
  done <<'ROWS'
Open|{"id":1,"...":["8501"]}|VALUE_FAIL at Open: expected an encoding in hexadecimal digits
Open|{"...":"05","id":1}|VALUE_FAIL at Open: expected an encoding in hexadecimal digits
Open|{"id":1,"id":2}|expected one of id, last, each once, not "id"
Grid|{}|expected SEQUENCE Grid
Pick|{"wide":"a","bits":[]}|expected Pick
Pick|{"x":1}|expected one of wide, bits, arcs
Pick|{"wide":"\u12"}|Pick.wide
Pick|{"wide":"\u12G4"}|Pick.wide
Pick|{"wide":"\x"}|Pick.wide
Pick|{"bits":["second"]}|Pick.bits
Pick|{"bits":[1.5]}|Pick.bits
ROWS
  gives "what is not true" 1 "expected BOOLEAN Truth (TRUE)" sh -c "echo 010100 | '$tool' check Truth"
  gives "a number in a gap" 1 "expected INTEGER Few" sh -c "echo 020106 | '$tool' check Few"
  same "octets of a number" 0202FF00 "$(echo '{ "octets": "FF00" }' | "$tool" encode --out=hex Rare-Forms.Whole --in=json)"
  same "other ways to write bits" 81020284810200C0 "$(echo '{"bits":["first",5]} {"bits":"C0"}' | "$tool" encode --out=hex Rare-Forms.Pick --in=json | tr -d '\n')"
  same "one unknown alternative" 850105 "$(echo '{"...":"850105"}' | "$tool" encode --out=hex Rare-Forms.Pick --in=json)"
  same "tags of a SET in order" 310702010180020078 "$(echo '{"...":[],"name":"x","id":1}' | "$tool" encode --der --out=hex Rare-Forms.Group --in=json)"
  gives "values too deep" 1 "too deep" sh -c "printf '%02000d' 0 | tr 0 '[' | '$tool' encode --in=json Rare-Forms.Grid"
  gives "a number too long for digits" 0 '{ "octets": "01' sh -c "{ printf 0282200801; printf '%016398d' 0; } | '$tool' decode --json --in=hex Whole"
  gives "a long text in a list of tags" 0 'aaa...' sh -c "{ printf 0C8200C8; printf '%0200d' 0 | sed 's/0/61/g'; } | '$tool' decode --tlv --in=hex Some-Text"
  gives "a character beyond all" 1 "VALUE_FAIL at Pick.wide" sh -c "echo 800400110000 | '$tool' decode --json --in=hex Rare-Forms.Pick"
  gives "PEM with headers" 0 '"id": 1' sh -c "printf '%s\n' '-----BEGIN X-----' 'Kind: some' '' MAMCAQE= '-----END X-----' | '$tool' decode --json Rare-Forms.Open"
  yes 3003020101 | head -400000 >many.hex
  gives "progress" 0 "##" script -qec "'$tool' check Rare-Forms.Open many.hex" /dev/null
}

# The program of the page in docs/, with the tables of its module alone.
testOwn() {
  local page=$source/docs/velmo-tool.md bin
  bin=$(dirname "$maker")
  sed -n '/^-- loans.asn/,/^END/p' "$page" >loans.asn
  sed -n '/^\/\* own.c/,/^}/p' "$page" >own.c
  { "$bin/asntree" -TAB=YES -TABF=YES -TDEFS=YES -TST=1:1 loans.asn && "$bin/velmo" loans; } >/dev/null || fail "no tables"
  cc -std=c99 $CFLAGS -I. -I"$source/rts" -o own own.c loans*.c "$source"/rts/*.c -lm || fail "no program"
  echo 300A800107A105A103800101 >loan.hex
  gives "the same message in other lengths" 0 "1 message in 1 file, 0 bad" ./own check loan.hex
  gives "a message without names" 0 "state: reserved" ./own decode loan.hex
  gives "JSON without names" 1 "no JSON is read" sh -c "echo '{}' | ./own encode"
  gives "DER without names" 2 "without the tables of velmo-tool" ./own convert --der loan.hex
  gives "the list without names" 0 "SEQUENCE" ./own list
  [ -z "${VELMO_COUNTS:-}" ] || cp own-*.gc* "$VELMO_COUNTS"
}

# Whatever is in a file, the program ends with a status of its own and without a word of the sanitizers.
changed() {
  awk -v seed="$1" -v digits="$2" 'BEGIN { srand (seed) }
    { n = split ($0, c, ""); for (k = 0; k < 3; k++) c[1 + int (rand () * n)] = substr (digits, 1 + int (rand () * length (digits)), 1)
      if (rand () < 0.2) n = 2 * int (n * rand () / 2)
      line = ""; for (i = 1; i <= n; i++) line = line c[i]; print line }'
}
survives() {
  local said status
  said=$(timeout 120 "$@" 2>&1 </dev/null)
  status=$?
  [ $status -le 2 ] || fail "$*: status $status"
  case $said in *"runtime error"* | *Sanitizer*) fail "$*: ${said:0:2000}" ;; esac
}
testChanged() {
  local type seed
  for type in *.good; do
    type=${type%.good}
    for seed in 1 2 3; do
      head -1 "$type.good" | changed $seed 0123456789ABCDEF >"$type.changed$seed"
      "$tool" decode --json "$type" "$type.good" | head -40 | changed $seed '{}[]:,"-0129a\u' >"$type.json$seed"
      head -20 "$type.txt" | changed $seed "{}:,\"'-0129aBH" >"$type.text$seed"
    done
    survives "$tool" check "$type" --in=hex "$type".changed*
    survives "$tool" decode --tlv "$type" --in=hex "$type".changed*
    survives "$tool" convert --der --out=hex --in=hex "$type".changed*
    survives "$tool" encode "$type" --out=hex --in=json "$type".json*
    survives "$tool" encode "$type" --out=hex --in=text "$type".text*
  done
}

splitAll
testValues
testForms
testReports
testRareForms
testRareInput
testOwn
testChanged
[ $failures = 0 ] || echo "$failures failures"
[ $failures = 0 ]

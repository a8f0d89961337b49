#include <algorithm>

#include "asntree/reading.h"

/* Values of OBJECT IDENTIFIER and RELATIVE-OID. */

namespace asntree {

namespace {

struct ArcName {
    const char *parents; /* the arcs in front, as text; "" for the roots */
    const char *name;
    int number;
};
/* Names that need no number behind them. Those under joint-iso-itu-t beyond what the standard of
   the tree of identifiers lists are in use without one all the same. */
constexpr ArcName arcNames[] = {
    {"", "itu-t", 0},
    {"", "ccitt", 0},
    {"", "iso", 1},
    {"", "joint-iso-itu-t", 2},
    {"", "joint-iso-ccitt", 2},
    {"0", "recommendation", 0},
    {"0", "question", 1},
    {"0", "administration", 2},
    {"0", "network-operator", 3},
    {"0", "identified-organization", 4},
    {"0", "r-recommendation", 5},
    {"0", "data", 9},
    {"1", "standard", 0},
    {"1", "registration-authority", 1},
    {"1", "member-body", 2},
    {"1", "identified-organization", 3},
    {"1", "org", 3},
    {"2", "presentation", 0},
    {"2", "asn1", 1},
    {"2", "association-control", 2},
    {"2", "reliable-transfer", 3},
    {"2", "remote-operations", 4},
    {"2", "ds", 5},
    {"2", "directory", 5},
    {"2", "mhs", 6},
    {"2", "mhs-motis", 6},
    {"2", "ccr", 7},
    {"2", "oda", 8},
    {"2", "ms", 9},
    {"2", "osi-management", 9},
    {"2", "transaction-processing", 10},
    {"2", "dor", 11},
    {"2", "distinguished-object-reference", 11},
    {"2", "reference-data-transfer", 12},
    {"2", "network-layer", 13},
    {"2", "transport-layer", 14},
    {"2", "datalink-layer", 15},
    {"2", "country", 16},
    {"2", "registration-procedures", 17},
    {"2", "physical-layer", 18},
    {"2", "mheg", 19},
    {"2", "genericULS", 20},
    {"2", "transport-layer-security-protocol", 21},
    {"2", "international-organizations", 23},
    {"2", "sios", 24},
    {"2", "uuid", 25},
    {"2", "odp", 26},
    {"2", "tag-based", 27},
    {"2", "upu", 40},
    {"2", "bip", 41},
    {"2", "telebiometrics", 42},
    {"2", "cybersecurity", 48},
    {"2", "example", 999},
};

/* Arcs of a value while they are read one by one. */
struct ArcReading {
    Compilation &c;
    const Scope *scope;
    bool relative;
    bool quiet;
    std::vector<Number> numbers;
    std::vector<DatumArc> arcs;
    bool sound = true;
};

void fail(ArcReading &r, Place place, std::string text) {
    r.sound = false;
    if (!r.quiet)
        error(r.c.diagnostics, place, std::move(text));
}

/* The number of a name that stands at a well-known place; nothing if it has none. */
std::optional<Number> numberOfName(const ArcReading &r, std::string_view name) {
    if (r.relative || r.numbers.size() > 2)
        return std::nullopt;
    if (r.numbers.size() == 2) { /* letters of the series of recommendations */
        const bool series = r.numbers[0] == Number{} && r.numbers[1] == Number{};
        if (!series || name.size() != 1 || name[0] < 'a' || name[0] > 'z')
            return std::nullopt;
        return Number::of(name[0] - 'a' + 1);
    }
    const std::string parents = r.numbers.empty() ? "" : textOf(r.numbers[0]);
    for (const ArcName &row : arcNames)
        if (parents == row.parents && name == row.name)
            return Number::of(row.number);
    return std::nullopt;
}

void addNumber(ArcReading &r, const Arc &arc, Number number, const Target &reference) {
    if (number < Number{}) {
        fail(r, arc.place, "an arc of an object identifier can't be negative");
        return;
    }
    r.arcs.push_back({std::string(arc.name.text), number, reference});
    r.numbers.push_back(std::move(number));
}

/* A value stands for an arc, or for the arcs at the head. */
void addReferenced(ArcReading &r, const Arc &arc, const Datum &whole, const Target &reference) {
    switch (whole.kind) {
    case DatumKind::Integer:
        addNumber(r, arc, whole.number, reference);
        return;
    case DatumKind::ObjectIdentifier:
        if (!r.numbers.empty() || r.relative) {
            fail(r, arc.place, "an OBJECT IDENTIFIER can stand only at the head of another one");
            return;
        }
        break;
    case DatumKind::RelativeOid:
        if (r.numbers.empty() && !r.relative) {
            fail(r, arc.place, "a RELATIVE-OID can't stand at the head of an OBJECT IDENTIFIER");
            return;
        }
        break;
    case DatumKind::Bad:
        r.sound = false;
        return;
    default:
        fail(r, arc.place,
             "an arc is a number, or a value of INTEGER, OBJECT IDENTIFIER or RELATIVE-OID");
        return;
    }
    constexpr std::size_t MOST_ARCS = 10'000; /* such values may double one another */
    if (r.numbers.size() + whole.identifier.size() > MOST_ARCS) {
        fail(r, arc.place, "the value has more than " + std::to_string(MOST_ARCS) + " arcs");
        return;
    }
    r.arcs.push_back({std::string(arc.name.text), {}, reference});
    r.numbers.insert(r.numbers.end(), whole.identifier.begin(), whole.identifier.end());
}

void addName(ArcReading &r, const Arc &arc) {
    const bool plain = !arc.ref.module.given() && !arc.ref.hasParameters;
    const auto known = plain ? numberOfName(r, arc.name.text) : std::nullopt;
    Target target = tryResolve(r.c, arc.ref, r.scope);
    if (target.assignment != nullptr && (target.assignment->kind != AssignmentKind::Value ||
                                         classOf(r.c, {target.assignment->type, target.scope})))
        target = {}; /* an object is no value */
    if (known && (!target || r.numbers.empty())) {
        addNumber(r, arc, *known, {});
        return;
    }
    if (!target) {
        r.sound = false;
        if (r.quiet || isDummy(r.scope, arc.ref))
            return;
        if (r.numbers.empty() || arc.ref.module.given())
            resolve(r.c, arc.ref, r.scope);
        else
            error(r.c.diagnostics, arc.place,
                  "the arc " + quote(arc.name.text) +
                      " needs its number behind it in parentheses: it is neither a name that is "
                      "known here nor a value");
        return;
    }
    addReferenced(r, arc, *datumOf(r.c, target), target);
}

void addArc(ArcReading &r, const Arc &arc) {
    if (arc.number == nullptr) {
        addName(r, arc);
        return;
    }
    if (arc.number->kind == ValueKind::Number && !arc.number->negative) {
        addNumber(r, arc, Number::ofDigits(arc.number->text), {});
        return;
    }
    if (arc.number->kind == ValueKind::Field && arc.name.text.empty()) {
        const TypeKind kind = !r.numbers.empty() ? TypeKind::Integer
                              : r.relative       ? TypeKind::RelativeOid
                                                 : TypeKind::ObjectIdentifier;
        addReferenced(r, arc, *readDatum(r.c, {arc.number, r.scope}, builtinType(r.c, kind)), {});
        return;
    }
    if (r.quiet && arc.number->kind == ValueKind::Reference &&
        !tryResolve(r.c, arc.number->ref, r.scope)) {
        r.sound = false;
        return;
    }
    const auto number = integerOf(r.c, {arc.number, r.scope});
    if (!number) {
        r.sound = false;
        return;
    }
    Target target;
    if (arc.number->kind == ValueKind::Reference)
        target = tryResolve(r.c, arc.number->ref, r.scope);
    addNumber(r, arc, *number, target);
}

void checkRoots(ArcReading &r, Place place) {
    if (!r.sound || r.relative)
        return;
    if (r.numbers.empty())
        fail(r, place, "an OBJECT IDENTIFIER needs at least one arc");
    else if (Number::of(2) < r.numbers[0])
        fail(r, place, "the first arc of an OBJECT IDENTIFIER is 0, 1 or 2");
    else if (r.numbers.size() > 1 && r.numbers[0] < Number::of(2) && Number::of(39) < r.numbers[1])
        fail(r, place, "the second arc of an OBJECT IDENTIFIER is at most 39 under 0 and 1");
}

void readAll(ArcReading &r, TokenRange range, Place place) {
    ParseContext parsing = r.c.parsing();
    const std::vector<Arc> arcs = readArcs(parsing, range);
    if (arcs.empty() && !range.empty()) {
        r.sound = false;
        return;
    }
    r.numbers.reserve(arcs.size());
    r.arcs.reserve(arcs.size());
    for (const Arc &arc : arcs) {
        if (!r.sound)
            return;
        addArc(r, arc);
    }
    checkRoots(r, place);
}

void keep(Reading &reading, ArcReading &r, DatumKind kind) {
    ValueMemos &memos = memosOf(reading.c);
    memos.numbers.push_back(std::move(r.numbers));
    memos.arcs.push_back(std::move(r.arcs));
    reading.datum.kind = kind;
    reading.datum.identifier = memos.numbers.back();
    reading.datum.arcs = memos.arcs.back();
}

} // namespace

void readIdentifier(Reading &reading) {
    const bool relative = reading.base.type->kind == TypeKind::RelativeOid;
    if (reading.value().kind != ValueKind::Braced) {
        reportMismatch(reading, "its arcs in braces");
        return;
    }
    ArcReading r{reading.c, reading.use.scope, relative, false, {}, {}};
    readAll(r, reading.value().tokens, reading.value().place);
    if (relative && r.sound && r.numbers.empty())
        fail(r, reading.value().place, "a RELATIVE-OID needs at least one arc");
    if (r.sound)
        keep(reading, r, relative ? DatumKind::RelativeOid : DatumKind::ObjectIdentifier);
}

std::vector<Number> arcsOf(Compilation &c, TokenRange braces, const Scope *scope) {
    ArcReading r{c, scope, false, true, {}, {}};
    const Place place{braces.file, c.sources[braces.file].tokens[braces.begin].offset};
    readAll(r, braces, place);
    return r.sound ? std::move(r.numbers) : std::vector<Number>{};
}

void readMacroValue(Reading &reading) {
    const Value *value = reading.use.value;
    while (value->kind == ValueKind::Choice)
        value = value->inner;
    if (value->kind == ValueKind::Number) {
        reading.datum.kind = DatumKind::Integer;
        reading.datum.number = Number::ofDigits(value->text, value->negative);
        return;
    }
    if (value->kind != ValueKind::Braced)
        return;
    const SourceFile &file = reading.c.sources[value->tokens.file];
    const auto begin = file.tokens.begin() + value->tokens.begin;
    const auto end = file.tokens.begin() + value->tokens.end;
    if (begin == end || std::any_of(begin, end, [](const Token &token) {
            return token.kind != TokenKind::Lower && token.kind != TokenKind::Number &&
                   token.kind != TokenKind::OpenParen && token.kind != TokenKind::CloseParen;
        }))
        return; /* a macro that isn't known may ask for anything */
    ArcReading r{reading.c, reading.use.scope, false, false, {}, {}};
    readAll(r, value->tokens, value->place);
    if (r.sound)
        keep(reading, r, DatumKind::ObjectIdentifier);
}

} // namespace asntree

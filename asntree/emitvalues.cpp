#include "asntree/emitter.h"

#include "asntree/octets.h"

/* Values: definitions, defaults, ends of ranges, settings of objects. */

namespace asntree {

void governBy(Emitter &e, TreeState &ts, RecNr value, PlaceNr place) {
    const PendingPlace &wanted = ts.places[place];
    if (wanted.kind != PendingPlace::Node) {
        ts.governorFixups.push_back({value, place});
        return;
    }
    const PendingPlace node = wanted;
    const std::int32_t module = moduleNumber(e, ts, node.tree);
    ts.tree().v(value).governorModule = module;
    ts.tree().v(value).governorRec = node.nr;
}

bool referToValue(Emitter &e, TreeState &ts, RecNr nr, const Assignment *definition) {
    auto found = e.values.find(definition);
    if (found == e.values.end()) {
        if (e.excluded.contains(definition))
            leaveOut(e, e.current == nullptr ? Place{} : e.current->name.place,
                     "it refers to `" + std::string(definition->name.text) + "`, which is left out");
        return false;
    }
    const std::int32_t module = moduleNumber(e, ts, found->second.tree);
    VNode &node = ts.tree().v(nr);
    node.valueKind = TYP_SYNONYM;
    node.refModule = module;
    node.refRecord = found->second.nr;
    return true;
}

RecNr integerValue(TreeState &ts, std::int64_t number, RecNr governor, int status) {
    VNode node;
    node.compStatus = status;
    node.valueKind = TYP_INTEGER;
    node.governorModule = 1;
    node.governorRec = governor;
    putValueBytes(node, 0, 8, static_cast<std::uint64_t>(number));
    return ts.tree().addV(node);
}

namespace {

/* A value on its way into a record. */
struct Filling {
    Emitter &e;
    TreeState &ts;
    RecNr nr;
    const Datum &datum;
    PlaceNr place;

    VNode &rec() { return ts.tree().v(nr); }
};

constexpr std::size_t MAX_TEXT = MAX_STRI_LENGTH - 1;

/* Length and number of a string, as all kinds of strings have them. */
void setString(Filling &f, MainType kind, std::size_t length, RecNr stri) {
    VNode &node = f.rec();
    node.valueKind = static_cast<std::uint8_t>(kind);
    putValueBytes(node, 0, 2, length);
    putValueBytes(node, 4, 4, static_cast<std::uint64_t>(stri));
}

void setText(Filling &f, MainType kind, std::string_view text) {
    if (text.size() > MAX_TEXT || text.find('\0') != std::string_view::npos)
        return refuse(f.e, f.datum.place,
                      text.size() > MAX_TEXT ? "a tree can't hold a string as long as this"
                                             : "a tree can't hold a NUL in a string");
    setString(f, kind, text.size(), f.ts.tree().str(text));
}

/* What the format has no kind for is held as the octets of its encoding. */
void setOctets(Filling &f, const std::string &octets) {
    setText(f, TYP_OCTSTR, hexDigits(octets));
}

void fillInteger(Filling &f) {
    const TypeUse base = baseOf(f.e.c, f.datum.type);
    if (emittedAsOctets(f.e, base))
        return setOctets(f, contentOfInteger(f.datum.number));
    const std::optional<std::int64_t> number = asInt64(f.datum.number);
    if (!number)
        return refuse(f.e, f.datum.place,
                      "a tree can't hold the number " + textOf(f.datum.number));
    f.rec().valueKind = TYP_INTEGER;
    putValueBytes(f.rec(), 0, 8, static_cast<std::uint64_t>(*number));
    if (!f.datum.item.empty())
        f.ts.itemFixups.push_back({f.nr, f.place, f.datum.item});
}

/* The special values have the base -1, and so has zero. */
void fillReal(Filling &f) {
    const RealNumber &real = f.datum.real;
    VNode &node = f.rec();
    node.valueKind = TYP_REAL;
    std::int64_t mantissa = 0;
    std::int64_t base = -1;
    std::int64_t exponent = 0;
    if (real.special == RealNumber::PlusInfinity) {
        mantissa = -2;
    } else if (real.special == RealNumber::MinusInfinity) {
        mantissa = -1;
    } else if (real.special == RealNumber::NotANumber) {
        return refuse(f.e, f.datum.place, "a tree can't hold NOT-A-NUMBER");
    } else if (!(real.mantissa == Number::of(0))) {
        const std::optional<std::int64_t> small = asInt64(real.mantissa);
        if (!small || real.exponent < INT16_MIN || real.exponent > INT16_MAX)
            return refuse(f.e, f.datum.place, "a tree can't hold this REAL value");
        mantissa = *small;
        base = real.base;
        exponent = real.exponent;
    }
    putValueBytes(node, 0, 8, static_cast<std::uint64_t>(mantissa));
    putValueBytes(node, 8, 2, static_cast<std::uint64_t>(base));
    putValueBytes(node, 10, 2, static_cast<std::uint64_t>(exponent));
}

/* Values in the list of another one, chained. */
struct ValueList {
    Filling &f;
    RecNr last = 0;

    void add(RecNr nr) {
        if (nr == 0)
            return;
        (last == 0 ? f.rec().refRecord : f.ts.tree().v(last).next) = nr;
        last = nr;
    }
};

void fillNamedBits(Filling &f) {
    f.rec().valueKind = TYP_BITSTR;
    if (f.datum.bits.empty())
        return setText(f, TYP_BITSTR, "");
    ValueList list{f};
    for (std::size_t i = 0; i < f.datum.bits.size(); ++i) {
        const std::int64_t number = asInt64(f.datum.bitNumbers[i]).value_or(0);
        const RecNr bit = integerValue(f.ts, number, plainInteger(f.ts), TCS_MANDATORY);
        f.ts.itemFixups.push_back({bit, f.place, f.datum.bits[i]});
        list.add(bit);
    }
}

MainType textKind(Filling &f) {
    return static_cast<MainType>(mainTypeOf(f.e, baseOf(f.e.c, f.datum.type)));
}

void fillText(Filling &f) {
    const MainType kind = textKind(f);
    const std::u32string_view characters = f.datum.characters;
    if (kind == TYP_OCTSTR)
        return setOctets(f, utf8Of(characters));
    if (characters.size() > MAX_TEXT)
        return refuse(f.e, f.datum.place, "a tree can't hold a string as long as this");
    if (kind == TYP_UNISTR)
        return setString(f, kind, characters.size(), f.ts.tree().str32(characters));
    if (kind == TYP_BMPSTR) {
        std::u16string text;
        for (const char32_t character : characters)
            text.push_back(static_cast<char16_t>(character));
        return setString(f, kind, text.size(), f.ts.tree().str16(text));
    }
    std::string text;
    for (const char32_t character : characters) {
        if (character > 0xFF)
            return refuse(f.e, f.datum.place,
                          "a tree can't hold a character of more than 8 bits in a string of this type");
        text.push_back(static_cast<char>(character));
    }
    setText(f, kind, text);
}

void fillTime(Filling &f) {
    const MainType kind = textKind(f);
    if (kind == TYP_OCTSTR)
        return setOctets(f, std::string(f.datum.text));
    setText(f, kind, f.datum.text);
}

void fillMembers(Filling &f) {
    const TypeUse base = baseOf(f.e.c, f.datum.type);
    f.rec().valueKind = static_cast<std::uint8_t>(base ? mainTypeOf(f.e, base) : TYP_SEQ);
    ValueList list{f};
    const bool isList = f.datum.kind == DatumKind::List;
    for (const DatumMember &member : f.datum.members) {
        const PlaceNr place = isList ? elementPlace(f.ts, f.place)
                                     : componentPlace(f.ts, f.place, member.name);
        const RecNr nr = emitDatum(f.e, f.ts, *member.value, place, TCS_MANDATORY);
        if (nr != 0)
            f.ts.tree().v(nr).nameIdx = nameNr(f.ts, member.name);
        list.add(nr);
    }
}

/* A value of an open type is governed by its own type. */
void fillOpen(Filling &f) {
    if (f.datum.members.empty() || f.datum.members.front().value == nullptr)
        return refuse(f.e, f.datum.place, "a tree can't hold this value");
    const DatumMember &member = f.datum.members.front();
    const PlaceNr place = placeOfNode(f.ts, governorNode(f.e, f.ts, member.type));
    fillValue(f.e, f.ts, f.nr, *member.value, place);
    governBy(f.e, f.ts, f.nr, place);
}

void fillByKind(Filling &f) {
    const Datum &datum = f.datum;
    switch (datum.kind) {
    case DatumKind::Boolean:
        f.rec().valueKind = TYP_BOOLEAN;
        return putValueBytes(f.rec(), 0, 1, datum.isTrue ? 1 : 0);
    case DatumKind::Null:
        f.rec().valueKind = TYP_NULL;
        return;
    case DatumKind::Integer:
    case DatumKind::Item:
        return fillInteger(f);
    case DatumKind::Real:
        return fillReal(f);
    case DatumKind::Bits:
        return setText(f, TYP_BITSTR, datum.text);
    case DatumKind::Octets:
        return setText(f, datum.fromBits ? TYP_BITSTR : TYP_OCTSTR, datum.text);
    case DatumKind::NamedBits:
        return fillNamedBits(f);
    case DatumKind::ObjectIdentifier:
        f.rec().valueKind = TYP_OBJID;
        return emitArcs(f.e, f.ts, f.nr, datum.arcs, datum.identifier);
    case DatumKind::RelativeOid:
        return setOctets(f, contentOfArcs(datum.identifier));
    case DatumKind::Text:
        return fillText(f);
    case DatumKind::Time:
        return fillTime(f);
    case DatumKind::Structure:
    case DatumKind::List:
    case DatumKind::Choice:
        return fillMembers(f);
    case DatumKind::Open:
        return fillOpen(f);
    case DatumKind::Containing:
    case DatumKind::Bad:
        return refuse(f.e, datum.place, "a tree can't hold this value");
    }
}

} // namespace

void fillValue(Emitter &e, TreeState &ts, RecNr nr, const Datum &datum, PlaceNr place) {
    if (datum.reference.assignment != nullptr &&
        (datum.reference.scope == nullptr || datum.reference.scope->definition == nullptr) &&
        referToValue(e, ts, nr, datum.reference.assignment))
        return;
    Filling filling{e, ts, nr, datum, place};
    fillByKind(filling);
}

RecNr emitDatum(Emitter &e, TreeState &ts, const Datum &datum, PlaceNr place, int status) {
    VNode node;
    node.compStatus = status;
    node.lineNr = lineOf(e, datum.place);
    const RecNr nr = ts.tree().addV(node);
    governBy(e, ts, nr, place);
    fillValue(e, ts, nr, datum, place);
    return nr;
}

RecNr emitValue(Emitter &e, TreeState &ts, ValueUse value, TypeUse governor, PlaceNr place,
                int status) {
    if (!value)
        return 0;
    const Datum *datum = readDatum(e.c, value, governor);
    if (datum->kind == DatumKind::Bad) {
        refuse(e, value.value->place, "a tree can't hold this value");
        return 0;
    }
    return emitDatum(e, ts, *datum, place, status);
}

bool isHeldArc(const Number &arc) {
    const std::optional<std::int64_t> small = asInt64(arc);
    return small && *small <= std::int64_t{UINT32_MAX};
}

void emitArcs(Emitter &e, TreeState &ts, RecNr nr, std::span<const DatumArc> arcs,
              std::span<const Number> all) {
    std::string text;
    for (const Number &arc : all) {
        if (!isHeldArc(arc))
            return refuse(e, e.current == nullptr ? Place{} : e.current->name.place,
                          "a tree can't hold the arc " + textOf(arc) +
                              ", which has more than 32 bits");
        text += (text.empty() ? "" : ".") + textOf(arc);
    }
    const RecNr governor = plainInteger(ts);
    RecNr last = 0;
    for (const DatumArc &arc : arcs) {
        const RecNr part =
            integerValue(ts, asInt64(arc.number).value_or(0), governor, TCS_MANDATORY);
        ts.tree().v(part).lineNr = ts.tree().v(nr).lineNr;
        const bool isReference = arc.reference.assignment != nullptr &&
                                 referToValue(e, ts, part, arc.reference.assignment);
        if (isReference)
            ts.tree().v(part).value = {};
        else
            ts.tree().v(part).nameIdx = nameNr(ts, arc.name);
        (last == 0 ? ts.tree().v(nr).refRecord : ts.tree().v(last).next) = part;
        last = part;
    }
    putValueBytes(ts.tree().v(nr), 0, 2, text.size());
    putValueBytes(ts.tree().v(nr), 4, 4, static_cast<std::uint64_t>(ts.tree().str(text)));
}

} // namespace asntree

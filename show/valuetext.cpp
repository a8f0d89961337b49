#include "show/texts.h"

#include "model/typevalues.h"
#include "model/valuequeries.h"
#include "model/valuetexts.h"
#include "model/valuewalk.h"
#include "show/writer.h"
#include "store/ketramac.h"
#include "store/recordwords.h"
#include "store/values.h"

namespace {

bool isEnumerated(AsnValue *value) {
    return getTypeOfValue(value) != nullptr && getTypeOfValue(value)->base.mainType == TYP_ENUM;
}

/* The number, and of an enumeration its item. */
Text integerText(AsnValue *value) {
    const sint64 number = int64Value(value);
    Text text;
    if (isEnumerated(value))
        forEachNamedNumber(getTypeOfValue(value), [&](AsnType *, AsnValue *item, int) {
            if (text.empty() && int64Value(item) == number)
                text = getRefOf(item);
        });
    return text.empty() ? numberText(number) : text;
}

Text realText(AsnValue *value) {
    return realValueStri(value);
}

template <typename Char> void appendCharacters(Text &text, const std::basic_string<Char> &chars) {
    for (Char c : chars) {
        const auto code = static_cast<std::uint32_t>(static_cast<std::make_unsigned_t<Char>>(c));
        if (code == '"')
            text += "\"\"";
        else if (code >= ' ' && code <= '~')
            text += static_cast<char>(code);
        else
            text += concat("<", code, ">");
    }
}

/* What can't be printed stands as its number in angle brackets. */
Text stringText(AsnValue *value) {
    const RestrCharStri chars = makeRestrCharStri(value->baseModule, value->base);
    Text text = "\"";
    appendCharacters(text, chars.text8);
    for (char16_t c : chars.text16)
        appendCharacters(text, std::basic_string<std::int32_t>(1, c));
    for (char32_t c : chars.text32)
        appendCharacters(text, std::basic_string<std::int32_t>(1, static_cast<std::int32_t>(c)));
    return text + "\"";
}

Text digitsText(AsnValue *value, bool isBits) {
    Text digits;
    std::int32_t length = 0;
    if (isBits)
        makeBitString(value, &digits, &length);
    else
        makeOctetString(value, &digits, &length);
    return "'" + digits + (isBits ? "'B" : "'H");
}

Text objectIdentifierText(AsnValue *value) {
    const Text arcs = objectIdentifierValueStri(value, " ", nullptr, nullptr);
    return arcs.empty() ? "{?}" : "{" + arcs + "}";
}

Text structuredText(AsnValue *value) {
    const bool isChoice = getValueMainType(value) == TYP_CHOICE;
    Text text;
    forEachValueComp(value, [&](AsnValue *, AsnValue *comp, int) {
        if (text.size() > MAX_SHOWN)
            return;
        Text part = getRefOf(comp);
        part += part.empty() ? "" : isChoice ? " : " : " ";
        addPart(text, part + valueText(comp));
    });
    if (text.size() > MAX_SHOWN)
        text += ", ...";
    return isChoice ? text : "{" + text + "}";
}

} // namespace

Text valueText(AsnValue *value) {
    const int kind = getValueMainType(value);
    switch (kind) {
    case TYP_BOOLEAN:
        return booleanValue(value) ? "TRUE" : "FALSE";
    case TYP_INTEGER:
    case TYP_ENUM:
        return integerText(value);
    case TYP_REAL:
        return realText(value);
    case TYP_BITSTR:
    case TYP_OCTSTR:
        return digitsText(value, kind == TYP_BITSTR);
    case TYP_OBJID:
        return objectIdentifierText(value);
    case TYP_SEQ:
    case TYP_SEQOF:
    case TYP_SET:
    case TYP_SETOF:
    case TYP_CHOICE:
    case TYP_EMB_PDV:
    case TYP_EXTERNAL_1990:
    case TYP_EXTERNAL_1994:
    case TYP_INSTANCE_OF:
    case TYP_CHASTR:
        return structuredText(value);
    case TYP_GENTIME:
    case TYP_UTCTIME:
        return stringText(value);
    default:
        return isRestrCharStringKind(kind) ? stringText(value) : typeWord(kind);
    }
}

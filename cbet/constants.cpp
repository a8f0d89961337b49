#include "cbet/constants.h"

#include "base/fatal.h"
#include "model/typequeries.h"
#include "model/valuequeries.h"

namespace {

/* The third character of a trigraph. */
bool endsTrigraph(char c) {
    return std::string_view("=/'()!<>-").find(c) != std::string_view::npos;
}

/* The run-time library holds such numbers as pairs of words. */
Text cIntegerValue64(sint64 value) {
    return value == i64ltosint64(INT32_MIN) ? "i64ltosint64 (-2147483648L)" : cSint64(value);
}

/* Infinity is the limit of a long; a number beyond its range says that it is unsigned. */
Text cIntegerValue32(sint64 value, int format) {
    if (i64ismax(value)) {
        if (format != VF_I32 && format != VF_UI32)
            fatalError(FATAL_INTERNAL, "CBET: Plus-infinity found as a non-long C type");
        return format == VF_I32 ? "LONG_MAX" : "ULONG_MAX";
    }
    if (i64ismin(value)) {
        if (format != VF_I32)
            fatalError(FATAL_INTERNAL, "CBET: Minus-infinity found as a non-long C type");
        return "LONG_MIN";
    }
    Text text = i64tostr(value);
    if (format == VF_UI32 && i64cmpul(value, 0x7FFFFFFFu) > 0)
        text += "UL";
    return text;
}

} // namespace

/* --- literals --- */

Text cOctalEscape(unsigned octet) {
    return concat("\\", octet >> 6, octet >> 3 & 7, octet & 7);
}

Text cStringText(std::string_view text) {
    constexpr char FIRST_PRINTABLE = ' ', DELETE = '\x7F';
    Text literal;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const bool isControl = (c >= 0 && c < FIRST_PRINTABLE) || c == DELETE;
        if (c == '\n')
            literal += "\\n";
        else if (isControl)
            literal += cOctalEscape(static_cast<unsigned>(c));
        else if (c == '"' || c == '\\')
            (literal += '\\') += c;
        else if (c == '?' && literal.ends_with('?') && i + 1 < text.size() &&
                 endsTrigraph(text[i + 1]))
            literal += "\\?";
        else
            literal += c;
    }
    return literal;
}

/* --- numbers in the form of the C type that takes them --- */

Text cSint64(sint64 value) {
    if (i64ismax(value))
        return "i64max ()";
    if (i64ismin(value))
        return "i64min ()";
    /* The smallest 32-bit number takes the form of the larger ones: C has no literal for it. */
    std::int32_t narrow = 0;
    if (i64tol(value, &narrow) && narrow != INT32_MIN)
        return concat("i64ltosint64 (", narrow, "L)");
    return concat("i64make (", i64hi(value), "L, ", i64lo(value), "UL)");
}

Text cInt64(sint64 value, int format) {
    const bool is64 = format == VF_UI64 || format == VF_I64;
    return is64 ? cIntegerValue64(value) : cIntegerValue32(value, format);
}

Text cIntegerValue(AsnValue *value) {
    AsnType *type = getTypeOfValue(value);
    return cInt64(int64Value(value), type != nullptr ? getVF(type) : static_cast<int>(VF_NONE));
}

#include "model/valuequeries.h"

#include "model/modules.h"
#include "model/valuesets.h"
#include "options/ketracnf.h"
#include "options/naming.h"

namespace {

/* What a generator calls the infinities. */
struct InfinityTexts {
    const char *minus = "MINUS-INFINITY";
    const char *plus = "PLUS-INFINITY";
};
InfinityTexts intInfinityStri;
InfinityTexts realInfinityStri;

/* Digits of a REAL unless the options say how many. */
constexpr int DEFAULT_DECIMALS = 10;

bool testValueInfinity(const AsnValue &value, bool plus) {
    const int kind = value.base.valueKind;
    return (kind == TYP_INTEGER || kind == TYP_REAL) && testInfinity(value.base, plus, kind);
}

/* The text of a special real, given those of the three cases. */
const char *specialRealText(const realVal &real, const char *plus, const char *minus,
                            const char *zero) {
    switch (getSpecialRealVal(real)) {
    case REAL_PLUS_INFINITY:
        return plus;
    case REAL_MINUS_INFINITY:
        return minus;
    default:
        return zero;
    }
}

} // namespace

/* What is written at the value, and what its base holds once references are followed. */

int getValueMainType(AsnValue *value) {
    return value->base.valueKind;
}
int getValueCompStatus(AsnValue *value) {
    return value->compStatus;
}

bool isValueExtensionmarker(AsnValue *value) {
    return value->base.valueKind == TYP_EXTENSION_MARKER;
}

bool isVisibleValue(AsnValue *value) {
    return value->ownerModule->modRec->exportsMode == 0 ||
           (value->base.valueFlags & VALUE_EXPORTED) != 0;
}

bool isPlusInfinity(AsnValue *value) {
    return testValueInfinity(*value, true);
}
bool isMinusInfinity(AsnValue *value) {
    return testValueInfinity(*value, false);
}

/* The value itself, for each sort. Which sort it is, the caller has found out before. */

bool booleanValue(AsnValue *value) {
    return valueBool(value->base);
}

std::int32_t integerValue(AsnValue *value) {
    return int64ToInt32(valueInt(value->base), value->ownerModule, value->base.lineNr,
                        "Integer value");
}

sint64 int64Value(AsnValue *value) {
    return valueInt(value->base);
}
realVal realValue(AsnValue *value) {
    return valueReal(value->base);
}
double doubleRealValue(AsnValue *value) {
    return retRealVal(valueReal(value->base));
}
std::int32_t octetStringLength(AsnValue *value) {
    return value->stringLength;
}

/* Values as text. What stands for infinity depends on the language that is written, so the
   generator says it. */

void setInfValueStri(const char *intMinus, const char *intPlus, const char *realMinus,
                     const char *realPlus) {
    auto replace = [](const char *&text, const char *by) {
        if (by != nullptr)
            text = by;
    };
    replace(intInfinityStri.minus, intMinus);
    replace(intInfinityStri.plus, intPlus);
    replace(realInfinityStri.minus, realMinus);
    replace(realInfinityStri.plus, realPlus);
}

Text booleanValueStri(AsnValue *value) {
    return booleanValue(value) ? "TRUE" : "FALSE";
}

Text integerValueStri(AsnValue *value) {
    const sint64 number = int64Value(value);
    if (i64ismax(number))
        return intInfinityStri.plus;
    if (i64ismin(number))
        return intInfinityStri.minus;
    return i64tostr(number);
}

Text realValueStri(AsnValue *value) {
    const realVal real = realValue(value);
    if (isSpecialRealVal(real))
        return specialRealText(real, realInfinityStri.plus, realInfinityStri.minus, "0");
    return concat("{", i64tostr(real.mantissa), ", ", real.base, ", ", real.exponent, "}");
}

Text doubleRealValueStri(AsnValue *value) {
    const realVal real = realValue(value);
    if (isSpecialRealVal(real))
        return specialRealText(real, "DBL_MAX", "-DBL_MAX", "0.0");
    const int option = getGlobalOptions(value->ownerModule)->decimals;
    const std::size_t wanted =
        static_cast<std::size_t>(option == DECIMALS_BINARY ? DEFAULT_DECIMALS : option);
    const Text mantissa = i64tostr(real.mantissa);
    const std::size_t digits = mantissa.size() - (i64isneg(real.mantissa) ? 1 : 0);
    const std::size_t zeros = wanted > digits ? wanted - digits : 0;
    return concat(mantissa, ".", Text(zeros, '0'), "E", real.exponent);
}

#include "asntree/forms.h"

#include <algorithm>

#include "store/ketramac.h"

namespace asntree {

namespace {

struct IntegerRow {
    Number low, high;
    ValueForm form;
};

const std::vector<IntegerRow> &integerRows(bool isSigned) {
    static const std::vector<IntegerRow> unsignedRows = {
        {Number::of(0), Number::of(UINT8_MAX), VF_UI8},
        {Number::of(0), Number::of(UINT16_MAX), VF_UI16},
        {Number::of(0), Number::of(UINT32_MAX), VF_UI32},
        {Number::of(0), Number::ofDigits("18446744073709551615"), VF_UI64},
    };
    static const std::vector<IntegerRow> signedRows = {
        {Number::of(INT8_MIN), Number::of(INT8_MAX), VF_I8},
        {Number::of(INT16_MIN), Number::of(INT16_MAX), VF_I16},
        {Number::of(INT32_MIN), Number::of(INT32_MAX), VF_I32},
        {Number::of(INT64_MIN), Number::of(INT64_MAX), VF_I64},
    };
    return isSigned ? signedRows : unsignedRows;
}

ValueForm smallestForm(const NumberSet &numbers) {
    if (numbers.empty() || !numbers.lower().finite() || !numbers.upper().finite())
        return VF_I64;
    const bool isSigned = numbers.lower() < Number::of(0);
    for (const IntegerRow &row : integerRows(isSigned))
        if (row.low <= numbers.lower() && numbers.upper() <= row.high)
            return row.form;
    return VF_I64;
}

ValueForm integerForm(const FormFacts &facts) {
    if (facts.words != nullptr && facts.words->has(WordKind::Int) && facts.words->intForm != 0)
        return static_cast<ValueForm>(facts.words->intForm);
    if (facts.settings.intForm != VF_NONE)
        return static_cast<ValueForm>(facts.settings.intForm);
    return smallestForm(facts.extent);
}

/* The greatest size; nothing without a bound. */
std::optional<std::uint64_t> upperSize(const NumberSet &sizes) {
    if (sizes.empty() || !sizes.upper().finite())
        return std::nullopt;
    return asUint64(sizes.upper());
}

ValueForm sizeForm(std::optional<std::uint64_t> upper) {
    return !upper || *upper > UINT16_MAX ? VF_UI32 : *upper > UINT8_MAX ? VF_UI16 : VF_UI8;
}

std::uint64_t octetsOf(int mainType, std::uint64_t size) {
    if (mainType == TYP_BITSTR)
        return size / 8 + (size % 8 != 0 ? 1 : 0);
    return mainType == TYP_BMPSTR && size < (std::uint64_t{1} << 60) ? size * 2 : size;
}

bool isStaticString(int mainType, const FormFacts &facts, std::optional<std::uint64_t> upper) {
    if (!upper || *upper == 0 || mainType == TYP_UNISTR)
        return false;
    std::uint64_t limit = facts.settings.staticLimit;
    if (facts.words != nullptr && facts.words->has(WordKind::String)) {
        if (!facts.words->isStatic)
            return false;
        limit = facts.words->staticLimit != 0 ? facts.words->staticLimit : UINT32_MAX;
    }
    return octetsOf(mainType, *upper) <= limit;
}

Form stringForm(int mainType, const FormFacts &facts) {
    const std::optional<std::uint64_t> upper = upperSize(facts.extent);
    const ValueForm control = sizeForm(upper);
    if (isStaticString(mainType, facts, upper)) {
        if (facts.extent.lower() == facts.extent.upper())
            return {VF_STAS0, VF_NONE};
        return {control == VF_UI8    ? VF_STAS8
                : control == VF_UI16 ? VF_STAS16
                                     : VF_STAS,
                control};
    }
    const bool isBmp = mainType == TYP_BMPSTR;
    if (control == VF_UI8)
        return {isBmp ? VF_BMPSTR8 : VF_DYNS8, control};
    if (control == VF_UI16)
        return {isBmp ? VF_BMPSTR16 : VF_DYNS16, control};
    return {isBmp ? VF_BMPSTR : VF_DYNS, VF_UI32};
}

Form listForm(const FormFacts &facts) {
    const std::optional<std::uint64_t> upper = upperSize(facts.extent);
    ValueForm control = sizeForm(upper);
    if (facts.settings.listForm != VF_NONE)
        control = static_cast<ValueForm>(facts.settings.listForm);
    const bool isSaid = facts.words != nullptr && facts.words->has(WordKind::List);
    if (isSaid && facts.words->list == ListWord::DynArray)
        return {VF_STRU, control, optionMask(OPT_DYNAMIC_ARRAY)};
    if (isSaid && facts.words->list == ListWord::List)
        return {VF_LIST};
    const std::uint64_t limit = !isSaid                    ? facts.settings.arrayLimit
                                : facts.words->arrayLimit ? facts.words->arrayLimit
                                                          : UINT32_MAX;
    if (upper && *upper > 0 && *upper <= limit)
        return {VF_STRU, control};
    return {VF_LIST};
}

/* Decoders look for missing components of a SET with one bit more than it has components, unless
   the last ones may be missing. */
int maskBits(int mainType, const FormFacts &facts) {
    return facts.components + (mainType == TYP_SET && facts.lastIsMandatory ? 1 : 0);
}

ValueForm maskForm(int mainType, const FormFacts &facts) {
    const int bits = maskBits(mainType, facts);
    const auto wanted = static_cast<ValueForm>(facts.settings.maskForm);
    const int wantedBits = wanted == VF_I8    ? 8
                           : wanted == VF_I16 ? 16
                           : wanted == VF_I32 ? 32
                                              : 0;
    if (wantedBits >= bits && wantedBits != 0)
        return wanted;
    return bits <= 8 ? VF_UI8 : bits <= 16 ? VF_UI16 : VF_I32;
}

ValueForm choiceForm(const FormFacts &facts) {
    constexpr int MOST_OF_8_BITS = 127;
    const auto wanted = static_cast<ValueForm>(facts.settings.choiceForm);
    const bool fits = facts.components <= MOST_OF_8_BITS;
    if (wanted != VF_NONE && (fits || wanted != VF_I8))
        return wanted;
    return fits ? VF_I8 : VF_I16;
}

ValueForm realForm(const FormFacts &facts) {
    if (facts.words != nullptr && facts.words->has(WordKind::Real))
        return static_cast<ValueForm>(facts.words->realForm);
    return facts.settings.realForm == VF_NONE ? VF_REAL64
                                              : static_cast<ValueForm>(facts.settings.realForm);
}

/* Kinds whose form is always the same. */
ValueForm fixedForm(int mainType) {
    switch (mainType) {
    case TYP_BOOLEAN:
        return VF_BOOL;
    case TYP_NULL:
        return VF_NULL;
    case TYP_ANY:
        return VF_ANY;
    case TYP_OBJID:
        return VF_OBJI;
    case TYP_GENTIME:
    case TYP_UTCTIME:
        return VF_COMT;
    case TYP_EXTERNAL_1990:
        return VF_EXTERNAL_1990;
    case TYP_EXTERNAL_1994:
    case TYP_INSTANCE_OF:
        return VF_EXTERNAL_1994;
    default:
        return VF_NONE;
    }
}

} // namespace

bool exceeds64Bits(const NumberSet &numbers) {
    static const Number least = Number::of(INT64_MIN);
    static const Number greatest = Number::of(INT64_MAX);
    static const Number greatestUnsigned = Number::ofDigits("18446744073709551615");
    if (numbers.empty())
        return false;
    const Number &low = numbers.lower();
    const Number &high = numbers.upper();
    if (low.finite() && (low < least || greatestUnsigned < low))
        return true;
    if (!high.finite())
        return false;
    const bool isSigned = !low.finite() || low < Number::of(0);
    return high < least || (isSigned ? greatest : greatestUnsigned) < high;
}

Form formOf(int mainType, const FormFacts &facts) {
    switch (mainType) {
    case TYP_INTEGER:
        return {integerForm(facts)};
    case TYP_ENUM:
        return {smallestForm(facts.extent)};
    case TYP_REAL:
        return {realForm(facts)};
    case TYP_SEQ:
    case TYP_SET:
        return {VF_STRU, maskForm(mainType, facts)};
    case TYP_CHOICE:
        return {VF_STRU, choiceForm(facts)};
    case TYP_SEQOF:
    case TYP_SETOF:
        return listForm(facts);
    default:
        break;
    }
    return isStringKind(mainType) ? stringForm(mainType, facts) : Form{fixedForm(mainType)};
}

} // namespace asntree

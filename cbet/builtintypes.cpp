#include "cbet/builtintypes.h"

#include "base/fatal.h"
#include "base/text.h"
#include "model/modules.h"
#include "model/typeextension.h"
#include "model/typequeries.h"
#include "options/ketracnf.h"
#include "store/ketramac.h"

namespace {

/* Names that depend on the value form or on "C-GENERATION=". */

bool hasSwitch(AsnType *type, CGenerationBit bit) {
    return testCGenerationOption(getModuleOfType(type), bit);
}

/* The width and sign that the form has: e_uint8, d_sint64. */
const char *integerCall(AsnType *type) {
    switch (getVF(type)) {
    case VF_UI8:
        return "uint8";
    case VF_UI16:
        return "uint16";
    case VF_UI32:
        return "uint32";
    case VF_UI64:
        return "uint64";
    case VF_I8:
        return "sint8";
    case VF_I16:
        return "sint16";
    case VF_I32:
        return "sint32";
    case VF_I64:
        return "sint64";
    default:
        fatalError(FATAL_INTERNAL, "CBET: Unable to construct a function name");
    }
}

/* An enumeration that can be extended also holds numbers that it doesn't know. */
const char *enumCall(AsnType *type) {
    return isExtensibleEnumeratedList(type) ? "XEnum" : integerCall(type);
}

/* One C type for all widths, or one for each. */
const char *realCall(AsnType *type) {
    if (hasSwitch(type, CGEN_REAL))
        return "Real";
    switch (getVF(type)) {
    case VF_REAL32:
        return "Real32";
    case VF_REAL64:
        return "Real64";
    case VF_REAL128:
        return "Real128";
    default:
        return "";
    }
}

/* Times as one structure for both kinds (CT), or as a date and time with a zone (DT). */
const char *generalizedTimeCall(AsnType *type) {
    return hasSwitch(type, CGEN_COMMONTIME) ? "GeneralizedTimeCT" : "GeneralizedTimeDT";
}

const char *utcTimeCall(AsnType *type) {
    return hasSwitch(type, CGEN_COMMONTIME) ? "UTCTimeCT" : "UTCTimeDT";
}

const char *externalCall(AsnType *type) {
    return hasSwitch(type, CGEN_EXTERNAL) ? "External" : "External1990";
}

/* ORDER MAIN TYPES */
constexpr BuiltinType builtinTypes[] = {
    {TYP_BOOLEAN, LeafSort::BOOLEAN, "Boolean"},
    {TYP_INTEGER, LeafSort::INTEGER, nullptr, nullptr, false, integerCall},
    {TYP_ENUM, LeafSort::ENUMERATED, nullptr, nullptr, false, enumCall},
    {TYP_REAL, LeafSort::REAL, nullptr, nullptr, false, realCall},
    {TYP_BITSTR, LeafSort::STRING, "BitString", "BITSTRING"},
    {TYP_OCTSTR, LeafSort::STRING, "OctetString", "OCTET"},
    {TYP_NULL, LeafSort::NULL_TYPE, "NullType"},
    {TYP_SEQ, LeafSort::EMPTY_STRUCTURE},
    {TYP_SEQOF},
    {TYP_SET, LeafSort::EMPTY_STRUCTURE},
    {TYP_SETOF},
    {TYP_CHOICE},
    {TYP_ANY, LeafSort::ANY, "Any"},
    {TYP_EMB_PDV},
    {TYP_OBJID, LeafSort::SIMPLE, "ObjectIdentifier"},
    {TYP_NUMSTR, LeafSort::STRING, "NumericString", "NUMERICCHAR", true},
    {TYP_PRISTR, LeafSort::STRING, "PrintableString", "PRINTABLECHAR", true},
    {TYP_TELSTR, LeafSort::STRING, "T61String", "T61CHAR"},
    {TYP_VIDSTR, LeafSort::STRING, "VideotexString", "VIDEOTEXCHAR"},
    {TYP_VISSTR, LeafSort::STRING, "VisibleString", "VISIBLECHAR", true},
    {TYP_IA5STR, LeafSort::STRING, "IA5String", "IA5CHAR", true},
    {TYP_GRASTR, LeafSort::STRING, "GraphicString", "GRAPHICCHAR"},
    {TYP_GENSTR, LeafSort::STRING, "GeneralString", "GENERALCHAR"},
    {TYP_BMPSTR, LeafSort::STRING, "BMPString", "ASN_BMPCHAR", true},
    {TYP_UNISTR, LeafSort::STRING, "UniversalString", nullptr, true},
    {TYP_CHASTR},
    {TYP_GENTIME, LeafSort::SIMPLE, nullptr, nullptr, false, generalizedTimeCall},
    {TYP_UTCTIME, LeafSort::SIMPLE, nullptr, nullptr, false, utcTimeCall},
    {TYP_EXTERNAL_1990, LeafSort::EXTERNAL, nullptr, nullptr, false, externalCall},
    {TYP_EXTERNAL_1994, LeafSort::EXTERNAL, "External1994"},
    {TYP_OBJDESCR, LeafSort::STRING, "GraphicString", "GRAPHICCHAR"},
    {TYP_INSTANCE_OF},
    {TYP_SYNONYM},
    {TYP_EXTENSION_MARKER},
    {TYP_SELECTION},
    {TYP_FIELDLIST},
    {TYP_OPEN, LeafSort::ANY},
    {TYP_CLASS},
    {TYP_TYPE_ID},
    {TYP_ABSTR_STX},
    {TYP_NONE},
};

/* The rows are found by number. */
constexpr bool isInOrder() {
    for (int i = 0; i < TYP_COUNT; ++i)
        if (builtinTypes[i].mainType != i)
            return false;
    return true;
}
static_assert(std::size(builtinTypes) == TYP_COUNT && isInOrder());

} // namespace

const BuiltinType &cBuiltinType(int mainType) {
    return builtinTypes[mainType >= 0 && mainType < TYP_COUNT ? mainType : TYP_NONE];
}

const char *cBuiltinName(AsnType *type) {
    const BuiltinType &row = cBuiltinType(getTypeMainType(type));
    if (row.mainType == TYP_UNISTR)
        return "";
    return row.callOf != nullptr ? row.callOf(type) : orEmpty(row.call);
}

bool cHasTextConstants(int mainType) {
    return isText8Kind(mainType) && mainType != TYP_OBJDESCR;
}

#include "cbet/builtin.h"

#include "base/fatal.h"
#include "base/files.h"
#include "cbet/forms.h"
#include "model/modules.h"
#include "model/tags.h"
#include "model/typeextension.h"
#include "model/typequeries.h"
#include "options/ketracnf.h"

/* --- names of builtin types --- */

namespace {

/* The first tag number that takes the wide form. */
constexpr int FIRST_WIDE_TAG = 31;

bool hasSwitch(AsnType *type, CGenerationBit bit) {
    return testCGenerationOption(getModuleOfType(type), bit);
}

const char *intBuiltinCFuncBody(AsnType *type) {
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

const char *enumName(AsnType *type) {
    return isExtensibleEnumeratedList(type) ? "XEnum" : intBuiltinCFuncBody(type);
}

const char *realName(AsnType *type) {
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

const char *genTimeName(AsnType *type) {
    return hasSwitch(type, CGEN_COMMONTIME) ? "GeneralizedTimeCT" : "GeneralizedTimeDT";
}

const char *utcTimeName(AsnType *type) {
    return hasSwitch(type, CGEN_COMMONTIME) ? "UTCTimeCT" : "UTCTimeDT";
}

const char *externalName(AsnType *type) {
    return hasSwitch(type, CGEN_EXTERNAL) ? "External" : "External1990";
}

/* The name of a kind of type, or the function that knows it. */
struct BuiltinRow {
    int mainType;
    const char *name;
    const char *(*nameOf)(AsnType *type);
};

constexpr BuiltinRow builtinRows[] = {
    {TYP_BOOLEAN, "Boolean", nullptr},
    {TYP_INTEGER, nullptr, intBuiltinCFuncBody},
    {TYP_ENUM, nullptr, enumName},
    {TYP_REAL, nullptr, realName},
    {TYP_BITSTR, "BitString", nullptr},
    {TYP_OCTSTR, "OctetString", nullptr},
    {TYP_NULL, "NullType", nullptr},
    {TYP_ANY, "Any", nullptr},
    {TYP_OBJID, "ObjectIdentifier", nullptr},
    {TYP_NUMSTR, "NumericString", nullptr},
    {TYP_PRISTR, "PrintableString", nullptr},
    {TYP_TELSTR, "T61String", nullptr},
    {TYP_VIDSTR, "VideotexString", nullptr},
    {TYP_VISSTR, "VisibleString", nullptr},
    {TYP_IA5STR, "IA5String", nullptr},
    {TYP_GRASTR, "GraphicString", nullptr},
    {TYP_OBJDESCR, "GraphicString", nullptr},
    {TYP_GENSTR, "GeneralString", nullptr},
    {TYP_BMPSTR, "BMPString", nullptr},
    {TYP_GENTIME, nullptr, genTimeName},
    {TYP_UTCTIME, nullptr, utcTimeName},
    {TYP_EXTERNAL_1990, nullptr, externalName},
    {TYP_EXTERNAL_1994, "External1994", nullptr},
};

const char *builtinName(AsnType *type) {
    for (const BuiltinRow &row : builtinRows)
        if (row.mainType == getTypeMainType(type))
            return row.nameOf != nullptr ? row.nameOf(type) : row.name;
    return "";
}

Text &join(Text &dst, const char *prefix, const Text &middle, const char *postfix) {
    dst = orEmpty(prefix) + middle + orEmpty(postfix);
    return dst;
}

/* The names that stand for all of a string type's name. */
const char *nameInPlaceOfString(AsnType *type) {
    if (getVF(type) == VF_FRM)
        return "Frame";
    if (testTypeOption(type, OPT_SKIPPED))
        return "NullType";
    return nullptr;
}

/* The suffix for the width of a string's length; `fixedOnly` knows that of fixed sizes alone. */
const char *sizeSuffix(AsnType *type, bool fixedOnly) {
    if (getVF(type) == VF_LIST)
        return "";
    switch (getVFSize(type)) {
    case VF_NONE:
        return "0";
    case VF_UI8:
    case VF_I8:
        return fixedOnly ? "" : "8";
    case VF_UI16:
    case VF_I16:
        return fixedOnly ? "" : "16";
    default:
        return "";
    }
}

/* What takes a value that is there already names UniversalString as well; what fills one doesn't. */
const char *fullName(AsnType *type) {
    return getTypeMainType(type) == TYP_UNISTR ? "UniversalString" : builtinName(type);
}

const char *segment(AsnType *type) {
    return getVF(type) == VF_LIST ? "Seg" : "";
}

} // namespace

Text &cBuiltinCFunc(Text &dst, const char *prefix, AsnType *type, const char *postfix) {
    return join(dst, prefix, builtinName(type), postfix);
}

Text &cBuiltinCodCFunc(Text &dst, const char *prefix, AsnType *type, const char *postfix) {
    return join(dst, prefix, Text(builtinName(type)) + cTagFuncSuff(type), postfix);
}

Text &cBuiltinStringCFunc(Text &dst, const char *prefix, AsnType *type, const char *postfix) {
    if (const char *name = nameInPlaceOfString(type))
        return join(dst, prefix, name, postfix);
    const char *form = cIsDynamicString(type) ? "Dyn" : segment(type);
    return join(dst, prefix, Text(form) + builtinName(type) + sizeSuffix(type, false), postfix);
}

Text &cBuiltinStringCodCFunc(Text &dst, const char *prefix, AsnType *type, const char *postfix) {
    if (const char *name = nameInPlaceOfString(type))
        return join(dst, prefix, name, postfix);
    Text name = Text(segment(type)) + fullName(type) + sizeSuffix(type, true);
    return join(dst, prefix, name + cTagFuncSuff(type), postfix);
}

Text &cBuiltinStringTstCFunc(Text &dst, const char *prefix, AsnType *type, const char *postfix) {
    if (const char *name = nameInPlaceOfString(type))
        return join(dst, prefix, name, postfix);
    return join(dst, prefix, Text(segment(type)) + fullName(type) + sizeSuffix(type, true),
                postfix);
}

const char *cTagFuncSuff(AsnType *type) {
    bool narrow = false;
    forInnermostTag(type, [&](AsnType *, const AsnTag *tag, int) {
        narrow = getTagNumber(tag) < FIRST_WIDE_TAG;
    });
    return narrow ? "_8" : "";
}

/* --- tags --- */

namespace {

/* "TAG8(TAG_CTX8, TAG_PRI8, 3)", or without each "8" in the wide form. */
Text &tagStri(Text &dst, const char *prefix, const AsnTag *tag, bool constructed, bool narrow,
              const char *postfix) {
    const char *width = narrow && getTagNumber(tag) < FIRST_WIDE_TAG ? "8" : "";
    Text tagClass;
    getTagClassStri(tagClass, nullptr, tag, width);
    dst = formatText("%sTAG%s(%s, TAG_%s%s, %d)%s", orEmpty(prefix), width, tagClass.c_str(),
                     constructed ? "STR" : "PRI", width, getTagNumber(tag), orEmpty(postfix));
    return dst;
}

void tagToF(int file, const char *prefix, const AsnTag *tag, bool constructed, bool narrow,
            const char *postfix) {
    Text text;
    wToF(file, tagStri(text, prefix, tag, constructed, narrow, postfix));
}

} // namespace

Text &cTagStri(Text &dst, const char *prefix, const AsnTag *tag, bool constructed,
               const char *postfix) {
    return tagStri(dst, prefix, tag, constructed, true, postfix);
}

Text &cTag32Stri(Text &dst, const char *prefix, const AsnTag *tag, bool constructed,
                 const char *postfix) {
    return tagStri(dst, prefix, tag, constructed, false, postfix);
}

void cTagToF(int file, const char *prefix, const AsnTag *tag, bool constructed,
             const char *postfix) {
    tagToF(file, prefix, tag, constructed, true, postfix);
}

void cTag32ToF(int file, const char *prefix, const AsnTag *tag, bool constructed,
               const char *postfix) {
    tagToF(file, prefix, tag, constructed, false, postfix);
}

void cInnermostTagToF(int file, const char *prefix, AsnType *type, bool constructed,
                      const char *postfix) {
    forInnermostTag(type, [&](AsnType *, const AsnTag *tag, int) {
        cTagToF(file, prefix, tag, constructed, postfix);
    });
}

void cOutermostTag32ToF(int file, const char *prefix, AsnType *type, bool constructed,
                        const char *postfix) {
    forOutermostTag(type, [&](AsnType *, const AsnTag *tag, int) {
        cTag32ToF(file, prefix, tag, constructed, postfix);
    });
}

Text &cOutermostTag32Stri(Text &dst, const char *prefix, AsnType *type, bool constructed,
                          const char *postfix) {
    dst.clear();
    forOutermostTag(type, [&](AsnType *, const AsnTag *tag, int) {
        cTag32Stri(dst, prefix, tag, constructed, postfix);
    });
    return dst;
}

/* --- contexts --- */

Text &cRawAsnutigPtr(Text &dst, const char *prefix, GIndex gIndex, const char *postfix) {
    return join(dst, prefix, Text(cGetGName(gIndex)) + "_asnuti", postfix);
}

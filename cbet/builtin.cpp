#include "cbet/builtin.h"

#include "base/files.h"
#include "cbet/builtintypes.h"
#include "cbet/forms.h"
#include "model/tags.h"
#include "model/typequeries.h"

/* --- names of run-time functions --- */

namespace {

/* The first tag number that takes the wide form. */
constexpr int FIRST_WIDE_TAG = 31;

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
    const BuiltinType &row = cBuiltinType(getTypeMainType(type));
    return row.call != nullptr ? row.call : cBuiltinName(type);
}

/* Strings in segments have functions of their own. */
const char *segment(AsnType *type) {
    return getVF(type) == VF_LIST ? "Seg" : "";
}

} // namespace

/* uint8_8, for functions that take a tag */
Text cBuiltinCodCFunc(AsnType *type) {
    return concat(cBuiltinName(type), cTagFuncSuff(type));
}

/* DynIA5String8, IA5String0: what fills a string knows how its length is held */
Text cBuiltinStringCFunc(AsnType *type) {
    if (const char *name = nameInPlaceOfString(type))
        return name;
    const char *form = cIsDynamicString(type) ? "Dyn" : segment(type);
    return concat(form, cBuiltinName(type), sizeSuffix(type, false));
}

/* IA5String_8, SegIA5String_8: what encodes one finds its length in it */
Text cBuiltinStringCodCFunc(AsnType *type) {
    if (const char *name = nameInPlaceOfString(type))
        return name;
    return cBuiltinStringTstCFunc(type) + cTagFuncSuff(type);
}

Text cBuiltinStringTstCFunc(AsnType *type) {
    if (const char *name = nameInPlaceOfString(type))
        return name;
    return concat(segment(type), fullName(type), sizeSuffix(type, true));
}

/* Functions for tag numbers that fit the narrow form end so. */
const char *cTagFuncSuff(AsnType *type) {
    bool narrow = false;
    forInnermostTag(type, [&](AsnType *, const AsnTag *tag, int) {
        narrow = getTagNumber(tag) < FIRST_WIDE_TAG;
    });
    return narrow ? "_8" : "";
}

/* --- tags --- */

namespace {

/* "TAG8(TAG_CTX8, TAG_PRI8, 3)" of the width "8", or without each "8" in the wide form. */
Text tagStri(const AsnTag *tag, bool constructed, const char *width) {
    return concat("TAG", width, "(", getTagClassStri(tag), width, ", TAG_",
                  constructed ? "STR" : "PRI", width, ", ", getTagNumber(tag), ")");
}

} // namespace

/* TAG8(TAG_CTX8, TAG_PRI8, 3) */
Text cTagStri(const AsnTag *tag, bool constructed) {
    return tagStri(tag, constructed, getTagNumber(tag) < FIRST_WIDE_TAG ? "8" : "");
}

/* TAG(TAG_CTX, TAG_PRI, 3) */
Text cTag32Stri(const AsnTag *tag, bool constructed) {
    return tagStri(tag, constructed, "");
}

void cInnermostTagToF(int file, AsnType *type, bool constructed, const char *behind) {
    forInnermostTag(type, [&](AsnType *, const AsnTag *tag, int) {
        putF(file, cTagStri(tag, constructed), behind);
    });
}

Text cOutermostTag32Stri(AsnType *type, bool constructed) {
    Text text;
    forOutermostTag(
        type, [&](AsnType *, const AsnTag *tag, int) { text = cTag32Stri(tag, constructed); });
    return text;
}

/* --- contexts --- */

/* asncodg_asnuti */
Text cRawAsnutigPtr(GIndex gIndex) {
    return concat(cGetGName(gIndex), "_asnuti");
}

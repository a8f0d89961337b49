#include "cbet/builtin.h"

#include "base/files.h"
#include "cbet/builtintypes.h"
#include "cbet/forms.h"
#include "model/modules.h"
#include "model/tags.h"
#include "model/typeextension.h"
#include "model/typequeries.h"
#include "options/ketracnf.h"

/* --- names of run-time functions --- */

namespace {

/* The first tag number that takes the wide form. */
constexpr int FIRST_WIDE_TAG = 31;

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
    const BuiltinType &row = cBuiltinType(getTypeMainType(type));
    return row.call != nullptr ? row.call : cBuiltinName(type);
}

const char *segment(AsnType *type) {
    return getVF(type) == VF_LIST ? "Seg" : "";
}

} // namespace

Text &cBuiltinCFunc(Text &dst, const char *prefix, AsnType *type, const char *postfix) {
    return join(dst, prefix, cBuiltinName(type), postfix);
}

Text &cBuiltinCodCFunc(Text &dst, const char *prefix, AsnType *type, const char *postfix) {
    return join(dst, prefix, Text(cBuiltinName(type)) + cTagFuncSuff(type), postfix);
}

Text &cBuiltinStringCFunc(Text &dst, const char *prefix, AsnType *type, const char *postfix) {
    if (const char *name = nameInPlaceOfString(type))
        return join(dst, prefix, name, postfix);
    const char *form = cIsDynamicString(type) ? "Dyn" : segment(type);
    return join(dst, prefix, Text(form) + cBuiltinName(type) + sizeSuffix(type, false), postfix);
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
    const Text tagClass = concat(getTagClassStri(tag), width);
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

#include "cbet/listsizes.h"

#include "base/files.h"
#include "cbet/homes.h"
#include "cbet/forms.h"
#include "cbet/reports.h"
#include "cbet/vars.h"
#include "model/bounds.h"
#include "model/typequeries.h"

/* --- references to whole structures --- */

namespace {

/* The block home is the structure itself. */
bool isBlockHome(AsnType *type) {
    return testTypeOption(type, OPT_HOME) && cVarCount(VAR_HOME) > 0;
}

} // namespace

Text &cStructHomeRef(Text &dst, const char *prefix, bool addressOf, AsnType *type,
                     const char *postfix) {
    if (!isBlockHome(type))
        return cHomeRef(dst, prefix, addressOf, type, nullptr, postfix);
    dst = formatText("%s%sh%d%s", orEmpty(prefix), addressOf ? "" : "*", cVarCount(VAR_HOME),
                     orEmpty(postfix));
    return dst;
}

Text &cStructHomeMemberRef(Text &dst, const char *prefix, bool addressOf, AsnType *type,
                           const char *postfix) {
    if (!isBlockHome(type))
        return cHomeRef(dst, prefix, addressOf, type, ".", postfix);
    dst = formatText("%s%sh%d->%s", orEmpty(prefix), addressOf ? "&" : "", cVarCount(VAR_HOME),
                     orEmpty(postfix));
    return dst;
}

/* --- sizes --- */

void cInitList(int file, AsnType *type) {
    Text text;
    if (getVF(type) == VF_LIST) {
        wToF(file, cStructHomeRef(text, "listInit (", true, type, ");\n"));
        return;
    }
    Text name = formatText("%sArr%sInit (", cIsDynamicArray(type) ? "dyn" : "sta",
                           getVFSize(type) == VF_NONE ? "0" : "");
    wToF(file, cStructHomeRef(text, name.c_str(), true, type, ");\n"));
}

Text cSizeBoundText(AsnType *type, sint64 bound) {
    std::int32_t narrow;
    if (!i64tol(bound, &narrow))
        int64Warning(getModuleOfType(type), getTypeDefinitionLine(type),
                     "Size constraint upper bound > MAXINT32");
    return i64tostr(bound);
}

namespace {

Text &countedSize(Text &dst, const char *prefix, AsnType *type, bool useLimit,
                  const char *postfix) {
    if (!useLimit)
        return cNVarRef(dst, prefix, postfix);
    sint64 low, high, limit;
    getInt64SizeEndpoints(type, &low, &high, &limit);
    dst = orEmpty(prefix) + cSizeBoundText(type, limit) + orEmpty(postfix);
    return dst;
}

Text &lengthCall(Text &dst, const char *prefix, const char *function, AsnType *type,
                 const char *postfix) {
    Text before = Text(orEmpty(prefix)) + function;
    Text behind = Text(")") + orEmpty(postfix);
    /* A list whose body is being written is reached as the structure that it is, since its own item
       variable may be open. One that only refers to a definition has no body here. */
    const bool isReference = getFatherOfTypeComp(type) != nullptr && cIsDefinedBaseType(type);
    if (isListType(type) && !isReference)
        return cStructHomeRef(dst, before.c_str(), true, type, behind.c_str());
    return cHome(dst, before.c_str(), true, type, nullptr, behind.c_str());
}

} // namespace

Text &cGetSize(Text &dst, const char *prefix, AsnType *type, bool useLimit, const char *postfix) {
    switch (getVF(type)) {
    case VF_STAS0:
    case VF_DYNS0:
    case VF_BMPSTR0:
        return countedSize(dst, prefix, type, useLimit, postfix);
    case VF_STAS8:
    case VF_STAS16:
    case VF_STAS:
        return lengthCall(dst, prefix, "staStrLen (", type, postfix);
    case VF_DYNS8:
    case VF_DYNS16:
    case VF_DYNS:
    case VF_BMPSTR8:
    case VF_BMPSTR16:
    case VF_BMPSTR:
        return lengthCall(dst, prefix, "dynStrLen (", type, postfix);
    case VF_LIST:
        return lengthCall(dst, prefix, "listLen (", type, postfix);
    case VF_STRU:
        if (getVFSize(type) == VF_NONE)
            return countedSize(dst, prefix, type, useLimit, postfix);
        return lengthCall(dst, prefix,
                          testTypeOption(type, OPT_DYNAMIC_ARRAY) ? "dynArrLen (" : "staArrLen (",
                          type, postfix);
    default:
        dst.clear();
        return dst;
    }
}

void cSizeToF(int file, const char *prefix, AsnType *type, bool useLimit, const char *postfix) {
    Text text;
    if (cGetSize(text, prefix, type, useLimit, postfix).empty())
        text = Text(orEmpty(prefix)) + orEmpty(postfix);
    wToF(file, text);
}

void cIncListSize(int file, AsnType *list, AsnType *) {
    if (!isListType(list))
        return;
    Text text;
    if (getVF(list) == VF_LIST)
        cStructHomeRef(text, "incListLen (", true, list, ");\n");
    else if (getVFSize(list) == VF_NONE)
        cNVarRef(text, nullptr, "++;\n");
    else if (cIsStaticArray(list))
        cStructHomeRef(text, "incStaArrLen (", true, list, ");\n");
    else if (cIsDynamicArray(list))
        cStructHomeRef(text, "incDynArrLen (", true, list, ");\n");
    else
        cStructHomeRef(text, "incListLen (", true, list, ");\n");
    wToF(file, text);
}

/* --- bounds --- */

namespace {

/* if (staArrLen (home) >= 9){
   reportError (ASNG_F(asncodg) AM_FAIL);
   } */
void cCheckListUpperBoundEngine(int file, AsnType *elem, const char *action, bool isError) {
    AsnType *list = getFatherOfTypeComp(elem);
    sint64 low, high, limit;
    getInt64SizeEndpoints(list, &low, &high, &limit);
    if (i64ismax(high))
        return;
    Text number = cSizeBoundText(list, limit);
    cSizeToF(file, "if (", list, false, " >=");
    printfToF(file, " %s%s)", number.c_str(), getVFSize(list) == VF_I32 ? "L" : "");
    cOpenBrace(file);
    if (action != nullptr)
        wToF(file, action);
    if (isError)
        cReportError(file, "AM_FAIL");
    else
        wToF(file, "break;\n");
    cCloseBrace(file);
}

} // namespace

void cCheckListUpperBound(int file, AsnType *elem) {
    cCheckListUpperBoundEngine(file, elem, nullptr, true);
}

void cCheckListUpperBoundWithBreak(int file, AsnType *elem) {
    cCheckListUpperBoundEngine(file, elem, nullptr, false);
}

void cCheckListUpperBoundWithActionAndBreak(int file, AsnType *elem, const char *action) {
    cCheckListUpperBoundEngine(file, elem, action, false);
}

#include "cbet/listsizes.h"

#include "base/files.h"
#include "cbet/homes.h"
#include "cbet/forms.h"
#include "cbet/reports.h"
#include "cbet/vars.h"
#include "model/bounds.h"
#include "model/typequeries.h"

/* --- sizes --- */

void cInitList(int file, AsnType *type) {
    if (getVF(type) == VF_LIST)
        putF(file, "listInit (", cStructHome(type, HOME_ADDRESS), ");\n");
    else
        putF(file, cIsDynamicArray(type) ? "dyn" : "sta", "Arr",
             getVFSize(type) == VF_NONE ? "0" : "", "Init (", cStructHome(type, HOME_ADDRESS),
             ");\n");
}

Text cSizeBoundText(AsnType *type, sint64 bound) {
    std::int32_t narrow;
    if (!i64tol(bound, &narrow))
        int64Warning(getModuleOfType(type), getTypeDefinitionLine(type),
                     "Size constraint upper bound > MAXINT32");
    return i64tostr(bound);
}

namespace {

Text countedSize(AsnType *type, bool useLimit) {
    if (!useLimit)
        return cNVarRef();
    sint64 low, high, limit;
    getInt64SizeEndpoints(type, &low, &high, &limit);
    return cSizeBoundText(type, limit);
}

Text lengthCall(const char *function, AsnType *type) {
    /* A list whose body is being written is reached as the structure that it is, since its own item
       variable may be open. One that only refers to a definition has no body here. */
    const bool isReference = getFatherOfTypeComp(type) != nullptr && cIsDefinedBaseType(type);
    const bool hasBody = isListType(type) && !isReference;
    return concat(function, " (",
                  hasBody ? cStructHome(type, HOME_ADDRESS) : cHome(type, HOME_ADDRESS), ")");
}

} // namespace

Text cGetSize(AsnType *type, bool useLimit) {
    switch (getVF(type)) {
    case VF_STAS0:
    case VF_DYNS0:
    case VF_BMPSTR0:
        return countedSize(type, useLimit);
    case VF_STAS8:
    case VF_STAS16:
    case VF_STAS:
        return lengthCall("staStrLen", type);
    case VF_DYNS8:
    case VF_DYNS16:
    case VF_DYNS:
    case VF_BMPSTR8:
    case VF_BMPSTR16:
    case VF_BMPSTR:
        return lengthCall("dynStrLen", type);
    case VF_LIST:
        return lengthCall("listLen", type);
    case VF_STRU:
        if (getVFSize(type) == VF_NONE)
            return countedSize(type, useLimit);
        return lengthCall(testTypeOption(type, OPT_DYNAMIC_ARRAY) ? "dynArrLen" : "staArrLen",
                          type);
    default:
        return "";
    }
}

void cIncListSize(int file, AsnType *list, AsnType *) {
    if (!isListType(list))
        return;
    if (getVF(list) != VF_LIST && getVFSize(list) == VF_NONE) {
        putF(file, cNVarRef(), "++;\n");
        return;
    }
    const char *function = "incListLen (";
    if (getVF(list) != VF_LIST && cIsStaticArray(list))
        function = "incStaArrLen (";
    else if (getVF(list) != VF_LIST && cIsDynamicArray(list))
        function = "incDynArrLen (";
    putF(file, function, cStructHome(list, HOME_ADDRESS), ");\n");
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
    const Text number = cSizeBoundText(list, limit);
    putF(file, "if (", cGetSize(list, false), " >=");
    putF(file, " ", number, getVFSize(list) == VF_I32 ? "L" : "", ")");
    cOpenBrace(file);
    if (action != nullptr)
        putF(file, action);
    if (isError)
        cReportError(file, "AM_FAIL");
    else
        putF(file, "break;\n");
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

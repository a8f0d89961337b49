#include "cbet/lists.h"

#include "base/files.h"
#include "cbet/forms.h"
#include "cbet/homes.h"
#include "cbet/reports.h"
#include "cbet/vars.h"
#include "model/typequeries.h"
#include "model/valuesets.h"

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

void cIncListSize(int file, AsnType *list) {
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
    const Block block(file);
    putF(file, action);
    if (isError)
        cReportError(file, "AM_FAIL");
    else
        putF(file, "break;\n");
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

/* --- loops --- */

namespace {

/* {
   uint32 n1 = 0;
   for (n1 = 0; n1 < staArrLen (home); n1++){
   or
   for (n1 = staArrLen (home); n1 > 0;){
   n1--; */
void beginCountedLoop(int file, AsnType *list, bool reverse) {
    cOpenBrace(file);
    cIncNVarCount();
    cNVarDef(file);
    const Text counter = cNVarRef();
    cDecNVarCount(); /* the size may name the counter of an outer loop */
    if (reverse) {
        putF(file, "for (", counter, " = ");
        putF(file, cGetSize(list, true), ";");
        putF(file, " ", counter, " > 0;)");
    } else {
        putF(file, "for (", counter, " = 0; ", counter, " < ");
        putF(file, cGetSize(list, true), ";");
        putF(file, " ", counter, "++)");
    }
    cIncNVarCount();
    cOpenBrace(file);
    if (reverse)
        putF(file, counter, "--;\n");
}

/* The list lies in a home of its own that the present block reaches as a structure. */
bool isListOfOwnHome(AsnType *list) {
    AsnType *father = getFatherOfTypeComp(list);
    return father != nullptr && !cIsDefinedBaseType(list) &&
           (getVF(father) == VF_LIST || cHasCompHomes(father) || testTypeOption(list, OPT_HOME));
}

/* {
   ASNHOME *a1 = NULL;
   for (a1 = firstListItem (&home->x); a1; a1 = nextListItem (a1)){ */
void beginItemLoop(int file, AsnType *list, bool reverse) {
    cOpenBrace(file);
    cIncAsnHomeVarCount();
    cAsnHomeVarDef(file);
    putF(file, "for (", cAsnHomeVarRef(), " =");
    cDecAsnHomeVarCount(); /* the list is reached from outside of its own loop */
    const char *first = reverse ? " lastListItem (" : " firstListItem (";
    putF(file, first,
         isListOfOwnHome(list) ? cStructHome(list, HOME_ADDRESS) : cHome(list, HOME_ADDRESS), ");");
    cIncAsnHomeVarCount();
    putF(file, " ", cAsnHomeVarRef(), ";");
    putF(file, " ", cAsnHomeVarRef(), " =");
    putF(file, reverse ? " prevListItem (" : " nextListItem (", cAsnHomeVarRef(), "))");
    cOpenBrace(file);
}

void endLoop(int file, AsnType *list) {
    if (getVF(list) == VF_LIST)
        cDecAsnHomeVarCount();
    else
        cDecNVarCount();
    cCloseBrace(file);
    cCloseBrace(file);
}

} // namespace

void cBeginForLoop(int file, AsnType *list, bool reverse) {
    if (getVF(list) == VF_LIST)
        beginItemLoop(file, list, reverse);
    else
        beginCountedLoop(file, list, reverse);
}

void cEndForLoop(int file, AsnType *list) {
    endLoop(file, list);
}


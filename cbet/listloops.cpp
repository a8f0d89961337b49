#include "cbet/listloops.h"

#include "base/files.h"
#include "cbet/homes.h"
#include "cbet/listsizes.h"
#include "cbet/forms.h"
#include "cbet/vars.h"
#include "model/typequeries.h"

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
    Text counter;
    cNVarRef(counter, nullptr, nullptr);
    const char *i = counter.c_str();
    cDecNVarCount(); /* the size may name the counter of an outer loop */
    if (reverse) {
        printfToF(file, "for (%s = ", i);
        cSizeToF(file, "", list, true, ";");
        printfToF(file, " %s > 0;)", i);
    } else {
        printfToF(file, "for (%s = 0; %s < ", i, i);
        cSizeToF(file, "", list, true, ";");
        printfToF(file, " %s++)", i);
    }
    cIncNVarCount();
    cOpenBrace(file);
    if (reverse)
        printfToF(file, "%s--;\n", i);
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
    Text text;
    wToF(file, cAsnHomeVarRef(text, "for (", " ="));
    cDecAsnHomeVarCount(); /* the list is reached from outside of its own loop */
    const char *first = reverse ? " lastListItem (" : " firstListItem (";
    if (isListOfOwnHome(list))
        cStructHomeRef(text, first, true, list, ");");
    else
        cHome(text, first, true, list, nullptr, ");");
    wToF(file, text);
    cIncAsnHomeVarCount();
    wToF(file, cAsnHomeVarRef(text, " ", ";"));
    wToF(file, cAsnHomeVarRef(text, " ", " ="));
    wToF(file, cAsnHomeVarRef(text, reverse ? " prevListItem (" : " nextListItem (", "))"));
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

void cBeginForLoop(int file, AsnType *list, AsnType *, bool reverse) {
    if (getVF(list) == VF_LIST)
        beginItemLoop(file, list, reverse);
    else
        beginCountedLoop(file, list, reverse);
}

void cEndForLoop(int file, AsnType *list) {
    endLoop(file, list);
}


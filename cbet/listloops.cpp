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

void cBeginForLoop(int file, AsnType *list, AsnType *, bool reverse) {
    if (getVF(list) == VF_LIST)
        beginItemLoop(file, list, reverse);
    else
        beginCountedLoop(file, list, reverse);
}

void cEndForLoop(int file, AsnType *list) {
    endLoop(file, list);
}


#include "cbet/memory.h"

#include "base/files.h"
#include "cbet/builtin.h"
#include "cbet/forms.h"
#include "cbet/homes.h"
#include "cbet/names.h"
#include "cbet/reports.h"
#include "cbet/vars.h"
#include "model/modules.h"
#include "model/typequeries.h"
#include "options/ketracnf.h"

namespace {

bool usesMemory(AsnType *type) {
    return getGlobalOptions(getModuleOfType(type))->memory != 0;
}

/* The value lies in an element of hometab, as the whole of an entry function or as a component. */
bool liesInHometab(AsnType *type) {
    AsnType *father = getFatherOfTypeComp(type);
    return father == nullptr || cIsHometab(father);
}

/* The size argument of a new home: " sizeof (Msg));\n", or " 0);\n" if the home holds the value. */
void sizeArgument(int file, AsnType *type) {
    if (cIsPtrAsnHomeMember(type))
        putF(file, " sizeof (", cBaseTypeId(type), "));\n");
    else
        putF(file, " 0);\n");
}

/* Formats that hold no memory of their own, or free it otherwise. */
bool hasHomeStack(AsnType *type) {
    int format = cGetVF(type);
    return !(format >= VF_BOOL && format <= VF_STAS) && format != VF_NULL && format != VF_OBJI &&
           format != VF_COMT;
}

} // namespace

/* if (!(home->next = (Node *)allocAsn (NULL, MB_STG, sizeof (Node)))){
   reportFatalError (LACK_OF_MEMORY);
   } */
void cAllocComp(int file, AsnType *comp, GIndex gIndex) {
    putF(file, "if (!(", cHome(comp, HOME_ADDRESS), " =");
    putF(file, " (", cBaseTypeId(comp), " *)");
    putF(file, "allocAsn (");
    putF(file, cGetHome(comp, gIndex), ",");
    putF(file, " MB_STG,");
    putF(file, " sizeof (", cBaseTypeId(comp), "))))");
    const Block block(file);
    cReportFatalError(file, "LACK_OF_MEMORY");
}

Text cGetHome(AsnType *type, GIndex gIndex) {
    return usesMemory(type) ? "getHomeG (" + cRawAsnutigPtr(gIndex) + ")" : "NULL";
}

/* createHome (getHomeG (asncodg_asnuti), &hometab [0], VF_UI8, 0); */
void cCreateHome(int file, AsnType *type, GIndex gIndex) {
    putF(file, "createHome (");
    putF(file, cGetHome(type, gIndex), ",");
    if (liesInHometab(type))
        putF(file, " &hometab [", getTypeCompNbr(type), "],");
    else
        putF(file, " ", cHomeRef(type, HOME_ADDRESS), ",");
    putF(file, " ", cGetVFStri(type), ",");
    sizeArgument(file, type);
}

/* pushHomeG (asncodg_asnuti, hometab [1]); */
void cPushHome(int file, AsnType *type, GIndex gIndex) {
    if (!hasHomeStack(type))
        return;
    putF(file, "pushHomeG (");
    putF(file, cRawAsnutigPtr(gIndex), ",");
    if (liesInHometab(type))
        putF(file, " hometab [", getTypeCompNbr(type), "]");
    else
        putF(file, " ", cHomeRef(type, HOME_VALUE));
    putF(file, ");\n");
}

void cPopHome(int file, AsnType *type, GIndex gIndex) {
    if (!hasHomeStack(type))
        return;
    putF(file, "popHomeG (");
    putF(file, cRawAsnutigPtr(gIndex));
    putF(file, ");\n");
}

/* appendList (NULL, &home->x, &a1, VF_UI8, 0); */
void cAppendList(int file, AsnType *list, AsnType *elem, GIndex gIndex) {
    putF(file, "appendList (");
    putF(file, cGetHome(elem, gIndex), ",");
    putF(file, " ", cHomeRef(list, HOME_ADDRESS), ",");
    putF(file, " &", cAsnHomeVarRef(), ",");
    putF(file, " ", cGetVFStri(elem), ",");
    sizeArgument(file, elem);
}

namespace {

/* The place of a component in its father's structure: "&home->comp,", "&home->x.comp,". */
Text memberAddress(AsnType *father, AsnType *comp) {
    const Text home = cHomeRef(father, HOME_ADDRESS);
    const bool isAddress = home.starts_with('&');
    return concat(isAddress ? "" : "&", home, isAddress ? "." : "->", cMemberName(comp), ",");
}

Text addressToFree(AsnType *type) {
    AsnType *father = getFatherOfTypeComp(type);
    if (father != nullptr && cIsHometab(father))
        return concat("&hometab [", getTypeCompNbr(type), "],");
    if (father == nullptr && cIsHometab(type))
        return "&hometab [0],";
    if (father != nullptr) {
        int kind = getTypeMainType(father);
        if (testTypeOption(father, OPT_COMPS_AS_POINTERS) ||
            ((kind == TYP_SEQ || kind == TYP_SET) && testTypeOption(type, OPT_HOME)))
            return memberAddress(father, type);
    }
    return cHomeRef(type, HOME_ADDRESS) + ",";
}

} // namespace

void cFreeAsn(int file, AsnType *type) {
    putF(file, "freeAsn (");
    putF(file, addressToFree(type));
    putF(file, " FREE_STG);\n");
}


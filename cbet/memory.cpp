#include "cbet/memory.h"

#include "base/files.h"
#include "cbet/builtin.h"
#include "cbet/homes.h"
#include "cbet/names.h"
#include "cbet/forms.h"
#include "cbet/reports.h"
#include "cbet/vars.h"
#include "model/modules.h"
#include "model/typeextension.h"
#include "model/typenames.h"
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
    Text text;
    if (cIsPtrAsnHomeMember(type))
        wToF(file, cBaseTypeId(text, " sizeof (", type, "));\n"));
    else
        wToF(file, " 0);\n");
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
    Text text;
    wToF(file, cHome(text, "if (!(", true, comp, nullptr, " ="));
    wToF(file, cBaseTypeId(text, " (", comp, " *)"));
    wToF(file, "allocAsn (");
    wToF(file, cGetHome(text, nullptr, comp, gIndex, ","));
    wToF(file, " MB_STG,");
    wToF(file, cBaseTypeId(text, " sizeof (", comp, "))))"));
    cOpenBrace(file);
    cReportFatalError(file, "LACK_OF_MEMORY");
    cCloseBrace(file);
}

Text &cGetHome(Text &dst, const char *prefix, AsnType *type, GIndex gIndex, const char *postfix) {
    if (!usesMemory(type)) {
        dst = Text(orEmpty(prefix)) + "NULL" + orEmpty(postfix);
        return dst;
    }
    Text before = Text(orEmpty(prefix)) + "getHomeG (";
    Text behind = Text(")") + orEmpty(postfix);
    return cRawAsnutigPtr(dst, before.c_str(), gIndex, behind.c_str());
}

/* createHome (getHomeG (asncodg_asnuti), &hometab [0], VF_UI8, 0); */
void cCreateHome(int file, AsnType *type, GIndex gIndex) {
    Text text;
    wToF(file, "createHome (");
    wToF(file, cGetHome(text, nullptr, type, gIndex, ","));
    if (liesInHometab(type))
        printfToF(file, " &hometab [%d],", getTypeCompNbr(type));
    else
        wToF(file, cHomeRef(text, " ", true, type, nullptr, ","));
    printfToF(file, " %s,", cGetVFStri(type));
    sizeArgument(file, type);
}

/* pushHomeG (asncodg_asnuti, hometab [1]); */
void cPushHome(int file, AsnType *type, GIndex gIndex) {
    if (!hasHomeStack(type))
        return;
    Text text;
    wToF(file, "pushHomeG (");
    wToF(file, cRawAsnutigPtr(text, nullptr, gIndex, ","));
    if (liesInHometab(type))
        printfToF(file, " hometab [%d]", getTypeCompNbr(type));
    else
        wToF(file, cHomeRef(text, " ", false, type, nullptr, ""));
    wToF(file, ");\n");
}

void cPopHome(int file, AsnType *type, GIndex gIndex) {
    if (!hasHomeStack(type))
        return;
    Text text;
    wToF(file, "popHomeG (");
    wToF(file, cRawAsnutigPtr(text, nullptr, gIndex, nullptr));
    wToF(file, ");\n");
}

/* appendList (NULL, &home->x, &a1, VF_UI8, 0); */
void cAppendList(int file, AsnType *list, AsnType *elem, GIndex gIndex) {
    Text text;
    wToF(file, "appendList (");
    wToF(file, cGetHome(text, nullptr, elem, gIndex, ","));
    wToF(file, cHomeRef(text, " ", true, list, nullptr, ","));
    wToF(file, cAsnHomeVarRef(text, " &", ","));
    printfToF(file, " %s,", cGetVFStri(elem));
    sizeArgument(file, elem);
}

namespace {

/* The place of a component in its father's structure: "&home->comp,", "&home->x.comp,". */
Text memberAddress(AsnType *father, AsnType *comp) {
    Text home, name;
    cHomeRef(home, "", true, father, nullptr, "");
    cMemberName(name, nullptr, comp, ",");
    return home.starts_with('&') ? home + "." + name : "&" + home + "->" + name;
}

Text addressToFree(AsnType *type) {
    AsnType *father = getFatherOfTypeComp(type);
    Text text;
    if (father != nullptr && cIsHometab(father))
        return formatText("&hometab [%d],", getTypeCompNbr(type));
    if (father == nullptr && cIsHometab(type))
        return "&hometab [0],";
    if (father != nullptr) {
        int kind = getTypeMainType(father);
        if (testTypeOption(father, OPT_COMPS_AS_POINTERS) ||
            ((kind == TYP_SEQ || kind == TYP_SET) && testTypeOption(type, OPT_HOME)))
            return memberAddress(father, type);
    }
    return cHomeRef(text, "", true, type, nullptr, ",");
}

} // namespace

void cFreeAsn(int file, AsnType *type) {
    wToF(file, "freeAsn (");
    wToF(file, addressToFree(type));
    wToF(file, " FREE_STG);\n");
}


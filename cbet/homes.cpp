#include "cbet/homes.h"

#include "cbet/forms.h"
#include "cbet/names.h"
#include "cbet/vars.h"
#include "model/backend.h"
#include "model/typeextension.h"
#include "model/typequeries.h"

namespace {

/* The way from the home to the value, without the operator in front of it. */
std::string_view pathOf(const AsnType &type) {
    std::string_view path = orEmpty(type.path);
    if (type.pathLength >= 0)
        path = path.substr(0, static_cast<std::size_t>(type.pathLength));
    if (path.starts_with("->"))
        path.remove_prefix(2);
    else if (path.starts_with("."))
        path.remove_prefix(1);
    return path;
}

bool isMemberForm(HomeForm form) {
    return form == HOME_MEMBER || form == HOME_MEMBER_ADDRESS;
}

/* What stands in front of a reference that is a pointer, or the value itself. */
const char *operatorBefore(HomeForm form, bool isPointer) {
    const bool isAddress = form == HOME_ADDRESS || form == HOME_MEMBER_ADDRESS;
    if (isPointer && !isMemberForm(form))
        return isAddress ? "" : "*";
    return isAddress ? "&" : "";
}

/* "(Elem *)": what makes a pointer of the right type of the member of an ASNHOME. */
Text asnHomeCompTypecast(AsnType *type, HomeForm form) {
    if (getVF(type) != VF_STRU)
        return "";
    return concat(isMemberForm(form) ? "((" : "(", cBaseTypeId(type), " *)");
}

/* The ASNHOME itself: the list item in hand, an element of hometab, or a member of a structure. */
Text asnHomeContainer(AsnType *type) {
    AsnType *father = getFatherOfTypeComp(type);
    if (father != nullptr && (getVF(father) == VF_LIST || testTypeOption(father, OPT_LIST_HOME) ||
                              testTypeOption(father, OPT_LIST_HOME_STORED)))
        return cAsnHomeVarRef();
    if (cIsHometab(father != nullptr ? father : type))
        return concat("hometab [", getTypeCompNbr(type), "]");
    return cHomeRef(type, HOME_VALUE);
}

/* A structure, and what lies behind a pointer, is reached with "->"; what the ASNHOME itself holds
   with ".". */
const char *asnHomeSeparator(AsnType *type) {
    const int form = cGetHomeVF(type);
    if (form == VF_STRU)
        return ")->";
    const bool held = (form >= VF_DYNS0 && form <= VF_LIST) ||
                      (form >= VF_BMPSTR0 && form <= VF_BMPSTR) || isExtensibleEnumeratedList(type);
    return held ? "." : "->";
}

/* The block home is the structure itself. */
bool isBlockHome(AsnType *type) {
    return testTypeOption(type, OPT_HOME) && cVarCount(VAR_HOME) > 0;
}

} // namespace

/* home->a.b, and h1->a.b within a block that has a home of its own */
Text cHomeRef(AsnType *type, HomeForm form) {
    const std::string_view path = pathOf(*type);
    const bool isPointer =
        path.empty() || (testTypeOption(type, OPT_POINTER) && !testTypeOption(type, OPT_HOME));
    const Text home = cVarCount(VAR_HOME) != 0 ? cHomeVarRef() : "home";
    return concat(operatorBefore(form, isPointer), home, path.empty() ? "" : "->", path,
                  !isMemberForm(form) ? ""
                  : isPointer         ? "->"
                                      : ".");
}

/* (Elem *)a1->val.stru */
Text cAsnHomeCompRef(AsnType *type, HomeForm form) {
    return concat(operatorBefore(form, cIsPtrAsnHomeMember(type)), asnHomeCompTypecast(type, form),
                  asnHomeContainer(type), "->val.", getAsnhomeMember(type),
                  isMemberForm(form) ? asnHomeSeparator(type) : "");
}

/* An ASNHOME holds components of a MORLA entry, elements of linked lists, and what is marked so. */
Text cHome(AsnType *type, HomeForm form) {
    AsnType *father = getFatherOfTypeComp(type);
    bool inAsnHome = false;
    if (father != nullptr && cIsHometab(father))
        inAsnHome = cVarCount(VAR_HOME) < 1;
    else if (father != nullptr && getVF(father) == VF_LIST && cVarCount(VAR_ASN_HOME) > 0)
        inAsnHome = true;
    else
        inAsnHome = testTypeOption(type, OPT_HOME);
    return inAsnHome ? cAsnHomeCompRef(type, form) : cHomeRef(type, form);
}

/* h1, where the block that is open begins at this very structure */
Text cStructHome(AsnType *type, HomeForm form) {
    if (!isBlockHome(type))
        return cHomeRef(type, form);
    return concat(operatorBefore(form, true), cHomeVarRef(), isMemberForm(form) ? "->" : "");
}

/* &home->id of "value ANY DEFINED BY id" */
Text cAnyDefinedByClassifierTypeHome(AsnType *classifier) {
    return cHome(getFatherOfTypeComp(classifier), HOME_MEMBER_ADDRESS) + cMemberName(classifier);
}

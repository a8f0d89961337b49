#include "cbet/homes.h"

#include "base/files.h"
#include "cbet/names.h"
#include "cbet/forms.h"
#include "cbet/vars.h"
#include "model/backend.h"
#include "model/typeextension.h"
#include "model/typenames.h"
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

/* "(Elem *)": what stands in front of the reference to a value in an ASNHOME. */
Text asnHomeCompTypecast(const char *prefix, bool addressOf, AsnType *type, const char *separator) {
    Text dst = orEmpty(prefix);
    if (separator == nullptr && cIsPtrAsnHomeMember(type))
        dst += addressOf ? "" : "*";
    else
        dst += addressOf ? "&" : "";
    if (getVF(type) == VF_STRU) {
        Text typeId;
        dst += cBaseTypeId(typeId, separator != nullptr ? "((" : "(", type, " *)");
    }
    return dst;
}

/* The ASNHOME itself: the list item in hand, an element of hometab, or a member of a structure. */
Text asnHomeContainer(AsnType *type) {
    Text dst;
    AsnType *father = getFatherOfTypeComp(type);
    if (father != nullptr && (getVF(father) == VF_LIST || testTypeOption(father, OPT_LIST_HOME) ||
                              testTypeOption(father, OPT_LIST_HOME_STORED)))
        return cAsnHomeVarRef(dst, nullptr, nullptr);
    if (cIsHometab(father != nullptr ? father : type))
        return formatText("hometab [%d]", getTypeCompNbr(type));
    return cHomeRef(dst, nullptr, false, type, nullptr, nullptr);
}

const char *asnHomeSeparator(AsnType *type) {
    const int form = cGetHomeVF(type);
    if (form == VF_STRU)
        return ")->";
    const bool held = (form >= VF_DYNS0 && form <= VF_LIST) ||
                      (form >= VF_BMPSTR0 && form <= VF_BMPSTR) || isExtensibleEnumeratedList(type);
    return held ? "." : "->";
}

} // namespace

Text &cHomeRef(Text &dst, const char *prefix, bool addressOf, AsnType *type, const char *separator,
               const char *postfix) {
    const std::string_view path = pathOf(*type);
    const bool pointer =
        path.empty() || (testTypeOption(type, OPT_POINTER) && !testTypeOption(type, OPT_HOME));
    dst = orEmpty(prefix);
    if (pointer && separator == nullptr)
        dst += addressOf ? "" : "*";
    else
        dst += addressOf ? "&" : "";
    if (cVarCount(VAR_HOME) != 0)
        dst += formatText("h%d", cVarCount(VAR_HOME));
    else
        dst += "home";
    if (!path.empty())
        dst.append("->").append(path);
    if (separator != nullptr)
        dst += pointer ? "->" : ".";
    return dst += orEmpty(postfix);
}

Text &cAsnHomeCompRef(Text &dst, const char *prefix, bool addressOf, AsnType *type,
                      const char *separator, const char *postfix) {
    dst = asnHomeCompTypecast(prefix, addressOf, type, separator);
    dst += asnHomeContainer(type);
    dst.append("->val.").append(getAsnhomeMember(type));
    if (separator != nullptr)
        dst += asnHomeSeparator(type);
    return dst += orEmpty(postfix);
}

void cAsnHomeCompRefToF(int file, const char *prefix, bool addressOf, AsnType *type,
                        const char *separator, const char *postfix) {
    Text text;
    wToF(file, cAsnHomeCompRef(text, prefix, addressOf, type, separator, postfix));
}

Text &cHome(Text &dst, const char *prefix, bool addressOf, AsnType *type, const char *separator,
            const char *postfix) {
    AsnType *father = getFatherOfTypeComp(type);
    bool inAsnHome = false;
    if (father != nullptr && cIsHometab(father))
        inAsnHome = cVarCount(VAR_HOME) < 1;
    else if (father != nullptr && getVF(father) == VF_LIST && cVarCount(VAR_ASN_HOME) > 0)
        inAsnHome = true;
    else
        inAsnHome = testTypeOption(type, OPT_HOME);
    return inAsnHome ? cAsnHomeCompRef(dst, prefix, addressOf, type, separator, postfix)
                     : cHomeRef(dst, prefix, addressOf, type, separator, postfix);
}

Text &cAnyDefinedByClassifierTypeHome(Text &dst, const char *prefix, bool addressOf,
                                      AsnType *classifier, const char *postfix) {
    Text id;
    cMemberName(id, nullptr, classifier, postfix);
    return cHome(dst, prefix, addressOf, getFatherOfTypeComp(classifier), ".", id.c_str());
}

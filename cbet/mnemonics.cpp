#include "base/fatal.h"
#include "cbet/names.h"
#include "cbet/forms.h"
#include "model/backend.h"
#include "model/typeextension.h"
#include "model/typenames.h"
#include "model/typequeries.h"
#include "model/valuequeries.h"

/* Names of #define lines: named numbers and indices of components. */

namespace {

bool isNamedNumberOf(AsnType *type, AsnValue *value) {
    const int status = getValueCompStatus(value);
    const int kind = getValueMainType(value);
    const int main = getTypeMainType(type);
    return (status == TCS_MANDATORY || status == TCS_OPTIONAL) &&
           (kind == TYP_INTEGER || kind == TYP_ENUM) &&
           (main == TYP_INTEGER || main == TYP_ENUM || main == TYP_BITSTR);
}

void baseName(Text &dst, AsnType *type, const char *postfix) {
    if (type != nullptr && type->baseId.id != nullptr)
        dst = concat(printFixRec(type->baseId), postfix);
    else
        dst = orEmpty(postfix);
}

} // namespace

AsnType *cDefinedAncestor(AsnType *comp) {
    AsnType *father = getFatherOfTypeComp(comp);
    while (father != nullptr && !cIsDefinedBaseType(father))
        father = getFatherOfTypeComp(father);
    return father;
}

Text &cNamedNumberMnemonic(Text &dst, const char *prefix, AsnType *type, AsnValue *value,
                           const char *postfix) {
    dst.clear();
    if (isValueExtensionmarker(value))
        return dst;
    if (!isNamedNumberOf(type, value))
        fatalError(FATAL_INTERNAL, "CBET: Invalid value for a #define for a named number/bit.");
    Text typeId;
    cTypeId(typeId, "_", type, postfix);
    return dst = concat(prefix, getValueId(value), typeId);
}

Text &cDefineForNamedNumber(Text &dst, AsnType *type, AsnValue *value) {
    const Text number = " " + integerValueStri(value) + "\n";
    return cNamedNumberMnemonic(dst, "#define ", type, value, number.c_str());
}

Text &cComponentIndexMnemonic(Text &dst, const char *prefix, AsnType *comp, const char *postfix) {
    if (!isComponentType(comp))
        fatalError(FATAL_INTERNAL, "CBET: Invalid type for a component index.");
    Text name;
    Text owner;
    AsnType *father = getFatherOfTypeComp(comp);
    if (!isTypeExtensionmarker(comp)) {
        name = concat(prefix, getTypeCompId(comp), "_");
        baseName(owner, cDefinedAncestor(comp), postfix);
    } else {
        name = Text(orEmpty(prefix)) + "extensionmarker_";
        if (father != nullptr && !cIsDefinedBaseType(father))
            cTypeId(owner, nullptr, father, postfix);
        else
            baseName(owner, comp, postfix);
    }
    return dst = name + owner;
}

Text &cComponentPathMnemonic(Text &dst, const char *prefix, AsnType *comp, const char *postfix) {
    Text owner;
    const Text name = concat(prefix, getTypeCompId(comp), "_");
    return dst = name + cTypeId(owner, nullptr, getFatherOfTypeComp(comp), postfix);
}

Text &cDefineForComponentIndex(Text &dst, AsnType *comp, bool withPath) {
    const Text number = formatText(" %d\n", getTypeCompNbr(comp));
    if (withPath)
        return cComponentPathMnemonic(dst, "#define ", comp, number.c_str());
    return cComponentIndexMnemonic(dst, "#define ", comp, number.c_str());
}

#include "base/fatal.h"
#include "cbet/forms.h"
#include "cbet/names.h"
#include "model/backend.h"
#include "model/typeextension.h"
#include "model/typenames.h"
#include "model/typequeries.h"
#include "model/valuequeries.h"

/* Names of #define lines: named numbers and indices of components. */

namespace {

/* A value among the items of an INTEGER, ENUMERATED or BIT STRING, not one of that type. */
bool isNamedNumberOf(AsnType *type, AsnValue *value) {
    const int status = getValueCompStatus(value);
    const int kind = getValueMainType(value);
    const int main = getTypeMainType(type);
    return (status == TCS_MANDATORY || status == TCS_OPTIONAL) &&
           (kind == TYP_INTEGER || kind == TYP_ENUM) &&
           (main == TYP_INTEGER || main == TYP_ENUM || main == TYP_BITSTR);
}

Text baseName(AsnType *type) {
    return type != nullptr ? printFixRec(type->baseId) : "";
}

} // namespace

/* Fathers without a C name of their own are passed over, since no mnemonic can end in it. */
AsnType *cDefinedAncestor(AsnType *comp) {
    AsnType *father = getFatherOfTypeComp(comp);
    while (father != nullptr && !cIsDefinedBaseType(father))
        father = getFatherOfTypeComp(father);
    return father;
}

/* red_Color */
Text cNamedNumberMnemonic(AsnType *type, AsnValue *value) {
    if (!isNamedNumberOf(type, value))
        fatalError(FATAL_INTERNAL, "CBET: Invalid value for a #define for a named number/bit.");
    return getIdOf(value) + "_" + cTypeId(type);
}

/* #define red_Color 1 */
Text cDefineForNamedNumber(AsnType *type, AsnValue *value) {
    if (isValueExtensionmarker(value))
        return "";
    return concat("#define ", cNamedNumberMnemonic(type, value), " ", integerValueStri(value),
                  "\n");
}

/* a_Msg, and extensionmarker_Msg for what stands behind "..." */
Text cComponentIndexMnemonic(AsnType *comp) {
    if (!isComponentType(comp))
        fatalError(FATAL_INTERNAL, "CBET: Invalid type for a component index.");
    if (!isTypeExtensionmarker(comp))
        return getTypeCompId(comp) + "_" + baseName(cDefinedAncestor(comp));
    AsnType *father = getFatherOfTypeComp(comp);
    return "extensionmarker_" +
           (father != nullptr && !cIsDefinedBaseType(father) ? cTypeId(father) : baseName(comp));
}

/* a_inner_Msg */
Text cComponentPathMnemonic(AsnType *comp) {
    return getTypeCompId(comp) + "_" + cTypeId(getFatherOfTypeComp(comp));
}

/* #define a_Msg 0 */
Text cDefineForComponentIndex(AsnType *comp, bool withPath) {
    return concat("#define ",
                  withPath ? cComponentPathMnemonic(comp) : cComponentIndexMnemonic(comp), " ",
                  getTypeCompNbr(comp), "\n");
}

#include "model/typeextension.h"

#include "model/compwalk.h"
#include "model/typequeries.h"
#include "store/ketramac.h"

namespace {

bool isExtensible(const AsnType *type) {
    return (type->base.typeFlags & TYPE_EXTENSIBLE) != 0;
}

} // namespace

/* A marker stands among the components as one of them, with a place and no tag. The number of
   the first one is kept once a walk has met it. */

bool isTypeExtensionmarker(AsnType *type) {
    return type->base.mainType == TYP_EXTENSION_MARKER;
}

bool isTypeExtensionmarkerComp(AsnType *type) {
    return isExtensible(type) && isStructuredType(type);
}

bool isExtensibleEnumeratedList(AsnType *type) {
    return isExtensible(type) && type->base.mainType == TYP_ENUM;
}

int getTypeExtensionmarkerCompNbr(AsnType *type) {
    /* A walk notes the number. A type may be extensible without a marker in its list. */
    if (type->extMarkerNbr == -1 && !type->extMarkerSought && isExtensible(type)) {
        type->extMarkerSought = true;
        forEachTypeCompQuietly(type, [](AsnType *, AsnType *, int) {});
    }
    return type->extMarkerNbr;
}

/* What a walk has seen so far: these answer for the component that is being shown, and for no
   other. */

bool isFirstActualTypeComp(AsnType *comp) {
    if (!isComponentType(comp))
        return false;
    if (comp->compNbr == 0)
        return true;
    AsnType *father = comp->father;
    return comp->compNbr == 1 && father != nullptr && isTypeExtensionmarkerComp(father) &&
           getTypeExtensionmarkerCompNbr(father) == 0;
}

bool prevTypeCompIsOptional(AsnType *comp) {
    const bool inSequence = isMandatoryTypeComp(comp) || isOptionalTypeComp(comp);
    return inSequence && comp->father != nullptr && comp->father->lastCompOptional;
}

bool lastTypeCompIsOptional(AsnType *type) {
    return isSequenceOrSetKind(type->base.mainType) && type->lastCompOptional;
}

#include "model/any.h"

#include <cstring>

#include "model/compwalk.h"
#include "model/typewalk.h"
#include "model/valuewalk.h"
#include "store/classify.h"
#include "store/records.h"
#include "store/strings.h"

namespace {

constexpr const char *ANY_OPTION = "$ANY=";

/* The record of the component that decides. */
NodePlace classifierPlace(const AsnType *anyType) {
    readRec(anyType->contentModule, REC_SNODE, anyType->base.auxRecord);
    return {getModPtr(anyType->contentModule, sNode.refModule), sNode.refRecord};
}

/* Number of the component at `place` of `father`. */
int classifierNumber(AsnType *father, const NodePlace &place) {
    int number = -1;
    forEachTypeCompQuietly(father, [&](AsnType *, AsnType *comp, int compNbr) {
        if (number < 0 && comp->posModule == place.module && comp->posRecord == place.nr)
            number = compNbr;
    });
    if (number < 0)
        fatalError(FATAL_INTERNAL, "Unable to construct AsnType for an ANY DEFINED BY classifier");
    return number;
}

/* Calls with the classifier, null for a type without one; `*number` is worked out unless it is known.
 */
void withClassifier(AsnType *father, AsnType *anyType, int *number,
                    Call<void(AsnType *classifier)> func) {
    if (anyType->base.auxRecord == 0)
        return func(nullptr);
    const NodePlace place = classifierPlace(anyType);
    if (*number < 0)
        *number = classifierNumber(father, place);
    readRec(place.module, REC_TNODE, place.nr);
    AsnType classifier(anyType->ownerModule, anyType->ownerModule);
    getTypePath(father, &classifier);
    classifier.compNbr = *number;
    func(&classifier);
}

/* "value:Type" at the first colon; both parts must be there. */
bool parseAnyOption(const char *text, Text *valueName, const char **typeName) {
    const char *colon = std::strchr(text, ':');
    if (colon == nullptr || colon == text || colon[1] == '\0')
        return false;
    valueName->assign(text, colon);
    *typeName = colon + 1;
    return true;
}

/* Makes the value and the type current that the option in the current TedRec names; false if it is no
   row of the table of an ANY, or names nothing of the module. */
bool readAnyRow(ModRec *module) {
    const char *option =
        tedRec.tedText == 0 ? nullptr : isOptionStri(getStri(module, tedRec.tedText), ANY_OPTION);
    Text valueName;
    const char *typeName = nullptr;
    if (option == nullptr || !parseAnyOption(option, &valueName, &typeName) ||
        !findValueById(module, valueName.c_str()))
        return false;
    skipValues(true);
    const NodeContext value(REC_VNODE);
    if (!findTypeById(module, typeName))
        return false;
    skipTypes(true);
    return true;
}

using AnyRowCall = Call<void(AsnValue *value, AsnType *type, int nbr)>;

/* The rows of the table of an ANY; the result counts them. */
int forAnyRows(AsnType *anyType, AnyRowCall row) {
    AsnModule *owner = anyType->ownerModule;
    const RecNr last = anyType->base.tedLast;
    int nbr = 0;
    for (RecNr nr = anyType->base.tedFirst == 0 ? 1 : anyType->base.tedFirst; nr <= last; ++nr) {
        readRec(anyType->contentModule, REC_TED, nr);
        if (!readAnyRow(anyType->contentModule))
            continue;
        const NodePlace typePlace = saveNodeContext(REC_TNODE);
        AsnValue value(owner, owner);
        getValuePath(nullptr, &value, KIND_VALUE);
        restoreNodeContext(REC_TNODE, typePlace);
        AsnType type(owner, owner);
        getTypePath(nullptr, &type);
        row(&value, &type, nbr++);
    }
    return nbr;
}

} // namespace

int forAnyType(AsnType *anyType,
               Call<void(AsnType *anyType, AsnValue *value, AsnType *type, int nbr)> func) {
    requireCall(func);
    return forAnyRows(
        anyType, [&](AsnValue *value, AsnType *type, int nbr) { func(anyType, value, type, nbr); });
}

void forAnyDefinedByClassifierType(
    AsnType *father, AsnType *anyType,
    Call<void(AsnType *father, AsnType *classifier, AsnType *anyType)> func) {
    requireCall(func);
    int number = -1;
    withClassifier(father, anyType, &number, [&](AsnType *classifier) {
        if (classifier != nullptr)
            func(father, classifier, anyType);
    });
}

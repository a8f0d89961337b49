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

/* `*number` is worked out unless it is known. */
AsnType *makeClassifier(AsnType *father, AsnType *anyType, int *number) {
    if (anyType->base.auxRecord == 0)
        return nullptr;
    const NodePlace place = classifierPlace(anyType);
    if (*number < 0)
        *number = classifierNumber(father, place);
    readRec(place.module, REC_TNODE, place.nr);
    AsnType *classifier = newAsnType(anyType->ownerModule, anyType->ownerModule);
    getTypePath(father, classifier);
    classifier->compNbr = *number;
    return classifier;
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

/* Calls row(nr) for each TedRec of an ANY that is a row of its table; the result counts them. */
template <typename Row> int forAnyRows(AsnType *anyType, Row row) {
    const RecNr last = anyType->base.tedLast;
    int nbr = 0;
    for (RecNr nr = anyType->base.tedFirst == 0 ? 1 : anyType->base.tedFirst; nr <= last; ++nr) {
        readRec(anyType->contentModule, REC_TED, nr);
        AsnValue *value = nullptr;
        AsnType *type = nullptr;
        if (!getDefValAndEntryType(anyType, &value, &type))
            continue;
        row(value, type, nbr++);
        delAsnValue(value);
        delAsnType(type);
    }
    return nbr;
}

} // namespace

AsnType *getClassifier(AsnType *father, AsnType *anyType) {
    int number = -1;
    return makeClassifier(father, anyType, &number);
}

bool getDefValAndEntryType(AsnType *anyType, AsnValue **value, AsnType **type) {
    *value = nullptr;
    *type = nullptr;
    ModRec *module = anyType->contentModule;
    const char *option =
        tedRec.tedText == 0 ? nullptr : isOptionStri(getStri(module, tedRec.tedText), ANY_OPTION);
    Text valueName;
    const char *typeName = nullptr;
    if (option == nullptr || !parseAnyOption(option, &valueName, &typeName))
        return false;

    if (!findValueById(module, valueName.c_str()))
        return false;
    skipValues(true);
    const NodePlace valuePlace = saveNodeContext(REC_VNODE);
    if (!findTypeById(module, typeName))
        return false;
    skipTypes(true);
    const NodePlace typePlace = saveNodeContext(REC_TNODE);

    AsnModule *owner = anyType->ownerModule;
    restoreNodeContext(REC_VNODE, valuePlace);
    *value = newAsnValue(owner, owner);
    getValuePath(nullptr, *value, KIND_VALUE);
    restoreNodeContext(REC_TNODE, typePlace);
    *type = newAsnType(owner, owner);
    getTypePath(nullptr, *type);
    return true;
}

int forAnyType(AsnType *anyType,
               Call<void(AsnType *anyType, AsnValue *value, AsnType *type, int nbr)> func) {
    requireCall(func);
    return forAnyRows(
        anyType, [&](AsnValue *value, AsnType *type, int nbr) { func(anyType, value, type, nbr); });
}

int forAnyDefinedByType(AsnType *father, AsnType *anyType,
                        Call<void(AsnType *father, AsnType *classifier, AsnType *anyType,
                                  AsnValue *value, AsnType *type, int nbr)>
                            func) {
    requireCall(func);
    int number = -1;
    return forAnyRows(anyType, [&](AsnValue *value, AsnType *type, int nbr) {
        AsnType *classifier = makeClassifier(father, anyType, &number);
        func(father, classifier, anyType, value, type, nbr);
        delAsnType(classifier);
    });
}

void forAnyDefinedByClassifierType(
    AsnType *father, AsnType *anyType,
    Call<void(AsnType *father, AsnType *classifier, AsnType *anyType)> func) {
    requireCall(func);
    AsnType *classifier = getClassifier(father, anyType);
    if (classifier != nullptr)
        func(father, classifier, anyType);
    delAsnType(classifier);
}

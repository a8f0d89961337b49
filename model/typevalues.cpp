#include "model/typevalues.h"

#include <algorithm>

#include "model/valuequeries.h"

/* Named numbers and bits, and items of enumerations. They are values of the module that wrote
   them, even where another one uses the type. */

void forEachNamedNumberExtMark(AsnType *type,
                               Call<void(AsnType *type, AsnValue *value, int nbr)> func) {
    requireCall(func);
    const bool isElsewhere = type->walkModule->modRec != type->contentModule;
    ValueListWalk numbers(isElsewhere ? nullptr : type->ownerModule,
                          {type->contentModule, type->base.namedNumbersRec}, nullptr,
                          KIND_NAMED_NUMBER);
    int nbr = 0;
    while (AsnValue *value = numbers.next())
        func(type, value, isValueExtensionmarker(value) ? -1 : nbr++);
}

void forEachNamedNumber(AsnType *type, Call<void(AsnType *type, AsnValue *value, int nbr)> func) {
    requireCall(func);
    forEachNamedNumberExtMark(type, [&](AsnType *, AsnValue *value, int nbr) {
        if (nbr >= 0)
            func(type, value, nbr);
    });
}

int getNrOfNamedNumbers(AsnType *type) {
    int count = 0;
    forEachNamedNumber(type, [&](AsnType *, AsnValue *, int) { ++count; });
    return count;
}

/* Values that stand in no list: a default, and an end of a range that says MIN or MAX. */

void forDefaultValue(AsnType *comp, Call<void(AsnType *comp, AsnValue *value)> func) {
    requireCall(func);
    if (comp->defaultValue == 0)
        return;
    const auto value = newValueByNumber(comp->posModule, comp->defaultValue);
    if (value == nullptr)
        fatalError(FATAL_INTERNAL, "Cannot obtain a default value.");
    func(comp, value.get());
}

void initInfinityValue(AsnValue *value, const VNode &node) {
    value->posModule = value->baseModule = value->ownerModule->modRec;
    value->base = node;
    value->base.compStatus = VCS_DEFINITION;
}

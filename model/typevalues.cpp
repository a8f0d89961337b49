#include "model/typevalues.h"

#include <algorithm>

#include "model/bounds.h"
#include "model/modules.h"
#include "model/typequeries.h"
#include "model/valuequeries.h"

namespace {

/* Each value is one above the one before it. */
bool isContinuedValueSet(const std::int32_t *array, std::size_t count) {
    for (std::size_t i = 1; i < count; ++i) {
        if (std::int64_t{array[i]} != std::int64_t{array[i - 1]} + 1)
            return false;
    }
    return count != 0;
}

/* The items of an enumeration, those behind its marker last. */
struct EnumItems {
    std::vector<std::int32_t> numbers;
    std::size_t rootCount = 0;
    bool marker = false;
};

EnumItems collectItems(AsnType *type) {
    EnumItems items;
    forEachNamedNumberExtMark(type, [&](AsnType *, AsnValue *value, int nbr) {
        if (nbr < 0) {
            items.marker = true;
            items.numbers.resize(items.rootCount);
            return;
        }
        std::int32_t number = 0;
        if (!i64tol(int64Value(value), &number))
            int64Warning(getModuleOfValue(value), value->base.lineNr, "Too large enumerated item");
        items.numbers.push_back(number);
        if (!items.marker)
            ++items.rootCount;
    });
    return items;
}

} // namespace

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

void forSortedEnumeratedValueArray(
    AsnType *type,
    Call<void(AsnType *type, int rootCount, const std::int32_t *rootArray, bool rootContinued,
              int addCount, const std::int32_t *addArray, bool addContinued)>
        func) {
    requireCall(func);
    if (getTypeMainType(type) != TYP_ENUM)
        return;
    EnumItems items = collectItems(type);
    std::int32_t *roots = items.numbers.data();
    std::int32_t *additions = roots + items.rootCount;
    const std::size_t addCount = items.numbers.size() - items.rootCount;
    std::sort(roots, additions);
    std::sort(additions, additions + addCount);
    func(type, static_cast<int>(items.rootCount), roots,
         isContinuedValueSet(roots, items.rootCount),
         items.marker ? static_cast<int>(addCount) : -1, items.marker ? additions : nullptr,
         isContinuedValueSet(additions, addCount));
}

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

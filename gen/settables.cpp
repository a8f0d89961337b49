#include "gen/settables.h"

#include "base/files.h"
#include "cbet/forms.h"
#include "cbet/names.h"
#include "gen/classes.h"
#include "gen/classmeta.h"
#include "gen/fileset.h"
#include "gen/meta.h"
#include "gen/objecttables.h"
#include "gen/staticvalues.h"
#include "model/modules.h"
#include "model/valuequeries.h"
#include "objects/fieldvalues.h"
#include "objects/objectorder.h"
#include "objects/objectsets.h"
#include "options/ketracnf.h"
#include "project/ketratavi.h"

namespace {

/* "TABO=": sets stand in tables of their own, to which rows point. */
bool hasSeparateTables(AsnModule *module) {
    return getGlobalOptions(module)->tabO != 0;
}

AsnModule *moduleOf(AsnFieldValue *value) {
    return getModuleOf(getObjectOfFieldValue(value));
}

bool isStructureKind(int mainType) {
    return mainType == TYP_SEQ || mainType == TYP_CHOICE;
}

/* A set that is there and yet names nothing is as good as none: it has no table, and no number. */
int nrOfObjectsInField(AsnFieldValue *value) {
    int count = 0;
    forObjectSetFieldValue(value, [&](AsnFieldValue *, AsnObject *, int) { ++count; });
    return count;
}

/* mValueSet0 */
Text tableName(AsnFieldValue *value, const char *word, int number) {
    return concat(cModulePrefix(moduleOf(value)), word, number);
}

/* --- one table --- */

void beginTable() {
    putF(fiTab, "{\n");
    ++fArr[fiTab].indent;
}

void endTable() {
    --fArr[fiTab].indent;
    putF(fiTab, "\n};\n");
}

/* &mOPERATION [3] / * login * /, */
void genSetObject(AsnObject *object, const Text &pointed) {
    genObjObjectElement(object, pointed);
    putF(fiTab, ",\n");
}

/* A row has room for so many elements of a set, unless the compiler is given MAX_ASN_SET_ELEMS. */
constexpr int ROOM_IN_ROW = 16;

/* Without tables of their own, sets have MAX_ASN_SET_ELEMS places in each row. */
void warnOfLargeSet(int size) {
    if (size > ROOM_IN_ROW)
        warnAtTableLine(
            concat("A set of ", size, " elements in a row: MAX_ASN_SET_ELEMS has to be as great.")
                .c_str());
}

/* --- value sets --- */

void genObjFixedTypeValueSetField(AsnFieldValue *, AsnValue *asnValue, int index) {
    if (index != 0)
        putF(fiTab, isStructureKind(getValueMainType(asnValue)) ? ",\n" : ", ");
    genSetElementValue(asnValue);
}

/* static Code mValueSet0 [] = { */
void genValueSetTablePrefix(AsnFieldValue *value, int number) {
    const Text name = tableName(value, "ValueSet", number);
    auto genHead = [&](AsnObjClassField *, AsnType *type) {
        const Text element =
            cIsDefinedBaseType(type) ? getMetaTypeName(type) : Text(getMetaBaseTypeId(type));
        putF(fiTab, "\nstatic ", element, " ", name, " [] = ");
    };
    forFixedTypeValueSetField(getObjClassFieldOfFieldValue(value), genHead);
    beginTable();
    taviAddItem(ITEM_VARIABLE, fiTab, {name, "[]"});
}

/* --- sets in fields of objects --- */

void genFieldValueSetTable(AsnFieldValue *value, SetTableNumbers *numbers) {
    const char *note = nullptr;
    if (isEmptyFieldValue(value) || isSkippedField(getObjClassFieldOfFieldValue(value), &note) ||
        getFixedTypeValueSetFieldSize(value) == 0)
        return;
    auto genElement = [&](AsnFieldValue *field, AsnValue *asnValue, int index) {
        if (index == 0)
            genValueSetTablePrefix(field, numbers->valueSets++);
        genObjFixedTypeValueSetField(field, asnValue, index);
    };
    forFixedTypeValueSetFieldValue(value, genElement);
    endTable();
}

/* --- object sets --- */

/* static OPERATION* const mObjectSet0 [] = { */
void genObjectSetTablePrefix(AsnFieldValue *value, int number) {
    const Text name = tableName(value, "ObjectSet", number);
    auto genHead = [&](AsnObjClassField *, AsnObjClass *governor) {
        putF(fiTab, "\nstatic ", getMetaClassName(governor), "* const ", name, " [] = ");
    };
    forObjectSetField(getObjClassFieldOfFieldValue(value), genHead);
    beginTable();
    taviAddItem(ITEM_VARIABLE, fiTab, {name, "[]"});
}

void genFieldObjectSetTable(AsnFieldValue *value, SetTableNumbers *numbers) {
    const char *note = nullptr;
    if (isEmptyFieldValue(value) || isSkippedField(getObjClassFieldOfFieldValue(value), &note))
        return;
    bool begun = false;
    const Text pointed = governorName(getObjClassFieldOfFieldValue(value));
    auto genElement = [&](AsnFieldValue *field, AsnObject *object, int) {
        if (!begun)
            genObjectSetTablePrefix(field, numbers->objectSets++);
        begun = true;
        genSetObject(object, pointed);
    };
    forObjectSetFieldValue(value, genElement);
    if (!begun)
        return;
    putF(fiTab, "NULL");
    endTable();
}

/* Calls `genTable` for the fields of all rows, in the order in which rows are written. The tables
   belong to the class whose rows name them, also where an object was defined by another name of
   it. */
void forEachFieldOfRows(AsnModule *module, Call<void(AsnFieldValue *value)> genTable) {
    auto genField = [&](AsnObject *, AsnFieldValue *value, int) { genTable(value); };
    auto genObject = [&](AsnObjClass *objClass, AsnObject *object, int, bool skipped) {
        if (skipped)
            return;
        taviUseClassNode(objClass);
        forEachPossibleObjectFieldValue(object, genField);
    };
    forEachObjectInClassOrder(module, nullptr, genObject, nullptr, true);
}

void genElements(AsnFieldValue *value, int size) {
    if (size == 0)
        genEmptyClassField(value);
    else
        forFixedTypeValueSetFieldValue(value, genObjFixedTypeValueSetField);
}

/* { 1, 2, 3 } */
void genInlineValueSet(AsnFieldValue *value, int size) {
    warnOfLargeSet(size);
    putF(fiTab, "{ ");
    if (isStructureKind(getFieldBaseValueMainType(value))) {
        const Block lines(fiTab, "\n", "");
        genElements(value, size);
        putF(fiTab, "\n");
    } else {
        genElements(value, size);
        putF(fiTab, " ");
    }
    putF(fiTab, "}");
}

/* The values in the row, or the name of their table. */
void genValueSet(AsnFieldValue *value, int size, SetTableNumbers *numbers) {
    if (!hasSeparateTables(moduleOf(value)))
        genInlineValueSet(value, size);
    else if (size == 0)
        putF(fiTab, "NULL");
    else
        putF(fiTab, tableName(value, "ValueSet", numbers->valueSets++));
}

} // namespace

/* --- all sets of a module --- */

void genFixedTypeValueSetTables(AsnModule *module) {
    if (!hasSeparateTables(module))
        return;
    SetTableNumbers numbers;
    auto genTable = [&](AsnFieldValue *value) {
        if (isFixedTypeValueSetFieldValue(value))
            genFieldValueSetTable(value, &numbers);
    };
    forEachFieldOfRows(module, genTable);
}

void genObjectSetTables(AsnModule *module) {
    SetTableNumbers numbers;
    auto genTable = [&](AsnFieldValue *value) {
        if (isObjectSetFieldValue(value))
            genFieldObjectSetTable(value, &numbers);
    };
    if (hasSeparateTables(module))
        forEachFieldOfRows(module, genTable);
    forEachObjectSet(module, genObjectSetTable);
}

Text objectSetTableName(AsnObjectSet *objectSet) {
    return cModulePrefix(getModuleOf(objectSet)) + getDefObjectSetId(objectSet);
}

void genObjectSetTable(AsnObjectSet *objectSet, int) {
    AsnObjClass *governor = getObjClassOfObjectSet(objectSet);
    if (testOptionOf(governor, OPT_SKIPPED))
        return;
    const Text table = objectSetTableName(objectSet);
    const Text pointed = getMetaClassName(governor);
    const Text declarator = pointed + "* const " + table;
    putF(fiTabE, "\nextern ", declarator, " [];\n");
    putF(fiTab, "\n", fiTabE != 0 ? "" : "static ", declarator, " [] = {\n");
    taviUseObjectSetNode(objectSet);
    taviAddItem(ITEM_VARIABLE, fiTab, {table, "[]"});
    taviAddItem(ITEM_EXTERN, fiTabE, {table, "[]"});
    {
        const Block elements(fiTab, "", "\n};\n");
        forObjectSet(objectSet, [&](AsnObjectSet *, AsnObject *object, int) {
            genSetObject(object, pointed);
        });
        putF(fiTab, "NULL");
    }
    genObjectSetTableDefines(objectSet);
}

/* --- what a row says of a set: its table, or the elements themselves --- */

void genObjectFixedTypeValueSetField(AsnFieldValue *value, SetTableNumbers *numbers) {
    const int size = isEmptyFieldValue(value) ? 0 : getFixedTypeValueSetFieldSize(value);
    if (!getBEModMetaRec(moduleOf(value))->tabValueSetN) {
        genValueSet(value, size, numbers);
        return;
    }
    const Block counted(fiTab, "{\n", "}");
    putF(fiTab, size, ",\n");
    genValueSet(value, size, numbers);
    putF(fiTab, "\n");
}

void genObjectObjectSetField(AsnFieldValue *value, SetTableNumbers *numbers) {
    if (!hasSeparateTables(moduleOf(value))) {
        warnOfLargeSet(isEmptyFieldValue(value) ? 0 : nrOfObjectsInField(value));
        const Block elements(fiTab, "{\n", "\n}");
        const Text pointed = governorName(getObjClassFieldOfFieldValue(value));
        if (!isEmptyFieldValue(value))
            forObjectSetFieldValue(value, [&](AsnFieldValue *, AsnObject *object, int) {
                genSetObject(object, pointed);
            });
        putF(fiTab, "NULL");
    } else if (isEmptyFieldValue(value) || nrOfObjectsInField(value) == 0) {
        putF(fiTab, "NULL");
    } else {
        putF(fiTab, tableName(value, "ObjectSet", numbers->objectSets++));
    }
}

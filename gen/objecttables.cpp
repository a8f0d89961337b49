#include "gen/objecttables.h"

#include <cstdio>
#include <cstdlib>

#include "base/files.h"
#include "cbet/names.h"
#include "gen/classes.h"
#include "gen/classmeta.h"
#include "gen/entrytable.h"
#include "gen/fileset.h"
#include "gen/meta.h"
#include "gen/settables.h"
#include "gen/staticvalues.h"
#include "model/modules.h"
#include "model/typequeries.h"
#include "model/valuetexts.h"
#include "objects/fieldvalues.h"
#include "objects/objectorder.h"
#include "objects/objectsets.h"
#include "options/ketracnf.h"
#include "project/ketratavi.h"

namespace {

constexpr const char *NAMELESS = "<nameless>";

/* What the rows of a pass share. */
struct RowPass {
    AsnModule *module;
    SetTableNumbers numbers;
    int fieldValues = 0; /* that the row has so far */
};

/* The tables are seen by other files. */
bool isExported(AsnModule *module) {
    return isMorlaApplication(module) || needsTableAccessFuncs(module);
}

/* --- names and masks in a row --- */

Text nameOf(AsnObject *object) {
    const Text id = getMetaObjectId(object);
    return id.empty() ? NAMELESS : id;
}

/* --- the mask of optional fields --- */

/* BIT(1) | BIT(4), in words: { 0L, BITL(3) } */
void genObjectCompmask(AsnObject *object) {
    constexpr int WORD_BITS = 32;
    AsnObjClass *objClass = getObjClassOfObject(object);
    const bool isArray = getClassCompmaskWords(objClass) > 1;
    const char *bit = getClassCompmaskBit(objClass);
    int word = 0;
    bool begun = false; /* the present word has a term */
    if (isArray)
        putF(fiTab, "{ ");
    auto genTerm = [&](AsnObject *, AsnFieldValue *, int, int fieldNr) {
        for (; word < fieldNr / WORD_BITS; ++word) {
            if (!begun)
                putF(fiTab, "0L");
            putF(fiTab, ", ");
            begun = false;
        }
        if (begun)
            putF(fiTab, " | ");
        putF(fiTab, bit);
        putF(fiTab, "(", fieldNr % WORD_BITS, ")");
        begun = true;
    };
    if (forEachOptionalObjectFieldValue(object, genTerm) == 0)
        putF(fiTab, getClassCompmaskSize(objClass) == VF_I32 ? "0L" : "0");
    if (isArray)
        putF(fiTab, " }");
}

/* --- fields --- */

/* &mEntryDescr [0] / * Msg * / */
void genEntryTypeReference(AsnType *type, int entryIndex) {
    putF(fiTab, "&", entryTableName(getModuleOfType(type)), " [", entryIndex, "] /* ",
         getMetaTypeId(type), " */");
}

bool hasTables(AsnModule *module) {
    int first, second;
    return getTableFileKind(module, getGenArr(module), &first, &second);
}

/* --- fields --- */

/* A setting that leads to nothing leaves what a field without one does: each member of the
   structure has its place in the row. */

void genTypeField(AsnFieldValue *value) {
    bool written = false;
    auto genReference = [&](AsnFieldValue *, AsnType *type, int entryIndex) {
        genEntryTypeReference(type, entryIndex);
        written = true;
    };
    forEntryTypeFieldValue(value, genReference);
    if (written)
        return;
    putF(fiTab,
         isEmptyFieldValue(value) ? "NULL" : "NULL /* ONLY ENTRY TYPES ARE SUPPORTED HERE */");
    if (!isEmptyFieldValue(value))
        warnAtTableLine("Non-entry type as a type field value.");
}

void genFixedTypeValueField(AsnFieldValue *value) {
    bool written = false;
    auto genValue = [&](AsnFieldValue *, AsnValue *asnValue) {
        genFixedTypeValueFieldValue(asnValue);
        written = true;
    };
    forFixedTypeValueFieldValue(value, genValue);
    if (!written)
        genEmptyClassField(value);
}

void genObjectField(AsnFieldValue *value) {
    bool written = false;
    const Text pointed = governorName(getObjClassFieldOfFieldValue(value));
    auto genReference = [&](AsnFieldValue *, AsnObject *object) {
        genObjObjectElement(object, pointed);
        written = true;
    };
    forObjectFieldValue(value, genReference);
    if (!written)
        putF(fiTab, "NULL");
}

void genFieldContents(AsnFieldValue *value, RowPass *pass) {
    if (isTypeFieldValue(value))
        genTypeField(value);
    else if (isFixedTypeValueFieldValue(value))
        genFixedTypeValueField(value);
    else if (isFixedTypeValueSetFieldValue(value))
        genObjectFixedTypeValueSetField(value, &pass->numbers);
    else if (isObjectFieldValue(value))
        genObjectField(value);
    else if (isObjectSetFieldValue(value))
        genObjectObjectSetField(value, &pass->numbers);
}

/* A field that the structure has no member for leaves only a comment in the row. */
void genField(AsnObject *object, AsnFieldValue *value, int fieldNr, RowPass *pass) {
    const char *note = nullptr;
    const bool skipped = isSkippedField(getObjClassFieldOfFieldValue(value), &note);
    const bool omitted = skipped && getGlobalOptions(pass->module)->omitSkippedFields != 0;
    const bool masked = isOptionalObjClassFields(getObjClassOfObject(object));
    if (fieldNr != 0 || masked)
        putF(fiTab, !omitted && (pass->fieldValues != 0 || masked) ? ",\n" : "\n");
    if (skipped) {
        const Text id = getIdOf(getObjClassFieldOfFieldValue(value));
        putF(fiTab, omitted ? "" : "0 ", "/* ", id, note, " */");
    } else {
        genFieldContents(value, pass);
    }
    pass->fieldValues += omitted ? 0 : 1;
}

/* BIT(0), for each bit of a named list that the mask of the run-time layer has room for. */
void genSyntaxProperty(AsnFieldValue *value) {
    constexpr int MASK_BITS = 32, DIGIT_BITS = 4;
    bool written = false;
    auto genBits = [&](AsnValue *, std::int32_t, const char *digits) {
        for (int bit = 0; bit < MASK_BITS && digits[bit / DIGIT_BITS] != '\0'; ++bit) {
            const char digit[] = {digits[bit / DIGIT_BITS], '\0'};
            if ((std::strtol(digit, nullptr, 16) >> (DIGIT_BITS - 1 - bit % DIGIT_BITS) & 1) == 0)
                continue;
            putF(fiTab, written ? " | " : "", "BIT(", bit, ")");
            written = true;
        }
    };
    forFixedTypeValueFieldValue(value, [&](AsnFieldValue *, AsnValue *asnValue) {
        forBitStringValueX(asnValue, genBits);
    });
    if (!written)
        putF(fiTab, "0");
}

/* The row of a TYPE_IDENTIFIER or ABSTRACT_SYNTAX. The mask of the latter has the property's bit in
   any case, since its default stands in the row. */
void genPredefinedFields(AsnObject *object) {
    if (getObjClassOfObject(object)->base.mainType == TYP_ABSTR_STX)
        putF(fiTab, "BIT(2),\n");
    forEachPredefinedFieldValue(object, [](AsnFieldValue *value, PredefinedField field) {
        if (field != PREDEFINED_ID)
            putF(fiTab, ",\n");
        if (field == PREDEFINED_TYPE)
            genTypeField(value);
        else if (field == PREDEFINED_PROPERTY)
            genSyntaxProperty(value);
        else if (isEmptyFieldValue(value))
            putF(fiTab, "{ 0, { 0 } }");
        else
            genFixedTypeValueField(value);
    });
}

/* --- tables --- */

/* ASN_DECL OPERATION mOPERATION [ASN_DECL_SIZE (12)]; */
void declareArray(AsnModule *module, AsnObjClass *objClass, int count) {
    const bool exported = isExported(module);
    const int file = exported ? fiTabE : fiTab;
    putF(file, "\n");
    putF(file, exported ? "extern " : "ASN_DECL ");
    const char *classId = tableClassId(objClass);
    const Text table = objectTableName(module, classId);
    putF(file, cLoneName(classId, module));
    putF(file, " ", table, " [", exported ? Text() : concat("ASN_DECL_SIZE (", count, ")"), "];\n");
    taviUseClassNode(objClass);
    taviAddItem(exported ? ITEM_EXTERN : ITEM_VARIABLE, file, {table, "[]"});
}

/* static OPERATION mOPERATION [] = { */
void genObjectTablePrefix(AsnModule *module, AsnObjClass *objClass, bool skipped) {
    if (skipped)
        return;
    const char *classId = tableClassId(objClass);
    const Text table = objectTableName(module, classId);
    putF(fiTab, "\n", isExported(module) ? "" : "static ", cLoneName(classId, module), " ", table,
         " [] = {\n");
    taviUseClassNode(objClass);
    taviAddItem(ITEM_VARIABLE, fiTab, {table, "[]"});
    ++fArr[fiTab].indent;
}

/* --- rows and tables --- */

/* What stands between the braces of the row. */
void genRow(AsnObject *object, RowPass *pass) {
    if (isPredefinedObjClass(getObjClassOfObject(object)))
        genPredefinedFields(object);
    else if (isOptionalObjClassFields(getObjClassOfObject(object)))
        genObjectCompmask(object);
    pass->fieldValues = 0;
    auto genOne = [pass](AsnObject *of, AsnFieldValue *value, int fieldNr) {
        genField(of, value, fieldNr, pass);
    };
    forEachPossibleObjectFieldValue(object, genOne);
}

void genObjectTableElement(AsnObject *object, int tableIndex, bool skipped, RowPass *pass) {
    if (skipped)
        return;
    taviUseObjectNode(object);
    if (tableIndex != 0)
        putF(fiTab, ",\n\n");
    putF(fiTab, "/* ", nameOf(object), " ", tableIndex, " */\n");
    taviAddItem(ITEM_TABLE_ITEM, fiTab, {nameOf(object)});
    {
        const Block row(fiTab, "{\n", "\n}");
        genRow(object, pass);
    }
    genObjectDefines(object, tableIndex);
}

void genObjectTablePostfix(AsnModule *module, AsnObjClass *objClass, int count, bool skipped) {
    if (skipped)
        return;
    --fArr[fiTab].indent;
    putF(fiTab, "\n};\n");
    const char *classId = tableClassId(objClass);
    taviUseClassNode(objClass);
    genTableAccessFunction(module, cLoneName(classId, module), objectTableName(module, classId),
                           count, g_taviTypeNode);
    genObjectTableDefines(module, objClass, count);
}

} // namespace

/* Rows point at one another, also at tables further down. */
ClassPlaces declareObjectInstanceArrays(AsnModule *module) {
    ClassPlaces rowless;
    auto declare = [&](AsnObjClass *objClass, int count, bool skipped) {
        if (skipped)
            return;
        if (count == 0)
            rowless.insert({objClass->baseModule, objClass->baseRecord});
        else
            declareArray(module, objClass, count);
    };
    forEachObjectInClassOrder(module, nullptr, nullptr, declare, true);
    return rowless;
}

void genObjectTables(AsnModule *module, const ClassPlaces &rowless) {
    const auto hasTable = [&](AsnObjClass *objClass) {
        return !rowless.contains({objClass->baseModule, objClass->baseRecord});
    };
    RowPass pass{module, {}};
    auto prefix = [&](AsnObjClass *objClass, bool skipped) {
        genObjectTablePrefix(module, objClass, skipped || !hasTable(objClass));
    };
    auto element = [&](AsnObjClass *, AsnObject *object, int tableIndex, bool skipped) {
        genObjectTableElement(object, tableIndex, skipped, &pass);
    };
    auto postfix = [&](AsnObjClass *objClass, int count, bool skipped) {
        genObjectTablePostfix(module, objClass, count, skipped || !hasTable(objClass));
    };
    forEachObjectInClassOrder(module, prefix, element, postfix, true);
}

void warnAtTableLine(const char *text) {
    std::printf("WARNING: %s:%lu: %s\n", nameOfF(fiTab).c_str(),
                static_cast<unsigned long>(linesInF(fiTab)) + 1, text);
}

Text governorName(AsnObjClassField *field) {
    Text name;
    auto take = [&](AsnObjClassField *, AsnObjClass *governor) {
        name = getMetaClassName(governor);
    };
    forObjectField(field, take);
    forObjectSetField(field, take);
    return name;
}

void genObjObjectElement(AsnObject *object, const Text &pointed) {
    AsnModule *module = getModuleOf(object);
    const int row = getMetaObjectNr(object);
    if (row < 0 || !hasTables(module)) {
        putF(fiTab, "NULL /* ", nameOf(object), ": NO ROW */");
        warnAtTableLine("Object without a row.");
        return;
    }
    const char *classId = getMetaObjectTableId(object);
    if (cLoneName(classId, module) != pointed && !isPredefinedObjClass(getObjClassOfObject(object)))
        putF(fiTab, "(", pointed, "*)");
    putF(fiTab, "&", objectTableName(module, classId), " [", row, "] /* ", nameOf(object), " */");
}

bool isSkippedField(AsnObjClassField *field, const char **note) {
    *note = "";
    if (isVariableTypeValueField(field) || isVariableTypeValueSetField(field))
        *note = " NOT SUPPORTED";
    else if (testOptionOf(field, OPT_SKIPPED))
        *note = " SKIPPED";
    else if (isGovernorSkipped(field))
        *note = " GOVERNOR SKIPPED";
    return **note != '\0';
}

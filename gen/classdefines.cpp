#include "gen/classes.h"

#include "base/files.h"
#include "cbet/names.h"
#include "gen/classmeta.h"
#include "gen/fileset.h"
#include "gen/meta.h"
#include "gen/settables.h"
#include "objects/classes.h"
#include "objects/objects.h"
#include "objects/objectsets.h"
#include "project/ketratavi.h"

/* A line that begins with "#define" must not be broken, so what follows its first piece is put. */

namespace {

char upperFirstChar(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

/* #define is_errors_OPERATION(obj) \
     ((obj)->compmask & BIT(3)) */
void genPresenceTest(AsnObjClass *objClass, AsnObjClassField *field, int number) {
    constexpr int WORD_BITS = 32;
    if (!isOptionalField(field)) {
        putUnbroken(fiDef, "TRUE\n");
        return;
    }
    const Indent indent(fiDef);
    putUnbroken(fiDef, "\\\n((obj)->compmask");
    if (getClassCompmaskWords(objClass) > 1) {
        putUnbroken(fiDef, " [", number / WORD_BITS, "]");
        number %= WORD_BITS;
    }
    putUnbroken(fiDef, " & ", getClassCompmaskBit(objClass), "(", number, "))\n");
}

void genFieldDefines(AsnObjClass *objClass, AsnObjClassField *field, int number) {
    const Text id = getIdOf(field) + "_" + getMetaClassId(objClass);
    putF(fiDef, "\n#define ", id, " ", number);
    taviAddItem(ITEM_DEFINE, fiDef, {id});
    putF(fiDef, "\n#define is_", id, "(obj) ");
    taviAddItem(ITEM_MACRO, fiDef, {"is_", id, "()"});
    genPresenceTest(objClass, field, number);
}

} // namespace

void genClassDefines(AsnObjClass *objClass) {
    if (testOptionOf(objClass, OPT_SKIPPED) || isPredefinedObjClass(objClass))
        return;
    putF(fiDef, "\n/* fields of ", getMetaClassId(objClass), " */\n");
    forEachObjClassField(objClass, genFieldDefines);
}

void genObjectDefines(AsnObject *object, int row) {
    AsnModule *module = getModuleOf(object);
    if (!needsTableMacros(module))
        return;
    const Text prefix = cModulePrefix(module);
    const Text table = objectTableName(module, getMetaObjectTableId(object));
    const Text objectId = getMetaObjectId(object);
    if (row == 0)
        putF(fiDef, "\n/* objects in ", table, " */\n\n");
    if (objectId.empty()) {
        putF(fiDef, "/* <nameless> ", row, " */\n");
        return;
    }
    /* #define mlogin 0
       #define login (mOPERATION + 0) */
    putF(fiDef, "#define ", prefix, objectId, " ", row, "\n");
    taviAddItem(ITEM_DEFINE, fiDef, {prefix, objectId});
    const Text name = cLoneName(objectId, module);
    putF(fiDef, "#define ", name, " (", table, " + ", row, ")\n");
    taviAddItem(ITEM_DEFINE, fiDef, {name});
}

void genObjectTableDefines(AsnModule *module, AsnObjClass *objClass, int count) {
    if (getMetaClassAccessRoutines(objClass) != ACCESS_MACROS)
        return;
    const Text table = objectTableName(module, tableClassId(objClass));
    Text walked = table + "Obj";
    walked[0] = upperFirstChar(walked[0]);
    putF(fiDef, "\n/* iterators for ", table, " table */\n\n");
    if (needsTableMacros(module)) {
        putF(fiDef, "#define ", table, "_cnt ", count, "\n");
        taviAddItem(ITEM_DEFINE, fiDef, {table, "_cnt"});
    }
    putF(fiDef, "#define first", walked, "() (", table, ")\n");
    taviAddItem(ITEM_MACRO, fiDef, {"first", walked, "()"});
    putF(fiDef, "#define next", walked, "(iter) \\\n");
    taviAddItem(ITEM_MACRO, fiDef, {"next", walked, "()"});
    const Indent indent(fiDef);
    putF(fiDef, "((iter) < ", table, " + ", count - 1, " ? (iter) + 1 : NULL)\n");
}

void genObjectSetTableDefines(AsnObjectSet *objectSet) {
    const Text set = getDefObjectSetId(objectSet);
    const Text table = objectSetTableName(objectSet);
    putF(fiDef, "\n/* iterators for ", set, " table */\n\n");
    putF(fiDef, "#define first", set, "Obj() (", table, ")\n");
    taviAddItem(ITEM_MACRO, fiDef, {"first", set, "Obj()"});
    putF(fiDef, "#define next", set, "Obj(iter) ((iter) + 1)\n");
    taviAddItem(ITEM_MACRO, fiDef, {"next", set, "Obj()"});
}

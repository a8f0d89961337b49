#include "gen/classdefines.h"

#include "base/files.h"
#include "cbet/names.h"
#include "cbet/reserved.h"
#include "gen/classes.h"
#include "gen/classmeta.h"
#include "gen/fileset.h"
#include "gen/meta.h"
#include "model/modules.h"
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
        putToF(fiDef, "TRUE\n");
        return;
    }
    ++fArr[fiDef].indent;
    putToF(fiDef, "\\\n((obj)->compmask");
    if (getClassCompmaskWords(objClass) > 1) {
        putToF(fiDef, formatText(" [%d]", number / WORD_BITS).c_str());
        number %= WORD_BITS;
    }
    putToF(fiDef, formatText(" & %s(%d))\n", getClassCompmaskBit(objClass), number).c_str());
    --fArr[fiDef].indent;
}

void genFieldDefines(AsnObjClass *objClass, AsnObjClassField *field, int number) {
    Text id;
    getObjClassFieldId(id, nullptr, field, "_");
    id += getMetaClassId(objClass);
    printfToF(fiDef, "\n#define %s %d", id.c_str(), number);
    taviAddItem(ITEM_DEFINE, fiDef, {id.c_str()});
    printfToF(fiDef, "\n#define is_%s(obj) ", id.c_str());
    taviAddItem(ITEM_MACRO, fiDef, {"is_", id.c_str(), "()"});
    genPresenceTest(objClass, field, number);
}

} // namespace

void genClassDefines(AsnObjClass *objClass) {
    if (testObjClassOption(objClass, OPT_SKIPPED) || isPredefinedObjClass(objClass))
        return;
    printfToF(fiDef, "\n/* fields of %s */\n", getMetaClassId(objClass));
    forEachObjClassField(objClass, genFieldDefines);
}

void genObjectDefines(AsnObject *object, int row) {
    AsnModule *module = getModuleOfObject(object);
    if (!needsTableMacros(module))
        return;
    Text prefix;
    cModulePrefix(prefix, nullptr, module, nullptr);
    const char *classId = getMetaObjectTableId(object);
    const char *objectId = getMetaObjectId(object);
    const long nr = row;
    if (nr == 0)
        printfToF(fiDef, "\n/* objects in %s%s */\n\n", prefix.c_str(), classId);
    if (*objectId == '\0') {
        printfToF(fiDef, "/* <nameless> %ld */\n", nr);
        return;
    }
    /* #define mlogin 0
       #define login (mOPERATION + 0) */
    printfToF(fiDef, "#define %s%s %ld\n", prefix.c_str(), objectId, nr);
    taviAddItem(ITEM_DEFINE, fiDef, {prefix.c_str(), objectId});
    const Text name = cLoneName(objectId, module);
    printfToF(fiDef, "#define %s (%s%s + %ld)\n", name.c_str(), prefix.c_str(), classId, nr);
    taviAddItem(ITEM_DEFINE, fiDef, {name.c_str()});
}

void genObjectTableDefines(AsnModule *module, AsnObjClass *objClass, int count) {
    if (getMetaClassAccessRoutines(objClass) != ACCESS_MACROS)
        return;
    Text table, walked;
    cModulePrefix(table, nullptr, module, tableClassId(objClass));
    walked = table + "Obj";
    walked[0] = upperFirstChar(walked[0]);
    printfToF(fiDef, "\n/* iterators for %s table */\n\n", table.c_str());
    if (needsTableMacros(module)) {
        printfToF(fiDef, "#define %s_cnt %d\n", table.c_str(), count);
        taviAddItem(ITEM_DEFINE, fiDef, {table.c_str(), "_cnt"});
    }
    printfToF(fiDef, "#define first%s() (%s)\n", walked.c_str(), table.c_str());
    taviAddItem(ITEM_MACRO, fiDef, {"first", walked.c_str(), "()"});
    printfToF(fiDef, "#define next%s(iter) \\\n", walked.c_str());
    taviAddItem(ITEM_MACRO, fiDef, {"next", walked.c_str(), "()"});
    ++fArr[fiDef].indent;
    printfToF(fiDef, "((iter) < %s + %d ? (iter) + 1 : NULL)\n", table.c_str(), count - 1);
    --fArr[fiDef].indent;
}

void genObjectSetTableDefines(AsnObjectSet *objectSet) {
    Text set;
    getDefObjectSetId(set, nullptr, objectSet, nullptr);
    Text table;
    cModulePrefix(table, nullptr, getModuleOfObjectSet(objectSet), set.c_str());
    printfToF(fiDef, "\n/* iterators for %s table */\n\n", set.c_str());
    printfToF(fiDef, "#define first%sObj() (%s)\n", set.c_str(), table.c_str());
    taviAddItem(ITEM_MACRO, fiDef, {"first", set.c_str(), "Obj()"});
    printfToF(fiDef, "#define next%sObj(iter) ((iter) + 1)\n", set.c_str());
    taviAddItem(ITEM_MACRO, fiDef, {"next", set.c_str(), "Obj()"});
}

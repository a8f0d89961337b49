#include "gen/defines.h"

#include "cbet/names.h"
#include "driver/files.h"
#include "gen/accessors.h"
#include "gen/fileset.h"
#include "gen/meta.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/typequeries.h"
#include "model/typevalues.h"
#include "project/ketratavi.h"

namespace {

void genNamedNumber(AsnType *type, AsnValue *value, int) {
    Text line;
    /* #define red_Color 1 */
    wToF(fiDef, cDefineForNamedNumber(line, type, value));
    taviAddDefine(fiDef, line);
}

void genNamedNumbers(AsnType *type) {
    if (!isNamedNumbers(type))
        return;
    Text id;
    const char *what = getTypeMainType(type) == TYP_BITSTR ? "bits" : "nbrs";
    printfToF(fiDef, "\n/* named %s of %s */\n\n", what,
              cTypeId(id, nullptr, type, nullptr).c_str());
    forEachNamedNumber(type, genNamedNumber);
}

void genCompDefine(AsnType *, AsnType *comp, int) {
    Text line;
    /* #define a_Msg 0 */
    wToF(fiDef, cDefineForComponentIndex(line, comp));
    taviAddDefine(fiDef, line);
}

void genCompDefines(AsnType *type) {
    if (!isStructuredType(type) || getNrOfTypeComps(type) == 0)
        return;
    Text id;
    printfToF(fiDef, "\n/* components of %s */\n\n", cTypeId(id, nullptr, type, nullptr).c_str());
    forEachTypeComp(type, genCompDefine);
}

void genComponents(AsnType *type) {
    if (needsComponentDefines(getModuleOfType(type)))
        genCompDefines(type);
    genCompAccessRoutines(type);
}

} // namespace

void genDefines(AsnType *type) {
    if (isSynonymType(type) || testTypeOption(type, OPT_SKIPPED))
        return;
    genNamedNumbers(type);
    genComponents(type);
}

void genEntryTablePrefixDefine(AsnModule *module) {
    if (!needsTableMacros(module))
        return;
    Text prefix;
    printfToF(fiDef, "\n/* entries in %s */\n\n",
              getModulePrefix(prefix, nullptr, module, "EntryDescr").c_str());
}

void genEntryTableElementDefine(AsnType *type, int index) {
    AsnModule *module = getModuleOfType(type);
    if (!needsTableMacros(module))
        return;
    Text name;
    /* #define mMsg 0 */
    printfToF(fiDef, "#define %s %d\n",
              getModulePrefix(name, nullptr, module, getMetaTypeId(type)).c_str(), index);
    taviAddItem(ITEM_DEFINE, fiDef, {name.c_str()});
}

void genEntryTablePostfixDefine(AsnModule *module) {
    if (!needsTableMacros(module))
        return;
    Text name;
    /* #define mEntryDescr_cnt 4 */
    printfToF(fiDef, "#define %s %d\n",
              getModulePrefix(name, nullptr, module, "EntryDescr_cnt").c_str(),
              getNrOfEntryTypes(module));
    taviAddItem(g_taviModuleNode, ITEM_DEFINE, fiDef, {name.c_str()});
}

#include "gen/defines.h"

#include "base/files.h"
#include "cbet/forms.h"
#include "cbet/names.h"
#include "gen/entrytable.h"
#include "gen/fileset.h"
#include "gen/meta.h"
#include "model/compwalk.h"
#include "model/modules.h"
#include "model/typeextension.h"
#include "model/typequeries.h"
#include "model/typevalues.h"
#include "project/ketratavi.h"
#include "store/records.h"

namespace {

void genNamedNumber(AsnType *type, AsnValue *value, int) {
    /* #define red_Color 1 */
    const Text line = cDefineForNamedNumber(type, value);
    putF(fiDef, line);
    taviAddDefine(fiDef, line);
}

void genNamedNumbers(AsnType *type) {
    if (!isNamedNumbers(type))
        return;
    const char *what = getTypeMainType(type) == TYP_BITSTR ? "bits" : "nbrs";
    putF(fiDef, "\n/* named ", what, " of ", cTypeId(type), " */\n\n");
    forEachNamedNumber(type, genNamedNumber);
}

/* Numbers of the components of one definition, down to structures that are written in it. */
struct CompNumbers {
    std::unordered_map<Text, int> numbers;
    std::unordered_set<Text> ambiguous;
    int nesting = 0;
};

void collectCompNumbers(AsnType *type, CompNumbers *all) {
    const NestingGuard guard(&all->nesting, type->posModule);
    auto collect = [all](AsnType *, AsnType *comp, int) {
        if (isComponentType(comp) && !isTypeExtensionmarker(comp)) {
            const int number = getTypeCompNbr(comp);
            const auto [place, isNew] = all->numbers.try_emplace(getMetaCompId(comp), number);
            if (!isNew && place->second != number)
                all->ambiguous.insert(place->first);
        }
        if (!cIsDefinedBaseType(comp) && !isLeafType(comp) && !cIsFrameType(comp) &&
            !testTypeOption(comp, OPT_SKIPPED))
            collectCompNumbers(comp, all);
    };
    forEachTypeCompOrElem(type, collect);
}

const std::unordered_set<Text> &ambiguousComps(AsnType *definition) {
    const auto key = static_cast<std::uint64_t>(definition->baseRecord);
    BEModMetaRec *meta = definition->baseModule->metaRec.get();
    const auto known = meta->ambiguousComps.find(key);
    if (known != meta->ambiguousComps.end())
        return known->second;
    CompNumbers all;
    collectCompNumbers(definition, &all);
    return meta->ambiguousComps[key] = std::move(all.ambiguous);
}

/* A component of a nested structure is named by its place there if the shorter name would stand for
   several numbers. */
bool needsPath(AsnType *father, AsnType *comp) {
    if (isTypeExtensionmarker(comp) || cIsDefinedBaseType(father))
        return false;
    AsnType *definition = cDefinedAncestor(comp);
    if (definition != nullptr)
        return ambiguousComps(definition).contains(getMetaCompId(comp));
    /* Structures in fields of a class have no definition around them: the first one is named. */
    const auto &defines = getBEModMetaRec(getModuleOfType(comp))->componentDefines;
    const auto known = defines.find(cComponentIndexMnemonic(comp));
    return known != defines.end() && known->second != getTypeCompNbr(comp);
}

void genCompDefine(AsnType *father, AsnType *comp, int) {
    /* #define a_Msg 0 */
    const bool withPath = needsPath(father, comp);
    const Text line = cDefineForComponentIndex(comp, withPath);
    putF(fiDef, line);
    taviAddDefine(fiDef, line);
    if (!withPath && cDefinedAncestor(comp) == nullptr)
        getBEModMetaRec(getModuleOfType(comp))
            ->componentDefines.try_emplace(cComponentIndexMnemonic(comp), getTypeCompNbr(comp));
}

void genCompDefines(AsnType *type) {
    if (!isStructuredType(type) || getNrOfTypeComps(type) == 0)
        return;
    putF(fiDef, "\n/* components of ", cTypeId(type), " */\n\n");
    forEachTypeComp(type, genCompDefine);
}

void genComponents(AsnType *type, Alternatives alternatives) {
    if (needsComponentDefines(getModuleOfType(type)))
        genCompDefines(type);
    genCompAccessRoutines(type, alternatives);
}

} // namespace

void genDefines(AsnType *type, Alternatives alternatives) {
    if (isSynonymType(type) || testTypeOption(type, OPT_SKIPPED))
        return;
    genNamedNumbers(type);
    genComponents(type, alternatives);
}

void genEntryTablePrefixDefine(AsnModule *module) {
    if (!needsTableMacros(module))
        return;
    putF(fiDef, "\n/* entries in ", entryTableName(module), " */\n\n");
}

void genEntryTableElementDefine(AsnType *type, int index) {
    AsnModule *module = getModuleOfType(type);
    if (!needsTableMacros(module))
        return;
    /* #define mMsg 0 */
    const Text name = cModulePrefix(module) + getMetaTypeId(type);
    putF(fiDef, "#define ", name, " ", index, "\n");
    taviAddItem(ITEM_DEFINE, fiDef, {name});
}

void genEntryTablePostfixDefine(AsnModule *module) {
    if (!needsTableMacros(module))
        return;
    /* #define mEntryDescr_cnt 4 */
    const Text name = entryTableName(module) + "_cnt";
    putF(fiDef, "#define ", name, " ", getNrOfEntryTypes(module), "\n");
    taviAddItem(g_taviModuleNode, ITEM_DEFINE, fiDef, {name});
}

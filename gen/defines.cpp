#include "gen/defines.h"

#include "base/files.h"
#include "cbet/names.h"
#include "cbet/forms.h"
#include "gen/fileset.h"
#include "gen/meta.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/typeextension.h"
#include "model/typequeries.h"
#include "model/typevalues.h"
#include "project/ketratavi.h"
#include "store/records.h"

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
    BEModMetaRec *meta = definition->baseModule->metaRec;
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
    Text name;
    const auto known = defines.find(cComponentIndexMnemonic(name, nullptr, comp, nullptr));
    return known != defines.end() && known->second != getTypeCompNbr(comp);
}

void genCompDefine(AsnType *father, AsnType *comp, int) {
    Text line, name;
    /* #define a_Msg 0 */
    const bool withPath = needsPath(father, comp);
    wToF(fiDef, cDefineForComponentIndex(line, comp, withPath));
    taviAddDefine(fiDef, line);
    if (!withPath && cDefinedAncestor(comp) == nullptr)
        getBEModMetaRec(getModuleOfType(comp))
            ->componentDefines.try_emplace(cComponentIndexMnemonic(name, nullptr, comp, nullptr),
                                           getTypeCompNbr(comp));
}

void genCompDefines(AsnType *type) {
    if (!isStructuredType(type) || getNrOfTypeComps(type) == 0)
        return;
    Text id;
    printfToF(fiDef, "\n/* components of %s */\n\n", cTypeId(id, nullptr, type, nullptr).c_str());
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
    Text prefix;
    printfToF(fiDef, "\n/* entries in %s */\n\n",
              cModulePrefix(prefix, nullptr, module, "EntryDescr").c_str());
}

void genEntryTableElementDefine(AsnType *type, int index) {
    AsnModule *module = getModuleOfType(type);
    if (!needsTableMacros(module))
        return;
    Text name;
    /* #define mMsg 0 */
    printfToF(fiDef, "#define %s %d\n",
              cModulePrefix(name, nullptr, module, getMetaTypeId(type)).c_str(), index);
    taviAddItem(ITEM_DEFINE, fiDef, {name});
}

void genEntryTablePostfixDefine(AsnModule *module) {
    if (!needsTableMacros(module))
        return;
    Text name;
    /* #define mEntryDescr_cnt 4 */
    printfToF(fiDef, "#define %s %d\n",
              cModulePrefix(name, nullptr, module, "EntryDescr_cnt").c_str(),
              getNrOfEntryTypes(module));
    taviAddItem(g_taviModuleNode, ITEM_DEFINE, fiDef, {name});
}

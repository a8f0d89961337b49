#include "gen/entrytable.h"

#include <algorithm>

#include "base/files.h"
#include "cbet/names.h"
#include "gen/fileset.h"
#include "gen/meta.h"
#include "model/compwalk.h"
#include "model/iterators.h"
#include "model/typequeries.h"
#include "project/ketratavi.h"

namespace {

/* asn_a */
void genVariable(AsnType *type) {
    putF(fiTab, "asn_", cASN1VariableName(type));
}

/* asn_a,
   asn_b */
void genComponentVariables(AsnType *type) {
    bool first = true;
    auto genComp = [&first](AsnType *, AsnType *comp, int) {
        if (!first)
            putF(fiTab, ",\n");
        first = false;
        genVariable(comp);
    };
    forEachTypeComp(type, genComp);
}

/* The type behind a synonym, wherever it lies. */
void forTypeBehindSynonym(AsnType *type, BaseTypeCall func) {
    if (isBaseTypeInCurrentModule(type))
        forSynonymType(type, func);
    else
        forTypeDefinedInAnotherModule(type, func);
}

} // namespace

/* mEntryParam0 */
Text entryParamName(AsnType *type, int index) {
    return concat(cModulePrefix(getModuleOfType(type)), "EntryParam",
                  getMetaAsnParamIndex(type, index));
}

/* --- what a row says of them --- */

int nrOfEntryParams(AsnType *type) {
    int params = 0;
    if (isMorlaLeafType(type))
        return 1;
    if (isSynonymType(type))
        forTypeBehindSynonym(type, [&](AsnType *base) { params = nrOfEntryParams(base); });
    else
        forEachTypeComp(type, [&](AsnType *, AsnType *, int) { ++params; });
    return std::max(params, 1);
}

void genETabElemCompsContents(AsnType *type) {
    if (isMorlaLeafType(type))
        genVariable(type);
    else if (isSynonymType(type))
        forTypeBehindSynonym(type, genETabElemCompsContents);
    else
        genComponentVariables(type);
}

void genETabSeparateAsnParams(AsnType *type, int index) {
    if (!addMetaAsnParams(type, index))
        return;
    const Text name = entryParamName(type, index);
    /* static const sint16 mEntryParam0 [] = { */
    putF(fiTab, "\nstatic const ", getLangType(VF_I16), " ", name, " [] = {\n");
    taviUseTypeNode(type);
    taviAddItem(ITEM_VARIABLE, fiTab, {name, "[]"});
    const Block table(fiTab, "", "\n};\n");
    if (isStructuredType(type))
        genETabElemCompsContents(type);
    else
        genVariable(type);
}

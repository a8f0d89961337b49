#include "gen/typeshape.h"

#include <cstdio>

#include "base/files.h"
#include "cbet/embedded.h"
#include "cbet/forms.h"
#include "gen/classes.h"
#include "gen/defines.h"
#include "gen/fileset.h"
#include "gen/generators.h"
#include "gen/typemeta.h"
#include "model/compwalk.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/stamps.h"
#include "model/typenames.h"
#include "model/typepath.h"
#include "model/typequeries.h"
#include "project/ketratavi.h"
#include "store/records.h"

namespace {

/* SKIPPED or FRAME_PTR stands for the type, which needs no definition of its own. */
bool isCarriedAsItIs(AsnType *type) {
    return testTypeOption(type, OPT_SKIPPED) || cIsFrameType(type);
}

/* An empty line, the user's text, "typedef ". */
void genTypedefPrefix(AsnType *type) {
    resetIndentLevel(fiTyp);
    putF(fiTyp, "\n");
    printLocalTypeEmbeddingOptions(fiTyp, type, TED_TYP_BEFORE);
    putF(fiTyp, "typedef ");
}

/* " Msg;", the user's text. */
void genTypedefPostfix(AsnType *type) {
    putF(fiTyp, " ", getMetaTypeName(type), ";\n");
    taviAddItem(ITEM_TYPEDEF, fiTyp, {getMetaTypeName(type)});
    printLocalTypeEmbeddingOptions(fiTyp, type, TED_TYP_BEHIND);
}

/* A selection of a defined type has a name for that type. */
bool isNameOfSelected(AsnType *type) {
    return isSelectionType(type) && isSynonymType(type);
}

/* typedef Msg MsgOfChoice; */
void genNameOfSelected(AsnType *type) {
    const bool hasName = !isCarriedAsItIs(type) ||
                         (isEntryBaseType(type) && !isMorlaApplication(getModuleOfType(type)));
    genTypedefPrefix(type);
    if (hasName)
        putF(fiTyp, getDefBaseTypeId(type));
    else
        putF(fiTyp, getMetaBaseTypeId(type));
    genTypedefPostfix(type);
}

/* The users of a synonym name the type that it stands for, so it needs no definition. */
void genTypedef(AsnType *type) {
    if (isNameOfSelected(type))
        return genNameOfSelected(type);
    if (isSynonymType(type) || isCarriedAsItIs(type))
        return;
    genTypedefPrefix(type);
    genTypedefContents(type);
    genTypedefPostfix(type);
}

/* The entry table names entry types by their own identifiers: "typedef B A;" where nothing else
   defines A. */
void genEntryTypedef(AsnType *type) {
    const char *base = orEmpty(getMetaBaseTypeId(type));
    const bool synonym = isSynonymType(type) && getMetaTypeName(type) != base;
    if (isNameOfSelected(type))
        return;
    if (!synonym && (isMorlaApplication(getModuleOfType(type)) || !isCarriedAsItIs(type)))
        return;
    genTypedefPrefix(type);
    putF(fiTyp, base);
    genTypedefPostfix(type);
}

/* One component: the definition that it names, or what its own structure needs. */
void genReferredType(AsnType *father, AsnType *son, TypesRun &run) {
    if (!cIsBaseTypeGeneratedInCurrentModule(son) || isCarriedAsItIs(son))
        return;
    if (cIsDefinedBaseType(son)) {
        cForTypeGeneratedInCurrentModule(son, [&run](AsnType *type) { genType(type, run); });
        return;
    }
    if (!isLeafType(son))
        genReferredTypes(son, run);
    if (cHasOwnDefinition(father, son)) {
        putF(fiTyp, "\n");
        genTypedefContents(son);
        putF(fiTyp, ";\n");
    }
    taviUseTypeNode(son);
    genDefines(son);
}

/* Includes can't go in a circle, so that one of the files lacks types of another. */
void warnOfCircularImports(AsnModule *module) {
    std::fprintf(stderr,
                 "%s:1: warning: Circular ASN.1 module imports detected.\n"
                 "    VELMO can not generate proper type definitions because generated\n"
                 "    types are used before they are defined. Split ASN.1 modules such\n"
                 "    that there are no circular references between modules.\n",
                 getModuleFilePath(module).c_str());
    taviWarn(module, 1, SUMMARY_CIRCULAR_IMPORTS, getModuleRef(module).c_str());
}

} // namespace

void genType(AsnType *type, TypesRun &run) {
    if (processingStarted(type))
        return;
    setProcessingNow(type);
    const bool defined = isDefinedType(type);
    if (defined) {
        pushPath();
        addElemToPath(orEmpty(getMetaTypeId(type)));
    }
    const TaviNodeScope enclosing;
    genReferredTypes(type, run);
    taviUseTypeNode(type);
    genTypedef(type);
    if (isEntryType(type))
        genEntryTypedef(type);
    genDefines(type);
    setProcessingDone(type);
    if (defined)
        popPath();
}

/* What a definition needs goes first, so that C knows it. */
void genReferredTypes(AsnType *type, TypesRun &run) {
    const NestingGuard guard(&run.depth, type->posModule);
    if (!cIsBaseTypeGeneratedInCurrentModule(type) || isCarriedAsItIs(type))
        return;
    if (isSynonymType(type))
        cForTypeGeneratedInCurrentModule(type, [&run](AsnType *base) { genType(base, run); });
    else if (!isLeafType(type))
        forEachTypeCompOrElem(type, [&run](AsnType *father, AsnType *son, int) {
            genReferredType(father, son, run);
        });
}

void generateTypes(AsnModule *module) {
    if (isCircularImports(module))
        warnOfCircularImports(module);
    resetPath();
    initStamps();
    TypesRun run;
    forEachEntryVisType(module, [&run](AsnType *type, int) { genType(type, run); });
    genClasses(module, run);
}

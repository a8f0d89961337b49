#include "gen/entrytable.h"

#include <cstdio>

#include "base/files.h"
#include "cbet/builtin.h"
#include "cbet/forms.h"
#include "cbet/names.h"
#include "cbet/typefuncinfo.h"
#include "gen/defines.h"
#include "gen/fileset.h"
#include "gen/generators.h"
#include "gen/meta.h"
#include "gen/objecttables.h"
#include "gen/settables.h"
#include "gen/typeshape.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/stamps.h"
#include "model/tags.h"
#include "model/typenames.h"
#include "model/typequeries.h"
#include "options/ketracnf.h"
#include "project/ketratavi.h"

namespace {

bool tableIsExported(AsnModule *module) {
    return !isMorlaApplication(module) && needsTableAccessFuncs(module);
}

/* static ENTRYDESCR mEntryDescr [] = { */
void genETabPrefix(AsnModule *module) {
    const bool exported = tableIsExported(module);
    if (needsSeparateAsnParams(module)) {
        resetMetaAsnParams(module);
        forEachEntryType(module, genETabSeparateAsnParams);
    }
    const Text table = entryTableName(module);
    putF(fiTab, "\n", exported ? "" : "static ", "ENTRYDESCR ", table, " [] = ");
    if (exported)
        putF(fiTabE, "\nextern ENTRYDESCR ", table, " [];\n");
    taviAddItem(g_taviModuleNode, ITEM_VARIABLE, fiTab, {table, "[]"});
    if (exported)
        taviAddItem(g_taviModuleNode, ITEM_EXTERN, fiTabE, {table, "[]"});
    genEntryTablePrefixDefine(module);
}

/* #if ASN_TABN
   "Msg",
   #endif */
void genNameColumn(AsnType *type, const Text &reference) {
    putDirective(fiTab, "#if ASN_TABN\n");
    putF(fiTab, "\"", cCutName(reference, type), "\",\n");
    putDirective(fiTab, "#endif\n");
}

void warnOfTaglessEntry(AsnType *type) {
    AsnModule *module = getModuleOfType(type);
    if (getMetaEntryTag(module) != ENTRYTAG_WARN)
        return;
    std::printf("WARNING: %s.asn: %s is a tagless entry type.\n", cModulePrefix(module).c_str(),
                getMetaTypeId(type));
}

/* #if ASN_TABTAG
   TAG(TAG_UNI, TAG_PRI, 16),
   #endif */
void genTagColumn(AsnType *type) {
    putDirective(fiTab, "#if ASN_TABTAG\n");
    if (getNrOfTags(type) > 0) {
        putF(fiTab, cOutermostTag32Stri(type, false), ",\n");
    } else {
        putF(fiTab, "TAG_CHOICE,\n");
        warnOfTaglessEntry(type);
    }
    putDirective(fiTab, "#endif\n");
}

/* Entry functions that "GENERATE=" leaves out are there only if the application has its own. */
bool hasEntryFunctions(AsnModule *module, const TabFuncNames &given, const Text &namePart) {
    const int generate = getGlobalOptions(module)->generate;
    return generate == GENERATE_ENTRIES || generate == GENERATE_BOTH || !namePart.empty() ||
           !given.header.empty();
}

/* (ENTRYFUNC)encMsg, */
void genFunctionColumn(AsnType *type, int file, int function, const TabFuncNames &given,
                       const Text &namePart, const char *defaultPart) {
    if (file != 0 && isEntryTypeFunction(type, function) &&
        hasEntryFunctions(getModuleOfType(type), given, namePart))
        putF(fiTab, "(ENTRYFUNC)", namePart.empty() ? defaultPart : namePart.c_str(),
             getMetaTypeId(type));
    else
        putF(fiTab, "NULL");
    putF(fiTab, ",\n");
}

/* {
     (ENTRYFUNC)altEnc0Msg,
     NULL
   }, */
void genAlternativeBlock(AsnType *type, const char *word, int count,
                         const std::array<std::uint8_t, MAX_ALTERNATIVES> &sets) {
    const Block block(fiTab, "{\n", "},\n");
    for (int i = 0; i < count; ++i) {
        if (isInCategorySet(type, sets[static_cast<std::size_t>(i)]))
            putF(fiTab, "(ENTRYFUNC)alt", word, i, getMetaTypeId(type));
        else
            putF(fiTab, "NULL");
        if (i + 1 < count)
            putF(fiTab, ",");
        putF(fiTab, "\n");
    }
}

void genAlternativeColumns(AsnType *type) {
    AsnModule *module = getModuleOfType(type);
    if (!needsAlternativeEncodings(module))
        return;
    const GlobalOptions *options = getGlobalOptions(module);
    putDirective(fiTab, "#if ASN_ALT_TAB\n");
    genAlternativeBlock(type, "Enc", options->altMax, options->altEncF);
    genAlternativeBlock(type, "Dec", options->altMax, options->altDecF);
    putDirective(fiTab, "#endif\n");
}

/* "COD-FUNC-PREF=" isn't asked: rows name the plain functions, which an application with prefixed ones
   writes around those; "TAB-CODFUNC=" names others. */
void genETabElemFunctions(AsnType *type) {
    const BEModMetaRec *meta = getBEModMetaRec(getModuleOfType(type));
    const TabFuncNames &cod = meta->tabCodFunc;
    const TabFuncNames &tst = meta->tabTstFunc;
    if (!cod.first.empty() && !cod.second.empty())
        putDirective(fiTab,
                     "#if (ASNCODEC_MODULE == 1 || ASNPER_MODULE == 1 || ASNNER_MODULE == 1)\n");
    else
        putDirective(fiTab, "#if ASNCODEC_MODULE\n");
    genFunctionColumn(type, fiEnc, ENTRY_ENCODING, cod, cod.first, "enc");
    genFunctionColumn(type, fiDec, ENTRY_DECODING, cod, cod.second, "dec");
    putDirective(fiTab, "#endif\n");
    putDirective(fiTab, "#if ASNTST_MODULE\n");
    genFunctionColumn(type, fiAsk, ENTRY_ASKING, tst, tst.first, "ask");
    genFunctionColumn(type, fiPri, ENTRY_PRINTING, tst, tst.second, "pri");
    putDirective(fiTab, "#endif\n");
    genAlternativeColumns(type);
}

/* Stand-alone the size of the value; in a MORLA application the number of components, and the
   variables that hold them or the list in which they stand. */
void genETabElemContents(AsnType *type, int index) {
    AsnModule *module = getModuleOfType(type);
    if (!isMorlaApplication(module)) {
        putF(fiTab, "sizeof (", getMetaTypeName(type), ")");
        return;
    }
    const int comps = nrOfEntryParams(type);
    if (!getBEModMetaRec(module)->tabMorlaParam) {
        putF(fiTab, comps);
        return;
    }
    putF(fiTab, comps, ",\n");
    if (getGlobalOptions(module)->tabO != 0) {
        putF(fiTab, entryParamName(type, index));
        return;
    }
    const Block list(fiTab, "{\n", "\n}");
    genETabElemCompsContents(type);
}

/* ,
   #if ASN_TABREF
   xTabMsg
   #endif */
void genTableReference(AsnType *type) {
    const Text &reference = getGlobalOptions(getModuleOfType(type))->tabRef;
    if (reference.empty())
        return;
    putF(fiTab, ",\n");
    putDirective(fiTab, "#if ASN_TABREF\n");
    putF(fiTab, reference, "Tab", getMetaTypeId(type), "\n");
    putDirective(fiTab, "#endif");
}

void genETabElement(AsnType *type, int index) {
    const Text reference = convertUnderscores(getTypeRef(type));
    taviUseTypeNode(type);
    if (index != 0)
        putF(fiTab, ",\n\n");
    putF(fiTab, "/* ", cCutName(reference, type), " ", index, " */\n");
    taviAddItem(ITEM_TABLE_ITEM, fiTab, {reference});
    const Block row(fiTab, "{\n", "\n}");
    genNameColumn(type, reference);
    putF(fiTab, getTypeMainTypeStri(type), ",\n");
    genTagColumn(type);
    genETabElemFunctions(type);
    genETabElemContents(type, index);
    genTableReference(type);
    genEntryTableElementDefine(type, index);
}

void genETabPostfix(AsnModule *module) {
    genTableAccessFunction(module, "ENTRYDESCR", entryTableName(module), getNrOfEntryTypes(module),
                           g_taviModuleNode);
    genEntryTablePostfixDefine(module);
}

void genEntryTable(AsnModule *module) {
    if (getNrOfEntryTypes(module) == 0)
        return;
    genETabPrefix(module);
    {
        const Block table(fiTab, "{\n", "\n};\n");
        forEachEntryType(module, genETabElement);
    }
    genETabPostfix(module);
}

} // namespace

void generateTables(AsnModule *module) {
    if (fiTab == 0)
        return;
    initStamps();
    genEntryTable(module);
    /* Rows name value sets, object sets and rows of other classes; sets name rows. */
    const ClassPlaces rowless = declareObjectInstanceArrays(module);
    genFixedTypeValueSetTables(module);
    genObjectSetTables(module);
    genObjectTables(module, rowless);
}

Text entryTableName(AsnModule *module) {
    return cModulePrefix(module) + "EntryDescr";
}

void genTableAccessFunction(AsnModule *module, const Text &elementType, const Text &table,
                            int count, BrowserNode *browserParent) {
    if (!needsTableAccessFuncs(module))
        return;
    const Text name = "asn" + table;
    const Text indexType = concat(getLangType(cTableAccessFunctionIndexVF(module, count)), " ");
    const bool ansi = getGlobalOptions(module)->ansiC != 0;
    /* extern ENTRYDESCR* asnmEntryDescr (uint8 index); */
    putF(fiTabE, "\nextern ", elementType, "* ", name, " (", ansi ? "" : "/* ", indexType, "index",
         ansi ? "" : " */", ");\n");
    /* ENTRYDESCR* asnmEntryDescr (uint8 index) */
    putF(fiTab, "\n", elementType, "* ", name, " (", ansi ? indexType : "", "index)\n");
    taviAddItem(browserParent, ITEM_EXTERN, fiTabE, {name, "()"});
    taviAddItem(browserParent, ITEM_FUNCTION, fiTab, {name, "()"});
    if (!ansi) {
        const Indent indent(fiTab);
        putF(fiTab, indexType, "index;\n");
    }
    putF(fiTab, "{\n");
    putF(fiTab, "return (index < ", count, " ? ", table, " + index : NULL);\n");
    putF(fiTab, "}\n");
}

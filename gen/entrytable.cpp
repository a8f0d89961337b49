#include "gen/entrytable.h"

#include <cstdio>

#include "base/files.h"
#include "cbet/builtin.h"
#include "cbet/checks.h"
#include "cbet/names.h"
#include "cbet/typefuncinfo.h"
#include "gen/defines.h"
#include "gen/entryparams.h"
#include "gen/fileset.h"
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
#include "objects/objectsets.h"
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
    Text table;
    cModulePrefix(table, nullptr, module, "EntryDescr");
    printfToF(fiTab, "\n%sENTRYDESCR %s [] = ", exported ? "" : "static ", table.c_str());
    wToF(fiTab, "{\n");
    ++fArr[fiTab].indent;
    if (exported)
        printfToF(fiTabE, "\nextern ENTRYDESCR %s [];\n", table.c_str());
    taviAddItem(g_taviModuleNode, ITEM_VARIABLE, fiTab, {table, "[]"});
    if (exported)
        taviAddItem(g_taviModuleNode, ITEM_EXTERN, fiTabE, {table, "[]"});
    genEntryTablePrefixDefine(module);
}

/* #if ASN_TABN
   "Msg",
   #endif */
void genNameColumn(AsnType *type, const char *reference) {
    wDirectiveToF(fiTab, "#if ASN_TABN\n");
    printfToF(fiTab, "\"%.*s\",\n", getGlobalOptions(getModuleOfType(type))->nameLen, reference);
    wDirectiveToF(fiTab, "#endif\n");
}

void warnOfTaglessEntry(AsnType *type) {
    AsnModule *module = getModuleOfType(type);
    if (getMetaEntryTag(module) != ENTRYTAG_WARN)
        return;
    Text prefix;
    std::printf("WARNING: %s.asn: %s is a tagless entry type.\n",
                cModulePrefix(prefix, nullptr, module, nullptr).c_str(), getMetaTypeId(type));
}

/* #if ASN_TABTAG
   TAG(TAG_UNI, TAG_PRI, 16),
   #endif */
void genTagColumn(AsnType *type) {
    wDirectiveToF(fiTab, "#if ASN_TABTAG\n");
    if (getNrOfTags(type) > 0) {
        cOutermostTag32ToF(fiTab, nullptr, type, false, ",\n");
    } else {
        wToF(fiTab, "TAG_CHOICE,\n");
        warnOfTaglessEntry(type);
    }
    wDirectiveToF(fiTab, "#endif\n");
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
        printfToF(fiTab, "(ENTRYFUNC)%s%s", namePart.empty() ? defaultPart : namePart.c_str(),
                  getMetaTypeId(type));
    else
        wToF(fiTab, "NULL");
    wToF(fiTab, ",\n");
}

/* {
     (ENTRYFUNC)altEnc0Msg,
     NULL
   }, */
void genAlternativeBlock(AsnType *type, const char *word, int count,
                         const std::array<std::uint8_t, MAX_ALTERNATIVES> &sets) {
    wToF(fiTab, "{\n");
    ++fArr[fiTab].indent;
    for (int i = 0; i < count; ++i) {
        if (isInCategorySet(type, sets[static_cast<std::size_t>(i)]))
            printfToF(fiTab, "(ENTRYFUNC)alt%s%d%s", word, i, getMetaTypeId(type));
        else
            wToF(fiTab, "NULL");
        if (i + 1 < count)
            wToF(fiTab, ",");
        wToF(fiTab, "\n");
    }
    --fArr[fiTab].indent;
    wToF(fiTab, "},\n");
}

void genAlternativeColumns(AsnType *type) {
    AsnModule *module = getModuleOfType(type);
    if (!needsAlternativeEncodings(module))
        return;
    const GlobalOptions *options = getGlobalOptions(module);
    wDirectiveToF(fiTab, "#if ASN_ALT_TAB\n");
    genAlternativeBlock(type, "Enc", options->altMax, options->altEncF);
    genAlternativeBlock(type, "Dec", options->altMax, options->altDecF);
    wDirectiveToF(fiTab, "#endif\n");
}

void genETabElemFunctions(AsnType *type) {
    const BEModMetaRec *meta = getBEModMetaRec(getModuleOfType(type));
    const TabFuncNames &cod = meta->tabCodFunc;
    const TabFuncNames &tst = meta->tabTstFunc;
    if (!cod.first.empty() && !cod.second.empty())
        wDirectiveToF(fiTab,
                      "#if (ASNCODEC_MODULE == 1 || ASNPER_MODULE == 1 || ASNNER_MODULE == 1)\n");
    else
        wDirectiveToF(fiTab, "#if ASNCODEC_MODULE\n");
    genFunctionColumn(type, fiEnc, ENTRY_ENCODING, cod, cod.first, "enc");
    genFunctionColumn(type, fiDec, ENTRY_DECODING, cod, cod.second, "dec");
    wDirectiveToF(fiTab, "#endif\n");
    wDirectiveToF(fiTab, "#if ASNTST_MODULE\n");
    genFunctionColumn(type, fiAsk, ENTRY_ASKING, tst, tst.first, "ask");
    genFunctionColumn(type, fiPri, ENTRY_PRINTING, tst, tst.second, "pri");
    wDirectiveToF(fiTab, "#endif\n");
    genAlternativeColumns(type);
}

/* Stand-alone the size of the value; in a MORLA application the number of components, and the
   variables that hold them or the list in which they stand. */
void genETabElemContents(AsnType *type, int index) {
    AsnModule *module = getModuleOfType(type);
    if (!isMorlaApplication(module)) {
        printfToF(fiTab, "sizeof (%s)", getMetaTypeName(type).c_str());
        return;
    }
    const int comps = nrOfEntryParams(type);
    if (!getBEModMetaRec(module)->tabMorlaParam) {
        printfToF(fiTab, "%d", comps);
        return;
    }
    printfToF(fiTab, "%d,\n", comps);
    if (getGlobalOptions(module)->tabO != 0) {
        Text name;
        wToF(fiTab, entryParamName(name, type, index));
        return;
    }
    wToF(fiTab, "{\n");
    ++fArr[fiTab].indent;
    genETabElemCompsContents(type);
    --fArr[fiTab].indent;
    wToF(fiTab, "\n}");
}

/* ,
   #if ASN_TABREF
   xTabMsg
   #endif */
void genTableReference(AsnType *type) {
    const Text &reference = getGlobalOptions(getModuleOfType(type))->tabRef;
    if (reference.empty())
        return;
    wToF(fiTab, ",\n");
    wDirectiveToF(fiTab, "#if ASN_TABREF\n");
    printfToF(fiTab, "%sTab%s\n", reference.c_str(), getMetaTypeId(type));
    wDirectiveToF(fiTab, "#endif");
}

void genETabElement(AsnType *type, int index) {
    const Text reference = convertUnderscores(getTypeRef(type));
    taviUseTypeNode(type);
    if (index != 0)
        wToF(fiTab, ",\n\n");
    printfToF(fiTab, "/* %.*s %d */\n", getGlobalOptions(getModuleOfType(type))->nameLen,
              reference.c_str(), index);
    taviAddItem(ITEM_TABLE_ITEM, fiTab, {reference});
    wToF(fiTab, "{\n");
    ++fArr[fiTab].indent;
    genNameColumn(type, reference.c_str());
    putF(fiTab, getTypeMainTypeStri(type), ",\n");
    genTagColumn(type);
    genETabElemFunctions(type);
    genETabElemContents(type, index);
    genTableReference(type);
    genEntryTableElementDefine(type, index);
    --fArr[fiTab].indent;
    wToF(fiTab, "\n}");
}

void genETabPostfix(AsnModule *module) {
    --fArr[fiTab].indent;
    wToF(fiTab, "\n};\n");
    genTableAccessFunction(module, "ENTRYDESCR", "EntryDescr", getNrOfEntryTypes(module),
                           g_taviModuleNode);
    genEntryTablePostfixDefine(module);
}

void genEntryTable(AsnModule *module) {
    if (getNrOfEntryTypes(module) == 0)
        return;
    genETabPrefix(module);
    forEachEntryType(module, genETabElement);
    genETabPostfix(module);
}

} // namespace

void generateTables(AsnModule *module) {
    if (fiTab == 0)
        return;
    initStamps();
    genEntryTable(module);
    /* Rows name value sets, object sets and rows of other classes; sets name rows. */
    declareObjectInstanceArrays(module);
    genFixedTypeValueSetTables(module);
    genObjectSetTables(module);
    genObjectTables(module);
    resetNoObjectInstanceList();
}

void genTableAccessFunction(AsnModule *module, const char *elementType, const char *tableName,
                            int count, BrowserNode *browserParent) {
    if (!needsTableAccessFuncs(module))
        return;
    Text name;
    cModulePrefix(name, nullptr, module, tableName);
    Text indexType = orEmpty(getLangType(cTableAccessFunctionIndexVF(module, count)));
    indexType += ' ';
    const bool ansi = getGlobalOptions(module)->ansiC != 0;
    /* extern ENTRYDESCR* asnmEntryDescr (uint8 index); */
    printfToF(fiTabE, "\nextern %s* asn%s (%s%sindex%s);\n", elementType, name.c_str(),
              ansi ? "" : "/* ", indexType.c_str(), ansi ? "" : " */");
    /* ENTRYDESCR* asnmEntryDescr (uint8 index) */
    printfToF(fiTab, "\n%s* asn%s (%sindex)\n", elementType, name.c_str(),
              ansi ? indexType.c_str() : "");
    taviAddItem(browserParent, ITEM_EXTERN, fiTabE, {"asn", name, "()"});
    taviAddItem(browserParent, ITEM_FUNCTION, fiTab, {"asn", name, "()"});
    if (!ansi) {
        ++fArr[fiTab].indent;
        printfToF(fiTab, "%sindex;\n", indexType.c_str());
        --fArr[fiTab].indent;
    }
    wToF(fiTab, "{\n");
    printfToF(fiTab, "return (index < %d ? %s + index : NULL);\n", count, name.c_str());
    wToF(fiTab, "}\n");
}

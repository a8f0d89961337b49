#include "gen/fileset.h"

#include <cassert>
#include <cstdio>
#include <unordered_set>

#include "base/fatal.h"
#include "base/files.h"
#include "gen/classmeta.h"
#include "gen/fileheader.h"
#include "gen/foreigntables.h"
#include "gen/meta.h"
#include "model/exporters.h"
#include "model/modules.h"
#include "options/ketracnf.h"

int fiTyp, fiDef, fiTab, fiTabE;
int fiEnc, fiEncE, fiEncU, fiDec, fiDecE, fiDecU;
int fiAsk, fiAskE, fiAskU, fiPri, fiPriE, fiPriU;

namespace {

/* Words of the categories in file names: where two categories share a file, and where they don't.
 */
constexpr const char *category1[CATEGORIES] = {
    "",    "",    "",    /* none, types, defines */
    "",    "tab",        /* tables */
    "cod", "cod", "cod", /* encoding */
    "tst", "tst", "tst", /* asking */
    "cod", "cod", "cod", /* decoding */
    "tst", "tst", "tst", /* printing */
};
constexpr const char *category2[CATEGORIES] = {
    "",    "",    "",    /* in the order of category1 */
    "",    "tab",        /* */
    "enc", "enc", "enc", /* */
    "ask", "ask", "ask", /* */
    "dec", "dec", "dec", /* */
    "pri", "pri", "pri", /* */
};

/* By FileKind. */
constexpr const char *fileSuff[] = {".typ", ".def", ".c", ".ext", ".tab"};

constexpr const char *TYPES_OF_RTS = "asntyp.typ";
constexpr const char *CODING_OF_RTS = "asncodec.ext";
constexpr const char *TESTING_OF_RTS = "asntst.ext";

/* The log file is emptied by the first module that opens it. */
bool logFileCreated = false;
std::FILE *logFile = nullptr;

const char *categoryWord(AsnModule *module, int category) {
    return getGenArr(module)[category] == GEN_SEPARATE ? category2[category] : category1[category];
}

bool hasFunctions(AsnModule *module) {
    return getNrOfEntryTypes(module) > 0 || getNrOfVisibleTypes(module) > 0;
}

bool isCodingCategory(int category) {
    return category == CAT_ENC_EXT || category == CAT_DEC_EXT;
}

void writeGuardStart(int file) {
    const Text guard = defineGuardOfF(file);
    putF(file, "\n");
    putF(file, "#ifndef ", guard, "\n");
    putF(file, "#define ", guard, "\n");
}

/* Creates a file with its header comment and guard. */
void openFile(int file, AsnModule *module, int kind, int category) {
    if (kind == FILE_NONE)
        return;
    if (kind > FILE_NONE)
        fatalError(FATAL_INTERNAL, "Unknown file type.");
    const GlobalOptions *options = getGlobalOptions(module);
    Text name = categoryWord(module, category);
    name += fileSuff[kind];
    const Text &directory = kind == FILE_C ? options->codeDirectory : options->headerDirectory;
    initF(file, directory.c_str(), name.c_str());
    openF(file, module);
    resetIndentLevel(file);
    printFileHeader(file, "/****************************************************************",
                    " ****************************************************************/", " * ", "",
                    module);
    if (kind != FILE_C)
        writeGuardStart(file);
}

/* What declares functions and tables says that they are C, for programs in C++. */
void writeLinkageStart(int file) {
    putF(file, "\n#ifdef __cplusplus\nextern \"C\" {\n#endif\n");
}

void writeLinkageEnd(int file) {
    putF(file, "\n#ifdef __cplusplus\n}\n#endif\n");
}

/* Ends a file, unless the other one of its pair was the same. */
void closeFile(int *file, int kind) {
    if (*file != 0 && fArr[*file].stream != nullptr) {
        assert(fArr[*file].indent == 0);
        if (kind == FILE_EXT)
            writeLinkageEnd(*file);
        if (kind != FILE_C) {
            putF(*file, "\n");
            putF(*file, "#endif /*");
            putF(*file, defineGuardOfF(*file));
            putF(*file, "*/\n");
        }
        closeF(*file);
    }
    *file = 0;
}

/* --- hooks of a preprocessor that some users run over the code --- */

void includeBrunSpecificFiles(int file, AsnModule *module) {
    if (getBEModMetaRec(module)->brunIncludeHook)
        putF(file, "\n#include <brunhook.h>\n");
}

void generateBrunSpecificModuleId(int file, AsnModule *module) {
    if (getBEModMetaRec(module)->brunModuleId)
        putF(file, "\nMID(%MID%);\n");
}

/* --- includes of what the module imports --- */

void includeReferencedTypes(AsnModule *module, int file) {
    forEachExporterFirst(module, nullptr, [&](AsnModule *exporter) {
        includeGeneratedFile(file, exporter, CAT_TYP, FILE_TYP);
    });
}

void includeReferencedDeclarations(AsnModule *module, int file, int category) {
    std::unordered_set<const ModRec *> included;
    auto include = [&](AsnModule *exporter) {
        if (!hasFunctions(exporter) || !included.insert(exporter->modRec).second)
            return;
        includeGeneratedFile(file, exporter, CAT_TYP, FILE_TYP);
        includeGeneratedFile(file, exporter, category, FILE_EXT);
    };
    forEachExporterFirst(module, hasFunctions, include);
    /* A type may also come through a module that has nothing but classes. */
    std::unordered_set<const ModRec *> referred;
    forEachExporterFirst(module, nullptr, [&](AsnModule *exporter) {
        if (!hasFunctions(exporter) || included.contains(exporter->modRec))
            return;
        if (referred.empty())
            referred = modulesOfReferredTypes(module);
        if (referred.contains(exporter->modRec))
            include(exporter);
    });
}

/* The module has a file with declarations of its tables. */
bool declaresTables(AsnModule *module) {
    int first, second;
    return getTableFileKind(module, getGenArr(module), &first, &second) && second == FILE_EXT;
}

void includeReferencedTableExts(AsnModule *module, int file) {
    forEachExportingModule(module, [&](AsnModule *exporter) {
        if (declaresTables(exporter))
            includeGeneratedFile(file, exporter, CAT_TAB_EXT, FILE_EXT);
    });
}

bool importsFrom(AsnModule *module, AsnModule *other) {
    bool imports = false;
    forEachExportingModule(module, [&](AsnModule *exporter) {
        imports = imports || exporter->modRec == other->modRec;
    });
    return imports;
}

/* Rows name tables of other modules. Declarations come with those of the module itself, if it has
   any, but for modules that are reached through others. What has no declaration is a static table,
   which has to stand in the same source. */
void includeForeignTables(AsnModule *module, int file) {
    forEachForeignTable(module, [&](AsnModule *other, bool entries, bool objects) {
        const bool declared = declaresTables(other);
        if (declared && (objects || !isMorlaApplication(other)) &&
            !(fiTabE != 0 && importsFrom(module, other)))
            includeGeneratedFile(file, other, CAT_TAB_EXT, FILE_EXT);
        if (!declared || (entries && isMorlaApplication(other)))
            includeGeneratedFile(file, other, CAT_TAB, FILE_TAB);
    });
}

/* What a table file needs of a pair of prototype files. */
void includeGeneratedFunctionHeaders(AsnModule *module, const std::uint8_t *genArr, int file,
                                     int category, int otherCategory) {
    if (genArr[category] == GEN_COMBINED) {
        const BEModMetaRec *meta = getBEModMetaRec(module);
        const Text &given =
            category == CAT_ENC_EXT ? meta->tabCodFunc.header : meta->tabTstFunc.header;
        if (given.empty())
            includeGeneratedFile(file, module, category, FILE_EXT);
        else
            includeExternalGeneratedFile(file, module, given.c_str());
    } else if (genArr[category] == GEN_SEPARATE) {
        includeGeneratedFile(file, module, category, FILE_EXT);
        includeGeneratedFile(file, module, otherCategory, FILE_EXT);
    }
}

/* --- opening, file by file --- */

void openTypeFile(AsnModule *module, const std::uint8_t *genArr) {
    fiTyp = 0;
    if (genArr[CAT_TYP] == GEN_NONE)
        return;
    fiTyp = CAT_TYP;
    openFile(fiTyp, module, FILE_TYP, CAT_TYP);
    includeRtsFile(fiTyp, TYPES_OF_RTS);
    includeReferencedTypes(module, fiTyp);
}

void openDefineFile(AsnModule *module, const std::uint8_t *genArr) {
    if (genArr[CAT_DEF] == GEN_NONE)
        return;
    fiDef = CAT_DEF;
    openFile(fiDef, module, FILE_DEF, CAT_DEF);
}

void openTableFiles(AsnModule *module, const std::uint8_t *genArr) {
    fiTab = 0;
    fiTabE = 0;
    int first, second;
    if (!getTableFileKind(module, genArr, &first, &second))
        return;
    fiTab = CAT_TAB;
    if (first == FILE_C) {
        openFile(fiTab, module, FILE_C, CAT_TAB_EXT);
        includeBrunSpecificFiles(fiTab, module);
    } else {
        openFile(fiTab, module, FILE_TAB, CAT_TAB);
    }
    if (second == FILE_EXT) {
        fiTabE = CAT_TAB_EXT;
        openFile(fiTabE, module, FILE_EXT, CAT_TAB_EXT);
    }
    includeGeneratedFile(fiTab, module, CAT_TYP, FILE_TYP);
    if (fiTabE != 0) {
        includeReferencedTableExts(module, fiTabE);
        includeGeneratedFile(fiTabE, module, CAT_TYP, FILE_TYP);
        writeLinkageStart(fiTabE);
        includeGeneratedFile(fiTab, module, CAT_TAB_EXT, FILE_EXT);
    }
    includeForeignTables(module, fiTab);
    if (getNrOfEntryTypes(module) > 0) {
        includeGeneratedFunctionHeaders(module, genArr, fiTab, CAT_ENC_EXT, CAT_DEC_EXT);
        includeGeneratedFunctionHeaders(module, genArr, fiTab, CAT_ASK_EXT, CAT_PRI_EXT);
    }
    generateBrunSpecificModuleId(fiTab, module);
}

/* The files of a pair of generators: none, one for both, or one for each. */
void assignPair(int *one, int *other, int category, std::uint8_t choice) {
    *one = choice == GEN_COMBINED || choice == GEN_SEPARATE ? category : 0;
    *other = choice == GEN_SEPARATE ? category + CAT_PAIR_DISTANCE : *one;
}

void openPrototypeF(AsnModule *module, int category) {
    int file = category;
    openFile(file, module, FILE_EXT, category);
    includeRtsFile(file, TYPES_OF_RTS);
    includeRtsFile(file, isCodingCategory(category) ? CODING_OF_RTS : TESTING_OF_RTS);
    includeReferencedDeclarations(module, file, category);
    includeGeneratedFile(file, module, CAT_TYP, FILE_TYP);
    writeLinkageStart(file);
}

void openPrototypeFiles(AsnModule *module, const std::uint8_t *genArr, int category, int *one,
                        int *other) {
    assignPair(one, other, category, genArr[category]);
    if (*one != 0)
        openPrototypeF(module, *one);
    if (*other != *one)
        openPrototypeF(module, *other);
}

void openFunctionF(AsnModule *module, const std::uint8_t *genArr, int category) {
    int file = category;
    int prototypes = category + 1;
    openFile(file, module, FILE_C, category);
    includeBrunSpecificFiles(file, module);
    includeGeneratedFile(file, module, prototypes, FILE_EXT);
    if (genArr[category] == GEN_COMBINED && genArr[prototypes] == GEN_SEPARATE)
        includeGeneratedFile(file, module, prototypes + CAT_PAIR_DISTANCE, FILE_EXT);
    generateBrunSpecificModuleId(file, module);
}

void openFunctionFiles(AsnModule *module, const std::uint8_t *genArr, int category, int *one,
                       int *other) {
    assignPair(one, other, category, genArr[category]);
    if (*one != 0)
        openFunctionF(module, genArr, *one);
    if (*other != *one)
        openFunctionF(module, genArr, *other);
}

void openLogFile(AsnModule *module) {
    const char *name = getMetaLogFile(module);
    logFile = nullptr;
    if (name == nullptr)
        return;
    logFile = std::fopen(name, logFileCreated ? "a" : "w");
    if (logFile == nullptr)
        std::printf("*** Warning: could not open log file %s ***\n", name);
    else
        logFileCreated = true;
}

void closeLogFile(AsnModule *module) {
    if (logFile == nullptr)
        return;
    const char *name = getMetaLogFile(module);
    if (std::fflush(logFile) != 0 || std::ferror(logFile) != 0)
        fatalError(FATAL_WRITE, name);
    if (std::fclose(logFile) != 0)
        fatalError(FATAL_CLOSE, name);
    logFile = nullptr;
}

} // namespace

Text constructFileName(AsnModule *module, int category, int kind) {
    bool isGenerated = getGenerationOption(module, category) != GEN_NONE;
    if (!isGenerated && !(category == CAT_TAB_EXT && isMorlaApplication(module)))
        return "";
    return concat(getModulePrefix(module), categoryWord(module, category), fileSuff[kind]);
}

/* #ifndef ASNTYP_TYP
   #include "asntyp.typ"
   #endif */
void includeRtsFile(int file, const char *name) {
    if (file == 0 || name == nullptr || *name == '\0')
        return;
    putF(file, "\n");
    putF(file, "#ifndef ", defineGuardForFile(name), "\n");
    putF(file, "#include \"", name, "\"\n");
    putF(file, "#endif\n");
}

void includeGeneratedFile(int file, AsnModule *module, int category, int kind) {
    includeRtsFile(file, constructFileName(module, category, kind).c_str());
}

void includeExternalGeneratedFile(int file, AsnModule *module, const char *name) {
    includeRtsFile(file, concat(getModulePrefix(module), name).c_str());
}

bool getTableFileKind(AsnModule *module, const std::uint8_t *genArr, int *first, int *second) {
    *first = FILE_NONE;
    *second = FILE_NONE;
    if (genArr[CAT_TAB] == GEN_NONE)
        return false;
    if (getNrOfObjects(module) == 0 && getNrOfObjectSets(module) == 0 &&
        getNrOfEntryTypes(module) == 0)
        return false;
    if (isMorlaApplication(module)) {
        *first = FILE_TAB;
        if (getNrOfObjects(module) > 0 || hasObjectRows(module))
            *second = FILE_EXT;
    } else if (genArr[CAT_TAB_EXT] != GEN_NONE) {
        *first = FILE_C;
        *second = FILE_EXT;
    } else {
        *first = FILE_TAB;
    }
    return true;
}

void openModuleFiles(AsnModule *module) {
    const std::uint8_t *genArr = getGenArr(module);
    fiDef = 0;
    openTypeFile(module, genArr);
    openDefineFile(module, genArr);
    openTableFiles(module, genArr);
    fiEnc = fiDec = fiEncE = fiDecE = fiAsk = fiPri = fiAskE = fiPriE = 0;
    if (hasFunctions(module)) {
        openPrototypeFiles(module, genArr, CAT_ENC_EXT, &fiEncE, &fiDecE);
        openPrototypeFiles(module, genArr, CAT_ASK_EXT, &fiAskE, &fiPriE);
        openFunctionFiles(module, genArr, CAT_ENC, &fiEnc, &fiDec);
        openFunctionFiles(module, genArr, CAT_ASK, &fiAsk, &fiPri);
    }
    openLogFile(module);
}

void closeModuleFiles(AsnModule *module) {
    closeFile(&fiTyp, FILE_TYP);
    closeFile(&fiDef, FILE_DEF);
    int first, second;
    if (getTableFileKind(module, getGenArr(module), &first, &second)) {
        closeFile(&fiTab, first);
        closeFile(&fiTabE, FILE_EXT);
    }
    closeFile(&fiEnc, FILE_C);
    closeFile(&fiDec, FILE_C);
    closeFile(&fiEncE, FILE_EXT);
    closeFile(&fiDecE, FILE_EXT);
    closeFile(&fiAsk, FILE_C);
    closeFile(&fiPri, FILE_C);
    closeFile(&fiAskE, FILE_EXT);
    closeFile(&fiPriE, FILE_EXT);
    closeLogFile(module);
}

/* x.stx: inc/x.typ inc/x.def src/xenc.c */
void generateLogFile(AsnModule *module) {
    if (logFile == nullptr)
        return;
    Text line = getModulePrefix(module) + ".stx:";
    forEachOpenFile([&](int slot) { line += " " + nameOfF(slot); });
    line += '\n';
    if (std::fputs(line.c_str(), logFile) == EOF)
        fatalError(FATAL_WRITE, getMetaLogFile(module));
}

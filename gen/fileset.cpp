#include "gen/fileset.h"

#include <cassert>
#include <cstdio>
#include <unordered_set>

#include "base/fatal.h"
#include "base/files.h"
#include "gen/classmeta.h"
#include "gen/foreigntables.h"
#include "gen/meta.h"
#include "model/modules.h"
#include "options/ketracnf.h"

int fiTyp, fiDef, fiTab, fiTabE;
int fiEnc, fiEncE, fiDec, fiDecE;
int fiAsk, fiAskE, fiPri, fiPriE;

namespace {

/* "tab", "enc" ... of a category whose file a module has. */
const char *categoryWord(AsnModule *module, int category);

/* By FileKind. */
constexpr const char *fileSuff[] = {".typ", ".def", ".c", ".ext", ".tab"};

constexpr const char *TYPES_OF_RTS = "asntyp.typ";
constexpr const char *CODING_OF_RTS = "asncodec.ext";
constexpr const char *TESTING_OF_RTS = "asntst.ext";

/* The log file is emptied by the first module that opens it. */
bool logFileCreated = false;
std::FILE *logFile = nullptr;

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
void openFile(int file, AsnModule *module, FileKind kind) {
    const GlobalOptions *options = getGlobalOptions(module);
    /* A source of tables is named as their declarations are. */
    Text name = categoryWord(module, file == CAT_TAB && kind == FILE_C ? CAT_TAB_EXT : file);
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

void closeFile(int file, FileKind kind) {
    assert(fArr[file].indent == 0);
    if (kind == FILE_EXT)
        writeLinkageEnd(file);
    if (kind != FILE_C) {
        putF(file, "\n");
        putF(file, "#endif /*");
        putF(file, defineGuardOfF(file));
        putF(file, "*/\n");
    }
    closeF(file);
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

/* --- how each file begins --- */

void beginTypes(int file, AsnModule *module) {
    includeRtsFile(file, TYPES_OF_RTS);
    includeReferencedTypes(module, file);
}

void beginTables(int file, AsnModule *module) {
    const std::uint8_t *genArr = getGenArr(module);
    int first, second;
    getTableFileKind(module, genArr, &first, &second);
    if (first == FILE_C)
        includeBrunSpecificFiles(file, module);
    includeGeneratedFile(file, module, CAT_TYP, FILE_TYP);
    if (second == FILE_EXT)
        includeGeneratedFile(file, module, CAT_TAB_EXT, FILE_EXT);
    includeForeignTables(module, file);
    if (getNrOfEntryTypes(module) > 0) {
        includeGeneratedFunctionHeaders(module, genArr, file, CAT_ENC_EXT, CAT_DEC_EXT);
        includeGeneratedFunctionHeaders(module, genArr, file, CAT_ASK_EXT, CAT_PRI_EXT);
    }
    generateBrunSpecificModuleId(file, module);
}

void beginTableDeclarations(int file, AsnModule *module) {
    includeReferencedTableExts(module, file);
    includeGeneratedFile(file, module, CAT_TYP, FILE_TYP);
    writeLinkageStart(file);
}

void beginPrototypes(int file, AsnModule *module) {
    includeRtsFile(file, TYPES_OF_RTS);
    includeRtsFile(file, isCodingCategory(file) ? CODING_OF_RTS : TESTING_OF_RTS);
    includeReferencedDeclarations(module, file, file);
    includeGeneratedFile(file, module, CAT_TYP, FILE_TYP);
    writeLinkageStart(file);
}

/* A source of both functions of a pair includes both of their prototype files. */
void beginFunctions(int file, AsnModule *module) {
    const std::uint8_t *genArr = getGenArr(module);
    const int prototypes = file + 1;
    includeBrunSpecificFiles(file, module);
    includeGeneratedFile(file, module, prototypes, FILE_EXT);
    if (genArr[file] == GEN_COMBINED && genArr[prototypes] == GEN_SEPARATE)
        includeGeneratedFile(file, module, prototypes + CAT_PAIR_DISTANCE, FILE_EXT);
    generateBrunSpecificModuleId(file, module);
}

/* --- the categories --- */

/* One category of file: its words in file names, its contents, who writes to it. */
struct FileRow {
    FileCategory category;
    const char *word = "";         /* where two categories share a file */
    const char *ownWord = "";      /* where they don't */
    FileKind kind = FILE_NONE;     /* that of a table file depends on the module */
    int *slot = nullptr;           /* the generator's number; null for what is never opened */
    FileCategory shared = CAT_NONE; /* holds both of a pair if they share one */
    void (*begin)(int file, AsnModule *module) = nullptr; /* includes and the like */
};

/* ORDER CATEGORIES */
constexpr FileRow fileRows[] = {
    {CAT_NONE},
    {CAT_TYP, "", "", FILE_TYP, &fiTyp, CAT_TYP, beginTypes},
    {CAT_DEF, "", "", FILE_DEF, &fiDef, CAT_DEF},
    {CAT_TAB, "", "", FILE_TAB, &fiTab, CAT_TAB, beginTables},
    {CAT_TAB_EXT, "tab", "tab", FILE_EXT, &fiTabE, CAT_TAB_EXT, beginTableDeclarations},
    {CAT_ENC, "cod", "enc", FILE_C, &fiEnc, CAT_ENC, beginFunctions},
    {CAT_ENC_EXT, "cod", "enc", FILE_EXT, &fiEncE, CAT_ENC_EXT, beginPrototypes},
    {CAT_ENC_U},
    {CAT_ASK, "tst", "ask", FILE_C, &fiAsk, CAT_ASK, beginFunctions},
    {CAT_ASK_EXT, "tst", "ask", FILE_EXT, &fiAskE, CAT_ASK_EXT, beginPrototypes},
    {CAT_ASK_U},
    {CAT_DEC, "cod", "dec", FILE_C, &fiDec, CAT_ENC, beginFunctions},
    {CAT_DEC_EXT, "cod", "dec", FILE_EXT, &fiDecE, CAT_ENC_EXT, beginPrototypes},
    {CAT_DEC_U},
    {CAT_PRI, "tst", "pri", FILE_C, &fiPri, CAT_ASK, beginFunctions},
    {CAT_PRI_EXT, "tst", "pri", FILE_EXT, &fiPriE, CAT_ASK_EXT, beginPrototypes},
    {CAT_PRI_U},
};

constexpr bool isInOrder() {
    for (int category = 0; category < CATEGORIES; ++category)
        if (fileRows[category].category != category)
            return false;
    return true;
}
static_assert(std::size(fileRows) == CATEGORIES && isInOrder());

const char *categoryWord(AsnModule *module, int category) {
    const FileRow &row = fileRows[category];
    return getGenArr(module)[category] == GEN_SEPARATE ? row.ownWord : row.word;
}

/* FILE_NONE for a file that the module doesn't have, whatever its options say. */
FileKind fileKind(const FileRow &row, AsnModule *module) {
    int first, second;
    switch (row.category) {
    case CAT_TYP:
    case CAT_DEF:
        return row.kind;
    case CAT_TAB:
    case CAT_TAB_EXT:
        getTableFileKind(module, getGenArr(module), &first, &second);
        return static_cast<FileKind>(row.category == CAT_TAB ? first : second);
    default:
        return hasFunctions(module) ? row.kind : FILE_NONE;
    }
}

/* The number of the file that the category's generator writes to; 0 for none. */
int fileNumber(const FileRow &row, AsnModule *module) {
    if (fileKind(row, module) == FILE_NONE)
        return 0;
    if (row.category == CAT_TAB || row.category == CAT_TAB_EXT)
        return row.category;
    switch (getGenArr(module)[row.shared]) {
    case GEN_COMBINED:
        return row.shared;
    case GEN_SEPARATE:
        return row.category;
    default:
        return 0;
    }
}

/* Calls func for each file that the module has open. */
void forEachFileOfModule(Call<void(const FileRow &row)> func) {
    for (const FileRow &row : fileRows)
        if (row.slot != nullptr && *row.slot == row.category)
            func(row);
}

/* --- the log file --- */

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
    for (const FileRow &row : fileRows)
        if (row.slot != nullptr)
            *row.slot = fileNumber(row, module);
    forEachFileOfModule([module](const FileRow &row) {
        openFile(row.category, module, fileKind(row, module));
        if (row.begin != nullptr)
            row.begin(row.category, module);
    });
    openLogFile(module);
}

void closeModuleFiles(AsnModule *module) {
    forEachFileOfModule(
        [module](const FileRow &row) { closeFile(row.category, fileKind(row, module)); });
    for (const FileRow &row : fileRows)
        if (row.slot != nullptr)
            *row.slot = 0;
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

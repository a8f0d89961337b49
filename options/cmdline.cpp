#include "options/cmdline.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "base/fatal.h"
#include "base/files.h"
#include "options/checkers.h"
#include "options/hooks.h"
#include "options/ketracnf.h"
#include "store/records.h"
#include "store/strings.h"
#include "store/tree.h"

OptionHooks optionHooks;

namespace {

constexpr int MIN_PREFIX_LENGTH = 1;
constexpr int MAX_PREFIX_LENGTH = 32;
/* A line of an option file is read in pieces of at most one character less. */
constexpr int OPTION_LINE_SIZE = 512;
constexpr int MAX_OPTION_LINES = 1'000'000;

/* Prefix length of the run: that in force when the first module was named. */
int prefixLen = 0;

/* A first pass under way. */
struct FirstPass {
    int nrOfFiles = 0; /* module names so far, wrong ones included */
    bool failed = false;
};

bool beginsName(char c) {
    return isAsciiAlnum(c) || c == '_';
}

/* The text cut to the length of an option, its name in upper case. */
Text optionCopy(const char *text) {
    Text copy(text, strnlen(text, MAX_OPTION_LENGTH));
    return optionToUpper(copy);
}

void argumentIgnored(const char *text, const char *fileName) {
    std::fprintf(stderr, "\nWARNING : Argument ignored: %s\n", text);
    if (fileName != nullptr)
        std::fprintf(stderr, "          In option file  : %s\n", fileName);
}

/* An open option file. A device may go on without end, which no text does that somebody wrote. */
struct OptionFile {
    const char *name;
    std::FILE *stream;
    int linesLeft = MAX_OPTION_LINES;
};

OptionFile openOptionFile(const char *name) {
    if (*name == '\0')
        fatalError(FATAL_OPEN_READ, "(No option file name specified)");
    return {name, fopenTextFile("", name, "r")};
}

/* The next line without white space at its ends. A line that is too long comes in pieces, and a NUL
   ends a piece. */
bool readOptionFileLine(OptionFile *file, Text &line) {
    if (--file->linesLeft < 0)
        fatalError(FATAL_READ, file->name);
    char piece[OPTION_LINE_SIZE];
    if (std::fgets(piece, sizeof piece, file->stream) == nullptr)
        return false;
    line = remSpaces(piece);
    return true;
}

/* The options that must be known before trees are read; all others are good for now. */
bool parseSelectedCmdLineOpts(const char *text, const FirstPass &pass) {
    const Text option = optionCopy(text);
    const char *name = option.c_str() + 1;
    if (const char *value = isOptionStri(name, "S="))
        return directoryOptionOK(&stxDir, value);
    if (const char *value = isOptionStri(name, "PREFIXLEN="))
        return pass.nrOfFiles > 0 || byteOptionOK(&cMP->options->prefixLength, value,
                                                  MIN_PREFIX_LENGTH, MAX_PREFIX_LENGTH, nullptr);
    if (isOptionStri(name, "VERSION") != nullptr)
        return optionHooks.globalBEOptionOK(cMP->metaRec.get(), option.c_str());
    return true;
}

void warnOfLongFilePrefix(const Text &name) {
    std::fprintf(stderr,
                 "\nWARNING : File prefix '%s' longer than %d characters.\n"
                 "          Truncating it to %d characters.\n"
                 "          Check value of the PREFIXLEN option.\n",
                 name.c_str(), prefixLen, prefixLen);
}

/* `name` without a ".stx" at its end. */
Text dropTreeSuffix(const Text &name) {
    constexpr std::string_view suffix = ".stx";
    return name.ends_with(suffix) ? name.substr(0, name.size() - suffix.size()) : name;
}

bool setFilePrefix(ModRec *module, const char *name) {
    std::uint8_t &ownLength = module->options->prefixLength;
    if (prefixLen == 0)
        prefixLen = ownLength;
    else if (ownLength == 0)
        ownLength = static_cast<std::uint8_t>(prefixLen);

    Text prefix = dropTreeSuffix(name);
    if (prefix.size() > static_cast<std::size_t>(prefixLen))
        warnOfLongFilePrefix(prefix);
    prefix = name;
    if (!validFilePrefix(prefix, ownLength)) {
        std::fprintf(stderr, "\nERROR : Invalid file prefix: %s\n", name);
        return false;
    }
    module->filePrefix = module->genPrefix = prefix;
    return true;
}

/* A module named for generation: the first one has its record already. */
bool parseFilePrefix(const char *name, FirstPass *pass, const char *fileName) {
    if (findNonPrint(name, false) != nullptr) {
        argumentIgnored(name, fileName);
        return false;
    }
    ++pass->nrOfFiles;
    return setFilePrefix(pass->nrOfFiles == 1 ? cMP : appendModRec(true), name);
}

void parseOptionFilePartially(const char *name, FirstPass *pass) {
    OptionFile file = openOptionFile(name);
    Text line;
    while (readOptionFileLine(&file, line)) {
        if (line.starts_with('-') && !line.starts_with("--")) {
            if (!parseSelectedCmdLineOpts(line.c_str(), *pass)) {
                argumentIgnored(line.c_str() + 1, name);
                pass->failed = true;
            }
        } else if (!line.empty() && beginsName(line[0])) {
            if (!parseFilePrefix(line.c_str(), pass, name))
                pass->failed = true;
        }
    }
    std::fclose(file.stream);
}

void parseCmdLineParam(const char *argument, FirstPass *pass) {
    if (argument[0] == '+') {
        parseOptionFilePartially(argument + 1, pass);
    } else if (argument[0] == '-') {
        if (!parseSelectedCmdLineOpts(argument, *pass)) {
            argumentIgnored(argument, nullptr);
            pass->failed = true;
        }
    } else if (!parseFilePrefix(argument, pass, nullptr)) {
        pass->failed = true;
    }
}

/* Stores one option of the option file (null: of the command line); a text that can't be one is
   stored as removed. */
void parseOneCmdLineOption(Text text, const char *file, unsigned *kinds, TedRange *range) {
    int kind = text.starts_with('-') ? TED_BACKEND_OPTION : TED_REMOVED;
    if (text.size() > MAX_OPTION_LENGTH)
        kind = TED_REMOVED;
    if (const char *bad = findNonPrint(text.c_str(), text.starts_with('-'))) {
        text.resize(static_cast<std::size_t>(bad - text.c_str()));
        kind = TED_REMOVED;
    }
    addTedRec(range, kind, text.c_str());
    *kinds |= 1u << kind;
    if (optionHooks.optionStored != nullptr)
        optionHooks.optionStored(range->last, file);
}

bool lineBegins(const Text &line, std::string_view word) {
    return strnCaseComp(line.c_str(), word.data(), word.size()) == 0;
}

void warnOfScope(const char *format, const char *fileName) {
    std::fprintf(stderr, "\nWARNING : %s: option file %s\n", format, fileName);
}

/* Scope marks are checked for balance here; they take effect in trees only. */
bool checkScopeLine(const Text &line, const char *fileName, bool *inScope) {
    if (lineBegins(line, "-BEGIN-SCOPE")) {
        if (*inScope)
            warnOfScope("Unexpected -BEGIN-SCOPE", fileName);
        *inScope = true;
        return true;
    }
    if (lineBegins(line, "-END-SCOPE")) {
        if (!*inScope)
            warnOfScope("Unexpected -END-SCOPE", fileName);
        *inScope = false;
        return true;
    }
    return false;
}

void handleOptionFile(const char *name, unsigned *kinds, TedRange *range) {
    OptionFile file = openOptionFile(name);
    bool inScope = false;
    Text line;
    while (readOptionFileLine(&file, line)) {
        if (line.empty())
            continue;
        if (lineBegins(line, "-END-OF-OPTIONS"))
            break;
        if (!checkScopeLine(line, name, &inScope) && isOptionComment(line))
            continue;
        if (!beginsName(line[0]))
            parseOneCmdLineOption(line, name, kinds, range);
    }
    if (std::ferror(file.stream) != 0)
        fatalError(FATAL_READ, name);
    std::fclose(file.stream);
    if (inScope)
        warnOfScope("-END-SCOPE expected", name);
}

} // namespace

bool isOptionComment(const Text &line) {
    static constexpr const char *marks[] = {"/*", "*/", "//", "(*", "*)", "--", "#", "$"};
    for (const char *mark : marks)
        if (isOptionStri(line.c_str(), mark) != nullptr)
            return true;
    return false;
}

Text &optionToUpper(Text &text) {
    for (std::size_t i = 1; i < text.size() && text[i] != '='; ++i)
        if (isAsciiLower(text[i]))
            text[i] = static_cast<char>(text[i] - 'a' + 'A');
    return text;
}

const char *findNonPrint(const char *text, bool blankAllowed) {
    for (; *text != '\0'; ++text)
        if (*text < ' ' || *text > '~' || (*text == ' ' && !blankAllowed))
            return text;
    return nullptr;
}

bool validFilePrefix(Text &name, int limit) {
    name = dropTreeSuffix(name);
    const int length = limit == 0 ? DEFAULT_PREFIX_LENGTH : limit;
    name.resize(std::min(name.size(), static_cast<std::size_t>(length)));
    return !name.empty() && std::all_of(name.begin(), name.end(), isSymbolChar);
}

void addTedRec(TedRange *range, int tedKind, const char *text) {
    const RecNr nr = recCount(cMP, REC_TED) + 1;
    if (range->first == 0)
        range->first = nr;
    range->last = nr;
    tedRec.tedKind = static_cast<std::uint8_t>(tedKind);
    tedRec.tedText = putStri(cMP, text);
    writeRec(cMP, REC_TED, nr);
}

void parseCmdLineParams(int argc, char **argv) {
    cMP->options->prefixLength = DEFAULT_PREFIX_LENGTH;
    FirstPass pass;
    for (int i = 1; i < argc; ++i)
        parseCmdLineParam(argv[i], &pass);
    if (pass.failed || cMP->filePrefix.empty())
        usage();
}

void parseCmdLineOptions(int argc, char **argv, unsigned *kinds, TedRange *range) {
    for (int i = 1; i < argc; ++i) {
        if (argv[i][0] == '+')
            handleOptionFile(argv[i] + 1, kinds, range);
        else if (argv[i][0] == '-')
            parseOneCmdLineOption(optionCopy(argv[i]), nullptr, kinds, range);
    }
}

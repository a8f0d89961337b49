#include "base/fatal.h"

#include <cstdio>
#include <cstdlib>
#include <new>

#include "base/files.h"

int glbExitCode = 0;

const char *const *backendUsage = nullptr;

namespace {

struct FatalRow {
    int code;
    const char *text;
    int exitStatus;
};

/* The last row catches every other code. */
constexpr FatalRow allFatalErrors[] = {
    {FATAL_OPEN_READ, "Can not open file for reading", 2},
    {FATAL_OPEN_WRITE, "Can not open file for writing", 2},
    {FATAL_MODULE_NAME, "Can not find module name", 2},
    {FATAL_IDENTIFIER_PATH, "Can not add identifier to path", 2},
    {FATAL_NO_SPACE, "Can not allocate space", 2},
    {FATAL_READ, "Can not read from file", 2},
    {FATAL_WRITE, "Can not write into file", 2},
    {FATAL_CLOSE, "Can not close file", 2},
    {FATAL_READ_RECORD, "Can not read record from syntax tree", 2},
    {FATAL_WRITE_RECORD, "Can not write record into syntax tree", 2},
    {FATAL_VALUE_PARAMETER, "Can not initialize value parameter", 2},
    {FATAL_MAP_MODULE, "Can not map a modulereference with a file name", 2},
    {FATAL_INTERNAL, "Internal error", 2},
    {FATAL_END_OF_FILE, "Unexpected end of file", 2},
    {FATAL_INCONSISTENT, "Syntax tree inconsistent", 2},
    {FATAL_NO_TREE, "Syntax tree not found", 2},
    {FATAL_INVALID_TREE, "Not a valid syntax tree", 2},
    {FATAL_NO_CALLBACK, "Call-back function not defined.", 2},
    {FATAL_OTHER, "Unexpected error code", 2},
};

void (*fatalErrorListener)(const char *text, const char *detail) = nullptr;

const FatalRow &findRow(int code) {
    const FatalRow *row = allFatalErrors;
    while (row->code != code && row->code != FATAL_OTHER)
        ++row;
    return *row;
}

} // namespace

void setFatalErrorListener(void (*listener)(const char *text, const char *detail)) {
    fatalErrorListener = listener;
}

void fatalError(int code, const char *detail) {
    const FatalRow &row = findRow(code);
    std::fprintf(stderr, "\nFATAL ERROR : %s\n", row.text);
    if (detail != nullptr)
        std::fprintf(stderr, "              %s\n", detail);
    std::fputs("\n", stderr);
    if (fatalErrorListener != nullptr) {
        /* A failure inside the listener must not call it again. */
        auto *listener = fatalErrorListener;
        fatalErrorListener = nullptr;
        listener(row.text, detail);
    }
    writeOpenFiles();
    std::exit(row.exitStatus);
}

void installMemoryHandler() {
    std::set_new_handler([] { fatalError(FATAL_NO_SPACE, nullptr); });
}

void usage() {
    for (const char *const *line = backendUsage; line != nullptr && *line != nullptr; ++line)
        std::fprintf(stderr, "%s\n", *line);
    std::exit(1);
}

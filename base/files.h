#pragma once

#include <cstdint>
#include <cstdio>
#include <initializer_list>
#include <utility>

#include "base/text.h"

/* The numbered output files. A generator holds a slot number, never a stream. Slot 0 stands for no
   file: every operation on it does nothing or yields 0. Lines are broken before a piece of text
   that would pass column 78, so how text is cut into writer calls is part of the output. */

inline constexpr int FILE_SLOTS = 17;

struct FileSlot {
    std::FILE *stream = nullptr; /* null: not open */
    Text directory;              /* with its separator; may be empty */
    Text prefix;
    Text pending;           /* its first `filled` characters are what the stream has yet to get */
    std::size_t filled = 0;
    Text suffix;        /* from "." or the category word on, or a whole name */
    bool named = false; /* directory and suffix were set */
    bool hasPrefix = false;
    std::uint32_t lines = 0;
    int columns = 0;
    int indent = 0; /* levels of two blanks; generators change it */
};
extern FileSlot fArr[FILE_SLOTS];

/* Longest path of a file. */
inline constexpr std::size_t MAX_PATH_LENGTH = 512;

/* Opens `directory` and `name` joined, outside the slots. A path of over 512 characters (reported
   without a name) or a failure to open is fatal error 1 if `mode` begins with "r", otherwise 2. */
std::FILE *fopenTextFile(const char *directory, const char *name, const char *mode);

/* Forgets all slots. */
void initFiles();

/* A prefix names files and stands in the includes of generated code: it leads to no other directory,
   nor out of the name. */
bool isFilePrefix(std::string_view prefix);

/* Stores directory (null: empty) and suffix in a slot, unless `suffix` is null. */
void initF(int slot, const char *directory, const char *suffix);
/* Opens a slot set by initF with the given middle part of the name; an open file stays as it is.
   Fatal error 2 if it can't be created. */
void openFWithPrefix(int slot, const char *prefix);
/* Closes; fatal error 8 with the path if that fails. */
void closeF(int slot);
/* For the end of a run that fails: whatever was written so far goes into the open files, as far as
   they take it. */
void writeOpenFiles();

/* Names; empty if slot is 0 or its name isn't complete. */
Text nameOfF(int slot);
Text nameOfFnoDir(int slot);
Text dirOfF(int slot);
/* Name of an include guard: the file's name in upper case with "_" for "-" and ".". */
Text defineGuardOfF(int slot);
Text defineGuardForFile(const char *name);

/* The writer that all others end in. With `noBreak` the line isn't ended before the piece. A
   failing write is fatal error 7. */
void writePiece(int slot, std::initializer_list<Part> parts, bool noBreak);
/* Writes the parts as one piece: putF(file, "e_Tag", narrow ? "8" : "", "Len ("). */
template <typename... Parts> void putF(int slot, const Parts &...parts) {
    writePiece(slot, {Part(parts)...}, false);
}
/* The same, but a line isn't ended before the piece. */
template <typename... Parts> void putUnbroken(int slot, const Parts &...parts) {
    writePiece(slot, {Part(parts)...}, true);
}
/* The same without indentation: a line for the preprocessor. */
template <typename... Parts> void putDirective(int slot, const Parts &...parts) {
    const int indent = std::exchange(fArr[slot].indent, 0);
    putF(slot, parts...);
    fArr[slot].indent = indent;
}

/* One level of indentation more until the end of the scope. */
class Indent {
public:
    explicit Indent(int slot) : slot_(slot) { ++fArr[slot_].indent; }
    ~Indent() { --fArr[slot_].indent; }
    Indent(const Indent &) = delete;
    Indent &operator=(const Indent &) = delete;

private:
    int slot_;
};
/* What is written until the end of the scope stands between two pieces, a level further in. The
   texts are borrowed. */
class Block {
public:
    explicit Block(int slot, const char *open = "{\n", const char *close = "}\n")
        : slot_(slot), close_(close) {
        putF(slot_, open);
        ++fArr[slot_].indent;
    }
    ~Block() {
        --fArr[slot_].indent;
        putF(slot_, close_);
    }
    Block(const Block &) = delete;
    Block &operator=(const Block &) = delete;

private:
    int slot_;
    const char *close_;
};

std::uint32_t linesInF(int slot);
int columnsInF(int slot);
/* Calls func(slot) for each open slot, in order. */
template <typename F> void forEachOpenFile(F &&func) {
    for (int slot = 1; slot < FILE_SLOTS; ++slot)
        if (fArr[slot].stream != nullptr)
            func(slot);
}

/* Indentation to column 0. */
void resetIndentLevel(int slot);

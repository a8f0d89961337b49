#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "asntree/token.h"

namespace asntree {

/* A place in the text of the run: a file of `Sources`, and an octet in it. */
struct Place {
    std::uint32_t file = NO_FILE;
    std::uint32_t offset = 0;

    static constexpr std::uint32_t NO_FILE = 0xFFFFFFFF;
    bool known() const { return file != NO_FILE; }
};

/* Tokens `begin` to `end` - 1 of a file. Text whose meaning depends on a governor is kept so, and
   read when the governor is known. */
struct TokenRange {
    std::uint32_t file = Place::NO_FILE;
    std::uint32_t begin = 0;
    std::uint32_t end = 0;

    bool given() const { return file != Place::NO_FILE; }
    bool empty() const { return begin == end; }
};

/* What a comment "--@ words" says. It stands in front of the token `token`. */
struct Directive {
    std::uint32_t token = 0;
    std::uint32_t offset = 0; /* of the first word, or of what follows "--@" */
    std::string_view words;
    bool taken = false; /* a definition or component claimed it */
};

struct SourceFile {
    std::uint32_t number = 0;
    std::string path; /* as it was found; shown in messages */
    std::string text; /* without a byte order mark; the lexer writes "-" for U+2011 in names */
    std::int64_t modified = 0; /* seconds since 1970 */
    std::vector<Token> tokens; /* ends with one of kind End; empty until the file is lexed */
    std::vector<Directive> directives;
    std::vector<std::uint32_t> lineStarts; /* made when a line number is first asked for */
    /* The place that was last counted: in a long line the next one is counted from there. */
    std::uint32_t countedOffset = 0;
    std::uint32_t countedColumn = 1;
};

/* All files of a run. A file stays where it is in memory, so that names may point into its text. */
struct Sources {
    std::deque<SourceFile> files;

    const SourceFile &operator[](std::uint32_t file) const { return files[file]; }
    SourceFile &operator[](std::uint32_t file) { return files[file]; }
};

/* Reads a file into `sources`; null, with the reason in `why`, if it can't be read or has more than
   1 GiB. */
SourceFile *readSource(Sources &sources, const std::string &path, std::string &why);
/* Adds a text that is in memory. */
SourceFile *addSource(Sources &sources, std::string path, std::string text);

/* Line and column count from 1; a column is a character of UTF-8. */
struct LineColumn {
    std::uint32_t line = 1;
    std::uint32_t column = 1;
};
LineColumn lineAndColumn(SourceFile &file, std::uint32_t offset);
/* The line's text without its end. */
std::string_view lineText(SourceFile &file, std::uint32_t line);

} // namespace asntree

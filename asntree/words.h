#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "asntree/diagnostics.h"

/* Directives: what is said for one definition, component or element, in a comment "--@ words"
   behind it or in a line "@Module.Type.component words" of an option file.

   Words are separated by white space. A word is a name, or a name, "=" and a value. A value that
   holds white space is written in double quotes, as a whole or in part: embed=T1:"int a, b;"; two
   double quotes within them are one that counts. */

namespace asntree {

/* Words that exclude each other are of one kind. */
enum class WordKind : std::uint8_t {
    Entry,      /* entry, entry=PDU, entry=SDU, entry=digits */
    Int,        /* int=8, int=u16, ..., int=octets */
    Real,       /* real=32, real=64 */
    List,       /* array, array=N, list, dynarray */
    String,     /* static, static=N, dynamic */
    Limit,      /* limit=N, limit=N:error, limit=N:ignore */
    Pointer,    /* pointer */
    Near,       /* near */
    Home,       /* home */
    Skip,       /* skip, skip=ignore, skip=call */
    Length,     /* definite, indefinite */
    Frame,      /* frame */
    Extensions, /* save, drop */
    Name,       /* name=X */
    Prefix,     /* prefix=X */
    Suffix,     /* suffix=X */
    Conv,       /* conv=HU */
    Access,     /* access=NONE, access=MACROS */
    Any,        /* any=value:Type; as often as there are values */
    Embed,      /* embed=T1:text; as often as there are lines */
    Comment,    /* comment=text; the same */
};

enum class ListWord : std::uint8_t { Array, List, DynArray };

struct GivenWord {
    WordKind kind;
    Place place;
    std::string text; /* name and value; tells whether a word says the same once more */
};

/* The words of one place. Which of the values count says `given`. */
struct Words {
    std::vector<GivenWord> given;
    std::uint8_t entryCategories = 0; /* bit n: category n */
    std::uint8_t intForm = 0;         /* VF_I8 ... VF_UI64; 0: as octets */
    std::uint8_t realForm = 0;        /* VF_REAL32, VF_REAL64 */
    ListWord list = ListWord::List;
    bool isStatic = false;
    bool limitIsError = false;
    bool skipCalls = false;
    bool definite = false;
    bool saveExtensions = false;
    bool accessMacros = false;
    std::uint32_t arrayLimit = 0;  /* array=N; 0: none was given */
    std::uint32_t staticLimit = 0; /* static=N; 0: none was given */
    std::uint32_t limit = 0;
    std::string name;
    std::string prefix;
    std::string suffix;
    std::string conv;
    std::vector<std::pair<std::string, std::string>> any;   /* value, type */
    std::vector<std::pair<std::string, std::string>> embed; /* "T1" ... "P2", line */
    std::vector<std::string> comments;

    bool has(WordKind kind) const { return find(kind) != nullptr; }
    /* Where a word of the kind stands first; null if there is none. */
    const GivenWord *find(WordKind kind) const;
};

/* Adds the words of `text`, which stands at `place`, to `words`; reports what doesn't parse, and
   what contradicts a word that is there already. False if something was reported. */
bool readWords(std::string_view text, Place place, Diagnostics &diagnostics, Words &words);

/* A path in front of words: names, "*" for the element of a list, and fields with or without "&",
   with "." between them. A text whose first word begins with "." or "*" holds one that starts at
   the item that it stands behind; if it has none, `length` is 0. False if it is malformed; `length`
   is then where. */
bool readItemPath(std::string_view text, std::vector<std::string> &steps, std::size_t &length);
/* The same for a path that starts at a module: at least its name and that of a definition. */
bool readModulePath(std::string_view text, std::vector<std::string> &steps, std::size_t &length);

/* "PDU", "SDU" or digits from 0 to 7, as a set of entry categories: PDUs are category 0, SDUs
   category 1. */
bool readCategories(std::string_view text, std::uint8_t &categories);

} // namespace asntree

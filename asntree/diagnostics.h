#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "asntree/source.h"

namespace asntree {

enum class Severity : std::uint8_t { Error, Warning, Note };

/* What is said of one place beside a message: "first defined here". */
struct Remark {
    Place place; /* unknown: the remark stands without a line */
    std::string text;
};

struct Diagnostic {
    Severity severity = Severity::Error;
    Place place;
    std::string text;
    std::vector<Remark> remarks;
    bool shown = true; /* false: in listings alone */
};

/* Collects the messages of a run and prints them. At most `MAX_ERRORS` errors are shown; a second
   error at the same place is left out, since one mistake gives one message, and so is a warning or
   note that was given there already. Far more than are shown are kept, for they are put in order. */
struct Diagnostics {
    static constexpr int MAX_ERRORS = 50;
    static constexpr int MAX_WARNINGS = 200;
    static constexpr int MAX_KEPT = 5000; /* errors, and as many warnings */

    Sources &sources;
    bool warningsAreErrors = false; /* --werror */
    bool strict = false;            /* --strict: slips are errors */
    std::vector<Diagnostic> list;
    int errors = 0; /* all of them, shown or not */
    int warnings = 0;
    std::unordered_set<std::uint64_t> seen; /* hashes of what was said, by place */

    explicit Diagnostics(Sources &all) : sources(all) {}
};

void error(Diagnostics &diagnostics, Place place, std::string text, std::vector<Remark> remarks = {});
void warning(Diagnostics &diagnostics, Place place, std::string text,
             std::vector<Remark> remarks = {});
/* A note stands in the listing of -L= alone, unless `shown` says that the run prints it too. */
void note(Diagnostics &diagnostics, Place place, std::string text, bool shown = false);
/* What a published module may hold although the language forbids it: a warning, an error with
   --strict. */
void slip(Diagnostics &diagnostics, Place place, std::string text);

/* Errors, warnings and the notes that are shown, in the order of files and places (those without a
   place first), each with its line and a caret. `color`: with escape sequences of terminals. */
std::string printed(Diagnostics &diagnostics, bool color);

/* The name among `candidates` that `name` was probably meant to be: it differs in at most a third of
   its letters, or in their case alone; of names equally near the first of the alphabet. Empty if
   none is near. */
std::string_view nearestName(std::string_view name, const std::vector<std::string_view> &candidates);

} // namespace asntree

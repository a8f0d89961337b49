#pragma once

#include <string>
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
};

/* Collects the messages of a run and prints them. At most `MAX_ERRORS` errors are shown; a second
   error at the same place is left out, since one mistake gives one message. */
struct Diagnostics {
    static constexpr int MAX_ERRORS = 50;

    Sources &sources;
    bool warningsAreErrors = false; /* --werror */
    bool strict = false;            /* --strict: slips are errors */
    std::vector<Diagnostic> list;
    int errors = 0; /* all of them, shown or not */
    int warnings = 0;

    explicit Diagnostics(Sources &all) : sources(all) {}
};

void error(Diagnostics &diagnostics, Place place, std::string text, std::vector<Remark> remarks = {});
void warning(Diagnostics &diagnostics, Place place, std::string text,
             std::vector<Remark> remarks = {});
/* A note stands in the listing of -L= alone, unless `shown` says that the run prints it too. */
void note(Diagnostics &diagnostics, Place place, std::string text);
/* What a published module may hold although the language forbids it: a warning, an error with
   --strict. */
void slip(Diagnostics &diagnostics, Place place, std::string text);

/* Prints errors and warnings in the order of files and places (those without a place first), each
   with its line and a caret. `color`: with escape sequences of terminals. */
std::string printed(Diagnostics &diagnostics, bool color);

/* The name among `candidates` that `name` was probably meant to be; empty if none is near. */
std::string_view nearestName(std::string_view name, const std::vector<std::string_view> &candidates);

} // namespace asntree

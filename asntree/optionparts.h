#pragma once

#include <string>
#include <string_view>

#include "asntree/options.h"

/* What the files that read options share. */

namespace asntree {

/* The command line, or an option file of it, under way. */
struct OptionReader {
    Settings &settings;
    std::string &message;
    bool failed = false;
    ScopeNr scope = 0;
    bool inScope = false;
    std::string where; /* "pdus.opt:3: ", or empty on the command line */
};

/* A line of the message: a mistake, or a warning, which is no failure. */
void refuse(OptionReader &reader, const std::string &text);
void warn(OptionReader &reader, const std::string &text);

/* One option that begins with "-"; on the command line also one that begins with "--". */
void takeOption(OptionReader &reader, std::string_view text);
void readOptionFile(OptionReader &reader, const std::string &path);

/* Options of a run by their names, which end with "=" (scope marks may lack it). False if the name
   is none of these; a wrong value is reported. */
bool takeRunOption(OptionReader &reader, const std::string &text);

/* True if the option, without its "-", is one that this compiler obeys; `known` then says so. The
   result is false if its value is wrong. `own`: velmo doesn't know it. */
struct ObeyedOption {
    bool known = false;
    bool own = false;
    bool good = false;
};
ObeyedOption obey(ModuleSettings &settings, const char *option);

/* Checks all options that are stored in trees by the rules of the tool that reads them, and turns
   those that are the tool's own into back-end options. */
void checkStoredOptions(OptionReader &reader);

} // namespace asntree

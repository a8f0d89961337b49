#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "asntree/options.h"
#include "asntree/plan.h"

/* The files that a run writes. They are written beside their places and put there together at the
   end, so that a run that fails changes nothing. */

namespace asntree {

struct OutputFile {
    std::string path;
    std::string beside; /* the file that is to be renamed; empty: `text` is written at the end */
    std::string text;   /* for what can't be renamed to, such as a terminal */
};

struct Outputs {
    std::vector<OutputFile> files;
};

/* Writes a file beside its place; makes its directory if that is missing. False, with a message in
   `why`, if that fails. */
bool writeBeside(Outputs &outputs, const std::string &path, std::string_view text,
                 std::string &why);
/* Puts all files in their places; false, with a message, if one can't be. What is left of the files
   beside is removed then. */
bool putInPlace(Outputs &outputs, std::string &why);
/* Removes what was written beside. */
void dropOutputs(Outputs &outputs);

std::string treePath(const Settings &settings, const TreePlan &tree);
std::string listingPath(const Settings &settings, const TreePlan &tree);

/* Dependencies as make and ninja read them: all targets depend on all sources, since a run writes
   them together. Each source is a target of its own without a rule, so that one that is gone stops
   nobody. */
std::string dependencyText(const std::vector<std::string> &targets,
                           const std::vector<std::string> &sources);

/* What was written, and the command line that generates C from it. */
std::string summaryText(const Settings &settings, const Plan &plan);
std::string velmoCommand(const Settings &settings, const Plan &plan);

} // namespace asntree

#pragma once

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "asntree/compilation.h"
#include "asntree/options.h"

/* Which files are in a run: those that the command line names, and those that imports lead to. */

namespace asntree {

/* Modules that were read with another one of their file, and that nothing asked for yet. */
struct SpareModules {
    std::vector<Module *> modules;
    bool incomplete = false; /* something in the file was reported */
};

/* The files of the source directories, by the modules whose headers they hold. They are looked at
   when a module is first missed: the beginning of each, and all of it only if a module is still
   missing then. */
struct SourceIndex {
    std::unordered_map<std::string, std::vector<std::string>>
        files;                      /* by directory, then by name */
    std::vector<std::string> begun; /* those of which only the beginning was read */
    std::vector<std::string> problems;
    bool made = false;
    bool whole = false;
};

struct Search {
    SourceIndex index;
    std::unordered_set<std::string> read; /* files that are in the run, by whole path */
    std::unordered_map<std::string, SpareModules> spare; /* by path */
};

/* Adds a file of the command line with all its modules. `name` is its path, or a prefix that is
   looked for with the suffixes of sources in the source directories, or in the current one if there
   are none. False if there is no such file or it can't be read, which is reported. A file that is
   named twice is read once. */
bool addNamedFile(Compilation &c, const Settings &settings, Search &search,
                  const std::string &name);

/* Finds and adds the modules that imports name and that no file of the run defines, and those that
   these import, and so on. Of a file that is found so only the modules that something imports
   count. What isn't found is left to be reported. */
void addImportedModules(Compilation &c, const Settings &settings, Search &search);

} // namespace asntree

#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "asntree/compilation.h"

/* Files of a run: those that the command line names, and those that hold imported modules. */

namespace asntree {

/* The source directories of a run. They are looked through when a module is first missed, and once:
   the beginning of each file for the header of its module, and all of it only if a module is still
   missing then. */
struct Search {
    std::vector<std::string> directories; /* each ends with "/", but for "", the current one */
    std::unordered_map<std::string, std::vector<std::string>> files; /* by name of module */
    std::vector<std::string> all;    /* ASN.1 files, by directory, then by name */
    std::vector<std::string> begun;  /* those of which only the beginning was read */
    bool listed = false;
    bool readWhole = false;
    std::unordered_set<std::string> read; /* files that are in the run */
    /* Modules that were read with another one of their file, by the file. */
    std::unordered_map<std::string, std::vector<Module *>> spare;
};

/* The path that a FILE of the command line means: its own, or one with ".asn", ".asn1", ".ASN" or
   ".ASN1" behind it, in the current directory or in the first source directory that has one. Empty
   if there is no such file. */
std::string findNamedFile(const Search &search, const std::string &file);

/* Reads, lexes and parses a file of the command line and adds its modules to the run; false if it
   can't be read, which is reported. A file that is named twice is read once. */
bool addNamedFile(Compilation &c, Search &search, const std::string &path);

/* Finds and adds the modules that imports name and that no file of the run defines, and those that
   these import, and so on. What isn't found is left to be reported. */
void addImportedModules(Compilation &c, Search &search);

} // namespace asntree

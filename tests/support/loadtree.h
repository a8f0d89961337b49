#pragma once

#include "tests/support/runtool.h"
#include "tests/support/treewriter.h"

#include "store/ketravar.h"

/* Loads trees into this process, for tests of what works on records. */

/* A module as the command line names one: "-S=" is the directory, `prefix` the file's name. */
ModRec *nameModule(const WorkDir &dir, const std::string &prefix);

/* Saves the tree as "PREFIX.stx", names it and loads it with all that it imports, as the start of a
   run does; its record. The first call of a process names the first module, and so on. */
ModRec *loadTree(const WorkDir &dir, TreeWriter &tree);

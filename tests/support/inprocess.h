#pragma once

#include <string>
#include <vector>

#include "base/call.h"
#include "tests/support/runtool.h"
#include "tests/support/treewriter.h"

struct AsnModule;
struct AsnType;

/* The tool inside the process of a test, up to the point at which all trees are loaded and all
   options settled; for tests of what generators ask and write in small pieces. One start for each
   process. */

/* Starts it with the arguments of a command line; trees are looked for in `dir`. */
void startTool(const WorkDir &dir, const std::vector<std::string> &arguments);
/* The same for one tree, which is saved under its file prefix. */
void startTool(const WorkDir &dir, TreeWriter &tree);

/* Calls `func` with the module that a generation prefix names, as the one under work. */
void withModule(const std::string &genPrefix, Call<void(AsnModule *)> func);
/* Calls `func` with a type of the first module: "Msg", its component "Msg.a", the element of a list
   "Msg.a.*". The handles of all types around it are alive. The test fails if there is none. */
void withType(const std::string &place, Call<void(AsnType *)> func);

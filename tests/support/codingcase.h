#pragma once

#include <string>
#include <vector>

#include "tests/support/golden.h"
#include "tests/support/treewriter.h"

/* Whole generated functions of small modules, compared with golden files and given to C compilers. */

/* Runs the tool on the tree in `dir` and gives all functions that it wrote for the module, file by
   file, without headers and includes. Fails the calling test if the run does. */
std::string generatedFunctions(const WorkDir &dir, TreeWriter &tree,
                               const std::vector<std::string> &arguments = {});

/* The text of a generated file behind its last include. */
std::string behindIncludes(const std::string &text);

#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

#include "tests/support/golden.h"
#include "tests/support/treewriter.h"

/* Whole generated functions of small modules, compared with golden files and given to C compilers.
 */

/* What of a module is compared, each with golden files in a folder of its own. */
enum Kinds : unsigned {
    CODING = 1,  /* encoding and decoding functions: golden/coding */
    TESTING = 2, /* asking and printing functions: golden/testing */
    ALL = CODING | TESTING,
    TYPES = 4, /* the ".typ" file: golden/types */
    CODING_AND_TYPES = CODING | TYPES,
    ALL_AND_TYPES = ALL | TYPES
};

/* A module, its options, and where what is written for it must displease compilers. */
struct CodingCase {
    const char *name; /* of the golden file */
    std::function<void(TreeWriter &)> build;
    std::vector<const char *> options = {}; /* stored in the tree */
    /* "-Wno-...": warnings that the functions bring by their nature; "" : they aren't C at all. */
    std::vector<const char *> quiet = {};
    Kinds kinds = CODING;
};
void PrintTo(const CodingCase &value, std::ostream *out);

/* Functions of the module "Case_Module", prefix "t", against the golden files and against C
   compilers: empty if all is well, otherwise the differences and messages. */
std::string faultsOf(const CodingCase &codingCase);

/* Runs the tool on the tree in `dir` and gives all functions that it wrote for the module, file by
   file, without headers and includes, behind the messages of the run; a run that fails tells its
   status. */
std::string generatedFunctions(const WorkDir &dir, TreeWriter &tree,
                               const std::vector<std::string> &arguments = {});

/* What C compilers say of the function files in the directory; empty if they take all without a
   word. */
std::string compileFunctions(const WorkDir &dir, const std::vector<const char *> &quiet = {});

/* The text of a generated file behind its last include. */
std::string behindIncludes(const std::string &text);

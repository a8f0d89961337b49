#pragma once

#include <string>
#include <vector>

#include "tests/support/runtool.h"
#include "tests/support/treewriter.h"

/* Generated files of small modules, as far as they differ from module to module. */

/* Saves the trees in `dir`, runs the tool on the first one and gives its exit status if that isn't
   0, its messages, and the files of the module that end in one of `suffixes` (as ".def"), each
   behind its name and without header, guard and includes. A file that isn't there is told. */
std::string generatedFiles(const WorkDir &dir, const std::vector<TreeWriter *> &trees,
                           const std::vector<std::string> &suffixes);

/* General options of a tree, and the tool's own. */
void addOptions(TreeWriter &tree, const std::vector<const char *> &options,
                const std::vector<const char *> &toolOptions);

/* What gcc and clang say of `files` of `dir`, each as a translation unit of its own against the
   run-time headers; empty if they accept all without a word. */
std::string compilerMessages(const WorkDir &dir, const std::vector<std::string> &files,
                             const std::vector<std::string> &flags = {});

/* A C source that includes the type and define file of module `prefix` and uses every macro of the
   latter: a macro that nobody expands compiles whatever stands in it. */
std::string usesOfDefines(const WorkDir &dir, const std::string &prefix);

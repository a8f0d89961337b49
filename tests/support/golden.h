#pragma once

#include <string>
#include <vector>

#include "tests/support/runtool.h"

/* Comparison of generated text with files that a reviewer has read, and checks by C compilers. */

/* Compares `text`, time stamps masked, with the file `name` (as "types/msg.typ") below `directory`.
   The result is empty if they are equal; otherwise it is the difference as "diff -u" shows it, or
   says that the file is missing. While the environment variable VELMO_UPDATE_GOLDEN is set, the
   file is written, what changed goes to the standard error, and the result is empty. */
std::string compareGolden(const std::string &directory, const std::string &name,
                          const std::string &text);

/* The same below tests/golden. */
inline std::string compareGolden(const std::string &name, const std::string &text) {
    return compareGolden(sourceDir + "/tests/golden", name, text);
}

/* "diff -u" of two texts; empty if they are equal. */
std::string differenceOf(const std::string &before, const std::string &after);

/* What a compiler of C ("gcc", "clang") or C++ ("g++", "clang++") says of a file in `dir`, whatever its suffix: empty if it
   accepts it without a word. The object file is dropped. */
std::string compileC(const WorkDir &dir, const std::string &compiler, const std::string &file,
                     const std::vector<std::string> &flags);

#pragma once

#include <cstddef>
#include <string>
#include <vector>

/* What leaves by exit, or keeps its state in globals, runs in a process of its own for each input.
   The fuzzer learns what was reached there all the same: the child hands its counters back. */

/* A directory of this process that is removed at its end. */
const std::string &workDirectory();
/* Writes a file in the work directory. */
void writeInput(const std::string &name, const void *octets, std::size_t length);
/* Copies the trees of a directory to "trees" in the work directory; once for each process. */
void copyTrees(const char *from);

/* Calls `run` in a child with bounds of time and of files. It starts in the directory "out" of the
   work directory, which is empty then; what is beside that it reaches by "../". Ends this process
   as a crash does, with what the child said, if the child ends in another way than by exit with a
   status from 0 to `worstStatus`.

   Inputs may name any file: so the child sees nothing but the work directory if the system allows
   that. With FUZZ_OPEN in the environment it sees all, so that a finding is told with the names of
   functions. */
void inChild(int worstStatus, int (*run)());

/* The status of a program's main function for these words, its name in front. */
int runMain(int (*mainOf)(int argc, char **argv), std::vector<std::string> words);

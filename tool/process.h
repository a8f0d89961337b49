#pragma once

#include <functional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace tool {

/* A program to be run. */
struct Command {
    std::vector<std::string> words; /* the first one is looked for in PATH if it has no "/" */
    std::string directory;          /* where it runs; empty: here */
    std::string output;             /* file for its standard output; empty: that of this process */
    std::string errors;             /* likewise */
};

/* What waiting gives for a program that could not be started, and for one that a signal ended. */
constexpr int NOT_STARTED = 127;
constexpr int KILLED = 128;

/* The exit status of a command when it has ended. */
int run(const Command &command);

/* Runs commands side by side, as many as there are processors. The number of the first command that
   did not end with status 0, or the number of commands. */
std::size_t runAll(const std::vector<Command> &commands);

/* Runs a function in a process of its own, whose exit status this is; the function's result is that
   status unless it ends the process itself. */
int runApart(const std::function<int()> &function);

} // namespace tool

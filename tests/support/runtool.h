#pragma once

#include <string>
#include <vector>

#include "tests/support/paths.h"

/* Runs programs as a user does, each case in a directory of its own. */

/* A directory that is removed with all that is in it. */
class WorkDir {
public:
    WorkDir();
    ~WorkDir();
    WorkDir(const WorkDir &) = delete;
    WorkDir &operator=(const WorkDir &) = delete;

    /* Its path, or that of a file in it; names may have directories in front. */
    std::string path() const { return path_; }
    std::string path(const std::string &name) const { return path_ + "/" + name; }

    void makeDir(const std::string &name) const;
    void write(const std::string &name, const std::string &text) const;
    /* The whole file; empty if there is none. */
    std::string read(const std::string &name) const;
    bool has(const std::string &name) const;
    /* All files below it, sorted, with the directories in front of their names. */
    std::vector<std::string> files() const;

private:
    std::string path_;
};

struct ProgramRun {
    int status = -1; /* exit status; 128 and the number of the signal if one ended it */
    std::string out;
    std::string err;
};

/* Runs `program` (a path, or a name looked up as a shell does) in the directory. A run of more than
   a minute is ended. */
ProgramRun runProgram(const WorkDir &dir, const std::string &program,
                      const std::vector<std::string> &arguments);

inline ProgramRun runVelmo(const WorkDir &dir, const std::vector<std::string> &arguments) {
    return runProgram(dir, velmoProgram, arguments);
}

/* The text with "TIME" for each time stamp, "on 22.11.2026 at 9:05.00", the only thing in a
   generated file that changes from run to run. */
std::string maskTimes(const std::string &text);

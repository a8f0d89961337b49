#pragma once

#include <cstdint>
#include <string>
#include <vector>

/* A project as velmo's outputs tell of it: the browser tree and the summary. */

namespace browse {

inline constexpr int NO_FILE = -1;

/* A line of the browser tree. */
struct Node {
    std::uint32_t level = 0;
    std::string name;
    int file = NO_FILE; /* in Project::files */
    std::int32_t line = 0;
    int kind = 0; /* in Project::kinds */
};

/* A warning or error of the summary; the same one of several runs stands here once. */
struct Message {
    int file = NO_FILE; /* no file of the project is named: NO_FILE */
    std::int32_t line = 0;
    std::string text;
    int count = 1;
};

struct Project {
    std::string name;
    std::vector<std::string> files; /* as the tree names them, each once */
    std::vector<std::string> kinds;
    std::vector<Node>
        nodes; /* in preorder, the project first; none is more than one level below the last */
    std::vector<Message> messages;
};

/* Takes the text of a browser tree; false if it is none, with what is wrong, and in which line, in
   `error`. */
bool readTree(const std::string &text, Project &project, std::string &error);
/* Takes the text of a summary. All lines are understood: one that names no file of the project is
   about the whole of it. */
void readSummary(const std::string &text, Project &project);

} // namespace browse

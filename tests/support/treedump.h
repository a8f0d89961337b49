#pragma once

#include <string>

/* A readable listing of a syntax tree: one line a record, with its number, its name and those
   fields that are not 0. For a file that is no tree, as much as can be read, and a last line that
   says where it breaks off. */
std::string dumpTree(const std::string &file);

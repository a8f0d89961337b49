#pragma once

#include <string>

/* Where the programs under test and the sources lie. Only one source file knows it, so that no
   other object depends on the place of a checkout. */
extern const std::string velmoProgram;
extern const std::string asntreeProgram;
extern const std::string sourceDir;
extern const std::string exampleTrees; /* of the modules in examples/ */

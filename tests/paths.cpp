#include "tests/support/paths.h"

const std::string velmoProgram = VELMO_PROGRAM;
const std::string asntreeProgram = VELMO_ASNTREE;
const std::string sourceDir = VELMO_SOURCE_DIR;
const std::string exampleTrees = VELMO_EXAMPLE_TREES;

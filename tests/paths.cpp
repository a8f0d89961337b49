#include "tests/support/paths.h"

const std::string velmoProgram = VELMO_PROGRAM;
const std::string maketreesProgram = VELMO_MAKETREES;
const std::string sourceDir = VELMO_SOURCE_DIR;

#include "driver/velmo_main.h"

int glbExitCode = 0;

int velmo_main(int, char **) { return glbExitCode; }
